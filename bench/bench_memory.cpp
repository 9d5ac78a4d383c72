// Resident memory of the program before, with and after a large project.

#include "document/projectwriter.h"
#include "mainwindow/cmainwindow.h"
#include "mainwindow/projectfiles.h"
#include "messages.h"
#include "support/largeplant.h"

#include <QApplication>
#include <QFile>
#include <QStandardItemModel>
#include <QTemporaryDir>
#include <QTreeView>

#include <benchmark/benchmark.h>

#include <malloc.h>

namespace {

// Bytes of this process that are in memory at present.
double resident()
{
    QFile file(QStringLiteral("/proc/self/status"));
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("no /proc/self/status");
    }
    for (const QByteArray &line : file.readAll().split('\n')) {
        if (line.startsWith("VmRSS:")) {
            return line.mid(6).trimmed().split(' ').first().toDouble() * 1024;
        }
    }
    return 0;
}

// The document of the plant on disk, all memory of its making given back.
qint64 writeDocument(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        qFatal("the document can't be written");
    }
    file.write(projectDocument(LargePlant::modbusProject(LargePlant::Shape()).get()));
    malloc_trim(0);
    return file.size();
}

void memory(benchmark::State &state)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("Plant.json"));
    for (auto _ : state) {
        state.counters["document"] = double(writeDocument(path));
        Messages messages;
        CMainWindow window;
        window.show();
        QCoreApplication::processEvents();
        state.counters["start"] = resident();

        messages.expect(QMessageBox::Ok);
        window.findChild<ProjectFiles *>()->loadFile(path);
        QCoreApplication::processEvents();
        state.counters["open"] = resident();

        window.projectTree()->setCurrentIndex(window.projectModel()->index(0, 0));
        messages.expect(QMessageBox::No);
        window.slotDeleteProject();
        QCoreApplication::processEvents();
        state.counters["closed"] = resident();
        if (messages.told().size() != 2 || window.projectModel()->rowCount() != 0) {
            state.SkipWithError("the project was not opened and closed");
        }
    }
}

} // namespace

BENCHMARK(memory)->Iterations(1)->Unit(benchmark::kMillisecond);
