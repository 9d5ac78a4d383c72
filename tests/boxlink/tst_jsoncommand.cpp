#include "boxlink/jsoncommand.h"

#include <QtTest>

// The JSON commands as texts: what a Box is asked and sent, and what its answers say.
class TestJsonCommand : public QObject
{
    Q_OBJECT
private slots:
    void readRequest_data();
    void readRequest();
    void rebootRequest();
    void writeRequest_data();
    void writeRequest();
    void flagThatIsNoneIsNotSent();
    void typeOfAnAnswer_data();
    void typeOfAnAnswer();
    void settingsAnswer_data();
    void settingsAnswer();
    void everyKeyIsNeeded_data() { settingsAnswer_data(); }
    void everyKeyIsNeeded();
    void valueThatIsNoTextReadsAsEmpty();
    void droppedSettings_data();
    void droppedSettings();
    void commandAnswer_data();
    void commandAnswer();
    void droppedResult_data();
    void droppedResult();
};

Q_DECLARE_METATYPE(SettingsGroup)
Q_DECLARE_METATYPE(BoxSettings)
Q_DECLARE_METATYPE(Frame::JsonType)

namespace {

QByteArray compact(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

// The group's keys and texts as a Box writes them, or nothing for what are no settings.
QByteArray shown(const JsonCommand::Answer &answer)
{
    const auto *settings = std::get_if<BoxSettings>(&answer);
    return settings ? compact(JsonCommand::writeRequest(*settings)) : QByteArray();
}

} // namespace

void TestJsonCommand::readRequest_data()
{
    QTest::addColumn<SettingsGroup>("group");
    QTest::addColumn<QByteArray>("request");
    QTest::newRow("LAN") << SettingsGroup::Lan << QByteArray(R"({"pares":{},"type":"2"})");
    QTest::newRow("WAN") << SettingsGroup::Wan << QByteArray(R"({"pares":{},"type":"3"})");
    QTest::newRow("WIFI") << SettingsGroup::Wifi << QByteArray(R"({"pares":{},"type":"4"})");
    QTest::newRow("LTE") << SettingsGroup::Lte << QByteArray(R"({"pares":{},"type":"5"})");
    QTest::newRow("NTP") << SettingsGroup::Ntp << QByteArray(R"({"pares":{},"type":"8"})");
    QTest::newRow("time") << SettingsGroup::Time << QByteArray(R"({"pares":{},"type":"9"})");
}

void TestJsonCommand::readRequest()
{
    QFETCH(SettingsGroup, group);
    QFETCH(QByteArray, request);
    QCOMPARE(compact(JsonCommand::readRequest(group)), request);
    QCOMPARE(groupOf(emptySettings(group)), group);
}

void TestJsonCommand::rebootRequest()
{
    QCOMPARE(compact(JsonCommand::rebootRequest()),
             QByteArray(R"({"pares":{"reboot":"reboot"},"type":"6"})"));
}

void TestJsonCommand::writeRequest_data()
{
    QTest::addColumn<BoxSettings>("settings");
    QTest::addColumn<QByteArray>("request"); // keys in the order of the alphabet
    QTest::newRow("LAN") << BoxSettings(LanSettings{"a", "b", "c", "d", QString()})
                         << QByteArray(R"({"pares":{"lanDns1":"d","lanDns2":"","lanGateway":"c","lanIp":"a",)"
                                       R"("lanMask":"b"},"type":102})");
    QTest::newRow("WAN") << BoxSettings(WanSettings{"0", "b", "c", "d", "e", "f"})
                         << QByteArray(R"({"pares":{"wanDhcp":"0","wanDns1":"e","wanDns2":"f",)"
                                       R"("wanGateway":"d","wanIp":"b","wanMask":"c"},"type":103})");
    QTest::newRow("WIFI") << BoxSettings(
        WifiSettings{"on", "station", "网", "p\"w", "1", "f", "g", "h", "i", "j"})
                          << QByteArray(
                                 R"({"pares":{"password":"p\"w","ssid":"网","wifiDhcp":"1","wifiDns1":"i",)"
                                 R"("wifiDns2":"j","wifiGateway":"h","wifiIp":"f","wifiMask":"g",)"
                                 R"("wifiMode":"station","wifiOnOff":"on"},"type":104})");
    QTest::newRow("LTE") << BoxSettings(LteSettings{"off", "a", "b", "c", "d", "e"})
                         << QByteArray(R"({"pares":{"AT1":"a","AT2":"b","AT3":"c","AT4":"d","AT5":"e",)"
                                       R"("lteOnOff":"off"},"type":105})");
    QTest::newRow("NTP") << BoxSettings(NtpSettings{"10.0.0.9"})
                         << QByteArray(R"({"pares":{"NTP":"10.0.0.9"},"type":108})");
    QTest::newRow("time") << BoxSettings(TimeSettings{"noon"})
                          << QByteArray(R"({"pares":{"date":"noon"},"type":109})");
}

void TestJsonCommand::writeRequest()
{
    QFETCH(BoxSettings, settings);
    QFETCH(QByteArray, request);
    QCOMPARE(compact(JsonCommand::writeRequest(settings)), request);
}

void TestJsonCommand::flagThatIsNoneIsNotSent()
{
    for (const char *flag : {"", "2", "10", "Enable"}) {
        QCOMPARE(compact(JsonCommand::writeRequest(WanSettings{QLatin1String(flag), {}, {}, {}, {}, {}})),
                 QByteArray(R"({"pares":{"wanDns1":"","wanDns2":"","wanGateway":"","wanIp":"",)"
                            R"("wanMask":""},"type":103})"));
    }
}

void TestJsonCommand::typeOfAnAnswer_data()
{
    QTest::addColumn<QByteArray>("answer");
    QTest::addColumn<QString>("type"); // null: none
    QTest::addColumn<int>("command");  // 0: none
    for (const int command : {2, 3, 4, 5, 6, 8, 9, 102, 103, 104, 105, 108, 109}) {
        QTest::addRow("%d", command)
            << QByteArray("{\"type\":\"%1\"}").replace("%1", QByteArray::number(command))
            << QString::number(command) << command;
    }
    for (const char *unused : {"1", "7", "101", "106", "107", "02", " 2", "2.0", ""}) {
        QTest::addRow("not in use: '%s'", unused)
            << QByteArray("{\"type\":\"%1\"}").replace("%1", unused) << QString::fromLatin1(unused) << 0;
    }
    QTest::newRow("a number") << QByteArray(R"({"type":9})") << QString() << 0;
    QTest::newRow("null") << QByteArray(R"({"type":null})") << QString() << 0;
    QTest::newRow("none") << QByteArray(R"({"pares":{}})") << QString() << 0;
    QTest::newRow("an array") << QByteArray(R"(["type","9"])") << QString() << 0;
    QTest::newRow("not JSON") << QByteArray(R"({"type":"9")") << QString() << 0;
    QTest::newRow("empty") << QByteArray() << QString() << 0;
}

void TestJsonCommand::typeOfAnAnswer()
{
    QFETCH(QByteArray, answer);
    QFETCH(QString, type);
    QFETCH(int, command);
    const std::optional<QString> read = JsonCommand::typeOf(answer);
    QCOMPARE(bool(read), !type.isNull());
    QCOMPARE(read.value_or(QString()), type);
    QCOMPARE(int(JsonCommand::commandOf(type).value_or(Frame::JsonType())), command);
}

void TestJsonCommand::settingsAnswer_data()
{
    QTest::addColumn<Frame::JsonType>("command");
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<Frame::JsonType>("write");
    const auto newRow = [](const char *name, Frame::JsonType command, const char *keys,
                           Frame::JsonType write) {
        QTest::newRow(name) << command << QString(QLatin1String(keys)).split(QLatin1Char(' ')) << write;
    };
    newRow("LAN", Frame::LanRead, "lanIp lanMask lanGateway lanDns1 lanDns2", Frame::LanWrite);
    newRow("WAN", Frame::WanRead, "wanDhcp wanIp wanMask wanGateway wanDns1 wanDns2", Frame::WanWrite);
    newRow("WIFI", Frame::WifiRead,
           "wifiOnOff wifiMode ssid password wifiDhcp wifiIp wifiMask wifiGateway wifiDns1 wifiDns2",
           Frame::WifiWrite);
    newRow("LTE", Frame::LteRead, "lteOnOff AT1 AT2 AT3 AT4 AT5", Frame::LteWrite);
    newRow("NTP", Frame::NtpRead, "NTP", Frame::NtpWrite);
    newRow("time", Frame::TimeRead, "date", Frame::TimeWrite);
}

void TestJsonCommand::settingsAnswer()
{
    QFETCH(Frame::JsonType, command);
    QFETCH(QStringList, keys);
    QFETCH(Frame::JsonType, write);

    QJsonObject pares;
    for (const QString &key : qAsConst(keys)) {
        // Flags come back as they are; all other texts tell their key.
        pares.insert(key, key.endsWith(QLatin1String("Dhcp")) ? QString("1") : key);
    }
    const QByteArray expected = compact({{"type", int(write)}, {"pares", pares}});
    const auto answer = JsonCommand::readAnswer(command, compact({{"pares", pares}}));
    QCOMPARE(shown(answer), expected);

    BoxSettings settings = std::get<BoxSettings>(answer);
    QStringList order;
    const QVector<SettingsText> texts = textsOf(settings);
    for (const SettingsText &each : texts) {
        order.append(QLatin1String(each.key));
    }
    QCOMPARE(order, keys);

    pares.insert("other", "x");
    QCOMPARE(shown(JsonCommand::readAnswer(command, compact({{"pares", pares}}))), expected);
}

void TestJsonCommand::everyKeyIsNeeded()
{
    QFETCH(Frame::JsonType, command);
    QFETCH(QStringList, keys);

    for (const QString &missing : qAsConst(keys)) {
        QJsonObject pares;
        for (const QString &key : qAsConst(keys)) {
            pares.insert(key == missing ? QString("other") : key, QString());
        }
        const auto answer = JsonCommand::readAnswer(command, compact({{"pares", pares}}));
        QVERIFY2(std::holds_alternative<std::monostate>(answer), qPrintable(missing));
    }
}

void TestJsonCommand::valueThatIsNoTextReadsAsEmpty()
{
    const QByteArray json(
        R"({"pares":{"wanDhcp":1,"wanIp":null,"wanMask":true,"wanGateway":["d"],"wanDns1":{},"wanDns2":"f"}})");
    const auto answer = JsonCommand::readAnswer(Frame::WanRead, json);
    QCOMPARE(shown(answer),
             QByteArray(R"({"pares":{"wanDns1":"","wanDns2":"f","wanGateway":"","wanIp":"","wanMask":""},)"
                        R"("type":103})"));
    QCOMPARE(JsonCommand::keysWithoutText(SettingsGroup::Wan, json),
             (QStringList{"wanDhcp", "wanIp", "wanMask", "wanGateway", "wanDns1"}));
}

void TestJsonCommand::droppedSettings_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("not JSON") << QByteArray(R"({"type":"9","pares":{"date":""})");
    QTest::newRow("an array") << QByteArray(R"([{"pares":{"date":""}}])");
    QTest::newRow("no pares") << QByteArray(R"({"type":"9","date":""})");
    QTest::newRow("pares a string") << QByteArray(R"({"type":"9","pares":"date"})");
    QTest::newRow("pares an array") << QByteArray(R"({"type":"9","pares":[{"date":""}]})");
    QTest::newRow("pares null") << QByteArray(R"({"type":"9","pares":null})");
    QTest::newRow("a code alone") << QByteArray(R"({"type":"9","code":"200"})");
}

void TestJsonCommand::droppedSettings()
{
    QFETCH(QByteArray, json);
    for (const auto command :
         {Frame::LanRead, Frame::WanRead, Frame::WifiRead, Frame::LteRead, Frame::NtpRead, Frame::TimeRead}) {
        QVERIFY(std::holds_alternative<std::monostate>(JsonCommand::readAnswer(command, json)));
    }
}

void TestJsonCommand::commandAnswer_data()
{
    QTest::addColumn<QString>("code");
    QTest::addColumn<bool>("succeeded");
    QTest::newRow("success") << "200" << true;
    for (const char *code : {"404", "0200", "2000", "", "busy"}) {
        QTest::addRow("failure '%s'", code) << QString::fromLatin1(code) << false;
    }
}

void TestJsonCommand::commandAnswer()
{
    QFETCH(QString, code);
    QFETCH(bool, succeeded);
    for (const auto command : {Frame::LanWrite, Frame::WanWrite, Frame::WifiWrite, Frame::LteWrite,
                               Frame::NtpWrite, Frame::TimeWrite, Frame::DeviceReboot}) {
        const auto answer = JsonCommand::readAnswer(command, compact({{"code", code}}));
        const auto *result = std::get_if<CommandResult>(&answer);
        QVERIFY(result);
        QCOMPARE(result->command, command);
        QCOMPARE(result->code, code);
        QCOMPARE(result->succeeded(), succeeded);
    }
}

void TestJsonCommand::droppedResult_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("not JSON") << QByteArray(R"({"type":"102","code":"200")");
    QTest::newRow("an array") << QByteArray(R"(["code","200"])");
    QTest::newRow("no code") << QByteArray(R"({"type":"102","pares":{"code":"200"}})");
    QTest::newRow("code a number") << QByteArray(R"({"type":"102","code":200})");
    QTest::newRow("code null") << QByteArray(R"({"type":"102","code":null})");
}

void TestJsonCommand::droppedResult()
{
    QFETCH(QByteArray, json);
    QVERIFY(std::holds_alternative<std::monostate>(JsonCommand::readAnswer(Frame::LanWrite, json)));
    QVERIFY(std::holds_alternative<std::monostate>(JsonCommand::readAnswer(Frame::DeviceReboot, json)));
}

QTEST_GUILESS_MAIN(TestJsonCommand)
#include "tst_jsoncommand.moc"
