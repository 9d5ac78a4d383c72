#pragma once

#include "document/projectreader.h"
#include "documenttest.h"
#include "projectdump.h"

// What the tests of the reader's parts share.
using Transmit = void (*)(const QJsonObject &, QStandardItem *);

inline QJsonObject parse(const char *json)
{
    return QJsonDocument::fromJson(onDisk(json)).object();
}

inline QStringList rolesAfter(Transmit transmit, const QJsonObject &object)
{
    QStandardItem item("x");
    transmit(object, &item);
    return ProjectDump::roles(&item);
}

// The roles of an item on which every role of the kind held "old" before.
inline QStringList rolesOver(Transmit transmit, const QJsonObject &object, int firstRole, int lastRole)
{
    QStandardItem item("x");
    for (int role = firstRole; role <= lastRole; ++role) {
        item.setData("old", role);
    }
    transmit(object, &item);
    return ProjectDump::roles(&item);
}

// "+<offset> QString <text>" for a run of roles, one text for all.
inline QStringList lines(int first, int last, const QString &text)
{
    QStringList list;
    for (int offset = first; offset <= last; ++offset) {
        list.append(QString("+%1 QString %2").arg(offset).arg(text));
    }
    return list;
}

inline QString line(int offset, const QString &text)
{
    return lines(offset, offset, text).first();
}

inline void addAuthenticationRows(const QString &zero, const QString &one)
{
    QTest::addColumn<QJsonValue>("code");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << QJsonValue("0") << zero;
    QTest::newRow("1") << QJsonValue("1") << one;
    QTest::newRow("2") << QJsonValue("2") << "old";
    QTest::newRow("empty") << QJsonValue(QString()) << "old";
    QTest::newRow("number") << QJsonValue(1) << "old";
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << "old";
}

inline QString authenticationAfter(Transmit transmit, const QJsonValue &code, int role)
{
    QStandardItem item;
    item.setData("old", role);
    QJsonObject extended;
    extended.insert("authentication", code);
    transmit({{"extendedParameters", extended}}, &item);
    return item.data(role).toString();
}

// A Standard object with every member that any kind has, each text being its key.
inline const char allMembers[] = R"({"name": "M", "protocol": "%1", "modbus": "%2", "parameter": {
    "serialport": "serialport", "baudRate": "baudRate", "dataBit": "dataBit", "stopBit": "stopBit",
    "parityBit": "parityBit", "rtsEnable": "1", "communicationTimeout": "communicationTimeout",
    "communicationGap": "communicationGap", "collectionInterval": "collectionInterval", "url": "url",
    "ip": "ip", "port": "port", "connectionTimeout": "connectionTimeout", "keepAlive": "keepAlive"},
    "extendedParameters": {"securityPolicy": "securityPolicy", "messageSecurityMode": "messageSecurityMode",
    "authentication": "1", "username": "username", "password": "password", "certificate": "certificate",
    "certificatePath": "certificatePath", "privateKey": "privateKey", "privateKeyPath": "privateKeyPath"},
    "datas": [{"series": "s", "stationNum": "1", "byteOrder": "b", "startAddress0": "1",
               "charReversed": "1", "slaveAddress": "AA", "protocolVersion": 1, "datas": [
        {"select": "true", "addr": "02010100", "name": "n", "dataType": "d", "length": "l",
         "permissions": "p"}]}]})";

inline QJsonObject standardWith(const QString &protocol, const QString &mode)
{
    return parse(QString::fromLatin1(allMembers).arg(protocol, mode).toUtf8().constData());
}

inline QJsonObject groupsOf(const char *protocol, const char *groups)
{
    const QByteArray json = QByteArray("{\"protocol\": \"") + protocol + "\", \"datas\": [" + groups + "]}";
    return parse(json.constData());
}
