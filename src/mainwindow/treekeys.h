#pragma once

#include "mainwindow/docking.h"

#include <QObject>
#include <QPointer>

class EditorTabs;
class ProjectTreeMenu;
class QTreeView;

// The keys of the project tree: Return opens the current node as a click does, F2 opens its form with the
// cursor in the name. No key deletes, since nothing asks before that.
class TreeKeys : public QObject
{
    Q_OBJECT
public:
    // The tree owns this. Neither of the other two may die before it.
    TreeKeys(QTreeView *tree, ProjectTreeMenu *menu, const EditorTabs *tabs);

private:
    void open();
    void rename();

    QTreeView *m_tree;
    ProjectTreeMenu *m_menu;
    QPointer<ads::CDockWidget> m_shown; // the tab that came up last
};
