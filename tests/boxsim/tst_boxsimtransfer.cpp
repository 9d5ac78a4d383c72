#include "boxsimtest.h"

#include <QFile>
#include <QThread>

// Transfers to the simulated Box, by hand-written chunks and digests.
class TestBoxSimTransfer : public BoxSimTest
{
    Q_OBJECT
public:
    TestBoxSimTransfer()
        : BoxSimTest("127.0.12.6")
    {
    }

private slots:
    void cleanup() { stop(); }

    void fileArrivesWithItsDigest_data();
    void fileArrivesWithItsDigest();
    void brokenTransferFails_data();
    void brokenTransferFails();
    void aTransferAfterABrokenOneSucceeds();
    void sessionGoesOnDuringATransfer();
    void aTransferConnectionGetsNoReports();
    void aPushedFileThatIsNoProjectLeavesTheOldOneRunning();
    void aBlockingToolIsServedFromAnotherThread();
};

void TestBoxSimTransfer::fileArrivesWithItsDigest_data()
{
    QTest::addColumn<char>("command");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QByteArray>("digest");
    const QByteArray none("d41d8cd98f00b204e9800998ecf8427e");
    const QByteArray of1024("c9a34cfc85d982698c6ac89f76071abd");
    const QByteArray of1025("ae187e1febee2a150b64849c32d566ca");
    QTest::newRow("empty program") << '\4' << QByteArray() << none;
    QTest::newRow("one byte") << '\4' << QByteArray("a") << QByteArray("0cc175b9c0f1b6a831c399e269772661");
    QTest::newRow("exactly one chunk") << '\4' << QByteArray(1024, 'a') << of1024;
    QTest::newRow("a chunk and a byte") << '\4' << QByteArray(1025, 'a') << of1025;
    QTest::newRow("project") << '\3' << QByteArray(1025, 'a') << of1025;
}

void TestBoxSimTransfer::fileArrivesWithItsDigest()
{
    QFETCH(char, command);
    QFETCH(QByteArray, file);
    QFETCH(QByteArray, digest);
    RUN(start());
    QSignalSpy projects(m_box.get(), &BoxSim::projectAccepted);
    QSignalSpy programs(m_box.get(), &BoxSim::programAccepted);
    m_tool->send(Raw::transfer(command, file, digest));
    QCOMPARE(m_tool->take(10), Raw::hex("1234") + command + Raw::hex("000a0003005678"));
    QSignalSpy &accepted = command == 3 ? projects : programs;
    QCOMPARE(projects.size() + programs.size(), 1);
    QCOMPARE(accepted.at(0).at(0).toByteArray(), file);
}

void TestBoxSimTransfer::brokenTransferFails_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("told");
    const QByteArray a = QByteArray(1024, 'a');
    const QByteArray digest("ae187e1febee2a150b64849c32d566ca"); // of 1025 times 'a'
    const QByteArray first = Raw::chunk(4, 1025, 1, a);
    const QByteArray second = Raw::chunk(4, 1025, 2, "a");
    const QByteArray end = Raw::checksum(4, 1025, digest);
    const auto row = [](const char *name, const QByteArray &bytes, const char *told) {
        QTest::newRow(name) << bytes << QString::fromLatin1(told);
    };
    row("wrong digest", first + second + Raw::checksum(4, 1025, "00000000000000000000000000000000"),
        "digest is not that of the bytes");
    row("chunk missing", first + end, "1024 of 1025 bytes have come");
    row("first chunk is 0", Raw::chunk(4, 1025, 0, a) + Raw::chunk(4, 1025, 1, "a") + end,
        "chunk 0 where 1 was due");
    row("chunk twice", first + first + second + end, "chunk 1 where 2 was due");
    row("other total in a chunk", first + Raw::chunk(4, 1026, 2, "a") + end,
        "total changed from 1025 to 1026");
    row("other total in the checksum", first + second + Raw::checksum(4, 1024, digest),
        "checksum frame announces another total");
    row("more than announced", first + Raw::chunk(4, 1025, 2, "aa") + end,
        "chunk 2 of 2 bytes does not fit a file of 1025");
    row("short chunk before the last", Raw::chunk(4, 1025, 1, "a") + Raw::chunk(4, 1025, 2, a) + end,
        "chunk 1 of 1 bytes does not fit a file of 1025");
    row("chunk over 1024", Raw::chunk(4, 1025, 1, QByteArray(1025, 'a')) + end,
        "chunk size does not fit the frame");
    row("chunk without a byte", Raw::chunk(4, 1025, 1, QByteArray()) + end,
        "chunk size does not fit the frame");
    row("sub-type 7", Raw::hex("12340400 0900 07 5678") + end, "transfer frame with sub-type 7");
    row("4 GiB announced", Raw::chunk(4, -1, 1, a) + end, "a file of 4294967295 bytes is too large");
    row("checksum of 15 bytes",
        first + second + Raw::hex("12340400 1d00 02 01040000 0f ae187e1febee2a150b64849c32d566")
            + Raw::hex("5678"),
        "checksum frame does not hold 16 bytes");
}

void TestBoxSimTransfer::brokenTransferFails()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, told);
    RUN(start());
    QSignalSpy programs(m_box.get(), &BoxSim::programAccepted);
    m_tool->send(bytes);
    QCOMPARE(m_tool->take(10).toHex(), QByteArray("123404000a0003015678"));
    QCOMPARE(m_violations, QStringList{told});
    QCOMPARE(programs.size(), 0);
}

void TestBoxSimTransfer::aTransferAfterABrokenOneSucceeds()
{
    RUN(start());
    m_tool->send(Raw::transfer(4, "a", "00000000000000000000000000000000"));
    QCOMPARE(m_tool->take(10).at(7), '\1');
    m_tool->send(Raw::transfer(4, "a", "0cc175b9c0f1b6a831c399e269772661"));
    QCOMPARE(m_tool->take(10).at(7), '\0');
}

void TestBoxSimTransfer::sessionGoesOnDuringATransfer()
{
    RUN(startBox(options()));
    RawTool session;
    RawTool transfer;
    QVERIFY(session.connectTo(address()));
    QVERIFY(transfer.connectTo(address()));
    transfer.send(Raw::chunk(4, 1025, 1, QByteArray(1024, 'a')));
    session.send(Raw::heartbeat);
    QVERIFY(!session.takeFrame().isEmpty());
    transfer.send(Raw::chunk(4, 1025, 2, "a") + Raw::checksum(4, 1025, "ae187e1febee2a150b64849c32d566ca"));
    QCOMPARE(transfer.take(10).toHex(), QByteArray("123404000a0003005678"));
    QCOMPARE(m_box->connectionsSeen(), 2);
    QCOMPARE(m_box->sessionCount(), 1);
}

void TestBoxSimTransfer::aTransferConnectionGetsNoReports()
{
    RUN(startBox(options()));
    QFile project(QString(TEST_DATA_DIR "/one-slave.json"));
    QVERIFY(project.open(QIODevice::ReadOnly));
    QVERIFY(m_box->runProject(project.readAll()));
    RawTool session;
    RawTool transfer;
    RawTool undecided;
    QVERIFY(session.connectTo(address()));
    QVERIFY(transfer.connectTo(address()));
    QVERIFY(undecided.connectTo(address()));
    session.send(Raw::heartbeat);
    transfer.send(Raw::chunk(4, 1, 1, "a"));
    QVERIFY(!session.takeFrame().isEmpty());
    m_box->reportNow();
    QCOMPARE(session.takeFrame().left(4).toHex(), QByteArray("12340600"));
    transfer.send(Raw::checksum(4, 1, "0cc175b9c0f1b6a831c399e269772661"));
    QCOMPARE(transfer.take(10).toHex(), QByteArray("123404000a0003005678"));
    QCOMPARE(undecided.bytes(), QByteArray());
}

void TestBoxSimTransfer::aPushedFileThatIsNoProjectLeavesTheOldOneRunning()
{
    RUN(startBox(options()));
    QVERIFY(m_box->runProject("{\"name\":\"Old\"}"));
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::transfer(3, "a", "0cc175b9c0f1b6a831c399e269772661"));
    // The verdict is about the digest alone.
    QCOMPARE(tool.take(10).toHex(), QByteArray("123403000a0003005678"));
    QCOMPARE(m_violations, QStringList{"pushed file is no project: illegal value"});
    QCOMPARE(m_box->projectName(), "Old");
}

void TestBoxSimTransfer::aBlockingToolIsServedFromAnotherThread()
{
    QThread thread;
    BoxSim box(options());
    box.moveToThread(&thread);
    thread.start();
    bool started = false;
    QMetaObject::invokeMethod(
        &box, [&box] { return box.start(); }, Qt::BlockingQueuedConnection, &started);
    QTcpSocket tool;
    tool.connectToHost(address(), 30088);
    const bool connected = tool.waitForConnected(5000);
    // More than the system buffers: without a reader the tool would stand still.
    const int size = 30 * 1024 * 1024;
    int blocked = 0;
    for (int at = 0, number = 1; at < size; at += 1024, ++number) {
        tool.write(Raw::chunk(4, size, number, QByteArray(1024, 'a')));
        blocked += tool.waitForBytesWritten(5000) ? 0 : 1;
    }
    tool.write(Raw::checksum(4, size, "93ec09663019ee5273f775aa3a2220e8"));
    while (tool.bytesAvailable() < 10 && tool.waitForReadyRead(5000)) {}
    const QByteArray verdict = tool.readAll();
    QMetaObject::invokeMethod(
        &box,
        [&box, home = QThread::currentThread()] {
            box.stop();
            box.moveToThread(home);
        },
        Qt::BlockingQueuedConnection);
    thread.quit();
    QVERIFY(thread.wait());
    QVERIFY(started && connected);
    QCOMPARE(blocked, 0);
    QCOMPARE(verdict.toHex(), QByteArray("123404000a0003005678"));
}

QTEST_GUILESS_MAIN(TestBoxSimTransfer)
#include "tst_boxsimtransfer.moc"
