#pragma once

#include "mainwindow/resourcekinds.h"
#include "model/itemref.h"

#include <QObject>
#include <QPointer>

#include <map>

class QTreeView;

// Adds, opens and deletes what lies below a project's folders. Each acts on the tree's current item and does
// nothing where there is none.
class ResourceActions : public QObject
{
    Q_OBJECT
public:
    // Dialogs open over the window, which owns this; the forms are given the workspace. The tree may die
    // first.
    ResourceActions(QTreeView *tree, EditorTabs *tabs, Workspace *workspace, QWidget *window);

    // Asks for the new definition, appends it to the current folder, makes it current and opens its tab.
    // Warns, and leaves the tree as it is, for an empty name and for one that is taken.
    void add(const ResourceKind &kind);

    // Opens the current item's form. A tab of the kind that shows another item is pointed at this one if the
    // form is the same, and replaced if it is not; what was typed there and not saved is gone either way.
    void edit(const ResourceKind &kind);

    // Removes the current definition, and the edit tab of its kind even if that shows another one.
    void remove();
    // Removes everything below the current folder; a definition, which has nothing below it, is removed
    // itself.
    void removeAll();

signals:
    // A form was made; its tab comes next.
    void formMade(QDialog *form);
    // A definition of this name has left the tree, or is about to.
    void removed(const QString &name);

private:
    QStandardItem *currentItem() const;
    void append(const ResourceKind &kind, QStandardItem *folder, const ResourceKind::New &resource);
    void open(const ResourceKind &kind, const FormClass *form, QStandardItem *item);
    void remember(EditorTab kind, QStandardItem *item);
    // Makes a "Save" that closes the tab leave the focus in the tree, on the node that the form showed.
    void returnToTree(const QDialog *form, const ads::CDockWidget *tab, EditorTab kind);

    QPointer<QTreeView> m_tree;
    EditorTabs *m_tabs;
    Workspace *m_workspace;
    QWidget *m_window;
    std::map<EditorTab, ItemRef> m_shown; // what the forms show
};
