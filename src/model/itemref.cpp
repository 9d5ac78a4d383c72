#include "model/itemref.h"

#include <QStandardItemModel>

ItemRef::ItemRef(QStandardItem *item)
    : m_index(item ? item->index() : QModelIndex())
    , m_loose(m_index.isValid() ? nullptr : item)
{
}

QStandardItem *ItemRef::item() const
{
    if (!m_index.isValid()) {
        return m_loose;
    }
    return static_cast<const QStandardItemModel *>(m_index.model())->itemFromIndex(m_index);
}
