#pragma once

#include <QObject>
#include <QPointer>

class CMainWindow;
class QAction;
class QComboBox;
class QIcon;
class QMenu;
class QPlainTextEdit;
class QStandardItemModel;
class QTabWidget;
class QTreeView;
class QWidgetAction;

namespace ads {
class CDockManager;
class CDockWidget;
} // namespace ads

// The main window's docks: their manager, the three docks that are always there, the layout and the
// perspectives in "Settings.ini" in the working directory. The manager and what lies in it may die before the
// window does; from then on their getters give null and saving and restoring do nothing.
class DockLayout : public QObject
{
    Q_OBJECT
public:
    // Makes the perspective combo box and its two actions, children of the window and placed nowhere.
    explicit DockLayout(CMainWindow *window);

    // Configures the library and makes the manager, which becomes the window's central widget.
    void createManager();
    // Makes the docks "Data monitoring", "Project" and "Message" and appends the action that shows each to
    // the menu. Neither is owned.
    void createDocks(QStandardItemModel *model, QMenu *viewMenu);

    // Geometry, state and docking state of the window. A missing or damaged file changes nothing and is not
    // reported.
    void saveState() const;
    void restoreState();

    // Reads the stored perspectives and fills the combo box with their names.
    void loadPerspectives();
    // Asks for a name, keeps the present layout under it, replacing one of that name, and stores them all.
    void savePerspective();

    // A dock "Table %1", counted through the process, around an empty tab widget; not yet placed.
    ads::CDockWidget *makeTableDock();
    // A text editor with this placeholder in a dock with this icon and the "Options" menu; not yet placed.
    ads::CDockWidget *makeEditorDock(const QString &title, const QString &placeholder, const QIcon &icon);

    ads::CDockManager *manager() const;
    QTabWidget *monitoringTabs() const;
    QTreeView *projectTree() const;
    QPlainTextEdit *messageEditor() const;

private:
    ads::CDockWidget *makeMonitoringDock();
    ads::CDockWidget *makeProjectDock(QStandardItemModel *model);
    ads::CDockWidget *makeMessageDock();
    void fillPerspectives();
    // Makes what lies beside the tree take all gain and loss of width.
    void keepTreeWidth();

    CMainWindow *m_window; // Not owned: it owns this.
    QComboBox *m_perspectives;
    QAction *m_createPerspective;
    QWidgetAction *m_perspectiveList;
    QPointer<ads::CDockManager> m_manager;
    QPointer<ads::CDockWidget> m_projectDock;
    QPointer<QTabWidget> m_monitoringTabs;
    QPointer<QTreeView> m_tree;
    QPointer<QPlainTextEdit> m_messageEditor;
};
