#include "reports.h"

using namespace Reports;
using namespace Samples;

// How much the history keeps, and what goes first.
class TestHistoryMemory : public QObject
{
    Q_OBJECT
private slots:
    void keepsToItsBudget_data();
    void keepsToItsBudget();
    void oldestGoFirst();
    void heldStayLonger();
    void forgetsAStandard();
    void pointsThatNeverComeBackGo();
    void keepsTextsOnce();
    void keepsTheBeginOfLongTexts();
    void keepsCurvesOfEachWindow();
    void keepsCurvesToTheirBudget();
};

void TestHistoryMemory::keepsToItsBudget_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<int>("reports");
    QTest::addColumn<bool>("texts");
    QTest::newRow("100,000 points, few reports") << 100000 << 2 << false;
    QTest::newRow("few points, many reports") << 16 << 30000 << false;
    QTest::newRow("texts") << 1000 << 100 << true;
}

void TestHistoryMemory::keepsToItsBudget()
{
    QFETCH(int, points);
    QFETCH(int, reports);
    QFETCH(bool, texts);
    constexpr qint64 budget = 4 * 1024 * 1024;
    History small(budget);
    History large;
    Readings readings = manyPoints(0, points);
    for (int second = 0; second < reports; ++second) {
        readings.time = begin + second * s;
        for (Reading &reading : readings.rows) {
            reading.text = texts ? QString(500, QChar('a' + second % 20)) : QString();
            reading.number = texts ? none : second;
        }
        small.add(readings);
        large.add(readings);
        QVERIFY(small.size() <= budget);
        QVERIFY(large.size() <= History::defaultBudget);
    }
    QVERIFY2(small.size() > budget * 3 / 4, qPrintable(QString::number(small.size())));
    QCOMPARE(large.points().size(), points);
    QCOMPARE(large.extent(idOf("Point 7")).to, begin + (reports - 1) * s);
}

void TestHistoryMemory::oldestGoFirst()
{
    History history(300 * 1000);
    for (int second = 0; second < 20000; ++second) {
        history.add(report(second, {value("A", second), value("B", -second)}));
        if (second % 1000 == 0) {
            history.add(report(second, {value("Slow", second)}, "Line 2"));
        }
    }
    const TimeRange a = history.extent(idOf("A"));
    const TimeRange b = history.extent(idOf("B"));
    QCOMPARE(a.to, begin + 19999 * s);
    QVERIFY2(a.from > begin + 9000 * s && a.from < begin + 14000 * s,
             qPrintable(QString::number(a.from - begin)));
    QVERIFY(std::abs(a.from - b.from) <= 512 * s);
    QCOMPARE(countOf(history, idOf("A")), int((a.to - a.from) / s) + 1);
    // What came seldom is as old as the rest, and not lost to it.
    const TimeRange slow = history.extent(idOf("Slow", "Line 2"));
    QCOMPARE(slow.to, begin + 19000 * s);
    QVERIFY(slow.from <= a.from);
}

void TestHistoryMemory::heldStayLonger()
{
    History history(120 * 1000);
    history.hold(idOf("Early")); // before its first report
    history.add(report(0, {value("Early", 1), value("Late", 1), value("Free", 1)}));
    history.hold(idOf("Late"));
    history.hold(idOf("Late"));
    for (int second = 1; second < 2000; ++second) {
        history.add(report(second, {value("Early", 1), value("Late", 1), value("Free", 1)}));
    }
    int next = 2000;
    const auto grow = [&history, &next] {
        for (const int end = next + 3000; next < end; ++next) {
            history.add(report(next, {value("A", 1)}, "Line 2"));
        }
    };
    grow();
    grow();
    QCOMPARE(countOf(history, idOf("Early")), 2000);
    QCOMPARE(countOf(history, idOf("Late")), 2000);
    QCOMPARE(countOf(history, idOf("Free")), 0);
    QVERIFY(history.size() <= 120 * 1000);
    history.release(idOf("Late"));
    history.release(idOf("Early"));
    grow();
    grow();
    QCOMPARE(countOf(history, idOf("Early")), 0);
    QCOMPARE(countOf(history, idOf("Late")), 2000);
    history.release(idOf("Late"));
    history.release(idOf("Late")); // once too often does no harm
    grow();
    grow();
    QCOMPARE(countOf(history, idOf("Late")), 0);
    // Nothing but what is held: its oldest goes.
    history.hold(idOf("A", "Line 2"));
    for (int i = 0; i < 5; ++i) {
        grow();
    }
    QVERIFY(history.size() <= 120 * 1000);
    QVERIFY(countOf(history, idOf("A", "Line 2")) > 5000);
    QCOMPARE(history.extent(idOf("A", "Line 2")).to, begin + (2000 + 11 * 3000 - 1) * s);
}

void TestHistoryMemory::forgetsAStandard()
{
    History history;
    history.hold(idOf("Held"));
    history.add(report(0, {value("Free", 1), value("Held", 1)}));
    const qint64 one = history.size() / 2;
    history.add(report(0, {value("Other", 1)}, "Line 2"));
    const qint64 before = history.size();
    history.forget("10.0.0.1", "Plant", "Line 1");
    history.forget("10.0.0.1", "Plant", "Line 7");
    QCOMPARE(namesOf(history), (QStringList{"Line 1/Held float", "Line 2/Other float"}));
    QCOMPARE(history.size(), before - one);
    history.release(idOf("Held"));
    QCOMPARE(namesOf(history), QStringList{"Line 2/Other float"});
    // A page that opens again begins anew, and keeps all when a window is closed.
    history.hold(idOf("Held"));
    history.add(report(5, {value("Free", 2), value("Held", 2)}));
    history.forget("10.0.0.1", "Plant", "Line 1");
    history.add(report(6, {value("Free", 3), value("Held", 3)}));
    history.release(idOf("Held"));
    QCOMPARE(samplesOf(history, idOf("Free")), QStringList{"6: 3"});
    QCOMPARE(samplesOf(history, idOf("Held")), (QStringList{"5: 2", "6: 3"}));
    history.forget("10.0.0.1", "Plant", "Line 1");
    history.forget("10.0.0.1", "Plant", "Line 2");
    QCOMPARE(history.size(), qint64(0));
}

// Each report has other names: their records count, too.
void TestHistoryMemory::pointsThatNeverComeBackGo()
{
    History history(2 * 1024 * 1024);
    for (int second = 0; second < 60; ++second) {
        history.add(manyPoints(second, 1000, QString("%1-").arg(second)));
        QVERIFY(history.size() <= 2 * 1024 * 1024);
    }
    QVERIFY(history.points().size() < 12000);
    QVERIFY(history.points().size() > 4000);
    QCOMPARE(samplesOf(history, idOf("59-7")), QStringList{"59: 66"});
    QCOMPARE(samplesOf(history, idOf("0-7")), QStringList());
    History empty(0);
    empty.add(manyPoints(0, 100));
    empty.add(manyPoints(1, 100));
    QCOMPARE(empty.size(), qint64(0));
    QVERIFY(empty.points().isEmpty());
}

void TestHistoryMemory::keepsTextsOnce()
{
    const auto sizeAfter = [](bool changes) {
        History history;
        for (int second = 0; second < 1000; ++second) {
            history.add(report(second, {word("A", QString(400, changes && second % 2 ? 'y' : 'x'))}));
        }
        return history.size();
    };
    QVERIFY2(sizeAfter(false) < 80 * 1000, qPrintable(QString::number(sizeAfter(false))));
    QVERIFY(sizeAfter(true) > 800 * 1000);
}

void TestHistoryMemory::keepsTheBeginOfLongTexts()
{
    History history;
    const QString face = QString::fromUtf8("😀"); // two characters, which belong together
    history.add(report(0,
                       {word("A", QString(512, 'x')), other("B", SampleState::NotValid, QString(65536, 'y')),
                        word("C", QString(510, 'x') + face + "x")}));
    QCOMPARE(samplesOf(history, idOf("A")), QStringList{"0: " + QString(512, 'x')});
    QCOMPARE(samplesOf(history, idOf("B")), QStringList{"0: not valid " + QString(511, 'y') + QChar(0x2026)});
    QCOMPARE(samplesOf(history, idOf("C")), QStringList{"0: " + QString(510, 'x') + QChar(0x2026)});
    for (int second = 1; second < 200; ++second) {
        history.add(report(second, {word("A", QString::number(second) + QString(65536, 'x'))}));
    }
    QVERIFY2(history.size() < 200 * 1300, qPrintable(QString::number(history.size())));
}

// Two of them show a point over different times.
void TestHistoryMemory::keepsCurvesOfEachWindow()
{
    History history;
    const char windows[2] = {};
    history.hold(idOf("A"));
    history.hold(idOf("B"));
    for (int second = 0; second < 2000; ++second) {
        history.add(report(second, {value("A", second), value("B", -second)}));
    }
    const auto sizeAfter = [&](int window, const QVector<PointId> &points) {
        history.request(&windows[window], {points, {begin + window * s, begin + 1900 * s}, 1000});
        return history.curvesSize();
    };
    const qint64 one = sizeAfter(0, {idOf("A"), idOf("B")});
    QVERIFY2(one > 2 * 1900 * qint64(sizeof(QPointF)), qPrintable(QString::number(one)));
    const qint64 both = sizeAfter(1, {idOf("A"), idOf("B")});
    QVERIFY2(both > one + one / 2, qPrintable(QString::number(both)));
    QCOMPARE(sizeAfter(0, {idOf("A"), idOf("B")}), both);
    QCOMPARE(sizeAfter(0, {idOf("A"), idOf("not held")}), both - one / 2);
    history.release(idOf("A"));
    QCOMPARE(history.curvesSize(), (both - one) / 2);
    history.release(idOf("B"));
    QCOMPARE(history.curvesSize(), qint64(0));
}

// However many windows there are and have been.
void TestHistoryMemory::keepsCurvesToTheirBudget()
{
    constexpr qint64 budget = 1024 * 1024;
    History history(budget);
    history.hold(idOf("A"));
    for (int second = 0; second < 200; ++second) {
        history.add(report(second, {value("A", second), word("S", QString(400, QChar('a' + second % 20)))}));
    }
    const QVector<char> windows(100);
    qint64 most = 0;
    for (const char &window : windows) {
        history.request(&window, {{idOf("A"), idOf("S")}, {begin, begin + 200 * s}, 1000});
        most = qMax(most, history.curvesSize());
    }
    QVERIFY2(most > budget / 8 && most <= budget / 4, qPrintable(QString::number(most)));
}

QTEST_GUILESS_MAIN(TestHistoryMemory)
#include "tst_historymemory.moc"
