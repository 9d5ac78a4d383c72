#include "boxsim/boxsim.h"

#include "boxsim/discoveryresponder.h"
#include "boxsim/faultlist.h"
#include "boxsim/reportframes.h"
#include "boxsim/wire.h"

namespace {

constexpr int longestHeartbeat = 127; // the tool reads the length's low byte as signed
constexpr int rebootNotice = 50;      // milliseconds between the reboot's answer and the end of the link

bool isSession(BoxConnection::Role role)
{
    return role == BoxConnection::Role::Session;
}

bool isNoTransfer(BoxConnection::Role role)
{
    return role != BoxConnection::Role::Transfer;
}

} // namespace

BoxSim::BoxSim(const BoxSimOptions &options, QObject *parent)
    : QObject(parent)
    , m_options(options)
    , m_faults(options.faults)
    , m_runner(this)
    , m_server(this)
    , m_discovery(new DiscoveryResponder([this] { return searchAnswer(); }, this))
    , m_rebootTimer(this)
{
    qRegisterMetaType<BoxSimFrame>();
    connect(&m_server, &QTcpServer::newConnection, this, &BoxSim::acceptConnections);
    m_runner.setAcquisition(m_options.acquire);
    connect(&m_runner, &ProjectRunner::reportsDue, this, &BoxSim::pushReports);
    connect(&m_runner, &ProjectRunner::acquisitionTold, this, &BoxSim::acquisitionTold);
    connect(m_discovery, &DiscoveryResponder::searched, this, &BoxSim::searched);
    connect(m_discovery, &DiscoveryResponder::strangeDatagram, this,
            [this](const QString &peer, const QByteArray &bytes) {
                emit violation(peer,
                               QStringLiteral("datagram of %1 bytes that is no search").arg(bytes.size()));
            });
    m_rebootTimer.setSingleShot(true);
    connect(&m_rebootTimer, &QTimer::timeout, this, [this] { m_down ? comeBack() : goDown(); });
    setFaults(m_faults);
}

BoxSim::~BoxSim()
{
    // The connections' last signals must not reach a half-destroyed Box.
    for (BoxConnection *connection : qAsConst(m_connections)) {
        connection->disconnect(this);
    }
}

bool BoxSim::checkOptions()
{
    const QByteArray heartbeat =
        Wire::heartbeatAnswer(m_options.version, m_options.serialNumber, m_options.model);
    if (heartbeat.size() > longestHeartbeat) {
        m_error = QStringLiteral("version, serial number and model are too long together");
        return false;
    }
    for (auto it = m_options.settings.cbegin(); it != m_options.settings.cend(); ++it) {
        if (!m_settings.setValue(it.key(), it.value())) {
            m_error =
                QStringLiteral("no such setting, or not a value for it: %1=%2").arg(it.key(), it.value());
            return false;
        }
    }
    return true;
}

bool BoxSim::start()
{
    stop();
    m_error.clear();
    m_port = m_options.port;
    if (!checkOptions() || !listen()) {
        return false;
    }
    QString reason;
    if (!m_options.project.isEmpty() && !runProject(m_options.project, &reason)) {
        stop();
        m_error = QStringLiteral("not a project: ") + reason;
        return false;
    }
    m_running = true;
    return true;
}

bool BoxSim::listen()
{
    if (!m_server.listen(m_options.address, m_port)) {
        m_error = QStringLiteral("TCP %1:%2: %3")
                      .arg(m_options.address.toString())
                      .arg(m_port)
                      .arg(m_server.errorString());
        return false;
    }
    m_port = m_server.serverPort();
    return startDiscovery();
}

bool BoxSim::startDiscovery()
{
    const QHostAddress address =
        m_options.discoveryAddress.isNull() ? m_options.address : m_options.discoveryAddress;
    if (m_options.discovery && !m_discovery->start(address, m_port)) {
        m_error = QStringLiteral("UDP %1:%2: %3")
                      .arg(address.toString())
                      .arg(m_port)
                      .arg(m_discovery->errorString());
        m_server.close();
        return false;
    }
    return true;
}

void BoxSim::stop()
{
    m_running = false;
    m_down = false;
    m_rebootTimer.stop();
    m_runner.clear();
    m_server.close();
    m_discovery->stop();
    closeConnections();
    const QVector<BoxConnection *> slow = m_connections;
    for (BoxConnection *connection : slow) {
        connection->abort();
    }
}

void BoxSim::setFaults(const BoxSimFaults &faults)
{
    m_faults = faults;
    m_runner.setPace({m_options.reportInterval, faults.flood, faults.interleave, faults.invalidEvery});
    updateDoor();
}

bool BoxSim::setFault(const QString &text, QString *error)
{
    BoxSimFaults faults = m_faults;
    if (!applyFault(text, &faults, error)) {
        return false;
    }
    setFaults(faults);
    return true;
}

bool BoxSim::runProject(const QByteArray &document, QString *error)
{
    SimProject project;
    QString reason;
    if (!readSimProject(document, &project, &reason)) {
        if (error) {
            *error = reason;
        }
        return false;
    }
    m_runner.run(project, m_options.seed, m_options.serialNumber);
    emit projectStarted(m_runner.projectName(), m_runner.standardNames());
    return true;
}

// A copy, since sending and closing may end connections on the way.
QVector<BoxConnection *> BoxSim::connections(bool (*wanted)(BoxConnection::Role)) const
{
    QVector<BoxConnection *> found;
    for (BoxConnection *connection : m_connections) {
        if (wanted(connection->role())) {
            found.append(connection);
        }
    }
    return found;
}

int BoxSim::sessionCount() const
{
    return connections(isSession).size();
}

void BoxSim::sendRaw(const QByteArray &bytes)
{
    const QVector<BoxConnection *> all = connections(isNoTransfer);
    for (BoxConnection *connection : all) {
        connection->sendRaw(bytes);
    }
}

void BoxSim::closeSessions()
{
    const QVector<BoxConnection *> all = connections(isNoTransfer);
    for (BoxConnection *connection : all) {
        connection->close();
    }
}

void BoxSim::closeConnections()
{
    const QVector<BoxConnection *> all = m_connections;
    for (BoxConnection *connection : all) {
        connection->close();
    }
}

// Closing the listening socket is the only way to have the system refuse a connection.
void BoxSim::updateDoor()
{
    if (!m_running || m_down) {
        return;
    }
    const bool open = !m_faults.refuseSecond || m_connections.isEmpty();
    if (!open) {
        m_server.close();
    } else if (!m_server.isListening()) {
        m_server.listen(m_options.address, m_port);
    }
}

void BoxSim::acceptConnections()
{
    while (QTcpSocket *socket = m_server.nextPendingConnection()) {
        if (m_connections.size() >= (m_faults.refuseSecond ? 1 : m_options.maxConnections)) {
            socket->abort();
            socket->deleteLater();
        } else {
            adopt(socket);
        }
    }
    updateDoor();
}

void BoxSim::adopt(QTcpSocket *socket)
{
    auto *connection = new BoxConnection(socket, {&m_options, &m_faults, &m_settings}, this);
    m_connections.append(connection);
    ++m_seen;
    connect(connection, &BoxConnection::closed, this, [this, connection] { forget(connection); });
    connect(connection, &BoxConnection::frameReceived, this, &BoxSim::frameReceived);
    connect(connection, &BoxConnection::frameSent, this, &BoxSim::frameSent);
    connect(connection, &BoxConnection::violation, this, &BoxSim::violation);
    connect(connection, &BoxConnection::fileReceived, this, &BoxSim::takeFile);
    connect(connection, &BoxConnection::rebootRequested, this, &BoxSim::planReboot);
    emit connectionOpened(connection->peer());
}

void BoxSim::forget(BoxConnection *connection)
{
    if (m_connections.removeOne(connection)) {
        const QString peer = connection->peer();
        connection->disconnect(this);
        connection->deleteLater();
        updateDoor();
        emit connectionClosed(peer);
    }
}

void BoxSim::takeFile(const QString &peer, int command, const QByteArray &file)
{
    if (command == Wire::Program) {
        emit programAccepted(file);
        return;
    }
    emit projectAccepted(file);
    QString reason;
    if (!runProject(file, &reason)) {
        emit violation(peer, QStringLiteral("pushed file is no project: ") + reason);
    }
}

void BoxSim::pushReports(const QVector<QByteArray> &reports)
{
    const QVector<BoxConnection *> sessions = connections(isSession);
    if (sessions.isEmpty()) {
        return;
    }
    const QVector<QByteArray> frames = reportFrames(reports, m_faults);
    for (BoxConnection *session : sessions) {
        session->sendReport(frames);
    }
}

void BoxSim::planReboot(int delay)
{
    if (m_options.rebootTime > 0 && !m_rebootTimer.isActive()) {
        m_rebootTimer.start(delay + rebootNotice);
    }
}

void BoxSim::goDown()
{
    m_down = true;
    m_runner.pause();
    m_server.close();
    m_discovery->stop();
    closeConnections();
    m_rebootTimer.start(m_options.rebootTime);
    emit rebooting();
}

void BoxSim::comeBack()
{
    if (!listen()) {
        m_rebootTimer.start(m_options.rebootTime); // somebody took the address meanwhile: try again
        return;
    }
    m_down = false;
    m_runner.resume();
    emit backFromReboot();
}

QByteArray BoxSim::searchAnswer() const
{
    if (m_faults.noDiscovery || m_faults.silent) {
        return QByteArray();
    }
    const bool everywhere = m_options.address == QHostAddress(QHostAddress::AnyIPv4)
        || m_options.address == QHostAddress(QHostAddress::Any);
    const QString ip = everywhere ? m_settings.value(QStringLiteral("lanIp")) : m_options.address.toString();
    return Wire::searchAnswer(ip, m_settings.value(QStringLiteral("lanMask")), m_options.model);
}
