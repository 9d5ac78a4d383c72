#include "monitoring/livetable.h"

#include <QHeaderView>
#include <QMouseEvent>

LiveTable::LiveTable(QWidget *parent)
    : QTableWidget(parent)
{
    setDragDropMode(QAbstractItemView::DragOnly);
    setDragEnabled(false); // until a press says otherwise
    // After a sort the header hides each row again that was hidden. While it shows itself it would work all
    // positions out anew for each.
    QHeaderView *header = verticalHeader();
    connect(model(), &QAbstractItemModel::layoutAboutToBeChanged, header,
            [header] { header->setUpdatesEnabled(false); });
    connect(model(), &QAbstractItemModel::layoutChanged, header,
            [header] { header->setUpdatesEnabled(true); });
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
