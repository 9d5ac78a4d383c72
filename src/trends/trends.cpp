#include "trends/trends.h"

#include "history/history.h"
#include "history/recordingreader.h"
#include "monitoring/monitoringpage.h"
#include "monitoring/monitoringview.h"
#include "trends/livetools.h"
#include "trends/recordingopener.h"
#include "trends/recordings.h"
#include "trends/trendkeys.h"
#include "trends/trendwindow.h"
#include "widgets/tell.h"

#include <QAction>
#include <QDate>
#include <QEvent>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>

namespace {

// What a file is called by default: one a Standard and day.
QString fileNameFor(const QString &project, const QString &standard)
{
    const QString name = (project + QLatin1Char(' ') + standard).trimmed();
    return name + QLatin1Char(' ') + QDate::currentDate().toString(Qt::ISODate);
}

} // namespace

Trends::Trends(MonitoringView *view, QWidget *window)
    : QObject(window)
    , m_view(view)
    , m_window(window)
    , m_history(new History(History::defaultBudget, this))
    , m_recordings(new Recordings(window, this))
{
    addAction("actionTrend", TrendKeys::trend(), &Trends::showTrend);
    addAction("actionRecord", TrendKeys::record(), &Trends::record);
    addAction("actionOpen_Recording", TrendKeys::open(), &Trends::openRecording);
    connect(view, &MonitoringView::pageMade, this, &Trends::equip);
    connect(view, &MonitoringView::shown, this, &Trends::take);
    connect(view, &MonitoringView::pageClosed, this, &Trends::close);
    connect(view, &MonitoringView::sessionEnded, this, &Trends::endSession);
    connect(m_recordings, &Recordings::changed, this, &Trends::showRecording);
    window->installEventFilter(this);
}

Trends::~Trends()
{
    // They use the history and readers, which die with this.
    const auto windows = m_window->findChildren<TrendWindow *>(QString(), Qt::FindDirectChildrenOnly);
    qDeleteAll(windows);
}

void Trends::addAction(const char *name, const QKeySequence &key, void (Trends::*command)())
{
    auto *action = new QAction(this);
    action->setObjectName(QLatin1String(name));
    action->setShortcut(key);
    action->setAutoRepeat(false);
    connect(action, &QAction::triggered, this, command);
    m_window->addAction(action);
    m_actions.append(action);
}

bool Trends::eventFilter(QObject *watched, QEvent *event)
{
    // A window that is minimised is hidden by the desktop, which is another matter.
    if (watched == m_window && event->type() == QEvent::Hide && !event->spontaneous()) {
        const auto windows = m_window->findChildren<TrendWindow *>(QString(), Qt::FindDirectChildrenOnly);
        for (TrendWindow *window : windows) {
            window->close();
        }
        m_recordings->stopAll();
    }
    return QObject::eventFilter(watched, event);
}

void Trends::equip(MonitoringPage *page)
{
    const auto *tools = new LiveTools(page, [this] { return liveWindows(); });
    connect(tools, &LiveTools::trendAsked, this, [this, page] { showTrendOf(page); });
    connect(tools, &LiveTools::recordAsked, this, [this, page] { recordPage(page); });
    connect(tools, &LiveTools::openAsked, this, &Trends::openRecording);
    connect(tools, &LiveTools::addAsked, this, [page](TrendWindow *window) {
        window->addPoints(LiveTools::selectedPoints(page));
        window->raise();
        window->activateWindow();
    });
}

void Trends::take(MonitoringPage *page, const LiveSource &source, const QVariantList &rows)
{
    Readings report;
    report.time = m_clock.now();
    report.box = source.address;
    report.project = source.project;
    report.standard = page->windowTitle();
    report.boxName = source.box;
    QVector<Reading> &before = m_before[page];
    report.rows = readRows(rows, before);
    before = report.rows;
    m_shown[page].insert({source.address, source.project});
    m_history->add(report);
    m_recordings->add(report);
}

void Trends::endSession(const QString &address)
{
    const qint64 time = m_clock.now();
    m_history->endSession(address, time);
    m_recordings->endSession(address, time);
}

void Trends::close(MonitoringPage *page)
{
    m_recordings->stop(page);
    m_before.remove(page);
    const auto sources = m_shown.take(page);
    for (const auto &source : sources) {
        m_history->forget(source.first, source.second, page->windowTitle());
    }
}

void Trends::showTrend()
{
    showTrendOf(m_view ? m_view->currentPage() : nullptr);
}

void Trends::showTrendOf(const MonitoringPage *page)
{
    const int number = freeNumber();
    TrendWindow *window = openWindow(m_history, number > 1 ? QStringLiteral(" (%1)").arg(number) : QString());
    connect(window, &TrendWindow::recordAsked, this, [this, window] { recordWindow(window); });
    m_trends.append({window, number});
    if (page) {
        window->addPoints(LiveTools::selectedPoints(page));
    }
}

int Trends::freeNumber() const
{
    int number = 1;
    const auto isTaken = [&number](const Trend &trend) { return trend.window && trend.number == number; };
    while (std::any_of(m_trends.begin(), m_trends.end(), isTaken)) {
        ++number;
    }
    return number;
}

TrendWindow *Trends::openWindow(SampleSource *source, const QString &titleEnd)
{
    auto *window = new TrendWindow(source, m_window);
    window->setClock([this] { return m_clock.present(); });
    const auto addEnd = [window, titleEnd](const QString &title) {
        if (!title.endsWith(titleEnd)) {
            window->setWindowTitle(title + titleEnd);
        }
    };
    addEnd(window->windowTitle());
    connect(window, &QWidget::windowTitleChanged, window, addEnd);
    // Over itself: a dialog of the main window would bring that to the front.
    connect(window, &TrendWindow::openAsked, this, [this, window] { openRecordingOver(window); });
    connect(window, &TrendWindow::dropped, this, [this, window](QObject *table) {
        // Not before the drag has come to its end.
        m_dropped = table;
        QTimer::singleShot(0, window, [this, window] {
            if (m_dropped) {
                addDropped(window, m_dropped);
            }
        });
    });
    window->show();
    return window;
}

void Trends::addDropped(TrendWindow *window, const QObject *table)
{
    const auto *page = qobject_cast<const MonitoringPage *>(table->parent());
    if (!page) {
        return;
    }
    if (window->source() != m_history) {
        Tell::information(window, window->windowTitle(),
                          tr("This window shows a recording. Live values go into a trend of their own."));
        return;
    }
    window->addPoints(LiveTools::selectedPoints(page));
}

QVector<TrendWindow *> Trends::liveWindows()
{
    m_trends.erase(
        std::remove_if(m_trends.begin(), m_trends.end(), [](const Trend &trend) { return !trend.window; }),
        m_trends.end());
    QVector<TrendWindow *> windows;
    for (const Trend &trend : qAsConst(m_trends)) {
        windows.append(trend.window);
    }
    return windows;
}

void Trends::record()
{
    if (MonitoringPage *page = m_view ? m_view->currentPage() : nullptr) {
        recordPage(page);
    }
}

void Trends::recordPage(MonitoringPage *page)
{
    const QString standard = page->windowTitle();
    m_recordings->toggle(page, {standard, standard, {}}, fileNameFor(page->source().project, standard));
}

void Trends::recordWindow(TrendWindow *window)
{
    const QVector<Point> points = window->points();
    if (points.isEmpty()) {
        Tell::information(window, tr("Record"), tr("There are no points yet that could be recorded."));
        return;
    }
    QSet<PointId> ids;
    for (const Point &point : points) {
        ids.insert(point.id);
    }
    const PointId &first = points.first().id;
    m_recordings->toggle(window, {tr("%1 (points: %2)").arg(window->windowTitle()).arg(ids.size()), {}, ids},
                         fileNameFor(first.project, first.standard));
}

void Trends::showRecording(QWidget *owner)
{
    const Recording *recording = m_recordings->of(owner);
    const QString line = recording ? recording->line() : QString();
    if (auto *tools = owner->findChild<LiveTools *>()) {
        tools->setRecording(line, recording && recording->isStopping());
    } else if (auto *window = qobject_cast<TrendWindow *>(owner)) {
        window->setRecordingLine(line);
    }
}

void Trends::openRecordingOver(QWidget *window)
{
    auto *opener = new RecordingOpener(window, this);
    connect(opener, &RecordingOpener::opened, this, &Trends::showRecorded);
    opener->ask();
}

void Trends::showRecorded(RecordingReader *recording, const QVector<Point> &points)
{
    const RecordingTarget target = recording->target();
    const QString name =
        target.kind == RecordingTarget::Kind::File ? QFileInfo(target.file).fileName() : target.text();
    TrendWindow *window = openWindow(recording, QStringLiteral(" · ") + name);
    recording->setParent(this);
    connect(window, &QObject::destroyed, recording, &QObject::deleteLater);
    window->addPoints(points);
}
