#include "boxlink/filetransfer.h"

#include <QCoreApplication>
#include <QCryptographicHash>
#include <QEventLoop>
#include <QFile>
#include <QHostAddress>
#include <QTcpSocket>
#include <QTimer>

namespace {

// The texts belong to the form that starts the transfers.
QString text(const char *source)
{
    return QCoreApplication::translate("BoxEditDialog", source);
}

} // namespace

FileTransfer::FileTransfer(Job job, QObject *owner, std::function<void(int)> progress,
                           const Timeouts &timeouts)
    : m_job(std::move(job))
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
        m_result.ending = Ending::NotBound;
        m_result.line = text(QT_TRANSLATE_NOOP("BoxEditDialog", "Binding Status: Failed to bind to %1"))
                            .arg(m_job.localAddress);
        delete m_socket;
        return false;
    }
    m_socket->connectToHost(m_job.boxAddress, Frame::boxPort, QIODevice::ReadWrite,
                            QAbstractSocket::AnyIPProtocol);
    if (!m_socket->waitForConnected(m_timeouts.connecting)) {
        m_result.ending = Ending::NotConnected;
        // Compat: a project that finds no Box is told in the words of a program.
        m_result.line = text(QT_TRANSLATE_NOOP(
            "BoxEditDialog", "Connection Status:Failed to connect to server for program update."));
        delete m_socket;
        return false;
    }
    return true;
}

bool FileTransfer::sendChunks()
{
    QFile file(m_job.path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_result.ending = Ending::FileUnreadable;
        m_result.messageTitle = text(QT_TRANSLATE_NOOP("BoxEditDialog", "Error"));
        m_result.messageText = text(QT_TRANSLATE_NOOP("BoxEditDialog", "Failed to open program file."));
        return false;
    }
    const qint64 size = file.size();
    m_progress(0);
    quint32 number = 1;
    qint64 sent = 0;
    while (!file.atEnd()) {
        const QByteArray chunk = file.read(Frame::chunkSize);
        if (chunk.isEmpty()) {
            break; // unreadable from here on: the digest will tell the Box
        }
        // The total is announced in 32 bits: a file of 4 GiB or more goes out under a wrong one.
        const QByteArray frame = Frame::chunkFrame(m_job.command, static_cast<quint32>(size), number, chunk);
        if (!isOpen()) {
            m_result.line =
                text(QT_TRANSLATE_NOOP("BoxEditDialog", "Connection Status:Not connected to server."));
            break;
        }
        send(frame);
        sent += chunk.size();
        if (size > 0) {
            m_progress(static_cast<int>(qMin<qint64>(sent * 100 / size, 100)));
        }
        ++number;
    }
    return isOpen();
}

bool FileTransfer::sendDigest()
{
    QFile file(m_job.path);
    if (!file.open(QIODevice::ReadOnly)) {
        m_result.ending = Ending::FileUnreadable;
        m_result.messageTitle = text(QT_TRANSLATE_NOOP("BoxEditDialog", "Error"));
        m_result.messageText =
            text(QT_TRANSLATE_NOOP("BoxEditDialog", "Failed to open program file for checksum."));
        return false;
    }
    const qint64 size = file.size();
    QCryptographicHash hash(QCryptographicHash::Md5);
    hash.addData(&file);
    file.close();
    if (m_job.removeWhenDigested) {
        QFile::remove(m_job.path);
    }
    send(Frame::checksumFrame(m_job.command, static_cast<quint32>(size), hash.result()));
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
        m_result.ending = Ending::NoVerdict;
        m_result.messageTitle = text(QT_TRANSLATE_NOOP("BoxEditDialog", "Timeout"));
        m_result.messageText =
            text(QT_TRANSLATE_NOOP("BoxEditDialog", "Timeout while waiting for checksum result."));
        m_result.line =
            text(QT_TRANSLATE_NOOP("BoxEditDialog", "Timeout:Timeout while waiting for checksum result."));
    } else {
        judge(m_socket->readAll());
        m_result.ended = true;
    }
    m_socket->disconnectFromHost();
    m_socket->deleteLater();
}

// A verdict that is not whole when the wait ends is none, and nothing is said about it: a Box sends it in one
// piece.
void FileTransfer::judge(const QByteArray &answer)
{
    if (answer.size() != Frame::verdictSize || answer.at(0) != Frame::header0
        || answer.at(1) != Frame::header1) {
        m_result.ending = Ending::BrokenVerdict;
        return;
    }
    if (Frame::readCommand(answer.constData()) != m_job.command) {
        fail(Ending::WrongVerdict,
             text(QT_TRANSLATE_NOOP("BoxEditDialog", "Checksum Result:Command type error.")));
    } else if (answer.at(Frame::verdictSubTypeOffset) != Frame::verdictSubType) {
        fail(Ending::WrongVerdict,
             text(QT_TRANSLATE_NOOP("BoxEditDialog",
                                    "Checksum Result:Verification data return value error.")));
    } else if (answer.at(Frame::verdictResultOffset) != 0) {
        fail(Ending::Refused, text(QT_TRANSLATE_NOOP("BoxEditDialog", "Checksum Result:Checksum failed.")));
    } else {
        m_result.ending = Ending::Delivered;
        m_result.line = text(QT_TRANSLATE_NOOP("BoxEditDialog", "Checksum Result:Checksum successful."));
    }
}

void FileTransfer::fail(Ending ending, const QString &line)
{
    m_progress(0);
    m_result.ending = ending;
    m_result.line = line;
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
