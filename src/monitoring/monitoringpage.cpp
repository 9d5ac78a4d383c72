#include "monitoring/monitoringpage.h"

#include "log/csvcell.h"
#include "monitoring/livedelegate.h"
#include "monitoring/livetable.h"
#include "monitoring/monitoringtable.h"
#include "monitoring/sourceline.h"
#include "widgets/choosefile.h"
#include "widgets/svgicon.h"
#include "widgets/tablecopy.h"
#include "widgets/tell.h"

#include <QAction>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QSaveFile>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QTimerEvent>
#include <QVBoxLayout>

namespace {

constexpr int second = 1000; // ms

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QSaveFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

} // namespace

MonitoringPage::MonitoringPage(QWidget *parent)
    : QWidget(parent)
    , m_layout(new QVBoxLayout(this))
    , m_tools(new QHBoxLayout)
    , m_source(new SourceLine(this))
    , m_filter(new QLineEdit(this))
    , m_onlyNotValid(new QCheckBox(tr("Only not valid"), this))
    , m_shown(new QLabel(this))
    , m_table(new LiveTable(this))
    , m_delegate(new LiveDelegate(m_table))
    , m_clock(liveTime)
{
    m_filter->setObjectName(QStringLiteral("filter"));
    m_filter->setPlaceholderText(tr("Filter by name or address"));
    m_filter->setAccessibleName(m_filter->placeholderText());
    m_filter->setClearButtonEnabled(true);
    m_onlyNotValid->setObjectName(QStringLiteral("onlyNotValid"));
    m_shown->setObjectName(QStringLiteral("shownRows"));
    m_shown->hide();
    // Values come from the Box; typing over them would only last until the next report.
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setItemDelegate(m_delegate);
    m_table->setContextMenuPolicy(Qt::CustomContextMenu);
    TableCopy::install(m_table);
    m_table->setTabKeyNavigation(false); // else Tab would never leave it
    layOut();
    connect(m_filter, &QLineEdit::textChanged, this, &MonitoringPage::applyFilter);
    connect(m_onlyNotValid, &QCheckBox::toggled, this, &MonitoringPage::applyFilter);
    connect(m_table, &QWidget::customContextMenuRequested, this, &MonitoringPage::showMenu);
    const QAbstractItemModel *model = m_table->model();
    connect(model, &QAbstractItemModel::rowsInserted, this, &MonitoringPage::applyFilter);
    connect(model, &QAbstractItemModel::rowsRemoved, this, &MonitoringPage::applyFilter);
    connect(model, &QAbstractItemModel::dataChanged, this, &MonitoringPage::applyFilter);
    connect(model, &QAbstractItemModel::layoutChanged, this, &MonitoringPage::applyFilter);
    const QHeaderView *header = m_table->horizontalHeader();
    connect(header, &QHeaderView::sortIndicatorChanged, this, [this](int section, Qt::SortOrder order) {
        m_sortBefore = m_sort;
        m_sort = {section, order};
    });
    connect(header, &QHeaderView::sectionResized, this, [this] { m_widthsOfUser |= !m_fitting; });
    connect(header, &QHeaderView::sectionClicked, this, &MonitoringPage::considerClick);
}

void MonitoringPage::layOut()
{
    m_tools->addWidget(m_filter);
    m_tools->addWidget(m_shown);
    m_tools->addWidget(m_onlyNotValid);
    // Width is scarce beside a form: all columns are to be seen. The rows have no numbers of their own.
    m_layout->setContentsMargins(2, m_layout->contentsMargins().top(), 2, 2);
    m_table->verticalHeader()->hide();
    m_layout->addWidget(m_source);
    m_layout->addLayout(m_tools);
    m_layout->addWidget(m_table);
}

void MonitoringPage::addTool(QWidget *tool)
{
    m_tools->addWidget(tool);
    QWidget::setTabOrder(m_tools->itemAt(m_tools->count() - 2)->widget(), tool);
}

void MonitoringPage::addLine(QWidget *line)
{
    m_layout->insertWidget(m_layout->indexOf(m_table), line);
}

void MonitoringPage::setClock(const LiveClock &clock)
{
    m_clock = clock;
}

void MonitoringPage::noteReport(const LiveSource &source, qint64 time)
{
    m_source->noteReport(source, time);
}

void MonitoringPage::showReport(const QVariantList &rows, const QString &time, const LiveSource &source)
{
    const qint64 now = m_clock();
    m_source->showReport(source, now);
    {
        const bool isFirst = m_table->columnCount() == 0;
        const QScopedValueRollback<bool> fitting(m_fitting, true);
        MonitoringTable::update(m_table, rows, time, now);
        m_marksEnd = now + LiveDelegate::markTime;
        if (isFirst && isVisible()) {
            fitColumns();
        }
    }
    refresh();
    if (isVisible()) {
        awaitEndOfMarks();
    }
}

void MonitoringPage::setProject(const QString &name)
{
    m_source->setProject(name);
    refresh();
}

const QString &MonitoringPage::project() const
{
    return m_source->project();
}

void MonitoringPage::setWanted(const QString &project)
{
    m_source->setWanted(project);
    refresh();
}

void MonitoringPage::endSession()
{
    m_source->endSession();
    refresh();
}

void MonitoringPage::setAnswering(bool answers)
{
    m_source->setAnswering(answers);
    refresh();
}

const LiveSource &MonitoringPage::source() const
{
    return m_source->source();
}

void MonitoringPage::refresh()
{
    if (!m_source->hasReport()) {
        return;
    }
    const qint64 now = m_clock();
    const bool wasOutOfDate = m_source->isOutOfDate();
    m_source->refresh(now);
    m_delegate->setState(now, m_source->isOutOfDate());
    if (m_source->isOutOfDate() != wasOutOfDate) {
        m_table->viewport()->update();
    }
}

void MonitoringPage::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    refresh();
    m_second.start(second, this);
    awaitEndOfMarks();
}

void MonitoringPage::hideEvent(QHideEvent *event)
{
    m_second.stop();
    m_mark.stop();
    QWidget::hideEvent(event);
}

void MonitoringPage::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == m_second.timerId()) {
        refresh();
    } else if (event->timerId() == m_mark.timerId()) {
        refresh();
        m_table->viewport()->update();
        awaitEndOfMarks();
    } else {
        QWidget::timerEvent(event);
    }
}

// By the page's clock, against which a timer may be early.
void MonitoringPage::awaitEndOfMarks()
{
    const qint64 left = m_marksEnd - m_clock();
    if (left > 0) {
        m_mark.start(int(left), Qt::PreciseTimer, this);
    } else {
        m_mark.stop();
    }
}

void MonitoringPage::applyFilter()
{
    const QString wanted = m_filter->text();
    const auto holds = [&](int row, int column) {
        const QTableWidgetItem *item = m_table->item(row, column);
        return item && item->text().contains(wanted, Qt::CaseInsensitive);
    };
    const bool onlyNotValid = m_onlyNotValid->isChecked();
    const auto isValid = [this](int row) {
        return MonitoringTable::isValid(m_table->model()->index(row, MonitoringTable::Valid));
    };
    // While it shows itself the header would work all positions out anew for each row that goes or comes.
    QHeaderView *header = m_table->verticalHeader();
    const bool updates = header->updatesEnabled();
    header->setUpdatesEnabled(false);
    int shown = 0;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        const bool lacksText =
            !wanted.isEmpty() && !holds(row, MonitoringTable::Name) && !holds(row, MonitoringTable::Addr);
        const bool hidden = lacksText || (onlyNotValid && isValid(row));
        if (m_table->isRowHidden(row) != hidden) {
            m_table->setRowHidden(row, hidden);
        }
        shown += hidden ? 0 : 1;
    }
    header->setUpdatesEnabled(updates);
    // Else a table that a filter has emptied looks as if nothing was reported.
    m_shown->setText(tr("%1 of %2").arg(shown).arg(m_table->rowCount()));
    m_shown->setVisible(shown < m_table->rowCount());
}

void MonitoringPage::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    fitColumns();
}

void MonitoringPage::fitColumns()
{
    if (m_table->columnCount() == 0 || m_widthsOfUser) {
        return;
    }
    const QScopedValueRollback<bool> fitting(m_fitting, true);
    // As if there was a scroll bar: it comes and goes with the widths.
    MonitoringTable::fitColumns(m_table,
                                m_table->width() - 2 * m_table->frameWidth()
                                    - m_table->verticalScrollBar()->sizeHint().width());
}

void MonitoringPage::considerClick(int section)
{
    if (m_sort.section == section && m_sort.order == Qt::AscendingOrder && m_sortBefore.section == section
        && m_sortBefore.order == Qt::DescendingOrder) {
        MonitoringTable::unsort(m_table);
    }
}

void MonitoringPage::showMenu(const QPoint &position)
{
    QMenu menu; // without a parent: the page may die below it
    menu.addAction(m_table->findChild<QAction *>(QStringLiteral("copy")));
    emit menuOpening(&menu);
    const QAction *exporting =
        menu.addAction(svgIcon(QStringLiteral(":/adsdemo/images/write.svg")), tr("Export..."));
    const QPointer<MonitoringPage> self(this);
    if (menu.exec(m_table->viewport()->mapToGlobal(position)) == exporting && self) {
        exportShown();
    }
}

void MonitoringPage::exportShown()
{
    const QPointer<MonitoringPage> self(this);
    const QString path =
        chooseSaveFile(this, tr("Export Values"), lastUsedFolder(), tr("CSV Files (*.csv)"), windowTitle());
    if (!path.isEmpty() && self && !writeFile(path, shownAsCsv())) {
        Tell::warning(this, tr("Export Values"), tr("The file %1 could not be written.").arg(path));
    }
}

QByteArray MonitoringPage::shownAsCsv() const
{
    const auto line = [this](const auto &textAt) {
        QByteArrayList cells;
        for (int column = 0; column < m_table->columnCount(); ++column) {
            const QTableWidgetItem *item = textAt(column);
            cells.append(item ? csvCell(item->text()) : QByteArray());
        }
        return csvLine(cells);
    };
    QByteArray csv(csvBegin);
    csv += line([this](int column) { return m_table->horizontalHeaderItem(column); });
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (!m_table->isRowHidden(row)) {
            csv += line([this, row](int column) { return m_table->item(row, column); });
        }
    }
    return csv;
}
