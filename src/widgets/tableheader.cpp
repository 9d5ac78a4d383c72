#include "widgets/tableheader.h"

#include <QHeaderView>
#include <QTableWidget>

void TableHeader::explain(const QTableView *table)
{
    table->horizontalHeader()->setTextElideMode(Qt::ElideRight);
    QAbstractItemModel *model = table->model();
    for (int column = 0; column < model->columnCount(); ++column) {
        model->setHeaderData(column, Qt::Horizontal, model->headerData(column, Qt::Horizontal),
                             Qt::ToolTipRole);
    }
}

void TableHeader::makeGrey(const QTableWidget *table)
{
    const QString style = QStringLiteral("QHeaderView::section { background-color: #DDDDDD; }");
    if (table->horizontalHeader()->styleSheet() != style) {
        table->horizontalHeader()->setStyleSheet(style);
    }
    // The background is light whatever the desktop's colours are, so the text has to be dark.
    for (int column = 0; column < table->columnCount(); ++column) {
        table->horizontalHeaderItem(column)->setForeground(Qt::black);
    }
}
