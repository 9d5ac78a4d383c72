#include "trends/livetools.h"

#include "monitoring/monitoringpage.h"
#include "monitoring/monitoringtable.h"
#include "trends/recordingline.h"
#include "trends/trendkeys.h"
#include "trends/trendwindow.h"
#include "widgets/svgicon.h"

#include <QMenu>
#include <QPointer>
#include <QTableWidget>
#include <QToolButton>

#include <algorithm>

namespace {

constexpr int iconSize = 20; // pixels
const QString trendIcon = QStringLiteral(":/adsdemo/images/trend.svg");
const QString recordIcon = QStringLiteral(":/adsdemo/images/record.svg");
const QString stopIcon = QStringLiteral(":/adsdemo/images/stop.svg");

QString withKey(const QString &text, const QKeySequence &key)
{
    return QStringLiteral("%1 (%2)").arg(text, key.toString(QKeySequence::NativeText));
}

} // namespace

LiveTools::LiveTools(MonitoringPage *page, Windows windows)
    : QObject(page)
    , m_page(page)
    , m_windows(std::move(windows))
    , m_line(new RecordingLine(page))
{
    QToolButton *trend = addTool("trendTool", trendIcon, tr("Trend"));
    m_record = addTool("recordTool", recordIcon, tr("Record"));
    page->addLine(m_line);
    setRecording(QString(), false);
    trend->setToolTip(withKey(tr("Trend of the selected rows"), TrendKeys::trend()));
    connect(trend, &QToolButton::clicked, this, &LiveTools::trendAsked);
    connect(m_record, &QToolButton::clicked, this, &LiveTools::recordAsked);
    connect(page, &MonitoringPage::menuOpening, this, &LiveTools::extendMenu);
}

QToolButton *LiveTools::addTool(const char *name, const QString &icon, const QString &text)
{
    auto *tool = new QToolButton(m_page);
    tool->setObjectName(QLatin1String(name));
    tool->setIcon(svgIcon(icon));
    tool->setAccessibleName(text);
    tool->setIconSize({iconSize, iconSize});
    tool->setAutoRaise(true);
    tool->setFocusPolicy(Qt::TabFocus);
    m_page->addTool(tool);
    return tool;
}

QVector<Point> LiveTools::selectedPoints(const MonitoringPage *page)
{
    const QTableWidget *table = page->table();
    QVector<int> rows;
    const QItemSelection selection = table->selectionModel()->selection();
    for (const QItemSelectionRange &range : selection) {
        for (int row = range.top(); row <= range.bottom(); ++row) {
            rows.append(row);
        }
    }
    std::sort(rows.begin(), rows.end());
    rows.erase(std::unique(rows.begin(), rows.end()), rows.end());
    const LiveSource &source = page->source();
    QVector<Point> points;
    for (const int row : qAsConst(rows)) {
        const auto text = [table, row](int column) {
            const QTableWidgetItem *item = table->item(row, column);
            return item ? item->text() : QString();
        };
        if (!table->isRowHidden(row)) {
            points.append({{source.address, source.project, page->windowTitle(), text(MonitoringTable::Name)},
                           text(MonitoringTable::Addr),
                           text(MonitoringTable::DataType)});
        }
    }
    return points;
}

void LiveTools::setRecording(const QString &line, bool isEnding)
{
    const bool isRecording = !line.isEmpty();
    m_line->setText(line);
    m_record->setIcon(svgIcon(isRecording ? stopIcon : recordIcon));
    m_record->setEnabled(!isEnding);
    const QString text = isRecording ? tr("Stop Recording") : tr("Record");
    m_record->setAccessibleName(text);
    m_record->setToolTip(
        withKey(isRecording ? text : tr("Record all values of this page"), TrendKeys::record()));
}

void LiveTools::extendMenu(QMenu *menu)
{
    const bool isSelected = m_page->table()->selectionModel()->hasSelection();
    QAction *trend = menu->addAction(svgIcon(trendIcon), tr("Trend"));
    trend->setEnabled(isSelected);
    connect(trend, &QAction::triggered, this, &LiveTools::trendAsked);
    const QVector<TrendWindow *> windows = m_windows();
    for (TrendWindow *window : windows) {
        QString title = window->windowTitle();
        title.replace(QLatin1Char('&'), QLatin1String("&&"));
        QAction *add = menu->addAction(tr("Add to %1").arg(title));
        add->setEnabled(isSelected);
        const QPointer<TrendWindow> target(window);
        connect(add, &QAction::triggered, this, [this, target] {
            if (target) {
                emit addAsked(target);
            }
        });
    }
    QAction *record = menu->addAction(m_record->icon(), m_record->accessibleName());
    record->setEnabled(m_record->isEnabled());
    connect(record, &QAction::triggered, this, &LiveTools::recordAsked);
    connect(menu->addAction(tr("Open Recording...")), &QAction::triggered, this, &LiveTools::openAsked);
}
