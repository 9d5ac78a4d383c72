#include "boxsim/commandline.h"
#include "boxsim/faultlist.h"
#include "boxsim/scenariolist.h"

#include <QDir>
#include <QRegularExpression>
#include <QtTest>

// What the program boxsim tells about itself: help, lists, and the scenarios.
class TestBoxSimUsage : public QObject
{
    Q_OBJECT

private slots:
    void helpFitsTheTerminal();
    void helpNamesEveryOption();
    void helpCarriesTheLists();
    void helpNamesWhatIsRead();
    void examplesAreTaken();
    void listsAreTold_data();
    void listsAreTold();
    void scenarioStandsForItsOptions_data();
    void scenarioStandsForItsOptions();
    void scenariosAddUp();
    void whatTheUserSaysCountsForMore();
    void serialLinesAreWholePaths_data();
    void serialLinesAreWholePaths();

private:
    static CommandLine read(const QString &arguments)
    {
        return readCommandLine(("boxsim " + arguments).split(QLatin1Char(' ')));
    }
};

namespace {

// The first words of a list's entries.
QStringList terms(const QString &list)
{
    static const QRegularExpression entry("^  (\\S+)", QRegularExpression::MultilineOption);
    QStringList found;
    auto match = entry.globalMatch(list);
    while (match.hasNext()) {
        found.append(match.next().captured(1));
    }
    return found;
}

} // namespace

void TestBoxSimUsage::helpFitsTheTerminal()
{
    const QString help = read("--help").text;
    QCOMPARE(help, read("-h").text);
    QVERIFY(help.startsWith(QLatin1String("Usage: ")));
    // The first line has the path of this test.
    const QStringList lines = help.split(QLatin1Char('\n')).mid(1);
    for (const QString &line : lines) {
        QVERIFY2(line.size() <= 80, qPrintable(line));
    }
}

void TestBoxSimUsage::helpNamesEveryOption()
{
    const QString help = read("--help").text;
    const QString options = help.section("\nOptions:\n", 1).section("\n\n", 0, 0);
    QCOMPARE(terms(options).join(QLatin1Char(' ')),
             "--address --port --discovery-address --no-discovery --box-version --serial-number --model "
             "--set --reboot-time --max-file --save --project --report-interval --acquire --serial "
             "--no-grouping --seed --scenario --fault --list-scenarios --list-faults --log --hex --quiet "
             "--once --seconds -h, "
             "--version");
    QVERIFY(options.contains(
        QLatin1String("  --port <number>           Listen on this TCP and UDP port. The tool "
                      "knows\n"
                      "                            only 30088. Default: 30088.\n")));
}

void TestBoxSimUsage::helpCarriesTheLists()
{
    const QString help = read("--help").text;
    QVERIFY(help.contains("\n\nScenarios:\n" + scenarioList()));
    QVERIFY(help.contains("\n\nFaults:\n" + faultList()));
}

void TestBoxSimUsage::helpNamesWhatIsRead()
{
    QStringList titles;
#ifdef BOXSIM_MODBUS
    titles << "Modbus TCP"
           << "Modbus RTU";
#endif
#ifdef BOXSIM_DLT645
    titles << "DL/T 645";
#endif
    const QString all = titles.isEmpty() ? "nothing, it was left out of this build" : titles.join(", ");
    const QString help = read("--help").text;
    QVERIFY2(help.contains("\nWith --acquire it reads: " + all + ".\n"), qPrintable(help));
}

void TestBoxSimUsage::examplesAreTaken()
{
    int taken = 0;
    const QStringList lines = read("--help").text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("    $ boxsim "))) {
            const CommandLine example = readCommandLine(line.mid(6).split(QLatin1Char(' ')));
            QVERIFY2(example.action == CommandLine::Action::Run, qPrintable(example.text));
            ++taken;
        }
    }
    QCOMPARE(taken, 6);
}

void TestBoxSimUsage::listsAreTold_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("list");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<int>("entries");
    QTest::newRow("faults") << "--list-faults" << faultList()
                            << "  split[=bytes]               "
                               "Send in pieces of so many bytes (1 if not said).\n"
                            << 34;
    QTest::newRow("scenarios") << "--list-scenarios" << scenarioList()
                               << "  slow                        Answers come late, yet in time.\n"
                                  "                              --fault late-heartbeat=2000\n"
                                  "                              --fault late-json=3000\n"
                                  "                              --fault late-verdict=6000\n"
                               << 10;
}

void TestBoxSimUsage::listsAreTold()
{
    QFETCH(QString, option);
    QFETCH(QString, list);
    QFETCH(QString, entry);
    QFETCH(int, entries);
    const CommandLine line = read(option);
    QCOMPARE(line.action, CommandLine::Action::Tell);
    QCOMPARE(line.text + QLatin1Char('\n'), list);
    QVERIFY2(list.contains(entry), qPrintable(list));
    QCOMPARE(terms(list).size(), entries);
}

void TestBoxSimUsage::scenarioStandsForItsOptions_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("none") << QString();
    const QStringList names = terms(scenarioList());
    for (const QString &name : names) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

// Each is a command line of its own that says something, and its entry tells it.
void TestBoxSimUsage::scenarioStandsForItsOptions()
{
    QFETCH(QString, name);
    if (name.isEmpty()) {
        QCOMPARE(scenarioArguments(name), QStringList());
        return;
    }
    const QStringList arguments = scenarioArguments(name);
    const CommandLine spelt = readCommandLine(QStringList{"boxsim"} + arguments);
    QVERIFY2(spelt.action == CommandLine::Action::Run, qPrintable(spelt.text));
    const QString list = QLatin1Char('\n') + scenarioList();
    static const QRegularExpression nextEntry("\n  \\S");
    const QString entry = list.section(QString("\n  %1 ").arg(name), 1).section(nextEntry, 0, 0);
    QVERIFY2(entry.simplified().endsWith(". " + arguments.join(QLatin1Char(' '))), qPrintable(entry));
}

void TestBoxSimUsage::scenariosAddUp()
{
    const CommandLine line = read("--scenario lively --seed 5 --scenario slow");
    QCOMPARE(line.action, CommandLine::Action::Run);
    QCOMPARE(line.options.seed, 5U);
    QCOMPARE(line.options.reportInterval, 1000);
    QCOMPARE(line.options.faults.invalidEvery, 10);
    QCOMPARE(line.options.faults.lateHeartbeat, 2000);
    QCOMPARE(line.options.faults.lateJson, 3000);
    QCOMPARE(line.options.faults.lateVerdict, 6000);
}

void TestBoxSimUsage::whatTheUserSaysCountsForMore()
{
    const CommandLine line =
        read("--report-interval 70 --fault late-json=5 --scenario slow --scenario lively");
    QCOMPARE(line.options.reportInterval, 70);
    QCOMPARE(line.options.faults.lateJson, 5);
    QCOMPARE(line.options.faults.lateVerdict, 6000);
}

void TestBoxSimUsage::serialLinesAreWholePaths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("line");
    const QDir here;
    QTest::newRow("whole") << "/dev/ttyUSB0"
                           << "/dev/ttyUSB0";
    QTest::newRow("a name") << "ttyUSB0" << here.absoluteFilePath("ttyUSB0");
    QTest::newRow("in a folder") << "lines/1" << here.absoluteFilePath("lines/1");
    QTest::newRow("beside") << "../tty" << QFileInfo(here.absolutePath()).dir().absoluteFilePath("tty");
    QTest::newRow("a link") << "link" << here.absoluteFilePath("link");
}

// Both kinds of line open the same file, wherever the one or the other would look for a relative path.
void TestBoxSimUsage::serialLinesAreWholePaths()
{
    QFETCH(QString, path);
    QFETCH(QString, line);
    QFile::link("/dev/null", "link");
    const CommandLine told = read("--acquire --serial COM1=" + path);
    QCOMPARE(told.text, QString());
    QCOMPARE(told.options.acquire.serialLines, (QMap<QString, QString>{{"COM1", line}}));
}

QTEST_GUILESS_MAIN(TestBoxSimUsage)
#include "tst_boxsimusage.moc"
