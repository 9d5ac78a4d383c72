// Samples into a recording, beside the bare library with one prepared statement; and a recorded day read
// back.

#include "history/recorder.h"
#include "history/recordingreader.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QThread>

#include <benchmark/benchmark.h>

#include <sqlite3.h>

#include <cmath>

namespace {

constexpr qint64 begin = 1700000000000; // ms since 1970 UTC
constexpr int points = 1000;
constexpr int reports = 1000;
constexpr int inTransaction = 50000; // samples; those of Recorder::Limits

double valueOf(int point, int report)
{
    return 230 + 10 * std::sin(point + 0.01 * report);
}

Readings reportAt(int report, const QVector<Reading> &rows)
{
    return {begin + report * 1000, QStringLiteral("192.168.1.80"), QStringLiteral("plant"),
            QStringLiteral("meters"), rows};
}

QVector<Reading> rowsOf(int count)
{
    QVector<Reading> rows;
    for (int point = 0; point < count; ++point) {
        rows.append({QStringLiteral("Point %1").arg(point), QString::number(40001 + point),
                     QStringLiteral("float"), 0, SampleState::Valid, QString()});
    }
    return rows;
}

bool waitForSamples(const Recorder &recorder, qint64 samples)
{
    while (recorder.status().samples < samples) {
        if (recorder.status().state == Recorder::State::Troubled) {
            return false;
        }
        QThread::usleep(200);
    }
    return true;
}

// By the clock, since a thread of its own writes. It has no more in its queue than two transactions.
void record(benchmark::State &state)
{
    const QTemporaryDir folder;
    QVector<Reading> rows = rowsOf(points);
    for (auto _ : state) {
        RecordingTarget target;
        target.kind = RecordingTarget::Kind::File;
        target.file = folder.filePath(QStringLiteral("a.sqlite"));
        Recorder recorder;
        recorder.start(target, {});
        bool ok = true;
        for (int report = 0; report < reports; ++report) {
            for (int point = 0; point < points; ++point) {
                rows[point].number = valueOf(point, report);
            }
            recorder.add(reportAt(report, rows));
            ok = ok && waitForSamples(recorder, qint64(report + 1) * points - 2 * inTransaction);
        }
        if (!ok || !waitForSamples(recorder, qint64(reports) * points) || recorder.status().dropped > 0) {
            state.SkipWithError("samples were lost");
        }
        state.PauseTiming();
        recorder.stop();
        while (recorder.status().state != Recorder::State::Stopped) {
            QThread::usleep(200);
        }
        QFile::remove(target.file);
        state.ResumeTiming();
    }
}

void recordBare(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QByteArray path = folder.filePath(QStringLiteral("b.sqlite")).toUtf8();
    for (auto _ : state) {
        sqlite3 *base = nullptr;
        sqlite3_stmt *insert = nullptr;
        sqlite3_open(path.constData(), &base);
        const auto run = [base](const char *sql) { sqlite3_exec(base, sql, nullptr, nullptr, nullptr); };
        run("CREATE TABLE sample (point INTEGER NOT NULL, time INTEGER NOT NULL, number REAL, text TEXT, "
            "validity INTEGER NOT NULL, PRIMARY KEY (point, time)) WITHOUT ROWID");
        sqlite3_prepare_v2(base, "INSERT INTO sample VALUES (?, ?, ?, ?, ?)", -1, &insert, nullptr);
        run("BEGIN");
        int written = 0;
        for (int report = 0; report < reports; ++report) {
            for (int point = 0; point < points; ++point) {
                sqlite3_bind_int64(insert, 1, point);
                sqlite3_bind_int64(insert, 2, begin + report * 1000);
                sqlite3_bind_double(insert, 3, valueOf(point, report));
                sqlite3_bind_null(insert, 4);
                sqlite3_bind_int(insert, 5, int(SampleState::Valid));
                sqlite3_step(insert);
                sqlite3_reset(insert);
                if (++written % inTransaction == 0) {
                    run("COMMIT");
                    run("BEGIN");
                }
            }
        }
        run("COMMIT");
        state.PauseTiming();
        sqlite3_finalize(insert);
        sqlite3_close(base);
        QFile::remove(QString::fromUtf8(path));
        state.ResumeTiming();
    }
}

constexpr int dayPoints = 16;
constexpr int dayReports = 86400;

void recordDay(const RecordingTarget &target)
{
    QVector<Reading> rows = rowsOf(dayPoints);
    Recorder recorder;
    recorder.start(target, {});
    for (int report = 0; report < dayReports; ++report) {
        for (int point = 0; point < dayPoints; ++point) {
            rows[point].number = valueOf(point, report);
        }
        recorder.add(reportAt(report, rows));
        waitForSamples(recorder, qint64(report + 1) * dayPoints - 2 * inTransaction);
    }
    recorder.stop();
    while (recorder.status().state != Recorder::State::Stopped) {
        QThread::usleep(200);
    }
}

// From the name of the file to what 1,000 columns of a plot show of it.
void openDay(benchmark::State &state)
{
    const QTemporaryDir folder;
    RecordingTarget target;
    target.kind = RecordingTarget::Kind::File;
    target.file = folder.filePath(QStringLiteral("day.sqlite"));
    recordDay(target);
    for (auto _ : state) {
        RecordingReader reader;
        int answered = 0;
        QObject::connect(&reader, &RecordingReader::opened, &reader, [&reader] {
            QVector<PointId> ids;
            for (const Point &point : reader.points()) {
                ids.append(point.id);
            }
            reader.request(&reader, {ids, {begin, begin + dayReports * 1000LL}, 1000});
        });
        QObject::connect(&reader, &RecordingReader::thinned, &reader,
                         [&answered](const void *, const SampleSource::Request &,
                                     const QVector<Thinned> &answers) { answered = answers.size(); });
        reader.open(target);
        while (answered == 0) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        if (answered != dayPoints) {
            state.SkipWithError("points are missing");
        }
    }
}

} // namespace

BENCHMARK(record)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(recordBare)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(openDay)->UseRealTime()->Iterations(3)->Unit(benchmark::kMillisecond);
