#include "boxlink/freshness.h"
#include "boxlink/liveclock.h"

#include <QtTest>

#include <algorithm>

// When the values of a page are out of date, by the usual time between its reports.
class TestFreshness : public QObject
{
    Q_OBJECT
private slots:
    void agesFromTheLastReport();
    void isLateAfterThreeUsualPeriods_data();
    void isLateAfterThreeUsualPeriods();
    void pauseBetweenSessionsIsNoPeriod();
    void clockGoesOnInSleep_data();
    void clockGoesOnInSleep();
};

void TestFreshness::agesFromTheLastReport()
{
    Freshness freshness;
    QVERIFY(!freshness.hasReport());
    QCOMPARE(freshness.age(5000), qint64(0));
    QVERIFY(!freshness.isLate(1000000));
    freshness.report(7000);
    QVERIFY(freshness.hasReport());
    QCOMPARE(freshness.age(7000), qint64(0));
    QCOMPARE(freshness.age(9500), qint64(2500));
    freshness.report(9500);
    QCOMPARE(freshness.age(9500), qint64(0));
}

void TestFreshness::isLateAfterThreeUsualPeriods_data()
{
    QTest::addColumn<QVector<qint64>>("periods"); // s
    QTest::addColumn<qint64>("last");             // ms of age that are not late yet
    const auto row = [](const char *name, const QVector<qint64> &periods, qint64 last) {
        QTest::newRow(name) << periods << last;
    };
    row("a single report", {}, 10000);
    row("many a second", {0, 0, 0, 0, 0}, 10000);
    row("each second", {1, 1, 1}, 10000);
    row("each four seconds", {4, 4, 4}, 12000);
    row("each minute, from the first on", {60}, 180000);
    row("the middle one counts", {5, 60, 7, 6, 4}, 18000);
    row("a pause after a few reports", {5, 600}, 15000);
    row("a pause after many", {5, 5, 5, 5, 600}, 15000);
    row("what was six periods ago is forgotten", {60, 60, 60, 5, 5, 5, 5, 5}, 15000);
}

void TestFreshness::isLateAfterThreeUsualPeriods()
{
    QFETCH(QVector<qint64>, periods);
    QFETCH(qint64, last);
    Freshness freshness;
    qint64 now = 100;
    freshness.report(now);
    for (const qint64 period : periods) {
        now += period * 1000;
        freshness.report(now);
    }
    QVERIFY(!freshness.isLate(now + last));
    QVERIFY(freshness.isLate(now + last + 1));
    QCOMPARE(freshness.lateAge(), last);
}

void TestFreshness::pauseBetweenSessionsIsNoPeriod()
{
    Freshness freshness;
    freshness.report(0);
    freshness.interrupt();
    freshness.report(900000);
    QVERIFY(freshness.isLate(910001));
    freshness.report(920000); // the first period
    QVERIFY(!freshness.isLate(980000));
    QVERIFY(freshness.isLate(980001));
}

using Steps = QVector<QPair<qint64, qint64>>;

void TestFreshness::clockGoesOnInSleep_data()
{
    QTest::addColumn<Steps>("steps"); // ms of the monotonic and of the wall clock
    QTest::addColumn<qint64>("passed");
    const auto row = [](const char *name, const Steps &steps, qint64 passed) {
        QTest::newRow(name) << steps << passed;
    };
    row("awake", {{1000, 1000}, {1000, 1001}, {1000, 999}}, 3000);
    row("asleep", {{1000, 1000}, {500, 3600500}, {1000, 1000}}, 3602500);
    row("asleep twice", {{500, 60500}, {500, 60500}}, 121000);
    row("set back", {{1000, 1000}, {1000, -3599000}, {1000, 1000}}, 3000);
    row("set back, then asleep", {{1000, -3599000}, {500, 60500}}, 61500);
    row("put right bit by bit", {{1000, 1010}, {1000, 1010}, {1000, 990}}, 3000);
}

void TestFreshness::clockGoesOnInSleep()
{
    QFETCH(Steps, steps);
    QFETCH(qint64, passed);
    WakingClock clock;
    qint64 monotonic = 700;
    qint64 wall = 1700000000000;
    const qint64 begin = clock.at(monotonic, wall);
    qint64 now = begin;
    for (const auto &step : qAsConst(steps)) {
        const qint64 before = now;
        monotonic += step.first;
        wall += step.second;
        now = clock.at(monotonic, wall);
        QVERIFY(now >= before);
    }
    QCOMPARE(now - begin, passed);
}

QTEST_GUILESS_MAIN(TestFreshness)
#include "tst_freshness.moc"
