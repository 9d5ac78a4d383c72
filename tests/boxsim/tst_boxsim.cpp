#include "boxsim/boxsim.h"
#include "rawtool.h"

#include <QNetworkDatagram>
#include <QSignalSpy>
#include <QUdpSocket>

// Sessions, connections and searches of the simulated Box, met with hand-written bytes on a real socket.
class tst_BoxSim : public QObject
{
    Q_OBJECT

private slots:
    void heartbeatIsAnsweredWithThreeCountedTexts();
    void heartbeatTextsStayUnder128Bytes();
    void aPeerThatDoesNotReadIsDropped();
    void connectionsAreLimited();
    void searchIsAnsweredToItsSender();
    void aBoxOnEveryAddressSaysItsLanAddress();
    void searchStaysUnansweredWhereToldSo();
    void strangeDatagramsAreNotAnswered_data();
    void strangeDatagramsAreNotAnswered();
    void rawBytesReachEverySession();
    void closedSessionsLeaveTransfersOpen();
    void anAddressInUseIsTold();
    void unusableOptionsAreTold_data();
    void unusableOptionsAreTold();

private:
    static BoxSimOptions options() { return Raw::quietBox(address()); }
    static QHostAddress address() { return QHostAddress("127.0.12.1"); }
};

void tst_BoxSim::heartbeatIsAnsweredWithThreeCountedTexts()
{
    BoxSimOptions own = options();
    own.version = "2.1";
    own.serialNumber = "A7";
    own.model = "M";
    BoxSim box(own);
    QVERIFY2(box.start(), qPrintable(box.errorString()));
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(QByteArray::fromHex("1234010008005678"));
    QCOMPARE(tool.take(17).toHex(), QByteArray("12340200110003322e31024137014d5678"));
    tool.send(Raw::heartbeat() + Raw::heartbeat());
    QCOMPARE(tool.take(34).size(), 34);
    QCOMPARE(box.sessionCount(), 1);
}

void tst_BoxSim::heartbeatTextsStayUnder128Bytes()
{
    BoxSimOptions own = options();
    own.version = QString(100, QLatin1Char('v'));
    own.serialNumber = QString(15, QLatin1Char('s'));
    own.model = "m"; // 11 + 116
    BoxSim box(own);
    QVERIFY(box.start());
    box.stop();
    own.model = "mm";
    BoxSim tooLong(own);
    QVERIFY(!tooLong.start());
    QCOMPARE(tooLong.errorString(), "version, serial number and model are too long together");
}

void tst_BoxSim::aPeerThatDoesNotReadIsDropped()
{
    BoxSimOptions own = options();
    own.maxQueued = 1000;
    BoxSim box(own);
    QVERIFY(box.start());
    QVERIFY(box.setFault("late-heartbeat=60000"));
    QSignalSpy violations(&box, &BoxSim::violation);
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    for (int i = 0; i < 27; ++i) { // 27 answers of 38 bytes are more than 1000
        tool.send(Raw::heartbeat());
    }
    QVERIFY(tool.waitForEnd());
    QCOMPARE(violations.size(), 1);
    QCOMPARE(violations.at(0).at(1).toString(), "does not read its answers, connection ended");
    QTRY_COMPARE(box.connectionCount(), 0);
}

void tst_BoxSim::connectionsAreLimited()
{
    BoxSimOptions own = options();
    own.maxConnections = 2;
    BoxSim box(own);
    QVERIFY(box.start());
    RawTool first;
    RawTool second;
    RawTool third;
    QVERIFY(first.connectTo(address()));
    QVERIFY(second.connectTo(address()));
    third.socket().connectToHost(address(), 30088);
    QTRY_COMPARE(box.connectionCount(), 2);
    QVERIFY(third.waitForEnd());
    first.send(Raw::heartbeat());
    QVERIFY(!first.takeFrame().isEmpty());
}

void tst_BoxSim::searchIsAnsweredToItsSender()
{
    BoxSimOptions own = options();
    own.settings.insert("lanMask", "255.255.255.128");
    own.model = "MRN-GATE-20";
    BoxSim box(own);
    QVERIFY(box.start());
    QSignalSpy searched(&box, &BoxSim::searched);
    QUdpSocket tool;
    QVERIFY(tool.bind(address(), 0));
    tool.writeDatagram(QByteArray::fromHex("12340000") + "Search Box" + QByteArray::fromHex("5678"),
                       address(), 30088);
    QTRY_VERIFY(tool.hasPendingDatagrams());
    const QNetworkDatagram answer = tool.receiveDatagram();
    QCOMPARE(answer.data(),
             QByteArray::fromHex("1234ffff") + "127.0.12.1" + QByteArray(6, '\0') + "255.255.255.128"
                 + QByteArray(1, '\0') + QByteArray::fromHex("0b") + "MRN-GATE-20"
                 + QByteArray::fromHex("5678"));
    QCOMPARE(answer.senderPort(), 30088);
    QCOMPARE(searched.size(), 1);
}

void tst_BoxSim::aBoxOnEveryAddressSaysItsLanAddress()
{
    BoxSimOptions own = options();
    own.address = QHostAddress(QHostAddress::AnyIPv4);
    own.port = 0;
    BoxSim box(own);
    QVERIFY(box.start());
    QUdpSocket tool;
    QVERIFY(tool.bind(address(), 0));
    tool.writeDatagram(QByteArray::fromHex("12340000") + "Search Box" + QByteArray::fromHex("5678"),
                       address(), box.port());
    QTRY_VERIFY(tool.hasPendingDatagrams());
    QCOMPARE(tool.receiveDatagram().data().mid(4, 16), "192.168.1.80" + QByteArray(4, '\0'));
}

void tst_BoxSim::searchStaysUnansweredWhereToldSo()
{
    BoxSimOptions own = options();
    own.faults.noDiscovery = true;
    own.discoveryAddress = QHostAddress("127.0.12.101");
    BoxSim box(own);
    QVERIFY(box.start());
    QSignalSpy searched(&box, &BoxSim::searched);
    QUdpSocket tool;
    QVERIFY(tool.bind(address(), 0));
    const QByteArray search = QByteArray::fromHex("12340000") + "Search Box" + QByteArray::fromHex("5678");
    tool.writeDatagram(search, own.discoveryAddress, 30088);
    QTRY_COMPARE(searched.size(), 1);
    QVERIFY(!tool.hasPendingDatagrams());
    box.setFaults(BoxSimFaults());
    tool.writeDatagram(search, own.discoveryAddress, 30088);
    QTRY_VERIFY(tool.hasPendingDatagrams());
    QCOMPARE(tool.receiveDatagram().data().mid(4, 10), QByteArray("127.0.12.1"));
}

void tst_BoxSim::strangeDatagramsAreNotAnswered_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = QByteArray::fromHex("12340000") + "Search Box" + QByteArray::fromHex("5678");
    QTest::newRow("one byte less") << good.left(15);
    QTest::newRow("one byte more") << QByteArray(good + '\0');
    QTest::newRow("another command") << QByteArray(good).replace(2, 1, "\1");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a frame") << Raw::heartbeat();
    QTest::newRow("largest") << QByteArray(60000, '\x12');
}

void tst_BoxSim::strangeDatagramsAreNotAnswered()
{
    QFETCH(QByteArray, bytes);
    BoxSim box(options());
    QVERIFY(box.start());
    QSignalSpy violations(&box, &BoxSim::violation);
    QSignalSpy searched(&box, &BoxSim::searched);
    QUdpSocket tool;
    QVERIFY(tool.bind(address(), 0));
    tool.writeDatagram(bytes, address(), 30088);
    QTRY_COMPARE(violations.size(), 1);
    QCOMPARE(violations.at(0).at(1).toString(),
             QString("datagram of %1 bytes that is no search").arg(bytes.size()));
    QCOMPARE(searched.size(), 0);
    QVERIFY(!tool.hasPendingDatagrams());
}

void tst_BoxSim::rawBytesReachEverySession()
{
    BoxSimOptions own = options();
    own.faults.noise = 9; // raw bytes pass every fault
    own.faults.silent = true;
    BoxSim box(own);
    QVERIFY(box.start());
    RawTool first;
    RawTool second;
    QVERIFY(first.connectTo(address()));
    QVERIFY(second.connectTo(address()));
    QTRY_COMPARE(box.connectionCount(), 2);
    box.sendRaw("abc");
    QCOMPARE(first.take(3), QByteArray("abc"));
    QCOMPARE(second.take(3), QByteArray("abc"));
}

void tst_BoxSim::closedSessionsLeaveTransfersOpen()
{
    BoxSim box(options());
    QVERIFY(box.start());
    QSignalSpy closed(&box, &BoxSim::connectionClosed);
    QSignalSpy frames(&box, &BoxSim::frameReceived);
    RawTool session;
    RawTool transfer;
    QVERIFY(session.connectTo(address()));
    QVERIFY(transfer.connectTo(address()));
    session.send(Raw::heartbeat());
    transfer.send(Raw::chunk(4, 1025, 1, QByteArray(1024, 'a')));
    QTRY_COMPARE(frames.size(), 2);
    box.closeSessions();
    QVERIFY(session.waitForEnd());
    QCOMPARE(closed.size(), 1);
    QCOMPARE(box.connectionCount(), 1);
    box.closeConnections();
    QVERIFY(transfer.waitForEnd());
    QCOMPARE(box.connectionCount(), 0);
}

void tst_BoxSim::anAddressInUseIsTold()
{
    BoxSim first(options());
    QVERIFY(first.start());
    BoxSim second(options());
    QVERIFY(!second.start());
    QCOMPARE(second.errorString(), "TCP 127.0.12.1:30088: The bound address is already in use");
    first.stop();
    QVERIFY2(second.start(), qPrintable(second.errorString()));
}

void tst_BoxSim::unusableOptionsAreTold_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("project");
    QTest::addColumn<QString>("told");
    QTest::newRow("unknown setting") << "lanIP"
                                     << "1.2.3.4" << QByteArray()
                                     << "no such setting, or not a value for it: lanIP=1.2.3.4";
    QTest::newRow("bad date") << "date"
                              << "x" << QByteArray() << "no such setting, or not a value for it: date=x";
    const QString tooLong(1025, QLatin1Char('a'));
    QTest::newRow("long text") << "ssid" << tooLong << QByteArray()
                               << "no such setting, or not a value for it: ssid=" + tooLong;
    QTest::newRow("project is an array")
        << "NTP"
        << "" << QByteArray("[]") << "not a project: not an object with a name";
    QTest::newRow("project is no JSON") << "NTP"
                                        << "" << QByteArray("{") << "not a project: unterminated object";
}

void tst_BoxSim::unusableOptionsAreTold()
{
    QFETCH(QString, key);
    QFETCH(QString, value);
    QFETCH(QByteArray, project);
    QFETCH(QString, told);
    BoxSimOptions own = options();
    own.settings.insert(key, value);
    own.project = project;
    BoxSim box(own);
    QVERIFY(!box.start());
    QCOMPARE(box.errorString(), told);
    QVERIFY(!box.isListening());
}

QTEST_GUILESS_MAIN(tst_BoxSim)
#include "tst_boxsim.moc"
