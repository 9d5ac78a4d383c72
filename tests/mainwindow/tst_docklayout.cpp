#include "docksundertest.h"
#include "mainwindow/cmainwindow.h"
#include "run.h"
#include "widgets/timedtext.h"

#include <QAbstractButton>
#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QHeaderView>
#include <QInputDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QSettings>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QToolBar>
#include <QTreeView>
#include <QWidgetAction>
#include <QtTest>

using ads::CDockWidget;

// The three fixed docks, and what the user can do with them, the layout and the perspectives.
class TestDockLayout : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theDocksAreStyledAndTheirWidgetsNamed();
    void theFixedDocksHaveTheirFeatures_data();
    void theFixedDocksHaveTheirFeatures();
    void theDocksLieAroundTheLiveValues();
    void theFirstLayoutIsForLiveValues();
    void theViewMenuListsTheDocksInOrder();
    void onlyTheMessageDockHasAWorkingCloseButton();
    void theMessageDockComesBackThroughTheViewMenu();
    void theTreeIsSetUpForOneColumn();
    void aSelectedNodeIsDarkOnLightWhateverThePlatformsColours();
    void monitoringTabsAreNotClosedByTheirButton();
    void theOptionsMenuClearsTheMessages();
    void theMessageEditorIsNamedAndLeftByTab();
    void messagesAreReadAndCopiedButNotTyped();
    void messagesHaveTheirTimes();
    void savingAndRestoringLeavesTheLayout();
    void restoringBringsASavedLayoutBack();
    void theTreeKeepsItsWidthAsTheWindowGrows_data();
    void theTreeKeepsItsWidthAsTheWindowGrows();
    void perspectivesAreUnplaced();
    void aPerspectiveIsStoredAndOpened();
    void aPerspectiveOfTheSameNameIsReplaced();
    void anEmptyPerspectiveNameChangesNothing();
    void storedPerspectivesAreOfferedAtStart();

private:
    // The fixed docks in the order in which they are made.
    QList<CDockWidget *> docks() const;
    QString layout() const;
    QComboBox *perspectives() const;
    void choosePerspective(const QString &name) const;
    QStringList perspectiveNames() const;
    // Presses "Create Perspective" and answers the question for the name.
    void createPerspective(const QString &name);

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<CMainWindow> m_window;
};

void TestDockLayout::init()
{
    m_window.reset();
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QDir::setCurrent(m_folder->path()));
    m_window.reset(new CMainWindow);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window.data()));
}

QList<CDockWidget *> TestDockLayout::docks() const
{
    QList<CDockWidget *> result;
    const QList<QAction *> actions = m_window->viewMenu()->actions();
    for (const QAction *action : actions) {
        result.append(qobject_cast<CDockWidget *>(action->parent()));
    }
    return result;
}

QString TestDockLayout::layout() const
{
    QStringList result;
    const auto all = docks();
    for (const CDockWidget *dock : all) {
        const QRect place(dock->mapTo(m_window.data(), QPoint(0, 0)), dock->size());
        result.append(QString("%1 %2 %3+%4 %5x%6")
                          .arg(dock->windowTitle(), QLatin1String(dock->isClosed() ? "closed" : "open"))
                          .arg(place.x())
                          .arg(place.y())
                          .arg(place.width())
                          .arg(place.height()));
    }
    return result.join(QLatin1Char('\n'));
}

QComboBox *TestDockLayout::perspectives() const
{
    return qobject_cast<QComboBox *>(m_window->findChild<QWidgetAction *>()->defaultWidget());
}

void TestDockLayout::choosePerspective(const QString &name) const
{
    QVERIFY(QMetaObject::invokeMethod(perspectives(), "activated", Q_ARG(QString, name)));
}

QStringList TestDockLayout::perspectiveNames() const
{
    QStringList result;
    for (int row = 0; row < perspectives()->count(); ++row) {
        result.append(perspectives()->itemText(row));
    }
    return result;
}

void TestDockLayout::createPerspective(const QString &name)
{
    QString asked;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
        asked = dialog->windowTitle() + QLatin1Char('|') + dialog->labelText();
        dialog->setTextValue(name);
        dialog->accept();
    });
    const auto actions = m_window->findChildren<QAction *>(QString(), Qt::FindDirectChildrenOnly);
    for (QAction *action : actions) {
        if (action->objectName() == QLatin1String("createPerspectiveAction")) {
            QVERIFY(!action->icon().isNull());
            action->trigger();
        }
    }
    QCOMPARE(asked, "Save Perspective|Enter unique name:");
}

void TestDockLayout::theFixedDocksHaveTheirFeatures_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QByteArray>("title");
    QTest::addColumn<QByteArray>("nameStem");
    QTest::addColumn<int>("features");
    QTest::newRow("data monitoring") << 0 << QByteArray("Data monitoring") << QByteArray("Table ")
                                     << int(CDockWidget::DockWidgetFocusable
                                            | CDockWidget::CustomCloseHandling);
    QTest::newRow("project") << 1 << QByteArray("Project") << QByteArray("Project")
                             << int(CDockWidget::CustomCloseHandling);
    QTest::newRow("message") << 2 << QByteArray("Message") << QByteArray("Editor")
                             << int(CDockWidget::DockWidgetClosable | CDockWidget::DockWidgetMovable);
}

void TestDockLayout::theFixedDocksHaveTheirFeatures()
{
    QFETCH(int, row);
    QFETCH(QByteArray, title);
    QFETCH(QByteArray, nameStem);
    const CDockWidget *dock = docks().at(row);
    QCOMPARE(dock->windowTitle(), CMainWindow::tr(title));
    QVERIFY(dock->objectName().startsWith(CMainWindow::tr(nameStem)));
    QTEST(int(dock->features()), "features");
    QVERIFY(!dock->icon().isNull());
}

void TestDockLayout::theDocksAreStyledAndTheirWidgetsNamed()
{
    QVERIFY(ads::CDockManager::testConfigFlag(ads::CDockManager::FocusHighlighting));
    QVERIFY(m_window->dockManager()->styleSheet().contains(QLatin1String("ads--CDockWidgetTab[focused")));
    QStringList names;
    const auto all = docks();
    for (const CDockWidget *dock : all) {
        names.append(dock->widget()->objectName());
    }
    QCOMPARE(names, QStringList({"monitoringTabs", "projectTree", "messageEditor"}));
}

void TestDockLayout::theDocksLieAroundTheLiveValues()
{
    QList<QRect> places;
    const auto all = docks();
    for (const CDockWidget *dock : all) {
        const ads::CDockAreaWidget *area = dock->dockAreaWidget();
        places.append({area->mapTo(m_window.data(), QPoint(0, 0)), area->size()});
        QCOMPARE(area->dockWidgetsCount(), 1);
    }
    const QRect monitoring = places.at(0);
    const QRect project = places.at(1);
    const QRect message = places.at(2);
    QVERIFY(project.right() < monitoring.left());
    QVERIFY(monitoring.bottom() < message.top());
    QCOMPARE(message.left(), monitoring.left());
    QCOMPARE(message.width(), monitoring.width());
    QCOMPARE(project.top(), monitoring.top());
    QCOMPARE(project.bottom(), message.bottom());
    QVERIFY(project.width() < monitoring.width() && message.height() < monitoring.height());
}

void TestDockLayout::theFirstLayoutIsForLiveValues()
{
    const DocksUnderTest window; // no layout was restored in it
    const QWidget *tree = window.projectTree();
    const QWidget *messages = window.layout()->messageEditor();
    const int height = window.dockManager()->height();
    QTRY_VERIFY(qAbs(tree->width() - 256) < 10);
    QTRY_VERIFY2(messages->height() < height / 4 && messages->height() > height / 8,
                 qPrintable(QString::number(messages->height())));
    const int values = window.monitoringTabs()->width();
    const int width = tree->width();
    const_cast<DocksUnderTest &>(window).resize(1380, 720);
    QTRY_COMPARE(window.monitoringTabs()->width(), values + 100);
    QCOMPARE(tree->width(), width);
}

void TestDockLayout::theViewMenuListsTheDocksInOrder()
{
    QStringList texts;
    const QList<QAction *> actions = m_window->viewMenu()->actions();
    for (const QAction *action : actions) {
        texts.append(action->text());
        QVERIFY(action->isChecked());
    }
    QCOMPARE(texts,
             QStringList({CMainWindow::tr("Data monitoring"), CMainWindow::tr("Project"),
                          CMainWindow::tr("Message")}));
}

void TestDockLayout::onlyTheMessageDockHasAWorkingCloseButton()
{
    QList<bool> closed;
    const auto all = docks();
    for (CDockWidget *dock : all) {
        dock->dockAreaWidget()->titleBarButton(ads::TitleBarButtonClose)->click();
        closed.append(dock->isClosed());
        dock->dockAreaWidget()->titleBarButton(ads::TitleBarButtonUndock)->click();
        QVERIFY(!dock->isFloating());
    }
    QCOMPARE(closed, QList<bool>({false, false, true}));
}

void TestDockLayout::theMessageDockComesBackThroughTheViewMenu()
{
    CDockWidget *message = docks().at(2);
    m_window->appendMessage("kept");
    message->closeDockWidget();
    QVERIFY(message->isClosed());
    m_window->viewMenu()->actions().at(2)->trigger();
    QVERIFY(!message->isClosed());
    QVERIFY(m_window->messageEditor()->isVisible());
    QCOMPARE(m_window->messageEditor()->toPlainText(), "kept");
}

void TestDockLayout::theTreeIsSetUpForOneColumn()
{
    const QTreeView *tree = m_window->projectTree();
    QCOMPARE(docks().at(1)->widget(), static_cast<const QWidget *>(tree));
    QCOMPARE(tree->frameShape(), QFrame::NoFrame);
    QCOMPARE(tree->selectionBehavior(), QAbstractItemView::SelectItems);
    QCOMPARE(tree->header()->sectionResizeMode(0), QHeaderView::Stretch);
    QCOMPARE(tree->editTriggers(), QAbstractItemView::EditTriggers(QAbstractItemView::NoEditTriggers));
    QCOMPARE(tree->contextMenuPolicy(), Qt::CustomContextMenu);
}

void TestDockLayout::aSelectedNodeIsDarkOnLightWhateverThePlatformsColours()
{
    const QPalette platform = QApplication::palette();
    QPalette dark = platform;
    dark.setColor(QPalette::Highlight, Qt::darkBlue);
    dark.setColor(QPalette::HighlightedText, Qt::white);
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(dark);
    m_window.reset(new CMainWindow);
    const QPalette shown = m_window->projectTree()->palette();
    QApplication::setPalette(platform);
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        QCOMPARE(shown.color(group, QPalette::Highlight).name(), "#cfe6f7");
        QCOMPARE(shown.color(group, QPalette::HighlightedText).name(), "#1e1e1e");
        QCOMPARE(shown.color(group, QPalette::Base), QColor(Qt::black));
    }
}

void TestDockLayout::monitoringTabsAreNotClosedByTheirButton()
{
    QTabWidget *tabs = m_window->monitoringTabs();
    QCOMPARE(docks().at(0)->widget(), static_cast<QWidget *>(tabs));
    QVERIFY(tabs->tabsClosable() && tabs->isMovable());
    tabs->addTab(new QWidget, "Riverside-1");
    emit tabs->tabCloseRequested(0);
    QCOMPARE(tabs->count(), 1);
    QVERIFY(docks().at(0)->toolBar());
}

void TestDockLayout::theOptionsMenuClearsTheMessages()
{
    const QList<QAction *> actions = docks().at(2)->titleBarActions();
    QCOMPARE(actions.size(), 1);
    QCOMPARE(actions.first()->objectName(), "optionsMenu");
    QVERIFY(docks().at(2)->dockAreaWidget()->findChild<QAbstractButton *>("optionsMenu"));
    const QMenu *options = actions.first()->menu();
    QCOMPARE(options->objectName(), "optionsMenu");
    QCOMPARE(options->title(), CMainWindow::tr("Options"));
    QCOMPARE(options->toolTip(), CMainWindow::tr("Options"));
    QVERIFY(!options->icon().isNull());
    QCOMPARE(options->actions().size(), 1);
    QCOMPARE(options->actions().first()->text(), CMainWindow::tr("Clear Editor"));

    QCOMPARE(m_window->messageEditor()->placeholderText(), CMainWindow::tr("Message:"));
    QVERIFY(CMainWindow::tr("Message:") != QLatin1String("Message:"));
    QCOMPARE(m_window->messageEditor()->styleSheet(), "border: none");
    m_window->appendMessage("gone soon");
    options->actions().first()->trigger();
    QCOMPARE(m_window->messageEditor()->toPlainText(), QString());
}

void TestDockLayout::theMessageEditorIsNamedAndLeftByTab()
{
    QPlainTextEdit *editor = m_window->messageEditor();
    QCOMPARE(editor->accessibleName(), docks().at(2)->windowTitle());
    editor->setFocus();
    QTest::keyClick(editor, Qt::Key_Tab);
    QCOMPARE(editor->toPlainText(), QString());
}

void TestDockLayout::messagesAreReadAndCopiedButNotTyped()
{
    m_window->show();
    m_window->appendMessage("first line");
    m_window->appendMessage("second");
    QPlainTextEdit *editor = m_window->messageEditor();
    editor->setFocus();
    QApplication::clipboard()->setText("from elsewhere");
    QTest::keyClicks(editor, "typed");
    for (const auto key : {QKeySequence::Paste, QKeySequence::Cut, QKeySequence::Delete}) {
        QTest::keySequence(editor, key);
    }
    QTest::keyClick(editor, Qt::Key_Backspace);
    QCOMPARE(editor->toPlainText(), "first line\nsecond");

    QTest::keySequence(editor, QKeySequence::MoveToStartOfDocument);
    QTest::keySequence(editor, QKeySequence::SelectNextWord);
    QTest::keySequence(editor, QKeySequence::Copy);
    QCOMPARE(QApplication::clipboard()->text().trimmed(), "first");
    m_window->appendMessage("third");
    QVERIFY(editor->toPlainText().endsWith(QLatin1String("\nthird")));
}

void TestDockLayout::messagesHaveTheirTimes()
{
    m_window->appendMessage("hello");
    const auto *messages = qobject_cast<TimedText *>(m_window->messageEditor());
    QVERIFY(messages);
    QVERIFY(!messages->timeOf(0).isEmpty());
}

void TestDockLayout::savingAndRestoringLeavesTheLayout()
{
    // Inside the screen, so that restoring need not move it there.
    m_window->setGeometry(40, 60, 700, 500);
    const QString before = layout();
    const QRect geometry = m_window->geometry();
    QTest::ignoreMessage(QtDebugMsg, "MainWindow::on_actionSaveState_triggered");
    m_window->findChild<QAction *>("actionSaveState")->trigger();
    QTest::ignoreMessage(QtDebugMsg, "MainWindow::on_actionRestoreState_triggered");
    m_window->findChild<QAction *>("actionRestoreState")->trigger();
    QTRY_COMPARE(layout(), before);
    QCOMPARE(m_window->geometry(), geometry);
    QCOMPARE(QSettings("Settings.ini", QSettings::IniFormat).allKeys(),
             QStringList({"mainWindow/DockingState", "mainWindow/Geometry", "mainWindow/State"}));
}

void TestDockLayout::restoringBringsASavedLayoutBack()
{
    auto *toolBar = m_window->findChild<QToolBar *>("toolBar");
    m_window->addToolBar(Qt::LeftToolBarArea, toolBar);
    QCoreApplication::processEvents();
    const QString before = layout();
    m_window->on_actionSaveState_triggered(false);
    m_window->addToolBar(Qt::TopToolBarArea, toolBar);
    docks().at(2)->closeDockWidget();
    m_window->resize(1000, 600);
    QTRY_VERIFY(layout() != before);
    m_window->on_actionRestoreState_triggered(false);
    QTRY_COMPARE(layout(), before);
    QCOMPARE(m_window->toolBarArea(toolBar), Qt::LeftToolBarArea);
}

void TestDockLayout::theTreeKeepsItsWidthAsTheWindowGrows_data()
{
    QTest::addColumn<bool>("restored");
    QTest::newRow("first layout") << false;
    QTest::newRow("restored layout") << true;
}

void TestDockLayout::theTreeKeepsItsWidthAsTheWindowGrows()
{
    QFETCH(bool, restored);
    m_window->setGeometry(40, 60, 700, 400);
    if (restored) {
        m_window->on_actionSaveState_triggered(false);
        m_window->on_actionRestoreState_triggered(false);
    }
    QCoreApplication::processEvents();
    const int tree = docks().at(1)->width();
    const int values = docks().at(0)->width();
    m_window->resize(760, 400);
    QTRY_COMPARE(docks().at(0)->width(), values + 60);
    QCOMPARE(docks().at(1)->width(), tree);
}

void TestDockLayout::perspectivesAreUnplaced()
{
    QVERIFY(!perspectives()->isVisible());
    QCOMPARE(perspectives()->sizeAdjustPolicy(), QComboBox::AdjustToContents);
    QCOMPARE(perspectives()->sizePolicy().horizontalPolicy(), QSizePolicy::Preferred);
    QCOMPARE(perspectives()->sizePolicy().verticalPolicy(), QSizePolicy::Preferred);
    QVERIFY(m_window->findChild<QWidgetAction *>()->associatedWidgets().isEmpty());
    const auto *create = m_window->findChild<QAction *>("createPerspectiveAction");
    QVERIFY(create->associatedWidgets().isEmpty());
    QCOMPARE(perspectiveNames(), QStringList());
}

void TestDockLayout::aPerspectiveIsStoredAndOpened()
{
    RUN(createPerspective("All"));
    docks().at(2)->closeDockWidget();
    RUN(createPerspective("No messages"));
    QCOMPARE(perspectiveNames(), QStringList({"All", "No messages"}));
    QCOMPARE(perspectives()->currentText(), "No messages");
    QVERIFY(QFile::exists("Settings.ini"));

    RUN(choosePerspective("All"));
    QVERIFY(!docks().at(2)->isClosed());
    RUN(choosePerspective("No messages"));
    QVERIFY(docks().at(2)->isClosed());
}

void TestDockLayout::aPerspectiveOfTheSameNameIsReplaced()
{
    RUN(createPerspective("Mine"));
    docks().at(2)->closeDockWidget();
    RUN(createPerspective("Mine"));
    QCOMPARE(perspectiveNames(), QStringList("Mine"));
    docks().at(2)->toggleView(true);
    RUN(choosePerspective("Mine"));
    QVERIFY(docks().at(2)->isClosed());
}

void TestDockLayout::anEmptyPerspectiveNameChangesNothing()
{
    RUN(createPerspective(QString()));
    QCOMPARE(perspectiveNames(), QStringList());
    QVERIFY(!QFile::exists("Settings.ini"));
}

void TestDockLayout::storedPerspectivesAreOfferedAtStart()
{
    RUN(createPerspective("Evening"));
    RUN(createPerspective("Morning"));
    m_window.reset(new CMainWindow);
    QCOMPARE(perspectiveNames(), QStringList({"Evening", "Morning"}));
    QCOMPARE(m_window->dockManager()->perspectiveNames(), perspectiveNames());
}

QTEST_MAIN(TestDockLayout)
#include "tst_docklayout.moc"
