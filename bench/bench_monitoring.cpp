// Live reports from their segments to the table.

#include "boxes/protocol.h"
#include "history/history.h"
#include "history/recorder.h"
#include "model/projecttree.h"
#include "monitoring/monitoringpage.h"
#include "monitoring/monitoringtable.h"
#include "monitoring/monitoringview.h"
#include "support/segments.h"
#include "trends/recordings.h"
#include "trends/trends.h"
#include "trends/trendwindow.h"

#include <QApplication>
#include <QDateTime>
#include <QHeaderView>
#include <QLineEdit>
#include <QMainWindow>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QThread>
#include <QTreeView>

#include <benchmark/benchmark.h>

#include <algorithm>

namespace {

constexpr int rounds = 4;      // different reports, one after the other
constexpr int columnCount = 6; // of the table of live values
constexpr int livePoints = 1000;

void report(benchmark::State &state)
{
    QStandardItemModel model;
    QStandardItem *project = ProjectTree::makeProject(QStringLiteral("Plant"), QString(), QString());
    ProjectTree::appendMissingFolders(project);
    model.appendRow(project);
    QTreeView tree;
    tree.setModel(&model);
    QTabWidget tabs;
    tabs.resize(1024, 500);
    tabs.show();
    MonitoringView view(&tabs, &model, &tree);
    Protocol protocol;
    QObject::connect(&protocol, &Protocol::dataReceived, &view, &MonitoringView::receive);

    QList<QByteArray> streams;
    for (int round = 0; round < rounds; ++round) {
        streams.append(Segments::stream(Segments::reportText(int(state.range(0)), round)));
    }
    const auto receive = [&protocol](const QByteArray &stream) {
        constexpr int chunk = 64 * 1024; // as a socket hands them out
        for (int offset = 0; offset < stream.size(); offset += chunk) {
            protocol.assembleFrames(stream.constData() + offset,
                                    unsigned(qMin(chunk, stream.size() - offset)));
        }
        QCoreApplication::processEvents();
    };
    receive(streams.at(0)); // makes the node
    receive(streams.at(1)); // makes the tab
    int next = 2;
    for (auto _ : state) {
        receive(streams.at(next++ % rounds));
    }
    if (!tabs.findChild<QTableWidget *>() || tabs.findChild<QTableWidget *>()->rowCount() != state.range(0)) {
        state.SkipWithError("the table does not hold the report");
    }
}

constexpr int watchedPoints = 10000;
constexpr int watchedCurves = 16;

// The quarter of an hour before, a report a second: of the curves all of it, of the others what the history
// has room for.
void fill(History *history)
{
    constexpr int reports = 900;
    constexpr int fullReports = 300;
    Readings report{0, {}, QStringLiteral("Plant"), QStringLiteral("Line 1"), {}};
    const qint64 begin = QDateTime::currentMSecsSinceEpoch() - reports * qint64(1000);
    for (int at = 0; at < reports; ++at) {
        report.time = begin + at * qint64(1000);
        for (int point = report.rows.size();
             point < (at < reports - fullReports ? watchedCurves : watchedPoints); ++point) {
            Reading reading;
            reading.name = QStringLiteral("Point %1").arg(point);
            reading.address = QString::number(40001 + point);
            reading.type = QStringLiteral("float");
            reading.state = SampleState::Valid;
            report.rows.append(reading);
            if (point < watchedCurves) {
                history->hold({report.box, report.project, report.standard, reading.name});
            }
        }
        for (int point = 0; point < report.rows.size(); ++point) {
            report.rows[point].number = (point * 7919 + at * 104729) % 100003;
        }
        history->add(report);
    }
}

// Whether the curves reach back as far as they show.
bool isFilled(const QMainWindow &window)
{
    const auto *trend = window.findChild<TrendWindow *>();
    const QVector<Point> points = trend->points();
    return points.size() == watchedCurves
        && std::all_of(points.begin(), points.end(), [trend](const Point &point) {
               const TimeRange extent = trend->source()->extent(point.id);
               return extent.to - extent.from > 890 * qint64(1000);
           });
}

// A trend of 16 points of the page in front, and a recording of all its points into the file.
bool watch(QMainWindow *window, MonitoringView *view, const QString &file)
{
    auto *trends = window->findChild<Trends *>();
    MonitoringPage *page = view->currentPage();
    for (int row = 0; row < watchedCurves; ++row) {
        page->table()->item(row, 0)->setSelected(true);
    }
    trends->showTrend();
    RecordingTarget target;
    target.kind = RecordingTarget::Kind::File;
    target.file = file;
    trends->findChild<Recordings *>()->start(page, {QStringLiteral("all"), page->windowTitle(), {}}, target);
    return isFilled(*window);
}

// Until the next report: the recorder has written the last one, and the trend wants to be drawn anew.
void rest(const QMainWindow &window, qint64 samples)
{
    const auto *recorder = window.findChild<Recorder *>();
    do {
        QThread::msleep(250);
    } while (recorder && recorder->status().samples < samples);
}

// The same in a window of its own, with nothing else to do, or with a trend and a recording of them. Reports
// come at intervals; what the recorder does meanwhile beside the window is not measured.
void reportWatched(benchmark::State &state)
{
    const bool isWatched = state.range(0) != 0;
    QStandardItemModel model;
    QStandardItem *project = ProjectTree::makeProject(QStringLiteral("Plant"), QString(), QString());
    ProjectTree::appendMissingFolders(project);
    model.appendRow(project);
    const QTemporaryDir folder;
    QMainWindow window;
    auto *tabs = new QTabWidget;
    window.setCentralWidget(tabs);
    MonitoringView view(tabs, &model, nullptr);
    if (isWatched) {
        const auto *trends = new Trends(&view, &window);
        fill(trends->findChild<History *>());
    }
    window.resize(1024, 500);
    window.show();
    Protocol protocol;
    QObject::connect(&protocol, &Protocol::dataReceived, &view, &MonitoringView::receive);
    QList<QByteArray> streams;
    for (int round = 0; round < rounds; ++round) {
        streams.append(Segments::stream(Segments::reportText(watchedPoints, round)));
    }
    int next = 0;
    const auto receive = [&] {
        const QByteArray &stream = streams.at(next++ % rounds);
        protocol.assembleFrames(stream.constData(), unsigned(stream.size()));
        QCoreApplication::processEvents();
    };
    receive(); // makes the node
    receive(); // makes the tab
    if (isWatched && !watch(&window, &view, folder.filePath(QStringLiteral("values.sqlite")))) {
        state.SkipWithError("the window does not show the points of a quarter of an hour");
    }
    qint64 samples = 0;
    for (auto _ : state) {
        receive();
        state.PauseTiming();
        samples += watchedPoints;
        rest(window, samples);
        state.ResumeTiming();
    }
}

QVariantList liveRows(int round, int points = livePoints, int step = 1)
{
    QVariantList rows;
    for (int point = 0; point < points; point += step) {
        rows.append(QVariantMap{
            {QStringLiteral("name"), QStringLiteral("Point %1").arg(point)},
            {QStringLiteral("addr"), QString::number(40001 + point)},
            {QStringLiteral("dataType"), QStringLiteral("float")},
            {QStringLiteral("value"), QString::number((point * 7919 + round * 104729) % 100003)},
            {QStringLiteral("valid"), point % 10 == 0 ? QStringLiteral("0") : QStringLiteral("1")},
            {QStringLiteral("updateTime"), QString()}});
    }
    return rows;
}

QString timeOf(int round)
{
    return QStringLiteral("2026-01-01 00:00:%1").arg(round % 60, 2, 10, QLatin1Char('0'));
}

// A shown table of live values, sorted by a column and scrolled.
void prepare(QTableWidget *table, const QVariantList &rows, int sortColumn)
{
    table->resize(1024, 500);
    MonitoringTable::update(table, rows, timeOf(0));
    table->show();
    table->sortByColumn(sortColumn, Qt::AscendingOrder);
    QCoreApplication::processEvents();
    table->verticalScrollBar()->setValue(table->verticalScrollBar()->maximum() / 2);
    QCoreApplication::processEvents();
}

// Whether each row shows the value of its own point.
bool holds(const QTableWidget &table, const QVariantList &rows)
{
    for (int row = 0; row < table.rowCount(); ++row) {
        const int point = table.item(row, 0)->text().mid(6).toInt(); // behind "Point "
        if (table.item(row, 3)->text() != rows.at(point).toMap().value(QStringLiteral("value")).toString()) {
            return false;
        }
    }
    return table.rowCount() == rows.size();
}

void liveTable(benchmark::State &state)
{
    QList<QVariantList> reports;
    for (int round = 0; round < rounds; ++round) {
        reports.append(liveRows(round));
    }
    QTableWidget table;
    prepare(&table, reports.at(0), int(state.range(0)));
    int round = 1;
    for (auto _ : state) {
        MonitoringTable::update(&table, reports.at(round % rounds), timeOf(round));
        QCoreApplication::processEvents();
        ++round;
    }
    if (!holds(table, reports.at((round - 1) % rounds))) {
        state.SkipWithError("a value stands in the wrong row");
    }
}

// Every second point leaves a filtered page.
void liveTableHalved(benchmark::State &state)
{
    const int points = int(state.range(0));
    const QVariantList all = liveRows(0, points);
    const QVariantList half = liveRows(1, points, 2);
    for (auto _ : state) {
        state.PauseTiming();
        {
            MonitoringPage page;
            page.findChild<QLineEdit *>(QStringLiteral("filter"))->setText(QStringLiteral("7"));
            auto *table = page.findChild<QTableWidget *>();
            prepare(table, all, 0);
            state.ResumeTiming();
            MonitoringTable::update(table, half, timeOf(1));
            QCoreApplication::processEvents();
            state.PauseTiming();
            if (table->rowCount() != half.size()) {
                state.SkipWithError("the table does not hold the report");
            }
        }
        state.ResumeTiming();
    }
}

// The same texts into rows whose numbers are known.
void liveTableLeast(benchmark::State &state)
{
    const QVariantList rows = liveRows(0);
    QTableWidget table;
    prepare(&table, rows, 0);
    table.setSortingEnabled(false);
    QList<QVector<QStringList>> texts;
    for (int round = 0; round < rounds; ++round) {
        QVector<QStringList> report(livePoints);
        const QVariantList live = liveRows(round);
        for (int row = 0; row < livePoints; ++row) {
            const int point = table.item(row, 0)->text().mid(6).toInt();
            const QVariantMap values = live.at(point).toMap();
            report[row] =
                QStringList{values.value(QStringLiteral("name")).toString(),
                            values.value(QStringLiteral("addr")).toString(),
                            values.value(QStringLiteral("dataType")).toString(),
                            values.value(QStringLiteral("value")).toString(), table.item(row, 4)->text()};
        }
        texts.append(report);
    }
    int round = 1;
    for (auto _ : state) {
        for (int row = 0; row < livePoints; ++row) {
            for (int column = 0; column < columnCount - 1; ++column) {
                table.item(row, column)->setText(texts.at(round % rounds).at(row).at(column));
            }
            table.item(row, columnCount - 1)->setText(timeOf(round));
        }
        QCoreApplication::processEvents();
        ++round;
    }
}

} // namespace

BENCHMARK(report)->Arg(1000)->Iterations(2)->Unit(benchmark::kMillisecond);
BENCHMARK(report)->Arg(10000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(reportWatched)->Arg(0)->Arg(1)->Iterations(5)->Unit(benchmark::kMillisecond);
BENCHMARK(liveTable)->DenseRange(0, columnCount - 1)->Iterations(20)->Unit(benchmark::kMillisecond);
BENCHMARK(liveTableHalved)->Arg(8000)->Arg(16000)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(liveTableLeast)->Iterations(20)->Unit(benchmark::kMillisecond);
