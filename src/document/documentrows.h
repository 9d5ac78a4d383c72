#pragma once

#include "definitions/documentkeys.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QVariantList>

#include <iterator>

// Rows of tables written and read by their columns.
namespace DocumentKeys {

// Adds a row's cells to the object; those that a short row lacks are written as empty ones.
template <typename Columns>
QJsonObject withRow(QJsonObject object, const Columns &columns, const QVariantList &row)
{
    int cell = 0;
    for (const Definitions::Column &column : columns) {
        object.insert(column.key, toDocument(row.value(cell++), column.coding));
    }
    return object;
}

// Appends one object per row, from the given one on. All start as copies of an object that has the keys: a
// value for a key that is there costs much less than one with a new key. What else the keys hold, each has.
template <typename Columns>
void appendRows(QJsonArray *array, const Columns &columns, const QList<QVariantList> &rows, int first,
                const QJsonObject &others = QJsonObject())
{
    const QJsonObject keys = withRow(others, columns, QVariantList());
    for (int row = first; row < rows.size(); ++row) {
        array->append(withRow(keys, columns, rows.at(row)));
    }
}

template <typename Columns> QVariantList readRow(const Columns &columns, const QJsonObject &object)
{
    QVariantList row;
    row.reserve(int(std::distance(std::begin(columns), std::end(columns))));
    for (const Definitions::Column &column : columns) {
        row.append(fromDocument(object.value(column.key), column.coding));
    }
    return row;
}

} // namespace DocumentKeys
