#include "boxsim/boxsim.h"
#include "rawtool.h"

#include <QDateTime>
#include <QSignalSpy>
#include <QTcpServer>

// Settings groups, clock and reboot of the simulated Box, by hand-written 0x0500 frames.
class tst_BoxSimSettings : public QObject
{
    Q_OBJECT

private slots:
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

private:
    static BoxSimOptions options() { return Raw::quietBox(address()); }
    static QHostAddress address() { return QHostAddress("127.0.12.5"); }
};

void tst_BoxSimSettings::everyGroupIsRead_data()
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

void tst_BoxSimSettings::everyGroupIsRead()
{
    QFETCH(QByteArray, type);
    QFETCH(QStringList, keys);
    BoxSim box(options());
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::json("{\"type\": \"" + type + "\", \"pares\": {}}"));
    const QJsonObject answer = tool.takeJson();
    QCOMPARE(answer.keys(), QStringList({"pares", "type"}));
    QCOMPARE(answer.value(QLatin1String("type")), QJsonValue(QString::fromLatin1(type)));
    const QJsonObject pares = answer.value(QLatin1String("pares")).toObject();
    QCOMPARE(pares.keys(), keys);
    for (const QString &key : qAsConst(keys)) {
        QVERIFY2(pares.value(key).isString(), qPrintable(key));
    }
}

void tst_BoxSimSettings::aReadAnswerIsExactlyThisFrame()
{
    BoxSimOptions own = options();
    own.settings.insert("NTP", "10.0.0.9");
    BoxSim box(own);
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(QByteArray::fromHex("12340500 2100 1700") + "{\"pares\":{},\"type\":\"8\"}"
              + QByteArray::fromHex("5678"));
    QCOMPARE(tool.take(49),
             QByteArray::fromHex("12340500 3100 2700") + "{\"pares\":{\"NTP\":\"10.0.0.9\"},\"type\":\"8\"}"
                 + QByteArray::fromHex("5678"));
}

void tst_BoxSimSettings::aWriteIsRememberedAndReadBack()
{
    BoxSim box(options());
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::json("{\"type\":102,\"pares\":{\"lanIp\":\"10.0.0.2\",\"lanMask\":\"255.0.0.0\","
                        "\"lanGateway\":\"10.0.0.1\",\"lanDns1\":\"1.1.1.1\",\"lanDns2\":\"\"}}"));
    QCOMPARE(tool.takeFrame(),
             QByteArray::fromHex("12340500 2500 1b00") + "{\"code\":\"200\",\"type\":\"102\"}"
                 + QByteArray::fromHex("5678"));
    tool.send(Raw::json("{\"type\":\"2\",\"pares\":{}}"));
    QCOMPARE(QJsonDocument(tool.takeJson()).toJson(QJsonDocument::Compact),
             QByteArray("{\"pares\":{\"lanDns1\":\"1.1.1.1\",\"lanDns2\":\"\",\"lanGateway\":\"10.0.0.1\","
                        "\"lanIp\":\"10.0.0.2\",\"lanMask\":\"255.0.0.0\"},\"type\":\"2\"}"));
    QCOMPARE(box.setting("lanIp"), "10.0.0.2");
}

void tst_BoxSimSettings::aWriteLeavesMissingKeysAndForeignKeysAlone()
{
    BoxSimOptions own = options();
    own.settings.insert("wanDhcp", "1");
    BoxSim box(own);
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::json("{\"type\":103,\"pares\":{\"wanIp\":\"10.0.0.3\",\"lanIp\":\"9.9.9.9\"}}"));
    QCOMPARE(tool.takeJson().value(QLatin1String("code")), QJsonValue("200"));
    QCOMPARE(box.setting("wanDhcp"), "1");
    QCOMPARE(box.setting("wanIp"), "10.0.0.3");
    QCOMPARE(box.setting("lanIp"), "192.168.1.80");
}

void tst_BoxSimSettings::aWriteThatCannotBeAppliedIsRefused_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("number for a value") << QByteArray("{\"type\":103,\"pares\":{\"wanDhcp\":1}}");
    QTest::newRow("no date") << QByteArray("{\"type\":109,\"pares\":{\"date\":\"tomorrow\"}}");
    QTest::newRow("value over 1024 characters")
        << QByteArray("{\"type\":108,\"pares\":{\"NTP\":\"" + QByteArray(1025, '1') + "\"}}");
}

void tst_BoxSimSettings::aWriteThatCannotBeAppliedIsRefused()
{
    QFETCH(QByteArray, text);
    BoxSim box(options());
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::json(text));
    QCOMPARE(tool.takeJson().value(QLatin1String("code")), QJsonValue("400"));
    QCOMPARE(box.setting("wanDhcp"), "0");
    QCOMPARE(box.setting("NTP"), "192.168.1.1");
}

void tst_BoxSimSettings::settingsKeepAnAnswerWithinItsLength()
{
    BoxSim box(options());
    QVERIFY(box.start());
    const QString longest = QString(1024, QChar(1)); // six bytes each in JSON
    for (const char *key : {"wifiOnOff", "wifiMode", "ssid", "password", "wifiDhcp", "wifiIp", "wifiMask",
                            "wifiGateway", "wifiDns1", "wifiDns2"}) {
        QVERIFY(box.setSetting(QString::fromLatin1(key), longest));
    }
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::json("{\"type\":\"4\",\"pares\":{}}"));
    QCOMPARE(tool.takeJson().value(QLatin1String("pares")).toObject().value(QLatin1String("ssid")).toString(),
             longest);
}

void tst_BoxSimSettings::theClockIsThisComputersUntilItIsSet()
{
    const QString format = "yyyy-MM-dd HH:mm:ss";
    BoxSim box(options());
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    const auto date = [&tool, format] {
        tool.send(Raw::json("{\"type\":\"9\",\"pares\":{}}"));
        const QJsonObject pares = tool.takeJson().value(QLatin1String("pares")).toObject();
        return QDateTime::fromString(pares.value(QLatin1String("date")).toString(), format);
    };
    QVERIFY(qAbs(date().secsTo(QDateTime::currentDateTime())) <= 2);
    tool.send(Raw::json("{\"type\":109,\"pares\":{\"date\":\"2001-02-03 04:05:06\"}}"));
    QCOMPARE(tool.takeJson().value(QLatin1String("code")), QJsonValue("200"));
    const QDateTime set = QDateTime::fromString("2001-02-03 04:05:06", format);
    QVERIFY(set.secsTo(date()) >= 0 && set.secsTo(date()) <= 2);
    // It runs on.
    QTRY_VERIFY(date() > set);
}

void tst_BoxSimSettings::aRequestAgainstTheRulesGetsNoAnswer_data()
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
        << QByteArray(QByteArray::fromHex("12340500 0c00 0300") + "{}" + QByteArray::fromHex("5678"))
        << "text length does not fit the frame";
    QTest::newRow("no text length") << QByteArray::fromHex("1234050008005678")
                                    << "text length does not fit the frame";
    QTest::newRow("heartbeat with a body")
        << QByteArray::fromHex("12340100 0900 00 5678") << "heartbeat with a body";
    QTest::newRow("unknown command") << QByteArray::fromHex("1234070008005678") << "unknown command";
    QTest::newRow("little-endian command") << QByteArray::fromHex("1234000108005678") << "unknown command";
}

void tst_BoxSimSettings::aRequestAgainstTheRulesGetsNoAnswer()
{
    QFETCH(QByteArray, frame);
    QFETCH(QString, told);
    BoxSim box(options());
    QVERIFY(box.start());
    QSignalSpy violations(&box, &BoxSim::violation);
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(frame + Raw::heartbeat());
    QCOMPARE(tool.takeFrame().left(4).toHex(), QByteArray("12340200"));
    QCOMPARE(violations.size(), 1);
    QCOMPARE(violations.at(0).at(1).toString(), told);
}

void tst_BoxSimSettings::rebootAnswersThenGoesDownAndComesBack()
{
    BoxSimOptions own = options();
    own.rebootTime = 100;
    BoxSim box(own);
    QVERIFY(box.start());
    QSignalSpy down(&box, &BoxSim::rebooting);
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::json("{\"type\":108,\"pares\":{\"NTP\":\"1.2.3.4\"}}"));
    QVERIFY(!tool.takeFrame().isEmpty());
    tool.send(Raw::json("{\"type\":\"6\",\"pares\":{\"reboot\":\"reboot\"}}"));
    QCOMPARE(tool.takeFrame(),
             QByteArray::fromHex("12340500 2300 1900") + "{\"code\":\"200\",\"type\":\"6\"}"
                 + QByteArray::fromHex("5678"));
    QVERIFY(tool.waitForEnd());
    QCOMPARE(down.size(), 1);
    QVERIFY(!box.isListening());
    QTRY_VERIFY(box.isListening());
    RawTool again;
    QVERIFY(again.connectTo(address()));
    QCOMPARE(box.setting("NTP"), "1.2.3.4");
}

void tst_BoxSimSettings::rebootWaitsForAnAddressThatWasTaken()
{
    BoxSimOptions own = options();
    own.rebootTime = 20;
    BoxSim box(own);
    QVERIFY(box.start());
    QTcpServer other;
    connect(&box, &BoxSim::rebooting, this, [&other] { other.listen(address(), 30088); });
    QSignalSpy back(&box, &BoxSim::backFromReboot);
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::json("{\"type\":\"6\",\"pares\":{\"reboot\":\"reboot\"}}"));
    QTRY_VERIFY(box.errorString().startsWith("TCP 127.0.12.5:30088: "));
    QVERIFY(other.isListening());
    QCOMPARE(back.size(), 0);
    other.close();
    QTRY_COMPARE(back.size(), 1);
    QVERIFY(box.isListening());
}

void tst_BoxSimSettings::rebootWithoutItsWordIsRefused()
{
    BoxSim box(options());
    QVERIFY(box.start());
    RawTool tool;
    QVERIFY(tool.connectTo(address()));
    tool.send(Raw::json("{\"type\":\"6\",\"pares\":{}}"));
    QCOMPARE(tool.takeJson().value(QLatin1String("code")), QJsonValue("400"));
    tool.send(Raw::heartbeat());
    QVERIFY(!tool.takeFrame().isEmpty());
}

QTEST_GUILESS_MAIN(tst_BoxSimSettings)
#include "tst_boxsimsettings.moc"
