#include "transfertest.h"

#include "boxlink/transferrun.h"
#include "fakebox.h"
#include "fullhost.h"

#include <QElapsedTimer>
#include <QSignalSpy>
#include <QtTest>

Q_DECLARE_METATYPE(TransferEnding)

namespace {

const QString address = "127.0.40.1";
const QByteArray kilobyte(1024, 'x');

// The stream of the program "x" * 1025.
QByteArray stream()
{
    return hex("12340400 1304 01 01040000 0004 01000000") + kilobyte + hex("5678")
        + hex("12340400 1400 01 01040000 0100 02000000 78 5678")
        + hex("12340400 1e00 02 01040000 10 41b2b8ce59ecc0c64c9c7ecaae3002c3 5678");
}

// A run with what it told.
struct Run {
    explicit Run(const TransferFrames::Opener &opener, const TransferTimeouts &timeouts = {},
                 const QByteArray &md5 = {})
        : run(TransferFrames(Frame::ProgramTransfer, opener, md5), timeouts)
        , ends(&run, &TransferRun::ended)
        , steps(&run, &TransferRun::progressed)
    {
        run.start(address);
    }
    TransferEnding ending() const { return ends.value(0).value(0).value<TransferEnding>(); }
    QString detail() const { return ends.value(0).value(1).toString(); }

    TransferRun run;
    QSignalSpy ends;
    QSignalSpy steps;
};

} // namespace

// A push in the event loop: the same bytes as those of the one that blocks, and an end for every Box.
class TestTransferRun : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { qRegisterMetaType<TransferEnding>("TransferEnding"); }
    void sendsChunksAndDigest();
    void digestForMany();
    void verdict_data();
    void verdict();
    void boxThatGoesAway_data();
    void boxThatGoesAway();
    void boxThatSaysNothing();
    void boxThatDoesNotRead();
    void boxThatSendsWithoutEnd();
    void verdictBeforeItsTime();
    void timeForTheVerdictBeginsBehindTheFile();
    void noBoxAtTheAddress();
    void boxThatTakesNoConnection();
    void fileThatCantBeOpened();
    void manyRunSideBySide();
    void mayBeDeletedInItsSignals();
};

void TestTransferRun::sendsChunksAndDigest()
{
    FakeBox box(address);
    QVERIFY(box.isListening());
    Run run(TransferFrames::bytes(kilobyte + 'x'));
    QTRY_COMPARE(box.received(0).toHex(), stream().toHex());
    QCOMPARE(run.ends.count(), 0);
    box.send(0, hex("12340400 0a00 03 00 5678"));
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), TransferEnding::Delivered);
    QCOMPARE(run.run.size(), 1025);
    QCOMPARE(run.steps.first().at(0).toInt(), 0); // it is connected
    QCOMPARE(run.steps.last().at(0).toInt(), 100);
    QTRY_COMPARE(box.link(0)->state(), QAbstractSocket::UnconnectedState);
}

// Made beforehand, so that what is sent is read once for each.
void TestTransferRun::digestForMany()
{
    FakeBox box(address);
    int opened = 0;
    const auto opener = [&opened, open = TransferFrames::bytes(kilobyte + 'x')] {
        ++opened;
        return open();
    };
    const QByteArray md5 = TransferFrames::md5Of(opener);
    QCOMPARE(opened, 1);
    Run run(opener, {}, md5);
    QTRY_COMPARE(box.received(0).toHex(), stream().toHex());
    QCOMPARE(opened, 2);
    QCOMPARE(TransferFrames::md5Of(TransferFrames::file("missing")), QByteArray());
}

void TestTransferRun::verdict_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<TransferEnding>("ending");
    QTest::newRow("success") << hex("12340400 0a00 03 00 5678") << TransferEnding::Delivered;
    QTest::newRow("failure") << hex("12340400 0a00 03 01 5678") << TransferEnding::Refused;
    QTest::newRow("of a project") << hex("12340300 0a00 03 00 5678") << TransferEnding::WrongVerdict;
    QTest::newRow("other sub-type") << hex("12340400 0a00 02 00 5678") << TransferEnding::WrongVerdict;
    QTest::newRow("other header") << hex("12350400 0a00 03 00 5678") << TransferEnding::BrokenVerdict;
    QTest::newRow("in part") << hex("12340400 0a00 03 00 56") << TransferEnding::BrokenVerdict;
    QTest::newRow("with a byte too many")
        << hex("12340400 0a00 03 00 5678 00") << TransferEnding::BrokenVerdict;
}

void TestTransferRun::verdict()
{
    QFETCH(QByteArray, answer);
    QFETCH(TransferEnding, ending);
    FakeBox box(address);
    box.heard = [&](int index) {
        if (box.received(index).size() == stream().size()) {
            box.send(index, answer);
            box.close(); // behind the verdict, which counts all the same
        }
    };
    Run run(TransferFrames::bytes(kilobyte + 'x'));
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), ending);
    QCOMPARE(run.detail(), QString());
}

void TestTransferRun::boxThatGoesAway_data()
{
    QTest::addColumn<int>("after"); // bytes
    QTest::addColumn<TransferEnding>("ending");
    QTest::newRow("while it is sent") << 1024 * 1024 << TransferEnding::LinkLost;
    QTest::newRow("before its verdict") << 8192 * 1043 + 30 << TransferEnding::NoVerdict;
}

void TestTransferRun::boxThatGoesAway()
{
    QFETCH(int, after);
    QFETCH(TransferEnding, ending);
    FakeBox box(address);
    box.heard = [&](int index) {
        if (box.received(index).size() >= after) {
            box.link(index)->abort();
        }
    };
    Run run(TransferFrames::bytes(QByteArray(8 * 1024 * 1024, 'x')));
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), ending);
    QVERIFY(!run.detail().isEmpty());
}

void TestTransferRun::boxThatSaysNothing()
{
    FakeBox box(address);
    TransferTimeouts timeouts;
    timeouts.verdict = 50;
    Run run(TransferFrames::bytes("a"), timeouts);
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), TransferEnding::NoVerdict);
    QCOMPARE(run.detail(), QString("no answer in 0.05 s"));
}

void TestTransferRun::boxThatDoesNotRead()
{
    QTcpServer deaf; // the system takes the connection and some bytes
    QVERIFY(deaf.listen(QHostAddress(address), 30088));
    deaf.pauseAccepting();
    TransferTimeouts timeouts;
    timeouts.writing = 100;
    Run run(TransferFrames::bytes(QByteArray(1024 * 1024, 'x')), timeouts);
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), TransferEnding::LinkLost);
    QCOMPARE(run.detail(), QString("no byte was taken in 0.1 s"));
    QVERIFY(!run.steps.isEmpty());
    QVERIFY(run.steps.last().at(0).toInt() < 100);
}

// What it sends stays in the system.
void TestTransferRun::boxThatSendsWithoutEnd()
{
    QTcpServer server;
    QVERIFY(server.listen(QHostAddress(address), 30088));
    QTcpSocket *link = nullptr;
    connect(&server, &QTcpServer::newConnection, &server, [&] {
        link = server.nextPendingConnection();
        link->setReadBufferSize(1); // it reads nothing, so that the run does not end
        link->write(QByteArray(24 * 1024 * 1024, 'x'));
    });
    TransferTimeouts timeouts;
    timeouts.writing = 300;
    Run run(TransferFrames::bytes(QByteArray(32 * 1024 * 1024, 'x')), timeouts);
    qint64 left = 0;
    connect(&run.run, &TransferRun::ended, &server, [&] { left = link->bytesToWrite(); });
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), TransferEnding::LinkLost);
    QVERIFY(left > 0);
}

void TestTransferRun::verdictBeforeItsTime()
{
    FakeBox box(address);
    box.heard = [&](int index) {
        box.heard = nullptr;
        box.send(index, hex("12340400 0a00 03 00 5678"));
    };
    Run run(TransferFrames::bytes(QByteArray(8 * 1024 * 1024, 'x')));
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), TransferEnding::Delivered);
}

// Not with what the system holds for a Box that is slow to take it.
void TestTransferRun::timeForTheVerdictBeginsBehindTheFile()
{
    QTcpServer slow;
    QVERIFY(slow.listen(QHostAddress(address), 30088));
    slow.pauseAccepting();
    TransferTimeouts timeouts;
    timeouts.verdict = 200;
    Run run(TransferFrames::bytes(QByteArray(1024 * 1024, 'x')), timeouts);
    QVERIFY2(!run.ends.wait(2 * timeouts.verdict), "it gave up");
    slow.resumeAccepting();
    QTRY_VERIFY(slow.hasPendingConnections());
    QTcpSocket *link = slow.nextPendingConnection();
    int received = 0;
    connect(link, &QTcpSocket::readyRead, this, [&] {
        received += link->readAll().size();
        if (received == 1024 * 1043 + 30) {
            link->write(hex("12340400 0a00 03 00 5678"));
        }
    });
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), TransferEnding::Delivered);
}

void TestTransferRun::boxThatTakesNoConnection()
{
    const FullHost host(address);
    TransferTimeouts timeouts;
    timeouts.connecting = 50;
    Run run(TransferFrames::bytes("a"), timeouts);
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), TransferEnding::NotConnected);
    QCOMPARE(run.detail(), QString("no answer in 0.05 s"));
}

void TestTransferRun::noBoxAtTheAddress()
{
    Run run(TransferFrames::bytes("a"));
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), TransferEnding::NotConnected);
    QCOMPARE(run.detail(), "Connection refused");
}

void TestTransferRun::fileThatCantBeOpened()
{
    FakeBox box(address);
    Run run(TransferFrames::file("missing"));
    QTRY_COMPARE(run.ends.count(), 1);
    QCOMPARE(run.ending(), TransferEnding::FileUnreadable);
}

void TestTransferRun::manyRunSideBySide()
{
    constexpr int many = 20;
    FakeBox box(address);
    std::vector<std::unique_ptr<Run>> runs;
    for (int i = 0; i < many; ++i) {
        runs.push_back(std::make_unique<Run>(TransferFrames::bytes(kilobyte + 'x')));
    }
    QTRY_COMPARE(box.count(), many);
    for (int i = 0; i < many; ++i) {
        QTRY_COMPARE(box.received(i).toHex(), stream().toHex());
    }
    for (int i = 0; i < many; ++i) {
        box.send(i, hex("12340400 0a00 03 00 5678"));
    }
    for (const auto &run : runs) {
        QTRY_COMPARE(run->ends.count(), 1);
        QCOMPARE(run->ending(), TransferEnding::Delivered);
    }
}

void TestTransferRun::mayBeDeletedInItsSignals()
{
    auto *run = new TransferRun(TransferFrames(Frame::ProgramTransfer, TransferFrames::bytes("a")), {});
    const QPointer<TransferRun> alive(run);
    connect(run, &TransferRun::ended, run, [run] { run->deleteLater(); });
    run->start(address);
    QTRY_VERIFY(!alive);
}

QTEST_GUILESS_MAIN(TestTransferRun)
#include "tst_transferrun.moc"
