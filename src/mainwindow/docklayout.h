#pragma once

#include <QObject>
#include <QPointer>

class QMainWindow;
class QMenu;
class QPlainTextEdit;
class QStandardItemModel;
class QTabWidget;
class QTreeView;

namespace ads {
class CDockManager;
class CDockWidget;
} // namespace ads

// The main window's docks: their manager, the three docks that are always there, and their layout in the
// layout file. The manager and what lies in it may die before the window does; from then on their getters
// give null and saving and restoring do nothing.
class DockLayout : public QObject
{
    Q_OBJECT
public:
    // Configures the library and makes the manager, which becomes the central widget of the window, the owner
    // of all this.
    explicit DockLayout(QMainWindow *window);

    // Makes the docks "Data monitoring", "Project" and "Message" and appends the action that shows each to
    // the menu. Neither is owned.
    void createDocks(QStandardItemModel *model, QMenu *viewMenu);

    // 1280 by 720 in the middle of the screen.
    void setFirstGeometry();
    // Geometry, state and docking state of the window. A missing or damaged file changes nothing and is not
    // reported.
    void saveState() const;
    void restoreState();

    ads::CDockManager *manager() const;
    QTabWidget *monitoringTabs() const;
    QTreeView *projectTree() const;
    QPlainTextEdit *messageEditor() const;

private:
    ads::CDockWidget *makeMonitoringDock();
    ads::CDockWidget *makeProjectDock(QStandardItemModel *model);
    ads::CDockWidget *makeMessageDock();
    // Makes what lies beside the tree take all gain and loss of width.
    void keepTreeWidth();

    QMainWindow *m_window;
    QPointer<ads::CDockManager> m_manager;
    QPointer<ads::CDockWidget> m_projectDock;
    QPointer<QTabWidget> m_monitoringTabs;
    QPointer<QTreeView> m_tree;
    QPointer<QPlainTextEdit> m_messageEditor;
};
