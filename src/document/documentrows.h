#pragma once

#include "definitions/documentkeys.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QStandardItem>

#include <iterator>

// Items and rows written and read by the tables of their keys.
namespace DocumentKeys {

inline QString textOf(const QStandardItem &item, int role)
{
    return item.data(role).toString();
}

template <typename Table>
void insertFields(QJsonObject *object, const Table &fields, const QStandardItem &item)
{
    for (const Field &field : fields) {
        object->insert(field.key, textOf(item, field.role));
    }
}

// Adds a row's cells to the object; those that a short row lacks are written as empty ones.
template <typename Table>
QJsonObject withRow(QJsonObject object, const Table &columns, const QVariantList &row)
{
    int cell = 0;
    for (const Column &column : columns) {
        object.insert(column.key, toDocument(row.value(cell++), column.coding));
    }
    return object;
}

// One object per row, from the given one on. All start as copies of an object that has the keys: a value for
// a key that is there costs much less than one with a new key.
template <typename Table>
QJsonArray rowArray(const Table &columns, const QList<QVariantList> &rows, int first)
{
    const QJsonObject keys = withRow(QJsonObject(), columns, QVariantList());
    QJsonArray array;
    for (int row = first; row < rows.size(); ++row) {
        array.append(withRow(keys, columns, rows.at(row)));
    }
    return array;
}

template <typename Table> void readFields(const QJsonObject &object, const Table &fields, QStandardItem *item)
{
    for (const Field &field : fields) {
        item->setData(object.value(field.key).toString(), field.role);
    }
}

template <typename Table> QVariantList readRow(const Table &columns, const QJsonObject &object)
{
    QVariantList row;
    row.reserve(int(std::size(columns)));
    for (const Column &column : columns) {
        row.append(fromDocument(object.value(column.key), column.coding));
    }
    return row;
}

} // namespace DocumentKeys
