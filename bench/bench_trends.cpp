// A trend of 16 curves over a day, a sample a second, redrawn.

#include "history/history.h"
#include "trends/figuremodel.h"
#include "trends/figuretable.h"
#include "trends/trendplot.h"

#include <QCoreApplication>
#include <QSplitter>

#include <benchmark/benchmark.h>

namespace {

constexpr int curves = 16;
constexpr int samples = 86400;
constexpr qint64 start = 1767225600000; // ms

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

// Plot and table of figures of a window on a common screen.
struct Trend {
    Trend()
    {
        fill(&history);
        table->figures()->add(history.points());
        view = TimeView({start, start + samples * qint64(1000)});
        pane.setOrientation(Qt::Vertical);
        pane.addWidget(plot);
        pane.addWidget(table);
        pane.resize(1300, 720);
        pane.show();
        QCoreApplication::processEvents();
        for (const Point &point : history.points()) {
            request.points.append(point.id);
        }
        request.range = view.range();
        request.columns = plot->columns();
        QObject::connect(&history, &SampleSource::thinned, plot,
                         [this](const void *, const SampleSource::Request &,
                                const QVector<Thinned> &answers) { last = answers; });
    }
    void ask() { history.request(this, request); }
    void draw()
    {
        table->figures()->setAnswers(request.points, last);
        plot->setCurves(table->figures()->curves());
        plot->setView(view);
        plot->replot();
        QCoreApplication::processEvents();
    }

    History history;
    QSplitter pane;
    TrendPlot *plot = new TrendPlot;
    FigureTable *table = new FigureTable;
    TimeView view;
    SampleSource::Request request;
    QVector<Thinned> last;
};

void check(benchmark::State &state, const Trend &trend)
{
    qint64 count = 0;
    for (const Thinned &answer : trend.last) {
        count += answer.statistics.count;
    }
    if (count != qint64(curves) * samples) {
        state.SkipWithError("the plot does not show all samples");
    }
}

void redraw(benchmark::State &state)
{
    Trend trend;
    for (auto _ : state) {
        trend.ask();
        trend.draw();
    }
    check(state, trend);
}

void redrawThinned(benchmark::State &state)
{
    Trend trend;
    trend.ask();
    for (auto _ : state) {
        trend.draw();
    }
    check(state, trend);
}

} // namespace

BENCHMARK(redraw)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(redrawThinned)->Iterations(5)->Unit(benchmark::kMillisecond);
