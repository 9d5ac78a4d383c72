#include "boxlink/session.h"

#include <QDebug>
#include <QPointer>

namespace {

constexpr int heartbeatInterval = 5000; // ms
constexpr int offlineAfter = 30000;     // ms
constexpr int reconnectDelay = 2000;    // ms
constexpr int mostWaiting = 100;        // answers below a message

} // namespace

// Puts off the end of a disposed session while one of its calls is on the stack: the call is not done yet,
// and the socket may still be sending its signal down there.
class Session::Hold
{
public:
    explicit Hold(Session *session)
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
    QPointer<Session> m_session;
};

Session::Session(QObject *parent)
    : QObject(parent)
    , m_heartbeatTimer(this)
    , m_offlineTimer(this)
    , m_assembler([this](const char *frame, unsigned length) { dispatch(QByteArray(frame, int(length))); })
{
    m_heartbeatTimer.setObjectName(QStringLiteral("heartbeatTimer"));
    connect(&m_heartbeatTimer, &QTimer::timeout, this, &Session::sendHeartbeat);
    m_heartbeatTimer.start(heartbeatInterval);

    m_offlineTimer.setObjectName(QStringLiteral("offlineTimer"));
    connect(&m_offlineTimer, &QTimer::timeout, this, &Session::offlineOccurred);
    m_offlineTimer.setSingleShot(true);
    m_offlineTimer.start(offlineAfter);

    connect(&m_socket, &QTcpSocket::disconnected, this, &Session::handleDisconnected);
    connect(&m_socket, &QTcpSocket::connected, this, [this] {
        const Hold hold(this);
        emit linkOpened();
    });
    connect(&m_socket, &QTcpSocket::errorOccurred, this, [this] {
        const Hold hold(this);
        emit socketFailed(m_socket.errorString());
    });
    // A modal message in receive() holds readyRead up as long as it stands, but not this signal: reports and
    // heartbeats go on. Answers wait, so that their messages come one after the other.
    connect(&m_socket, &QTcpSocket::channelReadyRead, this, [this] {
        if (m_receives == 1 && m_waiting.size() < mostWaiting) {
            receive();
        }
    });
}

Session::~Session()
{
    blockSignals(true); // who listens may be on the way out, too
    // The socket is the last member to go and tells of its end: it must do so while the timers are there.
    m_socket.abort();
}

void Session::joinReportsApart()
{
    m_ownAccumulator.emplace();
}

MonitoringAccumulator &Session::accumulator()
{
    return m_ownAccumulator ? *m_ownAccumulator : MonitoringAccumulator::shared();
}

bool Session::isLinkOpen() const
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

void Session::bindToAddress(const QHostAddress &address)
{
    const Hold hold(this);
    if (!m_socket.bind(address, 0, QAbstractSocket::DefaultForPlatform)) {
        emit bindingFailed(address);
    }
    m_boundAddress = address;
}

void Session::openConnection(const QString &ip)
{
    if (m_disposed) {
        return;
    }
    m_socket.connectToHost(ip, Frame::boxPort, QIODevice::ReadWrite, QAbstractSocket::AnyIPProtocol);
    // Compat: not unique, so that the n-th connect of one session opens with n heartbeats. A Box answers
    // each.
    connect(&m_socket, &QTcpSocket::connected, this, &Session::sendHeartbeat);
    connect(&m_socket, &QTcpSocket::readyRead, this, &Session::receive);
}

void Session::connectToBox(const QString &ip)
{
    const Hold hold(this);
    switch (m_socket.state()) {
    case QAbstractSocket::UnconnectedState:
        bindToAddress(m_boundAddress);
        openConnection(ip);
        emit statusChanged(Status::Connecting);
        return;
    case QAbstractSocket::ConnectedState:
        return;
    default:
        break;
    }
    m_socket.disconnectFromHost();
    emit statusChanged(Status::Waiting);
    QTimer::singleShot(reconnectDelay, this, [this, ip] {
        bindToAddress(m_boundAddress);
        openConnection(ip);
        emit statusChanged(Status::Reconnecting);
    });
}

void Session::closeConnection()
{
    if (isLinkOpen()) {
        m_socket.disconnectFromHost();
    }
}

void Session::dispose()
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

void Session::handleDisconnected()
{
    const Hold hold(this);
    emit statusChanged(Status::Disconnected);
    m_offlineTimer.start();
    accumulator().reset();
    m_waiting.clear();
}

void Session::sendHeartbeat()
{
    if (isLinkOpen()) {
        m_socket.write(Frame::heartbeatFrame());
    } else {
        emit statusChanged(Status::HeartbeatLost);
    }
}

void Session::read(SettingsGroup group)
{
    sendRequest(JsonCommand::readRequest(group));
}

void Session::write(const BoxSettings &settings)
{
    sendRequest(JsonCommand::writeRequest(settings));
}

void Session::reboot()
{
    sendRequest(JsonCommand::rebootRequest());
}

void Session::sendRequest(const QJsonObject &request)
{
    if (isLinkOpen()) {
        m_socket.write(Frame::buildJsonFrame(request));
    } else {
        emit statusChanged(Status::RequestLost);
    }
}

void Session::receive()
{
    const Hold hold(this);
    // What could not be taken below a message is read before returning.
    const QPointer<Session> alive(this);
    ++m_receives;
    do {
        const QByteArray chunk = m_socket.readAll();
        assemble(chunk.constData(), unsigned(chunk.size()));
        while (alive && m_receives == 1 && !m_waiting.isEmpty()) {
            dispatch(m_waiting.takeFirst());
        }
    } while (alive && m_socket.state() == QAbstractSocket::ConnectedState && m_socket.bytesAvailable() > 0);
    if (alive) {
        --m_receives;
    }
}

void Session::assemble(const char *data, unsigned length)
{
    m_assembler.assemble(data, length);
}

void Session::dispatch(const QByteArray &frame)
{
    if (m_disposed || frame.size() < Frame::bodyOffset
        || Frame::readLittle16(frame.constData() + Frame::lengthOffset) != frame.size()) {
        return;
    }
    switch (Frame::readCommand(frame.constData())) {
    case Frame::HeartbeatAnswer:
        takeHeartbeat(frame);
        break;
    case Frame::JsonCommand:
        if (m_receives > 1) {
            m_waiting.append(frame);
        } else {
            // The text-length field is not looked at: the text reaches to the footer.
            dispatchJson(frame.mid(Frame::jsonTextOffset, qMax(0, frame.size() - Frame::jsonOverhead)));
        }
        break;
    case Frame::MonitoringSegment:
        takeSegment(frame);
        break;
    default:
        break;
    }
}

void Session::dispatchJson(const QByteArray &text)
{
    const std::optional<QString> type = JsonCommand::typeOf(text);
    if (!type) {
        return;
    }
    if (const auto command = JsonCommand::commandOf(*type)) {
        takeAnswer(*command, text);
    } else {
        qDebug().noquote().nospace() << "Unhandled type string: " << *type;
    }
}

void Session::takeAnswer(Frame::JsonType command, const QByteArray &text)
{
    const JsonCommand::Answer answer = JsonCommand::readAnswer(command, text);
    if (const auto *settings = std::get_if<BoxSettings>(&answer)) {
        emit settingsReceived(*settings, JsonCommand::keysWithoutText(groupOf(*settings), text));
    } else if (const auto *result = std::get_if<CommandResult>(&answer)) {
        emit commandAnswered(*result);
    }
}

void Session::takeHeartbeat(const QByteArray &frame)
{
    const Hold hold(this);
    if (frame.isEmpty()) {
        emit statusChanged(Status::EmptyAnswer);
        m_offlineTimer.start();
        return;
    }
    // Even an answer that can't be read is a sign of life.
    m_heartbeatTimer.start();
    m_offlineTimer.start();
    const std::optional<HeartbeatAnswer> answer = HeartbeatAnswer::fromFrame(frame);
    if (!answer) {
        return;
    }
    emit statusChanged(Status::Connected);
    emit identified(*answer);
    qDebug().noquote().nospace() << "Box Version: " << answer->version;
    qDebug().noquote().nospace() << "Box Serial Number: " << answer->serialNumber;
    qDebug().noquote().nospace() << "Box Model: " << answer->model;
}

void Session::takeSegment(const QByteArray &frame)
{
    if (const auto report = accumulator().addSegment(frame)) {
        emit reportReceived(MonitoringReport::fromJson(*report));
        qDebug("完成data::");
    }
}
