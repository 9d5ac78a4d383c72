#include "transfertest.h"

#include "fakebox.h"

#include <QElapsedTimer>
#include <QtTest>

// The push of a file to a Box: the bytes of every frame, and what the user is told of every end.
class TestTransfer : public QObject, protected TransferTest
{
    Q_OBJECT
public:
    TestTransfer()
        : TransferTest("127.0.11.2")
    {
    }

private slots:
    void init() { reset(); }
    void sendsChunksAndDigest_data();
    void sendsChunksAndDigest();
    void verdict_data();
    void verdict();
    void percentageIsTruncated();
    void verdictThatStaysAwayIsATimeout();
    void noBoxAtTheAddress();
    void localAddressThatCantBeBound();
    void sendsFromTheLocalAddress();
    void fileThatCantBeOpened();
    void fileThatCantBeOpenedAgain();
    void temporaryFileGoesWithItsDigest_data();
    void temporaryFileGoesWithItsDigest();
    void ownerMayDieWhileTheVerdictIsAwaited();
    void secondTransferDuringTheWait_data();
    void secondTransferDuringTheWait();
    void endOfTheProgramEndsTheWait();
};

void TestTransfer::sendsChunksAndDigest_data()
{
    QTest::addColumn<int>("command");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QByteArray>("stream");
    const QByteArray kilobyte(1024, 'x');
    QTest::newRow("empty project") << 0x0300 << QByteArray()
                                   << hex("12340300 1e00 02 00000000 10"
                                          "d41d8cd98f00b204e9800998ecf8427e 5678");
    QTest::newRow("program of one byte")
        << 0x0400 << QByteArray("a")
        << hex("12340400 1400 01 01000000 0100 01000000 61 5678"
               "12340400 1e00 02 01000000 10 0cc175b9c0f1b6a831c399e269772661 5678");
    QTest::newRow("project of one full chunk") << 0x0300 << kilobyte
                                               << hex("12340300 1304 01 00040000 0004 01000000") + kilobyte
            + hex("5678") + hex("12340300 1e00 02 00040000 10 7265f4d211b56873a381d321f586e4a9 5678");
    QTest::newRow("program of one byte more") << 0x0400 << kilobyte + 'x'
                                              << hex("12340400 1304 01 01040000 0004 01000000") + kilobyte
            + hex("5678") + hex("12340400 1400 01 01040000 0100 02000000 78 5678")
            + hex("12340400 1e00 02 01040000 10 41b2b8ce59ecc0c64c9c7ecaae3002c3 5678");
}

void TestTransfer::sendsChunksAndDigest()
{
    QFETCH(int, command);
    QFETCH(QByteArray, content);
    QFETCH(QByteArray, stream);
    FakeBox box(m_boxAddress);
    QVERIFY(box.isListening());
    box.heard = [&](int index) {
        if (box.received(index).size() >= stream.size()) {
            QByteArray answer = verdictOfSuccess;
            answer[2] = char(command >> 8);
            box.send(index, answer);
        }
    };
    const FileTransfer::Result result = transfer(job(content, Frame::Command(command)));
    QCOMPARE(box.received(0).toHex(), stream.toHex());
    QCOMPARE(told(result), "ended: ||Checksum Result:Checksum successful.");
    QTRY_COMPARE(box.link(0)->state(), QAbstractSocket::UnconnectedState);
    QTRY_VERIFY(m_owner->children().isEmpty());
}

void TestTransfer::verdict_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("line");
    QTest::addColumn<int>("percentage");
    const QString success = "Checksum Result:Checksum successful.";
    const QString failed = "Checksum Result:Checksum failed.";
    const QString command = "Checksum Result:Command type error.";
    const QString kind = "Checksum Result:Verification data return value error.";
    QTest::newRow("success") << hex("12340300 0a00 03 00 5678") << success << 100;
    QTest::newRow("length and footer are not looked at") << hex("12340300 ffff 03 00 0000") << success << 100;
    QTest::newRow("failure") << hex("12340300 0a00 03 01 5678") << failed << 0;
    QTest::newRow("failure beyond 127") << hex("12340300 0a00 03 ff 5678") << failed << 0;
    QTest::newRow("of a program") << hex("12340400 0a00 03 00 5678") << command << 0;
    QTest::newRow("low command byte counts") << hex("12340301 0a00 03 00 5678") << command << 0;
    QTest::newRow("command goes before sub-type") << hex("12340400 0a00 02 01 5678") << command << 0;
    QTest::newRow("other sub-type") << hex("12340300 0a00 02 00 5678") << kind << 0;
    QTest::newRow("sub-type goes before result") << hex("12340300 0a00 01 01 5678") << kind << 0;
    QTest::newRow("other header") << hex("12350300 0a00 03 00 5678") << QString() << 100;
    QTest::newRow("in part") << hex("12340300 0a00 03 01 56") << QString() << 100;
    QTest::newRow("with a byte too many") << hex("12340300 0a00 03 01 5678 00") << QString() << 100;
}

void TestTransfer::verdict()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, line);
    QFETCH(int, percentage);
    FakeBox box(m_boxAddress);
    box.heard = [&](int index) {
        if (box.received(index).size() == 50) {
            box.send(index, answer);
        }
    };
    const FileTransfer::Result result = transfer(job("a"));
    QCOMPARE(told(result), "ended: ||" + line);
    QCOMPARE(m_percentages.last(), percentage);
    QTRY_VERIFY(m_owner->children().isEmpty());
}

void TestTransfer::percentageIsTruncated()
{
    FakeBox box(m_boxAddress);
    m_timeouts.verdict = 1;
    transfer(job(QByteArray(3 * 1024 - 1, 'x')));
    QCOMPARE(m_percentages, (QList<int>{0, 33, 66, 100, 0}));
}

void TestTransfer::verdictThatStaysAwayIsATimeout()
{
    FakeBox box(m_boxAddress);
    m_timeouts.verdict = 50;
    QElapsedTimer clock;
    clock.start();
    const FileTransfer::Result result = transfer(job("a"));
    QVERIFY(clock.elapsed() >= 50);
    QCOMPARE(told(result),
             "Timeout|Timeout while waiting for checksum result.|"
             "Timeout:Timeout while waiting for checksum result.");
    QCOMPARE(m_percentages, (QList<int>{0, 100, 0}));
    QTRY_VERIFY(m_owner->children().isEmpty());
    QTRY_COMPARE(box.link(0)->state(), QAbstractSocket::UnconnectedState);
}

void TestTransfer::noBoxAtTheAddress()
{
    QElapsedTimer clock;
    clock.start();
    const FileTransfer::Result result = transfer(job("a"));
    QVERIFY2(clock.elapsed() < 10000, "a refused connection is waited for");
    QCOMPARE(told(result), "||Connection Status:Failed to connect to server for program update.");
    QCOMPARE(m_percentages, QList<int>());
    QVERIFY(m_owner->children().isEmpty());
}

void TestTransfer::localAddressThatCantBeBound()
{
    FakeBox box(m_boxAddress);
    FileTransfer::Job bound = job("a");
    bound.localAddress = "192.0.2.1";
    QCOMPARE(told(transfer(bound)), "||Binding Status: Failed to bind to 192.0.2.1");
    QVERIFY(m_owner->children().isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(box.count(), 0);
}

void TestTransfer::sendsFromTheLocalAddress()
{
    FakeBox box(m_boxAddress);
    FileTransfer::Job bound = job("a");
    bound.localAddress = "127.0.11.3";
    box.heard = [&](int index) { box.send(index, verdictOfSuccess); };
    QCOMPARE(transfer(bound).line, "Checksum Result:Checksum successful.");
    QCOMPARE(box.link(0)->peerAddress(), QHostAddress("127.0.11.3"));
}

void TestTransfer::fileThatCantBeOpened()
{
    FakeBox box(m_boxAddress);
    FileTransfer::Job missing = job("a");
    QVERIFY(QFile::remove(missing.path));
    QCOMPARE(told(transfer(missing)), "Error|Failed to open program file.|");
    // The connection stays until its owner goes.
    QCOMPARE(m_owner->findChild<QTcpSocket *>()->state(), QAbstractSocket::ConnectedState);
    QTRY_COMPARE(box.count(), 1);
    m_owner.reset();
    QTRY_COMPARE(box.link(0)->state(), QAbstractSocket::UnconnectedState);
    QCOMPARE(box.received(0), QByteArray());
}

void TestTransfer::fileThatCantBeOpenedAgain()
{
    FakeBox box(m_boxAddress);
    const FileTransfer::Job vanishing = job("a");
    FileTransfer transfer(
        vanishing, m_owner.get(),
        [&](int percentage) {
            if (percentage == 100) {
                QFile::remove(vanishing.path);
            }
        },
        m_timeouts);
    QCOMPARE(told(transfer.run()), "Error|Failed to open program file for checksum.|");
    // Here, too, the connection stays.
    QCOMPARE(m_owner->findChild<QTcpSocket *>()->state(), QAbstractSocket::ConnectedState);
    QTRY_COMPARE(box.received(0).toHex(), hex("12340300 1400 01 01000000 0100 01000000 61 5678").toHex());
}

void TestTransfer::temporaryFileGoesWithItsDigest_data()
{
    QTest::addColumn<bool>("listening");
    QTest::addColumn<bool>("temporary");
    QTest::addColumn<bool>("stays");
    QTest::newRow("gone, whatever the verdict") << true << true << false;
    QTest::newRow("stays where no Box is") << false << true << true;
    QTest::newRow("a program is not temporary") << true << false << true;
}

void TestTransfer::temporaryFileGoesWithItsDigest()
{
    QFETCH(bool, listening);
    QFETCH(bool, temporary);
    QFETCH(bool, stays);
    const auto box = listening ? std::make_unique<FakeBox>(m_boxAddress) : nullptr;
    m_timeouts.verdict = 1;
    FileTransfer::Job passing = job("a");
    passing.removeWhenDigested = temporary;
    transfer(passing);
    QCOMPARE(QFile::exists(passing.path), stays);
}

void TestTransfer::ownerMayDieWhileTheVerdictIsAwaited()
{
    FakeBox box(m_boxAddress);
    box.heard = [this](int) { m_owner.reset(); };
    QElapsedTimer clock;
    clock.start();
    const FileTransfer::Result result = transfer(job("a"));
    QVERIFY2(clock.elapsed() < 4000, "the wait went on without its owner");
    QCOMPARE(told(result), "||");
    QCOMPARE(m_percentages, (QList<int>{0, 100}));
}

void TestTransfer::secondTransferDuringTheWait_data()
{
    QTest::addColumn<int>("firstTimeout"); // ms; the second one's is 400, and it gets no verdict
    QTest::addColumn<QList<QByteArray>>("pieces");
    QTest::addColumn<QString>("line");
    const QString successful = "Checksum Result:Checksum successful.";
    const QString timeout = "Timeout:Timeout while waiting for checksum result.";
    const QByteArray verdict = verdictOfSuccess;
    QTest::newRow("no verdict, time up") << 200 << QList<QByteArray>() << timeout;
    QTest::newRow("verdict, time up") << 200 << QList<QByteArray>{verdict} << timeout;
    QTest::newRow("verdict, time left") << 8000 << QList<QByteArray>{verdict} << successful;
    QTest::newRow("verdict in pieces, time left")
        << 8000 << QList<QByteArray>{verdict.left(4), verdict.mid(4)} << successful;
    QTest::newRow("two verdicts, time left") << 8000 << QList<QByteArray>{verdict, verdict} << QString();
}

// The second transfer runs in the loop of the first and ends before it: what the first is told, in this call.
void TestTransfer::secondTransferDuringTheWait()
{
    QFETCH(int, firstTimeout);
    QFETCH(QList<QByteArray>, pieces);
    QFETCH(QString, line);
    FakeBox box(m_boxAddress);
    FileTransfer::Result second;
    bool started = false;
    QTimer speaker; // a piece at a time, so that each arrives on its own
    connect(&speaker, &QTimer::timeout, this, [&] {
        if (!pieces.isEmpty()) {
            box.send(0, pieces.takeFirst());
        }
    });
    box.heard = [&](int index) {
        if (index == 0 && !started) {
            started = true;
            QTimer::singleShot(0, this, [&] {
                m_timeouts.verdict = 400;
                second = transfer(job("b"));
            });
        } else if (index == 1) {
            speaker.start(10);
        }
    };
    m_timeouts.verdict = firstTimeout;
    const FileTransfer::Result first = transfer(job("a"));
    QVERIFY(pieces.isEmpty());
    QCOMPARE(second.line, "Timeout:Timeout while waiting for checksum result.");
    QCOMPARE(first.line, line);
    QCOMPARE(first.messageTitle, firstTimeout < 400 ? QString("Timeout") : QString());
    QCOMPARE(first.endedInTime, firstTimeout > 400);
    QTRY_VERIFY(m_owner->children().isEmpty());
}

void TestTransfer::endOfTheProgramEndsTheWait()
{
    FakeBox box(m_boxAddress);
    box.heard = [](int) { QCoreApplication::quit(); };
    FileTransfer::Result result;
    QElapsedTimer clock;
    clock.start();
    QTimer::singleShot(0, this, [&] { result = transfer(job("a")); });
    QCoreApplication::exec();
    QVERIFY2(clock.elapsed() < 4000, "the wait went on");
    QCOMPARE(told(result), "ended: ||");
}

QTEST_GUILESS_MAIN(TestTransfer)
#include "fakebox.h"
#include "tst_transfer.moc"
