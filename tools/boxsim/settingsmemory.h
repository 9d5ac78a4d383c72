#pragma once

#include <QDateTime>
#include <QJsonObject>
#include <QMap>
#include <QString>

// The type of the JSON command that is no group's.
constexpr int rebootType = 6;

// A name for a JSON command's type, such as "read LAN", "write time" or "reboot"; "JSON type 7" for a type
// that no Box knows.
QString settingsCommandName(int type);

// The settings of a Box: LAN, WAN, WIFI, LTE, NTP and the clock, each group read by one type and written by
// another. What is written is read back. The clock is this computer's until it is set, and runs on from
// there.
class SettingsMemory
{
public:
    SettingsMemory();

    static bool isRead(int type);
    static bool isWrite(int type);

    // All keys of the group that type reads, every value a string.
    QJsonObject record(int type) const;
    // Takes the group that type writes. Keys that the group lacks are ignored, keys left out keep their
    // value. False, and nothing changes, if a value is not a string of at most 1024 characters, or a date is
    // not "yyyy-MM-dd HH:mm:ss".
    bool write(int type, const QJsonObject &values);

    // The value under a wire key; empty for a key that no group has.
    QString value(const QString &key) const;
    // False for a key that no group has, a value over 1024 characters, or a date that cannot be read.
    bool setValue(const QString &key, const QString &value);

private:
    QMap<QString, QString> m_values;
    qint64 m_clockOffset = 0; // milliseconds ahead of this computer
};
