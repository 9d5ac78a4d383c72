#include "history/thinning.h"
#include "rounds.h"
#include "run.h"
#include "samples.h"

#include <QtTest>

#include <array>
#include <cmath>
#include <numeric>
#include <random>

using namespace Samples;

using SampleList = QVector<Sample>;

namespace {

// What Thinned says, as one text.
QString dump(const Thinned &thinned)
{
    QStringList lines;
    for (const QVector<QPointF> &piece : thinned.pieces) {
        QStringList points;
        for (const QPointF &point : piece) {
            points.append(QString("%1:%2").arg(point.x()).arg(point.y()));
        }
        lines.append(points.join(' '));
    }
    for (const Thinned::Gap &gap : thinned.gaps) {
        lines.append(QString("gap %1-%2 %3").arg(gap.range.from).arg(gap.range.to).arg(int(gap.why)));
    }
    for (const Thinned::Event &event : thinned.events) {
        lines.append(QString("event %1 %2").arg(event.time).arg(event.text));
    }
    return lines.join('\n');
}

QString dump(const Statistics &statistics)
{
    const auto text = [](double number) {
        return std::isnan(number) ? QString("-") : QString::number(number);
    };
    return QString("%1 %2, %3 %4..%5 %6")
        .arg(statistics.count)
        .arg(statistics.notNumbers)
        .arg(text(statistics.current), text(statistics.least), text(statistics.greatest),
             text(statistics.mean));
}

Thinned thin(const SampleList &samples, const TimeRange &range, int columns, Shape shape)
{
    Thinning thinning(range, columns, shape);
    for (const Sample &sample : samples) {
        thinning.add(sample);
    }
    return thinning.finish();
}

} // namespace

Q_DECLARE_METATYPE(Sample)
Q_DECLARE_METATYPE(Shape)
Q_DECLARE_METATYPE(TimeRange)

// Samples thinned to what a plot shows, and their statistics.
class TestThinning : public QObject
{
    Q_OBJECT
private slots:
    void thins_data();
    void thins();
    void measures_data();
    void measures();
    void agreesWithModel();
    void takesRunsAsSingleOnes();
    void summariesHoldTheGreatestDoubles();
    void needsNoMoreBehindTheRange();
    void takesNothingBackwards();
};

void TestThinning::thins_data()
{
    QTest::addColumn<SampleList>("samples");
    QTest::addColumn<TimeRange>("range");
    QTest::addColumn<int>("columns");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *name, const SampleList &samples, const TimeRange &range, int columns,
                        const QString &result) {
        QTest::newRow(name) << samples << range << columns << result;
    };
    const auto notValid = SampleState::NotValid;
    const auto noReport = SampleState::NoReport;
    const auto noNumber = SampleState::NoNumber;
    row("nothing", {}, {0, 99}, 10, "");
    row("as it is", {number(0, 1), number(50, 2), number(99, 3)}, {0, 99}, 10, "0:1 50:2 99:3");
    row("first, least, greatest, last of a column",
        {number(0, 5), number(1, 9), number(2, 6), number(3, 1), number(4, 6), number(9, 5)}, {0, 99}, 10,
        "0:5 1:9 3:1 9:5");
    row("the earliest of equals", {number(0, 5), number(1, 9), number(2, 9), number(3, 5), number(4, 5)},
        {0, 99}, 10, "0:5 1:9 4:5");
    row("a column each ms", {number(0, 1), number(1, 9), number(2, 5)}, {0, 2}, 3, "0:1 1:9 2:5");
    row("more columns than ms", {number(0, 1), number(1, 9), number(2, 5)}, {0, 2}, 1000, "0:1 1:9 2:5");
    row("no column counts as one", {number(0, 1), number(1, 0), number(2, 9), number(3, 5), number(4, 2)},
        {0, 9}, 0, "0:1 1:0 2:9 4:2");
    row("one before, one behind",
        {number(-9, 7), number(-5, 1), number(50, 2), number(100, 3), number(101, 8)}, {0, 99}, 10,
        "-5:1 50:2 100:3");
    row("a line across", {number(-5, 1), number(100, 3)}, {0, 99}, 10, "-5:1 100:3");
    row("a break", {number(10, 1), broken(20, notValid), number(30, 2)}, {0, 99}, 10,
        "10:1\n30:2\ngap 10-30 0");
    row("a break that lasts", {number(10, 1), broken(20, noReport), broken(30, noReport), number(40, 2)},
        {0, 99}, 10, "10:1\n40:2\ngap 10-40 3");
    row("a break to the end", {number(10, 1), broken(20, SampleState::Ended)}, {0, 99}, 10,
        "10:1\ngap 10-99 4");
    row("a break at the begin", {broken(20, SampleState::Dropped), number(30, 2)}, {0, 99}, 10,
        "30:2\ngap 20-30 5");
    row("a break across", {number(-9, 1), broken(-5, noReport)}, {0, 99}, 10, "gap -5-99 3");
    row("a break behind", {number(10, 1), broken(120, noReport)}, {0, 99}, 10, "10:1\ngap 10-120 3");
    row("another reason",
        {number(10, 1), broken(20, notValid), broken(30, SampleState::Ended), number(40, 2)}, {0, 99}, 10,
        "10:1\n40:2\ngap 10-30 0\ngap 30-40 4");
    row("a lone number between breaks", {broken(10, notValid), number(20, 1), broken(30, notValid)}, {0, 99},
        10, "20:1\ngap 10-20 0\ngap 20-99 0");
    row("no number is a break", {number(10, 1), broken(20, noNumber, "nan"), number(30, 2)}, {0, 99}, 10,
        "10:1\n30:2\ngap 10-30 2");
    row("infinite is no number", {number(10, 1), number(20, HUGE_VAL), number(30, 2)}, {0, 99}, 10,
        "10:1\n30:2\ngap 10-30 2");
    row("breaks within a column are one",
        {number(10, 1), broken(11, notValid), number(12, 9), broken(13, noReport), number(14, 3),
         broken(15, notValid), number(16, 2)},
        {0, 99}, 10, "10:1\n12:9\n16:2\ngap 10-16 0");
    row("texts", {text(10, "on"), text(20, "on"), text(30, "off"), text(40, "on")}, {0, 99}, 10,
        "event 10 on\nevent 30 off\nevent 40 on");
    row("the last text of a column", {text(10, "a"), text(11, "b"), text(12, "c"), text(20, "c")}, {0, 99},
        10, "event 12 c");
    row("a text from before",
        {text(-9, "old"), text(-5, "on"), text(5, "on"), text(50, "off"), text(100, "z")}, {0, 99}, 10,
        "event -5 on\nevent 50 off");
    row("a text again behind a gap", {text(10, "on"), broken(20, noReport), text(30, "on")}, {0, 99}, 10,
        "gap 10-30 3\nevent 10 on\nevent 30 on");
    row("an empty text", {text(10, "on"), text(20, "")}, {0, 99}, 10, "event 10 on\nevent 20 ");
    row("a text that becomes a number, and back",
        {text(10, "12"), number(20, 1), number(30, 2), text(40, "12"), number(50, 3)}, {0, 99}, 10,
        "20:1 30:2\n50:3\nevent 10 12\nevent 40 12");
    row("a range of one ms", {number(-1, 1), number(0, 2), number(1, 3)}, {0, 0}, 10, "-1:1 0:2 1:3");
    row("a range the wrong way round", {number(-1, 1), number(0, 2), number(1, 3)}, {0, -50}, 10,
        "-1:1 0:2 1:3");
    row("all times", {number(-5, 1), number(0, 2), number(100, 3)},
        {std::numeric_limits<qint64>::min(), std::numeric_limits<qint64>::max()}, 10, "-5:1 0:2 100:3");
}

void TestThinning::thins()
{
    QFETCH(SampleList, samples);
    QFETCH(TimeRange, range);
    QFETCH(int, columns);
    QFETCH(QString, result);
    QCOMPARE(dump(thin(samples, range, columns, Shape::Line)), result);
}

void TestThinning::measures_data()
{
    QTest::addColumn<SampleList>("samples");
    QTest::addColumn<Shape>("shape");
    QTest::addColumn<QString>("result");
    const auto row = [](const char *name, const SampleList &samples, Shape shape, const QString &result) {
        QTest::newRow(name) << samples << shape << result;
    };
    const auto notValid = SampleState::NotValid;
    row("nothing", {}, Shape::Line, "0 0, - -..- -");
    row("one", {number(5, 7)}, Shape::Line, "1 0, 7 7..7 7");
    row("a line", {number(0, 0), number(10, 10), number(30, 10)}, Shape::Line, "3 0, 10 0..10 8.33333");
    row("steps hold", {number(0, 0), number(10, 10), number(30, 10)}, Shape::Step, "3 0, 10 0..10 6.66667");
    row("breaks don't count",
        {number(0, 2), number(10, 4), broken(11, notValid), number(90, 8), number(99, 8)}, Shape::Line,
        "4 0, 8 2..8 5.36842");
    row("lone ones",
        {number(0, 2), broken(11, notValid), number(40, 3), broken(50, notValid), number(90, 10)},
        Shape::Line, "3 0, 10 2..10 5");
    row("a lone one beside a line", {number(0, 2), number(10, 2), broken(11, notValid), number(40, 3)},
        Shape::Line, "3 0, 3 2..3 2");
    row("what is no number", {broken(1, SampleState::NoNumber), number(2, 2), number(3, HUGE_VAL)},
        Shape::Line, "1 2, 2 2..2 2");
    row("only the range counts",
        {broken(-9, SampleState::NoNumber), number(-5, 1000), number(0, 2), number(9, 2), number(100, -1000)},
        Shape::Line, "2 0, 2 2..2 2");
    row("nothing within", {number(-5, 1000), number(100, -1000)}, Shape::Line, "0 0, - -..- -");
    row("texts are no numbers, and not counted", {text(1, "12"), text(2, "x")}, Shape::Event,
        "0 0, - -..- -");
    row("the greatest doubles", {number(0, 1.7e308), number(50, 1.7e308), number(99, -1.7e308)}, Shape::Line,
        "3 0, -1.7e+308 -1.7e+308..1.7e+308 8.58586e+307");
    row("equal numbers stay exact", {number(0, 0.1), number(7, 0.1), number(99, 0.1)}, Shape::Line,
        "3 0, 0.1 0.1..0.1 0.1");
}

void TestThinning::measures()
{
    QFETCH(SampleList, samples);
    QFETCH(Shape, shape);
    QFETCH(QString, result);
    QCOMPARE(dump(thin(samples, {0, 99}, 10, shape).statistics), result);
}

namespace {

struct Series {
    SampleList samples;
    TimeRange range;
    int columns = 0;
    Shape shape = Shape::Line;
};

// Runs of numbers, breaks and texts, in and around a range.
Series randomSeries(unsigned seed)
{
    std::mt19937 random(seed);
    const auto upTo = [&random](int most) { return int(random() % unsigned(most + 1)); };
    Series series;
    series.range = {1000, 1000 + upTo(seed % 3 == 0 ? 20 : 5000)};
    series.columns = 1 + upTo(seed % 5 == 0 ? 3000 : 50);
    series.shape = upTo(1) ? Shape::Line : Shape::Step;
    const int count = upTo(seed % 2 == 0 ? 30 : 1500);
    const int breakEvery = 1 + upTo(40);
    qint64 time = 1000 - upTo(200);
    for (int i = 0; i < count; ++i) {
        time += 1 + upTo(upTo(20) == 0 ? 400 : 5);
        const int kind = upTo(breakEvery);
        if (kind == 0) {
            series.samples.append(
                broken(time, SampleState(std::array<int, 5>{0, 2, 3, 4, 5}.at(size_t(upTo(4))))));
        } else if (kind == 1 && breakEvery > 20) {
            series.samples.append(text(time, QString::number(upTo(2))));
        } else {
            series.samples.append(
                number(time, upTo(3) == 0 ? double(upTo(9)) : std::ldexp(upTo(1 << 20), -7)));
        }
    }
    return series;
}

// The samples that belong to the answer: one before, those of the range, one behind.
SampleList relevant(const Series &series)
{
    SampleList samples;
    for (const Sample &sample : series.samples) {
        if (sample.time < series.range.from) {
            samples.clear();
        }
        samples.append(sample);
        if (sample.time > series.range.to) {
            break;
        }
    }
    return samples;
}

bool isNumber(const Sample &sample)
{
    return sample.state == SampleState::Valid && !std::isnan(sample.number);
}

int columnOf(const Series &series, qint64 time)
{
    const qint64 length = series.range.to - series.range.from + 1;
    if (time < series.range.from || time > series.range.to) {
        return time < series.range.from ? -1 : series.columns;
    }
    int column = 0;
    while (series.range.from + length / series.columns * (column + 1)
               + length % series.columns * (column + 1) / series.columns
           <= time) {
        ++column;
    }
    return column;
}

// The numbers of the range, by column, as first, least, greatest and last.
QMap<int, QVector<double>> extremes(const Series &series, const QVector<QPair<qint64, double>> &numbers)
{
    QMap<int, QVector<double>> columns;
    for (const auto &number : numbers) {
        QVector<double> &column = columns[columnOf(series, number.first)];
        if (column.isEmpty()) {
            column.fill(number.second, 4);
        }
        column[1] = std::min(column[1], number.second);
        column[2] = std::max(column[2], number.second);
        column[3] = number.second;
    }
    return columns;
}

// Gaps by their definition; those within a column joined.
QString gapsOf(const Series &series, const SampleList &samples)
{
    Thinned all;
    for (int i = 0; i < samples.size(); ++i) {
        const SampleState state = samples.at(i).state;
        const bool follows = i > 0 && samples.at(i - 1).state != SampleState::Valid;
        if (state == SampleState::Valid || (follows && samples.at(i - 1).state == state)) {
            continue;
        }
        int end = i + 1;
        while (end < samples.size() && samples.at(end).state == state) {
            ++end;
        }
        const qint64 from = follows || i == 0 ? samples.at(i).time : samples.at(i - 1).time;
        const qint64 to =
            end < samples.size() ? samples.at(end).time : std::max(samples.constLast().time, series.range.to);
        const int column = columnOf(series, from);
        const auto isWithin = [&series](const Thinned::Gap &gap, int in) {
            return in >= 0 && in < series.columns && columnOf(series, gap.range.from) == in
                && columnOf(series, gap.range.to) == in;
        };
        const Thinned::Gap gap{{from, to}, state};
        if (!all.gaps.isEmpty() && isWithin(gap, column) && isWithin(all.gaps.constLast(), column)) {
            all.gaps.last().range.to = to;
        } else {
            all.gaps.append(gap);
        }
    }
    return dump(all);
}

double meanOf(const Series &series, const SampleList &samples)
{
    long double sum = 0;
    qint64 length = 0;
    QVector<double> lone;
    for (int i = 0; i < samples.size(); ++i) {
        const Sample &sample = samples.at(i);
        const auto counts = [&series](const Sample &each) {
            return isNumber(each) && each.time >= series.range.from && each.time <= series.range.to;
        };
        if (!counts(sample)) {
            continue;
        }
        if (i == 0 || !counts(samples.at(i - 1))) {
            lone.append(sample.number);
            continue;
        }
        const Sample &before = samples.at(i - 1);
        const qint64 passed = sample.time - before.time;
        sum +=
            passed * (series.shape == Shape::Step ? before.number : (before.number + sample.number) / 2.0L);
        length += passed;
    }
    if (length == 0) {
        return std::accumulate(lone.begin(), lone.end(), 0.0) / lone.size();
    }
    return double(sum / length);
}

void compare(const Series &series, const Thinned &thinned)
{
    const SampleList samples = relevant(series);
    QVector<QPair<qint64, double>> all;
    int notNumbers = 0;
    for (const Sample &sample : samples) {
        if (isNumber(sample)) {
            all.append({sample.time, sample.number});
        }
        const int column = columnOf(series, sample.time);
        notNumbers += sample.state == SampleState::NoNumber && column >= 0 && column < series.columns ? 1 : 0;
    }
    QVector<QPair<qint64, double>> kept;
    qint64 last = -1;
    for (const QVector<QPointF> &piece : thinned.pieces) {
        QVERIFY(!piece.isEmpty());
        for (const QPointF &point : piece) {
            QVERIFY(qint64(point.x()) > last);
            last = qint64(point.x());
            kept.append({last, point.y()});
            QVERIFY(all.contains(kept.constLast()));
        }
        // Nothing but numbers lies between two of one piece.
        const auto first = qint64(piece.constFirst().x());
        for (const Sample &sample : samples) {
            QVERIFY(isNumber(sample) || sample.time < first || sample.time > last);
        }
    }
    QCOMPARE(extremes(series, kept), extremes(series, all));
    QMap<int, int> counts;
    for (const auto &number : qAsConst(kept)) {
        QVERIFY(++counts[columnOf(series, number.first)] <= 4);
    }
    Thinned gaps;
    gaps.gaps = thinned.gaps;
    QCOMPARE(dump(gaps), gapsOf(series, samples));
    QVector<double> within;
    for (const auto &number : qAsConst(all)) {
        if (number.first >= series.range.from && number.first <= series.range.to) {
            within.append(number.second);
        }
    }
    QCOMPARE(thinned.statistics.count, qint64(within.size()));
    QCOMPARE(thinned.statistics.notNumbers, qint64(notNumbers));
    if (within.isEmpty()) {
        QVERIFY(std::isnan(thinned.statistics.mean) && std::isnan(thinned.statistics.current));
        return;
    }
    QCOMPARE(thinned.statistics.current, within.constLast());
    QCOMPARE(thinned.statistics.least, *std::min_element(within.constBegin(), within.constEnd()));
    QCOMPARE(thinned.statistics.greatest, *std::max_element(within.constBegin(), within.constEnd()));
    const double mean = meanOf(series, samples);
    QVERIFY(std::abs(thinned.statistics.mean - mean) <= 1e-9 * (1 + std::abs(mean)));
}

} // namespace

void TestThinning::agreesWithModel()
{
    for (unsigned seed = 0; seed < unsigned(rounds(400)); ++seed) {
        const Series series = randomSeries(seed);
        compare(series, thin(series.samples, series.range, series.columns, series.shape));
        QVERIFY2(!QTest::currentTestFailed(), qPrintable(QString("seed %1").arg(seed)));
    }
}

// Numbers handed over in arrays give the same as one by one, with summaries and without.
void TestThinning::takesRunsAsSingleOnes()
{
    for (unsigned seed = 0; seed < unsigned(rounds(800)); ++seed) {
        const Series series = randomSeries(seed / 2);
        Thinning thinning(series.range, series.columns, series.shape);
        for (int i = 0; i < series.samples.size();) {
            QVector<NumberAt> run;
            for (; i < series.samples.size() && isNumber(series.samples.at(i)); ++i) {
                run.append({series.samples.at(i).time, series.samples.at(i).number});
            }
            QVector<Summary> summaries;
            for (int end = Summary::length; end <= run.size(); end += Summary::length) {
                summaries.append(Summary::of(run.constData() + end - Summary::length));
            }
            thinning.add(run.constData(), run.size(), seed % 2 == 0 ? summaries.constData() : nullptr);
            if (i < series.samples.size()) {
                thinning.add(series.samples.at(i++));
            }
        }
        const Thinned runs = thinning.finish();
        compare(series, runs);
        QVERIFY2(!QTest::currentTestFailed(), qPrintable(QString("seed %1").arg(seed)));
        const Thinned single = thin(series.samples, series.range, series.columns, series.shape);
        QCOMPARE(dump(runs), dump(single));
        QCOMPARE(dump(runs.statistics), dump(single.statistics));
    }
}

void TestThinning::summariesHoldTheGreatestDoubles()
{
    constexpr double greatest = std::numeric_limits<double>::max();
    QVector<NumberAt> numbers;
    for (int i = 0; i < 2 * Summary::length; ++i) {
        numbers.append({i, i < Summary::length ? greatest : -greatest});
    }
    const Summary summaries[] = {Summary::of(numbers.constData()),
                                 Summary::of(numbers.constData() + Summary::length)};
    Thinning thinning({0, 99}, 1, Shape::Line);
    thinning.add(numbers.constData(), numbers.size(), summaries);
    const Thinned thinned = thinning.finish();
    QCOMPARE(dump(thinned), QString("0:1.79769e+308 16:-1.79769e+308 31:-1.79769e+308"));
    QVERIFY(std::abs(thinned.statistics.mean) < greatest / 1e9);
}

void TestThinning::needsNoMoreBehindTheRange()
{
    Thinning thinning({0, 99}, 10, Shape::Line);
    QVERIFY(thinning.add(number(-1, 1)));
    QVERIFY(thinning.add(number(99, 1)));
    QVERIFY(!thinning.add(number(100, 1)));
    QVERIFY(!thinning.add(number(101, 5)));
    const NumberAt more{102, 5};
    QVERIFY(!thinning.add(&more, 1));
    QCOMPARE(dump(thinning.finish()), QString("-1:1 99:1 100:1"));
}

void TestThinning::takesNothingBackwards()
{
    const SampleList samples{number(-5, 1), number(-8, 2), number(10, 3), number(10, 4),
                             number(9, 5),  number(11, 6), text(11, "x"), broken(3, SampleState::Ended)};
    QCOMPARE(dump(thin(samples, {0, 99}, 100, Shape::Line)), QString("-5:1 10:3 11:6"));
}

QTEST_GUILESS_MAIN(TestThinning)
#include "tst_thinning.moc"
