#include "mainwindow/cmainwindow.h"

#include "boxes/boxeditdialog.h"
#include "boxes/boxsearchdialog.h"
#include "mainwindow/docking.h"
#include "mainwindow/dockstyle.h"
#include "mainwindow/dormantdocks.h"
#include "mainwindow/logowindow.h"
#include "mainwindow/perspectives.h"
#include "mainwindow/pointimport.h"
#include "mainwindow/projectfiles.h"
#include "mainwindow/projectlifecycle.h"
#include "mainwindow/projecttreemenu.h"
#include "mainwindow/resourceactions.h"
#include "mainwindow/treekeys.h"
#include "mainwindow/windowactions.h"
#include "mainwindow/windowkeys.h"
#include "monitoring/monitoringview.h"
#include "projects/newprojectdialog.h"
#include "servers/importdatadialog.h"
#include "trends/trends.h"
#include "ui_mainwindow.h"
#include "widgets/iconground.h"

#include <QCloseEvent>
#include <QDebug>
#include <QPlainTextEdit>
#include <QStandardItemModel>
#include <QTreeView>

namespace {

// Puts a catalogue in the place of the one that the translator holds. One that can't be read leaves the
// source texts.
void loadCatalogue(QTranslator *translator, const QString &file)
{
    if (translator->load(file, QLatin1String(""), QLatin1String(""), QLatin1String(""))) {
        QCoreApplication::installTranslator(translator);
    } else {
        QCoreApplication::removeTranslator(translator);
        qWarning() << "Failed to load translation file: " << file;
    }
}

} // namespace

CMainWindow::CMainWindow(QWidget *parent)
    : QMainWindow(parent)
    , m_ui(std::make_unique<Ui::MainWindow>())
{
    ProjectTree::registerTypes();
    m_ui->setupUi(this);
    setWindowTitle(QCoreApplication::applicationName());
    WindowActions::setUp(*m_ui);
    IconGround::useInMenus(palette());
    m_perspectives = new Perspectives(this);
    CESwitching();
    m_logo = new LogoWindow(this);

    m_layout = new DockLayout(this);
    m_model = new QStandardItemModel(this);
    m_model->setHorizontalHeaderLabels({tr("Project Name")});
    m_layout->createDocks(m_model, m_ui->menuView);
    createCollaborators();
    connectActions();
    connectCollaborators();
    connectTreeMenu();

    m_layout->setFirstGeometry();
    m_layout->restoreState();
    m_perspectives->load(dockManager());
}

CMainWindow::~CMainWindow()
{
    // Dying docks and forms still call this window's slots, so they go while it is more than a QWidget.
    delete m_layout->manager();
}

void CMainWindow::createCollaborators()
{
    auto *tabs = new EditorTabs(dockManager(), viewMenu(), this);
    m_dormantDocks = new DormantDocks(dockManager(), this);
    m_files = new ProjectFiles(this, m_model, projectTree());
    m_monitoring = new MonitoringView(monitoringTabs(), m_model, projectTree(), this);
    m_projects = new ProjectLifecycle(m_model, projectTree(), tabs, m_files, this);
    m_resources = new ResourceActions(projectTree(), tabs, this, this);
    m_points = new PointImport(projectTree(), this);
    m_treeMenu = new ProjectTreeMenu(projectTree(), this);
    new TreeKeys(projectTree(), m_treeMenu, tabs);
    const auto *trends = new Trends(m_monitoring, this);
    new WindowKeys(
        this, dockManager(), monitoringTabs(),
        QList<QAction *>{m_ui->actionNew_Project, m_ui->actionLoad_Project, m_ui->actionSave_All_Project}
            + trends->actions());
}

void CMainWindow::connectActions()
{
    connect(m_ui->actionNew_Project, &QAction::triggered, this, &CMainWindow::slotNewProject);
    connect(m_ui->actionLoad_Project, &QAction::triggered, this, &CMainWindow::loadJsonFile);
    connect(m_ui->actionSave_All_Project, &QAction::triggered, this, &CMainWindow::saveProjectAllFile);
    connect(m_ui->actionAbout, &QAction::triggered, this, &CMainWindow::aboutActionTriggered);
    connect(m_perspectives, &Perspectives::createTriggered, this, &CMainWindow::savePerspective);

    const QMap<QString, ads::CDockWidget *> docks = dockManager()->dockWidgetsMap();
    for (const ads::CDockWidget *dock : docks) {
        connect(dock, &ads::CDockWidget::viewToggled, this, &CMainWindow::onViewToggled);
        connect(dock, &ads::CDockWidget::visibilityChanged, this, &CMainWindow::onViewVisibilityChanged);
    }
    const QTreeView *tree = projectTree();
    connect(tree, &QTreeView::customContextMenuRequested, this, &CMainWindow::prjectTreeView_MenuPopup);
    connect(tree, &QTreeView::clicked, this, &CMainWindow::prjectTreeView_clicked);
    connect(tree, &QTreeView::pressed, this, &CMainWindow::prjectTreeView_pressed);
    connect(tree, &QTreeView::doubleClicked, this, &CMainWindow::prjectTreeView_doubleClicked);
}

void CMainWindow::connectCollaborators()
{
    connect(m_projects, &ProjectLifecycle::message, this, &CMainWindow::appendMessage);
    connect(m_resources, &ResourceActions::removed, this, &CMainWindow::closeTabByName);
    connect(m_resources, &ResourceActions::formMade, m_points, &PointImport::considerForm);
    connect(m_resources, &ResourceActions::formMade, this, [this](const QDialog *form) {
        if (const auto *box = qobject_cast<const BoxEditDialog *>(form)) {
            connectBox(box);
        }
    });
}

void CMainWindow::connectBox(const BoxEditDialog *form)
{
    connect(form, &BoxEditDialog::sendDataToMainWindow, this, &CMainWindow::onDataReceived);
    connect(form, &BoxEditDialog::reporting, m_monitoring, &MonitoringView::setBox);
    connect(form, &BoxEditDialog::answering, m_monitoring, &MonitoringView::setAnswering);
    connect(form, &BoxEditDialog::sessionEnded, m_monitoring, &MonitoringView::endSession);
    connect(m_monitoring, &MonitoringView::received, form, &BoxEditDialog::showReported);
}

void CMainWindow::connectTreeMenu()
{
    const ProjectTreeMenu *menu = m_treeMenu;
    connect(menu, &ProjectTreeMenu::editProject, this, &CMainWindow::slotEditProject);
    connect(menu, &ProjectTreeMenu::closeProject, this, &CMainWindow::slotDeleteProject);
    connect(menu, &ProjectTreeMenu::saveProject, this, &CMainWindow::saveProjectFile);
    connect(menu, &ProjectTreeMenu::addStandard, this, &CMainWindow::standardAddFile);
    connect(menu, &ProjectTreeMenu::editStandard, this, &CMainWindow::slotstandardEditFile);
    connect(menu, &ProjectTreeMenu::editService, this, &CMainWindow::slotServiceEditFile);
    connect(menu, &ProjectTreeMenu::addBox, this, &CMainWindow::boxAddFile);
    connect(menu, &ProjectTreeMenu::searchBoxes, this, &CMainWindow::boxSearchFile);
    connect(menu, &ProjectTreeMenu::editBox, this, &CMainWindow::slotBoxEditFile);
    connect(menu, &ProjectTreeMenu::deleteDefinition, this, &CMainWindow::slotDeleteFile);
    connect(menu, &ProjectTreeMenu::deleteAll, this, &CMainWindow::slotDeleteAllFile);
    connect(menu, &ProjectTreeMenu::showData, m_monitoring, &MonitoringView::showTab);
}

void CMainWindow::CESwitching()
{
    static QTranslator translator;
    m_chinese = !m_chinese;
    loadCatalogue(&translator, QLatin1String(m_chinese ? ":/adsdemo/chinese.qm" : ":/adsdemo/english.qm"));
    m_ui->retranslateUi(this);
    setWindowTitle(QStringLiteral("MRN-IEC61850-Modbus"));
}

void CMainWindow::applyVsStyle()
{
    if (dockManager()) {
        DockStyle::applyVisualStudio(dockManager());
    }
}

void CMainWindow::aboutActionTriggered()
{
    m_logo->show();
}

void CMainWindow::on_actionSaveState_triggered(bool)
{
    qDebug() << "MainWindow::on_actionSaveState_triggered";
    m_layout->saveState();
}

void CMainWindow::on_actionRestoreState_triggered(bool)
{
    qDebug() << "MainWindow::on_actionRestoreState_triggered";
    m_layout->restoreState();
}

void CMainWindow::savePerspective()
{
    m_perspectives->save();
}

QStandardItem *CMainWindow::currentItem() const
{
    return projectTree() ? ProjectTree::itemAt(projectTree()->currentIndex()) : nullptr;
}

QItemSelectionModel *CMainWindow::selection() const
{
    return projectTree() ? projectTree()->selectionModel() : nullptr;
}

void CMainWindow::appendMessage(const QString &text)
{
    if (QPlainTextEdit *editor = messageEditor()) {
        editor->appendPlainText(text);
    }
}

QMenu *CMainWindow::viewMenu() const
{
    return m_ui->menuView;
}

void CMainWindow::prjectTreeView_MenuPopup(const QPoint &pos)
{
    m_treeMenu->popUp(pos);
}

void CMainWindow::prjectTreeView_clicked(QModelIndex index)
{
    m_treeMenu->click(index);
}

void CMainWindow::slotNewProject()
{
    NewProjectDialog dialog(this);
    connect(&dialog, &NewProjectDialog::projectCreated, this, &CMainWindow::handleProjectCreated);
    dialog.exec();
}

void CMainWindow::handleProjectCreated(const QString &name, const QString &path, const QString &description)
{
    m_projects->create(name, path, description);
}

void CMainWindow::slotEditProject()
{
    m_projects->edit();
}

void CMainWindow::slotDeleteProject()
{
    m_projects->close();
}

void CMainWindow::slotCloseProject()
{
    m_projects->saveAllIfWanted();
}

void CMainWindow::loadJsonFile()
{
    m_files->load();
}

void CMainWindow::saveJsonFile(QStandardItem *selectedItem)
{
    m_files->saveProject(selectedItem);
}

void CMainWindow::saveProjectFile()
{
    m_files->saveProject(currentItem());
}

void CMainWindow::saveProjectAllFile()
{
    m_files->saveAll();
}

void CMainWindow::standardAddFile()
{
    m_resources->add(ResourceKind::standard());
}

void CMainWindow::boxAddFile()
{
    m_resources->add(ResourceKind::box());
}

void CMainWindow::boxSearchFile()
{
    auto *dialog = new BoxSearchDialog(this);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

void CMainWindow::slotstandardEditFile()
{
    m_resources->edit(ResourceKind::standard());
}

void CMainWindow::slotServiceEditFile()
{
    m_resources->edit(ResourceKind::service());
}

void CMainWindow::slotBoxEditFile()
{
    m_resources->edit(ResourceKind::box());
}

void CMainWindow::slotDeleteFile()
{
    m_resources->remove();
}

void CMainWindow::slotDeleteAllFile()
{
    m_resources->removeAll();
}

void CMainWindow::plcAddFile()
{
    m_resources->add(ResourceKind::plc());
}

void CMainWindow::slotPLCEditFile()
{
    m_resources->edit(ResourceKind::plc());
}

void CMainWindow::serverAddFile()
{
    m_resources->add(ResourceKind::server());
}

void CMainWindow::slotServerEditFile()
{
    m_resources->edit(ResourceKind::server());
}

QDialog *CMainWindow::currentServerForm() const
{
    return m_points->receiver();
}

void CMainWindow::openImportDataDialog()
{
    if (const ImportDataDialog *dialog = m_points->open()) {
        connect(dialog, &ImportDataDialog::dataSelected, this, &CMainWindow::handleImportedData);
    }
}

void CMainWindow::handleImportedData(const QList<QJsonObject> &points, const QString &currentPLC)
{
    m_points->deliver(points, currentPLC);
}

void CMainWindow::onDataReceived(const Protocol::dataMonitoringData &report)
{
    m_monitoring->receive(report);
}

void CMainWindow::showDataInTable(QStandardItem *item, const QString &time, const QString &plcName)
{
    m_monitoring->showData(item, time, plcName);
}

void CMainWindow::closeTabByName(const QString &tabName)
{
    m_monitoring->closeTab(tabName);
}

void CMainWindow::createEditor()
{
    if (const ads::CDockWidget *dock = m_dormantDocks->createEditor(sender())) {
        connect(dock, &ads::CDockWidget::closeRequested, this, &CMainWindow::onEditorCloseRequested);
    }
}

void CMainWindow::createTable()
{
    m_dormantDocks->createTable();
}

void CMainWindow::createImageViewer()
{
    if (const ads::CDockWidget *dock = m_dormantDocks->createImageViewer(sender())) {
        connect(dock, &ads::CDockWidget::closeRequested, this, &CMainWindow::onImageViewerCloseRequested);
    }
}

void CMainWindow::showStatusDialog()
{
    m_dormantDocks->showStatusDialog();
}

void CMainWindow::toggleDockWidgetWindowTitle()
{
    m_dormantDocks->toggleTitle();
}

void CMainWindow::onEditorCloseRequested()
{
    m_dormantDocks->closeEditor(qobject_cast<ads::CDockWidget *>(sender()));
}

void CMainWindow::onImageViewerCloseRequested()
{
    m_dormantDocks->closeImageViewer(qobject_cast<ads::CDockWidget *>(sender()));
}

void CMainWindow::closeEvent(QCloseEvent *event)
{
    const ProjectLifecycle::Exit exit = m_projects->confirmExit();
    if (exit == ProjectLifecycle::Exit::Stay) {
        event->ignore();
        return;
    }
    // Compat: without a project open the layout is not kept.
    if (exit == ProjectLifecycle::Exit::Leave) {
        m_layout->saveState();
        if (ads::CDockManager *manager = dockManager()) { // gone if the window is closed a second time
            manager->deleteLater();
        }
    }
    QMainWindow::closeEvent(event);
}
