// Samples of live reports into the history.

#include "history/history.h"

#include <benchmark/benchmark.h>

#include <vector>

namespace {

constexpr int reports = 1000;
constexpr int points = 1000;
constexpr int rounds = 4; // different reports, one after the other

// Each with texts of its own, as they come from a Box.
QVector<Readings> someReports()
{
    QVector<Readings> some;
    for (int round = 0; round < rounds; ++round) {
        Readings report{0, QStringLiteral("10.0.0.1"), QStringLiteral("Plant"), QStringLiteral("Line 1"), {}};
        for (int point = 0; point < points; ++point) {
            Reading reading;
            reading.name = QStringLiteral("Point %1").arg(point);
            reading.address = QString::number(40001 + point);
            reading.type = QString::fromLatin1("float");
            reading.number = (point * 7919 + round * 104729) % 100003;
            reading.state = SampleState::Valid;
            report.rows.append(reading);
        }
        some.append(report);
    }
    return some;
}

qint64 timeOf(int report)
{
    return 1767225600000 + report * qint64(1000); // ms
}

void history(benchmark::State &state)
{
    QVector<Readings> some = someReports();
    for (auto _ : state) {
        History history;
        for (int report = 0; report < reports; ++report) {
            Readings &each = some[report % rounds];
            each.time = timeOf(report);
            history.add(each);
        }
        const PointId last{some.at(0).box, some.at(0).project, some.at(0).standard,
                           some.at(0).rows.constLast().name};
        if (history.extent(last).from != timeOf(0) || history.extent(last).to != timeOf(reports - 1)) {
            state.SkipWithError("the history lacks samples");
        }
    }
}

void plainVectors(benchmark::State &state)
{
    struct Plain {
        std::vector<qint64> times;
        std::vector<double> numbers;
    };
    QVector<Readings> some = someReports();
    for (auto _ : state) {
        std::vector<Plain> all(points);
        for (int report = 0; report < reports; ++report) {
            Readings &each = some[report % rounds];
            each.time = timeOf(report);
            for (int row = 0; row < each.rows.size(); ++row) {
                all[size_t(row)].times.push_back(each.time);
                all[size_t(row)].numbers.push_back(each.rows.at(row).number);
            }
        }
        benchmark::DoNotOptimize(all.data());
    }
}

} // namespace

BENCHMARK(history)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(plainVectors)->Iterations(5)->Unit(benchmark::kMillisecond);
