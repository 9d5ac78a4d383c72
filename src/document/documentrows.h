#pragma once

#include "document/documentkeys.h"

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

// Cells that a short row lacks are written as empty ones.
template <typename Table> QJsonObject rowObject(const Table &columns, const QVariantList &row)
{
    QJsonObject object;
    int cell = 0;
    for (const Column &column : columns) {
        object.insert(column.key, toDocument(row.value(cell++), column.coding));
    }
    return object;
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
