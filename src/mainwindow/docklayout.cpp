#include "mainwindow/docklayout.h"

#include "mainwindow/dockfactory.h"
#include "mainwindow/docking.h"
#include "mainwindow/dockstyle.h"
#include "mainwindow/dropoverlay.h"
#include "mainwindow/floatingdocks.h"
#include "mainwindow/layoutfile.h"
#include "mainwindow/opendocks.h"
#include "mainwindow/windowtext.h"
#include "widgets/svgicon.h"
#include "widgets/timedtext.h"

#include <QAction>
#include <QGuiApplication>
#include <QHeaderView>
#include <QMainWindow>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScreen>
#include <QSettings>
#include <QSplitter>
#include <QStandardItemModel>
#include <QStyle>
#include <QTabWidget>
#include <QTreeView>

using ads::CDockWidget;

namespace {

const QString geometryKey = QStringLiteral("mainWindow/Geometry");
const QString stateKey = QStringLiteral("mainWindow/State");
const QString dockingStateKey = QStringLiteral("mainWindow/DockingState");

void switchOff(CDockWidget *dock, std::initializer_list<CDockWidget::DockWidgetFeature> features)
{
    for (CDockWidget::DockWidgetFeature feature : features) {
        dock->setFeature(feature, false);
    }
    Docking::setPinnable(dock, false);
}

} // namespace

DockLayout::DockLayout(QMainWindow *window)
    : QObject(window)
    , m_window(window)
{
    Docking::configureDocking();
    m_manager = new ads::CDockManager(window);
    Docking::setFloatingToolBarStyle(m_manager);
    DockStyle::install(m_manager, window->palette());
    DropOverlay::cutOut(m_manager);
    FloatingDocks::keepOnScreen(m_manager);
    FloatingDocks::keepBelowDialogs(m_manager);
    new OpenDocks(m_manager);
    // A restored layout has new splitters.
    connect(m_manager, &ads::CDockManager::stateRestored, this, &DockLayout::keepTreeWidth);
}

void DockLayout::createDocks(QStandardItemModel *model, QMenu *viewMenu)
{
    CDockWidget *monitoring = makeMonitoringDock();
    ads::CDockAreaWidget *center = m_manager->addDockWidget(ads::CenterDockWidgetArea, monitoring);
    CDockWidget *project = makeProjectDock(model);
    ads::CDockAreaWidget *left = m_manager->addDockWidget(ads::LeftDockWidgetArea, project, center);
    m_projectDock = project;
    CDockWidget *message = makeMessageDock();
    m_manager->addDockWidget(ads::BottomDockWidgetArea, message, center);
    // The first layout, in proportion: a narrow tree, a low message dock, the rest for live values.
    m_manager->setSplitterSizes(left, {256, 1024});
    m_manager->setSplitterSizes(center, {450, 150});
    keepTreeWidth();

    for (CDockWidget *dock : {monitoring, project, message}) {
        viewMenu->addAction(dock->toggleViewAction());
    }
}

void DockLayout::keepTreeWidth()
{
    QWidget *area = m_projectDock ? m_projectDock->dockAreaWidget() : nullptr;
    auto *splitter = area ? qobject_cast<QSplitter *>(area->parentWidget()) : nullptr;
    if (!splitter || splitter->orientation() != Qt::Horizontal) {
        return;
    }
    for (int i = 0; i < splitter->count(); ++i) {
        splitter->setStretchFactor(i, splitter->widget(i) == area ? 0 : 1);
    }
}

CDockWidget *DockLayout::makeMonitoringDock()
{
    CDockWidget *dock = DockFactory::makeTable(m_manager);
    // The tabs' close buttons stay without effect: a monitoring tab goes with its node in the tree.
    m_monitoringTabs = qobject_cast<QTabWidget *>(dock->widget());
    m_monitoringTabs->setObjectName(QStringLiteral("monitoringTabs"));
    dock->setWindowTitle(WindowText::tr("Data monitoring"));
    switchOff(
        dock,
        {CDockWidget::DockWidgetClosable, CDockWidget::DockWidgetMovable, CDockWidget::DockWidgetFloatable});
    dock->setFeature(CDockWidget::CustomCloseHandling, true);
    return dock;
}

CDockWidget *DockLayout::makeProjectDock(QStandardItemModel *model)
{
    m_tree = new QTreeView;
    m_tree->setObjectName(QStringLiteral("projectTree"));
    m_tree->setModel(model);
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setSelectionBehavior(QAbstractItemView::SelectItems);
    m_tree->header()->setSectionResizeMode(QHeaderView::Stretch);
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->expandAll();
    DockStyle::makeSelectionReadable(m_tree);

    CDockWidget *dock = Docking::makeDock(m_manager, WindowText::tr("Project"));
    dock->setIcon(svgIcon(QStringLiteral(":/adsdemo/images/project_manage.svg")));
    dock->setWidget(m_tree);
    switchOff(dock,
              {CDockWidget::DockWidgetFocusable, CDockWidget::DockWidgetMovable,
               CDockWidget::DockWidgetFloatable, CDockWidget::DockWidgetClosable});
    dock->setFeature(CDockWidget::CustomCloseHandling, true);
    return dock;
}

CDockWidget *DockLayout::makeMessageDock()
{
    CDockWidget *dock = DockFactory::makeEditor(m_manager, QStringLiteral("Editor"), new TimedText,
                                                WindowText::tr("Message:"),
                                                svgIcon(QStringLiteral(":/adsdemo/images/message.svg")));
    dock->setWindowTitle(WindowText::tr("Message"));
    dock->setGeometry(10, 10, 600, 300);
    dock->resize(600, 2000);
    switchOff(dock, {CDockWidget::DockWidgetFocusable, CDockWidget::DockWidgetFloatable});
    m_messageEditor = qobject_cast<QPlainTextEdit *>(dock->widget());
    m_messageEditor->setObjectName(QStringLiteral("messageEditor"));
    m_messageEditor->setAccessibleName(dock->windowTitle());
    m_messageEditor->setTabChangesFocus(true); // else Tab would never leave it
    m_messageEditor->setReadOnly(true);
    // To be read and copied without a mouse, too.
    m_messageEditor->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    return dock;
}

void DockLayout::setFirstGeometry()
{
    m_window->resize(1280, 720);
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    m_window->move(
        QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, m_window->frameSize(), available).topLeft());
}

void DockLayout::saveState() const
{
    if (!m_manager) {
        return;
    }
    QSettings settings(layoutFile, QSettings::IniFormat);
    settings.setValue(geometryKey, m_window->saveGeometry());
    settings.setValue(stateKey, m_window->saveState());
    settings.setValue(dockingStateKey, m_manager->saveState());
}

void DockLayout::restoreState()
{
    if (!m_manager) {
        return;
    }
    const QSettings settings(layoutFile, QSettings::IniFormat);
    m_window->restoreGeometry(settings.value(geometryKey).toByteArray());
    m_window->restoreState(settings.value(stateKey).toByteArray());
    // The manager's states are compressed, and so is the empty one that stands for none.
    m_manager->restoreState(settings.value(dockingStateKey, qCompress(QByteArray())).toByteArray());
}

ads::CDockManager *DockLayout::manager() const
{
    return m_manager;
}

QTabWidget *DockLayout::monitoringTabs() const
{
    return m_monitoringTabs;
}

QTreeView *DockLayout::projectTree() const
{
    return m_tree;
}

QPlainTextEdit *DockLayout::messageEditor() const
{
    return m_messageEditor;
}
