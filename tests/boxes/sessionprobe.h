#pragma once

// What the tests of a session share: its heartbeat, its status texts, and everything that it tells.

#include "boxes/protocol.h"
#include "handframes.h"

#include <QJsonObject>
#include <QStringList>

namespace SessionProbe {

using HandFrames::heartbeat;
using HandFrames::hex;

inline const QByteArray answer =
    HandFrames::frame("02 00", hex("05") + "1.2.3" + hex("03") + "SN7" + hex("0b") + "MRN-GATE-70");

inline const QString connecting = "Connection status: connecting..";
inline const QString waiting = "Connection status: Waiting for connection.";
inline const QString reconnecting = "Connection status: Reconnecting...";
inline const QString connected = "Connection status: Connected";
inline const QString disconnected = "Connection status: Disconnected";
inline const QString heartbeatUnsent = "Connection status: Not connected to server.";
inline const QString requestUnsent = "Not connected to server.";
inline const QString notConnected = "Connection status: Not connected";

// The fields of what a session delivers.
inline QStringList fields(const Protocol::LanAllocationData &d)
{
    return {d.lanIp, d.lanMask, d.lanGateway, d.lanDns1, d.lanDns2};
}
inline QStringList fields(const Protocol::WanAllocationData &d)
{
    return {d.wanDhcp, d.wanIp, d.wanMask, d.wanGateway, d.wanDns1, d.wanDns2};
}
inline QStringList fields(const Protocol::WifiAllocationData &d)
{
    return {d.wifiOnOff, d.wifiMode, d.ssid,        d.password, d.wifiDhcp,
            d.wifiIp,    d.wifiMask, d.wifiGateway, d.wifiDns1, d.wifiDns2};
}
inline QStringList fields(const Protocol::LteAllocationData &d)
{
    return {d.lteOnOff, d.AT1, d.AT2, d.AT3, d.AT4, d.AT5};
}
inline QStringList fields(const Protocol::NTPAllocationData &d)
{
    return {d.NTP};
}
inline QStringList fields(const Protocol::timeAllocationData &d)
{
    return {d.date};
}
inline QStringList fields(const Protocol::dataMonitoringData &d)
{
    QStringList texts{d.projectName, d.plcName, d.sn, d.time};
    for (const QJsonValue &value : d.datas) {
        const QJsonObject point = value.toObject();
        texts.append(QString("%1=%2 (%3)")
                         .arg(point.value("name").toString(), point.value("value").toString(),
                              point.value("valid").toString()));
    }
    return texts;
}

// Everything that a session tells, in order; what it delivers as a word and the fields with bars between.
class Told : public QObject
{
public:
    explicit Told(Protocol *protocol)
    {
        using P = Protocol;
        connect(protocol, &P::connectionStatusChanged, this, [this](const QString &s) { lines.append(s); });
        connect(protocol, &P::versionReceived, this,
                [this](const QString &v) { lines.append("version " + v); });
        connect(protocol, &P::offlineOccurred, this, [this] { lines.append("offline"); });
        connect(protocol, &P::lanAllocationDataReceived, this, [this](const auto &d) { note("lan ", d); });
        connect(protocol, &P::wanAllocationDataReceived, this, [this](const auto &d) { note("wan ", d); });
        connect(protocol, &P::wifiAllocationDataReceived, this, [this](const auto &d) { note("wifi ", d); });
        connect(protocol, &P::lteAllocationDataReceived, this, [this](const auto &d) { note("lte ", d); });
        connect(protocol, &P::NTPAllocationDataReceived, this, [this](const auto &d) { note("ntp ", d); });
        connect(protocol, &P::timeAllocationDataReceived, this, [this](const auto &d) { note("time ", d); });
        connect(protocol, &P::dataReceived, this, [this](const auto &d) { note("report ", d); });
        connect(protocol, &P::bindingFailed, this,
                [this](const QString &e) { lines.append("binding " + e); });
    }

    QStringList lines;

private:
    template <typename Delivered> void note(const QString &word, const Delivered &delivered)
    {
        lines.append(word + fields(delivered).join(QLatin1Char('|')));
    }
};

inline QTimer *heartbeatTimer(const Protocol &protocol)
{
    return protocol.findChild<QTimer *>("heartbeatTimer");
}

inline QTimer *offlineTimer(const Protocol &protocol)
{
    return protocol.findChild<QTimer *>("offlineTimer");
}

} // namespace SessionProbe
