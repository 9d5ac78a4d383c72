#pragma once

class CMainWindow;
class MonitoringView;
class QModelIndex;
class QPoint;

// What the mouse does in the project tree: the context menu and the click, both by the kind of the node,
// which follows from its depth and its folder's text.
class ProjectTreeMenu
{
public:
    // Neither is owned; both must outlive this.
    ProjectTreeMenu(CMainWindow *window, MonitoringView *monitoring);

    // Shows the menu of the node at the position (in the tree's viewport) and runs it. Each request that
    // showed a menu, an empty one included, makes the next request do nothing.
    void popUp(const QPoint &position);
    // Opens the node's form, or brings the monitoring tab of a node under "Data" to the front.
    void click(const QModelIndex &index) const;

private:
    CMainWindow *m_window;
    MonitoringView *m_monitoring;
    bool m_skipNext = false;
};
