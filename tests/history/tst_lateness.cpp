#include "history/lateness.h"
#include "history/recordinggrowth.h"

#include <QtTest>

// When the points of a Standard are broken because its reports stay away, and when a recording grows.
class TestLateness : public QObject
{
    Q_OBJECT
private slots:
    void lateReportsBreak_data();
    void lateReportsBreak();
    void recordingGrows_data();
    void recordingGrows();
};

using Times = QVector<qint64>;

void TestLateness::lateReportsBreak_data()
{
    QTest::addColumn<Times>("times");  // s, of reports; -1 is the end of the session
    QTest::addColumn<Times>("breaks"); // ms
    QTest::newRow("none") << Times{} << Times{};
    QTest::newRow("a single one") << Times{5} << Times{};
    QTest::newRow("each second") << Times{1, 2, 3, 4} << Times{};
    QTest::newRow("10 s are not late") << Times{1, 2, 3, 13} << Times{};
    QTest::newRow("11 s are") << Times{1, 2, 3, 14} << Times{13000};
    QTest::newRow("a minute is not known to be usual") << Times{0, 60, 120, 300} << Times{10000};
    QTest::newRow("three minutes are late") << Times{0, 60, 120, 301} << Times{10000, 300000};
    QTest::newRow("late again and again") << Times{1, 2, 3, 20, 21, 22, 23, 60} << Times{13000, 33000};
    QTest::newRow("the session ended") << Times{1, 2, 3, -1, 900, 901} << Times{};
    QTest::newRow("late in the next session") << Times{1, 2, 3, -1, 900, 901, 950} << Times{911000};
    QTest::newRow("ended before the first") << Times{-1, 900} << Times{};
}

void TestLateness::lateReportsBreak()
{
    QFETCH(Times, times);
    QFETCH(Times, breaks);
    Lateness lateness;
    Times found;
    for (const qint64 time : qAsConst(times)) {
        if (time < 0) {
            lateness.endSession();
        } else if (const auto at = lateness.report(time * 1000)) {
            found.append(*at);
        }
    }
    QCOMPARE(found, breaks);
}

using Growths = QVector<QPair<int, int>>;

// In s since it was opened, on the clocks of this computer and of the recorder.
void TestLateness::recordingGrows_data()
{
    QTest::addColumn<int>("latest");      // sample when it was opened
    QTest::addColumn<Growths>("growths"); // when, and the sample that had come
    QTest::addColumn<int>("now");
    QTest::addColumn<bool>("grows");
    QTest::addColumn<int>("present"); // -1 for none
    QTest::newRow("over for long") << -3600 << Growths{} << 5 << false << -1;
    QTest::newRow("a moment ago") << -30 << Growths{} << 5 << true << 5;
    QTest::newRow("nothing for a minute") << -30 << Growths{} << 60 << false << 60;
    QTest::newRow("the same clock") << -1 << Growths{{1, 0}, {2, 1}} << 3 << true << 2;
    QTest::newRow("a clock behind") << -600 << Growths{{1, -599}} << 2 << true << -598;
    QTest::newRow("a clock ahead") << 600 << Growths{{1, 601}} << 2 << true << 602;
    QTest::newRow("ahead, and over") << 600 << Growths{} << 2 << false << -1;
    QTest::newRow("half a minute behind") << -30 << Growths{{1, -29}} << 3 << true << -27;
    QTest::newRow("seen late") << -600 << Growths{{1, -600}, {2, -597}, {3, -598}} << 4 << true << -595;
    QTest::newRow("no more") << -600 << Growths{{1, -599}} << 61 << false << -539;
    const Growths slow{{100, 100}, {400, 400}, {700, 700}};
    QTest::newRow("each five minutes") << -200 << slow << 1599 << true << 1599;
    QTest::newRow("five minutes, no more") << -200 << slow << 1601 << false << 1601;
}

void TestLateness::recordingGrows()
{
    QFETCH(int, latest);
    QFETCH(Growths, growths);
    QFETCH(int, now);
    constexpr qint64 wall = 1700000000;
    constexpr qint64 opened = 20; // on the monotonic clock
    RecordingGrowth growth;
    growth.open((wall + latest) * 1000, wall * 1000, opened * 1000);
    for (const auto &each : qAsConst(growths)) {
        growth.grow((wall + each.second) * 1000, (opened + each.first) * 1000);
    }
    QTEST(growth.isGrowing((opened + now) * 1000), "grows");
    const auto present = growth.present((opened + now) * 1000);
    QTEST(present ? int(*present / 1000 - wall) : -1, "present");
}

QTEST_GUILESS_MAIN(TestLateness)
#include "tst_lateness.moc"
