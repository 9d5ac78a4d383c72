// A file pushed to a sink on loopback.

#include "boxlink/filetransfer.h"

#include <QCryptographicHash>
#include <QFile>
#include <QHostAddress>
#include <QTcpSocket>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <arpa/inet.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <numeric>
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
        frames.append(Frame::chunkFrame(Frame::ProgramTransfer, quint32(bytes.size()), number++,
                                        bytes.mid(offset, Frame::chunkSize)));
    }
    frames.append(Frame::checksumFrame(Frame::ProgramTransfer, quint32(bytes.size()),
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
                // At once: an acknowledgement that is held back for 40 ms keeps some last frames waiting.
                setsockopt(peer, IPPROTO_TCP, TCP_QUICKACK, &on, sizeof on);
                count = recv(peer, buffer.data(), buffer.size(), 0);
                received += count;
                if (count > 0 && received == expected) {
                    send(peer, verdict, sizeof verdict, MSG_NOSIGNAL);
                }
            }
            close(peer);
        }
    }

    static constexpr int on = 1;
    int m_listener;
    std::thread m_thread;
};

// The file, its frames, and the sink that they go to.
struct Task {
    Task()
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(fileBytes()) != fileSize) {
            qFatal("%s can't be written", qPrintable(path));
        }
    }

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("program.bin"));
    const QList<QByteArray> frames = framesOf(fileBytes());
    const Sink sink{
        std::accumulate(frames.begin(), frames.end(), qint64(0),
                        [](qint64 size, const QByteArray &frame) { return size + frame.size(); })};
};

void transfer(benchmark::State &state)
{
    const Task task;
    FileTransfer::Job job;
    job.command = Frame::ProgramTransfer;
    job.path = task.path;
    job.boxAddress = QLatin1String(address);
    for (auto _ : state) {
        QObject owner;
        int percent = 0;
        const FileTransfer::Result result =
            FileTransfer(
                job, &owner, [&percent](int now) { percent = now; }, TransferTimeouts())
                .run();
        if (!result.endedInTime || percent != 100) {
            state.SkipWithError("the transfer failed");
        }
    }
}

// Writes all frames to the socket, each with its wait.
using WriteFrames = bool (*)(QTcpSocket &socket, const Task &task);

bool write(QTcpSocket &socket, const QByteArray &frame)
{
    socket.write(frame);
    return socket.waitForBytesWritten(waiting);
}

bool writeFinished(QTcpSocket &socket, const Task &task)
{
    return std::all_of(task.frames.begin(), task.frames.end(),
                       [&socket](const QByteArray &frame) { return write(socket, frame); });
}

// The frames made from the file, and the digest of the file as it lies on disk.
bool writeFromFile(QTcpSocket &socket, const Task &task)
{
    QFile file(task.path);
    bool good = file.open(QIODevice::ReadOnly);
    for (quint32 number = 1; good && !file.atEnd(); ++number) {
        good = write(
            socket, Frame::chunkFrame(Frame::ProgramTransfer, fileSize, number, file.read(Frame::chunkSize)));
    }
    file.seek(0);
    QCryptographicHash hash(QCryptographicHash::Md5);
    hash.addData(&file);
    return good && write(socket, Frame::checksumFrame(Frame::ProgramTransfer, fileSize, hash.result()));
}

void bareSocket(benchmark::State &state, WriteFrames writeFrames)
{
    const Task task;
    for (auto _ : state) {
        QTcpSocket socket;
        socket.connectToHost(QLatin1String(address), Frame::boxPort);
        if (!socket.waitForConnected(waiting) || !writeFrames(socket, task)
            || !socket.waitForReadyRead(waiting) || socket.readAll().size() != Frame::verdictSize) {
            state.SkipWithError("the transfer failed");
        }
    }
}

} // namespace

BENCHMARK(transfer)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareSocket, fromFile, writeFromFile)
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(bareSocket, finished, writeFinished)
    ->UseRealTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
