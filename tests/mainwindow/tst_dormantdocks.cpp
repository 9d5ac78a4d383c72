#include "mainwindow/dormantdocks.h"

#include "docksundertest.h"
#include "mainwindow/cimageviewer.h"
#include "mainwindow/cmainwindow.h"
#include "mainwindow/cstatusdialog.h"
#include "messages.h"
#include "modaldialogs.h"

#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

using ads::CDockWidget;

// The dock factories that no menu leads to, reached by name or from an action with the right properties.
class TestDormantDocks : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void anEditorFloatsUnlessToldOtherwise();
    void dockedEditorsShareAnAreaOrSplitIt();
    void aDockClosesOnYesOnly_data();
    void aDockClosesOnYesOnly();
    void aTableFloats();
    void aPictureIsPlacedByTheActionsText_data();
    void aPictureIsPlacedByTheActionsText();
    void aPictureIsScaledFromItsMenu();
    void theTitleOfTheLastEditorIsToggled();
    void theStatusDialogShowsTheChosenDock();
    void aPictureMayCloseBelowItsFileDialog();
    void docksNeedNoMainWindow();

private:
    QAction *trigger(const char *slot, const QString &text = {});
    // The dock that the slot makes when the action runs it.
    CDockWidget *make(QAction *action);

    QScopedPointer<QTemporaryDir> m_folder;
    QScopedPointer<CMainWindow> m_window;
};

void TestDormantDocks::init()
{
    m_window.reset();
    m_folder.reset(new QTemporaryDir);
    QVERIFY(QDir::setCurrent(m_folder->path()));
    m_window.reset(new CMainWindow);
    m_window->show();
}

QAction *TestDormantDocks::trigger(const char *slot, const QString &text)
{
    auto *action = new QAction(text, m_window.data());
    connect(action, SIGNAL(triggered()), m_window.data(), slot);
    return action;
}

CDockWidget *TestDormantDocks::make(QAction *action)
{
    const QList<CDockWidget *> before = m_window->dockManager()->dockWidgetsMap().values();
    action->trigger();
    const QList<CDockWidget *> after = m_window->dockManager()->dockWidgetsMap().values();
    for (CDockWidget *dock : after) {
        if (!before.contains(dock)) {
            return dock;
        }
    }
    return nullptr;
}

void TestDormantDocks::anEditorFloatsUnlessToldOtherwise()
{
    const CDockWidget *dock = make(trigger(SLOT(createEditor())));
    QVERIFY(dock && dock->isFloating());
    QVERIFY(dock->windowTitle().startsWith(QLatin1String("Editor ")));
    QCOMPARE(dock->features(),
             CDockWidget::DefaultDockWidgetFeatures | CDockWidget::CustomCloseHandling
                 | CDockWidget::DockWidgetDeleteOnClose | CDockWidget::DockWidgetForceCloseWithArea);
    const auto *editor = qobject_cast<QPlainTextEdit *>(dock->widget());
    QCOMPARE(editor->placeholderText(),
             CMainWindow::tr("This is an editor. If you close the editor, it will be deleted. "
                             "Enter your text here."));
    QCOMPARE(editor->styleSheet(), "border: none");
    QCOMPARE(dock->titleBarActions().first()->objectName(), "optionsMenu");
    QCOMPARE(dock->titleBarActions().first()->menu()->objectName(), "optionsMenu");
}

void TestDormantDocks::dockedEditorsShareAnAreaOrSplitIt()
{
    QAction *action = trigger(SLOT(createEditor()));
    action->setProperty("Floating", false);
    const CDockWidget *first = make(action);
    QVERIFY(!first->isFloating());
    const CDockWidget *second = make(action);
    QCOMPARE(second->dockAreaWidget(), first->dockAreaWidget());

    action->setProperty("Tabbed", false);
    const CDockWidget *third = make(action);
    QVERIFY(!third->isFloating());
    QVERIFY(third->dockAreaWidget() != first->dockAreaWidget());
    QVERIFY(!ads::CDockManager::testConfigFlag(ads::CDockManager::EqualSplitOnInsertion));
}

void TestDormantDocks::aDockClosesOnYesOnly_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QString>("question"); // %1 stands for the title, %2 for the number in it
    QTest::newRow("editor") << QByteArray(SLOT(createEditor()))
                            << CMainWindow::tr("Close Editor") + QLatin1Char('|')
            + CMainWindow::tr("Editor %1 contains unsaved changes? Would you like to close it?")
                  .replace("%1", "%2");
    QTest::newRow("picture") << QByteArray(SLOT(createImageViewer()))
                             << CMainWindow::tr("Close Image Viewer") + QLatin1Char('|')
            + CMainWindow::tr("%1 contains unsaved changes? Would you like to close it?");
}

void TestDormantDocks::aDockClosesOnYesOnly()
{
    QFETCH(QByteArray, slot);
    QFETCH(QString, question);
    Messages messages;
    const QPointer<CDockWidget> dock = make(trigger(slot.constData()));
    question.replace("%1", dock->windowTitle()).replace("%2", dock->windowTitle().mid(7));
    messages.expect(QMessageBox::No);
    emit dock->closeRequested();
    QVERIFY(!dock->isClosed());
    messages.expect(QMessageBox::Yes);
    emit dock->closeRequested();
    QTRY_VERIFY(!dock);
    QCOMPARE(messages.told(), QStringList({question, question}));
}

void TestDormantDocks::aTableFloats()
{
    const CDockWidget *dock = make(trigger(SLOT(createTable())));
    QVERIFY(dock && dock->isFloating());
    QVERIFY(dock->windowTitle().startsWith(QLatin1String("Table ")));
    QVERIFY(qobject_cast<QTabWidget *>(dock->widget()));
    QVERIFY(dock->features().testFlag(CDockWidget::DockWidgetDeleteOnClose));
    ads::CFloatingDockContainer *window = dock->floatingDockContainer();
    QCOMPARE(window->size(), QSize(700, 800));
    // Higher than the screen, it is moved there, and that is all.
    const QRect available = QGuiApplication::primaryScreen()->availableGeometry();
    window->move(available.bottomRight());
    QTRY_COMPARE(window->frameGeometry().top(), available.top());
    QCOMPARE(window->size(), QSize(700, 800));
}

void TestDormantDocks::aPictureIsPlacedByTheActionsText_data()
{
    QTest::addColumn<bool>("floating");
    QTest::newRow("Floating") << true;
    QTest::newRow("Docked") << false;
    QTest::newRow("Pinned") << false;
}

void TestDormantDocks::aPictureIsPlacedByTheActionsText()
{
    const CDockWidget *dock =
        make(trigger(SLOT(createImageViewer()), QLatin1String(QTest::currentDataTag())));
    QVERIFY(dock);
    QTEST(dock->isFloating(), "floating");
    QVERIFY(dock->windowTitle().startsWith(QLatin1String("Image Viewer ")));
    QVERIFY(!dock->icon().isNull());
    const auto *viewer = qobject_cast<CImageViewer *>(dock->widget());
    QVERIFY(viewer && !viewer->widget()->sizeHint().isEmpty());
}

void TestDormantDocks::aPictureIsScaledFromItsMenu()
{
    CImageViewer viewer;
    viewer.resize(300, 200);
    QVERIFY(!viewer.loadFile("missing.png"));
    QVERIFY(viewer.loadFile(":/adsdemo/images/picture-1.png"));
    QStringList texts;
    const QList<QAction *> actions = viewer.actions();
    for (const QAction *action : actions) {
        texts.append(action->text());
    }
    QCOMPARE(texts,
             QStringList({CImageViewer::tr("&Open..."), CImageViewer::tr("Fit on Screen"),
                          CImageViewer::tr("Actual Pixels"), CImageViewer::tr("Zoom In (25%)"),
                          CImageViewer::tr("Zoom Out (25%)")}));
    actions.at(3)->trigger();
    QCOMPARE(viewer.scale(), 1.25);
    actions.at(4)->trigger();
    actions.at(4)->trigger();
    QCOMPARE(viewer.scale(), 0.8);
    actions.at(2)->trigger();
    QCOMPARE(viewer.scale(), 1.0);
    actions.at(1)->trigger();
    const QSize shown = viewer.widget()->size();
    QVERIFY(shown.width() <= 300 && shown.height() <= 200);
    QVERIFY(shown.width() >= 295 || shown.height() >= 195);
}

void TestDormantDocks::theTitleOfTheLastEditorIsToggled()
{
    m_window->toggleDockWidgetWindowTitle();
    const CDockWidget *dock = make(trigger(SLOT(createEditor())));
    const QString title = dock->windowTitle();
    m_window->toggleDockWidgetWindowTitle();
    QCOMPARE(dock->windowTitle(), title + " (Test)");
    m_window->toggleDockWidgetWindowTitle();
    QCOMPARE(dock->windowTitle(), title);
}

void TestDormantDocks::theStatusDialogShowsTheChosenDock()
{
    QStringList shown;
    QTimer::singleShot(0, this, [&] {
        auto *dialog = qobject_cast<CStatusDialog *>(QApplication::activeModalWidget());
        auto *docks = dialog->findChild<QComboBox *>();
        docks->setCurrentIndex(docks->findText(CMainWindow::tr("Message")));
        const auto boxes = dialog->findChildren<QCheckBox *>();
        for (const QCheckBox *box : boxes) {
            if (box->isChecked()) {
                shown.append(box->objectName());
            }
        }
        dialog->reject();
    });
    m_window->showStatusDialog();
    QCOMPARE(shown, QStringList({"currentTabCheckBox", "closableCheckBox", "movableCheckBox"}));
}

void TestDormantDocks::aPictureMayCloseBelowItsFileDialog()
{
    CDockWidget *dock = make(trigger(SLOT(createImageViewer())));
    const QPointer<CImageViewer> viewer = qobject_cast<CImageViewer *>(dock->widget());
    ModalDialogs dialogs;
    Messages messages;
    dialogs.expect([&](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        dialog->selectFile(QCoreApplication::applicationFilePath()); // no picture
        dock->closeDockWidget();
        DockAreas::settle();
        QVERIFY(!viewer);
    });
    viewer->open();
    QCOMPARE(dialogs.pending(), 0);
    QCOMPARE(messages.told(), QStringList());
}

void TestDormantDocks::docksNeedNoMainWindow()
{
    DocksUnderTest window;
    DormantDocks docks(window.dockManager(), &window);
    CDockWidget *editor = docks.createEditor(nullptr);
    QVERIFY(editor->isFloating());
    docks.toggleTitle();
    QVERIFY(editor->windowTitle().endsWith(QLatin1String(" (Test)")));
    Messages messages;
    messages.expect(QMessageBox::Yes);
    docks.closeEditor(editor);
    QCOMPARE(messages.told().size(), 1);
    DockAreas::settle();
    docks.toggleTitle();

    delete window.dockManager();
    QVERIFY(!docks.createEditor(nullptr));
    QVERIFY(!docks.createImageViewer(nullptr));
    docks.createTable();
    docks.showStatusDialog();
}

QTEST_MAIN(TestDormantDocks)
#include "tst_dormantdocks.moc"
