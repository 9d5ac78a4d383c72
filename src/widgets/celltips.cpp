#include "widgets/celltips.h"

#include "widgets/tooltip.h"

#include <QHelpEvent>
#include <QTableView>
#include <QToolTip>

CellTips::CellTips(QTableView *table)
    : QObject(table)
    , m_table(table)
{
    table->viewport()->installEventFilter(this);
}

void CellTips::install(QTableView *table)
{
    new CellTips(table);
}

bool CellTips::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::ToolTip) {
        const auto *help = static_cast<QHelpEvent *>(event);
        const QModelIndex index = m_table->indexAt(help->pos());
        const QString text = index.data().toString();
        const int margin = m_table->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, m_table) + 1;
        const QRect cell = m_table->visualRect(index);
        if (m_table->fontMetrics().horizontalAdvance(text) + 2 * margin > cell.width()) {
            QToolTip::showText(help->globalPos(), plainToolTip(text), m_table->viewport(), cell);
            return true;
        }
    }
    return QObject::eventFilter(watched, event);
}
