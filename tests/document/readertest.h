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
    QStandardItem item(S("x"));
    transmit(object, &item);
    return ProjectDump::roles(&item);
}

// The roles of an item on which every role of the kind held "old" before.
inline QStringList rolesOver(Transmit transmit, const QJsonObject &object, int firstRole, int lastRole)
{
    QStandardItem item(S("x"));
    for (int role = firstRole; role <= lastRole; ++role) {
        item.setData(S("old"), role);
    }
    transmit(object, &item);
    return ProjectDump::roles(&item);
}

// "+<offset> QString <text>" for a run of roles, one text for all.
inline QStringList lines(int first, int last, const char *text)
{
    QStringList list;
    for (int offset = first; offset <= last; ++offset) {
        list.append(QString("+%1 QString %2").arg(offset).arg(S(text)));
    }
    return list;
}

inline QString line(int offset, const char *text)
{
    return lines(offset, offset, text).first();
}

inline void addAuthenticationRows(const char *zero, const char *one)
{
    QTest::addColumn<QJsonValue>("code");
    QTest::addColumn<QString>("text");
    QTest::newRow("0") << QJsonValue(S("0")) << S(zero);
    QTest::newRow("1") << QJsonValue(S("1")) << S(one);
    QTest::newRow("2") << QJsonValue(S("2")) << S("old");
    QTest::newRow("empty") << QJsonValue(S()) << S("old");
    QTest::newRow("number") << QJsonValue(1) << S("old");
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << S("old");
}

inline QString authenticationAfter(Transmit transmit, const QJsonValue &code, int role)
{
    QStandardItem item;
    item.setData(S("old"), role);
    QJsonObject extended;
    extended.insert(S("authentication"), code);
    transmit({{S("extendedParameters"), extended}}, &item);
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
    return parse(S(allMembers).arg(protocol, mode).toUtf8().constData());
}

inline QJsonObject groupsOf(const char *protocol, const char *groups)
{
    const QByteArray json = QByteArray("{\"protocol\": \"") + protocol + "\", \"datas\": [" + groups + "]}";
    return parse(json.constData());
}
