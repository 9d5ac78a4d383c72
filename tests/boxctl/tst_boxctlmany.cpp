#include "boxctltest.h"
#include "boxsim/boxrange.h"
#include "boxsim/pointsignal.h"
#include "boxsim/simproject.h"
#include "files.h"
#include "openfiles.h"

#include <QElapsedTimer>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

#include <map>
#include <memory>
#include <optional>
#include <vector>

using namespace BoxCtl;

namespace {

const QString oneSlave = TEST_DATA_DIR "/one-slave.json";

QStringList addresses(const QString &net, int count)
{
    QStringList all;
    for (int box = 1; box <= count; ++box) {
        all.append(net + QString::number(box));
    }
    return all;
}

// As an argument for Boxes.
QString listOf(const QStringList &boxes)
{
    Files::put("list", boxes.join(QLatin1Char('\n')).toLatin1());
    return "@list";
}

QStringList sortedLines(const QString &text)
{
    QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    lines.sort();
    return lines;
}

// Each line without its Box, and how many there are.
QStringList told(const QString &text)
{
    static const QRegularExpression box("^boxctl: [0-9.]+: ");
    QMap<QString, int> counts;
    const QStringList lines = text.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (QString line : lines) {
        ++counts[line.remove(box)];
    }
    QStringList told;
    for (auto count = counts.cbegin(); count != counts.cend(); ++count) {
        told.append(QString("%1 Boxes: %2").arg(count.value()).arg(count.key()));
    }
    return told;
}

// With no more than so many open files.
Outcome runWithFiles(int files, const QStringList &arguments)
{
    const QString shell = QString("ulimit -n %1; exec \"$@\"").arg(files);
    return run("sh", QStringList{"-c", shell, "sh", BOXCTL_PROGRAM} + arguments);
}

// Looks for reports that are left out. The values of a Box and Standard tell which report it is.
class ReportSteps
{
public:
    ReportSteps(const SimStandard &standard, quint32 seed)
    {
        for (const SimPoint &point : standard.points) {
            m_points.emplace_back(point, seed);
        }
    }

    // Whether it is the report behind the last one. The first may be any.
    bool take(const QJsonArray &datas)
    {
        quint64 step = m_next.value_or(0);
        while (!m_next && step < mostSteps && !isAt(step, datas)) {
            ++step;
        }
        const bool isNext = isAt(step, datas);
        m_next = step + 1;
        return isNext;
    }

private:
    static constexpr quint64 mostSteps = 1000;

    bool isAt(quint64 step, const QJsonArray &datas) const
    {
        for (size_t i = 0; i < m_points.size(); ++i) {
            if (datas.at(int(i)).toObject().value("value").toString() != m_points[i].value(step)) {
                return false;
            }
        }
        return datas.size() == int(m_points.size());
    }

    std::vector<PointSignal> m_points;
    std::optional<quint64> m_next;
};

// Of the Boxes of a range on a project, by "address Standard".
std::map<QString, ReportSteps> stepsOf(const QString &document, const QString &first, int count)
{
    SimProject project;
    readSimProject(Files::contents(document), &project, nullptr);
    BoxSimOptions options;
    options.address = QHostAddress(first);
    std::map<QString, ReportSteps> steps;
    for (int place = 0; place < count; ++place) {
        const BoxSimOptions own = BoxRange::optionsAt(options, place);
        for (const SimStandard &standard : qAsConst(project.standards)) {
            steps.emplace(own.address.toString() + ' ' + standard.name, ReportSteps(standard, own.seed));
        }
    }
    return steps;
}

} // namespace

// Plants of hundreds of Boxes.
class TestBoxCtlMany : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void pushesToTwoHundred();
    void watchesTwoHundred();
    void answersThatNeverCome();
    void boxThatDiesAtAnyByte();
    void fewOpenFiles_data();
    void fewOpenFiles();
};

void TestBoxCtlMany::initTestCase()
{
    if (!mayOpenFiles(1024)) {
        QSKIP("not so many files may be open");
    }
}

// A dead one and one that refuses are told and keep no other from its project.
void TestBoxCtlMany::pushesToTwoHundred()
{
    const SimulatedBox sound("127.1.0.1-198", {"--save", "kept"});
    const SimulatedBox refusing("127.1.0.199", {"--fault", "verdict=bad"});
    const QStringList boxes = addresses("127.1.0.", 200);
    const Outcome outcome = run({"push", oneSlave, listOf(boxes)});
    QCOMPARE(outcome.status, 1);
    QCOMPARE(sortedLines(outcome.error),
             QStringList({"boxctl: 127.1.0.199: The Box refused the file: its checksum failed",
                          "boxctl: 127.1.0.200: No connection (Connection refused)",
                          "boxctl: 198 of 200 Boxes done, 2 failed"}));
    QCOMPARE(outcome.out.count(QLatin1Char('\n')), 198);
    const QByteArray pushed = Files::contents(oneSlave);
    for (const QString &box : boxes.mid(0, 198)) {
        QVERIFY2(outcome.out.contains(box + ": took "), qPrintable(box));
        QTRY_COMPARE(Files::contents("kept/" + box + "/project.json"), pushed);
    }
}

// Each report as it was sent by its Box and none left out, though all come at once and in pieces.
void TestBoxCtlMany::watchesTwoHundred()
{
    const QString project = TEST_DATA_DIR "/riverside-substation.json";
    const SimulatedBox boxes(
        "127.1.0.1-200",
        {"--project", project, "--report-interval", "600", "--fault", "split=700", "--fault", "split-gap=5"});
    std::map<QString, ReportSteps> steps = stepsOf(project, "127.1.0.1", 200);
    const Outcome outcome = run({"watch", "--json", "--reports", "2000", listOf(addresses("127.1.0.", 200))});
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.status, 0);
    QSet<QString> standards; // of each Box
    const QStringList lines = outcome.out.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        const QJsonObject object = QJsonDocument::fromJson(line.toUtf8()).object();
        const QString box = object.value("box").toString();
        const QString number = box.section(QLatin1Char('.'), -1);
        const QJsonObject report = object.value("report").toObject();
        QCOMPARE(report.value("sn").toString(), "SIM" + number.rightJustified(8, QLatin1Char('0')));
        const QString standard = box + ' ' + report.value("plcName").toString();
        const auto its = steps.find(standard);
        QVERIFY2(its != steps.end() && its->second.take(report.value("datas").toArray()), qPrintable(line));
        standards.insert(standard);
    }
    QCOMPARE(lines.size(), 2000);
    QCOMPARE(standards.size(), 200 * 3);
}

// The time-outs run side by side.
void TestBoxCtlMany::answersThatNeverCome()
{
    const SimulatedBox silent("127.1.0.1-200", {"--fault", "silent"});
    QElapsedTimer clock;
    clock.start();
    const Outcome outcome = run(
        {"info", "--timeout", "0.5", "--progress", "0", "--jobs", "200", listOf(addresses("127.1.0.", 200))});
    QVERIFY2(clock.elapsed() < 20 * 500, "one waited for another");
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.out, QString());
    QCOMPARE(told(outcome.error), QStringList{"200 Boxes: No answer in 0.5 s"});
}

void TestBoxCtlMany::boxThatDiesAtAnyByte()
{
    const QByteArray document = Files::contents(oneSlave);
    const int whole = document.size() + 3 * 19 + 30; // three chunks and the digest
    constexpr int count = 250;
    BoxSimOptions options;
    options.address = QHostAddress("127.1.0.1");
    options.discovery = false;
    options.reportInterval = 0;
    BoxRange range(options, count);
    QVERIFY2(range.start(), qPrintable(range.errorString()));
    const QString list = listOf(addresses("127.1.0.", count));
    for (int from = 1; from <= whole; from += count) {
        int dying = 0;
        for (int place = 0; place < count; ++place) {
            BoxSimFaults faults;
            faults.dropAfterReceived = from + place < whole ? from + place : 0; // 0: it lives
            dying += faults.dropAfterReceived > 0 ? 1 : 0;
            range.boxes()[size_t(place)]->setFaults(faults);
        }
        const Outcome outcome = run({"push", "--progress", "0", "--jobs", "50", oneSlave, list});
        QCOMPARE(outcome.out.count("took "), count - dying);
        QCOMPARE(
            told(outcome.error),
            QStringList{
                QString("%1 Boxes: All was handed over, but the Box gave no verdict: whether it took the "
                        "file is not known (The remote host closed the connection)")
                    .arg(dying)});
    }
}

void TestBoxCtlMany::fewOpenFiles_data()
{
    QTest::addColumn<int>("files");
    QTest::addColumn<int>("boxes");
    QTest::newRow("1,000 Boxes") << 256 << 1000;
    QTest::newRow("next to none") << 20 << 20;
}

// Fewer run side by side than was asked for.
void TestBoxCtlMany::fewOpenFiles()
{
    QFETCH(int, files);
    QFETCH(int, boxes);
    std::vector<std::unique_ptr<SimulatedBox>> simulators;
    QStringList all;
    for (int net = 1; all.size() < boxes; ++net) {
        const int count = qMin(250, boxes - all.size());
        simulators.push_back(std::make_unique<SimulatedBox>(QString("127.1.%1.1-%2").arg(net).arg(count)));
        all += addresses(QString("127.1.%1.").arg(net), count);
    }
    const Outcome outcome =
        runWithFiles(files, {"push", "--progress", "0", "--jobs", "1000", oneSlave, listOf(all)});
    QCOMPARE(outcome.error, QString());
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.out.count("took "), boxes);
}

QTEST_GUILESS_MAIN(TestBoxCtlMany)
#include "tst_boxctlmany.moc"
