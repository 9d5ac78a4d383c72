#include "boxsim/commandline.h"
#include "boxsim/faultlist.h"
#include "boxsim/optiontable.h"
#include "boxsim/scenariolist.h"
#include "boxsim/usage.h"

#include <QFile>
#include <QtTest>

// What the program boxsim tells about itself: help, lists, manual page, and the scenarios.
class tst_BoxSimUsage : public QObject
{
    Q_OBJECT

private slots:
    void helpFitsTheTerminal();
    void helpGroupsEveryOption();
    void helpCarriesItsExamples();
    void examplesAreTaken();
    void manualPageIsThatOfTheTables();
    void manualPageNamesEverything();
    void listsAreTold_data();
    void listsAreTold();
    void scenarioStandsForItsOptions_data();
    void scenarioStandsForItsOptions();
    void scenariosAddUp();
    void whatTheUserSaysCountsForMore();

private:
    static CommandLine read(const QString &arguments)
    {
        return readCommandLine((QStringLiteral("boxsim ") + arguments).split(QLatin1Char(' ')));
    }
};

namespace {

QStringList optionNames()
{
    QStringList names;
    for (const OptionTable::Group &group : OptionTable::groups()) {
        for (const OptionTable::Option &option : group.options) {
            names.append(QStringLiteral("--") + QLatin1String(option.name));
        }
    }
    return names;
}

QStringList terms(const QVector<HelpEntry> &entries)
{
    QStringList found;
    for (const HelpEntry &entry : entries) {
        found.append(entry.term);
    }
    return found;
}

} // namespace

void tst_BoxSimUsage::helpFitsTheTerminal()
{
    const QString help = read(QStringLiteral("--help")).text;
    QCOMPARE(help, read(QStringLiteral("-h")).text);
    const QStringList told = {help, Usage::columns(faultEntries()), Usage::columns(scenarioEntries())};
    const QStringList lines = told.join(QLatin1Char('\n')).split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        QVERIFY2(line.size() <= 80, qPrintable(line));
    }
}

void tst_BoxSimUsage::helpGroupsEveryOption()
{
    const QString help = read(QStringLiteral("--help")).text;
    int at = 0;
    for (const OptionTable::Group &group : OptionTable::groups()) {
        at = help.indexOf(QStringLiteral("\n\n%1:\n").arg(QLatin1String(group.title)), at);
        QVERIFY2(at > 0, group.title);
        for (const OptionTable::Option &option : group.options) {
            at = help.indexOf(QStringLiteral("\n  --") + QLatin1String(option.name), at);
            QVERIFY2(at > 0, option.name);
        }
    }
    QVERIFY(
        help.contains(QLatin1String("  --port <number>           Listen on this TCP and UDP port. The tool "
                                    "knows only\n"
                                    "                            30088. Default: 30088.\n")));
}

void tst_BoxSimUsage::helpCarriesItsExamples()
{
    const QString help = read(QStringLiteral("--help")).text;
    QVERIFY(help.contains(QLatin1String("\n    boxsim --address 127.0.0.2 --project ")));
    QVERIFY(help.endsWith(QLatin1String("Exit status:\n"
                                        "  0                         ended as asked\n"
                                        "  1                         could not start\n"
                                        "  2                         wrong command line")));
}

void tst_BoxSimUsage::examplesAreTaken()
{
    int taken = 0;
    const QStringList lines = read(QStringLiteral("--help")).text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        if (line.startsWith(QLatin1String("    boxsim "))) {
            const CommandLine example = readCommandLine(line.trimmed().split(QLatin1Char(' ')));
            QVERIFY2(example.action == CommandLine::Action::run, qPrintable(example.text));
            ++taken;
        }
    }
    QCOMPARE(taken, 4);
}

// Where this fails: boxsim --man > packaging/man/boxsim.1
void tst_BoxSimUsage::manualPageIsThatOfTheTables()
{
    QFile page(QStringLiteral(SOURCE_ROOT "/packaging/man/boxsim.1"));
    QVERIFY(page.open(QIODevice::ReadOnly));
    QCOMPARE(read(QStringLiteral("--man")).text + QLatin1Char('\n'), QString::fromUtf8(page.readAll()));
}

void tst_BoxSimUsage::manualPageNamesEverything()
{
    const QString page = Usage::manualPage();
    const QStringList names = optionNames() + terms(faultEntries()) + terms(scenarioEntries());
    QVERIFY(names.size() > 50);
    for (QString name : names) {
        name.replace(QLatin1Char('-'), QLatin1String("\\-"));
        QVERIFY2(page.contains(QStringLiteral("\n.TP\n.B ") + name), qPrintable(name));
    }
}

void tst_BoxSimUsage::listsAreTold_data()
{
    QTest::addColumn<QString>("option");
    QTest::addColumn<QStringList>("names");
    QTest::newRow("faults") << QStringLiteral("--list-faults") << terms(faultEntries());
    QTest::newRow("scenarios") << QStringLiteral("--list-scenarios") << terms(scenarioEntries());
}

void tst_BoxSimUsage::listsAreTold()
{
    QFETCH(QString, option);
    QFETCH(QStringList, names);
    const CommandLine line = read(option);
    QCOMPARE(line.action, CommandLine::Action::tell);
    for (const QString &name : names) {
        QVERIFY2((QLatin1Char('\n') + line.text).contains(QStringLiteral("\n  ") + name), qPrintable(name));
    }
}

void tst_BoxSimUsage::scenarioStandsForItsOptions_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("none") << QString();
    const QStringList names = terms(scenarioEntries());
    for (const QString &name : names) {
        QTest::newRow(qPrintable(name)) << name;
    }
}

// Each is a command line of its own that says something, and its entry tells it.
void tst_BoxSimUsage::scenarioStandsForItsOptions()
{
    QFETCH(QString, name);
    if (name.isEmpty()) {
        QCOMPARE(scenarioArguments(name), QStringList());
        return;
    }
    const QStringList arguments = scenarioArguments(name);
    const CommandLine spelt = readCommandLine(QStringList{QStringLiteral("boxsim")} + arguments);
    QVERIFY2(spelt.action == CommandLine::Action::run, qPrintable(spelt.text));
    const QVector<HelpEntry> entries = scenarioEntries();
    const auto entry = std::find_if(entries.begin(), entries.end(),
                                    [&name](const HelpEntry &candidate) { return candidate.term == name; });
    QVERIFY(entry != entries.end());
    QVERIFY(entry->sentence.endsWith(QStringLiteral(" (%1)").arg(arguments.join(QLatin1Char(' ')))));
}

void tst_BoxSimUsage::scenariosAddUp()
{
    const CommandLine line = read(QStringLiteral("--scenario lively --seed 5 --scenario slow"));
    QCOMPARE(line.action, CommandLine::Action::run);
    QCOMPARE(line.options.seed, 5U);
    QCOMPARE(line.options.reportInterval, 1000);
    QCOMPARE(line.options.faults.invalidEvery, 10);
    QCOMPARE(line.options.faults.lateHeartbeat, 2000);
    QCOMPARE(line.options.faults.lateJson, 3000);
    QCOMPARE(line.options.faults.lateVerdict, 6000);
}

void tst_BoxSimUsage::whatTheUserSaysCountsForMore()
{
    const CommandLine line =
        read(QStringLiteral("--report-interval 70 --fault late-json=5 --scenario slow --scenario lively"));
    QCOMPARE(line.options.reportInterval, 70);
    QCOMPARE(line.options.faults.lateJson, 5);
    QCOMPARE(line.options.faults.lateVerdict, 6000);
}

QTEST_GUILESS_MAIN(tst_BoxSimUsage)
#include "tst_boxsimusage.moc"
