#include <QApplication>

#include <benchmark/benchmark.h>

// The debug log is switched off: it is no part of what is measured.
static void dropMessage(QtMsgType, const QMessageLogContext &, const QString &) {}

int main(int argc, char **argv)
{
    const QApplication app(argc, argv);
    qInstallMessageHandler(dropMessage);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
