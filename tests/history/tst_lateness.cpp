#include "history/lateness.h"

#include <QtTest>

// When the points of a Standard are broken because its reports stay away.
class TestLateness : public QObject
{
    Q_OBJECT
private slots:
    void lateReportsBreak_data();
    void lateReportsBreak();
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

QTEST_GUILESS_MAIN(TestLateness)
#include "tst_lateness.moc"
