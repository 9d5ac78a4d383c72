#pragma once

#include "model/workspace.h"

#include <QMainWindow>
#include <QModelIndex>
#include <QTranslator>

#include <memory>

class DockLayout;
class DormantDocks;
class LogoWindow;
class QMenu;
class QPlainTextEdit;
class QStandardItemModel;
class QTabWidget;
class QTreeView;

namespace Ui
{
class MainWindow;
} // namespace Ui

namespace ads
{
class CDockManager;
} // namespace ads

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
    QJsonObject buildProjectJson(QStandardItem *project) const override;

    // The only store of project data: one top-level row a project.
    QStandardItemModel *projectModel() const { return m_model; }
    // The actions of this menu are the registry of open docks: an action's text is its dock's title.
    QMenu *viewMenu() const;
    // These live in the docks, and are null once the dock manager is gone.
    ads::CDockManager *dockManager() const;
    QTreeView *projectTree() const;
    QTabWidget *monitoringTabs() const;
    QPlainTextEdit *messageEditor() const;

public slots:
    // Window and layout
    void on_actionSaveState_triggered(bool checked);
    void on_actionRestoreState_triggered(bool checked);
    void savePerspective();
    void onViewToggled(bool Open);
    void onViewVisibilityChanged(bool Visible);
    void aboutActionTriggered();
    void applyVsStyle();
    // Loads the other of the Chinese and the English catalogue; the first call loads the Chinese one. Open
    // forms and the docks' titles keep the language in which they were built.
    void CESwitching();

    // Project tree
    void prjectTreeView_MenuPopup(const QPoint &pos);
    void prjectTreeView_clicked(QModelIndex index);
    void prjectTreeView_pressed(QModelIndex index);
    void prjectTreeView_doubleClicked(QModelIndex index);

    // Projects
    void slotNewProject();
    void loadJsonFile();
    void saveProjectAllFile();

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
    void setUpActions();
    void centre();

    std::unique_ptr<Ui::MainWindow> m_ui;
    bool m_chinese = false; // which catalogue was last loaded; false also before the first
    QTranslator
        m_translator; // on purpose never loaded: the process has one translator, and CESwitching holds it
    DockLayout *m_layout = nullptr;
    DormantDocks *m_dormantDocks = nullptr;
    QStandardItemModel *m_model = nullptr;
    LogoWindow *m_logo = nullptr;
};
