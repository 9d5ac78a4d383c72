// The link of a session: statuses, timers, connects, its end.

#include "sessionprobe.h"

#include "fakebox.h"
#include "messages.h"

#include <QMetaMethod>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace SessionProbe;

namespace {

const QString address = "127.0.10.1";
const QString nobody = "127.0.10.99";

} // namespace

class TestProtocol : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void declaresItsSignalsAndSlotsInOrder();
    void recordsAreKnownToTheMetaTypeSystem();
    void bothTimersRunFromConstruction();
    void tellsTheStatusesOfASession();
    void firstHeartbeatGoesOutOnConnecting();
    void heartbeatsFollowTheInterval();
    void connectOfAConnectedSocketChangesNothing();
    void boundSocketIsGivenUpAndReconnectedLater();
    void connectingSocketIsGivenUpAndReconnectedLater();
    void secondConnectSendsAHeartbeatForEachConnect();
    void reconnectionDiesWithItsObject();
    void failedBindIsToldAndTheConnectGoesOn();
    void failedBindKeepsTheAddress();
    void noBoxAtTheAddress();
    void requestOnAConnectingSocketIsSentLater();
    void closeOfAClosedSocketDoesNothing();

    void disposedFromItsOwnSignals_data();
    void disposedFromItsOwnSignals();
    void disposalIsHeard_data();
    void disposalIsHeard();
    void disposalBelowItsOwnCallIsHeard();
    void deletedWhileConnected();
    void deletedWhileConnecting();
    void deletedWhileClosing();
    void deletedWhileBound();

private:
    std::unique_ptr<FakeBox> m_box;
    std::unique_ptr<Messages> m_messages;
};

void TestProtocol::init()
{
    m_box = std::make_unique<FakeBox>(address);
    QVERIFY(m_box->isListening());
    m_messages = std::make_unique<Messages>();
}

void TestProtocol::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    m_messages.reset();
    m_box.reset();
}

void TestProtocol::declaresItsSignalsAndSlotsInOrder()
{
    QByteArrayList signatures;
    const QMetaObject &meta = Protocol::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        signatures.append(meta.method(i).methodSignature());
    }
    QCOMPARE(signatures,
             (QByteArrayList{"connectionStatusChanged(QString)",
                             "versionReceived(QString)",
                             "offlineOccurred()",
                             "lanAllocationDataReceived(LanAllocationData)",
                             "wanAllocationDataReceived(WanAllocationData)",
                             "wifiAllocationDataReceived(WifiAllocationData)",
                             "lteAllocationDataReceived(LteAllocationData)",
                             "NTPAllocationDataReceived(NTPAllocationData)",
                             "timeAllocationDataReceived(timeAllocationData)",
                             "dataReceived(dataMonitoringData)",
                             "bindingFailed(QString)",
                             "handleDisconnected()",
                             "sendHeartbeat()",
                             "receiveResponse()",
                             "receiveHeartbeatResponse(QByteArray)",
                             "dataMonitoring(QByteArray)",
                             "handleOffline()",
                             "rebootDeviceReturn(QByteArray)",
                             "readLanAllocationReturn(QByteArray)",
                             "readWanAllocationReturn(QByteArray)",
                             "readWifiAllocationReturn(QByteArray)",
                             "readLteAllocationReturn(QByteArray)",
                             "readNTPAllocationReturn(QByteArray)",
                             "readTimeAllocationReturn(QByteArray)",
                             "writeLanAllocationReturn(QByteArray)",
                             "writeWanAllocationReturn(QByteArray)",
                             "writeWifiAllocationReturn(QByteArray)",
                             "writeLteAllocationReturn(QByteArray)",
                             "writeNTPAllocationReturn(QByteArray)",
                             "writeTimeAllocationReturn(QByteArray)"}));
}

void TestProtocol::recordsAreKnownToTheMetaTypeSystem()
{
    Protocol protocol;
    QSignalSpy spy(&protocol, &Protocol::timeAllocationDataReceived);
    protocol.readTimeAllocationReturn("{\"pares\":{\"date\":\"noon\"}}");
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).value<Protocol::timeAllocationData>().date, "noon");
}

void TestProtocol::bothTimersRunFromConstruction()
{
    Protocol protocol;
    QVERIFY(heartbeatTimer(protocol)->isActive());
    QCOMPARE(heartbeatTimer(protocol)->interval(), 5000);
    QVERIFY(!heartbeatTimer(protocol)->isSingleShot());
    QVERIFY(offlineTimer(protocol)->isActive());
    QCOMPARE(offlineTimer(protocol)->interval(), 30000);
    QVERIFY(offlineTimer(protocol)->isSingleShot());
}

void TestProtocol::tellsTheStatusesOfASession()
{
    Protocol protocol;
    Told told(&protocol);
    QStringList expected;

    protocol.connectToBox(address);
    expected << connecting;
    QCOMPARE(told.lines, expected);

    QTRY_COMPARE(m_box->received(), heartbeat);
    QCOMPARE(told.lines, expected);
    m_box->send(answer);
    expected << connected << "version 1.2.3";
    QTRY_COMPARE(told.lines, expected);

    m_box->close();
    expected << disconnected;
    QTRY_COMPARE(told.lines, expected);

    heartbeatTimer(protocol)->start(10);
    expected << heartbeatUnsent;
    QTRY_COMPARE(told.lines.mid(0, 5), expected);
    heartbeatTimer(protocol)->stop();

    told.lines.clear();
    protocol.readLanAllocation();
    protocol.receiveHeartbeatResponse(QByteArray());
    QCOMPARE(told.lines, (QStringList{requestUnsent, notConnected}));
}

void TestProtocol::firstHeartbeatGoesOutOnConnecting()
{
    Protocol protocol;
    heartbeatTimer(protocol)->stop();
    protocol.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
}

void TestProtocol::heartbeatsFollowTheInterval()
{
    Protocol protocol;
    heartbeatTimer(protocol)->start(20);
    protocol.openConnection(address);
    QTRY_VERIFY(m_box->received().size() >= 4 * heartbeat.size());
    QVERIFY(m_box->received().startsWith(heartbeat.repeated(4)));
}

void TestProtocol::connectOfAConnectedSocketChangesNothing()
{
    Protocol protocol;
    protocol.connectToBox(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    Told told(&protocol);
    protocol.connectToBox(address);
    protocol.readTimeAllocation(); // would go out on a new connection, or not at all
    QTRY_VERIFY(m_box->received().size() > heartbeat.size());
    QCOMPARE(told.lines, QStringList());
    QCOMPARE(m_box->count(), 1);
}

void TestProtocol::boundSocketIsGivenUpAndReconnectedLater()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.bindToAddress(QHostAddress("127.0.10.55"));
    protocol.connectToBox(address);
    // Giving up the binding is a disconnection, too.
    QCOMPARE(told.lines, (QStringList{disconnected, waiting}));
    QTRY_COMPARE(told.lines, (QStringList{disconnected, waiting, reconnecting}));
    QTRY_COMPARE(m_box->received(), heartbeat);
    QCOMPARE(m_box->link()->peerAddress(), QHostAddress("127.0.10.55"));
    QCOMPARE(m_box->count(), 1);
}

void TestProtocol::connectingSocketIsGivenUpAndReconnectedLater()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.openConnection(address);
    protocol.connectToBox(address);
    QCOMPARE(told.lines, QStringList{waiting});
    QTRY_COMPARE(told.lines, (QStringList{waiting, disconnected, reconnecting}));
    QTRY_COMPARE(m_box->count(), 2);
    QTRY_VERIFY(m_box->isLinked());
}

void TestProtocol::secondConnectSendsAHeartbeatForEachConnect()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.connectToBox(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    m_box->close();
    QTRY_COMPARE(told.lines, (QStringList{connecting, disconnected}));
    protocol.connectToBox(address);
    QTRY_COMPARE(m_box->received(), heartbeat + heartbeat);
    // A frame is handled once all the same.
    m_box->send(answer);
    QTRY_COMPARE(told.lines, (QStringList{connecting, disconnected, connecting, connected, "version 1.2.3"}));
}

void TestProtocol::reconnectionDiesWithItsObject()
{
    auto first = std::make_unique<Protocol>();
    first->bindToAddress(QHostAddress("127.0.10.56"));
    first->connectToBox(address);
    first.reset();

    // A second one that started later marks the time at which the first would have connected.
    Protocol second;
    second.bindToAddress(QHostAddress("127.0.10.57"));
    second.connectToBox(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    QCOMPARE(m_box->count(), 1);
    QCOMPARE(m_box->link()->peerAddress(), QHostAddress("127.0.10.57"));
}

void TestProtocol::failedBindIsToldAndTheConnectGoesOn()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.bindToAddress(QHostAddress("203.0.113.9")); // not of this machine
    QCOMPARE(told.lines, QStringList{"binding Failed to bind to IP address: 203.0.113.9"});
    protocol.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
}

void TestProtocol::failedBindKeepsTheAddress()
{
    Protocol protocol;
    protocol.bindToAddress(QHostAddress("203.0.113.9"));
    Told told(&protocol);
    protocol.connectToBox(address);
    QCOMPARE(told.lines, (QStringList{"binding Failed to bind to IP address: 203.0.113.9", connecting}));
    QTRY_COMPARE(m_box->received(), heartbeat);
}

void TestProtocol::noBoxAtTheAddress()
{
    Protocol protocol;
    Told told(&protocol);
    heartbeatTimer(protocol)->start(10);
    offlineTimer(protocol)->start(30);
    protocol.connectToBox(nobody);
    QTRY_VERIFY(told.lines.contains("offline"));
    QTRY_VERIFY(told.lines.count(heartbeatUnsent) > 5);
    QCOMPARE(told.lines.first(), connecting);
    QCOMPARE(told.lines.count("offline"), 1);
    told.lines.removeDuplicates();
    QCOMPARE(told.lines.size(), 3);
}

void TestProtocol::requestOnAConnectingSocketIsSentLater()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.connectToBox(address);
    protocol.readTimeAllocation();
    QTRY_VERIFY(m_box->received().contains(heartbeat));
    QTRY_VERIFY(m_box->received().contains("\"type\": \"9\""));
    QCOMPARE(told.lines, QStringList{connecting});
}

void TestProtocol::closeOfAClosedSocketDoesNothing()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.closeConnection();
    QCOMPARE(told.lines, QStringList());
}

void TestProtocol::disposedFromItsOwnSignals_data()
{
    QTest::addColumn<QString>("line"); // the session goes when it tells this
    QTest::newRow("request on a closed link") << requestUnsent;
    QTest::newRow("heartbeat on a closed link") << heartbeatUnsent;
    QTest::newRow("silence") << "offline";
    QTest::newRow("heartbeat answer") << connected;
    QTest::newRow("version") << "version 1.2.3";
    QTest::newRow("disconnection") << disconnected;
    QTest::newRow("reconnection") << waiting;
}

void TestProtocol::disposedFromItsOwnSignals()
{
    QFETCH(QString, line);

    const QPointer<Protocol> protocol = new Protocol;
    QStringList lines;
    const auto take = [&](const QString &told) {
        lines.append(told);
        if (told == line) {
            protocol->dispose();
        }
    };
    connect(protocol, &Protocol::connectionStatusChanged, this, take);
    connect(protocol, &Protocol::versionReceived, this,
            [&take](const QString &version) { take("version " + version); });
    connect(protocol, &Protocol::offlineOccurred, this, [&take] { take("offline"); });

    protocol->readLanAllocation();
    if (protocol) {
        heartbeatTimer(*protocol)->start(0);
        offlineTimer(*protocol)->start(20);
        QTRY_VERIFY(!protocol || lines.contains("offline"));
    }
    if (protocol) {
        heartbeatTimer(*protocol)->stop();
        // Not off a socket: the frame reader alone is on the stack.
        const QByteArray twice = answer + answer;
        protocol->assembleFrames(twice.constData(), unsigned(twice.size()));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    if (protocol) {
        protocol->openConnection(address);
        QTRY_VERIFY(m_box->received().startsWith(heartbeat));
        m_box->close();
        QTRY_VERIFY(!protocol || lines.contains(disconnected));
    }
    if (protocol) {
        protocol->bindToAddress(QHostAddress("127.0.10.59"));
        protocol->connectToBox(address);
        QTRY_VERIFY(!protocol);
    }
    QCOMPARE(lines.last(), line);
    QCOMPARE(lines.count(line), 1);
}

void TestProtocol::disposalIsHeard_data()
{
    QTest::addColumn<QByteArray>("moment");
    QTest::addColumn<QStringList>("lines");
    const QString destroyed = "destroyed";
    // There is no disconnection of a link that has not come up.
    for (const char *moment : {"closed", "connecting"}) {
        QTest::newRow(moment) << QByteArray(moment) << QStringList{destroyed};
    }
    for (const char *moment : {"connected", "bytes to send"}) {
        QTest::newRow(moment) << QByteArray(moment) << QStringList{disconnected, destroyed};
    }
}

void TestProtocol::disposalIsHeard()
{
    QFETCH(QByteArray, moment);
    QFETCH(QStringList, lines);
    const QPointer<Protocol> protocol = new Protocol;
    Told told(protocol);
    connect(protocol, &QObject::destroyed, this, [&] { told.lines.append("destroyed"); });
    if (moment != "closed") {
        protocol->openConnection(address);
    }
    if (moment == "connected" || moment == "bytes to send") {
        QTRY_COMPARE(m_box->received(), heartbeat);
    }
    if (moment == "bytes to send") {
        protocol->readLanAllocation();
    }
    protocol->dispose();
    QVERIFY(!protocol);
    QCOMPARE(told.lines, lines);
    QTRY_VERIFY(!m_box->isLinked());
}

// What comes behind it in the same answer is not told any more.
void TestProtocol::disposalBelowItsOwnCallIsHeard()
{
    const QPointer<Protocol> protocol = new Protocol;
    Told told(protocol);
    connect(protocol, &QObject::destroyed, this, [&] { told.lines.append("destroyed"); });
    connect(protocol, &Protocol::connectionStatusChanged, this, [&](const QString &status) {
        if (status == connected) {
            protocol->dispose();
            QVERIFY(protocol);
        }
    });
    protocol->openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    m_box->send(answer + answer);
    QTRY_VERIFY(!protocol);
    QCOMPARE(told.lines, (QStringList{connected, disconnected, "destroyed"}));
    QTRY_VERIFY(!m_box->isLinked());
}

void TestProtocol::deletedWhileConnected()
{
    auto protocol = std::make_unique<Protocol>();
    Told told(protocol.get());
    protocol->openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    // Half a report in hand goes with the session.
    protocol->dataMonitoring(hex("12 34 06 00 14 00 01 02 04 00 00 00 04 01 00 00 00 7b 56 78"));
    protocol.reset();
    QCOMPARE(told.lines, QStringList()); // its listeners may be going, too
    QTRY_VERIFY(!m_box->isLinked());

    Protocol next;
    QTest::ignoreMessage(QtDebugMsg, "data长度::2");
    next.dataMonitoring(hex("12 34 06 00 15 00 01 02 00 00 00 02 00 01 00 00 00 7b 7d 56 78"));
}

void TestProtocol::deletedWhileConnecting()
{
    auto protocol = std::make_unique<Protocol>();
    protocol->openConnection(address);
    protocol.reset();
    auto refused = std::make_unique<Protocol>();
    refused->openConnection(nobody);
    refused.reset();
    QTRY_VERIFY(!m_box->isLinked());
}

void TestProtocol::deletedWhileClosing()
{
    auto protocol = std::make_unique<Protocol>();
    Told told(protocol.get());
    protocol->openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    protocol->readLanAllocation(); // not yet written when the link closes
    protocol->closeConnection();
    QCOMPARE(told.lines, QStringList());
    protocol.reset();
    QCOMPARE(told.lines, QStringList());
    QTRY_VERIFY(!m_box->isLinked());
}

void TestProtocol::deletedWhileBound()
{
    auto protocol = std::make_unique<Protocol>();
    protocol->bindToAddress(QHostAddress("127.0.10.58"));
    protocol.reset();
    QCOMPARE(m_box->count(), 0);
}

QTEST_MAIN(TestProtocol)
#include "tst_protocol.moc"
