#pragma once

// What the tests of a session share: its heartbeat, its status texts, and everything that it tells.

#include "boxes/protocol.h"

#include <QStringList>

namespace SessionProbe {

inline QByteArray hex(const char *bytes)
{
    return QByteArray::fromHex(bytes);
}

inline const QByteArray heartbeat = hex("12 34 01 00 08 00 56 78");
inline const QByteArray answer =
    hex("12 34 02 00 1e 00 05") + "1.2.3" + hex("03") + "SN7" + hex("0b") + "MRN-GATE-70" + hex("56 78");

inline const QString connecting = "Connection status: connecting..";
inline const QString waiting = "Connection status: Waiting for connection.";
inline const QString reconnecting = "Connection status: Reconnecting...";
inline const QString connected = "Connection status: Connected";
inline const QString disconnected = "Connection status: Disconnected";
inline const QString heartbeatUnsent = "Connection status: Not connected to server.";
inline const QString requestUnsent = "Not connected to server.";
inline const QString notConnected = "Connection status: Not connected";

// Everything that a session tells, in order.
class Told : public QObject
{
public:
    explicit Told(Protocol *protocol)
    {
        const auto note = [this](const char *name) {
            return [this, name] { lines.append(QLatin1String(name)); };
        };
        connect(protocol, &Protocol::connectionStatusChanged, this,
                [this](const QString &s) { lines.append(s); });
        connect(protocol, &Protocol::versionReceived, this,
                [this](const QString &version) { lines.append("version " + version); });
        connect(protocol, &Protocol::offlineOccurred, this, note("offline"));
        connect(protocol, &Protocol::lanAllocationDataReceived, this, note("lan"));
        connect(protocol, &Protocol::wanAllocationDataReceived, this, note("wan"));
        connect(protocol, &Protocol::wifiAllocationDataReceived, this, note("wifi"));
        connect(protocol, &Protocol::lteAllocationDataReceived, this, note("lte"));
        connect(protocol, &Protocol::NTPAllocationDataReceived, this, note("ntp"));
        connect(protocol, &Protocol::timeAllocationDataReceived, this, note("time"));
        connect(protocol, &Protocol::dataReceived, this, note("data"));
        connect(protocol, &Protocol::bindingFailed, this,
                [this](const QString &error) { lines.append("binding " + error); });
    }

    QStringList lines;
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
