#include "boxsim/faultlist.h"
#include "boxsimtest.h"

#include <QElapsedTimer>
#include <QRegularExpression>

// Each fault of the simulated Box, as a tool meets it.
class TestBoxSimFaults : public BoxSimTest
{
    Q_OBJECT
public:
    TestBoxSimFaults()
        : BoxSimTest("127.0.12.2")
    {
    }

private slots:
    void cleanup() { stop(); }

    void silentAcceptsAndNeverSpeaks();
    void unansweredKinds_data();
    void unansweredKinds();
    void lateAnswersComeLate_data();
    void lateAnswersComeLate();
    void splitAnswersComeInPieces_data();
    void splitAnswersComeInPieces();
    void joinedAnswersComeInOnePiece();
    void noiseStandsBeforeEachFrame();
    void noiseHoldsNoHalfOfAHeader();
    void linkEndsAfterBytesSent_data();
    void linkEndsAfterBytesSent();
    void linkEndsAfterBytesReceived();
    void aSecondConnectionIsRefusedWhileThereIsOne();
    void verdictsAreSpoiled_data();
    void verdictsAreSpoiled();
    void writesAreRefused_data();
    void writesAreRefused();
    void answersCarryNumbersAndLackKeys_data();
    void answersCarryNumbersAndLackKeys();
    void faultsChangeWhileTheBoxRuns();
    void faultNamesAreUnderstood_data();
    void faultNamesAreUnderstood();
    void faultHelpNamesEveryFault();
};

void TestBoxSimFaults::silentAcceptsAndNeverSpeaks()
{
    RUN(start(withProject(R"({"name":"P","standards":[{"name":"S","datas":[{"name":"a"}]}]})", "silent")));
    QSignalSpy frames(m_box.get(), &BoxSim::frameReceived);
    QSignalSpy sent(m_box.get(), &BoxSim::frameSent);
    m_tool->send(Raw::heartbeat + Raw::json("{\"type\":\"2\",\"pares\":{}}")
                 + Raw::transfer(4, "a", "0cc175b9c0f1b6a831c399e269772661"));
    QTRY_COMPARE(frames.size(), 4);
    m_box->reportNow();
    QCOMPARE(sent.size(), 0);
    QCOMPARE(m_tool->bytes(), QByteArray());
}

void TestBoxSimFaults::unansweredKinds_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QByteArray>("unanswered");
    QTest::addColumn<QByteArray>("answered");
    const QByteArray read = Raw::json("{\"type\":\"8\",\"pares\":{}}");
    const QByteArray transfer = Raw::checksum(4, 0, "d41d8cd98f00b204e9800998ecf8427e");
    QTest::newRow("no heartbeat") << "no-heartbeat" << Raw::heartbeat << read;
    QTest::newRow("no JSON") << "no-json" << read << Raw::heartbeat;
    QTest::newRow("no verdict") << "verdict=none" << transfer << Raw::heartbeat;
}

void TestBoxSimFaults::unansweredKinds()
{
    QFETCH(QString, fault);
    QFETCH(QByteArray, unanswered);
    QFETCH(QByteArray, answered);
    RUN(start(fault));
    QSignalSpy sent(m_box.get(), &BoxSim::frameSent);
    m_tool->send(unanswered + answered);
    QVERIFY(!m_tool->takeFrame().isEmpty());
    QCOMPARE(sent.size(), 1);
    QCOMPARE(m_tool->bytes(), QByteArray());
}

void TestBoxSimFaults::lateAnswersComeLate_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("heartbeat") << "late-heartbeat=150" << Raw::heartbeat;
    QTest::newRow("JSON") << "late-json=150" << Raw::json("{\"type\":\"8\",\"pares\":{}}");
    QTest::newRow("verdict") << "late-verdict=150" << Raw::checksum(4, 0, "d41d8cd98f00b204e9800998ecf8427e");
}

void TestBoxSimFaults::lateAnswersComeLate()
{
    QFETCH(QString, fault);
    QFETCH(QByteArray, request);
    RUN(start(fault));
    QElapsedTimer clock;
    clock.start();
    m_tool->send(request);
    QVERIFY(!m_tool->takeFrame().isEmpty());
    QVERIFY2(clock.elapsed() >= 149, qPrintable(QString::number(clock.elapsed())));
}

void TestBoxSimFaults::splitAnswersComeInPieces_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("longest");
    QTest::newRow("byte by byte") << "split" << 1;
    QTest::newRow("pieces of 16") << "split=16" << 16;
}

void TestBoxSimFaults::splitAnswersComeInPieces()
{
    QFETCH(QString, fault);
    QFETCH(int, longest);
    RUN(start(fault));
    QVERIFY(m_box->setFault("split-gap=5"));
    m_tool->send(Raw::heartbeat);
    QCOMPARE(m_tool->take(38).toHex(),
             QByteArray("12340200260005312e302e300b53494d30303030303030310b4d524e2d474154452d37305678"));
    // A slow reader may find two pieces together; nobody finds one that was not cut.
    QVERIFY(m_tool->pieces().size() >= 38 / longest / 4);
    QVERIFY(m_tool->pieces().constFirst().size() < 38);
    QCOMPARE(m_tool->pieces().constFirst().size() % longest, 0);
}

void TestBoxSimFaults::joinedAnswersComeInOnePiece()
{
    RUN(start("join=50"));
    m_tool->send(Raw::heartbeat);
    m_tool->send(Raw::heartbeat);
    m_tool->send(Raw::heartbeat);
    QCOMPARE(m_tool->take(3 * 38).size(), 3 * 38);
    QCOMPARE(m_tool->pieces().size(), 1);
}

void TestBoxSimFaults::noiseStandsBeforeEachFrame()
{
    RUN(start("noise=5"));
    m_tool->send(Raw::heartbeat + Raw::heartbeat);
    const QByteArray bytes = m_tool->take(2 * (5 + 38));
    QCOMPARE(bytes.indexOf(Raw::hex("1234")), 5);
    QCOMPARE(bytes.indexOf(Raw::hex("1234"), 6), 5 + 38 + 5);
    QCOMPARE(bytes.mid(5, 38), bytes.mid(48, 38));
}

void TestBoxSimFaults::noiseHoldsNoHalfOfAHeader()
{
    RUN(start("noise=20000"));
    m_tool->send(Raw::heartbeat);
    QCOMPARE(m_tool->take(20000 + 38).indexOf('\x12'), 20000);
}

void TestBoxSimFaults::linkEndsAfterBytesSent_data()
{
    QTest::addColumn<int>("bytes");
    for (int bytes : {1, 6, 37, 38, 39, 75}) {
        QTest::newRow(qPrintable(QString::number(bytes))) << bytes;
    }
}

void TestBoxSimFaults::linkEndsAfterBytesSent()
{
    QFETCH(int, bytes);
    RUN(start(QString("drop-after-sent=%1").arg(bytes)));
    m_tool->send(Raw::heartbeat + Raw::heartbeat);
    QVERIFY(m_tool->waitForEnd());
    QCOMPARE(m_tool->bytes().size(), bytes);
    QTRY_COMPARE(m_box->connectionCount(), 0);
}

void TestBoxSimFaults::linkEndsAfterBytesReceived()
{
    RUN(start("drop-after-received=15"));
    QSignalSpy frames(m_box.get(), &BoxSim::frameReceived);
    m_tool->send(Raw::heartbeat + Raw::heartbeat);
    QVERIFY(m_tool->waitForEnd());
    QCOMPARE(frames.size(), 1);
    RawTool again;
    QVERIFY(again.connectTo(address()));
    again.send(Raw::heartbeat);
    QVERIFY(!again.takeFrame().isEmpty());
}

void TestBoxSimFaults::aSecondConnectionIsRefusedWhileThereIsOne()
{
    RUN(start("refuse-second"));
    QTRY_COMPARE(m_box->connectionCount(), 1);
    RawTool second;
    second.socket().connectToHost(address(), 30088);
    QVERIFY(second.waitForEnd());
    QCOMPARE(second.socket().error(), QAbstractSocket::ConnectionRefusedError);
    m_tool->send(Raw::heartbeat);
    QVERIFY(!m_tool->takeFrame().isEmpty());
    m_tool->socket().disconnectFromHost();
    QTRY_VERIFY(m_box->isListening());
    RawTool third;
    QVERIFY(third.connectTo(address()));
    QTRY_VERIFY(!m_box->isListening());
    m_box->setFaults(BoxSimFaults());
    QVERIFY(m_box->isListening());
}

void TestBoxSimFaults::verdictsAreSpoiled_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QByteArray>("verdict");
    QTest::newRow("bad") << "bad" << QByteArray("123403000a0003015678");
    QTest::newRow("wrong command") << "wrong-command" << QByteArray("123404000a0003005678");
    QTest::newRow("wrong sub-type") << "wrong-subtype" << QByteArray("123403000a0002005678");
    QTest::newRow("wrong header") << "wrong-header" << QByteArray("123503000a0003005678");
    QTest::newRow("partial") << "partial" << QByteArray("123403000a");
    QTest::newRow("too long") << "too-long" << QByteArray("123403000a000300567800");
}

void TestBoxSimFaults::verdictsAreSpoiled()
{
    QFETCH(QString, kind);
    QFETCH(QByteArray, verdict);
    RUN(start("verdict=" + kind));
    m_tool->send(Raw::checksum(3, 0, "d41d8cd98f00b204e9800998ecf8427e"));
    QCOMPARE(m_tool->take(verdict.size() / 2).toHex(), verdict);
    m_tool->send(Raw::heartbeat);
    QCOMPARE(m_tool->takeFrame().size(), 38); // and nothing between
}

void TestBoxSimFaults::writesAreRefused_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QString>("code");
    const QByteArray ntp("{\"type\":108,\"pares\":{\"NTP\":\"1.2.3.4\"}}");
    const QByteArray reboot("{\"type\":\"6\",\"pares\":{\"reboot\":\"reboot\"}}");
    const auto row = [](const char *name, const char *fault, const QByteArray &request, const char *code) {
        QTest::newRow(name) << QString::fromLatin1(fault) << request << QString::fromLatin1(code);
    };
    row("all writes", "refuse-write=500", ntp, "500");
    row("the reboot too", "refuse-write=500", reboot, "500");
    row("one type", "refuse-write=108:403", ntp, "403");
    row("without a word", "ignore-writes", ntp, "200");
    row("another type", "refuse-write=102:403", ntp, "200");
}

void TestBoxSimFaults::writesAreRefused()
{
    QFETCH(QString, fault);
    QFETCH(QByteArray, request);
    QFETCH(QString, code);
    RUN(start(fault));
    m_tool->send(Raw::json(request));
    QCOMPARE(m_tool->takeJson().value(QLatin1String("code")), QJsonValue(code));
    QCOMPARE(m_box->setting("NTP") == "1.2.3.4", code == "200" && fault != "ignore-writes");
}

void TestBoxSimFaults::answersCarryNumbersAndLackKeys_data()
{
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QByteArray>("request");
    QTest::addColumn<QByteArray>("answer");
    const QByteArray write("{\"type\":108,\"pares\":{\"NTP\":\"1.2.3.4\"}}");
    const QByteArray read("{\"type\":\"8\",\"pares\":{}}");
    QTest::newRow("type") << "type-number" << write << QByteArray("{\"code\":\"200\",\"type\":108}");
    QTest::newRow("type of a read") << "type-number" << read
                                    << QByteArray("{\"pares\":{\"NTP\":\"192.168.1.1\"},\"type\":8}");
    QTest::newRow("code") << "code-number" << write << QByteArray("{\"code\":200,\"type\":\"108\"}");
    QTest::newRow("key") << "missing-key=NTP" << read << QByteArray("{\"pares\":{},\"type\":\"8\"}");
    QTest::newRow("number") << "number-key=NTP" << read
                            << QByteArray("{\"pares\":{\"NTP\":0},\"type\":\"8\"}");
    QTest::newRow("capitals") << "capitals" << QByteArray("{\"type\":\"5\",\"pares\":{}}")
                              << QByteArray("{\"pares\":{\"AT1\":\"AT+CFUN=1\",\"AT2\":\"\",\"AT3\":\"\","
                                            "\"AT4\":\"\",\"AT5\":\"\",\"lteOnOff\":\"ON\"},\"type\":\"5\"}");
}

void TestBoxSimFaults::answersCarryNumbersAndLackKeys()
{
    QFETCH(QString, fault);
    QFETCH(QByteArray, request);
    QFETCH(QByteArray, answer);
    RUN(start(fault));
    m_tool->send(Raw::json(request));
    QCOMPARE(QJsonDocument(m_tool->takeJson()).toJson(QJsonDocument::Compact), answer);
}

void TestBoxSimFaults::faultsChangeWhileTheBoxRuns()
{
    RUN(startSession());
    QString error;
    QVERIFY(!m_box->setFault("nonsense", &error));
    QCOMPARE(error, "there is no fault nonsense");
    QVERIFY(m_box->setFault("no-heartbeat", &error));
    m_tool->send(Raw::heartbeat + Raw::json("{\"type\":\"8\",\"pares\":{}}"));
    QVERIFY(!m_tool->takeJson().isEmpty());
    m_box->setFaults(BoxSimFaults());
    m_tool->send(Raw::heartbeat);
    QCOMPARE(m_tool->takeFrame().size(), 38);
}

void TestBoxSimFaults::faultNamesAreUnderstood_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("error");
    const auto row = [](const char *text, const char *error) {
        QTest::newRow(text) << QString::fromLatin1(text) << QString::fromLatin1(error);
    };
    row("split", "");
    row("split=3", "");
    row("wrong-total=0", "");
    row("split=0", "fault split cannot be set so: split=0");
    row("split=", "fault split cannot be set so: split=");
    row("late-json", "fault late-json cannot be set so: late-json");
    row("late-json=-1", "fault late-json cannot be set so: late-json=-1");
    row("silent=1", "fault silent cannot be set so: silent=1");
    row("segment-size=65001", "fault segment-size cannot be set so: segment-size=65001");
    row("verdict=good", "fault verdict cannot be set so: verdict=good");
    row("refuse-write=x:500", "fault refuse-write cannot be set so: refuse-write=x:500");
    row("refuse-write=102:", "fault refuse-write cannot be set so: refuse-write=102:");
    row("missing-key=", "fault missing-key cannot be set so: missing-key=");
    row("number-key=", "fault number-key cannot be set so: number-key=");
    row("", "there is no fault ");
}

void TestBoxSimFaults::faultNamesAreUnderstood()
{
    QFETCH(QString, text);
    QFETCH(QString, error);
    BoxSimFaults faults;
    QString told;
    QCOMPARE(applyFault(text, &faults, &told), error.isEmpty());
    QCOMPARE(told, error);
    if (!error.isEmpty()) {
        QCOMPARE(faults.split, 0);
        QCOMPARE(faults.lateJson, 0);
        QVERIFY(!faults.silent);
    }
}

void TestBoxSimFaults::faultHelpNamesEveryFault()
{
    static const QRegularExpression nextEntry("\n(?=  \\S)");
    static const QRegularExpression endOfName("[[= ]");
    const QStringList entries = faultList().chopped(1).split(nextEntry);
    QCOMPARE(entries.size(), 34);
    for (const QString &entry : entries) {
        QVERIFY2(entry.endsWith(QLatin1Char('.')), qPrintable(entry));
        BoxSimFaults faults;
        QString error;
        applyFault(entry.trimmed().section(endOfName, 0, 0), &faults, &error);
        QVERIFY2(!error.startsWith(QLatin1String("there is no")), qPrintable(error));
    }
}

QTEST_GUILESS_MAIN(TestBoxSimFaults)
#include "tst_boxsimfaults.moc"
