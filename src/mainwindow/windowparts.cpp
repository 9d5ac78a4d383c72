#include "mainwindow/windowparts.h"

#include <QStandardItemModel>

QStandardItem *WindowParts::currentItem() const
{
    return tree ? model->itemFromIndex(tree->currentIndex()) : nullptr;
}

int WindowParts::monitoringTab(const QString &text) const
{
    for (int tab = 0; monitoring && tab < monitoring->count(); ++tab) {
        if (monitoring->tabText(tab) == text) {
            return tab;
        }
    }
    return -1;
}
