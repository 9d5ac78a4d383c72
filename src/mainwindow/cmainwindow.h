#pragma once

#include "boxes/protocol.h"
#include "document/projectreader.h"
#include "document/projectwriter.h"
#include "mainwindow/docklayout.h"
#include "model/workspace.h"

#include <QMainWindow>
#include <QModelIndex>
#include <QTranslator>

#include <memory>

class BoxEditDialog;
class DormantDocks;
class LogoWindow;
class MonitoringView;
class Perspectives;
class PointImport;
class ProjectFiles;
class ProjectLifecycle;
class ProjectTreeMenu;
class QDialog;
class ResourceActions;

namespace Ui {
class MainWindow;
} // namespace Ui

// The program's one main window: it owns the model of all projects, builds the collaborators and hands each
// slot over to one of them.
class CMainWindow : public QMainWindow, public Workspace
{
    Q_OBJECT
public:
    explicit CMainWindow(QWidget *parent = nullptr);
    ~CMainWindow() override;

    void appendMessage(const QString &text) override;
    QStandardItem *currentItem() const override;
    QItemSelectionModel *selection() const override;
    QJsonObject buildProjectJson(QStandardItem *project) const override
    {
        return ::buildProjectJson(project);
    }

    // Shows the rows of a node under "Data" in the monitoring tab of that name, which is made if need be; a
    // time that is not empty replaces the rows' own.
    void showDataInTable(QStandardItem *item, const QString &time, const QString &plcName);

    // The only store of project data: one top-level row a project.
    QStandardItemModel *projectModel() const { return m_model; }
    // The actions of this menu are the registry of open docks: an action's text is its dock's title.
    QMenu *viewMenu() const;
    // These live in the docks, and are null once the dock manager is gone.
    ads::CDockManager *dockManager() const { return m_layout->manager(); }
    QTreeView *projectTree() const { return m_layout->projectTree(); }
    QTabWidget *monitoringTabs() const { return m_layout->monitoringTabs(); }
    QPlainTextEdit *messageEditor() const { return m_layout->messageEditor(); }

    // The form of a Server that was opened last of those that other parts of the program hand something to;
    // null once it is gone.
    QDialog *currentServerForm() const;

public slots:
    // Window and layout
    void on_actionSaveState_triggered(bool checked);
    void on_actionRestoreState_triggered(bool checked);
    void savePerspective();
    // Compat: these two do nothing.
    void onViewToggled(bool) {}
    void onViewVisibilityChanged(bool) {}
    void aboutActionTriggered();
    void applyVsStyle();
    // Loads the other of the Chinese and the English catalogue; the first call loads the Chinese one. Open
    // forms and the docks' titles keep the language in which they were built.
    void CESwitching();

    // Project tree
    void prjectTreeView_MenuPopup(const QPoint &pos);
    void prjectTreeView_clicked(QModelIndex index);
    // Compat: these two do nothing.
    void prjectTreeView_pressed(QModelIndex) {}
    void prjectTreeView_doubleClicked(QModelIndex) {}

    // Projects
    void slotNewProject();
    void handleProjectCreated(const QString &name, const QString &path, const QString &description);
    void slotEditProject();
    // "Close Project" of the menu: removes the current project.
    void slotDeleteProject();
    // Asks and saves, but removes nothing; no action leads here.
    void slotCloseProject();
    void loadJsonFile();
    void saveJsonFile(QStandardItem *selectedItem);
    void saveProjectFile();
    void saveProjectAllFile();

    // Fill the roles of one item from its object in the document; no open form takes notice.
    void transmitStandardDataToEditDialog(const QJsonObject &standardObj, QStandardItem *standardFileItem)
    {
        transmitStandardData(standardObj, standardFileItem);
    }
    void transmitServiceDataToEditDialog(const QJsonObject &serviceObj, QStandardItem *serviceFileItem)
    {
        transmitServiceData(serviceObj, serviceFileItem);
    }
    void transmitBoxDataToEditDialog(const QJsonObject &boxObj, QStandardItem *boxFileItem)
    {
        transmitBoxData(boxObj, boxFileItem);
    }
    // No document has such an object yet; this one is reached by name.
    void transmitPLCDataToEditDialog(const QJsonObject &plcObj, QStandardItem *plcFileItem)
    {
        transmitPlcData(plcObj, plcFileItem);
    }
    void transmitServerDataToEditDialog(const QJsonObject &serverObj, QStandardItem *serverFileItem)
    {
        transmitServerData(serverObj, serverFileItem);
    }

    // Resources: these act on the tree's current item.
    void standardAddFile();
    void boxAddFile();
    void boxSearchFile();
    void slotstandardEditFile();
    void slotServiceEditFile();
    void slotBoxEditFile();
    // No folder and no menu leads to a PLC; these two are reached by name.
    void plcAddFile();
    void slotPLCEditFile();
    void slotDeleteFile();
    void slotDeleteAllFile();

    // Servers: no menu leads to these slots, which act on the tree's current item.
    void serverAddFile();
    void slotServerEditFile();

    // Opens a window in which points of the current project are picked; it stays open for further picks and
    // shows the project as it is now. Without a current item nothing shows.
    void openImportDataDialog() override;
    // Hands picked points and the name of their definition to the current server form; without one, or with
    // one that takes none, they are dropped in silence.
    void handleImportedData(const QList<QJsonObject> &points, const QString &currentPLC);

    // Live values
    void onDataReceived(const Protocol::dataMonitoringData &report);
    void closeTabByName(const QString &tabName);

    // Docks that no menu leads to; these slots are reached by name.
    void createEditor();
    void createTable();
    void createImageViewer();
    void showStatusDialog();
    void toggleDockWidgetWindowTitle();
    void onEditorCloseRequested();
    void onImageViewerCloseRequested();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void createCollaborators();
    void connectActions();
    void connectCollaborators();
    void connectBox(const BoxEditDialog *form);
    void connectTreeMenu();

    std::unique_ptr<Ui::MainWindow> m_ui;
    bool m_chinese = false; // which catalogue was last loaded; false also before the first
    // Compat: never loaded; the process has one translator, and CESwitching() holds it.
    QTranslator m_translator;
    // All are children of the window.
    Perspectives *m_perspectives = nullptr;
    LogoWindow *m_logo = nullptr;
    DockLayout *m_layout = nullptr;
    QStandardItemModel *m_model = nullptr;
    DormantDocks *m_dormantDocks = nullptr;
    ProjectFiles *m_files = nullptr;
    MonitoringView *m_monitoring = nullptr;
    ProjectLifecycle *m_projects = nullptr;
    ResourceActions *m_resources = nullptr;
    PointImport *m_points = nullptr;
    ProjectTreeMenu *m_treeMenu = nullptr;
};
