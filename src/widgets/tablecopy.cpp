#include "widgets/tablecopy.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QMap>
#include <QRegularExpression>
#include <QTableView>

#include <limits>

namespace {

struct Place {
    int row;
    int column;
};

// Where the user sees the cell; a list has no headers that could move it.
Place placeOf(const QAbstractItemView *view, const QModelIndex &index)
{
    const auto *table = qobject_cast<const QTableView *>(view);
    if (!table) {
        return {index.row(), index.column()};
    }
    return {table->verticalHeader()->visualIndex(index.row()),
            table->horizontalHeader()->visualIndex(index.column())};
}

bool isShown(const QAbstractItemView *view, const QModelIndex &index)
{
    const auto *table = qobject_cast<const QTableView *>(view);
    return !table || (!table->isRowHidden(index.row()) && !table->isColumnHidden(index.column()));
}

// Cells of the parameter tables are widgets over empty items.
QString textOf(const QAbstractItemView *view, const QModelIndex &index)
{
    const QWidget *widget = view->indexWidget(index);
    if (const auto *edit = qobject_cast<const QLineEdit *>(widget)) {
        return edit->text();
    }
    if (const auto *box = qobject_cast<const QComboBox *>(widget)) {
        return box->currentText();
    }
    if (const auto *check = qobject_cast<const QCheckBox *>(widget)) {
        return check->isChecked() ? QStringLiteral("true") : QStringLiteral("false");
    }
    return index.data().toString();
}

QString oneLine(QString text)
{
    static const QRegularExpression breaks(QStringLiteral("\r\n|[\t\n\r\\x{2028}\\x{2029}]"));
    return text.replace(breaks, QStringLiteral(" "));
}

} // namespace

QAction *TableCopy::install(QAbstractItemView *view, std::function<QString()> text)
{
    auto *copy = new QAction(QCoreApplication::translate("TableCopy", "Copy"), view);
    copy->setObjectName(QStringLiteral("copy"));
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    view->addAction(copy);
    QObject::connect(copy, &QAction::triggered, view, [view, text = std::move(text)] {
        QApplication::clipboard()->setText(text ? text() : selectedText(view));
    });
    return copy;
}

QString TableCopy::selectedText(const QAbstractItemView *view)
{
    QMap<int, QMap<int, QString>> rows;
    int first = std::numeric_limits<int>::max();
    int last = -1;
    const QModelIndexList selected = view->selectionModel()->selectedIndexes();
    for (const QModelIndex &index : selected) {
        if (isShown(view, index)) {
            const Place place = placeOf(view, index);
            rows[place.row].insert(place.column, oneLine(textOf(view, index)));
            first = qMin(first, place.column);
            last = qMax(last, place.column);
        }
    }
    QStringList lines;
    for (const QMap<int, QString> &row : qAsConst(rows)) {
        QStringList cells;
        for (int column = first; column <= last; ++column) {
            cells.append(row.value(column));
        }
        lines.append(cells.join(QLatin1Char('\t')));
    }
    return lines.join(QLatin1Char('\n'));
}
