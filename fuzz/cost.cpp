// What hostile input costs: each kind in one MiB and in ten, projects in a sixteenth of that. Prints the
// processor's times and fails if ten times the data takes more than its limit as long, eleven times for most.
// Run by scripts/parser-cost; no test, since it goes by the clock.

#include "boxlink/frame.h"
#include "boxlink/frameassembler.h"
#include "boxlink/monitoringaccumulator.h"
#include "document/projectreader.h"
#include "document/projectwriter.h"
#include "fuzztarget.h"
#include "parameters/parametercsv.h"

#include <QJsonDocument>
#include <QRandomGenerator>
#include <QStandardItemModel>
#include <QTextStream>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <ctime>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

constexpr int mebibyte = 1024 * 1024;
constexpr double linear = 11.0;
// For what is in the processor's caches at the small size and is not at the large one. A square would be 100.
constexpr double linearPastCaches = 16.0;
constexpr int attempts = 5; // the best one counts: whatever else runs can only add to a time

QByteArray hex(const char *bytes)
{
    return QByteArray::fromHex(bytes);
}

QByteArray repeated(const QByteArray &pattern, int size)
{
    return pattern.repeated(size / pattern.size() + 1).left(size);
}

QByteArray noise(int size)
{
    QRandomGenerator random(30088);
    QByteArray bytes(size, '\0');
    std::generate(bytes.begin(), bytes.end(), [&random] { return char(random.bounded(256)); });
    return bytes;
}

template <int chunk> void assemble(const QByteArray &stream)
{
    FrameAssembler assembler([](const char *, unsigned) {});
    for (int at = 0; at < stream.size(); at += chunk) {
        assembler.assemble(stream.constData() + at, unsigned(qMin(chunk, stream.size() - at)));
    }
}

void accumulate(const QByteArray &text)
{
    MonitoringAccumulator accumulator;
    for (int at = 0; at < text.size(); at += Frame::chunkSize) {
        accumulator.addSegment(
            Frame::chunkFrame(Frame::MonitoringSegment, 0xffffffff, 1, text.mid(at, Frame::chunkSize)));
    }
}

void readProject(const QByteArray &document)
{
    QStandardItemModel model;
    projectDocument(loadProject(model, QJsonDocument::fromJson(document).object(), QStringLiteral("/tmp")));
}

template <bool plc> void readCsv(const QByteArray &rows)
{
    const ParameterVariant &variant = plc ? ParameterVariant::plc() : ParameterVariant::modbus();
    QByteArray file = variant.headers().join(QLatin1Char(',')).toUtf8() + '\n' + rows;
    QTextStream stream(&file, QIODevice::ReadOnly);
    ParameterCsv::read(stream.readAll(), variant);
}

// A document with as many of these as fit in, %1 being a number of its own for each.
QByteArray documentOf(const char *before, const char *element, const char *after, int size)
{
    QByteArray document(before);
    for (int number = 0; document.size() < size; ++number) {
        document += (number > 0 ? "," : "") + QByteArray(element).replace("%1", QByteArray::number(number));
    }
    return document + after;
}

struct Cost {
    const char *name;
    QByteArray (*input)(int size);
    void (*take)(const QByteArray &input);
    int size = mebibyte;
    double limit = linear;
};

QByteArray headers(int size)
{
    return repeated(hex("12 34"), size);
}
QByteArray badFooters(int size)
{
    return repeated(hex("12 34 05 00 00 04") + QByteArray(1018, 'b'), size);
}
QByteArray nestedFrames(int size)
{
    return repeated(hex("12 34 05 00 ff 0f 00 00 12 34 05 00 ff ff") + QByteArray(4000, 'g'), size);
}
QByteArray rejectedCarries(int size)
{
    return repeated(hex("12 34 05 00 80 0f") + repeated(hex("12 34 00 00 10 00"), 4200), size);
}
QByteArray spaces(int size)
{
    return QByteArray(size, ' ');
}
QByteArray brackets(int size)
{
    return QByteArray(size, '[');
}
QByteArray boxes(int size)
{
    return documentOf("{\"boxs\":[", "{\"name\":\"%1\"}", "]}", size);
}
QByteArray oneBox(int size)
{
    return documentOf("{\"boxs\":[", "{\"name\":\"B\"}", "]}", size);
}
QByteArray groups(int size)
{
    return documentOf("{\"standards\":[{\"protocol\":\"Modbus\",\"datas\":[", "{}", "]}]}", size);
}
QByteArray points(int size)
{
    return documentOf("{\"standards\":[{\"protocol\":\"DLT645\",\"datas\":[{\"datas\":[", "{\"addr\":\"%1\"}",
                      "]}]}]}", size);
}
QByteArray commas(int size)
{
    return QByteArray(size, ',');
}
QByteArray digits(int size)
{
    return "D1,a,int16,1,r,Timed," + QByteArray(size, '1') + "x,,,";
}
QByteArray plainRows(int size)
{
    return repeated("0,a,float,1,r,\n", size);
}

const Cost costs[] = {
    {"frames: 12 34 over and over", headers, assemble<65536>},
    {"frames: 12 34, one-byte chunks", headers, assemble<1>},
    {"frames: noise", noise, assemble<65536>},
    {"frames: noise, one-byte chunks", noise, assemble<1>},
    {"frames: bad footers", badFooters, assemble<65536>},
    {"frames: bad footers, chunks of 100", badFooters, assemble<100>},
    {"frames: bad footers, one-byte chunks", badFooters, assemble<1>},
    {"frames: frames within frames", nestedFrames, assemble<1000>},
    {"frames: rejected carries, chunks of 3", rejectedCarries, assemble<3>},
    {"monitoring: report without an end", spaces, accumulate},
    {"project: brackets", brackets, readProject, mebibyte / 16},
    {"project: Boxes", boxes, readProject, mebibyte / 16, linearPastCaches},
    {"project: one Box again and again", oneBox, readProject, mebibyte / 16},
    {"project: groups", groups, readProject, mebibyte / 16, linearPastCaches},
    {"project: points", points, readProject, mebibyte / 16},
    {"CSV: commas", commas, readCsv<true>},
    {"CSV: one long number", digits, readCsv<true>, mebibyte, linearPastCaches},
    {"CSV: rows", plainRows, readCsv<false>},
};

double milliseconds(const Cost &cost, const QList<QByteArray> &inputs)
{
    double best = 0;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        const std::clock_t start = std::clock();
        for (const QByteArray &input : inputs) {
            cost.take(input);
        }
        const double taken = 1e3 * double(std::clock() - start) / CLOCKS_PER_SEC;
        best = attempt == 0 ? taken : std::min(best, taken);
    }
    return best;
}

// Ten inputs of the small size, each in memory of its own, so that they do not gain from the caches.
QList<QByteArray> tenOfOne(const Cost &cost)
{
    QList<QByteArray> inputs;
    for (int each = 0; each < 10; ++each) {
        inputs.append(cost.input(cost.size));
    }
    return inputs;
}

// What was taken once stays with the process, so that the price of fresh pages does not count.
void keepMemory()
{
#ifdef __GLIBC__
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, 2000000000);
#endif
}

} // namespace

// With an argument only the kinds whose name contains it.
int main(int argc, char *argv[])
{
    keepMemory();
    LLVMFuzzerInitialize(&argc, &argv);
    int failures = 0;
    int measured = 0;
    std::printf("%-40s %8s %10s %14s %7s\n", "", "KiB", "ms", "ten times, ms", "ratio");
    for (const Cost &cost : costs) {
        if (argc > 1 && !std::strstr(cost.name, argv[1])) {
            continue;
        }
        ++measured;
        const double one = milliseconds(cost, tenOfOne(cost)) / 10;
        const double ten = milliseconds(cost, {cost.input(10 * cost.size)});
        const bool passes = ten <= cost.limit * one;
        failures += passes ? 0 : 1;
        std::printf("%-40s %8d %10.2f %14.2f %7.2f%s\n", cost.name, cost.size / 1024, one, ten, ten / one,
                    passes ? "" : "  too much");
        std::fflush(stdout);
    }
    if (measured == 0) {
        std::fprintf(stderr, "no kind of input has a name with \"%s\"\n", argv[1]);
        return 2;
    }
    return failures;
}
