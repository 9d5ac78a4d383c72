#include "boxlink/protocol.h"

#include "support/messageboxes.h"
#include "support/rawbox.h"

#include <QJsonObject>
#include <QMetaMethod>
#include <QSignalSpy>
#include <QtTest>

#include <functional>
#include <memory>

namespace
{

const QString address = QStringLiteral("127.0.10.1");
const QString nobody = QStringLiteral("127.0.10.99");

QByteArray hex(const char *bytes)
{
    return QByteArray::fromHex(bytes);
}

const QByteArray heartbeat = hex("12 34 01 00 08 00 56 78");
const QByteArray answer =
    hex("12 34 02 00 1e 00 05") + "1.2.3" + hex("03") + "SN7" + hex("0b") + "MRN-GATE-70" + hex("56 78");

const QString connecting = QStringLiteral("Connection status: connecting..");
const QString waiting = QStringLiteral("Connection status: Waiting for connection.");
const QString reconnecting = QStringLiteral("Connection status: Reconnecting...");
const QString connected = QStringLiteral("Connection status: Connected");
const QString disconnected = QStringLiteral("Connection status: Disconnected");
const QString heartbeatUnsent = QStringLiteral("Connection status: Not connected to server.");
const QString requestUnsent = QStringLiteral("Not connected to server.");
const QString notConnected = QStringLiteral("Connection status: Not connected");

// A frame of up to 255 bytes around a body.
QByteArray frame(const char *command, const QByteArray &body)
{
    return hex("12 34") + hex(command) + char(8 + body.size()) + '\0' + body + hex("56 78");
}

QByteArray jsonFrame(const QByteArray &text)
{
    return frame("05 00", QByteArray(1, char(text.size())) + '\0' + text);
}

// Everything that a session tells, in order.
class Told : public QObject
{
public:
    explicit Told(Protocol *protocol)
    {
        const auto note = [this](const char *name) {
            return [this, name] { lines.append(QLatin1String(name)); };
        };
        connect(protocol, &Protocol::connectionStatusChanged, this,
                [this](const QString &s) { lines.append(s); });
        connect(protocol, &Protocol::versionReceived, this,
                [this](const QString &version) { lines.append(QStringLiteral("version ") + version); });
        connect(protocol, &Protocol::offlineOccurred, this, note("offline"));
        connect(protocol, &Protocol::lanAllocationDataReceived, this, note("lan"));
        connect(protocol, &Protocol::wanAllocationDataReceived, this, note("wan"));
        connect(protocol, &Protocol::wifiAllocationDataReceived, this, note("wifi"));
        connect(protocol, &Protocol::lteAllocationDataReceived, this, note("lte"));
        connect(protocol, &Protocol::NTPAllocationDataReceived, this, note("ntp"));
        connect(protocol, &Protocol::timeAllocationDataReceived, this, note("time"));
        connect(protocol, &Protocol::dataReceived, this, note("data"));
        connect(protocol, &Protocol::bindingFailed, this,
                [this](const QString &error) { lines.append(QStringLiteral("binding ") + error); });
    }

    QStringList lines;
};

// Acts when a message box stands, before anybody answers it.
class OnMessageBox : public QObject
{
public:
    explicit OnMessageBox(std::function<void()> act) : m_act(std::move(act))
    {
        qApp->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show && qobject_cast<QMessageBox *>(watched)) {
            m_act();
        }
        return false;
    }

private:
    std::function<void()> m_act;
};

QTimer *heartbeatTimer(const Protocol &protocol)
{
    return protocol.findChild<QTimer *>(QStringLiteral("heartbeatTimer"));
}

QTimer *offlineTimer(const Protocol &protocol)
{
    return protocol.findChild<QTimer *>(QStringLiteral("offlineTimer"));
}

} // namespace

class tst_Protocol : public QObject
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

    void heartbeatAnswerGivesStatusAndVersion();
    void heartbeatAnswer_data();
    void heartbeatAnswer();
    void emptyHeartbeatAnswerRestartsTheOfflineTimerOnly();
    void heartbeatAnswerWithBadFooterWritesALine();
    void offlineComesOnce();
    void onlyHeartbeatAnswersFeedTheOfflineTimer();
    void disconnectionRestartsTheOfflineTimer();

    void droppedFrames_data();
    void droppedFrames();
    void unhandledTypeWritesALine();
    void answersComeInOneByteAtATime();
    void boxThatClosesAtAnyByte();
    void carriedFrameSurvivesADisconnection();
    void dataBehindAMessageBoxIsReadWhenItCloses();
    void dataEntersDuringAMessageBox();

    void reportIsDelivered();
    void reportWithMissingKeysIsDeliveredEmpty();
    void disconnectionOfAnySessionClearsTheReport();

    void disposedFromItsOwnSignals_data();
    void disposedFromItsOwnSignals();
    void deletedWhileConnected();
    void deletedWhileConnecting();
    void deletedWhileClosing();
    void deletedWhileBound();

private:
    std::unique_ptr<RawBox> m_box;
    std::unique_ptr<MessageBoxes> m_boxes;
};

void tst_Protocol::init()
{
    m_box = std::make_unique<RawBox>(address);
    QVERIFY(m_box->listen());
    m_boxes = std::make_unique<MessageBoxes>();
}

void tst_Protocol::cleanup()
{
    QCOMPARE(m_boxes->unexpected(), QStringList());
    QCOMPARE(m_boxes->pending(), 0);
    m_boxes.reset();
    m_box.reset();
}

void tst_Protocol::declaresItsSignalsAndSlotsInOrder()
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

void tst_Protocol::recordsAreKnownToTheMetaTypeSystem()
{
    Protocol protocol;
    QSignalSpy spy(&protocol, &Protocol::timeAllocationDataReceived);
    protocol.readTimeAllocationReturn("{\"pares\":{\"date\":\"noon\"}}");
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).value<Protocol::timeAllocationData>().date, QStringLiteral("noon"));
}

void tst_Protocol::bothTimersRunFromConstruction()
{
    Protocol protocol;
    QVERIFY(heartbeatTimer(protocol)->isActive());
    QCOMPARE(heartbeatTimer(protocol)->interval(), 5000);
    QVERIFY(!heartbeatTimer(protocol)->isSingleShot());
    QVERIFY(offlineTimer(protocol)->isActive());
    QCOMPARE(offlineTimer(protocol)->interval(), 30000);
    QVERIFY(offlineTimer(protocol)->isSingleShot());
}

void tst_Protocol::tellsTheStatusesOfASession()
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
    expected << connected << QStringLiteral("version 1.2.3");
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

void tst_Protocol::firstHeartbeatGoesOutOnConnecting()
{
    Protocol protocol;
    heartbeatTimer(protocol)->stop();
    protocol.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
}

void tst_Protocol::heartbeatsFollowTheInterval()
{
    Protocol protocol;
    heartbeatTimer(protocol)->start(20);
    protocol.openConnection(address);
    QTRY_VERIFY(m_box->received().size() >= 4 * heartbeat.size());
    QVERIFY(m_box->received().startsWith(heartbeat.repeated(4)));
}

void tst_Protocol::connectOfAConnectedSocketChangesNothing()
{
    Protocol protocol;
    protocol.connectToBox(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    Told told(&protocol);
    protocol.connectToBox(address);
    protocol.readTimeAllocation(); // would go out on a new connection, or not at all
    QTRY_VERIFY(m_box->received().size() > heartbeat.size());
    QCOMPARE(told.lines, QStringList());
    QCOMPARE(m_box->connections(), 1);
}

void tst_Protocol::boundSocketIsGivenUpAndReconnectedLater()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.bindToAddress(QHostAddress(QStringLiteral("127.0.10.55")));
    protocol.connectToBox(address);
    // Giving up the binding is a disconnection, too.
    QCOMPARE(told.lines, (QStringList{disconnected, waiting}));
    QTRY_COMPARE(told.lines, (QStringList{disconnected, waiting, reconnecting}));
    QTRY_COMPARE(m_box->received(), heartbeat);
    QCOMPARE(m_box->peerAddress(), QHostAddress(QStringLiteral("127.0.10.55")));
    QCOMPARE(m_box->connections(), 1);
}

void tst_Protocol::connectingSocketIsGivenUpAndReconnectedLater()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.openConnection(address);
    protocol.connectToBox(address);
    QCOMPARE(told.lines, QStringList{waiting});
    QTRY_COMPARE(told.lines, (QStringList{waiting, disconnected, reconnecting}));
    QTRY_COMPARE(m_box->connections(), 2);
    QTRY_VERIFY(m_box->isLinked());
}

void tst_Protocol::secondConnectSendsAHeartbeatForEachConnect()
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
    QTRY_COMPARE(
        told.lines,
        (QStringList{connecting, disconnected, connecting, connected, QStringLiteral("version 1.2.3")}));
}

void tst_Protocol::reconnectionDiesWithItsObject()
{
    auto first = std::make_unique<Protocol>();
    first->bindToAddress(QHostAddress(QStringLiteral("127.0.10.56")));
    first->connectToBox(address);
    first.reset();

    // A second one that started later marks the time at which the first would have connected.
    Protocol second;
    second.bindToAddress(QHostAddress(QStringLiteral("127.0.10.57")));
    second.connectToBox(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    QCOMPARE(m_box->connections(), 1);
    QCOMPARE(m_box->peerAddress(), QHostAddress(QStringLiteral("127.0.10.57")));
}

void tst_Protocol::failedBindIsToldAndTheConnectGoesOn()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.bindToAddress(QHostAddress(QStringLiteral("203.0.113.9"))); // not of this machine
    QCOMPARE(told.lines, QStringList{QStringLiteral("binding Failed to bind to IP address: 203.0.113.9")});
    protocol.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
}

void tst_Protocol::failedBindKeepsTheAddress()
{
    Protocol protocol;
    protocol.bindToAddress(QHostAddress(QStringLiteral("203.0.113.9")));
    Told told(&protocol);
    protocol.connectToBox(address);
    QCOMPARE(told.lines,
             (QStringList{QStringLiteral("binding Failed to bind to IP address: 203.0.113.9"), connecting}));
    QTRY_COMPARE(m_box->received(), heartbeat);
}

void tst_Protocol::noBoxAtTheAddress()
{
    Protocol protocol;
    Told told(&protocol);
    heartbeatTimer(protocol)->start(10);
    offlineTimer(protocol)->start(30);
    protocol.connectToBox(nobody);
    QTRY_VERIFY(told.lines.contains(QStringLiteral("offline")));
    QTRY_VERIFY(told.lines.count(heartbeatUnsent) > 5);
    QCOMPARE(told.lines.first(), connecting);
    QCOMPARE(told.lines.count(QStringLiteral("offline")), 1);
    told.lines.removeDuplicates();
    QCOMPARE(told.lines.size(), 3);
}

void tst_Protocol::requestOnAConnectingSocketIsSentLater()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.connectToBox(address);
    protocol.readTimeAllocation();
    QTRY_VERIFY(m_box->received().contains(heartbeat));
    QTRY_VERIFY(m_box->received().contains("\"type\": \"9\""));
    QCOMPARE(told.lines, QStringList{connecting});
}

void tst_Protocol::closeOfAClosedSocketDoesNothing()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.closeConnection();
    QCOMPARE(told.lines, QStringList());
}

void tst_Protocol::heartbeatAnswerGivesStatusAndVersion()
{
    Protocol protocol;
    Told told(&protocol);
    QTest::ignoreMessage(QtDebugMsg, "Box Version: 1.2.3");
    QTest::ignoreMessage(QtDebugMsg, "Box Serial Number: SN7");
    QTest::ignoreMessage(QtDebugMsg, "Box Model: MRN-GATE-70");
    protocol.receiveHeartbeatResponse(answer);
    QCOMPARE(told.lines, (QStringList{connected, QStringLiteral("version 1.2.3")}));
}

void tst_Protocol::heartbeatAnswer_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("version"); // null: nothing is shown

    const auto newRow = [](const char *name, const QByteArray &bytes, const QString &version = QString()) {
        QTest::newRow(name) << bytes << version;
    };
    const auto body = [](int v, int s, int m) {
        return QByteArray(1, char(v)) + QByteArray(v, 'v') + char(s) + QByteArray(s, 's') + char(m)
            + QByteArray(m, 'm');
    };
    newRow("empty texts", hex("12 34 02 00 0b 00 00 00 00 56 78"), QStringLiteral(""));
    newRow("UTF-8", hex("12 34 02 00 0e 00 03 e7 89 88 00 00 56 78"), QString::fromUtf8("\xE7\x89\x88"));
    newRow("127 bytes", hex("12 34 02 00 7f 00") + body(100, 10, 6) + hex("56 78"),
           QString(100, QLatin1Char('v')));
    newRow("128 bytes", hex("12 34 02 00 80 00") + body(100, 10, 7) + hex("56 78"));
    newRow("255 bytes", hex("12 34 02 00 ff 00") + body(100, 100, 44) + hex("56 78"));
    newRow("256 bytes", hex("12 34 02 00 00 01") + body(100, 100, 45) + hex("56 78"),
           QString(100, QLatin1Char('v')));
    newRow("length too large", hex("12 34 02 00 0c 00 00 00 00 56 78"));
    newRow("length too small", hex("12 34 02 00 0a 00 00 00 00 56 78"));
    newRow("version past the footer", hex("12 34 02 00 0b 00 04 00 00 56 78"));
    newRow("version into the footer", hex("12 34 02 00 0b 00 02 00 00 56 78"));
    newRow("version up to the footer", hex("12 34 02 00 0b 00 02 31 32 56 78"));
    newRow("serial number past the footer", hex("12 34 02 00 0c 00 01 31 7f 00 56 78"));
    newRow("model past the footer", hex("12 34 02 00 0b 00 00 00 01 56 78"));
    newRow("negative count of the version", hex("12 34 02 00 0b 00 ff 00 00 56 78"));
    newRow("negative count of the serial number", hex("12 34 02 00 0b 00 00 80 00 56 78"));
    newRow("negative count of the model", hex("12 34 02 00 0b 00 00 00 fe 56 78"));
    newRow("no body", hex("12 34 02 00 08 00 56 78"));
    newRow("one byte", hex("12"));
    newRow("no length field", hex("12 34 02 00 05"));
}

void tst_Protocol::heartbeatAnswer()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, version);

    Protocol protocol;
    Told told(&protocol);
    heartbeatTimer(protocol)->stop();
    offlineTimer(protocol)->stop();
    protocol.receiveHeartbeatResponse(answer);
    QCOMPARE(told.lines,
             version.isNull() ? QStringList()
                              : (QStringList{connected, QStringLiteral("version ") + version}));
    // A sign of life, good or bad: the next heartbeat counts from here.
    QVERIFY(heartbeatTimer(protocol)->isActive());
    QCOMPARE(heartbeatTimer(protocol)->interval(), 5000);
    QVERIFY(offlineTimer(protocol)->isActive());
    QCOMPARE(offlineTimer(protocol)->interval(), 30000);
}

void tst_Protocol::emptyHeartbeatAnswerRestartsTheOfflineTimerOnly()
{
    Protocol protocol;
    Told told(&protocol);
    heartbeatTimer(protocol)->stop();
    offlineTimer(protocol)->stop();
    protocol.receiveHeartbeatResponse(QByteArray());
    QCOMPARE(told.lines, QStringList{notConnected});
    QVERIFY(!heartbeatTimer(protocol)->isActive());
    QVERIFY(offlineTimer(protocol)->isActive());
}

void tst_Protocol::heartbeatAnswerWithBadFooterWritesALine()
{
    Protocol protocol;
    Told told(&protocol);
    heartbeatTimer(protocol)->stop();
    QTest::ignoreMessage(QtDebugMsg, "Invalid package footer.");
    protocol.receiveHeartbeatResponse(hex("12 34 02 00 0b 00 00 00 00 56 79"));
    QCOMPARE(told.lines, QStringList());
    QVERIFY(heartbeatTimer(protocol)->isActive());
}

void tst_Protocol::offlineComesOnce()
{
    Protocol protocol;
    Told told(&protocol);
    offlineTimer(protocol)->start(10);
    QTRY_COMPARE(told.lines, QStringList{QStringLiteral("offline")});
    QVERIFY(!offlineTimer(protocol)->isActive());
    QVERIFY(heartbeatTimer(protocol)->isActive());

    protocol.receiveHeartbeatResponse(hex("12 34 02 00 0b 00 00 00 00 56 78"));
    QTRY_COMPARE(told.lines.count(QStringLiteral("offline")), 2);
}

void tst_Protocol::onlyHeartbeatAnswersFeedTheOfflineTimer()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    offlineTimer(protocol)->stop();
    heartbeatTimer(protocol)->stop();
    m_box->send(hex("12 34 06 00 15 00 01 02 00 00 00 02 00 01 00 00 00") + "{}" + hex("56 78")
                + jsonFrame("{\"type\":\"8\",\"pares\":{\"NTP\":\"\"}}"));
    QTRY_COMPARE(told.lines, (QStringList{QStringLiteral("data"), QStringLiteral("ntp")}));
    QVERIFY(!offlineTimer(protocol)->isActive());
    QVERIFY(!heartbeatTimer(protocol)->isActive());
}

void tst_Protocol::disconnectionRestartsTheOfflineTimer()
{
    Protocol protocol;
    protocol.openConnection(address);
    QTRY_VERIFY(m_box->isLinked());
    offlineTimer(protocol)->stop();
    m_box->close();
    QTRY_VERIFY(offlineTimer(protocol)->isActive());
    QVERIFY(heartbeatTimer(protocol)->isActive());
}

void tst_Protocol::droppedFrames_data()
{
    QTest::addColumn<QByteArray>("bytes");

    QTest::newRow("empty") << QByteArray();
    QTest::newRow("shorter than its length field") << hex("12 34 02 00");
    QTest::newRow("shorter than announced") << hex("12 34 02 00 0c 00 00 00 00 56 78");
    QTest::newRow("longer than announced") << hex("12 34 02 00 0a 00 00 00 00 56 78");
    QTest::newRow("heartbeat request") << heartbeat;
    QTest::newRow("project transfer") << frame("03 00", hex("03 00"));
    QTest::newRow("program transfer") << frame("04 00", hex("03 00"));
    QTest::newRow("low command byte") << frame("02 01", hex("00 00 00"));
    QTest::newRow("unknown command") << frame("07 00", hex("00"));
    QTest::newRow("JSON frame without a body") << hex("12 34 05 00 08 00 56 78");
    QTest::newRow("JSON frame with one byte of body") << frame("05 00", hex("7b"));
    QTest::newRow("JSON frame without a text") << jsonFrame("");
    QTest::newRow("not JSON") << jsonFrame("{\"type\":\"9\",");
    QTest::newRow("JSON array") << jsonFrame("[\"type\",\"9\"]");
    QTest::newRow("no type") << jsonFrame("{\"pares\":{\"date\":\"\"}}");
    QTest::newRow("type a number, of a read") << jsonFrame("{\"type\":9,\"pares\":{\"date\":\"\"}}");
    QTest::newRow("type a number, of a write") << jsonFrame("{\"type\":102,\"code\":\"200\"}");
    QTest::newRow("type null") << jsonFrame("{\"type\":null,\"code\":\"200\"}");
    QTest::newRow("type an object") << jsonFrame("{\"type\":{\"type\":\"9\"},\"pares\":{\"date\":\"\"}}");
    QTest::newRow("trailing text") << jsonFrame("{\"type\":\"9\",\"pares\":{\"date\":\"\"}}}");
    for (const char *bomb : {"[", "{\"type\":"}) {
        const QByteArray text = QByteArray(bomb).repeated(5000);
        const int size = text.size() + 10;
        QTest::addRow("nested bomb of %s", bomb)
            << hex("12 34 05 00") + char(size & 0xff) + char(size >> 8) + hex("00 00") + text + hex("56 78");
    }
}

void tst_Protocol::droppedFrames()
{
    QFETCH(QByteArray, bytes);

    Protocol protocol;
    Told told(&protocol);
    QCOMPARE(protocol.dispatchFrame(bytes.constData(), unsigned(bytes.size())), 0);
    QCOMPARE(told.lines, QStringList());
    // The same off the stream leaves the next frame unharmed.
    QCOMPARE(protocol.assembleFrames(bytes.constData(), unsigned(bytes.size())), 0);
    QCOMPARE(protocol.assembleFrames(answer.constData(), unsigned(answer.size())), 0);
    QCOMPARE(told.lines, (QStringList{connected, QStringLiteral("version 1.2.3")}));
}

void tst_Protocol::unhandledTypeWritesALine()
{
    Protocol protocol;
    Told told(&protocol);
    for (const char *type : {"1", "7", "101", "02", ""}) {
        const QByteArray bytes = jsonFrame(QByteArray("{\"type\":\"") + type + "\"}");
        QTest::ignoreMessage(QtDebugMsg, (QByteArray("Unhandled type string: ") + type).constData());
        protocol.dispatchFrame(bytes.constData(), unsigned(bytes.size()));
    }
    QCOMPARE(told.lines, QStringList());
}

void tst_Protocol::answersComeInOneByteAtATime()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    for (const char byte : answer + jsonFrame("{\"type\":\"9\",\"pares\":{\"date\":\"\"}}")) {
        m_box->send(QByteArray(1, byte));
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(told.lines,
                 (QStringList{connected, QStringLiteral("version 1.2.3"), QStringLiteral("time")}));
}

void tst_Protocol::boxThatClosesAtAnyByte()
{
    for (int size = 0; size < answer.size(); ++size) {
        Protocol protocol;
        Told told(&protocol);
        protocol.openConnection(address);
        QTRY_COMPARE(m_box->connections(), size + 1);
        QTRY_COMPARE(m_box->received(), heartbeat);
        m_box->send(answer.left(size));
        m_box->close();
        QTRY_COMPARE(told.lines, QStringList{disconnected});
    }
}

void tst_Protocol::carriedFrameSurvivesADisconnection()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.assembleFrames(answer.constData(), 9);
    protocol.handleDisconnected();
    protocol.assembleFrames(answer.constData() + 9, unsigned(answer.size() - 9));
    QCOMPARE(told.lines, (QStringList{disconnected, connected, QStringLiteral("version 1.2.3")}));
}

void tst_Protocol::dataBehindAMessageBoxIsReadWhenItCloses()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    heartbeatTimer(protocol)->stop();

    m_boxes->expect();
    OnMessageBox onBox([this] {
        m_box->send(answer);
        QTest::qWait(0); // lets the socket take it in
    });
    m_box->send(jsonFrame("{\"type\":\"109\",\"code\":\"200\"}"));
    QTRY_COMPARE(m_boxes->told(),
                 QStringList{QStringLiteral("Write time Allocation|time allocation write successful.")});
    QTRY_COMPARE(told.lines, (QStringList{connected, QStringLiteral("version 1.2.3")}));
}

void tst_Protocol::dataEntersDuringAMessageBox()
{
    Protocol protocol;
    Told told(&protocol);
    const QByteArray first = jsonFrame("{\"type\":\"109\",\"code\":\"200\"}") + answer.left(9);
    m_boxes->expect();
    OnMessageBox onBox(
        [&protocol] { protocol.assembleFrames(answer.constData() + 9, unsigned(answer.size() - 9)); });
    protocol.assembleFrames(first.constData(), unsigned(first.size()));
    QCOMPARE(told.lines, (QStringList{connected, QStringLiteral("version 1.2.3")}));
    QCOMPARE(m_boxes->told().size(), 1);
}

void tst_Protocol::reportIsDelivered()
{
    const QByteArray text = "{\"projectName\":\"P\",\"plcName\":\"M1\",\"description\":\"d\",\"sn\":\"7\","
                            "\"time\":\"now\",\"datas\":[{\"name\":\"u\",\"value\":\"1\"}]}";
    QCOMPARE(text.size(), 109);
    Protocol protocol;
    QSignalSpy spy(&protocol, &Protocol::dataReceived);
    QTest::ignoreMessage(QtDebugMsg, "data长度::109");
    QTest::ignoreMessage(QtDebugMsg, "完成data::");
    protocol.dataMonitoring(hex("12 34 06 00 80 00 01 6d 00 00 00 6d 00 01 00 00 00") + text + hex("56 78"));
    QCOMPARE(spy.size(), 1);
    const auto data = spy.at(0).at(0).value<Protocol::dataMonitoringData>();
    QCOMPARE(data.projectName, QStringLiteral("P"));
    QCOMPARE(data.plcName, QStringLiteral("M1"));
    QCOMPARE(data.description, QStringLiteral("d"));
    QCOMPARE(data.sn, QStringLiteral("7"));
    QCOMPARE(data.time, QStringLiteral("now"));
    QCOMPARE(data.datas,
             (QJsonArray{QJsonObject{{QStringLiteral("name"), QStringLiteral("u")},
                                     {QStringLiteral("value"), QStringLiteral("1")}}}));
}

void tst_Protocol::reportWithMissingKeysIsDeliveredEmpty()
{
    Protocol protocol;
    QSignalSpy spy(&protocol, &Protocol::dataReceived);
    // "sn" is a number and "datas" an object: neither is what it should be.
    protocol.dataMonitoring(hex("12 34 06 00 26 00 01 13 00 00 00 13 00 01 00 00 00")
                            + "{\"sn\":7,\"datas\":{}}" + hex("56 78"));
    QCOMPARE(spy.size(), 1);
    const auto data = spy.at(0).at(0).value<Protocol::dataMonitoringData>();
    QCOMPARE(data.projectName + data.plcName + data.description + data.sn + data.time, QString());
    QCOMPARE(data.datas, QJsonArray());
}

void tst_Protocol::disconnectionOfAnySessionClearsTheReport()
{
    Protocol receiving;
    Protocol other;
    QSignalSpy spy(&receiving, &Protocol::dataReceived);
    // 1026 bytes of text in two segments.
    const QByteArray first = hex("12 34 06 00 13 04 01 02 04 00 00 00 04 01 00 00 00") + "{"
        + QByteArray(1023, ' ') + hex("56 78");
    const QByteArray second = hex("12 34 06 00 15 00 01 02 04 00 00 02 00 02 00 00 00") + " }" + hex("56 78");
    receiving.dataMonitoring(first);
    receiving.dataMonitoring(second);
    QCOMPARE(spy.size(), 1);

    receiving.dataMonitoring(first);
    other.handleDisconnected();
    QTest::ignoreMessage(QtDebugMsg, "data长度::1026");
    QTest::ignoreMessage(QtWarningMsg, "Failed to parse JSON data");
    receiving.dataMonitoring(second);
    QCOMPARE(spy.size(), 1);
}

void tst_Protocol::disposedFromItsOwnSignals_data()
{
    QTest::addColumn<QString>("line"); // the session goes when it tells this
    QTest::newRow("request on a closed link") << requestUnsent;
    QTest::newRow("heartbeat on a closed link") << heartbeatUnsent;
    QTest::newRow("silence") << QStringLiteral("offline");
    QTest::newRow("heartbeat answer") << connected;
    QTest::newRow("version") << QStringLiteral("version 1.2.3");
    QTest::newRow("disconnection") << disconnected;
    QTest::newRow("reconnection") << waiting;
}

void tst_Protocol::disposedFromItsOwnSignals()
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
            [&take](const QString &version) { take(QStringLiteral("version ") + version); });
    connect(protocol, &Protocol::offlineOccurred, this, [&take] { take(QStringLiteral("offline")); });

    protocol->readLanAllocation();
    if (protocol) {
        heartbeatTimer(*protocol)->start(0);
        offlineTimer(*protocol)->start(20);
        QTRY_VERIFY(!protocol || lines.contains(QStringLiteral("offline")));
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
        protocol->bindToAddress(QHostAddress(QStringLiteral("127.0.10.59")));
        protocol->connectToBox(address);
        QTRY_VERIFY(!protocol);
    }
    QCOMPARE(lines.last(), line);
    QCOMPARE(lines.count(line), 1);
}

void tst_Protocol::deletedWhileConnected()
{
    auto protocol = std::make_unique<Protocol>();
    Told told(protocol.get());
    protocol->openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    // Half a report in hand goes with the session.
    protocol->dataMonitoring(hex("12 34 06 00 14 00 01 02 04 00 00 00 04 01 00 00 00 7b 56 78"));
    protocol.reset();
    QCOMPARE(told.lines, QStringList{disconnected});
    QTRY_VERIFY(!m_box->isLinked());

    Protocol next;
    QTest::ignoreMessage(QtDebugMsg, "data长度::2");
    next.dataMonitoring(hex("12 34 06 00 15 00 01 02 00 00 00 02 00 01 00 00 00 7b 7d 56 78"));
}

void tst_Protocol::deletedWhileConnecting()
{
    auto protocol = std::make_unique<Protocol>();
    protocol->openConnection(address);
    protocol.reset();
    auto refused = std::make_unique<Protocol>();
    refused->openConnection(nobody);
    refused.reset();
    QTRY_VERIFY(!m_box->isLinked());
}

void tst_Protocol::deletedWhileClosing()
{
    auto protocol = std::make_unique<Protocol>();
    Told told(protocol.get());
    protocol->openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    protocol->readLanAllocation(); // not yet written when the link closes
    protocol->closeConnection();
    QCOMPARE(told.lines, QStringList());
    protocol.reset();
    QCOMPARE(told.lines, QStringList{disconnected});
    QTRY_VERIFY(!m_box->isLinked());
}

void tst_Protocol::deletedWhileBound()
{
    auto protocol = std::make_unique<Protocol>();
    protocol->bindToAddress(QHostAddress(QStringLiteral("127.0.10.58")));
    protocol.reset();
    QCOMPARE(m_box->connections(), 0);
}

QTEST_MAIN(tst_Protocol)
#include "tst_protocol.moc"
