#include "boxlink/monitoringaccumulator.h"
#include "boxlink/monitoringreport.h"
#include "handframes.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QtTest>

using HandFrames::hex;
using HandFrames::little;

namespace {

// A segment from its fields as they stand on the wire, in hexadecimal, and its text.
QByteArray segment(const char *length, const char *total, const char *size, const char *number,
                   const QByteArray &text)
{
    return hex("12 34 06 00") + hex(length) + hex("01") + hex(total) + hex(size) + hex(number) + text
        + hex("56 78");
}

// A report of the given size: one key with as many characters as it takes.
QByteArray reportText(int size)
{
    return "{\"sn\":\"" + QByteArray(size - 9, 'x') + "\"}";
}

// "{}", whole.
const QByteArray whole = segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "{}");

// What stands in the log.
const QByteArray unfinished = "数据长度未达到要\xEF\xBF\xBD:";
const QByteArray notJson = "Failed to parse JSON data";

std::optional<QJsonObject> addSegment(const QByteArray &frame)
{
    return MonitoringAccumulator::shared().addSegment(frame);
}

// A text in segments, as a Box cuts it; what the last of them gives.
std::optional<QJsonObject> sendReport(const QByteArray &text)
{
    std::optional<QJsonObject> given;
    quint32 number = 0;
    for (int at = 0; at < text.size(); at += 1024) {
        const QByteArray part = text.mid(at, 1024);
        const auto size = quint32(part.size());
        given =
            addSegment(hex("12 34 06 00") + little(size + 19, 2) + hex("01") + little(quint32(text.size()), 4)
                       + little(size, 2) + little(++number, 4) + part + hex("56 78"));
    }
    return given;
}

// What the process holds in memory, or 0.
qint64 residentBytes()
{
    QFile file("/proc/self/statm");
    if (!file.open(QIODevice::ReadOnly)) {
        return 0;
    }
    return file.readAll().split(' ').value(1).toLongLong() * 4096;
}

} // namespace

class TestMonitoring : public QObject
{
    Q_OBJECT
private slots:
    void init() { MonitoringAccumulator::shared().reset(); }

    void segmentsGiveReports_data();
    void segmentsGiveReports();
    void manySegments();
    void resetForgetsTheReport();
    void deepTextIsSurvived_data();
    void deepTextIsSurvived();
    void endlessReportIsDropped();
    void droppedReportReleasesItsMemory();

    void reportIsRead();
    void whatIsNoTextReadsAsEmpty();
};

void TestMonitoring::segmentsGiveReports_data()
{
    QTest::addColumn<QByteArrayList>("segments");
    QTest::addColumn<QByteArrayList>("given"); // by each of them; empty: nothing
    QTest::addColumn<QByteArrayList>("logged");
    const auto newRow = [](const char *name, const QByteArrayList &segments, const QByteArrayList &given,
                           const QByteArrayList &logged = {}) {
        QTest::newRow(name) << segments << given << logged;
    };

    newRow("one segment", {segment("24 00", "11 00 00 00", "11 00", "01 00 00 00", "{\"sn\":\"12345678\"}")},
           {"{\"sn\":\"12345678\"}"}, {"data长度::17"});
    newRow("exactly 1024 bytes", {segment("13 04", "00 04 00 00", "00 04", "01 00 00 00", reportText(1024))},
           {reportText(1024)}, {"data长度::1024"});
    const QByteArray text = reportText(1025);
    const QByteArray first = segment("13 04", "01 04 00 00", "00 04", "01 00 00 00", text.left(1024));
    const QByteArray second = segment("14 00", "01 04 00 00", "01 00", "02 00 00 00", text.mid(1024));
    newRow("one byte more takes two", {first, second}, {"", text}, {"data长度::1025", unfinished});
    const QByteArray large = reportText(2049);
    newRow("joined in the order of arrival: the numbers are not looked at until the last one",
           {segment("13 04", "01 08 00 00", "00 04", "03 00 00 00", large.left(1024)),
            segment("13 04", "01 08 00 00", "00 04", "01 00 00 00", large.mid(1024, 1024)),
            segment("14 00", "01 08 00 00", "01 00", "03 00 00 00", large.mid(2048))},
           {"", "", large});
    newRow("number and size alone tell the end, though the first was lost", {second}, {""}, {notJson});
    newRow("length of the frame cuts the text",
           {segment("17 00", "02 00 00 00", "02 00", "01 00 00 00", "{ } ")}, {"{}"});
    newRow("each report starts afresh", {whole, whole, whole}, {"{}", "{}", "{}"},
           {"data长度::2", "data长度::2", "data长度::2"});
    newRow("array reads as an empty report", {segment("15 00", "02 00 00 00", "02 00", "01 00 00 00", "[]")},
           {"{}"});

    // The next segment begins a report, from wherever it stands, and a whole one gets through.
    newRow("another total loses the report",
           {first, segment("14 00", "02 04 00 00", "01 00", "02 00 00 00", text.mid(1024)), second, whole},
           {"", "", "", "{}"}, {"data长度::1025", "长度不符::1026", "data长度::1025", notJson});
    newRow("total of zero", {segment("13 00", "00 00 00 00", "00 00", "01 00 00 00", "")}, {""},
           {"data长度::0", notJson});
    newRow("total of zero that does not end: the next one sets its total",
           {segment("15 00", "00 00 00 00", "02 00", "01 00 00 00", "{}"), whole}, {"", ""},
           {"data长度::0", unfinished, "data长度::2"});

    const auto shortFrame = [&](const char *name, const QByteArray &frame, const QByteArray &line) {
        newRow(name, {frame, whole}, {"", "{}"}, {line, "data长度::2"});
    };
    shortFrame("short: 18 bytes", hex("12 34 06 00 12 00 01 05 00 00 00 02 00 01 00 00 56 78"),
               "长度不符::5");
    shortFrame("short: no body", hex("12 34 06 00 08 00 56 78"), "长度不符::120"); // the footer's 0x78
    shortFrame("short: total of zero", hex("12 34 06 00 12 00 01 00 00 00 00 02 00 01 00 00 56 78"),
               unfinished);
    shortFrame("short: one byte", hex("12"), unfinished);
    shortFrame("short: empty", {}, unfinished);

    // Numbers are unsigned and do not wrap.
    newRow("total of 4 GiB less one", {segment("15 00", "ff ff ff ff", "02 00", "01 00 00 00", "{}")}, {""},
           {"data长度::4294967295", unfinished});
    newRow("number 0", {segment("15 00", "ff ff ff ff", "ff 03", "00 00 00 00", "{}")}, {""},
           {"data长度::4294967295", unfinished});
    newRow("number past 32 bits", {segment("15 00", "02 00 00 00", "02 00", "01 00 40 00", "{}")}, {""},
           {"data长度::2", unfinished});
    newRow("largest of all", {segment("15 00", "ff ff ff ff", "ff ff", "ff ff ff ff", "{}")}, {""},
           {"data长度::4294967295", unfinished});

    const auto noJson = [&](const char *name, const QByteArray &twelveBytes) {
        newRow(name, {segment("1f 00", "0c 00 00 00", "0c 00", "01 00 00 00", twelveBytes), whole},
               {"", "{}"}, {notJson});
    };
    noJson("text that is broken off", "{\"sn\":\"12345");
    noJson("text that is no JSON at all", "hello, Box!!");
    noJson("text that is nested too deep to end", "[[[[[[[[[[[[");
    noJson("text of NUL bytes", QByteArray(12, '\0'));
}

void TestMonitoring::segmentsGiveReports()
{
    QFETCH(QByteArrayList, segments);
    QFETCH(QByteArrayList, given);
    QFETCH(QByteArrayList, logged);

    for (const QByteArray &line : qAsConst(logged)) {
        QTest::ignoreMessage(line == notJson ? QtWarningMsg : QtDebugMsg, line.constData());
    }
    QByteArrayList found;
    for (const QByteArray &frame : qAsConst(segments)) {
        const std::optional<QJsonObject> report = addSegment(frame);
        found.append(report ? QJsonDocument(*report).toJson(QJsonDocument::Compact) : QByteArray());
    }
    QCOMPARE(found, given);
}

void TestMonitoring::manySegments()
{
    QCOMPARE(sendReport(reportText(1024 * 300)),
             (QJsonObject{{"sn", QString(1024 * 300 - 9, QLatin1Char('x'))}}));
}

void TestMonitoring::resetForgetsTheReport()
{
    addSegment(segment("13 04", "01 04 00 00", "00 04", "01 00 00 00", reportText(1025).left(1024)));
    MonitoringAccumulator::shared().reset();
    QTest::ignoreMessage(QtDebugMsg, "data长度::2");
    QCOMPARE(addSegment(whole), QJsonObject());
}

void TestMonitoring::deepTextIsSurvived_data()
{
    QTest::addColumn<QByteArray>("text"); // of a MiB
    const int half = 512 * 1024;
    QTest::newRow("arrays") << QByteArray(half, '[') + QByteArray(half, ']');
    QTest::newRow("arrays without an end") << QByteArray(2 * half, '[');
    QTest::newRow("objects without an end")
        << QByteArray("{\"a\":").repeated(2 * half / 5 + 1).left(2 * half);
}

void TestMonitoring::deepTextIsSurvived()
{
    QFETCH(QByteArray, text);

    QTest::ignoreMessage(QtWarningMsg, "Failed to parse JSON data");
    QCOMPARE(sendReport(text), std::nullopt);
    QCOMPARE(addSegment(whole), QJsonObject());
}

void TestMonitoring::endlessReportIsDropped()
{
    // Announces 4 GiB in frames of the largest size, and never ends.
    const QByteArray frame = segment("ff ff", "ff ff ff ff", "00 04", "01 00 00 00", QByteArray(65516, ' '));
    QCOMPARE(frame.size(), 65535);
    qsizetype sent = 0;
    const QtMessageHandler shown =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    for (; sent + 65516 <= MonitoringAccumulator::sizeLimit; sent += 65516) {
        addSegment(frame);
    }
    qInstallMessageHandler(shown);
    QTest::ignoreMessage(QtDebugMsg, "Monitoring report too long, dropped: 4294967295");
    QCOMPARE(addSegment(frame), std::nullopt);
    QTest::ignoreMessage(QtDebugMsg, "data长度::2");
    QCOMPARE(addSegment(whole), QJsonObject());
}

void TestMonitoring::droppedReportReleasesItsMemory()
{
#if defined(__SANITIZE_ADDRESS__)
    QSKIP("the sanitizer keeps released memory for a while");
#endif
    if (residentBytes() == 0) {
        QSKIP("no figures of the process here");
    }
    const QByteArray frame = segment("ff ff", "ff ff ff ff", "00 04", "01 00 00 00", QByteArray(65516, ' '));
    const QtMessageHandler shown =
        qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});
    const qint64 before = residentBytes();
    qint64 sent = 0;
    for (; sent + 65516 <= MonitoringAccumulator::sizeLimit; sent += 65516) {
        addSegment(frame);
    }
    const qint64 full = residentBytes();
    addSegment(frame);
    const qint64 after = residentBytes();
    qInstallMessageHandler(shown);

    QVERIFY2(full - before > sent / 2, qPrintable(QString("%1 bytes").arg(full - before)));
    QVERIFY2(after - before < sent / 16, qPrintable(QString("%1 bytes").arg(after - before)));
}

void TestMonitoring::reportIsRead()
{
    const QJsonArray datas{QJsonObject{{"name", "Ua"}}};
    const auto read = MonitoringReport::fromJson({{"projectName", "P"},
                                                  {"plcName", "M1"},
                                                  {"description", "d"},
                                                  {"sn", "7"},
                                                  {"time", "now"},
                                                  {"datas", datas}});
    QCOMPARE((QStringList{read.projectName, read.plcName, read.description, read.sn, read.time}),
             (QStringList{"P", "M1", "d", "7", "now"}));
    QCOMPARE(read.datas, datas);
}

void TestMonitoring::whatIsNoTextReadsAsEmpty()
{
    const auto read =
        MonitoringReport::fromJson({{"sn", 7}, {"time", QJsonValue::Null}, {"datas", QJsonObject()}});
    QCOMPARE(read.projectName + read.plcName + read.description + read.sn + read.time, QString());
    QCOMPARE(read.datas, QJsonArray());
}

QTEST_GUILESS_MAIN(TestMonitoring)
#include "tst_monitoring.moc"
