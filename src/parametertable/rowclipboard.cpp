#include "parametertable/rowclipboard.h"

#include "parameters/parameterclip.h"
#include "parametertable/parametertable.h"
#include "widgets/tablecopy.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QMenu>

RowClipboard::RowClipboard(const ParameterVariant &variant, ParameterTable *table)
    : QObject(table)
    , m_variant(variant)
    , m_table(table)
{
    TableCopy::install(table, [this] { return copied(); });
    if (variant.hasCsv) {
        auto *pasting = new QAction(tr("Paste"), table);
        pasting->setObjectName(QStringLiteral("paste"));
        pasting->setShortcut(QKeySequence::Paste);
        pasting->setShortcutContext(Qt::WidgetShortcut); // in a cell it is for the cell
        table->addAction(pasting);
        connect(pasting, &QAction::triggered, this, &RowClipboard::paste);
    }
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    // The header takes no focus, and the keys would act elsewhere.
    connect(table->verticalHeader(), &QHeaderView::sectionPressed, table,
            [table] { table->setFocus(Qt::MouseFocusReason); });
    connect(table, &ParameterTable::menuRequested, this, &RowClipboard::showMenu);
}

QString RowClipboard::copied() const
{
    QList<QStringList> rows;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (m_table->selectionModel()->rowIntersectsSelection(row, QModelIndex())) {
            rows.append(m_table->texts(row).mid(0, m_table->columnCount() - 1)); // without the button
        }
    }
    return ParameterClip::write(rows);
}

void RowClipboard::paste()
{
    const RowImport import = ParameterClip::read(QApplication::clipboard()->text(), m_variant);
    const int first = m_table->rowCount();
    if (!import.rows.isEmpty()) {
        m_table->append(import.rows);
        const auto place = [this](int row, int column) { return m_table->model()->index(row, column); };
        m_table->setCurrentIndex(place(first, 0));
        m_table->selectionModel()->select(
            {place(first, 0), place(m_table->rowCount() - 1, m_table->columnCount() - 1)},
            QItemSelectionModel::ClearAndSelect);
    }
    emit pasted(import);
}

void RowClipboard::showMenu(const QPoint &place)
{
    QMenu menu; // without a parent: the table may die below it
    menu.addActions(m_table->actions());
    menu.exec(place);
}
