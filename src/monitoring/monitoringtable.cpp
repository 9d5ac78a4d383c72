#include "monitoring/monitoringtable.h"

#include "monitoring/liveitems.h"
#include "widgets/tableheader.h"

#include <QCoreApplication>
#include <QHash>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScrollBar>
#include <QSet>
#include <QSignalBlocker>
#include <QTableWidget>
#include <QVector>

#include <algorithm>
#include <functional>
#include <limits>
#include <numeric>

using namespace MonitoringTable;

namespace {

const char *const headers[] = {
    QT_TRANSLATE_NOOP("CMainWindow", "Name"),     QT_TRANSLATE_NOOP("CMainWindow", "Addr"),
    QT_TRANSLATE_NOOP("CMainWindow", "DataType"), QT_TRANSLATE_NOOP("CMainWindow", "Value"),
    QT_TRANSLATE_NOOP("CMainWindow", "Valid"),    QT_TRANSLATE_NOOP("CMainWindow", "Update Time"),
};
constexpr int timeWidth = 180;                 // pixels
constexpr int validityRole = Qt::UserRole;     // of the cells in column Valid: whether the row is valid
const QString validCode = QStringLiteral("1"); // what a Box sends for a valid value

QString validityText(const QString &valid)
{
    if (valid == validCode) {
        return QCoreApplication::translate("CMainWindow", "Effective");
    }
    if (valid == QLatin1String("0")) {
        return QCoreApplication::translate("CMainWindow", "Invalid");
    }
    return QCoreApplication::translate("CMainWindow", "Unknown");
}

QString nameOf(const QVariant &row)
{
    return row.toMap().value(QStringLiteral("name")).toString();
}

QString nameAt(const QTableWidget *table, int row)
{
    const QTableWidgetItem *item = table->item(row, Name);
    return item ? item->text() : QString();
}

int typeOf(int column)
{
    switch (column) {
    case Name:
        return NameItem::itemType;
    case Addr:
    case Value:
        return NumberItem::itemType;
    default:
        return QTableWidgetItem::Type;
    }
}

QTableWidgetItem *newItem(int column)
{
    switch (typeOf(column)) {
    case NameItem::itemType:
        return new NameItem;
    case NumberItem::itemType:
        return new NumberItem;
    default:
        return new QTableWidgetItem;
    }
}

// An item that is in a table looks itself up among all the cells to report a change of its text, so the text
// is set outside. Cells that keep their text are left alone. Returns the item if its text is other than
// before.
QTableWidgetItem *setCell(QTableWidget *table, int row, int column, const QString &text)
{
    QTableWidgetItem *item = table->item(row, column);
    const bool isNew = !item || item->type() != typeOf(column);
    if (!isNew && item->text() == text) {
        return nullptr;
    }
    item = isNew ? newItem(column) : table->takeItem(row, column);
    item->setText(text);
    table->setItem(row, column, item);
    return isNew ? nullptr : item;
}

// The text follows from the code, so a cell that keeps its text keeps its flag.
void setValidity(QTableWidget *table, int row, const QString &code)
{
    const QString text = validityText(code);
    QTableWidgetItem *item = table->item(row, Valid);
    if (item && item->text() == text) {
        return;
    }
    item = item ? table->takeItem(row, Valid) : new QTableWidgetItem;
    item->setText(text);
    item->setData(validityRole, code == validCode);
    table->setItem(row, Valid, item);
}

void setRow(QTableWidget *table, int row, const QVariantMap &values, const QString &time, qint64 now)
{
    setCell(table, row, Name, values.value(QStringLiteral("name")).toString());
    setCell(table, row, Addr, values.value(QStringLiteral("addr")).toString());
    setCell(table, row, DataType, values.value(QStringLiteral("dataType")).toString());
    const QString value = values.value(QStringLiteral("value")).toString();
    if (QTableWidgetItem *changed = setCell(table, row, Value, value)) {
        static_cast<NumberItem *>(changed)->setChangedAt(now);
    }
    setValidity(table, row, values.value(QStringLiteral("valid")).toString());
    setCell(table, row, UpdateTime,
            time.isEmpty() ? values.value(QStringLiteral("updateTime")).toString() : time);
}

// The row of each report row's point, by name; a point that the table lacks gets the next row at the end.
QVector<int> placesOf(const QTableWidget *table, const QVariantList &rows)
{
    QHash<QString, int> rowOfName;
    for (int row = table->rowCount() - 1; row >= 0; --row) { // backwards: the first row of a name counts
        rowOfName.insert(nameAt(table, row), row);
    }
    int end = table->rowCount();
    QVector<int> places;
    places.reserve(rows.size());
    for (const QVariant &row : rows) {
        const QString name = nameOf(row);
        const auto known = rowOfName.constFind(name);
        const int place = known != rowOfName.cend() ? *known : end++;
        if (known == rowOfName.cend()) {
            rowOfName.insert(name, place);
        }
        places.append(place);
    }
    return places;
}

// Where the current cell's row is to go, the next one that stays takes its place, as in any removal.
void moveCurrent(const QTableWidget *table, const QVector<bool> &stays)
{
    const QModelIndex current = table->currentIndex();
    if (!current.isValid() || stays.at(current.row())) {
        return;
    }
    const int next = stays.indexOf(true, current.row());
    const int row = next >= 0 ? next : stays.lastIndexOf(true, current.row());
    table->selectionModel()->setCurrentIndex(table->model()->index(row, current.column()),
                                             QItemSelectionModel::NoUpdate);
}

NameItem *nameItemAt(QTableWidget *table, int row)
{
    QTableWidgetItem *item = table->item(row, Name);
    if (!item || item->type() != NameItem::itemType) {
        const QString name = nameAt(table, row);
        item = newItem(Name);
        item->setText(name);
        table->setItem(row, Name, item);
    }
    return static_cast<NameItem *>(item);
}

// Stable. Selection, current cell and hidden rows go along.
template <typename RankOf> void sortRows(QTableWidget *table, const RankOf &rankOf)
{
    for (int row = 0; row < table->rowCount(); ++row) {
        NameItem *item = nameItemAt(table, row);
        item->setRank(rankOf(row, *item));
    }
    table->model()->sort(Name);
    for (int row = 0; row < table->rowCount(); ++row) {
        nameItemAt(table, row)->setRank(NameItem::noRank);
    }
}

// Removes the rows whose points the report lacks. Sorted behind all others they go at once: one by one, each
// would move all the rows behind it.
void removeOthers(QTableWidget *table, const QVariantList &rows)
{
    QSet<QString> names;
    for (const QVariant &row : rows) {
        names.insert(nameOf(row));
    }
    QVector<bool> stays;
    for (int row = 0; row < table->rowCount(); ++row) {
        stays.append(names.contains(nameAt(table, row)));
    }
    const int kept = stays.count(true);
    if (kept == stays.size()) {
        return;
    }
    moveCurrent(table, stays);
    sortRows(table, [&stays](int row, const NameItem &) { return stays.at(row) ? 0 : 1; });
    table->setRowCount(kept);
}

int textWidth(const QFontMetrics &metrics, const QStringList &texts)
{
    int width = 0;
    for (const QString &text : texts) {
        width = std::max(width, metrics.horizontalAdvance(text));
    }
    return width;
}

// The widths of the columns before the time: of all that is in the cells and, with titles, of these, too.
QVector<int> widthsOf(const QTableWidget *table, bool withTitles)
{
    constexpr int padding = 12; // pixels around a text
    QVector<int> widths;
    for (int column = Name; column < UpdateTime; ++column) {
        QStringList texts;
        if (withTitles) {
            texts.append(table->horizontalHeaderItem(column)->text());
        }
        if (column == Value) {
            texts.append(QStringLiteral("-0000.00")); // those to come
        } else if (column == Valid) {
            texts += {validityText(QStringLiteral("1")), validityText(QStringLiteral("0")),
                      validityText(QString())};
        }
        const int cells = static_cast<const QAbstractItemView *>(table)->sizeHintForColumn(column) + 1;
        widths.append(std::max(cells, textWidth(table->fontMetrics(), texts) + padding));
    }
    return widths;
}

// Of a row whose name takes two lines, in pixels.
int twoLines(const QTableWidget *table)
{
    QStyleOptionViewItem option;
    option.initFrom(table);
    option.font = table->font();
    option.features = QStyleOptionViewItem::HasDisplay;
    option.text = QLatin1Char('x') + QString(QChar::LineSeparator) + QLatin1Char('x');
    constexpr int grid = 1;
    return table->style()->sizeFromContents(QStyle::CT_ItemViewItem, &option, QSize(), table).height() + grid;
}

// Sorting has to be off: a row that moved half-way would get the rest of its cells in another one.
void updateRows(QTableWidget *table, const QVariantList &rows, const QString &time, qint64 now)
{
    removeOthers(table, rows);
    const QVector<int> places = placesOf(table, rows);
    const int lastPlace = places.isEmpty() ? -1 : *std::max_element(places.begin(), places.end());
    table->setRowCount(std::max(table->rowCount(), lastPlace + 1));
    {
        const QSignalBlocker blocker(table->model()); // one signal for all the cells, below
        for (int i = 0; i < rows.size(); ++i) {
            setRow(table, places.at(i), rows.at(i).toMap(), time, now);
        }
    }
    if (table->rowCount() > 0) {
        QAbstractItemModel *model = table->model();
        emit model->dataChanged(model->index(0, 0), model->index(table->rowCount() - 1, ColumnCount - 1));
    }
}

} // namespace

bool MonitoringTable::isValid(const QModelIndex &index)
{
    return index.siblingAtColumn(Valid).data(validityRole).toBool();
}

bool MonitoringTable::isNumber(const QModelIndex &index)
{
    return index.column() == Value && index.data(NumberItem::isNumberRole).toBool();
}

qint64 MonitoringTable::changedAt(const QModelIndex &index)
{
    const QVariant time = index.column() == Value ? index.data(NumberItem::changedAtRole) : QVariant();
    return time.isValid() ? time.toLongLong() : -1;
}

void MonitoringTable::fitColumns(QTableWidget *table, int room)
{
    QVector<int> widths = widthsOf(table, true);
    int lack = std::accumulate(widths.begin(), widths.end(), timeWidth) - room;
    QVector<int> spare = widthsOf(table, false);
    std::transform(widths.begin(), widths.end(), spare.begin(), spare.begin(), std::minus<>());
    const int wholeName = widths.at(Name);
    spare[Name] = wholeName * 2 / 5;
    const auto sum = [](const QVector<int> &all, int count) {
        return std::accumulate(all.begin(), all.begin() + count, 0);
    };
    const bool allFit = lack <= sum(spare, UpdateTime);
    const bool valuesFit = sum(widths, Value + 1) - sum(spare, Value + 1) <= room;
    if (allFit || valuesFit) {
        for (const Column column : {DataType, Name, Valid, Value, Addr}) {
            const int cut = std::clamp(lack, 0, spare.at(column));
            widths[column] -= cut;
            lack -= cut;
        }
    }
    for (int column = Name; column < UpdateTime; ++column) {
        table->setColumnWidth(column, widths.at(column));
    }
    QHeaderView *rows = table->verticalHeader();
    rows->resetDefaultSectionSize();
    const int oneLine = rows->defaultSectionSize();
    rows->setDefaultSectionSize(widths.at(Name) < wholeName ? std::max(oneLine, twoLines(table)) : oneLine);
}

void MonitoringTable::unsort(QTableWidget *table)
{
    table->horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    sortRows(table, [](int, const NameItem &item) { return item.arrival(); });
}

void MonitoringTable::update(QTableWidget *table, const QVariantList &rows, const QString &time, qint64 now)
{
    const bool isNew = table->columnCount() == 0;
    table->setColumnCount(ColumnCount);
    QStringList labels;
    for (const char *header : headers) {
        labels.append(QCoreApplication::translate("CMainWindow", header));
    }
    table->setHorizontalHeaderLabels(labels);

    const int vertical = table->verticalScrollBar()->value();
    const int horizontal = table->horizontalScrollBar()->value();
    table->setSortingEnabled(false);
    updateRows(table, rows, time, now);
    table->setSortingEnabled(true); // sorts by the user's column and order, which the header has kept
    table->verticalScrollBar()->setValue(vertical);
    table->horizontalScrollBar()->setValue(horizontal);

    TableHeader::makeGrey(table);
    table->setColumnWidth(UpdateTime, timeWidth);
    if (isNew) { // later on the width is the user's
        fitColumns(table, std::numeric_limits<int>::max());
        TableHeader::explain(table); // a title gives way to the sort indicator
    }
}
