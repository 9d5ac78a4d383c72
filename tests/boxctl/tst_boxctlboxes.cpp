#include "boxctltest.h"
#include "files.h"

#include <QDir>
#include <QFileInfo>
#include <QTcpServer>
#include <QtTest>

using namespace BoxCtl;

namespace {

const QString address = "127.0.40.70";
const QString other = "127.0.40.71";
const QString nowhere = "127.0.40.72"; // nothing listens there

} // namespace

// Which Boxes a call names, and what it shows of its way through them.
class TestBoxCtlBoxes : public QObject
{
    Q_OBJECT
private slots:
    void listsOfBoxes_data();
    void listsOfBoxes();
    void closedPipeEndsNothing();
    void progressInALog();
    void progressOnATerminal();
    void progressOnASmallTerminal_data();
    void progressOnASmallTerminal();
    void interruptOnATerminal();
    void failuresStayInSight();
    void completion_data();
    void completion();
};

void TestBoxCtlBoxes::listsOfBoxes_data()
{
    QTest::addColumn<QByteArray>("list");
    QTest::addColumn<QString>("argument");
    QTest::addColumn<Outcome>("outcome");
    const QString refused = "boxctl: %1: Connection refused\n";
    const auto wrong = [](const QString &why) {
        return Outcome{2, QString(), "boxctl: info: " + why + "\nboxctl: try boxctl info --help\n"};
    };
    const QByteArray project = R"({"name": "P", "boxs": [{"name": "North", "ip": "127.0.40.72"},
                                   {"name": "South", "ip": "127.0.40.73"}, {"name": "Bad", "ip": "x"}]})";
    QTest::newRow("names and comments")
        << QByteArray("# the plant\n\n127.0.40.72 North  feeder # by the gate\r\n127.0.40.73") << "@list"
        << Outcome{1, QString(), refused.arg("127.0.40.72 (North feeder)") + refused.arg("127.0.40.73")};
    QTest::newRow("characters that are not seen")
        << QByteArray("127.0.40.72 No\u202ert\u009bh\x1b[2J") << "@list"
        << Outcome{1, QString(), refused.arg("127.0.40.72 (No rt h [2J)")};
    QTest::newRow("twice") << QByteArray("127.0.40.72\n127.0.40.072\n") << "@list"
                           << Outcome{1, QString(),
                                      "boxctl: list:2: 127.0.40.72 is named twice and counts once\n"
                                          + refused.arg("127.0.40.72")};
    QTest::newRow("line ends of three systems")
        << QByteArray("127.0.40.72\r127.0.40.73 South\r\n127.0.40.75\nnorth") << "@list"
        << wrong("list:4: 'north' is no IPv4 address");
    QTest::newRow("bare CR") << QByteArray("127.0.40.72\r127.0.40.73 South\r") << "@list"
                             << Outcome{1, QString(),
                                        refused.arg("127.0.40.72") + refused.arg("127.0.40.73 (South)")};
    QTest::newRow("two on a line") << QByteArray("127.0.40.72\n127.0.40.73 South 127.0.40.074") << "@list"
                                   << wrong("list:2: '127.0.40.074' is a second address on one line");
    QTest::newRow("no address") << QByteArray("127.0.40.72\nnorth\n") << "@list"
                                << wrong("list:2: 'north' is no IPv4 address");
    QTest::newRow("empty") << QByteArray("# nobody\n") << "@list" << wrong("the list names no Box");
    QTest::newRow("unreadable") << QByteArray() << "@missing" << wrong("missing: No such file or directory");
    QTest::newRow("endless") << QByteArray() << "@/dev/zero" << wrong("/dev/zero: it holds more than 1 MiB");
    QTest::newRow("one of a project")
        << project << "list:North" << Outcome{1, QString(), refused.arg("127.0.40.72 (North)")};
    QTest::newRow("unknown in a project")
        << project << "list:West" << wrong("list: the project has no Box 'West'");
    QTest::newRow("bad in a project") << project << "list:" << wrong("list:Bad: 'x' is no IPv4 address");
    QTest::newRow("project without Boxes")
        << QByteArray(R"({"boxs": []})") << "list:" << wrong("list: the project has no Box");
    QTest::newRow("no project") << QByteArray("[]") << "list:"
                                << Outcome{3, QString(), "boxctl: list: it holds no JSON object\n"};
    QTest::newRow("of another program")
        << QByteArray("{}") << "list:" << Outcome{3, QString(), "boxctl: list: it is no project document\n"};
}

void TestBoxCtlBoxes::listsOfBoxes()
{
    QFETCH(QByteArray, list);
    QFETCH(QString, argument);
    QFETCH(Outcome, outcome);
    Files::put("list", list);
    QCOMPARE(run({"info", "--jobs", "1", "--progress", "0", argument}), outcome);
}

// Each Box is asked, though nobody reads the answers.
void TestBoxCtlBoxes::closedPipeEndsNothing()
{
    const SimulatedBox box(address, {"--fault", "late-heartbeat=100"});
    const SimulatedBox second(other);
    const QString call =
        "mkfifo pipe; exec 3<>pipe; exec 4>pipe; exec 3<&-; exec \"$0\" info --jobs 1 --progress 0 $* >&4";
    QCOMPARE(run("sh", {"-c", call, BOXCTL_PROGRAM, other, address}), (Outcome{0, QString(), QString()}));
    QVERIFY(box.hasHeard("-> heartbeat"));
}

// Told once for as long as it lasts.
void TestBoxCtlBoxes::progressInALog()
{
    const SimulatedBox box(address, {"--fault", "late-heartbeat=700"});
    const Outcome outcome = run({"info", "--progress", "0.2", address, nowhere});
    QCOMPARE(outcome,
             (Outcome{1, "127.0.40.70: version 1.0.0, serial number SIM00000001, model MRN-GATE-70\n",
                      "boxctl: 127.0.40.72: Connection refused\n"
                      "boxctl: 127.0.40.70: waiting for the heartbeat answer\n"
                      "boxctl: 1 of 2 Boxes done, 1 failed\n"}));
}

// A line a Box and a total, which stays.
void TestBoxCtlBoxes::progressOnATerminal()
{
    const SimulatedBox box(address, {"--fault", "late-heartbeat=400"});
    const QString command = QString("%1 info %2 %3").arg(boxctl(), address, nowhere);
    const Outcome outcome = runOnTerminal(command);
    QCOMPARE(outcome.status, 1);
    QVERIFY2(outcome.out.contains("127.0.40.70: waiting for the heartbeat answer\r\n"
                                  "0 of 2 Boxes done, 1 failed\r\n"),
             qPrintable(outcome.out));
    QVERIFY2(
        outcome.out.endsWith("127.0.40.70: version 1.0.0, serial number SIM00000001, model MRN-GATE-70\r\n"
                             "1 of 2 Boxes done, 1 failed\r\n"),
        qPrintable(outcome.out));
}

void TestBoxCtlBoxes::progressOnASmallTerminal_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("drawn");
    const QString first = "127.0.40.76 (北京变电站一号网\r\n";
    const QString second = "127.0.40.77 (North feeder): c\r\n";
    const QString third = "127.0.40.78: connecting\r\n";
    const QString total = "0 of 3 Boxes done, 0 failed\r\n";
    QTest::newRow("room for all") << 5 << first + second + third + total;
    QTest::newRow("one line too few") << 4 << first + "and 2 more\r\n" + total;
    QTest::newRow("for no Box") << 3 << "and 3 more\r\n" + total;
    QTest::newRow("for the total") << 2 << total;
    QTest::newRow("for nothing") << 1 << total;
}

// No line wraps, and none goes past the upper edge, where it could not be erased.
void TestBoxCtlBoxes::progressOnASmallTerminal()
{
    QFETCH(int, rows);
    QFETCH(QString, drawn);
    QTcpServer silent[3]; // the system accepts for them
    for (int box = 0; box < 3; ++box) {
        QVERIFY(silent[box].listen(QHostAddress(QString("127.0.40.%1").arg(76 + box)), 30088));
    }
    Files::put("names", "127.0.40.76 北京变电站一号网关二层\n127.0.40.77 North feeder\n127.0.40.78\n");
    const QString command =
        QString("stty rows %1 cols 30; %2 info --timeout 0.1 @names").arg(rows).arg(boxctl());
    const Outcome outcome = runOnTerminal(command);
    QVERIFY2(outcome.out.startsWith(drawn), qPrintable(outcome.out));
    QVERIFY2(outcome.out.midRef(drawn.size()).startsWith(erasure(drawn)), qPrintable(outcome.out));
}

// What the terminal shows of Ctrl+C goes with the progress.
void TestBoxCtlBoxes::interruptOnATerminal()
{
    const SimulatedBox box(address, {"--fault", "silent"});
    const QString drawn = "127.0.40.70: waiting for the heartbeat answer\r\n0 of 1 Boxes done, 0 failed\r\n";
    const Outcome outcome = runOnTerminal({"info", address}, drawn.toLatin1(), "\x03");
    QCOMPARE(outcome.status, 1);
    QVERIFY2(
        outcome.out.endsWith(drawn + "^C" + erasure(drawn)
                             + "boxctl: 127.0.40.70: interrupted while waiting for the heartbeat answer\r\n"),
        qPrintable(outcome.out));
}

// Told again at the end, where the results of other Boxes may have pushed them off the screen.
void TestBoxCtlBoxes::failuresStayInSight()
{
    const SimulatedBox box(address);
    const SimulatedBox second(other);
    Files::put("names", "127.0.40.72 North\n127.0.40.70\n127.0.40.71\n");
    const QString command = QString("stty rows %1 cols 80; %2 info --jobs 1 @names").arg("%1", boxctl());
    const QString failed = "boxctl: 127.0.40.72 (North): Connection refused\r\n";
    const QString total = "2 of 3 Boxes done, 1 failed\r\n";
    for (const int rows : {3, 4}) {
        const Outcome outcome = runOnTerminal(command.arg(rows));
        QVERIFY2(outcome.out.endsWith(rows == 3 ? "boxctl: these failed:\r\n" + failed + total : total),
                 qPrintable(outcome.out));
        QCOMPARE(outcome.out.count(failed), rows == 3 ? 2 : 1);
    }
}

void TestBoxCtlBoxes::completion_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("words");
    const auto row = [](const char *typed, const char *words) {
        QTest::newRow(typed) << QString::fromLatin1(typed) << QString::fromLatin1(words);
    };
    row("inf", "<info>");
    row("info --ti", "<info> <--timeout>");
    row("get 1.2.3.4 wi", "<get> <1.2.3.4> <wifi>");
    row("get plants/no", "<get> <plants/north.txt>");
    row("get @plants/no", "<get> <@plants/north.txt>");
    row("get @plants/two", "<get> <@plants/two words.txt>");
    row("get @pla", "<get> <@plants/>"); // and no space, so that the name goes on
    row("set 1.2.3.4 wifi password=@plants/no", "<set> <1.2.3.4> <wifi> <password=@plants/north.txt>");
    row("watch --format c", "<watch> <--format> <csv>");
    row("watch --format=c", "<watch> <--format=csv>");
    row("get --timeout n", "<get> <--timeout> <n>"); // it is a number, no group
    row("get --timeout=n", "<get> <--timeout=n>");
    row("record --to sqlite:plants/no", "<record> <--to> <sqlite:plants/north.txt>");
}

// What bash makes of a call at the tabulator key.
void TestBoxCtlBoxes::completion()
{
    QFETCH(QString, typed);
    QFETCH(QString, words);
    QVERIFY(QDir().mkpath("plants"));
    Files::put("plants/north.txt", "");
    Files::put("plants/two words.txt", "");
    Files::put(
        "rc",
        "PATH='" + QFileInfo(BOXCTL_PROGRAM).path().toUtf8()
            + "':$PATH\n. '" SOURCE_ROOT "/packaging/linux/boxctl.bash'\nPS1='ready> '\n"
              "boxctl() { if [[ $* == *--help ]]; then command boxctl \"$@\"; else printf '<%s> ' \"$@\" "
              "end; fi; }\n");
    QProcess bash;
    bash.start("script", {"--quiet", "--command", "TERM=dumb bash --noprofile --rcfile rc -i", "typescript"});
    QVERIFY(QTest::qWaitFor([&] { return bash.peek(10000).contains("ready> "); }));
    bash.write("boxctl " + typed.toLatin1() + "\t\n");
    QVERIFY2(QTest::qWaitFor([&] { return bash.peek(10000).contains("<end>"); }), bash.peek(10000));
    const QString shown = QString::fromUtf8(bash.readAll()).section(QLatin1Char('\n'), -1);
    QCOMPARE(shown.left(shown.indexOf(" <end>")), words);
    bash.write("exit\n");
    QVERIFY(bash.waitForFinished());
}

QTEST_GUILESS_MAIN(TestBoxCtlBoxes)
#include "tst_boxctlboxes.moc"
