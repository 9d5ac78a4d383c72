#pragma once

#include "boxlink/frameassembler.h"

#include <QHostAddress>
#include <QJsonArray>
#include <QMetaType>
#include <QObject>
#include <QTcpSocket>
#include <QTimer>

// The tool's end of one TCP link to one Box: connects, sends the heartbeat, watches for silence, and turns
// what the Box sends into signals. Requests are neither queued nor repeated, and answers are not matched to
// them: the "type" of an answer alone decides.
//
// Lives in the GUI thread, since the answer to a write is told in a modal box. May be deleted at any time,
// also while connected, but not from a slot that one of its own signals calls, nor while such a box stands:
// dispose() may. Tells nothing while it is deleted.
class Protocol : public QObject
{
    Q_OBJECT
public:
    // One record for each group of a Box's settings. The fields are the keys on the wire, in the wire's
    // order, and hold the text of the answer as it stands.
    struct LanAllocationData {
        QString lanIp;
        QString lanMask;
        QString lanGateway;
        QString lanDns1;
        QString lanDns2;
    };
    struct WanAllocationData {
        QString wanDhcp; // "1" on, "0" off
        QString wanIp;
        QString wanMask;
        QString wanGateway;
        QString wanDns1;
        QString wanDns2;
    };
    struct WifiAllocationData {
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
    struct LteAllocationData {
        QString lteOnOff; // "on" or "off", in any case
        QString AT1;
        QString AT2;
        QString AT3;
        QString AT4;
        QString AT5;
    };
    struct NTPAllocationData {
        QString NTP;
    };
    struct timeAllocationData {
        QString date; // yyyy-MM-dd HH:mm:ss when sent; what a Box answers is free text
    };
    // One report of live values. Each element of datas is an object with the strings "name", "addr",
    // "dataType", "value" and "valid" ("1" valid, "0" invalid).
    struct dataMonitoringData {
        QString projectName;
        QString plcName;
        QString description;
        QString sn;
        QString time;
        QJsonArray datas;
    };

    explicit Protocol(QObject *parent = nullptr);
    ~Protocol() override;

    // Binds the socket to a local address and keeps the address for later connects, whether or not the bind
    // succeeds; a failure is told by bindingFailed.
    void bindToAddress(const QHostAddress &address);
    // Connects by the state of the socket: an unconnected one at once, one that is under way or bound after
    // it was cut and 2000 ms have passed, a connected one not at all.
    void connectToBox(const QString &ip);
    // Connects without looking at the state.
    void openConnection(const QString &ip);
    void closeConnection();
    // Closes the link, of which whoever listens hears as of any disconnection, and deletes the object: at
    // once, or, while one of its calls is on the stack below a slot or a message box, when that has returned.
    // Until then it has no parent, and lets no signal out but destroyed.
    void dispose();

    // Requests. On a link that is not open the status tells so and the request is lost.
    void rebootDevice();
    void readLanAllocation();
    void readWanAllocation();
    void readWifiAllocation();
    void readLteAllocation();
    void readNTPAllocation();
    void readTimeAllocation();
    // dhcp is "Enable" or "Disabled"; with any other text the key is left out of the request.
    void writeLanAllocation(const QString &ip, const QString &mask, const QString &gateway,
                            const QString &dns1, const QString &dns2);
    void writeWanAllocation(const QString &dhcp, const QString &ip, const QString &mask,
                            const QString &gateway, const QString &dns1, const QString &dns2);
    void writeWifiAllocation(const QString &onOff, const QString &mode, const QString &ssid,
                             const QString &password, const QString &dhcp, const QString &ip,
                             const QString &mask, const QString &gateway, const QString &dns1,
                             const QString &dns2);
    void writeLteAllocation(const QString &onOff, const QString &at1, const QString &at2, const QString &at3,
                            const QString &at4, const QString &at5);
    void writeNTPAllocation(const QString &server);
    void writeTimeAllocation(const QString &date);

    // Takes the next bytes of the stream, cut anywhere, and dispatches each frame that they complete.
    // Returns 0.
    int assembleFrames(const char *data, unsigned length);
    // Hands one whole frame to the slot of its command; drops what no slot takes. Returns 0.
    int dispatchFrame(const char *frame, unsigned length);

signals:
    void connectionStatusChanged(QString status);
    void versionReceived(QString version);
    // 30 seconds have passed without a heartbeat answer; comes once until the next answer or disconnection.
    void offlineOccurred();
    // The names of the records are part of the signatures and stay unqualified.
    void lanAllocationDataReceived(LanAllocationData lanData);    // clazy:exclude=fully-qualified-moc-types
    void wanAllocationDataReceived(WanAllocationData wanData);    // clazy:exclude=fully-qualified-moc-types
    void wifiAllocationDataReceived(WifiAllocationData wifiData); // clazy:exclude=fully-qualified-moc-types
    void lteAllocationDataReceived(LteAllocationData lteData);    // clazy:exclude=fully-qualified-moc-types
    void NTPAllocationDataReceived(NTPAllocationData NTPData);    // clazy:exclude=fully-qualified-moc-types
    void timeAllocationDataReceived(timeAllocationData timeData); // clazy:exclude=fully-qualified-moc-types
    void dataReceived(dataMonitoringData data);                   // clazy:exclude=fully-qualified-moc-types
    void bindingFailed(QString error);

public slots:
    void handleDisconnected();
    void sendHeartbeat();
    void receiveResponse();
    // These two take the whole frame.
    void receiveHeartbeatResponse(QByteArray responseData);
    void dataMonitoring(QByteArray responseData);
    void handleOffline();
    // These take the JSON text of an answer. A read emits its record, or nothing if a key is missing; a
    // write and the reboot tell the result in a message box.
    void rebootDeviceReturn(QByteArray responseData);
    void readLanAllocationReturn(QByteArray responseData);
    void readWanAllocationReturn(QByteArray responseData);
    void readWifiAllocationReturn(QByteArray responseData);
    void readLteAllocationReturn(QByteArray responseData);
    void readNTPAllocationReturn(QByteArray responseData);
    void readTimeAllocationReturn(QByteArray responseData);
    void writeLanAllocationReturn(QByteArray responseData);
    void writeWanAllocationReturn(QByteArray responseData);
    void writeWifiAllocationReturn(QByteArray responseData);
    void writeLteAllocationReturn(QByteArray responseData);
    void writeNTPAllocationReturn(QByteArray responseData);
    void writeTimeAllocationReturn(QByteArray responseData);

private:
    class Hold;

    bool isLinkOpen() const;
    void sendRequest(const QJsonObject &request);
    void dispatchJson(const QByteArray &text);

    QTcpSocket m_socket;
    QTimer m_heartbeatTimer; // repeating, 5000 ms
    QTimer m_offlineTimer;   // single shot, 30000 ms
    FrameAssembler m_assembler;
    QHostAddress m_boundAddress; // null: any
    int m_holds = 0;             // calls on the stack that go on after a signal or a message box
    bool m_disposed = false;
};

Q_DECLARE_METATYPE(Protocol::LanAllocationData)
Q_DECLARE_METATYPE(Protocol::WanAllocationData)
Q_DECLARE_METATYPE(Protocol::WifiAllocationData)
Q_DECLARE_METATYPE(Protocol::LteAllocationData)
Q_DECLARE_METATYPE(Protocol::NTPAllocationData)
Q_DECLARE_METATYPE(Protocol::timeAllocationData)
Q_DECLARE_METATYPE(Protocol::dataMonitoringData)
