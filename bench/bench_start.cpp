// From the start of a process to its shown window.

#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

static void start(benchmark::State &state, const char *program)
{
    const QTemporaryDir folder; // without a stored layout
    for (auto _ : state) {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.setStandardOutputFile(QProcess::nullDevice());
        process.setStandardErrorFile(QProcess::nullDevice());
        QElapsedTimer timer;
        timer.start();
        process.start(QString::fromUtf8(program), QStringList());
        if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit
            || process.exitCode() != 0) {
            state.SkipWithError("the program did not show its window");
            break;
        }
        state.SetIterationTime(double(timer.nsecsElapsed()) / 1e9);
    }
}

BENCHMARK_CAPTURE(start, program, START_PROGRAM)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(start, smallest, START_SMALLEST)
    ->UseManualTime()
    ->Iterations(1)
    ->Unit(benchmark::kMillisecond);
