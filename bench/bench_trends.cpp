// A trend of 16 curves over a day, a sample a second, redrawn as it is, and each time a little further.

#include "history/history.h"
#include "trends/trendfeed.h"
#include "trends/trendwindow.h"
#include "trends/viewcontrol.h"

#include <QCoreApplication>

#include <benchmark/benchmark.h>

namespace {

constexpr int curves = 16;
constexpr int samples = 86400;
constexpr qint64 start = 1767225600000; // ms
constexpr qint64 end = start + samples * qint64(1000);

// Noise upon a wave of its own for each curve, so that each column of the plot has many numbers.
void fill(History *history)
{
    Readings report{0, QStringLiteral("10.0.0.1"), QStringLiteral("Plant"), QStringLiteral("Line 1"), {}};
    for (int curve = 0; curve < curves; ++curve) {
        Reading reading;
        reading.name = QStringLiteral("Point %1").arg(curve);
        reading.type = QStringLiteral("float");
        reading.state = SampleState::Valid;
        report.rows.append(reading);
    }
    for (int at = 0; at < samples; ++at) {
        report.time = start + at * qint64(1000);
        for (int curve = 0; curve < curves; ++curve) {
            report.rows[curve].number = 100 * curve + at % (3600 * (curve + 1)) / 60.0 + at * 7919 % 31;
        }
        history->add(report);
    }
}

// Has all answers ready.
class ThinnedByHand : public SampleSource
{
public:
    QVector<Point> points() const override { return all; }
    std::optional<Point> point(const PointId &) const override { return {}; }
    TimeRange extent(const PointId &) const override { return {start, end}; }
    bool isGrowing() const override { return false; }
    void request(const void *asker, const Request &request) override
    {
        emit thinned(asker, request, answers);
    }
    void requestAt(const void *asker, const Moment &moment) override
    {
        emit knownAt(asker, moment, QVector<ValueAt>(moment.points.size()));
    }
    std::unique_ptr<SampleCursor> cursor(const PointId &, const TimeRange &) const override { return {}; }

    QVector<Point> all;
    QVector<Thinned> answers;
};

// Shows the same again and again, in a window on a common screen.
class Trend
{
public:
    explicit Trend(SampleSource *source)
        : m_window(new TrendWindow(source))
    {
        TrendFeed::interval = 0;
        m_window->resize(1300, 720);
        m_window->show();
        m_window->addPoints(source->points());
        m_control = m_window->findChild<ViewControl *>();
        QObject::connect(
            source, &SampleSource::thinned, m_window.get(),
            [this](const void *, const SampleSource::Request &request, const QVector<Thinned> &all) {
                columns = request.columns;
                answers = all;
            });
        redraw();
    }
    void redraw(qint64 moved = 0)
    {
        m_control->setView(TimeView({start + moved, end + moved}));
        for (int round = 0; round < 3; ++round) { // question, answer, picture
            QCoreApplication::processEvents();
        }
    }

    int columns = 0;
    QVector<Thinned> answers;

private:
    std::unique_ptr<TrendWindow> m_window;
    ViewControl *m_control = nullptr;
};

void measure(benchmark::State &state, Trend *trend)
{
    const qint64 step = state.range(0) * (end - start) / trend->columns;
    qint64 moved = 0;
    for (auto _ : state) {
        trend->redraw(moved);
        moved = moved < 10 * step ? moved + step : 0;
    }
    qint64 count = 0;
    for (const Thinned &answer : qAsConst(trend->answers)) {
        count += answer.statistics.count;
    }
    if (count < qint64(curves) * samples * 98 / 100 || trend->columns < 1000) {
        state.SkipWithError("the plot does not show all samples");
    }
}

void redraw(benchmark::State &state)
{
    History history;
    fill(&history);
    Trend trend(&history);
    measure(state, &trend);
}

void redrawThinned(benchmark::State &state)
{
    History history;
    fill(&history);
    ThinnedByHand ready;
    ready.all = history.points();
    {
        const Trend first(&history);
        ready.answers = first.answers;
    }
    Trend trend(&ready);
    measure(state, &trend);
}

} // namespace

// By how many columns of pixels each picture is further than the one before.
BENCHMARK(redraw)->Arg(0)->Arg(1)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(redrawThinned)->Arg(0)->Arg(1)->Iterations(5)->Unit(benchmark::kMillisecond);
