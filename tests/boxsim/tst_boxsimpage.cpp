#include "boxsim/framereader.h"
#include "boxsim/wire.h"
#include "boxsimtest.h"
#include "protocolpage.h"
#include "tablerow.h"

#include <QNetworkDatagram>
#include <QUdpSocket>

// The frames that the protocol page shows, against the simulated Box: whoever writes firmware compares with
// both.
class TestBoxSimPage : public BoxSimTest
{
    Q_OBJECT
public:
    TestBoxSimPage()
        : BoxSimTest("127.0.33.2")
    {
    }

private slots:
    void cleanup() { stop(); }

    void everyFrameIsWorded();
    void heartbeatIsAnsweredAsShown();
    void settingsAreAnsweredAsShown_data();
    void settingsAreAnsweredAsShown();
    void rebootIsAnsweredAsShown();
    void refusalIsThatOfThePage();
    void transferIsJudgedAsShown_data();
    void transferIsJudgedAsShown();
    void reportsAreCutAsShown();
    void searchIsAnsweredAsShown();

private:
    BoxSimOptions shownBox(const QString &fault = QString()) const
    {
        BoxSimOptions shown = options(fault);
        shown.version = "1.2.3";
        shown.serialNumber = "SN7";
        return shown;
    }

    const ProtocolPage m_page;
};

namespace {

struct Worded {
    const char *name;
    const char *text; // what the log says
};

// A JSON frame is worded as its command and its text, so the name of the command stands here.
const Worded worded[] = {
    {"empty project checksum", "project checksum of 0 bytes: d41d8cd98f00b204e9800998ecf8427e"},
    {"heartbeat", "heartbeat"},
    {"heartbeat answer", "heartbeat answer: 1.2.3, SN7, MRN-GATE-70"},
    {"program checksum", "program checksum of 1025 bytes: ae187e1febee2a150b64849c32d566ca"},
    {"program chunk 1", "program chunk 1: 1024 bytes of 1025"},
    {"program chunk 2", "program chunk 2: 1 bytes of 1025"},
    {"program verdict, failure", "program verdict: failure"},
    {"program verdict, success", "program verdict: success"},
    {"project checksum", "project checksum of 3 bytes: 900150983cd24fb0d6963f7d28e17f72"},
    {"project chunk", "project chunk 1: 3 bytes of 3"},
    {"project verdict, failure", "project verdict: failure"},
    {"project verdict, success", "project verdict: success"},
    {"read LAN", R"(read LAN: {"pares":{},"type":"2"})"},
    {"read LAN answer",
     R"(read LAN: {"pares":{"lanDns1":"10.0.0.1","lanDns2":"","lanGateway":"10.0.0.1","lanIp":"10.0.0.2",)"
     R"("lanMask":"255.0.0.0"},"type":"2"})"},
    {"read LTE", R"(read LTE: {"pares":{},"type":"5"})"},
    {"read LTE answer",
     R"(read LTE: {"pares":{"AT1":"AT+CSQ","AT2":"","AT3":"","AT4":"","AT5":"","lteOnOff":"off"},"type":"5"})"},
    {"read NTP", R"(read NTP: {"pares":{},"type":"8"})"},
    {"read NTP answer", R"(read NTP: {"pares":{"NTP":"10.0.0.9"},"type":"8"})"},
    {"read WAN", R"(read WAN: {"pares":{},"type":"3"})"},
    {"read WAN answer",
     R"(read WAN: {"pares":{"wanDhcp":"0","wanDns1":"10.1.0.1","wanDns2":"","wanGateway":"10.1.0.1",)"
     R"("wanIp":"10.1.0.2","wanMask":"255.255.0.0"},"type":"3"})"},
    {"read WIFI", R"(read WIFI: {"pares":{},"type":"4"})"},
    {"read WIFI answer",
     R"(read WIFI: {"pares":{"password":"secret","ssid":"plant","wifiDhcp":"1","wifiDns1":"","wifiDns2":"",)"
     R"("wifiGateway":"","wifiIp":"","wifiMask":"","wifiMode":"station","wifiOnOff":"on"},"type":"4"})"},
    {"read time", R"(read time: {"pares":{},"type":"9"})"},
    {"read time answer", R"(read time: {"pares":{"date":"2026-01-31 23:59:59"},"type":"9"})"},
    {"reboot", R"(reboot: {"pares":{"reboot":"reboot"},"type":"6"})"},
    {"reboot answer", R"(reboot: {"code":"200","type":"6"})"},
    {"report of one segment", "report segment 1: 17 bytes of 17"},
    {"report segment 1", "report segment 1: 1024 bytes of 1025"},
    {"report segment 2", "report segment 2: 1 bytes of 1025"},
    {"report with two points", "report segment 1: 254 bytes of 254"},
    {"write LAN",
     R"(write LAN: {"pares":{"lanDns1":"10.0.0.1","lanDns2":"","lanGateway":"10.0.0.1","lanIp":"10.0.0.2",)"
     R"("lanMask":"255.0.0.0"},"type":102})"},
    {"write LAN answer", R"(write LAN: {"code":"200","type":"102"})"},
    {"write LTE",
     R"(write LTE: {"pares":{"AT1":"AT+CSQ","AT2":"","AT3":"","AT4":"","AT5":"","lteOnOff":"off"},"type":105})"},
    {"write LTE answer", R"(write LTE: {"code":"200","type":"105"})"},
    {"write LTE refusal", R"(write LTE: {"code":"500","type":"105"})"},
    {"write NTP", R"(write NTP: {"pares":{"NTP":"10.0.0.9"},"type":108})"},
    {"write NTP answer", R"(write NTP: {"code":"200","type":"108"})"},
    {"write WAN",
     R"(write WAN: {"pares":{"wanDhcp":"0","wanDns1":"10.1.0.1","wanDns2":"","wanGateway":"10.1.0.1",)"
     R"("wanIp":"10.1.0.2","wanMask":"255.255.0.0"},"type":103})"},
    {"write WAN answer", R"(write WAN: {"code":"200","type":"103"})"},
    {"write WIFI",
     R"(write WIFI: {"pares":{"password":"secret","ssid":"plant","wifiDhcp":"1","wifiDns1":"","wifiDns2":"",)"
     R"("wifiGateway":"","wifiIp":"","wifiMask":"","wifiMode":"station","wifiOnOff":"on"},"type":104})"},
    {"write WIFI answer", R"(write WIFI: {"code":"200","type":"104"})"},
    {"write time", R"(write time: {"pares":{"date":"2026-01-31 23:59:59"},"type":109})"},
    {"write time answer", R"(write time: {"code":"200","type":"109"})"},
};

} // namespace

void TestBoxSimPage::everyFrameIsWorded()
{
    QStringList names = {"search", "search answer"};
    for (const Worded &row : worded) {
        names.append(QString::fromLatin1(row.name));
        const QByteArray bytes = m_page.bytes(row.name);
        const FrameReader::Result result = FrameReader().feed(bytes);
        QVERIFY2(result.frames == QVector<QByteArray>{bytes}, row.name);
        QCOMPARE(describeFrame(bytes), QString::fromLatin1(row.text));
    }
    names.sort();
    QCOMPARE(names, m_page.names());
}

void TestBoxSimPage::heartbeatIsAnsweredAsShown()
{
    RUN(start(shownBox()));
    m_tool->send(m_page.bytes("heartbeat"));
    QCOMPARE(m_tool->takeFrame().toHex(), m_page.bytes("heartbeat answer").toHex());
}

void TestBoxSimPage::settingsAreAnsweredAsShown_data()
{
    QTest::addColumn<QByteArray>("group");
    for (const char *group : {"LAN", "WAN", "WIFI", "LTE", "NTP", "time"}) {
        QTest::newRow(group) << QByteArray(group);
    }
}

// Written and read in one go, since a clock that is set runs on.
void TestBoxSimPage::settingsAreAnsweredAsShown()
{
    QFETCH(QByteArray, group);
    RUN(start(shownBox()));
    m_tool->send(m_page.bytes("write " + group) + m_page.bytes("read " + group));
    QCOMPARE(m_tool->takeFrame(), m_page.bytes("write " + group + " answer"));
    QCOMPARE(m_tool->takeFrame(), m_page.bytes("read " + group + " answer"));
}

void TestBoxSimPage::rebootIsAnsweredAsShown()
{
    BoxSimOptions quick = shownBox();
    quick.rebootTime = 1;
    RUN(start(quick));
    QSignalSpy rebooting(m_box.get(), &BoxSim::rebooting);
    m_tool->send(m_page.bytes("reboot"));
    QCOMPARE(m_tool->takeFrame(), m_page.bytes("reboot answer"));
    QTRY_COMPARE(rebooting.size(), 1);
}

void TestBoxSimPage::refusalIsThatOfThePage()
{
    RUN(start(shownBox("refuse-write=105:500")));
    m_tool->send(m_page.bytes("write LTE"));
    QCOMPARE(m_tool->takeFrame(), m_page.bytes("write LTE refusal"));
}

void TestBoxSimPage::transferIsJudgedAsShown_data()
{
    QTest::addColumn<QByteArray>("stream");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<QByteArray>("verdict");
    QTest::addColumn<QByteArray>("file");
    const QString none;
    const QString bad = "verdict=bad";
    const QByteArray project = m_page.bytes("project chunk") + m_page.bytes("project checksum");
    const QByteArray program =
        m_page.bytes("program chunk 1") + m_page.bytes("program chunk 2") + m_page.bytes("program checksum");
    const QByteArray kilobyte(1025, 'a');
    tableRow("project", project, none, m_page.bytes("project verdict, success"), QByteArray("abc"));
    tableRow("refused project", project, bad, m_page.bytes("project verdict, failure"), QByteArray("abc"));
    tableRow("empty project", m_page.bytes("empty project checksum"), none,
             m_page.bytes("project verdict, success"), QByteArray(""));
    tableRow("program", program, none, m_page.bytes("program verdict, success"), kilobyte);
    tableRow("program without its end", m_page.bytes("program chunk 1") + m_page.bytes("program checksum"),
             none, m_page.bytes("program verdict, failure"), QByteArray());
}

void TestBoxSimPage::transferIsJudgedAsShown()
{
    QFETCH(QByteArray, stream);
    QFETCH(QString, fault);
    QFETCH(QByteArray, verdict);
    QFETCH(QByteArray, file);
    RUN(start(shownBox(fault)));
    QByteArray taken;
    const auto take = [&taken](const QByteArray &bytes) { taken = bytes; };
    connect(m_box.get(), &BoxSim::projectAccepted, this, take);
    connect(m_box.get(), &BoxSim::programAccepted, this, take);
    m_tool->send(stream);
    QCOMPARE(m_tool->takeFrame(), verdict);
    QTRY_COMPARE(taken, file);
}

void TestBoxSimPage::reportsAreCutAsShown()
{
    const QByteArray one("{\"sn\":\"12345678\"}");
    const QByteArray two = "{\"sn\":\"" + QByteArray(1016, 'a') + "\"}";
    QCOMPARE(Wire::segments(one, Wire::segmentText, -1, -1),
             QVector<QByteArray>{m_page.bytes("report of one segment")});
    QCOMPARE(Wire::segments(two, Wire::segmentText, -1, -1),
             (QVector<QByteArray>{m_page.bytes("report segment 1"), m_page.bytes("report segment 2")}));
}

// It says the address at which it is, all else is as shown.
void TestBoxSimPage::searchIsAnsweredAsShown()
{
    BoxSimOptions found = shownBox();
    found.settings.insert("lanMask", "255.255.255.0");
    RUN(startBox(found));
    QUdpSocket socket;
    QVERIFY(socket.bind(QHostAddress("127.0.33.3")));
    socket.writeDatagram(m_page.bytes("search"), address(), 30088);
    QTRY_VERIFY(socket.hasPendingDatagrams());
    QByteArray shown = m_page.bytes("search answer");
    shown.replace(4, 16, QByteArray("127.0.33.2").leftJustified(16, '\0'));
    QCOMPARE(socket.receiveDatagram().data().toHex(), shown.toHex());
}

QTEST_GUILESS_MAIN(TestBoxSimPage)
#include "tst_boxsimpage.moc"
