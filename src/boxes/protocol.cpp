#include "boxes/protocol.h"

#include "boxlink/monitoringaccumulator.h"

#include <QDebug>
#include <QJsonDocument>
#include <QJsonObject>
#include <QPointer>

#include <array>
#include <optional>

namespace {

constexpr int heartbeatInterval = 5000; // ms
constexpr int offlineAfter = 30000;     // ms
constexpr int reconnectDelay = 2000;    // ms

// Who takes the answer of a JSON command.
struct AnswerHandler {
    Frame::JsonType type;
    void (Protocol::*take)(QByteArray);
};
constexpr AnswerHandler answerHandlers[] = {
    {Frame::lanRead, &Protocol::readLanAllocationReturn},
    {Frame::lanWrite, &Protocol::writeLanAllocationReturn},
    {Frame::wanRead, &Protocol::readWanAllocationReturn},
    {Frame::wanWrite, &Protocol::writeWanAllocationReturn},
    {Frame::wifiRead, &Protocol::readWifiAllocationReturn},
    {Frame::wifiWrite, &Protocol::writeWifiAllocationReturn},
    {Frame::lteRead, &Protocol::readLteAllocationReturn},
    {Frame::lteWrite, &Protocol::writeLteAllocationReturn},
    {Frame::deviceReboot, &Protocol::rebootDeviceReturn},
    {Frame::ntpRead, &Protocol::readNTPAllocationReturn},
    {Frame::ntpWrite, &Protocol::writeNTPAllocationReturn},
    {Frame::timeRead, &Protocol::readTimeAllocationReturn},
    {Frame::timeWrite, &Protocol::writeTimeAllocationReturn},
};

// The version, serial number and model of a heartbeat answer with a good footer, or nothing if a count is
// negative or leads past the footer. The counts are signed bytes.
std::optional<std::array<QString, 3>> heartbeatTexts(const QByteArray &frame)
{
    std::array<QString, 3> texts;
    const int end = frame.size() - Frame::footerSize;
    int offset = Frame::bodyOffset;
    for (QString &text : texts) {
        const int count = offset < end ? qint8(frame[offset]) : -1;
        ++offset;
        if (count < 0 || count > end - offset) {
            return std::nullopt;
        }
        text = QString::fromUtf8(frame.constData() + offset, count);
        offset += count;
    }
    return texts;
}

// On purpose from signed bytes: the Box keeps a heartbeat answer under 128 bytes, and one whose low length
// byte is 0x80 or more is refused by its length.
int signedFrameLength(const QByteArray &frame)
{
    return (qint8(frame[Frame::lengthOffset + 1]) * 256) | qint8(frame[Frame::lengthOffset]);
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

// Puts off the end of a disposed session while one of its calls is on the stack: the call is not done yet,
// and the socket may still be sending its signal down there.
class Protocol::Hold
{
public:
    explicit Hold(Protocol *session)
        : m_session(session)
    {
        ++session->m_holds;
    }
    ~Hold()
    {
        if (m_session && --m_session->m_holds == 0 && m_session->m_disposed) {
            m_session->deleteLater();
        }
    }
    Q_DISABLE_COPY(Hold)

private:
    QPointer<Protocol> m_session;
};

Protocol::Protocol(QObject *parent)
    : QObject(parent)
    , m_heartbeatTimer(this)
    , m_offlineTimer(this)
    , m_assembler([this](const char *frame, unsigned length) { dispatchFrame(frame, length); })
{
    registerRecords();

    m_heartbeatTimer.setObjectName(QStringLiteral("heartbeatTimer"));
    connect(&m_heartbeatTimer, &QTimer::timeout, this, &Protocol::sendHeartbeat);
    m_heartbeatTimer.start(heartbeatInterval);

    m_offlineTimer.setObjectName(QStringLiteral("offlineTimer"));
    connect(&m_offlineTimer, &QTimer::timeout, this, &Protocol::handleOffline);
    m_offlineTimer.setSingleShot(true);
    m_offlineTimer.start(offlineAfter);

    connect(&m_socket, &QTcpSocket::disconnected, this, &Protocol::handleDisconnected);
}

Protocol::~Protocol()
{
    blockSignals(true); // who listens may be on the way out, too
    // The socket is the last member to go and tells of its end: it must do so while the timers are there.
    m_socket.abort();
}

bool Protocol::isLinkOpen() const
{
    // By the state, since isOpen() stays true after a refused connection and after the Box has closed.
    switch (m_socket.state()) {
    case QAbstractSocket::HostLookupState:
    case QAbstractSocket::ConnectingState:
    case QAbstractSocket::ConnectedState:
        return true;
    default:
        return false;
    }
}

void Protocol::bindToAddress(const QHostAddress &address)
{
    const Hold hold(this);
    if (!m_socket.bind(address, 0, QAbstractSocket::DefaultForPlatform)) {
        emit bindingFailed(tr("Failed to bind to IP address: %1").arg(address.toString()));
    }
    m_boundAddress = address;
}

void Protocol::openConnection(const QString &ip)
{
    if (m_disposed) {
        return;
    }
    m_socket.connectToHost(ip, Frame::boxPort, QIODevice::ReadWrite, QAbstractSocket::AnyIPProtocol);
    // On purpose not unique: the n-th connect of one session opens with n heartbeats, and a Box answers each.
    connect(&m_socket, &QTcpSocket::connected, this, &Protocol::sendHeartbeat);
    connect(&m_socket, &QTcpSocket::readyRead, this, &Protocol::receiveResponse);
}

void Protocol::connectToBox(const QString &ip)
{
    const Hold hold(this);
    switch (m_socket.state()) {
    case QAbstractSocket::UnconnectedState:
        bindToAddress(m_boundAddress);
        openConnection(ip);
        emit connectionStatusChanged(tr("Connection status: connecting.."));
        return;
    case QAbstractSocket::ConnectedState:
        return;
    default:
        break;
    }
    m_socket.disconnectFromHost();
    emit connectionStatusChanged(tr("Connection status: Waiting for connection."));
    QTimer::singleShot(reconnectDelay, this, [this, ip] {
        bindToAddress(m_boundAddress);
        openConnection(ip);
        emit connectionStatusChanged(tr("Connection status: Reconnecting..."));
    });
}

void Protocol::closeConnection()
{
    if (isLinkOpen()) {
        m_socket.disconnectFromHost();
    }
}

void Protocol::dispose()
{
    if (m_disposed) {
        return;
    }
    m_disposed = true;
    // Who hears of the end may delete the parent, or let events in: neither may end the session below.
    setParent(nullptr);
    ++m_holds;
    closeConnection();
    m_socket.abort(); // bytes to send put the end off
    blockSignals(true);
    if (--m_holds == 0) {
        delete this;
    }
}

void Protocol::handleDisconnected()
{
    const Hold hold(this);
    emit connectionStatusChanged(tr("Connection status: Disconnected"));
    m_offlineTimer.start();
    MonitoringAccumulator::reset();
}

void Protocol::sendHeartbeat()
{
    if (isLinkOpen()) {
        m_socket.write(Frame::heartbeatFrame());
    } else {
        emit connectionStatusChanged(tr("Connection status: Not connected to server."));
    }
}

void Protocol::sendRequest(const QJsonObject &request)
{
    if (isLinkOpen()) {
        m_socket.write(Frame::buildJsonFrame(request));
    } else {
        emit connectionStatusChanged(tr("Not connected to server."));
    }
}

void Protocol::receiveResponse()
{
    const Hold hold(this);
    // A message box in a handler holds readyRead up: what came in behind it is read before returning.
    const QPointer<Protocol> alive(this);
    do {
        const QByteArray chunk = m_socket.readAll();
        assembleFrames(chunk.constData(), unsigned(chunk.size()));
    } while (alive && m_socket.state() == QAbstractSocket::ConnectedState && m_socket.bytesAvailable() > 0);
}

int Protocol::assembleFrames(const char *data, unsigned length)
{
    m_assembler.assemble(data, length);
    return 0;
}

int Protocol::dispatchFrame(const char *frame, unsigned length)
{
    const QByteArray whole(frame, int(length));
    if (m_disposed || whole.size() < Frame::bodyOffset
        || Frame::readLittle16(whole.constData() + Frame::lengthOffset) != whole.size()) {
        return 0;
    }
    switch (Frame::readCommand(whole.constData())) {
    case Frame::heartbeatAnswer:
        receiveHeartbeatResponse(whole);
        break;
    case Frame::jsonCommand:
        // The text-length field is not looked at: the text reaches to the footer.
        dispatchJson(whole.mid(Frame::jsonTextOffset, qMax(0, whole.size() - Frame::jsonOverhead)));
        break;
    case Frame::monitoringSegment:
        dataMonitoring(whole);
        break;
    default:
        break;
    }
    return 0;
}

void Protocol::dispatchJson(const QByteArray &text)
{
    const QJsonValue type = QJsonDocument::fromJson(text).object().value(QLatin1String("type"));
    if (!type.isString()) {
        return;
    }
    for (const AnswerHandler &handler : answerHandlers) {
        if (type.toString() == QString::number(handler.type)) {
            (this->*handler.take)(text);
            return;
        }
    }
    qDebug().noquote().nospace() << "Unhandled type string: " << type.toString();
}

void Protocol::receiveHeartbeatResponse(QByteArray responseData)
{
    const Hold hold(this);
    if (responseData.isEmpty()) {
        emit connectionStatusChanged(tr("Connection status: Not connected"));
        m_offlineTimer.start();
        return;
    }
    // Even an answer that fails the tests below is a sign of life.
    m_heartbeatTimer.start();
    m_offlineTimer.start();
    if (responseData.size() < Frame::bodyOffset || signedFrameLength(responseData) != responseData.size()) {
        return;
    }
    if (responseData[responseData.size() - 2] != Frame::footer0
        || responseData[responseData.size() - 1] != Frame::footer1) {
        qDebug("Invalid package footer.");
        return;
    }
    const auto texts = heartbeatTexts(responseData);
    if (!texts) {
        return;
    }
    const auto &[version, serialNumber, model] = *texts;
    emit connectionStatusChanged(tr("Connection status: Connected"));
    emit versionReceived(version);
    qDebug().noquote().nospace() << "Box Version: " << version;
    qDebug().noquote().nospace() << "Box Serial Number: " << serialNumber;
    qDebug().noquote().nospace() << "Box Model: " << model;
}

void Protocol::handleOffline()
{
    emit offlineOccurred();
}

void Protocol::dataMonitoring(QByteArray responseData)
{
    const std::optional<QJsonObject> report = MonitoringAccumulator::addSegment(responseData);
    if (!report) {
        return;
    }
    const auto text = [&report](const char *key) { return report->value(QLatin1String(key)).toString(); };
    dataMonitoringData data;
    data.projectName = text("projectName");
    data.plcName = text("plcName");
    data.description = text("description");
    data.sn = text("sn");
    data.time = text("time");
    data.datas = report->value(QLatin1String("datas")).toArray();
    emit dataReceived(data);
    qDebug("完成data::");
}
