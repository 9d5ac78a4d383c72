#include "boxlink/transferrun.h"

namespace {

constexpr int enoughToWrite = 64 * 1024; // bytes in the socket's buffer
constexpr qint64 enoughToRead = Frame::verdictSize + 1;
// The system would take megabytes at once, and the Box's time for the verdict would run while they wait for a
// line that many pushes share.
constexpr int systemBuffer = 64 * 1024;

QString inTime(const QString &event, int timeout)
{
    return QStringLiteral("%1 in %2 s").arg(event).arg(timeout / 1000.0);
}

} // namespace

TransferRun::TransferRun(TransferFrames frames, const TransferTimeouts &timeouts, QObject *parent)
    : QObject(parent)
    , m_frames(std::move(frames))
    , m_timeouts(timeouts)
    , m_timer(this)
{
    m_socket.setReadBufferSize(enoughToRead); // nothing is read before its time, whatever a Box sends
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer); // a coarse one may give up 5 % early
    connect(&m_timer, &QTimer::timeout, this, &TransferRun::handleTimeout);
    connect(&m_socket, &QTcpSocket::connected, this, &TransferRun::beginSending);
    connect(&m_socket, &QTcpSocket::bytesWritten, this, &TransferRun::sendMore);
    connect(&m_socket, &QTcpSocket::readyRead, this, &TransferRun::takeVerdict);
    connect(&m_socket, &QTcpSocket::errorOccurred, this, &TransferRun::handleError);
}

TransferRun::~TransferRun()
{
    m_socket.disconnect(this);
}

void TransferRun::start(const QString &boxAddress)
{
    m_timer.start(m_timeouts.connecting);
    // From the event loop, since it may fail at once.
    QTimer::singleShot(0, this, [this, boxAddress] { m_socket.connectToHost(boxAddress, Frame::boxPort); });
}

void TransferRun::beginSending()
{
    if (!m_frames.open()) {
        end(TransferEnding::FileUnreadable);
        return;
    }
    m_socket.setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, systemBuffer);
    m_stage = Stage::Sending;
    m_timer.start(m_timeouts.writing);
    emit progressed(0);
    sendMore();
}

void TransferRun::sendMore()
{
    if (m_stage == Stage::SendingDigest && m_socket.bytesToWrite() == 0) {
        m_stage = Stage::AwaitingVerdict;
        m_timer.start(m_timeouts.verdict);
        takeVerdict(); // it may have come before its time
        return;
    }
    if (m_stage != Stage::Sending && m_stage != Stage::SendingDigest) {
        return;
    }
    m_timer.start(m_timeouts.writing);
    const int before = m_frames.percentage();
    while (m_stage == Stage::Sending && m_socket.bytesToWrite() < enoughToWrite) {
        const QByteArray frame = m_frames.nextChunk();
        if (frame.isEmpty()) {
            sendDigest();
        } else {
            m_socket.write(frame);
        }
    }
    if (m_stage != Stage::Ended && m_frames.percentage() != before) {
        emit progressed(m_frames.percentage());
    }
}

void TransferRun::sendDigest()
{
    const std::optional<QByteArray> digest = m_frames.digest();
    if (!digest) {
        end(TransferEnding::FileUnreadable);
        return;
    }
    m_stage = Stage::SendingDigest;
    m_socket.write(*digest);
}

void TransferRun::takeVerdict()
{
    if (m_stage == Stage::AwaitingVerdict && m_socket.bytesAvailable() > 0) {
        end(TransferFrames::endingOf(m_frames.judge(m_socket.readAll())));
    }
}

void TransferRun::handleError()
{
    switch (m_stage) {
    case Stage::Connecting:
        end(TransferEnding::NotConnected, m_socket.errorString());
        break;
    case Stage::AwaitingVerdict:
        end(TransferEnding::NoVerdict, m_socket.errorString()); // bytes before the end were told before it
        break;
    default:
        end(TransferEnding::LinkLost, m_socket.errorString());
        break;
    }
}

void TransferRun::handleTimeout()
{
    switch (m_stage) {
    case Stage::Connecting:
        end(TransferEnding::NotConnected, inTime(QStringLiteral("no answer"), m_timeouts.connecting));
        break;
    case Stage::AwaitingVerdict:
        end(TransferEnding::NoVerdict, inTime(QStringLiteral("no answer"), m_timeouts.verdict));
        break;
    default:
        end(TransferEnding::LinkLost, inTime(QStringLiteral("no byte was taken"), m_timeouts.writing));
        break;
    }
}

void TransferRun::end(TransferEnding ending, const QString &detail)
{
    if (m_stage == Stage::Ended) {
        return;
    }
    m_stage = Stage::Ended;
    m_timer.stop();
    m_socket.disconnect(this);
    if (ending == TransferEnding::Delivered) {
        m_socket.disconnectFromHost();
    } else {
        m_socket.abort();
    }
    emit ended(ending, detail);
}
