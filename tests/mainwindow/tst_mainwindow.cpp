#include "mainwindow/cmainwindow.h"
#include "mainwindow/docking.h"
#include "mainwindow/logowindow.h"

#include <QAction>
#include <QDir>
#include <QGuiApplication>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QScreen>
#include <QStandardItemModel>
#include <QStatusBar>
#include <QStyle>
#include <QTemporaryDir>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>
#include <QtTest>

// The window itself: actions, menus, language, style, about window. Each case starts without "Settings.ini".
class TestMainWindow : public QObject
{
    Q_OBJECT

private slots:
    void docksDieWhileTheWindowIsOneStill();
    void init();
    void firstStartIsCentredWithTheFixedTitle();
    void generatedObjectsStandInTheirOrder();
    void menusAndToolBarHoldTheirActions();
    void actionsCarryIconShortcutAndProperty_data();
    void actionsCarryIconShortcutAndProperty();
    void startsInChineseAndEachSwitchLoadsTheOther();
    void aMissingCatalogueIsToldAndTheLanguageStillSwitches();
    void theUnplacedActionsDoNothing();
    void applyVsStyleDressesTheDockManagerAlone();
    void aboutShowsTheOneWindowAgain();
    void theModelBelongsToTheWindow();
    void appendedMessagesShowInTheMessageDock();
    void withoutDocksTheWindowStillAnswers();

private:
    QStringList names(const QList<QAction *> &actions) const;
    template <class T> T *child(const char *name) const
    {
        return m_window->findChild<T *>(QLatin1String(name));
    }
    QAction *action(const char *name) const { return child<QAction>(name); }

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<CMainWindow> m_window;
};

void TestMainWindow::init()
{
    m_window.reset();
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QDir::setCurrent(m_folder->path()));
    QCoreApplication::setApplicationName("Marlin Gate 70");
    m_window.reset(new CMainWindow);
}

QStringList TestMainWindow::names(const QList<QAction *> &actions) const
{
    QStringList result;
    for (const QAction *action : actions) {
        result.append(action->objectName());
    }
    return result;
}

void TestMainWindow::firstStartIsCentredWithTheFixedTitle()
{
    QCOMPARE(m_window->windowTitle(), "MRN-IEC61850-Modbus");
    QCOMPARE(m_window->size(), QSize(1280, 720));
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    QCOMPARE(m_window->frameGeometry(),
             QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, QSize(1280, 720), available));
    QVERIFY(!QFile::exists("Settings.ini"));
}

void TestMainWindow::generatedObjectsStandInTheirOrder()
{
    QStringList actions;
    const auto all = m_window->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly);
    for (const QAction *action : all) {
        if (action->objectName().startsWith(QLatin1String("action"))) {
            actions.append(action->objectName());
        }
    }
    QCOMPARE(actions,
             QStringList({"actionRestoreState", "actionSaveState", "actionAbout", "actionC_E_Switching",
                          "actionNew_Project", "actionLoad_Project", "actionApply_VS_Style",
                          "actionSave_All_Project"}));

    QStringList menus;
    const QList<QAction *> bar = m_window->menuBar()->actions();
    for (const QAction *action : bar) {
        menus.append(action->menu()->objectName());
    }
    QCOMPARE(menus, QStringList({"menuFile", "menuView", "menuWindow", "menuAbout"}));
    QCOMPARE(m_window->toolBarArea(child<QToolBar>("toolBar")), Qt::TopToolBarArea);
    QVERIFY(child<QStatusBar>("statusBar")->currentMessage().isEmpty());
    QCOMPARE(m_window->centralWidget(), static_cast<QWidget *>(m_window->dockManager()));
}

void TestMainWindow::menusAndToolBarHoldTheirActions()
{
    const QString newProject = "actionNew_Project";
    const QString loadProject = "actionLoad_Project";
    const QString saveAll = "actionSave_All_Project";
    const QString saveState = "actionSaveState";
    const QString restoreState = "actionRestoreState";
    QCOMPARE(names(child<QMenu>("menuFile")->actions()), QStringList({saveState, restoreState}));
    QCOMPARE(names(child<QMenu>("menuWindow")->actions()), QStringList({newProject, loadProject, saveAll}));
    QCOMPARE(names(child<QMenu>("menuAbout")->actions()), QStringList("actionAbout"));

    auto *toolBar = child<QToolBar>("toolBar");
    QCOMPARE(names(toolBar->actions()),
             QStringList({newProject, loadProject, saveAll, saveState, restoreState}));
    QCOMPARE(toolBar->toolButtonStyle(), Qt::ToolButtonTextUnderIcon);
    const auto *button = qobject_cast<QToolButton *>(toolBar->widgetForAction(action("actionNew_Project")));
    QCOMPARE(button->popupMode(), QToolButton::InstantPopup);
}

void TestMainWindow::actionsCarryIconShortcutAndProperty_data()
{
    QTest::addColumn<bool>("icon");
    QTest::addColumn<QKeySequence>("shortcut");
    QTest::addColumn<QVariant>("floating");
    QTest::newRow("actionNew_Project") << true << QKeySequence(QKeySequence::New) << QVariant(false);
    QTest::newRow("actionLoad_Project") << true << QKeySequence(QKeySequence::Open) << QVariant(false);
    QTest::newRow("actionSave_All_Project") << true << QKeySequence("Ctrl+Shift+S") << QVariant(false);
    QTest::newRow("actionAbout") << true << QKeySequence() << QVariant();
    QTest::newRow("actionSaveState") << true << QKeySequence() << QVariant();
    QTest::newRow("actionRestoreState") << true << QKeySequence() << QVariant();
    QTest::newRow("actionC_E_Switching") << false << QKeySequence() << QVariant();
    QTest::newRow("actionApply_VS_Style") << false << QKeySequence() << QVariant();
}

void TestMainWindow::actionsCarryIconShortcutAndProperty()
{
    const QAction *tested = action(QTest::currentDataTag());
    QFETCH(bool, icon);
    QCOMPARE(!tested->icon().pixmap(92).isNull(), icon);
    QTEST(tested->shortcut(), "shortcut");
    QTEST(tested->property("Floating"), "floating");
    QCOMPARE(tested->toolTip(), tested->text());
}

void TestMainWindow::startsInChineseAndEachSwitchLoadsTheOther()
{
    const QString title = "MRN-IEC61850-Modbus";
    const QList<const char *> names = {"actionNew_Project", "actionLoad_Project", "actionSave_All_Project"};
    const QStringList chinese = {"新建项目", "加载项目", "保存全部项目"};
    const QStringList english = {"New Project", "Load Project", "Save All Project"};
    const auto texts = [&] {
        QStringList result;
        for (const char *name : names) {
            result.append(action(name)->text());
        }
        return result;
    };
    QCOMPARE(texts(), chinese);
    const QString builtTitle = m_window->viewMenu()->actions().first()->text();

    for (const QStringList &expected : {english, chinese, english}) {
        QVERIFY(QMetaObject::invokeMethod(m_window.data(), "CESwitching"));
        QCOMPARE(texts(), expected);
        QCOMPARE(m_window->windowTitle(), title);
        QCOMPARE(m_window->viewMenu()->actions().first()->text(), builtTitle);
    }
    QCOMPARE(action("actionAbout")->toolTip(), "About");
    QCOMPARE(child<QMenu>("menuWindow")->title(), "window");
    QCOMPARE(child<QToolBar>("toolBar")->windowTitle(), "toolBar");
}

static void dropCatalogues()
{
    Q_CLEANUP_RESOURCE(translations);
}

static void bringCataloguesBack()
{
    Q_INIT_RESOURCE(translations);
}

void TestMainWindow::aMissingCatalogueIsToldAndTheLanguageStillSwitches()
{
    dropCatalogues();
    QTest::ignoreMessage(QtWarningMsg, "Failed to load translation file:  \":/adsdemo/english.qm\"");
    m_window->CESwitching();
    const QString untranslated = action("actionNew_Project")->text();
    QTest::ignoreMessage(QtWarningMsg, "Failed to load translation file:  \":/adsdemo/chinese.qm\"");
    m_window->CESwitching();
    bringCataloguesBack();
    QCOMPARE(untranslated, "New Project");
    QCOMPARE(action("actionNew_Project")->text(), "New Project");
    QCOMPARE(m_window->windowTitle(), "MRN-IEC61850-Modbus");

    m_window->CESwitching();
    m_window->CESwitching();
    QCOMPARE(action("actionNew_Project")->text(), "新建项目");
}

void TestMainWindow::theUnplacedActionsDoNothing()
{
    const QString style = m_window->dockManager()->styleSheet();
    action("actionC_E_Switching")->trigger();
    action("actionApply_VS_Style")->trigger();
    QCOMPARE(action("actionNew_Project")->text(), "新建项目");
    QCOMPARE(m_window->dockManager()->styleSheet(), style);
}

void TestMainWindow::applyVsStyleDressesTheDockManagerAlone()
{
    QFile source(QString(SOURCE_ROOT "/src/resources/res/visual_studio_light.css"));
    QVERIFY(source.open(QIODevice::ReadOnly));
    QVERIFY(QMetaObject::invokeMethod(m_window.data(), "applyVsStyle"));
    QCOMPARE(m_window->dockManager()->styleSheet(), QString::fromUtf8(source.readAll()));
    QCOMPARE(qApp->styleSheet(), QString());
}

void TestMainWindow::aboutShowsTheOneWindowAgain()
{
    const auto *logo = m_window->findChild<LogoWindow *>();
    QVERIFY(logo && !logo->isVisible());
    action("actionAbout")->trigger();
    QVERIFY(logo->isVisible() && !logo->isModal());
    action("actionAbout")->trigger();
    QCOMPARE(m_window->findChildren<LogoWindow *>().size(), 1);
}

void TestMainWindow::theModelBelongsToTheWindow()
{
    const QStandardItemModel *model = m_window->projectModel();
    QCOMPARE(model->parent(), m_window.data());
    QCOMPARE(model->columnCount(), 1);
    QCOMPARE(model->rowCount(), 0);
    QCOMPARE(model->headerData(0, Qt::Horizontal).toString(), CMainWindow::tr("Project Name"));
    QCOMPARE(m_window->projectTree()->model(), static_cast<const QAbstractItemModel *>(model));

    auto *item = new QStandardItem("Riverside");
    m_window->projectModel()->appendRow(item);
    QCOMPARE(m_window->currentItem(), nullptr);
    m_window->projectTree()->setCurrentIndex(item->index());
    QCOMPARE(m_window->currentItem(), item);
    emit m_window->projectTree()->pressed(item->index());
    emit m_window->projectTree()->doubleClicked(item->index());
    QCOMPARE(m_window->viewMenu()->actions().size(), 3);
}

void TestMainWindow::appendedMessagesShowInTheMessageDock()
{
    m_window->appendMessage("first");
    m_window->appendMessage("second");
    QCOMPARE(m_window->messageEditor()->toPlainText(), "first\nsecond");
}

void TestMainWindow::withoutDocksTheWindowStillAnswers()
{
    m_window->dockManager()->deleteLater();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_window->dockManager(), nullptr);
    QCOMPARE(m_window->messageEditor(), nullptr);
    QCOMPARE(m_window->monitoringTabs(), nullptr);
    QCOMPARE(m_window->projectTree(), nullptr);
    QCOMPARE(m_window->currentItem(), nullptr);
    QVERIFY(m_window->viewMenu()->actions().isEmpty());
    m_window->appendMessage("nobody reads this");
    for (const char *slot : {"applyVsStyle", "savePerspective", "createEditor", "createTable",
                             "createImageViewer", "showStatusDialog", "toggleDockWidgetWindowTitle"}) {
        QVERIFY(QMetaObject::invokeMethod(m_window.data(), slot));
    }
    action("actionSaveState")->trigger();
    action("actionRestoreState")->trigger();
    QVERIFY(!QFile::exists("Settings.ini"));
}

// Dying forms still call the window.
void TestMainWindow::docksDieWhileTheWindowIsOneStill()
{
    auto *window = new CMainWindow;
    const QObject *object = window;
    QByteArray was;
    connect(window->dockManager(), &QObject::destroyed, this,
            [&] { was = object->metaObject()->className(); });
    delete window;
    QCOMPARE(was, QByteArray("CMainWindow"));
}

QTEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
