#include "mainwindow/docklayout.h"

#include "mainwindow/cmainwindow.h"
#include "mainwindow/docking.h"
#include "widgets/svgicon.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QHeaderView>
#include <QInputDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QSettings>
#include <QSignalBlocker>
#include <QSplitter>
#include <QStandardItemModel>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeView>
#include <QWidgetAction>

using ads::CDockWidget;

namespace {

const QString settingsFile = QStringLiteral("Settings.ini");
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

// The icons of the nodes are dark and drawn for light ground: they vanish on most platforms' highlight.
void setReadableSelection(QTreeView *tree)
{
    QPalette palette;
    palette.setColor(QPalette::Highlight, QColor(0xcf, 0xe6, 0xf7));
    palette.setColor(QPalette::HighlightedText, QColor(0x1e, 0x1e, 0x1e));
    tree->setPalette(palette);
}

// Of the library's style sheet, which is drawn for light ground.
QString styleAdditions(const QPalette &desktop)
{
    // The library's light colour for the focused tab's text is dark on a dark desktop.
    QString style =
        QStringLiteral("ads--CDockWidgetTab[focused=\"true\"] QLabel { color: palette(highlighted-text); }");
    if (isDark(desktop)) {
        style += QStringLiteral(
            "#tabCloseButton, #dockAreaCloseButton { qproperty-icon: url(:/adsdemo/images/close-light.svg), "
            "url(:/ads/images/close-button-disabled.svg) disabled; }"
            "#detachGroupButton { qproperty-icon: url(:/adsdemo/images/detach-light.svg), "
            "url(:/ads/images/detach-button-disabled.svg) disabled; }"
            "#tabsMenuButton { qproperty-icon: url(:/adsdemo/images/tabs-light.svg); }");
    }
    return style;
}

// The library gives its buttons tool tips, but no names for screen readers, and its scroll areas the focus.
void makeAccessible(const QWidget *parent)
{
    const auto buttons = parent->findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        if (button->accessibleName().isEmpty()) {
            button->setAccessibleName(button->toolTip());
        }
    }
    const auto areas = parent->findChildren<QScrollArea *>(QStringLiteral("dockWidgetScrollArea"));
    for (QScrollArea *area : areas) {
        area->setFocusPolicy(Qt::NoFocus);
    }
}

} // namespace

DockLayout::DockLayout(CMainWindow *window)
    : QObject(window)
    , m_window(window)
    , m_perspectives(new QComboBox)
    , m_createPerspective(new QAction(svgIcon(QStringLiteral(":/adsdemo/images/picture_in_picture.svg")),
                                      CMainWindow::tr("Create Perspective"), window))
    , m_perspectiveList(new QWidgetAction(window))
{
    m_createPerspective->setObjectName(QStringLiteral("createPerspectiveAction"));
    connect(m_createPerspective, &QAction::triggered, window, &CMainWindow::savePerspective);

    m_perspectives->setObjectName(QStringLiteral("perspectiveComboBox"));
    m_perspectives->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    m_perspectives->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
    m_perspectiveList->setObjectName(QStringLiteral("perspectiveListAction"));
    m_perspectiveList->setDefaultWidget(m_perspectives);
}

void DockLayout::createManager()
{
    Docking::configureDocking();
    m_manager = new ads::CDockManager(m_window);
    Docking::setFloatingToolBarStyle(m_manager);
    // By the older of two signals that a choice emits: it is the one that may be emitted by name from
    // outside.
    QT_WARNING_PUSH
    QT_WARNING_DISABLE_DEPRECATED
    connect(m_perspectives, qOverload<const QString &>(&QComboBox::activated), m_manager,
            &ads::CDockManager::openPerspective);
    QT_WARNING_POP
    m_manager->setStyleSheet(m_manager->styleSheet() + styleAdditions(m_window->palette()));
    connect(m_manager, &ads::CDockManager::dockAreaCreated, this,
            [](const ads::CDockAreaWidget *area) { makeAccessible(area); });
    connect(m_manager, &ads::CDockManager::dockWidgetAdded, this, [this] { makeAccessible(m_manager); });
    // A restored layout stands in new splitters.
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
    const QMap<QString, CDockWidget *> docks = m_manager->dockWidgetsMap();
    for (CDockWidget *dock : docks) {
        connect(dock, &CDockWidget::viewToggled, m_window, &CMainWindow::onViewToggled);
        connect(dock, &CDockWidget::visibilityChanged, m_window, &CMainWindow::onViewVisibilityChanged);
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

CDockWidget *DockLayout::makeTableDock()
{
    static int counter = 0;
    CDockWidget *dock = Docking::makeDock(m_manager, QStringLiteral("Table %1").arg(counter++));
    auto *tabs = new QTabWidget;
    tabs->setTabsClosable(true);
    tabs->setMovable(true);
    dock->setWidget(tabs);
    dock->setIcon(svgIcon(QStringLiteral(":/adsdemo/images/data monitoring.svg")));
    dock->setMinimumSizeHintMode(CDockWidget::MinimumSizeHintFromContent);
    dock->createDefaultToolBar()->hide(); // nothing is in it: it would be a blank strip above the tables
    return dock;
}

CDockWidget *DockLayout::makeMonitoringDock()
{
    CDockWidget *dock = makeTableDock();
    // The tabs' close buttons stay without effect: a monitoring tab goes with its node in the tree.
    m_monitoringTabs = qobject_cast<QTabWidget *>(dock->widget());
    m_monitoringTabs->setObjectName(QStringLiteral("monitoringTabs"));
    dock->setWindowTitle(CMainWindow::tr("Data monitoring"));
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
    setReadableSelection(m_tree);
    connect(m_tree, &QTreeView::customContextMenuRequested, m_window, &CMainWindow::prjectTreeView_MenuPopup);
    connect(m_tree, &QTreeView::clicked, m_window, &CMainWindow::prjectTreeView_clicked);
    connect(m_tree, &QTreeView::pressed, m_window, &CMainWindow::prjectTreeView_pressed);
    connect(m_tree, &QTreeView::doubleClicked, m_window, &CMainWindow::prjectTreeView_doubleClicked);

    CDockWidget *dock = Docking::makeDock(m_manager, CMainWindow::tr("Project"));
    dock->setIcon(svgIcon(QStringLiteral(":/adsdemo/images/project_manage.svg")));
    dock->setWidget(m_tree);
    switchOff(dock,
              {CDockWidget::DockWidgetFocusable, CDockWidget::DockWidgetMovable,
               CDockWidget::DockWidgetFloatable, CDockWidget::DockWidgetClosable});
    dock->setFeature(CDockWidget::CustomCloseHandling, true);
    return dock;
}

CDockWidget *DockLayout::makeEditorDock(const QString &title, const QString &placeholder, const QIcon &icon)
{
    CDockWidget *dock = Docking::makeDock(m_manager, title);
    auto *editor = new QPlainTextEdit;
    editor->setPlaceholderText(placeholder);
    editor->setStyleSheet(QStringLiteral("border: none"));
    dock->setWidget(editor);
    dock->setIcon(icon);

    auto *options = new QMenu(CMainWindow::tr("Options"), dock);
    options->setObjectName(QStringLiteral("optionsMenu"));
    options->menuAction()->setObjectName(options->objectName()); // the title bar's button is named after it
    options->setToolTip(CMainWindow::tr("Options"));
    options->setIcon(svgIcon(QStringLiteral(":/adsdemo/images/custom-menu-button.svg")));
    options->addAction(CMainWindow::tr("Clear Editor"), editor, &QPlainTextEdit::clear);
    dock->setTitleBarActions({options->menuAction()});
    return dock;
}

CDockWidget *DockLayout::makeMessageDock()
{
    CDockWidget *dock = makeEditorDock(QStringLiteral("Editor"), QStringLiteral("Message:"),
                                       svgIcon(QStringLiteral(":/adsdemo/images/message.svg")));
    dock->setWindowTitle(CMainWindow::tr("Message"));
    dock->setGeometry(10, 10, 600, 300);
    dock->resize(600, 2000);
    switchOff(dock, {CDockWidget::DockWidgetFocusable, CDockWidget::DockWidgetFloatable});
    m_messageEditor = qobject_cast<QPlainTextEdit *>(dock->widget());
    m_messageEditor->setObjectName(QStringLiteral("messageEditor"));
    m_messageEditor->setAccessibleName(dock->windowTitle());
    m_messageEditor->setTabChangesFocus(true); // else Tab would never leave it
    return dock;
}

void DockLayout::saveState() const
{
    if (!m_manager) {
        return;
    }
    QSettings settings(settingsFile, QSettings::IniFormat);
    settings.setValue(geometryKey, m_window->saveGeometry());
    settings.setValue(stateKey, m_window->saveState());
    settings.setValue(dockingStateKey, m_manager->saveState());
}

void DockLayout::restoreState()
{
    if (!m_manager) {
        return;
    }
    const QSettings settings(settingsFile, QSettings::IniFormat);
    m_window->restoreGeometry(settings.value(geometryKey).toByteArray());
    m_window->restoreState(settings.value(stateKey).toByteArray());
    // The manager's states are compressed, and so is the empty one that stands for none.
    m_manager->restoreState(settings.value(dockingStateKey, qCompress(QByteArray())).toByteArray());
}

void DockLayout::loadPerspectives()
{
    QSettings settings(settingsFile, QSettings::IniFormat);
    m_manager->loadPerspectives(settings);
    fillPerspectives();
}

void DockLayout::savePerspective()
{
    if (!m_manager) {
        return;
    }
    const QString name = QInputDialog::getText(m_window, QStringLiteral("Save Perspective"),
                                               QStringLiteral("Enter unique name:"));
    if (name.isEmpty()) {
        return;
    }
    m_manager->addPerspective(name);
    {
        const QSignalBlocker blocker(m_perspectives);
        fillPerspectives();
        m_perspectives->setCurrentText(name);
    }
    QSettings settings(settingsFile, QSettings::IniFormat);
    m_manager->savePerspectives(settings);
}

void DockLayout::fillPerspectives()
{
    m_perspectives->clear();
    m_perspectives->addItems(m_manager->perspectiveNames());
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
