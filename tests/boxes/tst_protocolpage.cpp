// The frames that the protocol page shows, against the program.

#include "sessionprobe.h"

#include "boxlink/discovery.h"
#include "boxlink/filetransfer.h"
#include "fakebox.h"
#include "messages.h"
#include "protocolpage.h"

#include <QTemporaryDir>
#include <QtTest>

#include <functional>

namespace {

const QString address = "127.0.33.1";

struct Request {
    const char *name;
    std::function<void(Protocol &)> send;
};

// What the program is made to send, with the values of the page.
const QList<Request> &requests()
{
    static const QList<Request> table = {
        {"read LAN", [](Protocol &p) { p.readLanAllocation(); }},
        {"read WAN", [](Protocol &p) { p.readWanAllocation(); }},
        {"read WIFI", [](Protocol &p) { p.readWifiAllocation(); }},
        {"read LTE", [](Protocol &p) { p.readLteAllocation(); }},
        {"read NTP", [](Protocol &p) { p.readNTPAllocation(); }},
        {"read time", [](Protocol &p) { p.readTimeAllocation(); }},
        {"reboot", [](Protocol &p) { p.rebootDevice(); }},
        {"write LAN",
         [](Protocol &p) {
             p.writeLanAllocation("10.0.0.2", "255.0.0.0", "10.0.0.1", "10.0.0.1", QString());
         }},
        {"write WAN",
         [](Protocol &p) {
             p.writeWanAllocation("Disabled", "10.1.0.2", "255.255.0.0", "10.1.0.1", "10.1.0.1", QString());
         }},
        {"write WIFI",
         [](Protocol &p) {
             p.writeWifiAllocation("on", "station", "plant", "secret", "Enable", QString(), QString(),
                                   QString(), QString(), QString());
         }},
        {"write LTE",
         [](Protocol &p) {
             p.writeLteAllocation("off", "AT+CSQ", QString(), QString(), QString(), QString());
         }},
        {"write NTP", [](Protocol &p) { p.writeNTPAllocation("10.0.0.9"); }},
        {"write time", [](Protocol &p) { p.writeTimeAllocation("2026-01-31 23:59:59"); }},
    };
    return table;
}

struct Answer {
    const char *name;
    const char *told; // as by the session, its lines with bars between, or title and text of a message
};

const Answer answers[] = {
    {"heartbeat answer", "Connection status: Connected|version 1.2.3"},
    {"read LAN answer", "lan 10.0.0.2|255.0.0.0|10.0.0.1|10.0.0.1|"},
    {"read WAN answer", "wan 0|10.1.0.2|255.255.0.0|10.1.0.1|10.1.0.1|"},
    {"read WIFI answer", "wifi on|station|plant|secret|1|||||"},
    {"read LTE answer", "lte off|AT+CSQ||||"},
    {"read NTP answer", "ntp 10.0.0.9"},
    {"read time answer", "time 2026-01-31 23:59:59"},
    {"reboot answer", "Write Restart Allocation|Restart allocation write successful."},
    {"write LAN answer", "Write LAN Allocation|LAN allocation write successful."},
    {"write WAN answer", "Write WAN Allocation|WAN allocation write successful."},
    {"write WIFI answer", "Write WIFI Allocation|WIFI allocation write successful."},
    {"write LTE answer", "Write LTE Allocation|LTE allocation write successful."},
    {"write LTE refusal", "Write LTE Allocation|LTE allocation write failed. Error code: 500"},
    {"write NTP answer", "Write NTP Allocation|NTP allocation write successful."},
    {"write time answer", "Write time Allocation|time allocation write successful."},
    {"report of one segment", "report ||12345678|"},
    {"report with two points", "report Riverside|Modbus-1|SN7|2026-01-31 23:59:59|Ua=230.1 (1)|Ub= (0)"},
};

struct Transfer {
    const char *row;
    Frame::Command command;
    QByteArray file;
    QStringList frames;
    const char *verdict;
    const char *line;
};

const QList<Transfer> &transfers()
{
    static const QList<Transfer> table = {
        {"project",
         Frame::ProjectTransfer,
         "abc",
         {"project chunk", "project checksum"},
         "project verdict, success",
         "Checksum Result:Checksum successful."},
        {"refused project",
         Frame::ProjectTransfer,
         "abc",
         {"project chunk", "project checksum"},
         "project verdict, failure",
         "Checksum Result:Checksum failed."},
        {"empty project",
         Frame::ProjectTransfer,
         "",
         {"empty project checksum"},
         "project verdict, success",
         "Checksum Result:Checksum successful."},
        {"program",
         Frame::ProgramTransfer,
         QByteArray(1025, 'a'),
         {"program chunk 1", "program chunk 2", "program checksum"},
         "program verdict, success",
         "Checksum Result:Checksum successful."},
        {"refused program",
         Frame::ProgramTransfer,
         QByteArray(1025, 'a'),
         {"program chunk 1", "program chunk 2", "program checksum"},
         "program verdict, failure",
         "Checksum Result:Checksum failed."},
    };
    return table;
}

} // namespace

class TestProtocolPage : public QObject
{
    Q_OBJECT
private slots:
    void pageIsInOrder();
    void everyBlockIsTried();
    void everyFrameIsWholeForTheReader();
    void heartbeatIsThatOfThePage();
    void requestIsThatOfThePage_data();
    void requestIsThatOfThePage();
    void answerIsUnderstood_data();
    void answerIsUnderstood();
    void reportOfTwoSegmentsIsJoined();
    void transferIsThatOfThePage_data();
    void transferIsThatOfThePage();
    void searchIsThatOfThePage();

private:
    const ProtocolPage m_page;
};

void TestProtocolPage::pageIsInOrder()
{
    QCOMPARE(m_page.wrong(), QStringList());
    QVERIFY(!m_page.names().isEmpty());
}

void TestProtocolPage::everyBlockIsTried()
{
    QStringList tried = {"heartbeat", "report segment 1", "report segment 2", "search", "search answer"};
    for (const Request &request : requests()) {
        tried.append(QLatin1String(request.name));
    }
    for (const Answer &answer : answers) {
        tried.append(QLatin1String(answer.name));
    }
    for (const Transfer &transfer : transfers()) {
        tried += transfer.frames;
        tried.append(QLatin1String(transfer.verdict));
    }
    tried.removeDuplicates();
    tried.sort();
    QStringList shown = m_page.names();
    shown.sort();
    QCOMPARE(tried, shown);
}

void TestProtocolPage::everyFrameIsWholeForTheReader()
{
    const QStringList names = m_page.names();
    for (const QString &name : names) {
        if (name.startsWith(QLatin1String("search"))) {
            continue; // a datagram
        }
        const QByteArray bytes = m_page.bytes(name.toLatin1());
        QList<QByteArray> frames;
        FrameAssembler reader(
            [&frames](const char *frame, unsigned length) { frames.append(QByteArray(frame, int(length))); });
        reader.assemble(bytes.constData(), unsigned(bytes.size()));
        QVERIFY2(frames == QList<QByteArray>{bytes}, qPrintable(name));
    }
}

void TestProtocolPage::heartbeatIsThatOfThePage()
{
    FakeBox box(address);
    QVERIFY(box.isListening());
    Protocol protocol;
    protocol.openConnection(address);
    QTRY_COMPARE(box.received(), m_page.bytes("heartbeat"));
}

void TestProtocolPage::requestIsThatOfThePage_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < requests().size(); ++index) {
        QTest::newRow(requests().at(index).name) << index;
    }
}

void TestProtocolPage::requestIsThatOfThePage()
{
    QFETCH(int, index);
    const Request &request = requests().at(index);
    FakeBox box(address);
    QVERIFY(box.isListening());
    Protocol protocol;
    protocol.openConnection(address);
    QTRY_COMPARE(box.received(), m_page.bytes("heartbeat"));
    box.forgetReceived();
    request.send(protocol);
    QTRY_COMPARE(box.received(), m_page.bytes(request.name));
}

void TestProtocolPage::answerIsUnderstood_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("told");
    for (const Answer &answer : answers) {
        QTest::newRow(answer.name) << m_page.bytes(answer.name) << QString::fromLatin1(answer.told);
    }
}

void TestProtocolPage::answerIsUnderstood()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, told);
    Messages messages;
    const bool inABox = told.startsWith(QLatin1String("Write "));
    if (inABox) {
        messages.expect();
    }
    Protocol protocol;
    SessionProbe::Told session(&protocol);
    protocol.assembleFrames(bytes.constData(), unsigned(bytes.size()));
    QCOMPARE(inABox ? messages.told().join(QLatin1Char('\n')) : session.lines.join(QLatin1Char('|')), told);
}

void TestProtocolPage::reportOfTwoSegmentsIsJoined()
{
    Protocol protocol;
    SessionProbe::Told session(&protocol);
    const QByteArray bytes = m_page.bytes("report segment 1") + m_page.bytes("report segment 2");
    protocol.assembleFrames(bytes.constData(), unsigned(bytes.size()));
    QCOMPARE(session.lines, QStringList(QString("report ||%1|").arg(QString(1016, QLatin1Char('a')))));
}

void TestProtocolPage::transferIsThatOfThePage_data()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < transfers().size(); ++index) {
        QTest::newRow(transfers().at(index).row) << index;
    }
}

void TestProtocolPage::transferIsThatOfThePage()
{
    QFETCH(int, index);
    const Transfer &transfer = transfers().at(index);
    QByteArray stream;
    for (const QString &name : transfer.frames) {
        stream += m_page.bytes(name.toLatin1());
    }
    const QTemporaryDir dir;
    QFile file(dir.filePath("file"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(transfer.file);
    file.close();

    FakeBox box(address);
    QVERIFY(box.isListening());
    box.heard = [&](int link) {
        if (box.received(link).size() >= stream.size()) {
            box.send(link, m_page.bytes(transfer.verdict));
        }
    };
    FileTransfer::Job job;
    job.command = transfer.command;
    job.path = file.fileName();
    job.boxAddress = address;
    QObject owner;
    const FileTransfer::Result result = FileTransfer(job, &owner, [](int) {}, {}).run();
    QCOMPARE(box.received(0).toHex(), stream.toHex());
    QCOMPARE(result.line, QLatin1String(transfer.line));
}

void TestProtocolPage::searchIsThatOfThePage()
{
    QCOMPARE(Discovery::request(), m_page.bytes("search"));
    const Discovery::Answer answer = Discovery::parseAnswer(m_page.bytes("search answer"));
    QVERIFY(answer.valid);
    QCOMPARE(answer.ip, "192.168.1.2");
    QCOMPARE(answer.mask, "255.255.255.0");
    QCOMPARE(answer.model, "MRN-GATE-70");
}

QTEST_MAIN(TestProtocolPage)
#include "tst_protocolpage.moc"
