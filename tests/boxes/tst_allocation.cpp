// The JSON commands of a session, byte by byte: requests to a Box, its answers, and what the user is told.

#include "sessionprobe.h"

#include "fakebox.h"
#include "messages.h"

#include <QtTest>

#include <functional>
#include <memory>

using Request = std::function<void(Protocol &)>;
Q_DECLARE_METATYPE(Request)

using HandFrames::json;
using SessionProbe::Told;

namespace {

const QString address = "127.0.10.2";

// The frame of a request: a line of its text for each value, and the type as it stands there.
QByteArray requestFrame(const QByteArrayList &values, const QByteArray &type)
{
    QByteArray lines;
    for (const QByteArray &value : values) {
        lines += "        " + value + (&value == &values.last() ? "\n" : ",\n");
    }
    return json("{\n    \"pares\": {\n" + lines + "    },\n    \"type\": " + type + "\n}\n");
}

} // namespace

class TestAllocation : public QObject
{
    Q_OBJECT
private slots:
    void init() { m_messages = std::make_unique<Messages>(); }
    void cleanup();

    void request_data();
    void request();
    void requestOnAClosedLinkIsLost_data() { request_data(); }
    void requestOnAClosedLinkIsLost();
    void readAnswer_data();
    void readAnswer();
    void droppedReadAnswer_data();
    void droppedReadAnswer();
    void writeAnswer_data();
    void writeAnswer();
    void droppedWriteAnswer_data();
    void droppedWriteAnswer();
    void answersNeedNoRequestAndNoOrder();

private:
    std::unique_ptr<Messages> m_messages;
};

void TestAllocation::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    m_messages.reset();
}

void TestAllocation::request_data()
{
    QTest::addColumn<Request>("send");
    QTest::addColumn<QByteArray>("frame");

    const auto newRow = [](const char *name, const Request &send, const QByteArrayList &values,
                           const char *type) { QTest::newRow(name) << send << requestFrame(values, type); };
    const auto newRead = [&](const char *name, void (Protocol::*read)(), const char *type) {
        newRow(name, read, {}, type);
    };
    newRead("read LAN", &Protocol::readLanAllocation, R"("2")");
    newRead("read WAN", &Protocol::readWanAllocation, R"("3")");
    newRead("read WIFI", &Protocol::readWifiAllocation, R"("4")");
    newRead("read LTE", &Protocol::readLteAllocation, R"("5")");
    newRead("read NTP", &Protocol::readNTPAllocation, R"("8")");
    newRead("read time", &Protocol::readTimeAllocation, R"("9")");
    newRow("reboot", &Protocol::rebootDevice, {R"("reboot": "reboot")"}, R"("6")");
    newRow(
        "write LAN",
        [](Protocol &p) {
            p.writeLanAllocation("192.168.1.2", "255.255.255.0", "192.168.1.1", "8.8.8.8", "");
        },
        {R"("lanDns1": "8.8.8.8")", R"("lanDns2": "")", R"("lanGateway": "192.168.1.1")",
         R"("lanIp": "192.168.1.2")", R"("lanMask": "255.255.255.0")"},
        "102");

    const auto writeWan = [](const QString &dhcp) -> Request {
        return [dhcp](Protocol &p) {
            p.writeWanAllocation(dhcp, "10.0.0.2", "255.0.0.0", "10.0.0.1", "1.1.1.1", "2.2.2.2");
        };
    };
    const QByteArrayList wan{R"("wanDns1": "1.1.1.1")", R"("wanDns2": "2.2.2.2")",
                             R"("wanGateway": "10.0.0.1")", R"("wanIp": "10.0.0.2")",
                             R"("wanMask": "255.0.0.0")"};
    newRow("write WAN, DHCP on", writeWan("Enable"), QByteArrayList{R"("wanDhcp": "1")"} + wan, "103");
    newRow("write WAN, DHCP off", writeWan("Disabled"), QByteArrayList{R"("wanDhcp": "0")"} + wan, "103");
    newRow("write WAN, DHCP empty", writeWan(""), wan, "103");
    newRow("write WAN, DHCP in another language", writeWan("启用"), wan, "103");
    newRow("write WAN, DHCP in small letters", writeWan("enable"), wan, "103");

    const auto writeWifi = [](const QString &dhcp) -> Request {
        return [dhcp](Protocol &p) {
            p.writeWifiAllocation("on", "station", "网络", "p\"w", dhcp, "10.0.0.2", "255.0.0.0", "10.0.0.1",
                                  "1.1.1.1", "2.2.2.2");
        };
    };
    const QByteArrayList access{R"("password": "p\"w")", R"("ssid": "网络")"};
    const QByteArrayList wifi{R"("wifiDns1": "1.1.1.1")",     R"("wifiDns2": "2.2.2.2")",
                              R"("wifiGateway": "10.0.0.1")", R"("wifiIp": "10.0.0.2")",
                              R"("wifiMask": "255.0.0.0")",   R"("wifiMode": "station")",
                              R"("wifiOnOff": "on")"};
    newRow("write WIFI", writeWifi("Enable"), access + QByteArrayList{R"("wifiDhcp": "1")"} + wifi, "104");
    newRow("write WIFI, DHCP empty", writeWifi(""), access + wifi, "104");
    newRow(
        "write LTE", [](Protocol &p) { p.writeLteAllocation("off", "AT", "ATE0", "AT+CSQ", "", "AT+X=1"); },
        {R"("AT1": "AT")", R"("AT2": "ATE0")", R"("AT3": "AT+CSQ")", R"("AT4": "")", R"("AT5": "AT+X=1")",
         R"("lteOnOff": "off")"},
        "105");
    newRow(
        "write NTP", [](Protocol &p) { p.writeNTPAllocation("10.0.0.9"); }, {R"("NTP": "10.0.0.9")"}, "108");
    newRow(
        "write time", [](Protocol &p) { p.writeTimeAllocation("2026-01-31 23:59:59"); },
        {R"("date": "2026-01-31 23:59:59")"}, "109");
}

void TestAllocation::request()
{
    QFETCH(Request, send);
    QFETCH(QByteArray, frame);

    FakeBox box(address);
    QVERIFY(box.isListening());
    Protocol protocol;
    protocol.openConnection(address);
    QTRY_COMPARE(box.received(), HandFrames::heartbeat);
    box.forgetReceived();
    send(protocol);
    QTRY_COMPARE(box.received(), frame);
}

void TestAllocation::requestOnAClosedLinkIsLost()
{
    QFETCH(Request, send);

    Protocol protocol;
    QStringList statuses;
    connect(&protocol, &Protocol::connectionStatusChanged, this,
            [&statuses](const QString &s) { statuses.append(s); });
    send(protocol);
    QCOMPARE(statuses, QStringList{"Not connected to server."});
}

void TestAllocation::readAnswer_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("record");

    QTest::newRow("LAN") << QByteArray(R"({"type":"2","pares":{"lanIp":"a","lanMask":"b","lanGateway":"c",)"
                                       R"("lanDns1":"d","lanDns2":"e"}})")
                         << "lan a|b|c|d|e";
    QTest::newRow("LAN, extra key") << QByteArray(
        R"({"type":"2","pares":{"lanIp":"a","lanMask":"b","lanGateway":"c",)"
        R"("lanDns1":"d","lanDns2":"e","lanDns3":"f"},"code":"500"})")
                                    << "lan a|b|c|d|e";
    QTest::newRow("WAN") << QByteArray(R"({"type":"3","pares":{"wanDhcp":"1","wanIp":"b","wanMask":"c",)"
                                       R"("wanGateway":"d","wanDns1":"e","wanDns2":"f"}})")
                         << "wan 1|b|c|d|e|f";
    QTest::newRow("WAN, DHCP a number")
        << QByteArray(R"({"type":"3","pares":{"wanDhcp":1,"wanIp":null,"wanMask":true,)"
                      R"("wanGateway":["d"],"wanDns1":{},"wanDns2":"f"}})")
        << "wan |||||f";
    QTest::newRow("WIFI") << QByteArray(
        R"({"type":"4","pares":{"wifiOnOff":"ON","wifiMode":"station","ssid":"网","password":"p\"w",)"
        R"("wifiDhcp":"0","wifiIp":"f","wifiMask":"g","wifiGateway":"h","wifiDns1":"i","wifiDns2":"j"}})")
                          << "wifi ON|station|网|p\"w|0|f|g|h|i|j";
    QTest::newRow("LTE") << QByteArray(R"({"type":"5","pares":{"lteOnOff":"off","AT1":"a","AT2":"b",)"
                                       R"("AT3":"c","AT4":"d","AT5":"e"}})")
                         << "lte off|a|b|c|d|e";
    QTest::newRow("NTP") << QByteArray(R"({"type":"8","pares":{"NTP":"10.0.0.9"}})") << "ntp 10.0.0.9";
    QTest::newRow("time") << QByteArray(R"({"type":"9","pares":{"date":"31/1/26"}})") << "time 31/1/26";
}

void TestAllocation::readAnswer()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, record);

    Protocol protocol;
    Told told(&protocol);
    const QByteArray frame = json(text);
    protocol.assembleFrames(frame.constData(), unsigned(frame.size()));
    QCOMPARE(told.lines, QStringList{record});
}

void TestAllocation::droppedReadAnswer_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("not JSON") << QByteArray("{\"type\":\"9\",\"pares\":{\"date\":\"\"}");
    QTest::newRow("an array") << QByteArray("[{\"pares\":{\"date\":\"\"}}]");
    QTest::newRow("no pares") << QByteArray("{\"type\":\"9\",\"date\":\"\"}");
    QTest::newRow("pares a string") << QByteArray("{\"type\":\"9\",\"pares\":\"date\"}");
    QTest::newRow("pares an array") << QByteArray("{\"type\":\"9\",\"pares\":[{\"date\":\"\"}]}");
    QTest::newRow("pares null") << QByteArray("{\"type\":\"9\",\"pares\":null}");
    QTest::newRow("key missing") << QByteArray("{\"type\":\"9\",\"pares\":{\"Date\":\"\"}}");
}

void TestAllocation::droppedReadAnswer()
{
    QFETCH(QByteArray, text);

    Protocol protocol;
    Told delivered(&protocol);
    protocol.readLanAllocationReturn(text);
    protocol.readWanAllocationReturn(text);
    protocol.readWifiAllocationReturn(text);
    protocol.readLteAllocationReturn(text);
    protocol.readNTPAllocationReturn(text);
    protocol.readTimeAllocationReturn(text);
    QCOMPARE(delivered.lines, QStringList());
}

void TestAllocation::writeAnswer_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("told");

    const auto newRow = [](const char *type, const char *code, const char *told) {
        QTest::addRow("%s %s", type, code) << QByteArray("{\"type\":\"") + type + "\",\"code\":\"" + code
                + "\"}" << QString::fromLatin1(told);
    };
    newRow("102", "200", "Write LAN Allocation|LAN allocation write successful.");
    newRow("102", "404", "Write LAN Allocation|LAN allocation write failed. Error code: 404");
    newRow("103", "200", "Write WAN Allocation|WAN allocation write successful.");
    newRow("103", "-1", "Write WAN Allocation|WAN allocation write failed. Error code: -1");
    newRow("104", "200", "Write WIFI Allocation|WIFI allocation write successful.");
    newRow("104", "0200", "Write WIFI Allocation|WIFI allocation write failed. Error code: 0200");
    newRow("105", "200", "Write LTE Allocation|LTE allocation write successful.");
    newRow("105", "2000", "Write LTE Allocation|LTE allocation write failed. Error code: 2000");
    newRow("105", "500", "Write LTE Allocation|LTE allocation write failed. Error code: 500");
    newRow("108", "200", "Write NTP Allocation|NTP allocation write successful.");
    newRow("108", "", "Write NTP Allocation|NTP allocation write failed. Error code: ");
    newRow("109", "200", "Write time Allocation|time allocation write successful.");
    newRow("109", "%1", "Write time Allocation|time allocation write failed. Error code: %1");
    newRow("6", "200", "Write Restart Allocation|Restart allocation write successful.");
    newRow("6", "busy", "Write Restart Allocation|Restart allocation write failed. Error code: busy");
}

void TestAllocation::writeAnswer()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, told);

    Protocol protocol;
    Told delivered(&protocol);
    m_messages->expect(QMessageBox::Ok);
    const QByteArray frame = json(text);
    protocol.assembleFrames(frame.constData(), unsigned(frame.size()));
    QCOMPARE(m_messages->told(), QStringList{told});
    QCOMPARE(delivered.lines, QStringList());
}

void TestAllocation::droppedWriteAnswer_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("not JSON") << QByteArray("{\"type\":\"102\",\"code\":\"200\"");
    QTest::newRow("an array") << QByteArray("[\"code\",\"200\"]");
    QTest::newRow("no code") << QByteArray("{\"type\":\"102\",\"pares\":{\"code\":\"200\"}}");
    QTest::newRow("code a number") << QByteArray("{\"type\":\"102\",\"code\":200}");
    QTest::newRow("code null") << QByteArray("{\"type\":\"102\",\"code\":null}");
}

void TestAllocation::droppedWriteAnswer()
{
    QFETCH(QByteArray, text);

    Protocol protocol;
    protocol.writeLanAllocationReturn(text);
    protocol.writeWanAllocationReturn(text);
    protocol.writeWifiAllocationReturn(text);
    protocol.writeLteAllocationReturn(text);
    protocol.writeNTPAllocationReturn(text);
    protocol.writeTimeAllocationReturn(text);
    protocol.rebootDeviceReturn(text);
    const QByteArray frame = json(text);
    protocol.dispatchFrame(frame.constData(), unsigned(frame.size()));
    QCOMPARE(m_messages->told(), QStringList());
}

void TestAllocation::answersNeedNoRequestAndNoOrder()
{
    FakeBox box(address);
    QVERIFY(box.isListening());
    Protocol protocol;
    Told delivered(&protocol);
    protocol.openConnection(address);
    QTRY_COMPARE(box.count(), 1);
    protocol.readNTPAllocation();
    m_messages->expect();
    box.send(json("{\"type\":\"9\",\"pares\":{\"date\":\"d\"}}") + json("{\"type\":\"6\",\"code\":\"200\"}")
             + json("{\"type\":\"8\",\"pares\":{\"NTP\":\"n\"}}"));
    QTRY_COMPARE(delivered.lines, (QStringList{"time d", "ntp n"}));
    QCOMPARE(m_messages->told(),
             QStringList{"Write Restart Allocation|Restart allocation write successful."});
}

QTEST_MAIN(TestAllocation)
#include "tst_allocation.moc"
