#pragma once

#include "boxes/boxsearchdialog.h"

#include <QListWidget>

// The Boxes that the dialog lists.
inline QStringList rowsOf(const BoxSearchDialog &dialog)
{
    QStringList rows;
    const auto *list = dialog.findChild<QListWidget *>();
    for (int row = 0; row < list->count(); ++row) {
        rows.append(list->item(row)->text());
    }
    return rows;
}
