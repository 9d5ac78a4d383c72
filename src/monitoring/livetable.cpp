#include "monitoring/livetable.h"

#include <QMouseEvent>

LiveTable::LiveTable(QWidget *parent)
    : QTableWidget(parent)
{
    setDragDropMode(QAbstractItemView::DragOnly);
    setDragEnabled(false); // until a press says otherwise
}

void LiveTable::mousePressEvent(QMouseEvent *event)
{
    setDragEnabled(selectionModel()->isSelected(indexAt(event->pos())));
    QTableWidget::mousePressEvent(event);
}

// A window that takes the rows by moving them would have them removed here.
void LiveTable::startDrag(Qt::DropActions)
{
    QTableWidget::startDrag(Qt::CopyAction);
}
