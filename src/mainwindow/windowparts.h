#pragma once

#include <QPointer>
#include <QTabWidget>
#include <QTreeView>

class CMainWindow;
class EditorTabs;
class QStandardItem;
class QStandardItemModel;

// What the main window's collaborators act on. Nothing here is owned; tree and monitoring die with the dock
// manager, which may be before the window does.
struct WindowParts {
    CMainWindow *window = nullptr;
    QStandardItemModel *model = nullptr; // one top-level row a project
    QPointer<QTreeView> tree;            // the view of the model
    QPointer<QTabWidget> monitoring;     // one tab a monitored PLC, told by its text
    EditorTabs *tabs = nullptr;

    // The tree's current item, or null.
    QStandardItem *currentItem() const;
    // Index of the first monitoring tab with this text, or -1.
    int monitoringTab(const QString &text) const;
};
