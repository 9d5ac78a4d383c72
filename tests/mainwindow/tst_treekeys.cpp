#include "mainwindow/treekeys.h"

#include "messages.h"
#include "windowundertest.h"

using Window = WindowUnderTest;

// What the keyboard does in the project tree, and how it comes back there.
class TestTreeKeys : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void returnOpensTheNode_data();
    void returnOpensTheNode();
    void returnShowsTheLivePage();
    void f2OpensTheFormAtItsName_data();
    void f2OpensTheFormAtItsName();
    void f2OnANodeWithoutAFormDoesNothing_data();
    void f2OnANodeWithoutAFormDoesNothing();
    void heldKeyOpensOnce();
    void noKeyDeletes();
    void keysAreOfTheTreeAlone();

    void clickOnANodeLeavesTheFocusInTheTree();
    void saveGoesBackToTheNode_data();
    void saveGoesBackToTheNode();
    void refusedSaveLeavesTheFocusInTheForm();
    void saveOfAReboundFormGoesToWhatItShows();

private:
    void addPaths();
    QStandardItem *node(const QString &path) const;
    void press(const QString &path, Qt::Key key);

    QScopedPointer<Window> m_window;
};

void TestTreeKeys::init()
{
    m_window.reset(new Window);
    const QStandardItem *project = m_window->addProject("plant");
    Window::addStandard(project, "bus", "Modbus");
    Window::addStandard(project, "inputs", "DIDO");
    Window::addBox(project, "gate", "127.0.13.17");
    ProjectTree::appendDefinition(Window::folder(project, ProjectTree::dataFolder), "meter", QString());
    m_window->projectTree()->expandAll();
    QVERIFY(QTest::qWaitForWindowActive(m_window.data()));
}

QStandardItem *TestTreeKeys::node(const QString &path) const
{
    QStandardItem *item = m_window->projectModel()->invisibleRootItem();
    for (const QString &text : path.split(QLatin1Char('/'))) {
        item = ProjectTree::childNamed(item, text);
    }
    return item;
}

void TestTreeKeys::press(const QString &path, Qt::Key key)
{
    m_window->select(node(path));
    m_window->projectTree()->setFocus();
    QTest::keyClick(m_window->projectTree(), key);
    QCoreApplication::processEvents(); // a new form is laid out
}

void TestTreeKeys::addPaths()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("title");
    const auto row = [](const char *path, const char *title) {
        QTest::newRow(path) << QString::fromLatin1(path) << QString::fromLatin1(title);
    };
    row("plant", "Edit Project");
    row("plant/Standard/bus", "Edit Standard");
    row("plant/Service/IEC61850", "Edit Service");
    row("plant/Box/gate", "Edit Box");
}

void TestTreeKeys::returnOpensTheNode_data()
{
    addPaths();
}

void TestTreeKeys::returnOpensTheNode()
{
    QFETCH(QString, path);
    QFETCH(QString, title);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
        press(path, key);
        QVERIFY(m_window->form(title) && m_window->form(title)->isVisible());
        QVERIFY(m_window->projectTree()->hasFocus());
        QCOMPARE(m_window->countOf(title), 1);
        m_window->tab(title)->closeDockWidget();
        Window::settle();
    }
}

void TestTreeKeys::returnShowsTheLivePage()
{
    QTabWidget *tabs = m_window->monitoringTabs();
    for (const char *text : {"other", "meter"}) {
        tabs->addTab(new QWidget, QString::fromLatin1(text));
    }
    press("plant/Data/meter", Qt::Key_Return);
    QCOMPARE(tabs->currentIndex(), 1);
}

void TestTreeKeys::f2OpensTheFormAtItsName_data()
{
    addPaths();
}

void TestTreeKeys::f2OpensTheFormAtItsName()
{
    QFETCH(QString, path);
    QFETCH(QString, title);
    for (int time = 0; time < 2; ++time) { // the second finds it open
        press(path, Qt::Key_F2);
        const auto *name = Window::input<QLineEdit>(m_window->form(title), "name");
        QCOMPARE(QApplication::focusWidget(), static_cast<const QWidget *>(name));
        QCOMPARE(name->selectedText(), node(path)->text());
    }
}

void TestTreeKeys::f2OnANodeWithoutAFormDoesNothing_data()
{
    QTest::addColumn<QString>("path");
    for (const char *path : {"plant/Standard", "plant/Box", "plant/Data", "plant/Data/meter"}) {
        QTest::newRow(path) << QString::fromLatin1(path);
    }
}

void TestTreeKeys::f2OnANodeWithoutAFormDoesNothing()
{
    QFETCH(QString, path);
    QTabWidget *tabs = m_window->monitoringTabs();
    for (const char *text : {"other", "meter"}) {
        tabs->addTab(new QWidget, QString::fromLatin1(text));
    }
    press(path, Qt::Key_F2);
    QVERIFY(m_window->projectTree()->hasFocus());
    QCOMPARE(m_window->dockManager()->dockWidgetsMap().size(), 3);
    QCOMPARE(tabs->currentIndex(), 0);
}

// Each further one would make one more empty tab.
void TestTreeKeys::heldKeyOpensOnce()
{
    press("plant/Standard/inputs", Qt::Key_Return);
    for (int time = 0; time < 3; ++time) {
        QTest::simulateEvent(m_window->projectTree(), true, Qt::Key_Return, Qt::NoModifier, QString(), true);
    }
    QCOMPARE(m_window->countOf("Edit Standard"), 1);
}

void TestTreeKeys::noKeyDeletes()
{
    for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_Backspace}) {
        press("plant/Box/gate", key);
        QVERIFY(node("plant/Box/gate"));
    }
}

void TestTreeKeys::keysAreOfTheTreeAlone()
{
    m_window->select(node("plant/Box/gate"));
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_F2}) {
        m_window->messageEditor()->setFocus();
        QTest::keyClick(m_window->messageEditor(), key);
        QCOMPARE(m_window->tab("Edit Box"), nullptr);
    }
}

// The first form makes a new area, and the docks beside it move.
void TestTreeKeys::clickOnANodeLeavesTheFocusInTheTree()
{
    m_window->projectTree()->setFocus();
    m_window->click(node("plant/Standard/bus"));
    QCOMPARE(QApplication::focusWidget(), m_window->projectTree());
}

void TestTreeKeys::saveGoesBackToTheNode_data()
{
    QTest::addColumn<bool>("floating");
    QTest::addColumn<bool>("byKey");
    QTest::newRow("docked, mouse") << false << false;
    QTest::newRow("docked, key") << false << true;
    QTest::newRow("floating, mouse") << true << false;
    QTest::newRow("floating, key") << true << true;
}

void TestTreeKeys::saveGoesBackToTheNode()
{
    QFETCH(bool, floating);
    QFETCH(bool, byKey);
    m_window->click(node("plant/Service/IEC61850")); // a form that stays open
    m_window->click(node("plant/Standard/bus"));
    QCoreApplication::processEvents();
    const QDialog *form = m_window->form("Edit Standard");
    if (floating) {
        m_window->tab("Edit Standard")->setFloating();
        form->window()->show();
    }
    m_window->select(node("plant/Data/meter"));
    QApplication::setActiveWindow(form->window());
    auto *name = Window::input<QLineEdit>(form, "name");
    name->setFocus();
    name->setText("feeder");
    if (byKey) {
        QTest::keyClick(name, Qt::Key_S, Qt::ControlModifier);
    } else {
        QTest::mouseClick(Window::input<QPushButton>(form, "saveButton"), Qt::LeftButton);
    }
    Window::settle();
    QTRY_COMPARE(QApplication::focusWidget(), m_window->projectTree());
    QCOMPARE(m_window->currentItem(), node("plant/Standard/feeder"));
}

void TestTreeKeys::refusedSaveLeavesTheFocusInTheForm()
{
    Messages messages;
    messages.expect();
    m_window->click(node("plant/Standard/bus"));
    QCoreApplication::processEvents();
    m_window->select(node("plant/Data/meter"));
    auto *name = Window::input<QLineEdit>(m_window->form("Edit Standard"), "name");
    name->setFocus();
    name->setText("inputs"); // a sibling has it
    QTest::keyClick(name, Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(messages.told().size(), 1);
    QCOMPARE(m_window->currentItem(), node("plant/Data/meter"));
    QVERIFY(m_window->form("Edit Standard")->isAncestorOf(m_window->focusWidget()));
}

void TestTreeKeys::saveOfAReboundFormGoesToWhatItShows()
{
    QStandardItem *second = Window::addStandard(node("plant"), "second", "Modbus");
    m_window->click(node("plant/Standard/bus"));
    m_window->click(second);
    m_window->select(node("plant/Data/meter"));
    const QDialog *form = m_window->form("Edit Standard");
    Window::input<QLineEdit>(form, "name")->setText("third");
    Window::press(form, "saveButton");
    QCOMPARE(m_window->tab("Edit Standard"), nullptr);
    QCOMPARE(m_window->currentItem(), second);
}

QTEST_MAIN(TestTreeKeys)
#include "tst_treekeys.moc"
