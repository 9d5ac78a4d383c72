#include "trends/timeview.h"

#include <QtTest>

// Which part of the time is on screen after what the user did, and how it follows the present.
class TestTimeView : public QObject
{
    Q_OBJECT
private slots:
    void offersSpansFromAMinuteToADay();
    void spanKeepsTheMiddleOrThePresent();
    void zoomKeepsTheTimeUnderThePointer();
    void zoomHasLimits();
    void rectangleSetsTimeAndScales();
    void panMovesTimeAndChosenScales();
    void followsThePresent();
    void presentNeverGoesBack();
    void pausesWhenTheEndIsMovedAway();
    void zoomAboutThePresentGoesOnFollowing();
    void followsNothingWithoutAPresent();
    void goesBackStepByStep();
    void stepsOfOneKindAreOne();
    void staysWithinTheCalendar();
};

bool operator==(const TimeRange &left, const TimeRange &right)
{
    return left.from == right.from && left.to == right.to;
}

char *toString(const TimeRange &range)
{
    return qstrdup(qPrintable(QString("%1 to %2").arg(range.from).arg(range.to)));
}

namespace {

constexpr qint64 minute = TimeView::minute;

} // namespace

void TestTimeView::offersSpansFromAMinuteToADay()
{
    const QVector<qint64> spans = TimeView::spans();
    QCOMPARE(spans.first(), minute);
    QCOMPARE(spans.last(), 24 * 60 * minute);
    QVERIFY(std::is_sorted(spans.cbegin(), spans.cend()));
}

void TestTimeView::spanKeepsTheMiddleOrThePresent()
{
    TimeView view({0, 10 * minute});
    view.setSpan(2 * minute);
    QCOMPARE(view.range(), (TimeRange{4 * minute, 6 * minute}));
    view = TimeView::upTo(100 * minute, 10 * minute);
    view.setSpan(2 * minute);
    QCOMPARE(view.range(), (TimeRange{98 * minute, 100 * minute}));
    QVERIFY(view.isFollowing());
}

void TestTimeView::zoomKeepsTheTimeUnderThePointer()
{
    TimeView view({100000, 200000});
    view.zoom(125000, 0.5);
    QCOMPARE(view.range(), (TimeRange{112500, 162500}));
    view.zoom(125000, 2);
    QCOMPARE(view.range(), (TimeRange{100000, 200000}));
}

void TestTimeView::zoomHasLimits()
{
    TimeView view({1000000000000, 1000000010000});
    for (int step = 0; step < 50; ++step) {
        view.zoom(1000000005000, 0.5);
    }
    QCOMPARE(view.span(), TimeView::leastSpan);
    QVERIFY(view.range().from <= 1000000005000 && view.range().to >= 1000000005000);
    for (int step = 0; step < 100; ++step) {
        view.zoom(1000000005000, 2);
    }
    QCOMPARE(view.span(), TimeView::greatestSpan);
    view.zoomInto({5000000, 5000010}, {}, {});
    QCOMPARE(view.range(), (TimeRange{4999505, 5000505}));
}

void TestTimeView::rectangleSetsTimeAndScales()
{
    TimeView view({0, 100000});
    QVERIFY(!view.values(Side::Left) && !view.values(Side::Right));
    view.zoomInto({20000, 40000}, ValueRange{1, 2}, std::nullopt);
    QCOMPARE(view.range(), (TimeRange{20000, 40000}));
    QCOMPARE(view.values(Side::Left)->least, 1.0);
    QCOMPARE(view.values(Side::Left)->greatest, 2.0);
    QVERIFY(!view.values(Side::Right));
    view.fitValues();
    QVERIFY(!view.values(Side::Left));
    QCOMPARE(view.range(), (TimeRange{20000, 40000}));
    view.back();
    QCOMPARE(view.values(Side::Left)->greatest, 2.0);
}

void TestTimeView::panMovesTimeAndChosenScales()
{
    TimeView view({100000, 200000});
    view.pan(-30000, 0.5);
    QCOMPARE(view.range(), (TimeRange{70000, 170000}));
    QVERIFY(!view.values(Side::Left));
    view.zoomInto(view.range(), std::nullopt, ValueRange{10, 20});
    view.pan(0, 0.5);
    QCOMPARE(view.values(Side::Right)->least, 15.0);
    QCOMPARE(view.values(Side::Right)->greatest, 25.0);
}

void TestTimeView::followsThePresent()
{
    TimeView view = TimeView::upTo(100 * minute, minute);
    view.setPresent(101 * minute);
    QCOMPARE(view.range(), (TimeRange{100 * minute, 101 * minute}));
    view.pause();
    view.setPresent(102 * minute);
    QCOMPARE(view.range(), (TimeRange{100 * minute, 101 * minute}));
    view.follow();
    QCOMPARE(view.range(), (TimeRange{101 * minute, 102 * minute}));
}

void TestTimeView::presentNeverGoesBack()
{
    TimeView view = TimeView::upTo(100 * minute, minute);
    view.setPresent(50 * minute);
    QCOMPARE(view.range().to, 100 * minute);
}

void TestTimeView::pausesWhenTheEndIsMovedAway()
{
    TimeView view = TimeView::upTo(100 * minute, 10 * minute);
    view.pan(-minute);
    QVERIFY(!view.isFollowing());
    view = TimeView::upTo(100 * minute, 10 * minute);
    view.zoom(95 * minute, 0.5);
    QVERIFY(!view.isFollowing());
    view = TimeView::upTo(100 * minute, 10 * minute);
    view.pan(minute); // into what has not been yet
    QVERIFY(view.isFollowing());
    QCOMPARE(view.range(), (TimeRange{90 * minute, 100 * minute}));
}

void TestTimeView::zoomAboutThePresentGoesOnFollowing()
{
    TimeView view = TimeView::upTo(100 * minute, 10 * minute);
    view.zoom(100 * minute, 0.5);
    QVERIFY(view.isFollowing());
    QCOMPARE(view.range(), (TimeRange{95 * minute, 100 * minute}));
    view.zoom(97 * minute, 4);
    QVERIFY(view.isFollowing());
    QCOMPARE(view.range(), (TimeRange{80 * minute, 100 * minute}));
}

void TestTimeView::followsNothingWithoutAPresent()
{
    TimeView view({10000, 20000});
    view.follow();
    QVERIFY(!view.isFollowing());
    QCOMPARE(view.range(), (TimeRange{10000, 20000}));
}

void TestTimeView::goesBackStepByStep()
{
    TimeView view({0, 100000});
    QVERIFY(!view.canGoBack());
    view.zoomInto({20000, 40000}, {}, {});
    view.zoomInto({25000, 30000}, {}, {});
    view.back();
    QCOMPARE(view.range(), (TimeRange{20000, 40000}));
    view.back();
    QCOMPARE(view.range(), (TimeRange{0, 100000}));
    QVERIFY(!view.canGoBack());
    view.back();
    QCOMPARE(view.range(), (TimeRange{0, 100000}));
    // Back to following is back to the present of now.
    view = TimeView::upTo(100 * minute, minute);
    view.zoomInto({1000, 20000}, {}, {});
    view.setPresent(200 * minute);
    view.back();
    QVERIFY(view.isFollowing());
    QCOMPARE(view.range(), (TimeRange{199 * minute, 200 * minute}));
}

void TestTimeView::stepsOfOneKindAreOne()
{
    TimeView view({1000000, 2000000});
    for (int step = 0; step < 5; ++step) {
        view.zoom(1500000, 0.8);
    }
    const TimeRange zoomed = view.range();
    for (int step = 0; step < 5; ++step) {
        view.pan(10000);
    }
    view.back();
    QCOMPARE(view.range(), zoomed);
    view.back();
    QCOMPARE(view.range(), (TimeRange{1000000, 2000000}));
    for (int step = 0; step < 1000; ++step) {
        view.setSpan(minute + step);
    }
    int steps = 0;
    while (view.canGoBack()) {
        view.back();
        ++steps;
    }
    QCOMPARE(steps, 100);
}

void TestTimeView::staysWithinTheCalendar()
{
    TimeView view({0, minute});
    view.pan(-1000 * minute);
    QCOMPARE(view.range(), (TimeRange{0, minute}));
    view.setRange({253402300799000 + minute, 253402300799000 + 2 * minute});
    QCOMPARE(view.range().to, 253402300799000);
    QCOMPARE(view.span(), minute);
}

QTEST_GUILESS_MAIN(TestTimeView)
#include "tst_timeview.moc"
