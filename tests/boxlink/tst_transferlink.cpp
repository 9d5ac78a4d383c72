#include "transfertest.h"

#include <QHostAddress>
#include <QSemaphore>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <QtTest>

#include <limits>

namespace {

// A Box in a thread of its own, for what happens while the program blocks. It serves one connection.
class ThreadedBox
{
public:
    ThreadedBox(const QString &address, std::function<void(QTcpSocket &)> serve)
    {
        m_thread.reset(QThread::create([this, address, serve = std::move(serve)] {
            QTcpServer server;
            m_listening = server.listen(QHostAddress(address), 30088);
            m_ready.release();
            if (m_listening && server.waitForNewConnection(10000)) {
                const std::unique_ptr<QTcpSocket> link(server.nextPendingConnection());
                serve(*link);
            }
        }));
        m_thread->start();
        m_ready.acquire();
    }
    ~ThreadedBox() { m_thread->wait(); }
    Q_DISABLE_COPY(ThreadedBox)

    bool isListening() const { return m_listening; }

private:
    QSemaphore m_ready;
    bool m_listening = false;
    std::unique_ptr<QThread> m_thread;
};

constexpr qint64 largeSize = 24 * 1024 * 1024; // past what the system holds of a connection
constexpr qint64 largeStream = largeSize / 1024 * 1043 + 30;

// Takes the whole stream of a large file, judges it and waits for the end; how many bytes came.
qint64 takeLargeStream(QTcpSocket &link)
{
    qint64 count = 0;
    while (count < largeStream && link.waitForReadyRead(10000)) {
        count += link.readAll().size();
    }
    link.write(verdictOfSuccess);
    link.waitForBytesWritten(10000);
    link.waitForDisconnected(10000);
    return count;
}

} // namespace

// The push of a file to a Box that takes it as it likes, or not: what happens while the program blocks.
class TestTransferLink : public QObject, protected TransferTest
{
    Q_OBJECT
public:
    TestTransferLink()
        : TransferTest("127.0.11.20")
    {
    }

private slots:
    void init() { reset(); }
    void boxThatDoesNotReadIsWaitedFor();
    void linkLostWhileSending();
    void linkLostAfterTheLastChunkIsSilent();
    void percentageSurvivesLargeFiles();
    void totalIsAnnouncedIn32Bits();
};

// A frame that does not go out in its time is no end: the rest follows it.
void TestTransferLink::boxThatDoesNotReadIsWaitedFor()
{
    QSemaphore allSent;
    qint64 count = 0;
    FileTransfer::Result result;
    bool heldUp = false;
    {
        const ThreadedBox box(m_boxAddress, [&](QTcpSocket &link) {
            allSent.acquire();
            count = takeLargeStream(link);
        });
        FileTransfer::Job large = job({});
        QVERIFY(QFile::resize(large.path, largeSize));
        m_timeouts.writing = 0;
        FileTransfer transfer(
            large, m_owner.get(),
            [&](int percentage) {
                if (percentage == 100) {
                    heldUp = m_owner->findChild<QTcpSocket *>()->bytesToWrite() > Frame::chunkSize;
                    allSent.release();
                }
            },
            m_timeouts);
        result = transfer.run();
        allSent.release();
    }
    QVERIFY(heldUp);
    QCOMPARE(result.line, "Checksum Result:Checksum successful.");
    QCOMPARE(count, largeStream);
}

void TestTransferLink::linkLostWhileSending()
{
    const ThreadedBox box(m_boxAddress, [](QTcpSocket &link) {
        link.waitForReadyRead(10000);
        link.abort();
    });
    QVERIFY(box.isListening());
    FileTransfer::Job lost = job(QByteArray(8 * 1024 * 1024, 'x'));
    lost.removeWhenDigested = true;
    QCOMPARE(told(transfer(lost)), "||Connection Status:Not connected to server.");
    QVERIFY(m_percentages.last() < 100);
    QVERIFY(QFile::exists(lost.path));
}

// The link is found lost only when the chunk after the last would go out.
void TestTransferLink::linkLostAfterTheLastChunkIsSilent()
{
    QSemaphore gone;
    const ThreadedBox box(m_boxAddress, [&gone](QTcpSocket &link) {
        link.waitForReadyRead(10000);
        link.abort();
        gone.release();
    });
    const FileTransfer::Job lost = job(QByteArray(1025, 'x'));
    FileTransfer transfer(
        lost, m_owner.get(),
        [&](int percentage) {
            m_percentages.append(percentage);
            if (percentage == 99) {
                gone.acquire();
            }
        },
        m_timeouts);
    QCOMPARE(told(transfer.run()), "||");
    QCOMPARE(m_percentages, (QList<int>{0, 99, 100}));
}

void TestTransferLink::percentageSurvivesLargeFiles()
{
    Q_STATIC_ASSERT(100 * largeSize > std::numeric_limits<int>::max());
    const ThreadedBox box(m_boxAddress, [](QTcpSocket &link) { takeLargeStream(link); });
    FileTransfer::Job large = job({});
    QVERIFY(QFile::resize(large.path, largeSize));
    QCOMPARE(transfer(large).line, "Checksum Result:Checksum successful.");
    QList<int> steps;
    for (const int percentage : qAsConst(m_percentages)) {
        if (steps.isEmpty() || steps.last() != percentage) {
            steps.append(percentage);
        }
    }
    QList<int> expected;
    for (int percentage = 0; percentage <= 100; ++percentage) {
        expected.append(percentage);
    }
    QCOMPARE(steps, expected);
}

void TestTransferLink::totalIsAnnouncedIn32Bits()
{
    QByteArray head;
    {
        const ThreadedBox box(m_boxAddress, [&head](QTcpSocket &link) {
            while (head.size() < 17 && link.waitForReadyRead(10000)) {
                head += link.readAll();
            }
            link.abort();
        });
        FileTransfer::Job huge = job({});
        QVERIFY(QFile::resize(huge.path, Q_INT64_C(0x100000002)));
        QCOMPARE(transfer(huge).line, "Connection Status:Not connected to server.");
    }
    QCOMPARE(head.left(17).toHex(), QByteArray("1234030013040102000000000401000000"));
}

QTEST_GUILESS_MAIN(TestTransferLink)
#include "tst_transferlink.moc"
