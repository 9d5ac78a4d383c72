#include "boxsimtest.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QTcpServer>

// Settings groups, clock and reboot of the simulated Box, by hand-written 0x0500 frames.
class TestBoxSimSettings : public BoxSimTest
{
    Q_OBJECT
public:
    TestBoxSimSettings()
        : BoxSimTest("127.0.12.5")
    {
    }

private slots:
    void cleanup() { stop(); }

    void everyGroupIsRead_data();
    void everyGroupIsRead();
    void aReadAnswerIsExactlyThisFrame();
    void aWriteIsRememberedAndReadBack();
    void aWriteLeavesMissingKeysAndForeignKeysAlone();
    void aWriteThatCannotBeAppliedIsRefused_data();
    void aWriteThatCannotBeAppliedIsRefused();
    void settingsKeepAnAnswerWithinItsLength();
    void theClockIsThisComputersUntilItIsSet();
    void aRequestAgainstTheRulesGetsNoAnswer_data();
    void aRequestAgainstTheRulesGetsNoAnswer();
    void rebootAnswersThenGoesDownAndComesBack();
    void rebootWaitsForAnAddressThatWasTaken();
    void rebootWithoutItsWordIsRefused();
};

void TestBoxSimSettings::everyGroupIsRead_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QStringList>("keys");
    const auto keys = [](const char *text) { return QString::fromLatin1(text).split(QLatin1Char(' ')); };
    QTest::newRow("LAN") << QByteArray("2") << keys("lanDns1 lanDns2 lanGateway lanIp lanMask");
    QTest::newRow("WAN") << QByteArray("3") << keys("wanDhcp wanDns1 wanDns2 wanGateway wanIp wanMask");
    QTest::newRow("WIFI")
        << QByteArray("4")
        << keys("password ssid wifiDhcp wifiDns1 wifiDns2 wifiGateway wifiIp wifiMask wifiMode "
                "wifiOnOff");
    QTest::newRow("LTE") << QByteArray("5") << keys("AT1 AT2 AT3 AT4 AT5 lteOnOff");
    QTest::newRow("NTP") << QByteArray("8") << keys("NTP");
    QTest::newRow("time") << QByteArray("9") << keys("date");
}

void TestBoxSimSettings::everyGroupIsRead()
{
    QFETCH(QByteArray, type);
    QFETCH(QStringList, keys);
    RUN(start());
    m_tool->send(Raw::json("{\"type\": \"" + type + "\", \"pares\": {}}"));
    const QJsonObject answer = m_tool->takeJson();
    QCOMPARE(answer.keys(), QStringList({"pares", "type"}));
    QCOMPARE(answer.value(QLatin1String("type")), QJsonValue(QString::fromLatin1(type)));
    const QJsonObject pares = answer.value(QLatin1String("pares")).toObject();
    QCOMPARE(pares.keys(), keys);
    for (const QString &key : qAsConst(keys)) {
        QVERIFY2(pares.value(key).isString(), qPrintable(key));
    }
}

void TestBoxSimSettings::aReadAnswerIsExactlyThisFrame()
{
    BoxSimOptions own = options();
    own.settings.insert("NTP", "10.0.0.9");
    RUN(start(own));
    m_tool->send(Raw::hex("12340500 2100 1700") + "{\"pares\":{},\"type\":\"8\"}" + Raw::hex("5678"));
    QCOMPARE(m_tool->take(49),
             Raw::hex("12340500 3100 2700") + "{\"pares\":{\"NTP\":\"10.0.0.9\"},\"type\":\"8\"}"
                 + Raw::hex("5678"));
}

void TestBoxSimSettings::aWriteIsRememberedAndReadBack()
{
    RUN(start());
    m_tool->send(Raw::json("{\"type\":102,\"pares\":{\"lanIp\":\"10.0.0.2\",\"lanMask\":\"255.0.0.0\","
                           "\"lanGateway\":\"10.0.0.1\",\"lanDns1\":\"1.1.1.1\",\"lanDns2\":\"\"}}"));
    QCOMPARE(m_tool->takeFrame(),
             Raw::hex("12340500 2500 1b00") + "{\"code\":\"200\",\"type\":\"102\"}" + Raw::hex("5678"));
    m_tool->send(Raw::json("{\"type\":\"2\",\"pares\":{}}"));
    QCOMPARE(QJsonDocument(m_tool->takeJson()).toJson(QJsonDocument::Compact),
             QByteArray("{\"pares\":{\"lanDns1\":\"1.1.1.1\",\"lanDns2\":\"\",\"lanGateway\":\"10.0.0.1\","
                        "\"lanIp\":\"10.0.0.2\",\"lanMask\":\"255.0.0.0\"},\"type\":\"2\"}"));
    QCOMPARE(m_box->setting("lanIp"), "10.0.0.2");
}

void TestBoxSimSettings::aWriteLeavesMissingKeysAndForeignKeysAlone()
{
    BoxSimOptions own = options();
    own.settings.insert("wanDhcp", "1");
    RUN(start(own));
    m_tool->send(Raw::json("{\"type\":103,\"pares\":{\"wanIp\":\"10.0.0.3\",\"lanIp\":\"9.9.9.9\"}}"));
    QCOMPARE(m_tool->takeJson().value(QLatin1String("code")), QJsonValue("200"));
    QCOMPARE(m_box->setting("wanDhcp"), "1");
    QCOMPARE(m_box->setting("wanIp"), "10.0.0.3");
    QCOMPARE(m_box->setting("lanIp"), "192.168.1.80");
}

void TestBoxSimSettings::aWriteThatCannotBeAppliedIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("number for a value") << QByteArray("{\"type\":103,\"pares\":{\"wanDhcp\":1}}");
    QTest::newRow("no date") << QByteArray("{\"type\":109,\"pares\":{\"date\":\"tomorrow\"}}");
    QTest::newRow("value over 1024 characters")
        << QByteArray("{\"type\":108,\"pares\":{\"NTP\":\"" + QByteArray(1025, '1') + "\"}}");
}

void TestBoxSimSettings::aWriteThatCannotBeAppliedIsRefused()
{
    QFETCH(QByteArray, text);
    RUN(start());
    m_tool->send(Raw::json(text));
    QCOMPARE(m_tool->takeJson().value(QLatin1String("code")), QJsonValue("400"));
    QCOMPARE(m_box->setting("wanDhcp"), "0");
    QCOMPARE(m_box->setting("NTP"), "192.168.1.1");
}

void TestBoxSimSettings::settingsKeepAnAnswerWithinItsLength()
{
    RUN(startBox(options()));
    const QString longest = QString(1024, QChar(1)); // six bytes each in JSON
    for (const char *key : {"wifiOnOff", "wifiMode", "ssid", "password", "wifiDhcp", "wifiIp", "wifiMask",
                            "wifiGateway", "wifiDns1", "wifiDns2"}) {
        QVERIFY(m_box->setSetting(QString::fromLatin1(key), longest));
    }
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::json("{\"type\":\"4\",\"pares\":{}}"));
    QCOMPARE(tool.takeJson().value(QLatin1String("pares")).toObject().value(QLatin1String("ssid")).toString(),
             longest);
}

void TestBoxSimSettings::theClockIsThisComputersUntilItIsSet()
{
    const QString format = "yyyy-MM-dd HH:mm:ss";
    RUN(start());
    const auto date = [this, format] {
        m_tool->send(Raw::json("{\"type\":\"9\",\"pares\":{}}"));
        const QJsonObject pares = m_tool->takeJson().value(QLatin1String("pares")).toObject();
        return QDateTime::fromString(pares.value(QLatin1String("date")).toString(), format);
    };
    const QDateTime before = QDateTime::currentDateTime();
    const QDateTime its = date();
    QVERIFY(before.addSecs(-1) < its && its <= QDateTime::currentDateTime());
    QElapsedTimer clock;
    clock.start();
    m_tool->send(Raw::json("{\"type\":109,\"pares\":{\"date\":\"2001-02-03 04:05:06\"}}"));
    QCOMPARE(m_tool->takeJson().value(QLatin1String("code")), QJsonValue("200"));
    const QDateTime set = QDateTime::fromString("2001-02-03 04:05:06", format);
    const qint64 passed = set.secsTo(date());
    QVERIFY(passed >= 0 && passed <= clock.elapsed() / 1000 + 1);
    // It runs on.
    QTRY_VERIFY(date() > set);
}

void TestBoxSimSettings::aRequestAgainstTheRulesGetsNoAnswer_data()
{
    QTest::addColumn<QByteArray>("frame");
    QTest::addColumn<QString>("told");
    QTest::newRow("read with a number")
        << Raw::json("{\"type\":2,\"pares\":{}}") << "read LAN must have type as a string";
    QTest::newRow("write with a string")
        << Raw::json("{\"type\":\"102\",\"pares\":{}}") << "write LAN must have type as a number";
    QTest::newRow("reboot with a number")
        << Raw::json("{\"type\":6,\"pares\":{\"reboot\":\"reboot\"}}") << "reboot must have type as a string";
    QTest::newRow("no pares") << Raw::json("{\"type\":\"2\"}") << "pares is no object";
    QTest::newRow("unused type") << Raw::json("{\"type\":\"7\",\"pares\":{}}")
                                 << "type is none that a Box knows";
    QTest::newRow("no type") << Raw::json("{\"pares\":{}}") << "type is none that a Box knows";
    QTest::newRow("array") << Raw::json("[]") << "text is no JSON object: no error occurred";
    QTest::newRow("text length off by one")
        << QByteArray(Raw::hex("12340500 0c00 0300") + "{}" + Raw::hex("5678"))
        << "text length does not fit the frame";
    QTest::newRow("no text length") << Raw::hex("1234050008005678") << "text length does not fit the frame";
    QTest::newRow("heartbeat with a body") << Raw::hex("12340100 0900 00 5678") << "heartbeat with a body";
    QTest::newRow("unknown command") << Raw::hex("1234070008005678") << "unknown command";
    QTest::newRow("little-endian command") << Raw::hex("1234000108005678") << "unknown command";
}

void TestBoxSimSettings::aRequestAgainstTheRulesGetsNoAnswer()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, told);
    RUN(start());
    m_tool->send(frame + Raw::heartbeat);
    QCOMPARE(m_tool->takeFrame().left(4).toHex(), QByteArray("12340200"));
    QCOMPARE(m_violations, QStringList{told});
}

void TestBoxSimSettings::rebootAnswersThenGoesDownAndComesBack()
{
    BoxSimOptions own = options();
    own.rebootTime = 100;
    RUN(start(own));
    QSignalSpy down(m_box.get(), &BoxSim::rebooting);
    m_tool->send(Raw::json("{\"type\":108,\"pares\":{\"NTP\":\"1.2.3.4\"}}"));
    QVERIFY(!m_tool->takeFrame().isEmpty());
    m_tool->send(Raw::json("{\"type\":\"6\",\"pares\":{\"reboot\":\"reboot\"}}"));
    QCOMPARE(m_tool->takeFrame(),
             Raw::hex("12340500 2300 1900") + "{\"code\":\"200\",\"type\":\"6\"}" + Raw::hex("5678"));
    QVERIFY(m_tool->waitForEnd());
    QCOMPARE(down.size(), 1);
    QVERIFY(!m_box->isListening());
    QTRY_VERIFY(m_box->isListening());
    RawTool again;
    QVERIFY(again.connectTo(address()));
    QCOMPARE(m_box->setting("NTP"), "1.2.3.4");
}

void TestBoxSimSettings::rebootWaitsForAnAddressThatWasTaken()
{
    BoxSimOptions own = options();
    own.rebootTime = 20;
    RUN(startBox(own));
    QTcpServer other;
    connect(m_box.get(), &BoxSim::rebooting, this, [this, &other] { other.listen(address(), 30088); });
    QSignalSpy back(m_box.get(), &BoxSim::backFromReboot);
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::json("{\"type\":\"6\",\"pares\":{\"reboot\":\"reboot\"}}"));
    QTRY_VERIFY(m_box->errorString().startsWith("TCP 127.0.12.5:30088: "));
    QVERIFY(other.isListening());
    QCOMPARE(back.size(), 0);
    other.close();
    QTRY_COMPARE(back.size(), 1);
    QVERIFY(m_box->isListening());
}

void TestBoxSimSettings::rebootWithoutItsWordIsRefused()
{
    RUN(start());
    m_tool->send(Raw::json("{\"type\":\"6\",\"pares\":{}}"));
    QCOMPARE(m_tool->takeJson().value(QLatin1String("code")), QJsonValue("400"));
    m_tool->send(Raw::heartbeat);
    QVERIFY(!m_tool->takeFrame().isEmpty());
}

QTEST_GUILESS_MAIN(TestBoxSimSettings)
#include "tst_boxsimsettings.moc"
