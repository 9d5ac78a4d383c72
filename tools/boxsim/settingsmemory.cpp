#include "boxsim/settingsmemory.h"

#include <QStringList>
#include <QVector>

namespace {

constexpr int longestValue = 1024; // so that the largest group's answer fits its 16-bit length, even escaped
const QLatin1String dateKey("date");

struct Field {
    QString key;
    QString first;
};

struct Group {
    QString name;
    int readType;
    int writeType;
    QVector<Field> fields;
};

QString dateFormat()
{
    return QStringLiteral("yyyy-MM-dd HH:mm:ss");
}

Field field(const char *key, const char *first)
{
    return {QString::fromLatin1(key), QString::fromLatin1(first)};
}

// clang-format off
const QVector<Group> &groups()
{
    static const QVector<Group> table = {
        {QStringLiteral("LAN"), 2, 102,
         {field("lanIp", "192.168.1.80"), field("lanMask", "255.255.255.0"),
          field("lanGateway", "192.168.1.1"), field("lanDns1", "192.168.1.1"), field("lanDns2", "8.8.8.8")}},
        {QStringLiteral("WAN"), 3, 103,
         {field("wanDhcp", "0"), field("wanIp", "10.20.0.80"), field("wanMask", "255.255.255.0"),
          field("wanGateway", "10.20.0.1"), field("wanDns1", "10.20.0.1"), field("wanDns2", "8.8.4.4")}},
        {QStringLiteral("WIFI"), 4, 104,
         {field("wifiOnOff", "off"), field("wifiMode", "station"), field("ssid", "box"),
          field("password", "12345678"), field("wifiDhcp", "1"), field("wifiIp", "192.168.2.80"),
          field("wifiMask", "255.255.255.0"), field("wifiGateway", "192.168.2.1"),
          field("wifiDns1", "192.168.2.1"), field("wifiDns2", "8.8.8.8")}},
        {QStringLiteral("LTE"), 5, 105,
         {field("lteOnOff", "on"), field("AT1", "AT+CFUN=1"), field("AT2", ""), field("AT3", ""),
          field("AT4", ""), field("AT5", "")}},
        {QStringLiteral("NTP"), 8, 108, {field("NTP", "192.168.1.1")}},
        {QStringLiteral("time"), 9, 109, {field("date", "")}},
    };
    return table;
}
// clang-format on

const Group *groupOf(int type, int Group::*which)
{
    for (const Group &group : groups()) {
        if (group.*which == type) {
            return &group;
        }
    }
    return nullptr;
}

} // namespace

QString settingsCommandName(int type)
{
    if (type == rebootType) {
        return QStringLiteral("reboot");
    }
    if (const Group *group = groupOf(type, &Group::readType)) {
        return QStringLiteral("read ") + group->name;
    }
    if (const Group *group = groupOf(type, &Group::writeType)) {
        return QStringLiteral("write ") + group->name;
    }
    return QStringLiteral("JSON type %1").arg(type);
}

SettingsMemory::SettingsMemory()
{
    for (const Group &group : groups()) {
        for (const Field &field : group.fields) {
            m_values.insert(field.key, field.first);
        }
    }
}

bool SettingsMemory::isRead(int type)
{
    return groupOf(type, &Group::readType) != nullptr;
}

bool SettingsMemory::isWrite(int type)
{
    return groupOf(type, &Group::writeType) != nullptr;
}

QJsonObject SettingsMemory::record(int type) const
{
    QJsonObject record;
    if (const Group *group = groupOf(type, &Group::readType)) {
        for (const Field &field : group->fields) {
            record.insert(field.key, value(field.key));
        }
    }
    return record;
}

bool SettingsMemory::write(int type, const QJsonObject &values)
{
    const Group *group = groupOf(type, &Group::writeType);
    if (!group) {
        return false;
    }
    for (const Field &field : group->fields) {
        const QJsonValue given = values.value(field.key);
        if (!given.isUndefined() && (!given.isString() || given.toString().size() > longestValue)) {
            return false;
        }
    }
    bool taken = true;
    for (const Field &field : group->fields) {
        if (values.contains(field.key)) {
            taken = setValue(field.key, values.value(field.key).toString()) && taken;
        }
    }
    return taken;
}

QString SettingsMemory::value(const QString &key) const
{
    if (key == dateKey) {
        return QDateTime::currentDateTime().addMSecs(m_clockOffset).toString(dateFormat());
    }
    return m_values.value(key);
}

bool SettingsMemory::setValue(const QString &key, const QString &value)
{
    if (!m_values.contains(key) || value.size() > longestValue) {
        return false;
    }
    if (key != dateKey) {
        m_values.insert(key, value);
        return true;
    }
    const QDateTime date = QDateTime::fromString(value, dateFormat());
    if (!date.isValid()) {
        return false;
    }
    m_clockOffset = QDateTime::currentDateTime().msecsTo(date);
    return true;
}
