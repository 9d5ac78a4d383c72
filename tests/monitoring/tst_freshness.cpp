#include "monitoring/freshness.h"

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

QTEST_GUILESS_MAIN(TestFreshness)
#include "tst_freshness.moc"
