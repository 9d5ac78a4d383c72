#include "openfiles.h"
#include "reportingbox.h"

#include <QRegularExpression>
#include <QtTest>

#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

using namespace BoxCtl;

namespace {

const QString address = "127.0.47.10";
const QString other = "127.0.47.11";
const QString nowhere = "127.0.47.12"; // nothing listens there

// The output with each time of arrival as "T".
Outcome timeless(Outcome outcome)
{
    static const QRegularExpression time(
        "\\d{4}-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}[+-]\\d\\d:\\d\\d|"
        "\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d\\.\\d{3}|\\b\\d{13}000000\\b");
    outcome.out.replace(time, "T");
    return outcome;
}

Outcome watch(const QStringList &arguments)
{
    return timeless(RunningCall(QStringList{"watch"} + arguments).outcome());
}

} // namespace

// Reports of Boxes as they come in.
class TestBoxCtlWatch : public QObject
{
    Q_OBJECT
private slots:
    void wrongCalls_data();
    void wrongCalls();
    void moreBoxesThanFilesAreTold();
    void formats_data();
    void formats();
    void jsonHasTheReportAsItCame();
    void picksPoints_data();
    void picksPoints();
    void reportsOfTwoBoxesDoNotMix();
    void endsAfterItsTime();
    void interruptEndsIt_data();
    void interruptEndsIt();
    void missingBoxFails();
    void lostLinkIsTriedAgain();
    void lostLinkAsJson();
    void boxThatDiesAtAnyByte();
    void closedPipeEndsItQuietly();
    void fullDiskIsTold();
    void unreadOutputDoesNotGrow();
    void reportThatIsTooLargeIsLeftOut_data();
    void reportThatIsTooLargeIsLeftOut();
    void simulatedBoxIsWatched();
};

void TestBoxCtlWatch::wrongCalls_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("why");
    const auto row = [](const QString &arguments, const QString &why) {
        QTest::newRow(qPrintable(arguments)) << arguments.split(QLatin1Char(' '), Qt::SkipEmptyParts) << why;
    };
    row("", "a Box is missing");
    row("127.0.47", "'127.0.47' is no IPv4 address");
    row("127.0.47.10 --format xml", "--format takes text, csv, json or influx");
    row("127.0.47.10 --json --format csv", "--json and another --format exclude each other");
    row("127.0.47.10 --points [a", "'[a' is no pattern for names of points");
    row("127.0.47.10 --points [z-a]", "'[z-a]' is no pattern for names of points");
    row("127.0.47.10 --points=", "'' is no pattern for names of points");
    row("127.0.47.10 --seconds 0", "--seconds takes a number from 1 to 1000000000");
    row("127.0.47.10 --reports -1", "--reports takes a number from 1 to 1000000000");
    row("127.0.47.10 --timeout 0", "--timeout takes a number from 0.1 to 86400");
}

void TestBoxCtlWatch::wrongCalls()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, why);
    QCOMPARE(run(QStringList{"watch"} + arguments),
             (Outcome{2, QString(), "boxctl: watch: " + why + "\nboxctl: try boxctl watch --help\n"}));
}

void TestBoxCtlWatch::moreBoxesThanFilesAreTold()
{
    QByteArray list;
    for (int box = 0; box < 1000; ++box) {
        list += QString("127.%1.47.%2\n").arg(box / 250).arg(box % 250).toLatin1();
    }
    Files::put("list", list);
    QCOMPARE(
        run("sh", {"-c", "ulimit -n 256; exec \"$0\" watch @list", BOXCTL_PROGRAM}),
        (Outcome{2, QString(),
                 "boxctl: 1000 Boxes take a connection each, and the limit of open files leaves 112: raise "
                 "it, or take fewer Boxes\n"}));
}

void TestBoxCtlWatch::formats_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("lines");
    QTest::newRow("text") << "text"
                          << "127.0.47.10: T Line, A=1 / Voltage A = 231.4\n"
                             "127.0.47.10: T Line, A=1 / b\\ = not valid (12)\n"
                             "127.0.47.10: T Line, A=1 / c\\,d = not valid\n"
                             "127.0.47.10: T Line, A=1 / say \"hi\" = a \"b\"\\ c\n"
                             "127.0.47.10: T Line, A=1 / 电压 = nan\n"
                             "127.0.47.10: T Line, A=1 / two lines = 9223372036854775807\n"
                             "127.0.47.10: T Line, A=1 /  = on\n"
                             "127.0.47.10: T Line, A=1 / state = true\n"
                             "127.0.47.10: T Line, A=1 / small = 1e-300\n"
                             "127.0.47.10: T Line, A=1 / empty = \n";
    QTest::newRow("csv")
        << "csv"
        << "time,box,project,standard,name,address,type,value,valid\n"
           "T,127.0.47.10,P,\"Line, A=1\",Voltage A,7,float,231.4,1\n"
           "T,127.0.47.10,P,\"Line, A=1\",b\\,7,float,12,0\n"
           "T,127.0.47.10,P,\"Line, A=1\",\"c\\,d\",7,int16,,0\n"
           "T,127.0.47.10,P,\"Line, A=1\",\"say \"\"hi\"\"\",7,string,\"a \"\"b\"\"\\ c\",1\n"
           "T,127.0.47.10,P,\"Line, A=1\",电压,7,double,nan,1\n"
           "T,127.0.47.10,P,\"Line, A=1\",two lines,7,int64,9223372036854775807,1\n"
           "T,127.0.47.10,P,\"Line, A=1\",,7,string,on,1\n"
           "T,127.0.47.10,P,\"Line, A=1\",state,7,bool,true,1\n"
           "T,127.0.47.10,P,\"Line, A=1\",small,7,double,1e-300,1\n"
           "T,127.0.47.10,P,\"Line, A=1\",empty,7,string,,1\n";
    const QString place = ",project=P,standard=Line\\,\\ A\\=1 ";
    QTest::newRow("influx") << "influx"
                            << "point,box=127.0.47.10,name=Voltage\\ A" + place + "valid=true,value=231.4 T\n"
            + "point,box=127.0.47.10,name=b/" + place + "text=\"12\",valid=false T\n"
            + "point,box=127.0.47.10,name=c/\\,d" + place + "valid=false T\n"
            + "point,box=127.0.47.10,name=say\\ \"hi\"" + place + "text=\"a \\\"b\\\"\\\\ c\",valid=true T\n"
            + "point,box=127.0.47.10,name=电压" + place + "text=\"nan\",valid=true T\n"
            + "point,box=127.0.47.10,name=two\\ lines" + place
            + "text=\"9223372036854775807\",valid=true,value=9223372036854776000 T\n"
            + "point,box=127.0.47.10" + place + "text=\"on\",valid=true T\n"
            + "point,box=127.0.47.10,name=state" + place + "valid=true,value=1 T\n"
            + "point,box=127.0.47.10,name=small" + place + "valid=true,value=1e-300 T\n"
            + "point,box=127.0.47.10,name=empty" + place + "text=\"\",valid=true T\n";
}

void TestBoxCtlWatch::formats()
{
    QFETCH(QString, format);
    QFETCH(QString, lines);
    const ReportingBox box(
        address,
        {reportOf("Line, A=1",
                  {point("Voltage A", "float", "231.4"), point("b\\", "float", "12", "0"), 17, "no point",
                   point("c\\,d", "int16", "", "2"), point("say \"hi\"", "string", "a \"b\"\\\nc"),
                   point("电压", "double", "nan"), point("two\nlines", "int64", "9223372036854775807"),
                   point("", "string", "on"), point("state", "bool", "true"),
                   point("small", "double", "1e-300"), point("empty", "string", "")})});
    QCOMPARE(watch({address, "--format", format, "--reports", "1"}), (Outcome{0, lines, QString()}));
}

// What is no object, or one of nothing, is no report.
void TestBoxCtlWatch::jsonHasTheReportAsItCame()
{
    const ReportingBox box(address,
                           {"[1, 2, 3]", "[]", "{}",
                            R"({"sn": "7", "more": [1, null, {"deep": true}], "datas": [ 5, "x" ]})",
                            "{\"sn\": \"\u202e\u2028\u009b\"}"});
    QCOMPARE(watch({address, "--json", "--reports", "2"}),
             (Outcome{0,
                      "{\"box\":\"127.0.47.10\",\"ok\":true,\"report\":{\"datas\":[5,\"x\"],"
                      "\"more\":[1,null,{\"deep\":true}],\"sn\":\"7\"},\"time\":\"T\"}\n"
                      "{\"box\":\"127.0.47.10\",\"ok\":true,\"report\":{\"sn\":\"\\u202e\\u2028\\u009b\"},"
                      "\"time\":\"T\"}\n",
                      QString()}));
}

void TestBoxCtlWatch::picksPoints_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QString>("picked");
    const auto row = [](const QString &options, const char *picked) {
        QTest::newRow(qPrintable(options)) << options.split(QLatin1Char(' ')) << picked;
    };
    row("--points *", "A/Va Va/b V[c] Vc va a 电 a/Va");
    row("--points V*", "A/Va Va/b V[c] Vc a/Va");
    row("--points V?", "A/Va Vc a/Va");
    row("--points ?", "A/a 电");
    row("--points va", "A/va");
    row("--points a", "A/a");
    row("--points V[a-b]*", "A/Va Va/b a/Va");
    row("--points *[!abc]", "A/V[c] 电");
    row("--points *[]]", "A/V[c]");
    row("--points V[[]c]", "A/V[c]");
    row("--points V[c]", "A/Vc");
    row("--standard A", "A/Va Va/b V[c] Vc va a 电");
    row("--standard a --points V*", "a/Va");
}

// The names behind the Standard of each report that is left.
void TestBoxCtlWatch::picksPoints()
{
    QFETCH(QStringList, options);
    QFETCH(QString, picked);
    QJsonArray points;
    for (const char *name : {"Va", "Va/b", "V[c]", "Vc", "va", "a", "电"}) {
        points.append(point(name, "float", "1"));
    }
    const ReportingBox box(address, {reportOf("A", points), reportOf("a", {point("Va", "float", "1")})});
    const QString reports = picked.contains("A/") && picked.contains("a/V") ? "2" : "1";
    const Outcome outcome =
        RunningCall(QStringList{"watch", address, "--json", "--reports", reports} + options).outcome();
    QStringList found;
    const QStringList lines = outcome.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QJsonObject report = QJsonDocument::fromJson(line.toUtf8()).object()["report"].toObject();
        QStringList names;
        const QJsonArray kept = report["datas"].toArray();
        for (const QJsonValue &each : kept) {
            names.append(each.toObject()["name"].toString());
        }
        found.append(report["plcName"].toString() + QLatin1Char('/') + names.join(QLatin1Char(' ')));
    }
    QCOMPARE(found.join(QLatin1Char(' ')), picked);
}

// Cut and sent by turns, a byte more at each.
void TestBoxCtlWatch::reportsOfTwoBoxesDoNotMix()
{
    const QByteArray value(3000, 'x');
    const ReportingBox one(address);
    const ReportingBox two(other);
    RunningCall call({"watch", address, other, "--json", "--reports", "2"});
    QTRY_VERIFY(one.isLinked() && two.isLinked() && !one.received().isEmpty() && !two.received().isEmpty());
    const QByteArray ofOne = bytesOf(reportOf("one", {point("a", "string", value + "1")}));
    const QByteArray ofTwo = bytesOf(reportOf("two", {point("a", "string", value + "2")}));
    QCOMPARE(ofOne.size(), ofTwo.size());
    for (int begin = 0, piece = 1; begin < ofOne.size(); begin += piece, ++piece) {
        one.send(ofOne.mid(begin, piece));
        two.send(ofTwo.mid(begin, piece));
        QCoreApplication::processEvents();
    }
    const Outcome outcome = call.outcome();
    QCOMPARE(outcome.status, 0);
    QStringList lines = outcome.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.sort();
    QCOMPARE(lines.size(), 2);
    QVERIFY2(lines[0].contains("\"box\":\"127.0.47.10\"") && lines[0].contains("x1\""), qPrintable(lines[0]));
    QVERIFY2(lines[1].contains("\"box\":\"127.0.47.11\"") && lines[1].contains("x2\""), qPrintable(lines[1]));
}

void TestBoxCtlWatch::endsAfterItsTime()
{
    const ReportingBox box(address, {reportOf("A", {point("a", "float", "1")})});
    const ReportingBox idle(other);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(watch({address, other, "--points", "b", "--format", "csv", "--seconds", "1"}),
             (Outcome{0, "time,box,project,standard,name,address,type,value,valid\n",
                      "boxctl: 127.0.47.10: none of its 1 reports has what --standard or --points ask for\n"
                      "boxctl: 127.0.47.11: it is linked, but has sent no report\n"}));
    QVERIFY(clock.elapsed() >= 1000);
}

void TestBoxCtlWatch::interruptEndsIt_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("Ctrl+C") << SIGINT;
    QTest::newRow("asked to end") << SIGTERM;
}

void TestBoxCtlWatch::interruptEndsIt()
{
    QFETCH(int, signal);
    const ReportingBox box(address, {reportOf("A", {point("a", "float", "1")})});
    RunningCall call({"watch", address});
    QTRY_VERIFY(call.out().endsWith("A / a = 1\n")); // without waiting for more
    call.signal(signal);
    QCOMPARE(timeless(call.outcome()), (Outcome{0, "127.0.47.10: T A / a = 1\n", QString()}));
}

void TestBoxCtlWatch::missingBoxFails()
{
    const ReportingBox box(address, {reportOf("A", {point("a", "float", "1")})});
    const FakeBox silent(other);
    Files::put("list", "127.0.47.10 North\n127.0.47.11\n127.0.47.12 South\n");
    QCOMPARE(watch({"@list", "--seconds", "1"}),
             (Outcome{1, "127.0.47.10 (North): T A / a = 1\n",
                      "boxctl: 127.0.47.12 (South): no link: Connection refused; trying again\n"
                      "boxctl: 127.0.47.11: no link at the end: No answer yet\n"
                      "boxctl: 127.0.47.12 (South): no link at the end: Connection refused\n"}));
}

void TestBoxCtlWatch::lostLinkIsTriedAgain()
{
    auto box =
        std::make_unique<ReportingBox>(address, QList<QByteArray>{reportOf("A", {point("a", "float", "1")})});
    RunningCall call({"watch", address, "--reports", "2"});
    QTRY_VERIFY(call.out().endsWith("A / a = 1\n"));
    box.reset();
    QTRY_VERIFY(
        call.error().endsWith("no link: Connection refused; trying again\n")); // the first time in vain
    box =
        std::make_unique<ReportingBox>(address, QList<QByteArray>{reportOf("A", {point("a", "float", "2")})});
    QCOMPARE(timeless(call.outcome()),
             (Outcome{0, "127.0.47.10: T A / a = 1\n127.0.47.10: T A / a = 2\n",
                      "boxctl: 127.0.47.10: the link is lost: The remote host closed the connection; trying "
                      "again\n"
                      "boxctl: 127.0.47.10: no link: Connection refused; trying again\n"
                      "boxctl: 127.0.47.10: linked\n"}));
}

void TestBoxCtlWatch::lostLinkAsJson()
{
    const ReportingBox box(address, {R"({"sn":"7"})"});
    RunningCall call({"watch", address, "--format", "json", "--reports", "2"});
    QTRY_VERIFY(call.out().endsWith("}\n"));
    box.close();
    const QString report = "{\"box\":\"127.0.47.10\",\"ok\":true,\"report\":{\"sn\":\"7\"},\"time\":\"T\"}\n";
    const QString error = "The remote host closed the connection";
    QCOMPARE(timeless(call.outcome()),
             (Outcome{0,
                      report + "{\"box\":\"127.0.47.10\",\"error\":\"" + error
                          + "\",\"ok\":false,\"time\":\"T\"}\n" + report,
                      "boxctl: 127.0.47.10: the link is lost: " + error
                          + "; trying again\nboxctl: 127.0.47.10: linked\n"}));
}

// A Box for each byte at which a first link may end; its second one brings the report.
void TestBoxCtlWatch::boxThatDiesAtAnyByte()
{
    if (!mayOpenFiles(1024)) {
        QSKIP("not so many files may be open");
    }
    const QByteArray whole = bytesOf(reportOf("A", {point("a", "float", "1")}));
    std::vector<std::unique_ptr<FakeBox>> boxes;
    QByteArray list;
    const QByteArray all = heartbeatAnswer + whole;
    QVERIFY(all.size() < 200);
    for (int cut = 0; cut < all.size(); ++cut) {
        const QString its = QString("127.0.47.%1").arg(50 + cut);
        boxes.push_back(std::make_unique<FakeBox>(its));
        FakeBox *box = boxes.back().get();
        box->heard = [=](int link) {
            box->send(link, link == 0 ? all.left(cut) : all);
            if (link == 0) {
                box->link(link)->disconnectFromHost();
            }
        };
        list += its.toLatin1() + '\n';
    }
    Files::put("list", list);
    const Outcome outcome = watch({"@list", "--reports", QString::number(all.size())});
    QCOMPARE(outcome.status, 0);
    QStringList expected;
    QStringList told;
    for (int cut = 0; cut < all.size(); ++cut) {
        const QString its = QString("127.0.47.%1").arg(50 + cut);
        expected.append(its + ": T A / a = 1");
        const bool hasAnswered = cut >= heartbeatAnswer.size();
        told += QStringList{"boxctl: " + its + ": linked",
                            QString("boxctl: %1: %2: The remote host closed the connection; trying again")
                                .arg(its, QLatin1String(hasAnswered ? "the link is lost" : "no link"))};
    }
    const auto sorted = [](const QString &lines) {
        QStringList single = lines.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
        single.sort();
        return single;
    };
    expected.sort();
    told.sort();
    QCOMPARE(sorted(outcome.out), expected);
    QCOMPARE(sorted(outcome.error), told);
}

// Also where a Box is missing, of which nobody hears any more.
void TestBoxCtlWatch::closedPipeEndsItQuietly()
{
    const ReportingBox box(address, {reportOf("A", {point("a", "float", "1")})});
    RunningCall call("bash",
                     {"-c",
                      "\"$0\" watch 127.0.47.10 127.0.47.12 2>errors | head -n 1 >lines; echo "
                      "${PIPESTATUS[0]}",
                      BOXCTL_PROGRAM});
    QTRY_COMPARE(timeless({0, QString::fromUtf8(Files::contents("lines")), {}}).out,
                 QString("127.0.47.10: T A / a = 1\n"));
    // Its reader may be a moment away from its end.
    while (call.isRunning()) {
        box.send(bytesOf(reportOf("A", {point("a", "float", "2")})));
        QTest::qWait(10);
    }
    QCOMPARE(call.outcome(), (Outcome{0, "0\n", QString()}));
    QCOMPARE(Files::contents("errors"),
             QByteArray("boxctl: 127.0.47.12: no link: Connection refused; trying again\n"));
}

void TestBoxCtlWatch::fullDiskIsTold()
{
    const ReportingBox box(address, {reportOf("A", {point("a", "float", "1")})});
    RunningCall call("sh", {"-c", "exec \"$0\" watch 127.0.47.10 >/dev/full", BOXCTL_PROGRAM});
    QCOMPARE(call.outcome(),
             (Outcome{1, QString(), "boxctl: the output could not be written: No space left on device\n"}));
}

// Nobody reads the pipe at first: what does not fit is left out, whole reports of it; the link stays.
void TestBoxCtlWatch::unreadOutputDoesNotGrow()
{
    QCOMPARE(mkfifo("pipe", 0600), 0);
    const int reader = open("pipe", O_RDONLY | O_NONBLOCK);
    QVERIFY(reader >= 0);
    const ReportingBox box(address);
    constexpr int sent = 30;
    RunningCall call("sh",
                     {"-c", "exec \"$0\" watch 127.0.47.10 --format csv --reports 30 >pipe", BOXCTL_PROGRAM});
    QTRY_VERIFY(box.isLinked());
    const QByteArray report = bytesOf(reportOf("A", {point("a", "string", QByteArray(1000000, 'x'))}));
    for (int i = 0; i < sent; ++i) {
        box.send(report);
    }
    QTRY_COMPARE_WITH_TIMEOUT(
        call.error(), QByteArray("boxctl: the output is read too slowly: reports are left out\n"), 60000);
    QTRY_COMPARE_WITH_TIMEOUT(box.link()->bytesToWrite(), 0, 60000);
    QVERIFY(fcntl(reader, F_SETFL, 0) == 0); // reads wait
    QByteArray out;
    QByteArray piece(1 << 20, '\0');
    for (ssize_t got = 1; got > 0; out += piece.left(int(got))) {
        got = read(reader, piece.data(), size_t(piece.size()));
    }
    close(reader);
    const Outcome outcome = call.outcome();
    QCOMPARE(outcome.status, 1);
    QVERIFY(out.endsWith("x,1\n"));
    static const QRegularExpression count("slowly: (\\d+) reports are left out\n$");
    const int leftOut = count.match(outcome.error).captured(1).toInt();
    QVERIFY(leftOut > 0);
    QCOMPARE(out.count('\n') - 1 + leftOut, sent);
}

void TestBoxCtlWatch::simulatedBoxIsWatched()
{
    const SimulatedBox box(address,
                           {"--project", TEST_DATA_DIR "/one-slave.json", "--report-interval", "100",
                            "--fault", "split=7", "--fault", "noise=5", "--fault", "invalid=2"});
    const Outcome outcome = watch({address, "--reports", "3"});
    QCOMPARE(outcome.status, 0);
    static const QRegularExpression values(" = (\\d+|not valid \\([0-9.]+\\))\n");
    QCOMPARE(QString(outcome.out).replace(values, "\n"),
             QString("127.0.47.10: T M / a\n127.0.47.10: T M / b\n").repeated(3));
}

void TestBoxCtlWatch::reportThatIsTooLargeIsLeftOut_data()
{
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("lines");
    QTest::newRow("text") << "text"
                          << "127.0.47.10: T A / a = 1\n";
    QTest::newRow("csv") << "csv"
                         << "time,box,project,standard,name,address,type,value,valid\n"
                            "T,127.0.47.10,P,A,a,7,float,1,1\n";
    QTest::newRow("influx") << "influx"
                            << "point,box=127.0.47.10,name=a,project=P,standard=A valid=true,value=1 T\n";
}

// A few long names that each point repeats: it is no fault of who reads the output.
void TestBoxCtlWatch::reportThatIsTooLargeIsLeftOut()
{
    QFETCH(QString, format);
    QFETCH(QString, lines);
    QJsonArray points;
    for (int i = 0; i < 20000; ++i) {
        points.append(QJsonObject());
    }
    const ReportingBox box(
        address, {reportOf(QByteArray(1000, 'x'), points), reportOf("A", {point("a", "float", "1")})});
    QCOMPARE(watch({address, "--format", format, "--reports", "2"}),
             (Outcome{1, lines,
                      "boxctl: 127.0.47.10: a report is left out, since it would be more than 16 MiB of "
                      "output\nboxctl: 1 reports were too large and are left out\n"}));
}

QTEST_GUILESS_MAIN(TestBoxCtlWatch)
#include "tst_boxctlwatch.moc"
