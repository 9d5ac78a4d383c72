#include "parametertable/widgettable.h"

#include <QAbstractItemDelegate>
#include <QEvent>

namespace {

constexpr int rowsAround = 2; // beyond those in sight, so that Tab finds the next row

} // namespace

WidgetTable::WidgetTable(QWidget *parent)
    : QTableWidget(parent)
    , m_waiting(new QWidget(this))
{
    m_waiting->hide();
    setStyleSheet(QStringLiteral("QTableWidget { border: none; }"));
    for (QWidget *cells : {m_waiting, viewport()}) {
        cells->ensurePolished(); // else it would be with the form, and pass that on to the cells in it
    }
}

void WidgetTable::putWidget(int row, int column, QWidget *widget)
{
    QWidget *last = m_lastPut ? m_lastPut.data() : lastWidget();
    setCellWidget(row, column, widget);
    setTabOrder(last, widget); // else it would come behind all that the form had before
    m_lastPut = widget;
    moveTo(widget, m_waiting); // until the next layout
}

// The one in the last cell that has one; the table where none has.
QWidget *WidgetTable::lastWidget()
{
    for (int row = rowCount() - 1; row >= 0; --row) {
        for (int column = columnCount() - 1; column >= 0; --column) {
            if (QWidget *widget = cellWidget(row, column)) {
                return widget;
            }
        }
    }
    return this;
}

void WidgetTable::updateEditorGeometries()
{
    placeWidgets(true);
}

void WidgetTable::scrollContentsBy(int dx, int dy)
{
    QTableWidget::scrollContentsBy(dx, dy); // moves what is in the viewport
    if (dy != 0) {
        placeWidgets(false);
    }
}

bool WidgetTable::eventFilter(QObject *watched, QEvent *event)
{
    // Each new widget asks to be styled, and showing it does that. A move below the same style changes none,
    // and would have a list make its popup.
    const auto *widget = qobject_cast<const QWidget *>(watched);
    const bool styles = event->type() == QEvent::PolishRequest && widget && !widget->isVisible();
    const bool moves = event->type() == QEvent::StyleChange && m_moves;
    return styles || moves || QTableWidget::eventFilter(watched, event);
}

void WidgetTable::moveTo(QWidget *widget, QWidget *parent)
{
    m_moves = true;
    widget->setParent(parent);
    m_moves = false;
}

// Brings the widgets of the rows in sight into the viewport and all others out of it.
void WidgetTable::placeWidgets(bool placeAgain)
{
    const QVector<int> rows = rowsInSight();
    QVector<Cell> placed;
    for (const int row : rows) {
        for (int column = 0; column < columnCount(); ++column) {
            const QModelIndex index = model()->index(row, column);
            if (QWidget *widget = indexWidget(index)) {
                placeWidget(widget, index, placeAgain);
                placed.append({widget, index});
            }
        }
    }
    for (const Cell &cell : qAsConst(m_placed)) {
        if (cell.widget && !rows.contains(cell.index.row())) {
            moveTo(cell.widget, m_waiting);
        }
    }
    m_placed = placed;
}

void WidgetTable::placeWidget(QWidget *widget, const QModelIndex &index, bool again)
{
    const bool isNew = widget->parentWidget() != viewport();
    if (isNew) {
        moveTo(widget, viewport());
    }
    if (isNew || again) {
        QStyleOptionViewItem option = viewOptions();
        option.rect = visualRect(index);
        itemDelegate(index)->updateEditorGeometry(widget, option, index);
        if (isVisible()) { // else when it is: the headers then ask for this again
            widget->QWidget::setVisible(true);
        }
    }
}

QVector<int> WidgetTable::rowsInSight() const
{
    const int last = rowAt(viewport()->height() - 1);
    const int from = qMax(0, rowAt(0) - rowsAround);
    const int to = qMin(last < 0 ? rowCount() : last + 1 + rowsAround, rowCount());
    const int used = rowInUse();
    QVector<int> rows;
    for (int row = from; row < to; ++row) {
        rows.append(row);
    }
    for (int row = qMax(0, used - 1); used >= 0 && row < qMin(used + 2, rowCount()); ++row) {
        if (row < from || row >= to) {
            rows.append(row);
        }
    }
    return rows;
}

// The row that the user types into, which must not go away when the table is scrolled; or -1.
int WidgetTable::rowInUse() const
{
    if (state() == EditingState) {
        return currentRow();
    }
    const QWidget *focused = window()->focusWidget();
    for (const Cell &cell : m_placed) {
        if (focused && cell.widget == focused) {
            return cell.index.row();
        }
    }
    return -1;
}
