#pragma once

#include <QString>
#include <QVector>

#include <variant>

// One record for each group of a Box's settings. The fields are the keys on the wire, in the wire's order,
// and hold the text as it is there.
struct LanSettings {
    QString lanIp;
    QString lanMask;
    QString lanGateway;
    QString lanDns1;
    QString lanDns2;
};
struct WanSettings {
    QString wanDhcp; // "1" on, "0" off
    QString wanIp;
    QString wanMask;
    QString wanGateway;
    QString wanDns1;
    QString wanDns2;
};
struct WifiSettings {
    QString wifiOnOff; // "on" or "off", in any case
    QString wifiMode;
    QString ssid;
    QString password; // in clear text
    QString wifiDhcp; // "1" on, "0" off
    QString wifiIp;
    QString wifiMask;
    QString wifiGateway;
    QString wifiDns1;
    QString wifiDns2;
};
struct LteSettings {
    QString lteOnOff; // "on" or "off", in any case
    QString AT1;
    QString AT2;
    QString AT3;
    QString AT4;
    QString AT5;
};
struct NtpSettings {
    QString NTP;
};
struct TimeSettings {
    QString date; // yyyy-MM-dd HH:mm:ss when sent; what a Box answers is free text
};

// The settings of any one group.
using BoxSettings =
    std::variant<LanSettings, WanSettings, WifiSettings, LteSettings, NtpSettings, TimeSettings>;

// The groups, in the order of BoxSettings.
enum class SettingsGroup { Lan, Wan, Wifi, Lte, Ntp, Time };

// One text of a record.
struct SettingsText {
    enum Kind {
        Plain,
        Dhcp,  // "1" or "0"; not sent with any other text
        OnOff, // "on" or "off", in any case
    };

    const char *key; // on the wire
    QString *text;
    Kind kind = Plain;
};

SettingsGroup groupOf(const BoxSettings &settings);
// A record of the group with empty texts.
BoxSettings emptySettings(SettingsGroup group);
// The texts of the record, in its order. The pointers lead into the record.
QVector<SettingsText> textsOf(BoxSettings &settings);
