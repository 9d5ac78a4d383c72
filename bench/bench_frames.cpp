// A stream of live reports cut back into frames, up to their dispatch.

#include "boxlink/frameassembler.h"
#include "support/segments.h"

#include <QVector>

#include <benchmark/benchmark.h>

#include <cstring>
#include <random>

namespace {

constexpr int streamSize = 64 * 1024 * 1024; // bytes, at least

const QByteArray &stream()
{
    static const QByteArray bytes = [] {
        const QByteArray report = Segments::stream(Segments::reportText(1000, 0));
        QByteArray all;
        all.reserve(streamSize + report.size());
        while (all.size() < streamSize) {
            all.append(report);
        }
        return all;
    }();
    return bytes;
}

// Feeds the stream in chunks of these sizes, the last one being what is left.
void assemble(benchmark::State &state, const QVector<int> &sizes)
{
    const QByteArray &bytes = stream();
    for (auto _ : state) {
        qint64 framed = 0;
        FrameAssembler assembler([&framed](const char *, unsigned length) { framed += length; });
        int chunk = 0;
        for (int offset = 0; offset < bytes.size(); ++chunk) {
            const int size = qMin(sizes.at(chunk % sizes.size()), bytes.size() - offset);
            assembler.assemble(bytes.constData() + offset, unsigned(size));
            offset += size;
        }
        if (framed != bytes.size()) {
            state.SkipWithError("frames were lost");
        }
    }
}

void assembleChunks(benchmark::State &state)
{
    assemble(state, {64 * 1024});
}

void assembleFragments(benchmark::State &state)
{
    std::mt19937 random(1); // the same fragments in each run
    std::uniform_int_distribution<int> size(1, 1500);
    QVector<int> sizes(100000);
    for (int &each : sizes) {
        each = size(random);
    }
    assemble(state, sizes);
}

// One copy of the stream and one search for the header through it.
void copyAndScan(benchmark::State &state)
{
    const QByteArray &bytes = stream();
    QByteArray copy(bytes.size(), Qt::Uninitialized);
    for (auto _ : state) {
        std::memcpy(copy.data(), bytes.constData(), size_t(bytes.size()));
        const char *const end = copy.constData() + copy.size();
        int headers = 0;
        for (const char *p = copy.constData(); p < end; ++p) {
            p = static_cast<const char *>(std::memchr(p, Frame::header0, size_t(end - p)));
            if (!p) {
                break;
            }
            headers += p + 1 < end && p[1] == Frame::header1 ? 1 : 0;
        }
        benchmark::DoNotOptimize(headers);
    }
}

} // namespace

BENCHMARK(assembleChunks)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(assembleFragments)->Iterations(3)->Unit(benchmark::kMillisecond);
BENCHMARK(copyAndScan)->Iterations(3)->Unit(benchmark::kMillisecond);
