#include "mainwindow/cmainwindow.h"

#include "document/projectwriter.h"
#include "mainwindow/docking.h"
#include "mainwindow/docklayout.h"
#include "mainwindow/dormantdocks.h"
#include "mainwindow/editortabs.h"
#include "mainwindow/logowindow.h"
#include "mainwindow/projectfiles.h"
#include "mainwindow/projectlifecycle.h"
#include "mainwindow/projecttreemenu.h"
#include "mainwindow/resourceactions.h"
#include "model/projecttree.h"
#include "monitoring/monitoringview.h"
#include "ui_mainwindow.h"
#include "widgets/svgicon.h"

#include <QCloseEvent>
#include <QDebug>
#include <QFile>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStandardItemModel>
#include <QStyle>
#include <QTextStream>
#include <QToolButton>
#include <QTreeView>

CMainWindow::CMainWindow(QWidget *parent)
    : QMainWindow(parent)
    , m_ui(std::make_unique<Ui::MainWindow>())
{
    m_ui->setupUi(this);
    setWindowTitle(QCoreApplication::applicationName());
    m_layout = new DockLayout(this);
    m_dormantDocks = new DormantDocks(m_layout, this);
    setUpActions();
    CESwitching();
    m_logo = new LogoWindow(this);

    m_layout->createManager();
    m_model = new QStandardItemModel(this);
    m_model->setHorizontalHeaderLabels({tr("Project Name")});
    m_layout->createDocks(m_model, m_ui->menuView);
    createCollaborators();

    resize(1280, 720);
    centre();
    m_layout->restoreState();
    m_layout->loadPerspectives();
}

CMainWindow::~CMainWindow()
{
    // Dying docks and forms still call this window's slots, so they go while it is more than a QWidget.
    delete m_layout->manager();
}

void CMainWindow::createCollaborators()
{
    ProjectTree::registerTypes();
    m_files = new ProjectFiles(this, m_model, projectTree());
    m_tabs = new EditorTabs(dockManager(), viewMenu(), this);
    m_monitoring = new MonitoringView(monitoringTabs(), m_model, projectTree(), this);
    m_projects = std::make_unique<ProjectLifecycle>(this, m_tabs);
    m_resources = std::make_unique<ResourceActions>(this, m_tabs, m_monitoring);
    m_treeMenu = std::make_unique<ProjectTreeMenu>(this, m_monitoring);
}

void CMainWindow::setUpActions()
{
    const struct {
        QAction *action;
        QMenu *menu;
        bool onToolBar;
        const char *icon;
        QKeySequence shortcut;
    } rows[] = {
        {m_ui->actionNew_Project, m_ui->menuWindow, true, "New Project.svg", QKeySequence::New},
        {m_ui->actionLoad_Project, m_ui->menuWindow, true, "Load Project.svg", QKeySequence::Open},
        {m_ui->actionSave_All_Project, m_ui->menuWindow, true, "save.svg", Qt::CTRL + Qt::SHIFT + Qt::Key_S},
        {m_ui->actionAbout, m_ui->menuAbout, false, "logo-1.png", {}},
        {m_ui->actionSaveState, m_ui->menuFile, true, "saveini.svg", {}},
        {m_ui->actionRestoreState, m_ui->menuFile, true, "restore.svg", {}},
    };
    m_ui->toolBar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    for (const auto &row : rows) {
        row.action->setIcon(svgIcon(QStringLiteral(":/adsdemo/images/") + QLatin1String(row.icon)));
        row.action->setShortcut(row.shortcut);
        row.menu->addAction(row.action);
        if (row.onToolBar) {
            m_ui->toolBar->addAction(row.action);
        }
    }
    for (QAction *action :
         {m_ui->actionNew_Project, m_ui->actionLoad_Project, m_ui->actionSave_All_Project}) {
        action->setProperty("Floating", false);
    }
    auto *newButton = qobject_cast<QToolButton *>(m_ui->toolBar->widgetForAction(m_ui->actionNew_Project));
    newButton->setPopupMode(QToolButton::InstantPopup);

    connect(m_ui->actionNew_Project, &QAction::triggered, this, &CMainWindow::slotNewProject);
    connect(m_ui->actionLoad_Project, &QAction::triggered, this, &CMainWindow::loadJsonFile);
    connect(m_ui->actionSave_All_Project, &QAction::triggered, this, &CMainWindow::saveProjectAllFile);
    connect(m_ui->actionAbout, &QAction::triggered, this, &CMainWindow::aboutActionTriggered);
}

void CMainWindow::centre()
{
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    move(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, frameSize(), available).topLeft());
}

void CMainWindow::CESwitching()
{
    static QTranslator translator;
    const QString file =
        m_chinese ? QStringLiteral(":/adsdemo/english.qm") : QStringLiteral(":/adsdemo/chinese.qm");
    m_chinese = !m_chinese;
    if (translator.load(file, QLatin1String(""), QLatin1String(""), QLatin1String(""))) {
        QCoreApplication::installTranslator(&translator);
    } else {
        QCoreApplication::removeTranslator(&translator);
        qWarning() << "Failed to load translation file: " << file;
    }
    m_ui->retranslateUi(this);
    setWindowTitle(QStringLiteral("MRN-IEC61850-Modbus"));
}

void CMainWindow::applyVsStyle()
{
    QFile file(QStringLiteral(":adsdemo/res/visual_studio_light.css"));
    if (!dockManager() || !file.open(QIODevice::ReadOnly)) {
        return;
    }
    dockManager()->setStyleSheet(QTextStream(&file).readAll());
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
    m_layout->savePerspective();
}

void CMainWindow::onViewToggled(bool)
{
    const auto *dock = qobject_cast<ads::CDockWidget *>(sender());
    Q_UNUSED(dock)
}

void CMainWindow::onViewVisibilityChanged(bool)
{
    const auto *dock = qobject_cast<ads::CDockWidget *>(sender());
    Q_UNUSED(dock)
}

void CMainWindow::appendMessage(const QString &text)
{
    if (QPlainTextEdit *editor = messageEditor()) {
        editor->appendPlainText(text);
    }
}

QStandardItem *CMainWindow::currentItem() const
{
    return projectTree() ? m_model->itemFromIndex(projectTree()->currentIndex()) : nullptr;
}

QJsonObject CMainWindow::buildProjectJson(QStandardItem *project) const
{
    return ::buildProjectJson(project);
}

QMenu *CMainWindow::viewMenu() const
{
    return m_ui->menuView;
}

ads::CDockManager *CMainWindow::dockManager() const
{
    return m_layout->manager();
}

QTreeView *CMainWindow::projectTree() const
{
    return m_layout->projectTree();
}

QTabWidget *CMainWindow::monitoringTabs() const
{
    return m_layout->monitoringTabs();
}

QPlainTextEdit *CMainWindow::messageEditor() const
{
    return m_layout->messageEditor();
}

void CMainWindow::createEditor()
{
    m_dormantDocks->createEditor(sender());
}

void CMainWindow::createTable()
{
    m_dormantDocks->createTable();
}

void CMainWindow::createImageViewer()
{
    m_dormantDocks->createImageViewer(sender());
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
    // Without a project open the layout is not kept, on purpose: it is stored with work that was asked about.
    if (exit == ProjectLifecycle::Exit::Leave) {
        m_layout->saveState();
        if (ads::CDockManager *manager = dockManager()) { // gone if the window is closed a second time
            manager->deleteLater();
        }
    }
    QMainWindow::closeEvent(event);
}
