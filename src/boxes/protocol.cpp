#include "boxes/protocol.h"

#include "boxes/dhcpword.h"
#include "widgets/tell.h"

namespace {

const char *textOf(Session::Status status)
{
    switch (status) {
    case Session::Status::Connecting:
        return QT_TRANSLATE_NOOP("Protocol", "Connection status: connecting..");
    case Session::Status::Waiting:
        return QT_TRANSLATE_NOOP("Protocol", "Connection status: Waiting for connection.");
    case Session::Status::Reconnecting:
        return QT_TRANSLATE_NOOP("Protocol", "Connection status: Reconnecting...");
    case Session::Status::Connected:
        return QT_TRANSLATE_NOOP("Protocol", "Connection status: Connected");
    case Session::Status::Disconnected:
        return QT_TRANSLATE_NOOP("Protocol", "Connection status: Disconnected");
    case Session::Status::HeartbeatLost:
        return QT_TRANSLATE_NOOP("Protocol", "Connection status: Not connected to server.");
    case Session::Status::RequestLost:
        return QT_TRANSLATE_NOOP("Protocol", "Not connected to server.");
    case Session::Status::EmptyAnswer:
        return QT_TRANSLATE_NOOP("Protocol", "Connection status: Not connected");
    }
    Q_UNREACHABLE();
}

// What the user is told of the result of a command.
struct ResultTexts {
    Frame::JsonType command;
    const char *title;
    const char *success;
    const char *failure; // followed by the code
};
constexpr ResultTexts resultTexts[] = {
    {Frame::LanWrite, QT_TRANSLATE_NOOP("Protocol", "Write LAN Allocation"),
     QT_TRANSLATE_NOOP("Protocol", "LAN allocation write successful."),
     QT_TRANSLATE_NOOP("Protocol", "LAN allocation write failed. Error code: ")},
    {Frame::WanWrite, QT_TRANSLATE_NOOP("Protocol", "Write WAN Allocation"),
     QT_TRANSLATE_NOOP("Protocol", "WAN allocation write successful."),
     QT_TRANSLATE_NOOP("Protocol", "WAN allocation write failed. Error code: ")},
    {Frame::WifiWrite, QT_TRANSLATE_NOOP("Protocol", "Write WIFI Allocation"),
     QT_TRANSLATE_NOOP("Protocol", "WIFI allocation write successful."),
     QT_TRANSLATE_NOOP("Protocol", "WIFI allocation write failed. Error code: ")},
    {Frame::LteWrite, QT_TRANSLATE_NOOP("Protocol", "Write LTE Allocation"),
     QT_TRANSLATE_NOOP("Protocol", "LTE allocation write successful."),
     QT_TRANSLATE_NOOP("Protocol", "LTE allocation write failed. Error code: ")},
    {Frame::NtpWrite, QT_TRANSLATE_NOOP("Protocol", "Write NTP Allocation"),
     QT_TRANSLATE_NOOP("Protocol", "NTP allocation write successful."),
     QT_TRANSLATE_NOOP("Protocol", "NTP allocation write failed. Error code: ")},
    {Frame::TimeWrite, QT_TRANSLATE_NOOP("Protocol", "Write time Allocation"),
     QT_TRANSLATE_NOOP("Protocol", "time allocation write successful."),
     QT_TRANSLATE_NOOP("Protocol", "time allocation write failed. Error code: ")},
    {Frame::DeviceReboot, QT_TRANSLATE_NOOP("Protocol", "Write Restart Allocation"),
     QT_TRANSLATE_NOOP("Protocol", "Restart allocation write successful."),
     QT_TRANSLATE_NOOP("Protocol", "Restart allocation write failed. Error code: ")},
};

void tellResult(const CommandResult &result)
{
    for (const ResultTexts &texts : resultTexts) {
        if (texts.command == result.command) {
            const QString text =
                result.succeeded() ? Protocol::tr(texts.success) : Protocol::tr(texts.failure) + result.code;
            Tell::information(nullptr, Protocol::tr(texts.title), text);
            return;
        }
    }
}

// Under the names by which the signals declare them, beside their full ones.
void registerRecords()
{
    qRegisterMetaType<Protocol::LanAllocationData>("LanAllocationData");
    qRegisterMetaType<Protocol::WanAllocationData>("WanAllocationData");
    qRegisterMetaType<Protocol::WifiAllocationData>("WifiAllocationData");
    qRegisterMetaType<Protocol::LteAllocationData>("LteAllocationData");
    qRegisterMetaType<Protocol::NTPAllocationData>("NTPAllocationData");
    qRegisterMetaType<Protocol::timeAllocationData>("timeAllocationData");
    qRegisterMetaType<Protocol::dataMonitoringData>("dataMonitoringData");
}

} // namespace

Protocol::Protocol(QObject *parent)
    : QObject(parent)
    , m_session(new Session(this))
{
    registerRecords();

    connect(m_session, &Session::statusChanged, this,
            [this](Session::Status status) { emit connectionStatusChanged(tr(textOf(status))); });
    connect(m_session, &Session::identified, this,
            [this](const HeartbeatAnswer &answer) { emit versionReceived(answer.version); });
    connect(m_session, &Session::offlineOccurred, this, &Protocol::handleOffline);
    connect(m_session, &Session::settingsReceived, this, [this](const BoxSettings &settings) {
        std::visit([this](const auto &record) { pass(record); }, settings);
    });
    connect(m_session, &Session::commandAnswered, this, [this](const CommandResult &result) {
        if (m_listener) {
            m_listener(result);
        }
        tellResult(result); // this may be gone when it returns
    });
    connect(m_session, &Session::reportReceived, this, &Protocol::dataReceived);
    connect(m_session, &Session::bindingFailed, this, [this](const QHostAddress &address) {
        emit bindingFailed(tr("Failed to bind to IP address: %1").arg(address.toString()));
    });
    // Only a disposed session goes before this object does.
    connect(m_session, &QObject::destroyed, this, [this] { delete this; });
}

Protocol::~Protocol()
{
    blockSignals(true); // who listens may be on the way out, too
}

void Protocol::dispose()
{
    // Who hears of the end may delete the parent: that must not end this object below.
    setParent(nullptr);
    m_session->dispose();
}

void Protocol::writeLanAllocation(const QString &ip, const QString &mask, const QString &gateway,
                                  const QString &dns1, const QString &dns2)
{
    write(LanSettings{ip, mask, gateway, dns1, dns2});
}

void Protocol::writeWanAllocation(const QString &dhcp, const QString &ip, const QString &mask,
                                  const QString &gateway, const QString &dns1, const QString &dns2)
{
    write(WanSettings{DhcpWord::toFlag(dhcp), ip, mask, gateway, dns1, dns2});
}

void Protocol::writeWifiAllocation(const QString &onOff, const QString &mode, const QString &ssid,
                                   const QString &password, const QString &dhcp, const QString &ip,
                                   const QString &mask, const QString &gateway, const QString &dns1,
                                   const QString &dns2)
{
    write(WifiSettings{onOff, mode, ssid, password, DhcpWord::toFlag(dhcp), ip, mask, gateway, dns1, dns2});
}

void Protocol::writeLteAllocation(const QString &onOff, const QString &at1, const QString &at2,
                                  const QString &at3, const QString &at4, const QString &at5)
{
    write(LteSettings{onOff, at1, at2, at3, at4, at5});
}

void Protocol::writeNTPAllocation(const QString &server)
{
    write(NtpSettings{server});
}

void Protocol::writeTimeAllocation(const QString &date)
{
    write(TimeSettings{date});
}

int Protocol::assembleFrames(const char *data, unsigned length)
{
    m_session->assemble(data, length);
    return 0;
}

int Protocol::dispatchFrame(const char *frame, unsigned length)
{
    m_session->dispatch(QByteArray(frame, int(length)));
    return 0;
}
