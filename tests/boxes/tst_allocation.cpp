// The JSON commands of a session, byte by byte: requests to a Box, its answers, and what the user is told.

#include "boxes/protocol.h"

#include "messages.h"
#include "rawbox.h"

#include <QtTest>

#include <functional>
#include <memory>

using Request = std::function<void(Protocol &)>;
Q_DECLARE_METATYPE(Request)

namespace {

const QString address = "127.0.10.2";

QByteArray hex(const char *bytes)
{
    return QByteArray::fromHex(bytes);
}

QString text(const char *utf8)
{
    return QString::fromUtf8(utf8);
}

// Records as lines of text, field by field.
QStringList fields(const Protocol::LanAllocationData &d)
{
    return {d.lanIp, d.lanMask, d.lanGateway, d.lanDns1, d.lanDns2};
}
QStringList fields(const Protocol::WanAllocationData &d)
{
    return {d.wanDhcp, d.wanIp, d.wanMask, d.wanGateway, d.wanDns1, d.wanDns2};
}
QStringList fields(const Protocol::WifiAllocationData &d)
{
    return {d.wifiOnOff, d.wifiMode, d.ssid,        d.password, d.wifiDhcp,
            d.wifiIp,    d.wifiMask, d.wifiGateway, d.wifiDns1, d.wifiDns2};
}
QStringList fields(const Protocol::LteAllocationData &d)
{
    return {d.lteOnOff, d.AT1, d.AT2, d.AT3, d.AT4, d.AT5};
}
QStringList fields(const Protocol::NTPAllocationData &d)
{
    return {d.NTP};
}
QStringList fields(const Protocol::timeAllocationData &d)
{
    return {d.date};
}

// The records that a session delivers: the group's name and its fields.
class Delivered : public QObject
{
public:
    explicit Delivered(Protocol *protocol)
    {
        connect(protocol, &Protocol::lanAllocationDataReceived, this,
                [this](const auto &d) { note("lan", d); });
        connect(protocol, &Protocol::wanAllocationDataReceived, this,
                [this](const auto &d) { note("wan", d); });
        connect(protocol, &Protocol::wifiAllocationDataReceived, this,
                [this](const auto &d) { note("wifi", d); });
        connect(protocol, &Protocol::lteAllocationDataReceived, this,
                [this](const auto &d) { note("lte", d); });
        connect(protocol, &Protocol::NTPAllocationDataReceived, this,
                [this](const auto &d) { note("ntp", d); });
        connect(protocol, &Protocol::timeAllocationDataReceived, this,
                [this](const auto &d) { note("time", d); });
    }

    QList<QStringList> records;

private:
    template <typename Record> void note(const char *group, const Record &record)
    {
        records.append(QStringList{QLatin1String(group)} + fields(record));
    }
};

// A 0x0500 frame around an answer, by hand.
QByteArray answerFrame(const QByteArray &json)
{
    const int size = json.size() + 10;
    return hex("12 34 05 00") + char(size & 0xff) + char(size >> 8) + char(json.size() & 0xff)
        + char(json.size() >> 8) + json + hex("56 78");
}

} // namespace

class tst_Allocation : public QObject
{
    Q_OBJECT
private slots:
    void init();
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

void tst_Allocation::init()
{
    m_messages = std::make_unique<Messages>();
}

void tst_Allocation::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    m_messages.reset();
}

void tst_Allocation::request_data()
{
    QTest::addColumn<Request>("send");
    QTest::addColumn<QByteArray>("frame");

    const auto newRow = [](const char *name, const Request &send, const char *head, const char *json) {
        QTest::newRow(name) << send << hex(head) + json + hex("56 78");
    };
    const auto newRead = [&](const char *name, void (Protocol::*read)(), const char *json) {
        newRow(name, read, "12 34 05 00 34 00 2a 00", json);
    };
    newRead("read LAN", &Protocol::readLanAllocation,
            "{\n    \"pares\": {\n    },\n    \"type\": \"2\"\n}\n");
    newRead("read WAN", &Protocol::readWanAllocation,
            "{\n    \"pares\": {\n    },\n    \"type\": \"3\"\n}\n");
    newRead("read WIFI", &Protocol::readWifiAllocation,
            "{\n    \"pares\": {\n    },\n    \"type\": \"4\"\n}\n");
    newRead("read LTE", &Protocol::readLteAllocation,
            "{\n    \"pares\": {\n    },\n    \"type\": \"5\"\n}\n");
    newRead("read NTP", &Protocol::readNTPAllocation,
            "{\n    \"pares\": {\n    },\n    \"type\": \"8\"\n}\n");
    newRead("read time", &Protocol::readTimeAllocation,
            "{\n    \"pares\": {\n    },\n    \"type\": \"9\"\n}\n");
    newRow("reboot", &Protocol::rebootDevice, "12 34 05 00 4f 00 45 00",
           "{\n    \"pares\": {\n        \"reboot\": \"reboot\"\n    },\n    \"type\": \"6\"\n}\n");
    newRow(
        "write LAN",
        [](Protocol &p) {
            p.writeLanAllocation(text("192.168.1.2"), text("255.255.255.0"), text("192.168.1.1"),
                                 text("8.8.8.8"), text(""));
        },
        "12 34 05 00 d1 00 c7 00",
        "{\n    \"pares\": {\n"
        "        \"lanDns1\": \"8.8.8.8\",\n"
        "        \"lanDns2\": \"\",\n"
        "        \"lanGateway\": \"192.168.1.1\",\n"
        "        \"lanIp\": \"192.168.1.2\",\n"
        "        \"lanMask\": \"255.255.255.0\"\n"
        "    },\n    \"type\": 102\n}\n");
    const auto writeWan = [](const char *dhcp) -> Request {
        return [dhcp](Protocol &p) {
            p.writeWanAllocation(text(dhcp), text("10.0.0.2"), text("255.0.0.0"), text("10.0.0.1"),
                                 text("1.1.1.1"), text("2.2.2.2"));
        };
    };
    newRow("write WAN, DHCP on", writeWan("Enable"), "12 34 05 00 e6 00 dc 00",
           "{\n    \"pares\": {\n"
           "        \"wanDhcp\": \"1\",\n"
           "        \"wanDns1\": \"1.1.1.1\",\n"
           "        \"wanDns2\": \"2.2.2.2\",\n"
           "        \"wanGateway\": \"10.0.0.1\",\n"
           "        \"wanIp\": \"10.0.0.2\",\n"
           "        \"wanMask\": \"255.0.0.0\"\n"
           "    },\n    \"type\": 103\n}\n");
    newRow("write WAN, DHCP off", writeWan("Disabled"), "12 34 05 00 e6 00 dc 00",
           "{\n    \"pares\": {\n"
           "        \"wanDhcp\": \"0\",\n"
           "        \"wanDns1\": \"1.1.1.1\",\n"
           "        \"wanDns2\": \"2.2.2.2\",\n"
           "        \"wanGateway\": \"10.0.0.1\",\n"
           "        \"wanIp\": \"10.0.0.2\",\n"
           "        \"wanMask\": \"255.0.0.0\"\n"
           "    },\n    \"type\": 103\n}\n");
    const char *const wanWithoutDhcp = "{\n    \"pares\": {\n"
                                       "        \"wanDns1\": \"1.1.1.1\",\n"
                                       "        \"wanDns2\": \"2.2.2.2\",\n"
                                       "        \"wanGateway\": \"10.0.0.1\",\n"
                                       "        \"wanIp\": \"10.0.0.2\",\n"
                                       "        \"wanMask\": \"255.0.0.0\"\n"
                                       "    },\n    \"type\": 103\n}\n";
    newRow("write WAN, DHCP empty", writeWan(""), "12 34 05 00 ce 00 c4 00", wanWithoutDhcp);
    newRow("write WAN, DHCP in another language", writeWan("启用"), "12 34 05 00 ce 00 c4 00",
           wanWithoutDhcp);
    newRow("write WAN, DHCP in small letters", writeWan("enable"), "12 34 05 00 ce 00 c4 00", wanWithoutDhcp);
    const auto writeWifi = [](const char *dhcp) -> Request {
        return [dhcp](Protocol &p) {
            p.writeWifiAllocation(text("on"), text("station"), text("网络"), text("p\"w"), text(dhcp),
                                  text("10.0.0.2"), text("255.0.0.0"), text("10.0.0.1"), text("1.1.1.1"),
                                  text("2.2.2.2"));
        };
    };
    newRow("write WIFI", writeWifi("Enable"), "12 34 05 00 5c 01 52 01",
           "{\n    \"pares\": {\n"
           "        \"password\": \"p\\\"w\",\n"
           "        \"ssid\": \"网络\",\n"
           "        \"wifiDhcp\": \"1\",\n"
           "        \"wifiDns1\": \"1.1.1.1\",\n"
           "        \"wifiDns2\": \"2.2.2.2\",\n"
           "        \"wifiGateway\": \"10.0.0.1\",\n"
           "        \"wifiIp\": \"10.0.0.2\",\n"
           "        \"wifiMask\": \"255.0.0.0\",\n"
           "        \"wifiMode\": \"station\",\n"
           "        \"wifiOnOff\": \"on\"\n"
           "    },\n    \"type\": 104\n}\n");
    newRow("write WIFI, DHCP empty", writeWifi(""), "12 34 05 00 43 01 39 01",
           "{\n    \"pares\": {\n"
           "        \"password\": \"p\\\"w\",\n"
           "        \"ssid\": \"网络\",\n"
           "        \"wifiDns1\": \"1.1.1.1\",\n"
           "        \"wifiDns2\": \"2.2.2.2\",\n"
           "        \"wifiGateway\": \"10.0.0.1\",\n"
           "        \"wifiIp\": \"10.0.0.2\",\n"
           "        \"wifiMask\": \"255.0.0.0\",\n"
           "        \"wifiMode\": \"station\",\n"
           "        \"wifiOnOff\": \"on\"\n"
           "    },\n    \"type\": 104\n}\n");
    newRow(
        "write LTE",
        [](Protocol &p) {
            p.writeLteAllocation(text("off"), text("AT"), text("ATE0"), text("AT+CSQ"), text(""),
                                 text("AT+X=1"));
        },
        "12 34 05 00 bf 00 b5 00",
        "{\n    \"pares\": {\n"
        "        \"AT1\": \"AT\",\n"
        "        \"AT2\": \"ATE0\",\n"
        "        \"AT3\": \"AT+CSQ\",\n"
        "        \"AT4\": \"\",\n"
        "        \"AT5\": \"AT+X=1\",\n"
        "        \"lteOnOff\": \"off\"\n"
        "    },\n    \"type\": 105\n}\n");
    newRow(
        "write NTP", [](Protocol &p) { p.writeNTPAllocation(text("10.0.0.9")); }, "12 34 05 00 4e 00 44 00",
        "{\n    \"pares\": {\n        \"NTP\": \"10.0.0.9\"\n    },\n    \"type\": 108\n}\n");
    newRow(
        "write time", [](Protocol &p) { p.writeTimeAllocation(text("2026-01-31 23:59:59")); },
        "12 34 05 00 5a 00 50 00",
        "{\n    \"pares\": {\n        \"date\": \"2026-01-31 23:59:59\"\n    },\n    \"type\": 109\n}\n");
}

void tst_Allocation::request()
{
    QFETCH(Request, send);
    QFETCH(QByteArray, frame);

    RawBox box(address);
    QVERIFY(box.listen());
    Protocol protocol;
    protocol.openConnection(address);
    QTRY_COMPARE(box.received(), hex("12 34 01 00 08 00 56 78"));
    box.forgetReceived();
    send(protocol);
    QTRY_COMPARE(box.received(), frame);
}

void tst_Allocation::requestOnAClosedLinkIsLost()
{
    QFETCH(Request, send);

    Protocol protocol;
    QStringList statuses;
    connect(&protocol, &Protocol::connectionStatusChanged, this,
            [&statuses](const QString &s) { statuses.append(s); });
    send(protocol);
    QCOMPARE(statuses, QStringList{"Not connected to server."});
}

void tst_Allocation::readAnswer_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QStringList>("record");

    QTest::newRow("LAN") << QByteArray("{\"type\":\"2\",\"pares\":{\"lanIp\":\"a\",\"lanMask\":\"b\","
                                       "\"lanGateway\":\"c\",\"lanDns1\":\"d\",\"lanDns2\":\"e\"}}")
                         << text("lan a b c d e").split(QLatin1Char(' '));
    QTest::newRow("LAN, extra key") << QByteArray(
        "{\"type\":\"2\",\"pares\":{\"lanIp\":\"a\",\"lanMask\":\"b\",\"lanGateway\":\"c\","
        "\"lanDns1\":\"d\",\"lanDns2\":\"e\",\"lanDns3\":\"f\"},\"code\":\"500\"}")
                                    << text("lan a b c d e").split(QLatin1Char(' '));
    QTest::newRow("WAN") << QByteArray(
        "{\"type\":\"3\",\"pares\":{\"wanDhcp\":\"1\",\"wanIp\":\"b\",\"wanMask\":\"c\","
        "\"wanGateway\":\"d\",\"wanDns1\":\"e\",\"wanDns2\":\"f\"}}")
                         << text("wan 1 b c d e f").split(QLatin1Char(' '));
    QTest::newRow("WAN, DHCP a number")
        << QByteArray("{\"type\":\"3\",\"pares\":{\"wanDhcp\":1,\"wanIp\":null,\"wanMask\":true,"
                      "\"wanGateway\":[\"d\"],\"wanDns1\":{},\"wanDns2\":\"f\"}}")
        << text("wan      f").split(QLatin1Char(' '));
    QTest::newRow("WIFI") << QByteArray(
        "{\"type\":\"4\",\"pares\":{\"wifiOnOff\":\"ON\",\"wifiMode\":\"station\",\"ssid\":\"\xE7\xBD\x91\","
        "\"password\":\"p\\\"w\",\"wifiDhcp\":\"0\",\"wifiIp\":\"f\",\"wifiMask\":\"g\","
        "\"wifiGateway\":\"h\",\"wifiDns1\":\"i\",\"wifiDns2\":\"j\"}}")
                          << text("wifi ON station 网 p\"w 0 f g h i j").split(QLatin1Char(' '));
    QTest::newRow("LTE") << QByteArray(
        "{\"type\":\"5\",\"pares\":{\"lteOnOff\":\"off\",\"AT1\":\"a\",\"AT2\":\"b\","
        "\"AT3\":\"c\",\"AT4\":\"d\",\"AT5\":\"e\"}}")
                         << text("lte off a b c d e").split(QLatin1Char(' '));
    QTest::newRow("NTP") << QByteArray("{\"type\":\"8\",\"pares\":{\"NTP\":\"10.0.0.9\"}}")
                         << text("ntp 10.0.0.9").split(QLatin1Char(' '));
    QTest::newRow("time") << QByteArray("{\"type\":\"9\",\"pares\":{\"date\":\"31/1/26\"}}")
                          << text("time 31/1/26").split(QLatin1Char(' '));
}

void tst_Allocation::readAnswer()
{
    QFETCH(QByteArray, json);
    QFETCH(QStringList, record);

    Protocol protocol;
    Delivered delivered(&protocol);
    const QByteArray frame = answerFrame(json);
    protocol.assembleFrames(frame.constData(), unsigned(frame.size()));
    QCOMPARE(delivered.records, QList<QStringList>{record});
}

void tst_Allocation::droppedReadAnswer_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("not JSON") << QByteArray("{\"type\":\"9\",\"pares\":{\"date\":\"\"}");
    QTest::newRow("an array") << QByteArray("[{\"pares\":{\"date\":\"\"}}]");
    QTest::newRow("no pares") << QByteArray("{\"type\":\"9\",\"date\":\"\"}");
    QTest::newRow("pares a string") << QByteArray("{\"type\":\"9\",\"pares\":\"date\"}");
    QTest::newRow("pares an array") << QByteArray("{\"type\":\"9\",\"pares\":[{\"date\":\"\"}]}");
    QTest::newRow("pares null") << QByteArray("{\"type\":\"9\",\"pares\":null}");
    QTest::newRow("key missing") << QByteArray("{\"type\":\"9\",\"pares\":{\"Date\":\"\"}}");
}

void tst_Allocation::droppedReadAnswer()
{
    QFETCH(QByteArray, json);

    Protocol protocol;
    Delivered delivered(&protocol);
    protocol.readLanAllocationReturn(json);
    protocol.readWanAllocationReturn(json);
    protocol.readWifiAllocationReturn(json);
    protocol.readLteAllocationReturn(json);
    protocol.readNTPAllocationReturn(json);
    protocol.readTimeAllocationReturn(json);
    QCOMPARE(delivered.records, QList<QStringList>());
}

void tst_Allocation::writeAnswer_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("told");

    const auto newRow = [](const char *type, const char *code, const char *told) {
        QTest::addRow("%s %s", type, code)
            << QByteArray("{\"type\":\"") + type + "\",\"code\":\"" + code + "\"}" << text(told);
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

void tst_Allocation::writeAnswer()
{
    QFETCH(QByteArray, json);
    QFETCH(QString, told);

    Protocol protocol;
    Delivered delivered(&protocol);
    m_messages->expect(QMessageBox::Ok);
    const QByteArray frame = answerFrame(json);
    protocol.assembleFrames(frame.constData(), unsigned(frame.size()));
    QCOMPARE(m_messages->told(), QStringList{told});
    QCOMPARE(delivered.records, QList<QStringList>());
}

void tst_Allocation::droppedWriteAnswer_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("not JSON") << QByteArray("{\"type\":\"102\",\"code\":\"200\"");
    QTest::newRow("an array") << QByteArray("[\"code\",\"200\"]");
    QTest::newRow("no code") << QByteArray("{\"type\":\"102\",\"pares\":{\"code\":\"200\"}}");
    QTest::newRow("code a number") << QByteArray("{\"type\":\"102\",\"code\":200}");
    QTest::newRow("code null") << QByteArray("{\"type\":\"102\",\"code\":null}");
}

void tst_Allocation::droppedWriteAnswer()
{
    QFETCH(QByteArray, json);

    Protocol protocol;
    protocol.writeLanAllocationReturn(json);
    protocol.writeWanAllocationReturn(json);
    protocol.writeWifiAllocationReturn(json);
    protocol.writeLteAllocationReturn(json);
    protocol.writeNTPAllocationReturn(json);
    protocol.writeTimeAllocationReturn(json);
    protocol.rebootDeviceReturn(json);
    const QByteArray frame = answerFrame(json);
    protocol.dispatchFrame(frame.constData(), unsigned(frame.size()));
    QCOMPARE(m_messages->told(), QStringList());
}

void tst_Allocation::answersNeedNoRequestAndNoOrder()
{
    RawBox box(address);
    QVERIFY(box.listen());
    Protocol protocol;
    Delivered delivered(&protocol);
    protocol.openConnection(address);
    QTRY_COMPARE(box.connections(), 1);
    protocol.readNTPAllocation();
    m_messages->expect();
    box.send(answerFrame("{\"type\":\"9\",\"pares\":{\"date\":\"d\"}}")
             + answerFrame("{\"type\":\"6\",\"code\":\"200\"}")
             + answerFrame("{\"type\":\"8\",\"pares\":{\"NTP\":\"n\"}}"));
    QTRY_COMPARE(delivered.records,
                 (QList<QStringList>{{text("time"), text("d")}, {text("ntp"), text("n")}}));
    QCOMPARE(m_messages->told(),
             QStringList{text("Write Restart Allocation|Restart allocation write successful.")});
}

QTEST_MAIN(tst_Allocation)
#include "tst_allocation.moc"
