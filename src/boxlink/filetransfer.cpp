#include "boxlink/filetransfer.h"

#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

namespace {

// The texts belong to the form that starts the transfers.
struct Text {
    Q_DECLARE_TR_FUNCTIONS(BoxEditDialog)
};

} // namespace

FileTransfer::FileTransfer(Job job, QObject *owner, std::function<void(int)> progress,
                           const TransferTimeouts &timeouts)
    : m_job(std::move(job))
    , m_frames(m_job.command, TransferFrames::file(m_job.path))
    , m_progress(std::move(progress))
    , m_timeouts(timeouts)
    , m_socket(new QTcpSocket(owner))
{
}

FileTransfer::Result FileTransfer::run()
{
    if (connectToBox() && sendChunks() && sendDigest()) {
        awaitVerdict();
    }
    return m_result;
}

QString FileTransfer::anyAddress()
{
    return QStringLiteral("0.0.0.0");
}

bool FileTransfer::connectToBox()
{
    if (m_job.localAddress != anyAddress() && !m_socket->bind(QHostAddress(m_job.localAddress), 0)) {
        m_result.ending = TransferEnding::NotBound;
        m_result.line = Text::tr("Binding Status: Failed to bind to %1").arg(m_job.localAddress);
        delete m_socket;
        return false;
    }
    m_socket->connectToHost(m_job.boxAddress, Frame::boxPort, QIODevice::ReadWrite,
                            QAbstractSocket::AnyIPProtocol);
    if (!m_socket->waitForConnected(m_timeouts.connecting)) {
        m_result.ending = TransferEnding::NotConnected;
        // Compat: a project that finds no Box is told in the words of a program.
        m_result.line = Text::tr("Connection Status:Failed to connect to server for program update.");
        delete m_socket;
        return false;
    }
    return true;
}

bool FileTransfer::sendChunks()
{
    if (!m_frames.open()) {
        m_result.ending = TransferEnding::FileUnreadable;
        m_result.messageTitle = Text::tr("Error");
        m_result.messageText = Text::tr("Failed to open program file.");
        return false;
    }
    m_progress(0);
    for (QByteArray frame = m_frames.nextChunk(); !frame.isEmpty(); frame = m_frames.nextChunk()) {
        if (!isOpen()) {
            m_result.line = Text::tr("Connection Status:Not connected to server.");
            break;
        }
        send(frame);
        if (m_frames.size() > 0) {
            m_progress(m_frames.percentage());
        }
    }
    return isOpen();
}

bool FileTransfer::sendDigest()
{
    const std::optional<QByteArray> digest = m_frames.digest();
    if (!digest) {
        m_result.ending = TransferEnding::FileUnreadable;
        m_result.messageTitle = Text::tr("Error");
        m_result.messageText = Text::tr("Failed to open program file for checksum.");
        return false;
    }
    if (m_job.removeWhenDigested) {
        QFile::remove(m_job.path);
    }
    send(*digest);
    return true;
}

void FileTransfer::awaitVerdict()
{
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer); // a coarse one may give up 5 % early
    QObject::connect(m_socket, &QIODevice::readyRead, &loop, &QEventLoop::quit);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    QObject::connect(m_socket, &QObject::destroyed, &loop, &QEventLoop::quit);
    timer.start(m_timeouts.verdict);
    loop.exec();

    if (!m_socket) {
        return;
    }
    // Compat: judged by what holds now, not by what ended the wait. A second transfer that is started
    // meanwhile runs inside the loop and may keep it from returning until the time is up, whatever came
    // before.
    if (!timer.isActive()) {
        m_progress(0);
        m_result.ending = TransferEnding::NoVerdict;
        m_result.messageTitle = Text::tr("Timeout");
        m_result.messageText = Text::tr("Timeout while waiting for checksum result.");
        m_result.line = Text::tr("Timeout:Timeout while waiting for checksum result.");
    } else {
        judge(m_socket->readAll());
        m_result.endedInTime = true;
    }
    m_socket->disconnectFromHost();
    m_socket->deleteLater();
}

// Nothing is said about a verdict that is not whole.
void FileTransfer::judge(const QByteArray &answer)
{
    const TransferVerdict verdict = m_frames.judge(answer);
    m_result.ending = TransferFrames::endingOf(verdict);
    switch (verdict) {
    case TransferVerdict::Success:
        m_result.line = Text::tr("Checksum Result:Checksum successful.");
        return;
    case TransferVerdict::Broken:
        return;
    case TransferVerdict::OtherCommand:
        m_result.line = Text::tr("Checksum Result:Command type error.");
        break;
    case TransferVerdict::OtherSubType:
        m_result.line = Text::tr("Checksum Result:Verification data return value error.");
        break;
    case TransferVerdict::Failure:
        m_result.line = Text::tr("Checksum Result:Checksum failed.");
        break;
    }
    m_progress(0);
}

void FileTransfer::send(const QByteArray &frame)
{
    m_socket->write(frame);
    if (isOpen()) {
        m_socket->waitForBytesWritten(m_timeouts.writing);
    }
}

bool FileTransfer::isOpen() const
{
    return m_socket->state() == QAbstractSocket::ConnectedState
        || m_socket->state() == QAbstractSocket::ConnectingState;
}
