#pragma once

#include <QPersistentModelIndex>

class QStandardItem;

// Refers to an item that may be deleted at any time by whoever removes its row: a form goes on living for a
// while after its node has left the tree.
class ItemRef
{
public:
    // Null is allowed. An item that is in no model is taken as it is, and must outlive this.
    explicit ItemRef(QStandardItem *item);

    // The item, or null from the moment when its row left the model.
    QStandardItem *item() const;

private:
    QPersistentModelIndex m_index;
    QStandardItem *m_loose; // Not owned; null for an item of a model.
};
