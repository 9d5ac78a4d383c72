#pragma once

#include "boxlink/session.h"

#include <QMetaType>

#include <functional>

// The session of a form: hands all over to a Session, and tells in words how the link does and, in modal
// messages, what became of a write or of the reboot.
//
// Lives in the GUI thread. May be deleted at any time, also while connected, but not from a slot that one of
// its own signals calls, nor while such a message is open: dispose() may. Tells nothing while it is deleted.
class Protocol : public QObject
{
    Q_OBJECT
public:
    using LanAllocationData = LanSettings;
    using WanAllocationData = WanSettings;
    using WifiAllocationData = WifiSettings;
    using LteAllocationData = LteSettings;
    using NTPAllocationData = NtpSettings;
    using timeAllocationData = TimeSettings;
    using dataMonitoringData = MonitoringReport;

    explicit Protocol(QObject *parent = nullptr);
    ~Protocol() override;

    // As the functions of Session; a disposed object lives until its session goes.
    void bindToAddress(const QHostAddress &address) { m_session->bindToAddress(address); }
    void connectToBox(const QString &ip) { m_session->connectToBox(ip); }
    void openConnection(const QString &ip) { m_session->openConnection(ip); }
    void closeConnection() { m_session->closeConnection(); }
    void dispose();
    // Hears of each result before the message on it. Must not end this object or its parent.
    using ResultListener = std::function<void(const CommandResult &)>;
    void setResultListener(const ResultListener &listener) { m_listener = listener; }
    // What goes on below the words.
    const Session *session() const { return m_session; }

    // Requests. On a link that is not open the status tells so and the request is lost.
    void rebootDevice() { m_session->reboot(); }
    void read(SettingsGroup group) { m_session->read(group); }
    void write(const BoxSettings &settings) { m_session->write(settings); }
    // The same group by group.
    void readLanAllocation() { read(SettingsGroup::Lan); }
    void readWanAllocation() { read(SettingsGroup::Wan); }
    void readWifiAllocation() { read(SettingsGroup::Wifi); }
    void readLteAllocation() { read(SettingsGroup::Lte); }
    void readNTPAllocation() { read(SettingsGroup::Ntp); }
    void readTimeAllocation() { read(SettingsGroup::Time); }
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
    void handleDisconnected() { m_session->handleDisconnected(); }
    void sendHeartbeat() { m_session->sendHeartbeat(); }
    void receiveResponse() { m_session->receive(); }
    // These two take the whole frame.
    void receiveHeartbeatResponse(QByteArray responseData) { m_session->takeHeartbeat(responseData); }
    void dataMonitoring(QByteArray responseData) { m_session->takeSegment(responseData); }
    void handleOffline() { emit offlineOccurred(); }
    // These take the JSON text of an answer. A read emits its record, or nothing if a key is missing; a
    // write and the reboot tell the result in a modal message.
    void rebootDeviceReturn(QByteArray responseData) { take(Frame::DeviceReboot, responseData); }
    void readLanAllocationReturn(QByteArray responseData) { take(Frame::LanRead, responseData); }
    void readWanAllocationReturn(QByteArray responseData) { take(Frame::WanRead, responseData); }
    void readWifiAllocationReturn(QByteArray responseData) { take(Frame::WifiRead, responseData); }
    void readLteAllocationReturn(QByteArray responseData) { take(Frame::LteRead, responseData); }
    void readNTPAllocationReturn(QByteArray responseData) { take(Frame::NtpRead, responseData); }
    void readTimeAllocationReturn(QByteArray responseData) { take(Frame::TimeRead, responseData); }
    void writeLanAllocationReturn(QByteArray responseData) { take(Frame::LanWrite, responseData); }
    void writeWanAllocationReturn(QByteArray responseData) { take(Frame::WanWrite, responseData); }
    void writeWifiAllocationReturn(QByteArray responseData) { take(Frame::WifiWrite, responseData); }
    void writeLteAllocationReturn(QByteArray responseData) { take(Frame::LteWrite, responseData); }
    void writeNTPAllocationReturn(QByteArray responseData) { take(Frame::NtpWrite, responseData); }
    void writeTimeAllocationReturn(QByteArray responseData) { take(Frame::TimeWrite, responseData); }

private:
    void take(Frame::JsonType command, const QByteArray &text) { m_session->takeAnswer(command, text); }
    void pass(const LanSettings &lan) { emit lanAllocationDataReceived(lan); }
    void pass(const WanSettings &wan) { emit wanAllocationDataReceived(wan); }
    void pass(const WifiSettings &wifi) { emit wifiAllocationDataReceived(wifi); }
    void pass(const LteSettings &lte) { emit lteAllocationDataReceived(lte); }
    void pass(const NtpSettings &ntp) { emit NTPAllocationDataReceived(ntp); }
    void pass(const TimeSettings &time) { emit timeAllocationDataReceived(time); }

    ResultListener m_listener;
    Session *m_session; // a child, until it is disposed of
};

Q_DECLARE_METATYPE(Protocol::LanAllocationData)
Q_DECLARE_METATYPE(Protocol::WanAllocationData)
Q_DECLARE_METATYPE(Protocol::WifiAllocationData)
Q_DECLARE_METATYPE(Protocol::LteAllocationData)
Q_DECLARE_METATYPE(Protocol::NTPAllocationData)
Q_DECLARE_METATYPE(Protocol::timeAllocationData)
Q_DECLARE_METATYPE(Protocol::dataMonitoringData)
