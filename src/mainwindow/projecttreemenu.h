#pragma once

#include <QObject>
#include <QPointer>

class QModelIndex;
class QPoint;
class QTreeView;

// What the mouse does in the project tree: the context menu and the click, both by the kind of the node,
// which follows from its depth and its folder's text. Each command is a signal and is meant for the tree's
// current item.
class ProjectTreeMenu : public QObject
{
    Q_OBJECT
public:
    ProjectTreeMenu(QTreeView *tree, QObject *parent);

    // Shows the menu of the node at the position (in the tree's viewport) and runs it. Each request that
    // showed a menu, an empty one included, makes the next request do nothing.
    void popUp(const QPoint &position);
    void click(const QModelIndex &index);
    // Does what a click does, for the nodes that have a form alone.
    void openForm(const QModelIndex &index);

signals:
    void editProject();
    void closeProject();
    void saveProject();
    void addStandard();
    void editStandard();
    void editService();
    void addBox();
    void searchBoxes();
    void editBox();
    // The name of a node under "Data".
    void showData(const QString &name);
    void deleteDefinition();
    void deleteAll();

private:
    QPointer<QTreeView> m_tree;
    bool m_skipNext = false;
};
