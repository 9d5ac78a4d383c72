#include "boxsim/boxconnection.h"

#include "boxsim/jsonanswers.h"
#include "boxsim/wire.h"

#include <QHostAddress>

namespace {

constexpr qint64 readPiece = 65536;  // bytes
constexpr int longestClosing = 2000; // milliseconds

int otherTransfer(int command)
{
    return command == Wire::Project ? Wire::Program : Wire::Project;
}

} // namespace

BoxConnection::BoxConnection(QTcpSocket *socket, const Shared &shared, QObject *parent)
    : QObject(parent)
    , m_socket(socket)
    , m_shared(shared)
    , m_peer(QStringLiteral("%1:%2").arg(socket->peerAddress().toString()).arg(socket->peerPort()))
    , m_outbox(new Outbox(socket, shared.faults, shared.options->seed, this))
    , m_project(shared.options->maxFileSize)
    , m_program(shared.options->maxFileSize)
{
    m_socket->setParent(this);
    m_socket->setReadBufferSize(4 * readPiece);
    m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1); // pieces stay pieces
    connect(m_socket, &QTcpSocket::readyRead, this, &BoxConnection::read);
    connect(m_socket, &QTcpSocket::disconnected, this, &BoxConnection::closed);
    connect(m_outbox, &Outbox::exhausted, this, &BoxConnection::close);
}

void BoxConnection::send(const QByteArray &frame, int delay)
{
    if (m_shared.faults->silent) {
        return;
    }
    if (m_outbox->queued() + frame.size() > m_shared.options->maxQueued) {
        complain(QStringLiteral("does not read its answers, connection ended"));
        m_outbox->discard();
        m_socket->abort();
        return;
    }
    m_outbox->send(frame, delay);
    emit frameSent(decodedFrame(m_peer, frame));
}

void BoxConnection::sendReport(const QVector<QByteArray> &frames)
{
    qint64 size = m_outbox->queued();
    for (const QByteArray &frame : frames) {
        size += frame.size();
    }
    if (size > m_shared.options->maxQueued) {
        complain(QStringLiteral("does not read its reports, one was dropped"));
        return;
    }
    for (const QByteArray &frame : frames) {
        send(frame);
    }
}

void BoxConnection::close()
{
    m_outbox->discard();
    m_socket->disconnectFromHost();
    if (m_socket->state() != QAbstractSocket::UnconnectedState) {
        QTimer::singleShot(longestClosing, this, &BoxConnection::abort); // a peer may never read
    }
}

void BoxConnection::read()
{
    while (isOpen() && m_socket->bytesAvailable() > 0) {
        const int limit = m_shared.faults->dropAfterReceived;
        const qint64 allowed = limit > 0 ? qMax<qint64>(0, limit - m_received) : readPiece;
        const QByteArray bytes = m_socket->read(qMin(allowed, readPiece));
        m_received += bytes.size();
        const FrameReader::Result result = m_reader.feed(bytes);
        if (result.skipped > 0) {
            complain(QStringLiteral("%1 bytes outside of any frame, %2 headers without one")
                         .arg(result.skipped)
                         .arg(result.rejected));
        }
        for (const QByteArray &frame : result.frames) {
            if (!isOpen()) {
                return;
            }
            handle(frame);
        }
        if (limit > 0 && m_received >= limit) {
            close();
        }
    }
}

void BoxConnection::takeRole(Role role)
{
    if (m_role == Role::Unknown) {
        m_role = role;
    }
}

void BoxConnection::handle(const QByteArray &frame)
{
    emit frameReceived(decodedFrame(m_peer, frame));
    const BoxSimOptions &options = *m_shared.options;
    switch (Wire::command(frame)) {
    case Wire::Heartbeat:
        takeRole(Role::Session);
        if (frame.size() != Wire::minFrame) {
            complain(QStringLiteral("heartbeat with a body"));
        } else if (!m_shared.faults->noHeartbeat) {
            send(Wire::heartbeatAnswer(options.version, options.serialNumber, options.model),
                 m_shared.faults->lateHeartbeat);
        }
        break;
    case Wire::Json:
        takeRole(Role::Session);
        handleJson(frame);
        break;
    case Wire::Project:
        takeRole(Role::Transfer);
        handleTransfer(frame, &m_project);
        break;
    case Wire::Program:
        takeRole(Role::Transfer);
        handleTransfer(frame, &m_program);
        break;
    default:
        complain(QStringLiteral("unknown command"));
    }
}

void BoxConnection::handleJson(const QByteArray &frame)
{
    const JsonOutcome outcome = answerJson(frame, m_shared.settings, *m_shared.faults);
    if (!outcome.violation.isEmpty()) {
        complain(outcome.violation);
    }
    if (!outcome.answer.isEmpty() && !m_shared.faults->noJson) {
        send(outcome.answer, m_shared.faults->lateJson);
    }
    if (outcome.reboots) {
        emit rebootRequested(m_shared.faults->lateJson);
    }
}

void BoxConnection::handleTransfer(const QByteArray &frame, TransferReceiver *receiver)
{
    const TransferReceiver::Step step = receiver->take(frame);
    if (!step.violation.isEmpty()) {
        complain(step.violation);
    }
    if (!step.ended) {
        return;
    }
    const int command = Wire::command(frame);
    const QByteArray verdict = verdictBytes(command, step.success);
    if (!verdict.isEmpty()) {
        send(verdict, m_shared.faults->lateVerdict);
    }
    if (step.success) {
        emit fileReceived(m_peer, command, step.file);
    }
}

QByteArray BoxConnection::verdictBytes(int command, bool success) const
{
    QByteArray bytes = Wire::verdict(command, success ? 0 : 1);
    switch (m_shared.faults->verdict) {
    case BoxSimVerdict::Honest:
        return bytes;
    case BoxSimVerdict::Bad:
        return Wire::verdict(command, 1);
    case BoxSimVerdict::WrongCommand:
        return Wire::verdict(otherTransfer(command), success ? 0 : 1);
    case BoxSimVerdict::WrongSubType:
        bytes[Wire::subTypeOffset] = 2;
        return bytes;
    case BoxSimVerdict::WrongHeader:
        bytes[1] = 0x35;
        return bytes;
    case BoxSimVerdict::Partial:
        return bytes.left(5);
    case BoxSimVerdict::TooLong:
        return bytes + '\0';
    case BoxSimVerdict::None:
        break;
    }
    return QByteArray();
}
