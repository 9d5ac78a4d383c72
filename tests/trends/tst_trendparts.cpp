#include "fakesource.h"
#include "trends/figuremodel.h"
#include "trends/polylines.h"
#include "trends/timescaledraw.h"
#include "trends/timeview.h"
#include "trends/trendtexts.h"

#include <QSet>
#include <QtTest>

#include <ctime>

#include <qwt_date_scale_engine.h>

// What a trend decides without a window: scales, styles, the value at a time, names and numbers.
class TestTrendParts : public QObject
{
    Q_OBJECT
private slots:
    void valueAtATime_data();
    void valueAtATime();
    void currentValueIsThatOfTheCurve();
    void pointIsToldInFull();
    void numbers_data();
    void numbers();
    void means_data();
    void means();
    void differences_data();
    void differences();
    void ticks_data();
    void ticks();
    void durations_data();
    void durations();
    void timesThatComeTwice_data();
    void timesThatComeTwice();
    void scaleAcrossTheEndOfSummer_data();
    void scaleAcrossTheEndOfSummer();
    void everyBreakHasAWord();
    void stepsHoldTheirValue();
    void linesAreCutToTheArea();
    void linesThatFillTheirArea_data();
    void linesThatFillTheirArea();
    void hatchingStaysInTheArea();
};

namespace {

// The zone of this computer, for a while.
class Zone
{
public:
    explicit Zone(const QString &name)
        : m_before(qgetenv("TZ"))
    {
        set(name.toLatin1());
    }
    ~Zone() { set(m_before); }

private:
    static void set(const QByteArray &name)
    {
        if (name.isEmpty()) {
            qunsetenv("TZ");
        } else {
            qputenv("TZ", name);
        }
        tzset();
    }

    QByteArray m_before;
};

QPolygonF line(const QVector<QPointF> &points)
{
    return points;
}

} // namespace

void TestTrendParts::valueAtATime_data()
{
    QTest::addColumn<qint64>("time");
    QTest::addColumn<QString>("value");
    const struct {
        const char *name;
        qint64 time;
        const char *value;
    } rows[] = {
        {"before all", 900, "(no report)"},
        {"at the first", 1000, "1.5"},
        {"between two", 1999, "1.5"},
        {"at the second", 2000, "2.5"},
        {"behind the last before a gap", 2001, "(not valid)"},
        {"in the gap", 2500, "(not valid)"},
        {"at the end of the gap", 3000, "4"},
        {"behind it", 3500, "4"},
        {"at a text", 4000, "Running"},
        {"behind it, the same", 4500, "Running"},
        {"in the gap behind the text", 5500, "(session ended)"},
    };
    for (const auto &row : rows) {
        QTest::newRow(row.name) << row.time << QString::fromUtf8(row.value);
    }
}

void TestTrendParts::valueAtATime()
{
    QFETCH(qint64, time);
    Thinned curve;
    curve.pieces = {{{1000, 1.5}, {2000, 2.5}}, {{3000, 4}}};
    curve.gaps = {{{0, 1000}, SampleState::NoReport},
                  {{2000, 3000}, SampleState::NotValid},
                  {{5000, 6000}, SampleState::Ended}};
    curve.events = {{4000, "Running"}};
    QTEST(TrendTexts::ofValue(ValueAt::of(curve, time)), "value");
    QCOMPARE(TrendTexts::ofValue(ValueAt::of(Thinned(), time)), "–");
}

// While the present is followed, the value at the end of the next picture is told before that is drawn.
void TestTrendParts::currentValueIsThatOfTheCurve()
{
    FakeSource source;
    const PointId id = source.add("Voltage", "float", {});
    FigureModel figures(nullptr, nullptr);
    figures.add(source.points());
    const auto tell = [&](qint64 time, double number) {
        ValueAt value;
        value.kind = ValueAt::Kind::Number;
        value.number = number;
        figures.setValues(Mark::End, {{id}, time}, {value});
    };
    const auto draw = [&](qint64 time) {
        Thinned curve;
        curve.statistics.count = 1;
        figures.setAnswers({{id}, {0, time}, 100, time}, {curve});
        figures.setScreen({0, time});
        return figures.index(0, FigureModel::Current).data().toString();
    };
    tell(1000, 230);
    QCOMPARE(draw(1000), "230");
    tell(2000, 240);
    QCOMPARE(figures.index(0, FigureModel::Current).data().toString(), "230");
    tell(3000, 250);
    QCOMPARE(draw(2000), "240");
    QCOMPARE(draw(3000), "250");
    QCOMPARE(draw(4000), "…"); // not told yet
}

void TestTrendParts::pointIsToldInFull()
{
    QCOMPARE(TrendTexts::ofPoint({{"127.0.0.2", "Riverside", "Relay", "Voltage A"}, "40001", "float"}),
             "Voltage A\nRelay\nRiverside\n127.0.0.2\n40001\nfloat");
    QCOMPARE(TrendTexts::ofPoint({{"", "", "Relay", "Voltage A"}, "", "float"}), "Voltage A\nRelay\nfloat");
}

void TestTrendParts::numbers_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << FakeSource::noNumber << "–";
    QTest::newRow("whole") << 230.0 << "230";
    QTest::newRow("all digits of a counter") << 123456789012345.0 << "123456789012345";
    QTest::newRow("fraction") << 230.123456 << "230.123456";
    QTest::newRow("counter of energy") << 1234567.8 << "1234567.8";
    QTest::newRow("all digits of a double") << 0.1 + 0.2 << "0.30000000000000004";
    QTest::newRow("small") << -0.000012345678 << "-0.000012345678";
    QTest::newRow("smaller") << -0.0000012345678 << "-1.2345678e-06";
    QTest::newRow("nearly immense") << 999999999999999.0 << "999999999999999";
    QTest::newRow("immense") << 1e300 << "1e+300";
}

void TestTrendParts::numbers()
{
    QFETCH(double, number);
    QTEST(TrendTexts::ofNumber(number), "text");
}

void TestTrendParts::means_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");
    QTest::newRow("none") << FakeSource::noNumber << "–";
    QTest::newRow("zero") << 0.0 << "0";
    QTest::newRow("six digits") << 230.123456 << "230.123";
    QTest::newRow("fewer") << 230.5 << "230.5";
    QTest::newRow("more before the point") << 12345678.9 << "12345679";
    QTest::newRow("small") << 0.0000012345678 << "1.23457e-06";
    QTest::newRow("immense") << -1.23456789e300 << "-1.23457e+300";
}

void TestTrendParts::means()
{
    QFETCH(double, number);
    QTEST(TrendTexts::ofMean(number), "text");
}

void TestTrendParts::differences_data()
{
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<QString>("text");
    QTest::newRow("whole") << 230.0 << 235.0 << "5";
    QTest::newRow("no noise") << 230.1 << 230.3 << "0.2";
    QTest::newRow("back") << 230.25 << 230.0 << "-0.25";
    QTest::newRow("counter of energy") << 1234567.8 << 1234570.1 << "2.3";
    QTest::newRow("immense") << 0.0 << 1e300 << "1e+300";
}

void TestTrendParts::differences()
{
    QFETCH(double, from);
    QFETCH(double, to);
    QTEST(TrendTexts::ofDifference(from, to), "text");
}

void TestTrendParts::ticks_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<double>("step");
    QTest::addColumn<QString>("text");
    QTest::newRow("alone") << 230.5 << 0.0 << "230.5";
    QTest::newRow("whole") << 230.0 << 5.0 << "230";
    QTest::newRow("tenths") << 230.0 << 0.2 << "230.0";
    QTest::newRow("far from zero") << 1234567.8 << 0.1 << "1234567.8";
    QTest::newRow("sum of steps") << 0.1 * 3 << 0.1 << "0.3";
    QTest::newRow("nearly zero") << 5.6e-17 << 0.1 << "0";
    QTest::newRow("small") << 0.000003 << 0.0000005 << "3e-06";
    QTest::newRow("immense") << 1.5e300 << 5e299 << "1.5e+300";
}

void TestTrendParts::ticks()
{
    QFETCH(double, number);
    QFETCH(double, step);
    QTEST(TrendTexts::ofTick(number, step), "text");
}

void TestTrendParts::durations_data()
{
    QTest::addColumn<qint64>("duration");
    QTest::addColumn<QString>("text");
    QTest::newRow("nothing") << qint64(0) << "0.000 s";
    QTest::newRow("ms") << qint64(7) << "0.007 s";
    QTest::newRow("minutes") << qint64(62005) << "1 min 2.005 s";
    QTest::newRow("hours") << qint64(3600000) << "1 h 0 min 0.000 s";
    QTest::newRow("back") << qint64(-1500) << "−1.500 s";
}

void TestTrendParts::durations()
{
    QFETCH(qint64, duration);
    QTEST(TrendTexts::ofDuration(duration), "text");
}

void TestTrendParts::timesThatComeTwice_data()
{
    QTest::addColumn<QString>("zone");
    QTest::addColumn<QString>("utc");
    QTest::addColumn<QString>("text");
    const auto row = [](const char *name, const char *zone, const char *utc, const char *text) {
        QTest::newRow(name) << zone << utc << text;
    };
    row("summer", "Europe/Berlin", "2026-10-24T23:59:59Z", "2026-10-25 01:59:59.000");
    row("first time", "Europe/Berlin", "2026-10-25T00:00:00Z", "2026-10-25 02:00:00.000 UTC+02:00");
    row("first time, end", "Europe/Berlin", "2026-10-25T00:59:59Z", "2026-10-25 02:59:59.000 UTC+02:00");
    row("second time", "Europe/Berlin", "2026-10-25T01:00:00Z", "2026-10-25 02:00:00.000 UTC+01:00");
    row("second time, end", "Europe/Berlin", "2026-10-25T01:59:59Z", "2026-10-25 02:59:59.000 UTC+01:00");
    row("winter", "Europe/Berlin", "2026-10-25T02:00:00Z", "2026-10-25 03:00:00.000");
    row("clocks set on", "Europe/Berlin", "2026-03-29T01:00:00Z", "2026-03-29 03:00:00.000");
    row("half an hour", "Australia/Lord_Howe", "2026-04-04T15:10:00Z", "2026-04-05 01:40:00.000 UTC+10:30");
    row("behind UTC", "America/New_York", "2026-11-01T05:30:00Z", "2026-11-01 01:30:00.000 UTC-04:00");
    row("no summer time", "Asia/Shanghai", "2026-10-25T01:00:00Z", "2026-10-25 09:00:00.000");
}

void TestTrendParts::timesThatComeTwice()
{
    QFETCH(QString, zone);
    QFETCH(QString, utc);
    const Zone there(zone);
    QTEST(TrendTexts::ofTime(QDateTime::fromString(utc, Qt::ISODate).toMSecsSinceEpoch()), "text");
}

void TestTrendParts::scaleAcrossTheEndOfSummer_data()
{
    QTest::addColumn<int>("from"); // minutes of the day
    QTest::addColumn<int>("length");
    QTest::addColumn<QStringList>("labels");
    QTest::addColumn<QString>("zones");
    const QStringList hours{"00:00 2026-10-25", "01:00", "02:00", "02:00 UTC+01:00", "03:00", "04:00"};
    QTest::newRow("hours") << 0 << 5 * 60 << hours << "UTC+02:00 – UTC+01:00";
    const QStringList quarters{"01:30 2026-10-25", "01:45", "02:00", "02:15", "02:30", "02:45",
                               "02:00 UTC+01:00",  "02:15", "02:30"};
    QTest::newRow("quarters") << 90 << 2 * 60 << quarters << "UTC+02:00 – UTC+01:00";
    QTest::newRow("summer")
        << 60 << 7
        << QStringList{"01:00 2026-10-25", "01:01", "01:02", "01:03", "01:04", "01:05", "01:06", "01:07"}
        << "UTC+02:00";
}

void TestTrendParts::scaleAcrossTheEndOfSummer()
{
    QFETCH(int, from);
    QFETCH(int, length);
    const Zone berlin("Europe/Berlin");
    const qint64 midnight = QDateTime(QDate(2026, 10, 25), QTime(0, 0)).toMSecsSinceEpoch();
    const TimeRange range{midnight + from * TimeView::minute, midnight + (from + length) * TimeView::minute};
    TimeScaleDraw scale;
    const auto labelsOf = [&scale](const TimeRange &shown) {
        scale.setScaleDiv(
            QwtDateScaleEngine(Qt::LocalTime).divideScale(double(shown.from), double(shown.to), 8, 5));
        QStringList labels;
        const QList<double> ticks = scale.scaleDiv().ticks(QwtScaleDiv::MajorTick);
        for (const double tick : ticks) {
            labels.append(scale.label(tick).text().split('\n').join(' '));
        }
        return labels;
    };
    const TimeRange days{midnight - 144 * TimeView::hour, midnight};
    for (int round = 0; round < 2; ++round) { // zoomed in and out
        QTEST(labelsOf(range), "labels");
        QCOMPARE(labelsOf(days).last(), QString("2026-10-25"));
    }
    QTEST(TrendTexts::ofZones(range), "zones");
}

void TestTrendParts::everyBreakHasAWord()
{
    QSet<QString> words;
    for (const SampleState why : {SampleState::NotValid, SampleState::NoNumber, SampleState::NoReport,
                                  SampleState::Ended, SampleState::Dropped}) {
        words.insert(TrendTexts::ofBreak(why));
    }
    QCOMPARE(words.size(), 5);
    QVERIFY(!words.contains(QString()));
}

void TestTrendParts::stepsHoldTheirValue()
{
    QCOMPARE(Polylines::steps(line({{0, 1}, {10, 1}, {20, 5}, {30, 0}})),
             line({{0, 1}, {10, 1}, {20, 1}, {20, 5}, {30, 5}, {30, 0}}));
}

void TestTrendParts::linesAreCutToTheArea()
{
    const QRectF area(0, 0, 100, 100);
    const QPolygonF inside({{10, 10}, {50, 90}, {60, 20}});
    QCOMPARE(Polylines::cut(inside, area), QVector<QPolygonF>{inside});
    // Out at the top and in again; one that passes; one beside it.
    QCOMPARE(Polylines::cut(line({{10, 50}, {20, -50}, {30, 50}}), area),
             (QVector<QPolygonF>{line({{10, 50}, {15, 0}}), line({{25, 0}, {30, 50}})}));
    QCOMPARE(Polylines::cut(line({{-50, 50}, {150, 50}}), area),
             QVector<QPolygonF>{line({{0, 50}, {100, 50}})});
    QCOMPARE(Polylines::cut(line({{-50, 150}, {150, 150}}), area), QVector<QPolygonF>());
    QCOMPARE(Polylines::cut(line({{-1e300, 50}, {1e300, 50}}), area).size(), 1);
}

void TestTrendParts::linesThatFillTheirArea_data()
{
    QTest::addColumn<int>("points");
    QTest::addColumn<double>("step"); // how far a point is from the one before, up or down
    QTest::addColumn<bool>("fills");
    QTest::newRow("level") << 900 << 0.0 << false;
    QTest::newRow("a little noise") << 900 << 5.0 << false;
    QTest::newRow("up and down all the time") << 900 << 100.0 << true;
    QTest::newRow("up and down now and then") << 20 << 300.0 << false;
    QTest::newRow("many a pixel") << 2000 << 1.0 << true;
}

void TestTrendParts::linesThatFillTheirArea()
{
    QFETCH(int, points);
    QFETCH(double, step);
    QPolygonF whole;
    for (int point = 0; point < points; ++point) {
        whole.append({1000.0 * point / (points - 1), 200 + (point % 2) * step});
    }
    const auto parts = Polylines::cut(whole, QRectF(0, 0, 1000, 600));
    QTEST(Polylines::isDense(whole, parts), "fills");
    // What is not on screen costs nothing.
    QCOMPARE(Polylines::isDense(whole, Polylines::cut(whole, QRectF(0, 400, 1000, 200))), points > 1000);
}

void TestTrendParts::hatchingStaysInTheArea()
{
    const QRectF area(13, 7, 31, 60);
    for (const bool rising : {true, false}) {
        const QVector<QLineF> lines = Polylines::hatching(area, 8, rising);
        QVERIFY(lines.size() >= 10);
        for (const QLineF &one : lines) {
            QVERIFY(area.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(one.p1()));
            QVERIFY(area.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(one.p2()));
            QVERIFY(qAbs(qAbs(one.dx()) - qAbs(one.dy())) < 1e-6);
        }
    }
}

QTEST_GUILESS_MAIN(TestTrendParts)
#include "tst_trendparts.moc"
