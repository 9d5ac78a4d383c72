#pragma once

#include "mainwindow/resourcekinds.h"

class EditorTabs;
class MonitoringView;

// Adds, opens and deletes what lies below a project's folders. Each acts on the tree's current item and does
// nothing where there is none.
class ResourceActions
{
public:
    // None is owned; all must outlive this.
    ResourceActions(CMainWindow *window, EditorTabs *tabs, MonitoringView *monitoring);

    // Asks for the new definition, appends it to the current folder, makes it current and opens its tab.
    // Warns, and leaves the tree as it is, for an empty name and for one that is taken.
    void add(const ResourceKinds::AddKind &kind);

    // Opens the current item's form. A tab of the kind that shows another item is pointed at this one if the
    // form is the same, and replaced if it is not; what was typed there and not saved is gone either way.
    void edit(const ResourceKinds::EditKind &kind);

    // Removes the current definition, its monitoring tab, and the edit tab of its kind even if that shows
    // another one.
    void remove() const;
    // Removes everything below the current folder with the monitoring tabs of those names; a definition,
    // which has nothing below it, is removed itself.
    void removeAll() const;

private:
    void append(const ResourceKinds::AddKind &kind, QStandardItem *folder,
                const ResourceKinds::NewResource &resource);
    bool isNameTaken(const ResourceKinds::AddKind &kind, QStandardItem *folder, const QString &name) const;
    void open(const ResourceKinds::EditKind &kind, const ResourceKinds::FormClass *form, QStandardItem *item);

    CMainWindow *m_window;
    EditorTabs *m_tabs;
    MonitoringView *m_monitoring;
};
