// A file pushed to a sink on loopback.

#include "boxlink/filetransfer.h"

#include <QCryptographicHash>
#include <QFile>
#include <QHostAddress>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

constexpr int fileSize = 16 * 1024 * 1024; // bytes
const char address[] = "127.0.32.1";
constexpr int waiting = 30000; // ms

QByteArray fileBytes()
{
    QByteArray bytes(fileSize, Qt::Uninitialized);
    for (int i = 0; i < bytes.size(); ++i) {
        bytes[i] = char(i * 31 >> 3);
    }
    return bytes;
}

// All frames of the file, the digest's last.
QList<QByteArray> framesOf(const QByteArray &bytes)
{
    QList<QByteArray> frames;
    quint32 number = 1;
    for (int offset = 0; offset < bytes.size(); offset += Frame::chunkSize) {
        frames.append(Frame::chunkFrame(Frame::programTransfer, quint32(bytes.size()), number++,
                                        bytes.mid(offset, Frame::chunkSize)));
    }
    frames.append(Frame::checksumFrame(Frame::programTransfer, quint32(bytes.size()),
                                       QCryptographicHash::hash(bytes, QCryptographicHash::Md5)));
    return frames;
}

// Takes connections one after the other on a thread of its own. Reads this many bytes of each, throws them
// away, answers with a good verdict and waits for the end of the connection.
class Sink
{
public:
    explicit Sink(qint64 expected)
        : m_listener(socket(AF_INET, SOCK_STREAM, 0))
    {
        const int on = 1;
        setsockopt(m_listener, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
        sockaddr_in local{};
        local.sin_family = AF_INET;
        local.sin_port = htons(Frame::boxPort);
        inet_pton(AF_INET, address, &local.sin_addr);
        if (bind(m_listener, reinterpret_cast<sockaddr *>(&local), sizeof local) != 0
            || listen(m_listener, 4) != 0) {
            qFatal("%s can't be listened on", address);
        }
        m_thread = std::thread([this, expected] { serve(expected); });
    }
    ~Sink()
    {
        shutdown(m_listener, SHUT_RDWR);
        m_thread.join();
        close(m_listener);
    }
    Q_DISABLE_COPY(Sink)

private:
    void serve(qint64 expected) const
    {
        static const char verdict[] = {0x12, 0x34, 0x04, 0x00, 0x0a, 0x00, 0x03, 0x00, 0x56, 0x78};
        std::vector<char> buffer(256 * 1024);
        for (int peer = accept(m_listener, nullptr, nullptr); peer >= 0;
             peer = accept(m_listener, nullptr, nullptr)) {
            qint64 received = 0;
            for (ssize_t count = 1; count > 0;) {
                count = recv(peer, buffer.data(), buffer.size(), 0);
                received += count;
                if (count > 0 && received == expected) {
                    send(peer, verdict, sizeof verdict, MSG_NOSIGNAL);
                }
            }
            close(peer);
        }
    }

    int m_listener;
    std::thread m_thread;
};

qint64 sizeOf(const QList<QByteArray> &frames)
{
    qint64 size = 0;
    for (const QByteArray &frame : frames) {
        size += frame.size();
    }
    return size;
}

void transfer(benchmark::State &state)
{
    const QByteArray bytes = fileBytes();
    const QTemporaryDir folder;
    FileTransfer::Job job;
    job.command = Frame::programTransfer;
    job.path = folder.filePath(QStringLiteral("program.bin"));
    job.boxAddress = QLatin1String(address);
    QFile file(job.path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        state.SkipWithError("the file can't be written");
    }
    file.close();
    const Sink sink(sizeOf(framesOf(bytes)));
    for (auto _ : state) {
        QObject owner;
        int percent = 0;
        const FileTransfer::Result result =
            FileTransfer(
                job, &owner, [&percent](int now) { percent = now; }, FileTransfer::Timeouts())
                .run();
        if (!result.ended || percent != 100) {
            state.SkipWithError("the transfer failed");
        }
    }
}

// The finished frames written to a bare socket, each with its wait. With the digest, its making counts too.
void bareSocket(benchmark::State &state, bool digest)
{
    const QByteArray bytes = fileBytes();
    const QList<QByteArray> frames = framesOf(bytes);
    const Sink sink(sizeOf(frames));
    for (auto _ : state) {
        if (digest) {
            benchmark::DoNotOptimize(QCryptographicHash::hash(bytes, QCryptographicHash::Md5));
        }
        QTcpSocket socket;
        socket.connectToHost(QLatin1String(address), Frame::boxPort);
        bool good = socket.waitForConnected(waiting);
        for (const QByteArray &frame : frames) {
            socket.write(frame);
            good = socket.waitForBytesWritten(waiting) && good;
        }
        if (!good || !socket.waitForReadyRead(waiting) || socket.readAll().size() != Frame::verdictSize) {
            state.SkipWithError("the transfer failed");
        }
    }
}

} // namespace

BENCHMARK(transfer)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareSocket, withDigest, true)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareSocket, framesAlone, false)
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
