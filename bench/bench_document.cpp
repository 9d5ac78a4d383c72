// Saving and loading of a large project.

#include "document/projectfile.h"
#include "document/projectreader.h"
#include "document/projectwriter.h"
#include "support/largeplant.h"

#include <QFile>
#include <QJsonDocument>
#include <QStandardItemModel>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

using LargePlant::Shape;
using MakeProject = std::unique_ptr<QStandardItem> (*)(const Shape &);

namespace {

constexpr Shape plant;
constexpr Shape tenth{10};

void save(benchmark::State &state, MakeProject makeProject, Shape shape)
{
    const auto project = makeProject(shape);
    for (auto _ : state) {
        const QByteArray bytes = projectDocument(project.get());
        benchmark::DoNotOptimize(bytes.constData());
        state.counters["bytes"] = double(bytes.size());
    }
}

// toJson() of the finished document alone.
void saveLeast(benchmark::State &state, Shape shape)
{
    const QJsonDocument document(buildProjectJson(LargePlant::modbusProject(shape).get()));
    for (auto _ : state) {
        const QByteArray bytes = document.toJson();
        benchmark::DoNotOptimize(bytes.constData());
    }
}

void load(benchmark::State &state, MakeProject makeProject, Shape shape)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Plant.json"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly)) {
            state.SkipWithError("the document can't be written");
        }
        file.write(projectDocument(makeProject(shape).get()));
    }
    for (auto _ : state) {
        QStandardItemModel model;
        {
            const std::optional<QJsonObject> document = readProjectFile(path);
            loadProject(model, *document, folder.path());
        }
        state.PauseTiming();
        model.clear();
        state.ResumeTiming();
    }
}

// fromJson() of the bytes alone.
void loadLeast(benchmark::State &state, Shape shape)
{
    const QByteArray bytes = projectDocument(LargePlant::modbusProject(shape).get());
    for (auto _ : state) {
        const QJsonDocument document = QJsonDocument::fromJson(bytes);
        benchmark::DoNotOptimize(document.isObject());
    }
}

void saveAndLoad(benchmark::State &state, MakeProject makeProject, Shape shape)
{
    const auto project = makeProject(shape);
    for (auto _ : state) {
        QStandardItemModel model;
        loadProject(model, QJsonDocument::fromJson(projectDocument(project.get())).object(), QString());
        state.PauseTiming();
        model.clear();
        state.ResumeTiming();
    }
}

void once(benchmark::internal::Benchmark *benchmark)
{
    benchmark->Iterations(1)->Unit(benchmark::kMillisecond);
}

} // namespace

BENCHMARK_CAPTURE(save, 100000, LargePlant::modbusProject, plant)->Apply(once);
BENCHMARK_CAPTURE(saveLeast, 100000, plant)->Apply(once);
BENCHMARK_CAPTURE(save, 10000, LargePlant::modbusProject, tenth)->Apply(once);
BENCHMARK_CAPTURE(saveLeast, 10000, tenth)->Apply(once);
BENCHMARK_CAPTURE(load, 100000, LargePlant::modbusProject, plant)->Apply(once);
BENCHMARK_CAPTURE(loadLeast, 100000, plant)->Apply(once);
BENCHMARK_CAPTURE(saveAndLoad, dlt645, LargePlant::meterProject, tenth)->Apply(once);
BENCHMARK_CAPTURE(saveAndLoad, modbus, LargePlant::modbusProject, tenth)->Apply(once);
