// What a session makes of the frames that a Box sends.

#include "sessionprobe.h"

#include "fakebox.h"
#include "messages.h"

#include <QSignalSpy>
#include <QtTest>

#include <functional>
#include <memory>

using namespace SessionProbe;
using HandFrames::frame;
using HandFrames::json;

namespace {

const QString address = "127.0.20.31";

// Acts when a message box stands, before anybody answers it.
class OnMessageBox : public QObject
{
public:
    explicit OnMessageBox(std::function<void()> act)
        : m_act(std::move(act))
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

} // namespace

class TestProtocolAnswers : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

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
    void reportIsDelivered_data();
    void reportIsDelivered();
    void disconnectionOfAnySessionClearsTheReport();

private:
    std::unique_ptr<FakeBox> m_box;
    std::unique_ptr<Messages> m_messages;
};

void TestProtocolAnswers::init()
{
    m_box = std::make_unique<FakeBox>(address);
    QVERIFY(m_box->isListening());
    m_messages = std::make_unique<Messages>();
}

void TestProtocolAnswers::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    m_messages.reset();
    m_box.reset();
}

void TestProtocolAnswers::heartbeatAnswerGivesStatusAndVersion()
{
    Protocol protocol;
    Told told(&protocol);
    QTest::ignoreMessage(QtDebugMsg, "Box Version: 1.2.3");
    QTest::ignoreMessage(QtDebugMsg, "Box Serial Number: SN7");
    QTest::ignoreMessage(QtDebugMsg, "Box Model: MRN-GATE-70");
    protocol.receiveHeartbeatResponse(answer);
    QCOMPARE(told.lines, (QStringList{connected, "version 1.2.3"}));
}

void TestProtocolAnswers::heartbeatAnswer_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("version"); // null: nothing is shown

    QTest::newRow("good") << answer << "1.2.3";
    QTest::newRow("empty texts") << hex("12 34 02 00 0b 00 00 00 00 56 78") << QString("");
    QTest::newRow("length too large") << hex("12 34 02 00 0c 00 00 00 00 56 78") << QString();
    QTest::newRow("version past the footer") << hex("12 34 02 00 0b 00 04 00 00 56 78") << QString();
    QTest::newRow("one byte") << hex("12") << QString();
}

void TestProtocolAnswers::heartbeatAnswer()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, version);

    Protocol protocol;
    Told told(&protocol);
    heartbeatTimer(protocol)->stop();
    offlineTimer(protocol)->stop();
    protocol.receiveHeartbeatResponse(bytes);
    QCOMPARE(told.lines, version.isNull() ? QStringList() : (QStringList{connected, "version " + version}));
    // A sign of life, good or bad: the next heartbeat counts from here.
    QVERIFY(heartbeatTimer(protocol)->isActive());
    QCOMPARE(heartbeatTimer(protocol)->interval(), 5000);
    QVERIFY(offlineTimer(protocol)->isActive());
    QCOMPARE(offlineTimer(protocol)->interval(), 30000);
}

void TestProtocolAnswers::emptyHeartbeatAnswerRestartsTheOfflineTimerOnly()
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

void TestProtocolAnswers::heartbeatAnswerWithBadFooterWritesALine()
{
    Protocol protocol;
    Told told(&protocol);
    heartbeatTimer(protocol)->stop();
    QTest::ignoreMessage(QtDebugMsg, "Invalid package footer.");
    protocol.receiveHeartbeatResponse(hex("12 34 02 00 0b 00 00 00 00 56 79"));
    QCOMPARE(told.lines, QStringList());
    QVERIFY(heartbeatTimer(protocol)->isActive());
}

void TestProtocolAnswers::offlineComesOnce()
{
    Protocol protocol;
    Told told(&protocol);
    offlineTimer(protocol)->start(10);
    QTRY_COMPARE(told.lines, QStringList{"offline"});
    QVERIFY(!offlineTimer(protocol)->isActive());
    QVERIFY(heartbeatTimer(protocol)->isActive());

    protocol.receiveHeartbeatResponse(hex("12 34 02 00 0b 00 00 00 00 56 78"));
    QTRY_COMPARE(told.lines.count("offline"), 2);
}

void TestProtocolAnswers::onlyHeartbeatAnswersFeedTheOfflineTimer()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    offlineTimer(protocol)->stop();
    heartbeatTimer(protocol)->stop();
    m_box->send(hex("12 34 06 00 15 00 01 02 00 00 00 02 00 01 00 00 00") + "{}" + hex("56 78")
                + json("{\"type\":\"8\",\"pares\":{\"NTP\":\"\"}}"));
    QTRY_COMPARE(told.lines, (QStringList{"report |||", "ntp "}));
    QVERIFY(!offlineTimer(protocol)->isActive());
    QVERIFY(!heartbeatTimer(protocol)->isActive());
}

void TestProtocolAnswers::disconnectionRestartsTheOfflineTimer()
{
    Protocol protocol;
    protocol.openConnection(address);
    QTRY_VERIFY(m_box->isLinked());
    offlineTimer(protocol)->stop();
    m_box->close();
    QTRY_VERIFY(offlineTimer(protocol)->isActive());
    QVERIFY(heartbeatTimer(protocol)->isActive());
}

void TestProtocolAnswers::droppedFrames_data()
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
    QTest::newRow("JSON frame without a text") << json("");
    QTest::newRow("not JSON") << json("{\"type\":\"9\",");
    QTest::newRow("JSON array") << json("[\"type\",\"9\"]");
    QTest::newRow("no type") << json("{\"pares\":{\"date\":\"\"}}");
    QTest::newRow("type a number, of a read") << json("{\"type\":9,\"pares\":{\"date\":\"\"}}");
    QTest::newRow("type a number, of a write") << json("{\"type\":102,\"code\":\"200\"}");
    QTest::newRow("type null") << json("{\"type\":null,\"code\":\"200\"}");
    QTest::newRow("type an object") << json("{\"type\":{\"type\":\"9\"},\"pares\":{\"date\":\"\"}}");
    QTest::newRow("trailing text") << json("{\"type\":\"9\",\"pares\":{\"date\":\"\"}}}");
    for (const char *bomb : {"[", "{\"type\":"}) {
        QTest::addRow("nested bomb of %s", bomb) << json(QByteArray(bomb).repeated(5000));
    }
}

void TestProtocolAnswers::droppedFrames()
{
    QFETCH(QByteArray, bytes);

    Protocol protocol;
    Told told(&protocol);
    QCOMPARE(protocol.dispatchFrame(bytes.constData(), unsigned(bytes.size())), 0);
    QCOMPARE(told.lines, QStringList());
    // The same off the stream leaves the next frame unharmed.
    QCOMPARE(protocol.assembleFrames(bytes.constData(), unsigned(bytes.size())), 0);
    QCOMPARE(protocol.assembleFrames(answer.constData(), unsigned(answer.size())), 0);
    QCOMPARE(told.lines, (QStringList{connected, "version 1.2.3"}));
}

void TestProtocolAnswers::unhandledTypeWritesALine()
{
    Protocol protocol;
    Told told(&protocol);
    for (const char *type : {"1", "7", "101", "02", ""}) {
        const QByteArray bytes = json(QByteArray("{\"type\":\"") + type + "\"}");
        QTest::ignoreMessage(QtDebugMsg, (QByteArray("Unhandled type string: ") + type).constData());
        protocol.dispatchFrame(bytes.constData(), unsigned(bytes.size()));
    }
    QCOMPARE(told.lines, QStringList());
}

void TestProtocolAnswers::answersComeInOneByteAtATime()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    for (const char byte : answer + json("{\"type\":\"9\",\"pares\":{\"date\":\"\"}}")) {
        m_box->send(QByteArray(1, byte));
        QCoreApplication::processEvents();
    }
    QTRY_COMPARE(told.lines, (QStringList{connected, "version 1.2.3", "time "}));
}

void TestProtocolAnswers::boxThatClosesAtAnyByte()
{
    for (int size = 0; size < answer.size(); ++size) {
        Protocol protocol;
        Told told(&protocol);
        protocol.openConnection(address);
        QTRY_COMPARE(m_box->count(), size + 1);
        QTRY_COMPARE(m_box->received(), heartbeat);
        m_box->send(answer.left(size));
        m_box->close();
        QTRY_COMPARE(told.lines, QStringList{disconnected});
    }
}

void TestProtocolAnswers::carriedFrameSurvivesADisconnection()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.assembleFrames(answer.constData(), 9);
    protocol.handleDisconnected();
    protocol.assembleFrames(answer.constData() + 9, unsigned(answer.size() - 9));
    QCOMPARE(told.lines, (QStringList{disconnected, connected, "version 1.2.3"}));
}

void TestProtocolAnswers::dataBehindAMessageBoxIsReadWhenItCloses()
{
    Protocol protocol;
    Told told(&protocol);
    protocol.openConnection(address);
    QTRY_COMPARE(m_box->received(), heartbeat);
    heartbeatTimer(protocol)->stop();

    m_messages->expect();
    OnMessageBox onBox([this] {
        m_box->send(answer);
        QTest::qWait(0); // lets the socket take it in
    });
    m_box->send(json("{\"type\":\"109\",\"code\":\"200\"}"));
    QTRY_COMPARE(m_messages->told(), QStringList{"Write time Allocation|time allocation write successful."});
    QTRY_COMPARE(told.lines, (QStringList{connected, "version 1.2.3"}));
}

void TestProtocolAnswers::dataEntersDuringAMessageBox()
{
    Protocol protocol;
    Told told(&protocol);
    const QByteArray first = json("{\"type\":\"109\",\"code\":\"200\"}") + answer.left(9);
    m_messages->expect();
    OnMessageBox onBox(
        [&protocol] { protocol.assembleFrames(answer.constData() + 9, unsigned(answer.size() - 9)); });
    protocol.assembleFrames(first.constData(), unsigned(first.size()));
    QCOMPARE(told.lines, (QStringList{connected, "version 1.2.3"}));
    QCOMPARE(m_messages->told().size(), 1);
}

void TestProtocolAnswers::reportIsDelivered_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("description");
    QTest::addColumn<QString>("told");
    QTest::newRow("whole") << QByteArray(R"({"projectName":"P","plcName":"M1","description":"d","sn":"7",)"
                                         R"("time":"now","datas":[{"name":"u","value":"1"}]})")
                           << "d"
                           << "report P|M1|7|now|u=1 ()";
    // "sn" is a number and "datas" an object: neither is what it should be.
    QTest::newRow("missing keys are empty")
        << QByteArray(R"({"sn":7,"datas":{}})") << QString() << "report |||";
}

void TestProtocolAnswers::reportIsDelivered()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, description);
    Protocol protocol;
    Told told(&protocol);
    QSignalSpy spy(&protocol, &Protocol::dataReceived);
    QTest::ignoreMessage(QtDebugMsg, ("data长度::" + QByteArray::number(text.size())).constData());
    QTest::ignoreMessage(QtDebugMsg, "完成data::");
    const QByteArray size = HandFrames::little(quint32(text.size()), 4);
    protocol.dataMonitoring(frame("06 00", hex("01") + size + size.left(2) + hex("01 00 00 00") + text));
    QTEST(told.lines.join(QLatin1Char('\n')), "told");
    QCOMPARE(spy.at(0).at(0).value<Protocol::dataMonitoringData>().description, description);
}

void TestProtocolAnswers::disconnectionOfAnySessionClearsTheReport()
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

QTEST_MAIN(TestProtocolAnswers)
#include "tst_protocolanswers.moc"
