#include "servers/pointform.h"

#include "log/activitylog.h"
#include "model/workspace.h"
#include "widgets/tablecopy.h"
#include "widgets/tableheader.h"
#include "widgets/tell.h"

#include <QHeaderView>
#include <QMenu>
#include <QPointer>
#include <QTableView>

namespace {

constexpr int leastHeight = 220; // pixels: the header and half a dozen points

bool hasPoint(const QAbstractItemModel *model, const QStringList &leading)
{
    for (int row = 0; row < model->rowCount(); ++row) {
        int column = 0;
        while (column < leading.size() && model->index(row, column).data().toString() == leading.at(column)) {
            ++column;
        }
        if (column == leading.size()) {
            return true;
        }
    }
    return false;
}

} // namespace

PointForm::PointForm(const Names &names, const Points &points, QStandardItem *item, Workspace *workspace)
    : ServerForm(names, item, workspace)
    , m_points(points)
{
}

void PointForm::handleImportedData(const QList<QJsonObject> &points, const QString &currentPLC)
{
    const QTableView *view = pointView();
    if (!view) {
        return;
    }
    for (const QJsonObject &point : points) {
        const QStringList leading = leadingCells(point, currentPLC);
        if (!hasPoint(view->model(), leading)) {
            appendPoint(leading, point);
        } else if (m_points.tellsDuplicates) {
            // Compat: without the two names, since a blank behind each "%" has the text shown as it is.
            appendMessage(translated(QT_TRANSLATE_NOOP(
                "PointForm", "The data with device name '% 2' and variable name '% 1' already exists.")));
        }
    }
}

void PointForm::showContextMenu(const QPoint &pos)
{
    const QTableView *view = pointView();
    if (!view) {
        return;
    }
    // Without a parent: the form may be closed while it is open.
    QMenu menu(translated(QT_TRANSLATE_NOOP("PointForm", "Context menu")));
    connect(menu.addAction(translated(QT_TRANSLATE_NOOP("PointForm", "Import Data Points"))),
            &QAction::triggered, this, &PointForm::importDataPoints);
    connect(menu.addAction(translated(QT_TRANSLATE_NOOP("PointForm", "Delete"))), &QAction::triggered, this,
            &PointForm::deleteSelectedItem);
    menu.exec(view->viewport()->mapToGlobal(pos));
}

void PointForm::importDataPoints()
{
    const QPointer<PointForm> alive(this); // the message runs an event loop of its own
    if (workspace()) {
        workspace()->openImportDataDialog();
    } else {
        Tell::warning(this, translated(QT_TRANSLATE_NOOP("PointForm", "Warning")),
                      translated(QT_TRANSLATE_NOOP("PointForm", "Main window pointer is not set.")));
    }
    if (alive) {
        log("Import Data Points");
    }
}

void PointForm::deleteSelectedItem()
{
    const QTableView *view = pointView();
    if (!view) {
        return;
    }
    const QModelIndexList selected = view->selectionModel()->selectedIndexes();
    if (selected.isEmpty()) {
        return;
    }
    const QLatin1String line(m_points.deletedLine); // may be needed after the form, see removePoint()
    removePoint(view->model(), selected.first().row());
    logToFile(line);
}

void PointForm::addPointView(QTableView *view)
{
    view->setSelectionBehavior(QAbstractItemView::SelectRows);
    view->setMinimumHeight(leastHeight);
    view->horizontalHeader()->setHighlightSections(false);
    TableHeader::explain(view);
    view->setTabKeyNavigation(false); // else Tab would never leave it
    TableCopy::install(view);
    view->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(view, &QWidget::customContextMenuRequested, this, &PointForm::showContextMenu);
    m_views.append(view);
}

QTableView *PointForm::pointView() const
{
    return m_views.value(0);
}

void PointForm::removePoint(QAbstractItemModel *model, int row)
{
    model->removeRow(row);
}
