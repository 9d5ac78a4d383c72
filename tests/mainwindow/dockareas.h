#pragma once

#include "mainwindow/docking.h"

#include <QCoreApplication>
#include <QEvent>
#include <QStringList>

// What the tests of windows with docks ask of them.
namespace DockAreas {

// Titles of all docks that stand in an area, area by area, in the order of their tabs.
inline QList<QStringList> titles(const ads::CDockManager *manager)
{
    QList<QStringList> areas;
    for (int i = 0; i < manager->dockAreaCount(); ++i) {
        QStringList area;
        for (const ads::CDockWidget *dock : manager->dockArea(i)->dockWidgets()) {
            area.append(dock->windowTitle());
        }
        areas.append(area);
    }
    return areas;
}

// How many docks of the title stand in an area, empty ones too.
inline int countOf(const ads::CDockManager *manager, const QString &title)
{
    int count = 0;
    for (const QStringList &area : titles(manager)) {
        count += area.count(title);
    }
    return count;
}

// Lets closed tabs die.
inline void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

} // namespace DockAreas
