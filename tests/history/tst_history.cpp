#include "reports.h"
#include "rounds.h"

#include <random>
#include <thread>

using namespace Reports;
using namespace Samples;

// The samples of the last reports, and what is drawn of them.
class TestHistory : public QObject
{
    Q_OBJECT
private slots:
    void keepsSamplesOfEachPoint();
    void findsRowsInAnyOrder();
    void lastOfOneNameCounts();
    void breaksWhatAReportLacks();
    void breaksLateReports_data();
    void breaksLateReports();
    void endsASession();
    void shadesWhatIsLate_data();
    void shadesWhatIsLate();
    void shadesNoFuture_data();
    void shadesNoFuture();
    void shadesWhatIsLateSince();
    void answersEachAsker();
    void thinsAcrossChunks();
    void thinsWhatWasReplaced();
    void goesOnAsIfAnew_data();
    void goesOnAsIfAnew();
    void updatesThePoint();
    void neverGoesBackInTime();
    void takesReportsWithoutPoints();
    void cursorKeepsWhatItBeganWith();
};

void TestHistory::keepsSamplesOfEachPoint()
{
    History history;
    QSignalSpy grown(&history, &SampleSource::grown);
    QVERIFY(history.isGrowing());
    QVERIFY(history.points().isEmpty());
    history.add(report(0, {value("A", 1), other("B", SampleState::NotValid, "7"), word("C", "on")}));
    history.add(report(1, {value("A", 2), other("B", SampleState::NoNumber, "nan"), word("C", "off")}));
    history.add(report(1, {value("A", 9)}, "Line 2"));
    history.add(report(1, {value("A", 8)}, "Line 1", "10.0.0.2"));
    QCOMPARE(grown.count(), 4);
    QCOMPARE(namesOf(history),
             (QStringList{"Line 1/A float", "Line 1/B float", "Line 1/C string", "Line 2/A float",
                          "Line 1/A float"}));
    QCOMPARE(history.points().at(0).address, QString("40001"));
    QCOMPARE(samplesOf(history, idOf("A")), (QStringList{"0: 1", "1: 2"}));
    QCOMPARE(samplesOf(history, idOf("B")), (QStringList{"0: not valid 7", "1: no number nan"}));
    QCOMPARE(samplesOf(history, idOf("C")), (QStringList{"0: on", "1: off"}));
    QCOMPARE(samplesOf(history, idOf("A", "Line 2")), QStringList{"1: 9"});
    QCOMPARE(samplesOf(history, idOf("A", "Line 1", "10.0.0.2")), QStringList{"1: 8"});
    QCOMPARE(samplesOf(history, idOf("Z")), QStringList());
    QCOMPARE(samplesOf(history, idOf("A", "Line 9")), QStringList());
    QCOMPARE(history.extent(idOf("A")).from, begin);
    QCOMPARE(history.extent(idOf("A")).to, begin + s);
    QVERIFY(history.extent(idOf("Z")).from > history.extent(idOf("Z")).to);
}

void TestHistory::findsRowsInAnyOrder()
{
    History history;
    history.add(report(0, {value("A", 1), value("B", 10), value("C", 100)}));
    history.add(report(1, {value("C", 101), value("A", 2), value("B", 11)}));
    history.add(report(2, {value("X", 7), value("B", 12), value("A", 3), value("C", 102)}));
    history.add(report(3, {value("A", 4), value("B", 13), value("C", 103), value("X", 8)}));
    QCOMPARE(samplesOf(history, idOf("A")), (QStringList{"0: 1", "1: 2", "2: 3", "3: 4"}));
    QCOMPARE(samplesOf(history, idOf("B")), (QStringList{"0: 10", "1: 11", "2: 12", "3: 13"}));
    QCOMPARE(samplesOf(history, idOf("C")), (QStringList{"0: 100", "1: 101", "2: 102", "3: 103"}));
    QCOMPARE(samplesOf(history, idOf("X")), (QStringList{"2: 7", "3: 8"}));
}

void TestHistory::lastOfOneNameCounts()
{
    History history;
    for (int second = 0; second < 20; ++second) {
        history.add(report(second, {word("A", "first"), value("B", 1), value("A", second)}));
    }
    history.add(report(20, {value("A", 1), word("A", "last")}));
    const QStringList samples = samplesOf(history, idOf("A"));
    QCOMPARE(samples.size(), 21);
    QCOMPARE(samples.mid(0, 2), (QStringList{"0: 0", "1: 1"}));
    QCOMPARE(samples.mid(18), (QStringList{"18: 18", "19: 19", "20: last"}));
    QCOMPARE(countOf(history, idOf("B")), 21);
}

void TestHistory::breaksWhatAReportLacks()
{
    History history;
    history.add(report(0, {value("A", 1), value("B", 10)}));
    history.add(report(1, {value("B", 11)}));
    history.add(report(2, {value("B", 12)}));
    history.add(report(3, {value("A", 4), value("B", 13)}));
    QCOMPARE(samplesOf(history, idOf("A")), (QStringList{"0: 1", "1: no report", "3: 4"}));
    QCOMPARE(samplesOf(history, idOf("B")), (QStringList{"0: 10", "1: 11", "2: 12", "3: 13"}));
    QCOMPARE(answerOf(&history, idOf("A"), 0, 3), QString("0:1 | 3:4 | gap 0-3 3"));
}

void TestHistory::breaksLateReports_data()
{
    QTest::addColumn<QVector<int>>("times"); // s
    QTest::addColumn<QStringList>("samples");
    const auto row = [](const char *name, const QVector<int> &times, const QStringList &samples) {
        QTest::newRow(name) << times << samples;
    };
    row("in time", {0, 1, 2, 12}, {"0: 1", "1: 1", "2: 1", "12: 1"});
    row("over 10 s", {0, 1, 2, 13}, {"0: 1", "1: 1", "2: 1", "12: no report", "13: 1"});
    row("over three periods", {0, 10, 20, 50, 81},
        {"0: 1", "10: 1", "20: 1", "50: 1", "80: no report", "81: 1"});
    row("24 h", {0, 1, 86401}, {"0: 1", "1: 1", "11: no report", "86401: 1"});
}

void TestHistory::breaksLateReports()
{
    QFETCH(QVector<int>, times);
    QFETCH(QStringList, samples);
    History history;
    for (const int time : qAsConst(times)) {
        history.add(report(time, {value("A", 1)}));
    }
    QCOMPARE(samplesOf(history, idOf("A")), samples);
}

void TestHistory::endsASession()
{
    History history;
    history.add(report(0, {value("A", 1), value("B", 1), other("C", SampleState::NotValid)}));
    history.add(report(1, {value("A", 2), other("C", SampleState::NotValid)}));
    history.add(report(1, {value("A", 5)}, "Line 1", "10.0.0.2"));
    history.endSession("10.0.0.1", begin + 3 * s);
    history.endSession("10.0.0.1", begin + 4 * s);
    QCOMPARE(samplesOf(history, idOf("A")), (QStringList{"0: 1", "1: 2", "3: ended"}));
    QCOMPARE(samplesOf(history, idOf("B")), (QStringList{"0: 1", "1: no report"}));
    QCOMPARE(samplesOf(history, idOf("C")), (QStringList{"0: not valid", "1: not valid", "3: ended"}));
    QCOMPARE(samplesOf(history, idOf("A", "Line 1", "10.0.0.2")), QStringList{"1: 5"});
    // The pause needs no second break, and is no usual period.
    const PointId far = idOf("A", "Line 1", "10.0.0.2");
    history.endSession("10.0.0.2", begin + 3 * s);
    history.add(report(100, {value("A", 6)}, "Line 1", "10.0.0.2"));
    history.add(report(111, {value("A", 7)}, "Line 1", "10.0.0.2"));
    QCOMPARE(samplesOf(history, far, 2), (QStringList{"3: ended", "100: 6", "110: no report", "111: 7"}));
    history.add(report(100, {value("A", 3)}));
    history.add(report(111, {value("A", 4)}));
    QCOMPARE(samplesOf(history, idOf("A"), 2),
             (QStringList{"3: ended", "100: 3", "110: no report", "111: 4"}));
    history.endSession("10.0.0.1", begin); // cannot be before what it ends
    QCOMPARE(samplesOf(history, idOf("A"), 111), (QStringList{"111: 4", "111.001: ended"}));
}

void TestHistory::shadesWhatIsLate_data()
{
    QTest::addColumn<int>("from");
    QTest::addColumn<int>("to");
    QTest::addColumn<QString>("answer");
    QTest::newRow("in time") << 0 << 12 << "0:1 1:2 2:3 |";
    QTest::newRow("late") << 0 << 13 << "0:1 1:2 2:3 | gap 2-13 3";
    QTest::newRow("very late") << 0 << 86400 << "0:1 2:3 | gap 2-86400 3";
    QTest::newRow("late, and the last sample out of sight") << 11 << 40 << "2:3 | gap 2-40 3";
    QTest::newRow("late, and all out of sight") << 20 << 40 << "gap 12-40 3";
    QTest::newRow("the past") << 0 << 1 << "0:1 1:2 2:3 |";
}

void TestHistory::shadesWhatIsLate()
{
    QFETCH(int, from);
    QFETCH(int, to);
    QFETCH(QString, answer);
    History history;
    for (int second = 0; second < 3; ++second) {
        history.add(report(second, {value("A", second + 1)}));
    }
    QCOMPARE(answerOf(&history, idOf("A"), from, to), answer);
    // Nobody waits for what has ended.
    history.endSession("10.0.0.1", begin + 3 * s);
    const QString ended = answerOf(&history, idOf("A"), from, 100);
    QVERIFY2(ended.endsWith("gap 2-100 4") || ended == "gap 3-100 4", qPrintable(ended));
}

void TestHistory::shadesNoFuture_data()
{
    QTest::addColumn<int>("now");
    QTest::addColumn<QString>("answer"); // up to the second 60
    QTest::newRow("nothing is late yet") << 12 << "0:1 1:2 2:3 |";
    QTest::newRow("late by now") << 13 << "0:1 1:2 2:3 | gap 2-13 3";
    QTest::newRow("late for long") << 59 << "0:1 1:2 2:3 | gap 2-59 3";
    QTest::newRow("the present is past the range") << 70 << "0:1 1:2 2:3 | gap 2-60 3";
}

void TestHistory::shadesNoFuture()
{
    QFETCH(int, now);
    History history;
    for (int second = 0; second < 3; ++second) {
        history.add(report(second, {value("A", second + 1)}));
    }
    QTEST(answerOf(&history, idOf("A"), 0, 60, 1000, now), "answer");
}

// A window that is paused at that time shows it.
void TestHistory::shadesWhatIsLateSince()
{
    History history;
    for (int second = 0; second < 3; ++second) {
        history.add(report(second, {value("A", second + 1)}));
    }
    QCOMPARE(answerOf(&history, idOf("A"), 0, 5, 1000, 12), QString("0:1 1:2 2:3 |"));
    QCOMPARE(answerOf(&history, idOf("A"), 0, 5, 1000, 13), QString("0:1 1:2 2:3 | gap 2-12 3"));
}

void TestHistory::answersEachAsker()
{
    History history;
    history.add(report(0, {value("A", 1), word("B", "on")}));
    int calls = 0;
    connect(&history, &SampleSource::thinned, this,
            [&](const void *asker, const SampleSource::Request &request, const QVector<Thinned> &answers) {
                ++calls;
                QCOMPARE(asker, static_cast<const void *>(this));
                QCOMPARE(request.columns, 7);
                QCOMPARE(answers.size(), 3);
                QCOMPARE(answers.at(0).events.size(), 1);
                QVERIFY(answers.at(1).pieces.isEmpty() && answers.at(1).gaps.isEmpty());
                QCOMPARE(answers.at(2).statistics.count, qint64(1));
            });
    history.request(this, {{idOf("B"), idOf("unknown"), idOf("A")}, {begin, begin + s}, 7});
    QCOMPARE(calls, 1);
}

// Whatever lies in one chunk or another, all of it is told.
void TestHistory::thinsAcrossChunks()
{
    History history;
    constexpr int count = 3000;
    for (int second = 0; second < count; ++second) {
        history.add(
            report(second, {second == 1000 ? other("A", SampleState::NotValid) : value("A", second)}));
    }
    QCOMPARE(countOf(history, idOf("A")), count);
    for (int from = 0; from + 10 < count; from += 97) {
        QStringList wanted;
        for (int second = qMax(0, from - 1); second <= from + 10; ++second) {
            wanted.append(second == 1000 ? QString("|") : QString("%1:%1").arg(second));
        }
        wanted.append("|");
        const QString gap = answerOf(&history, idOf("A"), from, from + 9).section("gap", 1);
        QCOMPARE(answerOf(&history, idOf("A"), from, from + 9).section(" gap", 0, 0), wanted.join(' '));
        QCOMPARE(gap.isEmpty(), !wanted.mid(1).contains("|") || wanted.indexOf("|") == wanted.size() - 1);
        QCOMPARE(samplesOf(history, idOf("A"), from, from + 9).size(), 10);
    }
    QCOMPARE(samplesOf(history, idOf("A"), 10, 9), QStringList());
    QCOMPARE(samplesOf(history, idOf("A"), count, count + 9), QStringList());
}

// The first of two rows with one name is never seen.
void TestHistory::thinsWhatWasReplaced()
{
    History history;
    for (int second = 0; second < 100; ++second) {
        history.add(report(second, {value("A", second % 2 ? 1000 : -1000), value("A", second)}));
        QCOMPARE(answerOf(&history, idOf("A"), 0, second, 1),
                 second == 0 ? QString("0:0 |") : QString("0:0 %1:%1 |").arg(second));
    }
}

namespace {

// Reports with gaps in and between them, and ends of the session.
class RandomReports
{
public:
    explicit RandomReports(int seed)
        : m_random(unsigned(seed))
    {
    }
    int upTo(int most) { return int(m_random() % unsigned(most + 1)); }
    void addTo(const QVector<History *> &histories)
    {
        m_second += upTo(60) == 0 ? 5 + upTo(40) : 1;
        if (upTo(200) == 0) {
            for (History *history : histories) {
                history->endSession("10.0.0.1", begin + m_second * s);
            }
            ++m_second;
        }
        Readings readings = report(m_second, {});
        if (upTo(50) > 0) {
            readings.rows.append(upTo(30) == 0 ? other("A", SampleState::NotValid) : value("A", upTo(999)));
        }
        readings.rows.append(upTo(100) == 0 ? word("B", QString::number(upTo(3)))
                                            : value("B", upTo(5), m_second % 1000 < 500 ? "int16" : "float"));
        readings.rows.append(value("C", upTo(99999)));
        for (History *history : histories) {
            history->add(readings);
        }
    }
    int second() const { return m_second; }

private:
    std::mt19937 m_random;
    int m_second = 0;
};

} // namespace

void TestHistory::goesOnAsIfAnew_data()
{
    QTest::addColumn<int>("budget"); // bytes
    QTest::newRow("keeps all") << 1000000;
    QTest::newRow("loses the oldest") << 40000;
}

// One history goes on with what a window has asked before; the other one has nothing that a window holds.
void TestHistory::goesOnAsIfAnew()
{
    QFETCH(int, budget);
    for (int round = 0; round < rounds(10); ++round) {
        RandomReports reports(round);
        History goesOn(budget);
        History anew(budget);
        goesOn.hold(idOf("A"));
        goesOn.hold(idOf("B"));
        goesOn.hold(idOf("C"));
        const QStringList windows{"A", "B", "C"};
        int from = 0;
        int to = 0;
        int columns = 1;
        while (reports.second() < 2000) {
            for (int count = reports.upTo(50); count >= 0; --count) {
                reports.addTo({&goesOn, &anew});
            }
            if (reports.upTo(9) == 0) {
                from = reports.upTo(reports.second());
                to = from + reports.upTo(500);
                columns = 1 + reports.upTo(100);
            }
            const int now = reports.second() + reports.upTo(20);
            for (const QString &name : windows) {
                QCOMPARE(answerOf(&goesOn, idOf(name), from, to, columns, now, true, &name),
                         answerOf(&anew, idOf(name), from, to, columns, now, true));
            }
        }
    }
}

// A point that becomes another thing; what was reported before stays what it was.
void TestHistory::updatesThePoint()
{
    History history;
    history.add(report(0, {word("A", "12")}));
    history.add(report(1, {word("A", "13")}));
    QCOMPARE(namesOf(history), QStringList{"Line 1/A string"});
    Reading number = value("A", 14);
    number.address = "40007";
    history.add(report(2, {number}));
    number.number = 15;
    history.add(report(3, {number}));
    QCOMPARE(namesOf(history), QStringList{"Line 1/A float"});
    QCOMPARE(history.points().at(0).address, QString("40007"));
    QCOMPARE(answerOf(&history, idOf("A"), 0, 3), QString("2:14 3:15 | 0 12 1 13"));
    history.add(report(4, {word("A", "16")}));
    QCOMPARE(answerOf(&history, idOf("A"), 0, 4), QString("2:14 3:15 | 0 12 1 13 4 16"));
}

void TestHistory::neverGoesBackInTime()
{
    History history;
    for (const int second : {5, 3, 5, 6}) {
        history.add(report(second, {value("A", second)}));
    }
    QCOMPARE(samplesOf(history, idOf("A")), (QStringList{"5: 5", "5.001: 3", "5.002: 5", "6: 6"}));
}

void TestHistory::takesReportsWithoutPoints()
{
    History history;
    history.add(report(0, {}));
    QVERIFY(history.points().isEmpty());
    QCOMPARE(history.size(), qint64(0));
    history.add(report(1, {value("A", 1)}));
    history.add(report(2, {}));
    QCOMPARE(samplesOf(history, idOf("A")), (QStringList{"1: 1", "2: no report"}));
    history.endSession("10.0.0.9", begin);
    history.request(nullptr, {{}, {begin, begin}, 1});
}

void TestHistory::cursorKeepsWhatItBeganWith()
{
    auto history = std::make_unique<History>(200 * 1000);
    for (int second = 0; second < 3000; ++second) {
        history->add(report(second, {value("A", second)}));
    }
    const auto cursor = history->cursor(idOf("A"), {begin, begin + 9999 * s});
    double sum = 0;
    int count = 0;
    std::thread reader([&] {
        Sample sample;
        while (cursor->next(&sample)) {
            sum += sample.number;
            ++count;
        }
    });
    for (int second = 3000; second < 30000; ++second) { // all of the first ones go
        history->add(report(second, {value("A", second)}));
    }
    QVERIFY(history->extent(idOf("A")).from > begin + 3000 * s);
    history.reset();
    reader.join();
    QCOMPARE(count, 3000);
    QCOMPARE(sum, 2999 * 3000 / 2.0);
}

QTEST_GUILESS_MAIN(TestHistory)
#include "tst_history.moc"
