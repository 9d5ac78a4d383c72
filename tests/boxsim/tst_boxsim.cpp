#include "boxsimtest.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

// Sessions, connections and searches of the simulated Box, met with hand-written bytes on a real socket.
class TestBoxSim : public BoxSimTest
{
    Q_OBJECT
public:
    TestBoxSim()
        : BoxSimTest("127.0.12.1")
    {
    }

private slots:
    void cleanup() { stop(); }

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
};

namespace {

const QByteArray search = Raw::hex("12340000") + "Search Box" + Raw::hex("5678");

} // namespace

void TestBoxSim::heartbeatIsAnsweredWithThreeCountedTexts()
{
    BoxSimOptions own = options();
    own.version = "2.1";
    own.serialNumber = "A7";
    own.model = "M";
    RUN(start(own));
    m_tool->send(Raw::hex("1234010008005678"));
    QCOMPARE(m_tool->take(17).toHex(), QByteArray("12340200110003322e31024137014d5678"));
    m_tool->send(Raw::heartbeat + Raw::heartbeat);
    QCOMPARE(m_tool->take(34).size(), 34);
    QCOMPARE(m_box->sessionCount(), 1);
}

void TestBoxSim::heartbeatTextsStayUnder128Bytes()
{
    BoxSimOptions own = options();
    own.version = QString(100, QLatin1Char('v'));
    own.serialNumber = QString(15, QLatin1Char('s'));
    own.model = "m"; // 11 + 116
    RUN(startBox(own));
    m_box->stop();
    own.model = "mm";
    BoxSim tooLong(own);
    QVERIFY(!tooLong.start());
    QCOMPARE(tooLong.errorString(), "version, serial number and model are too long together");
}

void TestBoxSim::aPeerThatDoesNotReadIsDropped()
{
    BoxSimOptions own = options();
    own.maxQueued = 1000;
    RUN(start(own));
    QVERIFY(m_box->setFault("late-heartbeat=60000"));
    for (int i = 0; i < 27; ++i) { // 27 answers of 38 bytes are more than 1000
        m_tool->send(Raw::heartbeat);
    }
    QVERIFY(m_tool->waitForEnd());
    QCOMPARE(m_violations, QStringList{"does not read its answers, connection ended"});
    QTRY_COMPARE(m_box->connectionCount(), 0);
}

void TestBoxSim::connectionsAreLimited()
{
    BoxSimOptions own = options();
    own.maxConnections = 2;
    RUN(startBox(own));
    RawTool first;
    RawTool second;
    RawTool third;
    QVERIFY(first.connectTo(address()));
    QVERIFY(second.connectTo(address()));
    third.socket().connectToHost(address(), 30088);
    QTRY_COMPARE(m_box->connectionCount(), 2);
    QVERIFY(third.waitForEnd());
    first.send(Raw::heartbeat);
    QVERIFY(!first.takeFrame().isEmpty());
}

void TestBoxSim::searchIsAnsweredToItsSender()
{
    BoxSimOptions own = options();
    own.settings.insert("lanMask", "255.255.255.128");
    own.model = "MRN-GATE-20";
    RUN(startBox(own));
    QSignalSpy searched(m_box.get(), &BoxSim::searched);
    QUdpSocket tool;
    QVERIFY(tool.bind(address(), 0));
    tool.writeDatagram(search, address(), 30088);
    QTRY_VERIFY(tool.hasPendingDatagrams());
    const QNetworkDatagram answer = tool.receiveDatagram();
    QCOMPARE(answer.data(),
             Raw::hex("1234ffff") + "127.0.12.1" + QByteArray(6, '\0') + "255.255.255.128"
                 + QByteArray(1, '\0') + Raw::hex("0b") + "MRN-GATE-20" + Raw::hex("5678"));
    QCOMPARE(answer.senderPort(), 30088);
    QCOMPARE(searched.size(), 1);
}

void TestBoxSim::aBoxOnEveryAddressSaysItsLanAddress()
{
    BoxSimOptions own = options();
    own.address = QHostAddress(QHostAddress::AnyIPv4);
    own.port = 0;
    RUN(startBox(own));
    QUdpSocket tool;
    QVERIFY(tool.bind(address(), 0));
    tool.writeDatagram(search, address(), m_box->port());
    QTRY_VERIFY(tool.hasPendingDatagrams());
    QCOMPARE(tool.receiveDatagram().data().mid(4, 16), "192.168.1.80" + QByteArray(4, '\0'));
}

void TestBoxSim::searchStaysUnansweredWhereToldSo()
{
    BoxSimOptions own = options();
    own.faults.noDiscovery = true;
    own.discoveryAddress = QHostAddress("127.0.12.101");
    RUN(startBox(own));
    QSignalSpy searched(m_box.get(), &BoxSim::searched);
    QUdpSocket tool;
    QVERIFY(tool.bind(address(), 0));
    tool.writeDatagram(search, own.discoveryAddress, 30088);
    QTRY_COMPARE(searched.size(), 1);
    QVERIFY(!tool.hasPendingDatagrams());
    m_box->setFaults(BoxSimFaults());
    tool.writeDatagram(search, own.discoveryAddress, 30088);
    QTRY_VERIFY(tool.hasPendingDatagrams());
    QCOMPARE(tool.receiveDatagram().data().mid(4, 10), QByteArray("127.0.12.1"));
}

void TestBoxSim::strangeDatagramsAreNotAnswered_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("one byte less") << search.left(15);
    QTest::newRow("one byte more") << QByteArray(search + '\0');
    QTest::newRow("another command") << QByteArray(search).replace(2, 1, "\1");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a frame") << Raw::heartbeat;
    QTest::newRow("largest") << QByteArray(60000, '\x12');
}

void TestBoxSim::strangeDatagramsAreNotAnswered()
{
    QFETCH(QByteArray, bytes);
    RUN(startBox(options()));
    QSignalSpy searched(m_box.get(), &BoxSim::searched);
    QUdpSocket tool;
    QVERIFY(tool.bind(address(), 0));
    tool.writeDatagram(bytes, address(), 30088);
    QTRY_COMPARE(m_violations,
                 QStringList{QString("datagram of %1 bytes that is no search").arg(bytes.size())});
    QCOMPARE(searched.size(), 0);
    QVERIFY(!tool.hasPendingDatagrams());
}

void TestBoxSim::rawBytesReachEverySession()
{
    BoxSimOptions own = options();
    own.faults.noise = 9; // raw bytes pass every fault
    own.faults.silent = true;
    RUN(startBox(own));
    RawTool first;
    RawTool second;
    QVERIFY(first.connectTo(address()));
    QVERIFY(second.connectTo(address()));
    QTRY_COMPARE(m_box->connectionCount(), 2);
    m_box->sendRaw("abc");
    QCOMPARE(first.take(3), QByteArray("abc"));
    QCOMPARE(second.take(3), QByteArray("abc"));
}

void TestBoxSim::closedSessionsLeaveTransfersOpen()
{
    RUN(startBox(options()));
    QSignalSpy closed(m_box.get(), &BoxSim::connectionClosed);
    QSignalSpy frames(m_box.get(), &BoxSim::frameReceived);
    RawTool session;
    RawTool transfer;
    QVERIFY(session.connectTo(address()));
    QVERIFY(transfer.connectTo(address()));
    session.send(Raw::heartbeat);
    transfer.send(Raw::chunk(4, 1025, 1, QByteArray(1024, 'a')));
    QTRY_COMPARE(frames.size(), 2);
    m_box->closeSessions();
    QVERIFY(session.waitForEnd());
    QCOMPARE(closed.size(), 1);
    QCOMPARE(m_box->connectionCount(), 1);
    m_box->closeConnections();
    QVERIFY(transfer.waitForEnd());
    QCOMPARE(m_box->connectionCount(), 0);
}

void TestBoxSim::anAddressInUseIsTold()
{
    BoxSim first(options());
    QVERIFY(first.start());
    BoxSim second(options());
    QVERIFY(!second.start());
    QCOMPARE(second.errorString(), "TCP 127.0.12.1:30088: The bound address is already in use");
    first.stop();
    QVERIFY2(second.start(), qPrintable(second.errorString()));
}

void TestBoxSim::unusableOptionsAreTold_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QByteArray>("project");
    QTest::addColumn<QString>("told");
    const auto row = [](const char *name, const QString &key, const QString &value, const QByteArray &project,
                        const QString &told) { QTest::newRow(name) << key << value << project << told; };
    const QString noSetting = "no such setting, or not a value for it: ";
    const QString tooLong(1025, QLatin1Char('a'));
    row("unknown setting", "lanIP", "1.2.3.4", {}, noSetting + "lanIP=1.2.3.4");
    row("bad date", "date", "x", {}, noSetting + "date=x");
    row("long text", "ssid", tooLong, {}, noSetting + "ssid=" + tooLong);
    row("project is an array", "NTP", "", "[]", "not a project: not an object with a name");
    row("project is no JSON", "NTP", "", "{", "not a project: unterminated object");
}

void TestBoxSim::unusableOptionsAreTold()
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

QTEST_GUILESS_MAIN(TestBoxSim)
#include "tst_boxsim.moc"
