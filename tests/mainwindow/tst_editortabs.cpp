#include "mainwindow/editortabs.h"

#include "docksundertest.h"
#include "messages.h"

#include <QAbstractButton>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>

using Window = DocksUnderTest;
using DockAreas::settle;

namespace {

// A form that is saved under its name.
struct Form : QDialog {
    Form()
        : QDialog(nullptr, Qt::Widget)
        , name(new QLineEdit(this))
        , save(new QPushButton(this))
    {
    }
    RenamingForm renaming()
    {
        return {this, name, save, [this] { saved.append(name->text()); }};
    }

    QLineEdit *name;
    QPushButton *save;
    QStringList saved;
};

} // namespace

class TestEditorTabs : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void openTabIsRegisteredUnderItsTitle();
    void emptyTabIsNotRegistered();
    void closedTabIsNotFoundAgain();
    void closingOneTabLeavesTheOthers();
    void tabClosedByItsButtonLeavesTheRegistry();
    void tabHiddenByTheViewMenuComesBack();
    void tabBehindAnotherComesToTheFront();
    void tabThatARestoredLayoutDoesNotHoldComesBackToItsPlace();

    void firstTabStandsToTheRight();
    void newAreaIsWideEnoughForAForm_data();
    void newAreaIsWideEnoughForAForm();
    void secondAreaIsTakenFromTheWidestOther();
    void secondAreaOfASmallWindowSharesWithTheWidestOther();
    void theTreeKeepsItsWidth();
    void tabJoinsANeighbour_data();
    void tabJoinsANeighbour();
    void closedNeighbourIsNoNeighbour();
    void backgroundNeighbourIsNotFound();
    void neighbourWithoutAPlaceEndsTheSearch();

    void renamingSavesAndCloses();
    void renamingRefuses_data();
    void renamingRefuses();
    void renamingKeepsTheItemOfTheFirstOpening();
    void renamingWithoutItsItemFindsNoParent();

private:
    QDialog *makeForm();
    ads::CDockWidget *open(EditorTab kind);
    // A form in a tab of the first kind, which renames the item.
    Form *openForm(QStandardItem *item);

    QScopedPointer<Window> m_window;
    QScopedPointer<EditorTabs> m_tabs;
};

// A tab of a project joins the first of these and not the second.
static const EditorTab first = EditorTab::Box;
static const EditorTab second = EditorTab::Standard;
static const EditorTab third = EditorTab::Project;

static QString title(EditorTab kind)
{
    return EditorTabs::titleOf(kind);
}

void TestEditorTabs::init()
{
    QFile::remove("Settings.ini");
    m_window.reset(new Window);
    m_tabs.reset(new EditorTabs(m_window->dockManager(), m_window->viewMenu(), nullptr));
}

void TestEditorTabs::cleanup()
{
    m_tabs.reset();
    m_window.reset();
}

QDialog *TestEditorTabs::makeForm()
{
    return new QDialog(nullptr, Qt::Widget);
}

ads::CDockWidget *TestEditorTabs::open(EditorTab kind)
{
    ads::CDockWidget *tab = m_tabs->make(kind, makeForm());
    m_tabs->place(tab, kind);
    return tab;
}

Form *TestEditorTabs::openForm(QStandardItem *item)
{
    auto *form = new Form;
    ads::CDockWidget *tab = m_tabs->make(first, form);
    m_tabs->place(tab, first);
    EditorTabs::renameOnSave(form->renaming(), item, tab, m_window.data());
    return form;
}

void TestEditorTabs::openTabIsRegisteredUnderItsTitle()
{
    ads::CDockWidget *tab = open(first);
    QCOMPARE(m_tabs->find(first), tab);
    QCOMPARE(m_tabs->find(second), nullptr);
    QCOMPARE(m_window->viewMenu()->actions().last(), tab->toggleViewAction());
    QCOMPARE(tab->windowTitle(), title(first));
    QVERIFY(!tab->icon().isNull());
    QVERIFY(tab->features().testFlag(ads::CDockWidget::DockWidgetDeleteOnClose));
    QVERIFY(tab->features().testFlag(ads::CDockWidget::DockWidgetClosable));
    QVERIFY(!tab->isClosed());
}

void TestEditorTabs::emptyTabIsNotRegistered()
{
    ads::CDockWidget *tab = m_tabs->makeEmpty(first);
    m_tabs->place(tab, first);
    QCOMPARE(m_tabs->find(first), nullptr);
    QVERIFY(!m_window->viewMenu()->actions().contains(tab->toggleViewAction()));
    QVERIFY(tab->icon().isNull());
    QVERIFY(!tab->widget());
    QVERIFY(!tab->features().testFlag(ads::CDockWidget::DockWidgetDeleteOnClose));
    QCOMPARE(m_window->countOf(title(first)), 1);
}

void TestEditorTabs::closedTabIsNotFoundAgain()
{
    const QPointer<ads::CDockWidget> old = open(first);
    old->closeDockWidget();
    QVERIFY(old); // it dies later, and is not met until then
    QCOMPARE(m_tabs->find(first), nullptr);
    ads::CDockWidget *fresh = open(first);
    QCOMPARE(m_tabs->find(first), fresh);
    settle();
    QVERIFY(!old);
    QCOMPARE(m_tabs->find(first), fresh);
    QCOMPARE(m_window->dockManager()->findDockWidget(title(first)), fresh);
}

void TestEditorTabs::closingOneTabLeavesTheOthers()
{
    const QPointer<ads::CDockWidget> a = open(first);
    const QPointer<ads::CDockWidget> b = open(second);
    const QPointer<ads::CDockWidget> c = open(third);
    m_tabs->closeFirst(second);
    settle();
    QVERIFY(a && !b && c);
    m_tabs->closeAll();
    settle();
    QVERIFY(!a && !c);
    QCOMPARE(m_window->areas().size(), 3);
}

void TestEditorTabs::tabClosedByItsButtonLeavesTheRegistry()
{
    const QPointer<ads::CDockWidget> tab = open(first);
    const QPointer<QWidget> form = tab->widget();
    tab->dockAreaWidget()->titleBarButton(ads::TitleBarButtonClose)->click();
    QCOMPARE(m_tabs->find(first), nullptr);
    settle();
    QVERIFY(!tab && !form);
}

void TestEditorTabs::tabHiddenByTheViewMenuComesBack()
{
    ads::CDockWidget *tab = open(first);
    const QPointer<QWidget> form = tab->widget();
    tab->toggleViewAction()->trigger();
    QVERIFY(tab->isClosed());
    settle();
    QVERIFY(form);
    QCOMPARE(m_tabs->find(first), tab);
    m_tabs->show(tab, first);
    QVERIFY(!tab->isClosed());
    QVERIFY(tab->isVisible());
}

void TestEditorTabs::tabBehindAnotherComesToTheFront()
{
    ads::CDockWidget *tab = open(first);
    const ads::CDockWidget *other = open(second);
    QCOMPARE(tab->dockAreaWidget()->currentDockWidget(), other);
    m_tabs->show(tab, first);
    QCOMPARE(tab->dockAreaWidget()->currentDockWidget(), tab);
}

void TestEditorTabs::tabThatARestoredLayoutDoesNotHoldComesBackToItsPlace()
{
    m_window->layout()->saveState();
    ads::CDockWidget *other = m_tabs->makeEmpty(second);
    m_tabs->place(other, second);
    ads::CDockWidget *tab = open(first);
    for (ads::CDockWidget *hidden : {other, tab}) {
        hidden->toggleView(false); // an open one would stay where it was
    }
    m_window->layout()->restoreState();
    QVERIFY(tab->isClosed() && !tab->dockAreaWidget());
    QCOMPARE(m_tabs->find(first), tab);
    m_tabs->show(tab, first);
    QVERIFY(!tab->isClosed());
    QVERIFY(!tab->isInFloatingContainer());
    QVERIFY(m_window->areas().contains(QStringList(title(first))));
    const QPointer<ads::CDockWidget> guarded = tab;
    tab->toggleView(false);
    m_window->layout()->restoreState();
    m_tabs->closeFirst(first);
    settle();
    QVERIFY(!guarded);
}

void TestEditorTabs::firstTabStandsToTheRight()
{
    const QList<QStringList> before = m_window->areas();
    const ads::CDockWidget *tab = open(first);
    QCOMPARE(m_window->areas().size(), before.size() + 1);
    QCOMPARE(m_window->countOf(title(first)), 1);
    QCOMPARE(tab->dockAreaWidget()->dockWidgetsCount(), 1);
    QTRY_VERIFY(tab->mapTo(m_window.data(), QPoint()).x()
                > m_window->monitoringTabs()->mapTo(m_window.data(), QPoint()).x());
}

void TestEditorTabs::newAreaIsWideEnoughForAForm_data()
{
    QTest::addColumn<int>("window");
    QTest::addColumn<int>("wanted");
    QTest::newRow("large") << 1280 << 520;
    QTest::newRow("very large") << 1900 << 520;
    QTest::newRow("small") << 1000 << 420;
}

// A splitter shares out its own width, which is a few pixels less than the window's.
static const int handles = 10;

void TestEditorTabs::newAreaIsWideEnoughForAForm()
{
    QFETCH(int, window);
    QFETCH(int, wanted);
    m_window->resize(window, 720);
    QTRY_COMPARE(m_window->dockManager()->width(), window);
    const ads::CDockWidget *tab = open(first);
    QTRY_VERIFY(tab->dockAreaWidget()->width() > wanted - handles);
    QVERIFY(tab->dockAreaWidget()->width() <= wanted);
}

void TestEditorTabs::secondAreaIsTakenFromTheWidestOther()
{
    m_window->resize(1900, 720);
    QTRY_COMPARE(m_window->dockManager()->width(), 1900);
    const ads::CDockWidget *one = open(second);
    QTRY_VERIFY(one->dockAreaWidget()->width() > 520 - handles);
    const ads::CDockWidget *other = open(third);
    QTRY_VERIFY(other->dockAreaWidget()->width() > 520 - handles);
    QVERIFY(one->dockAreaWidget()->width() > 300);
    QVERIFY(m_window->monitoringTabs()->width() > 300);
}

void TestEditorTabs::secondAreaOfASmallWindowSharesWithTheWidestOther()
{
    const ads::CDockWidget *one = open(second);
    QTRY_VERIFY(one->dockAreaWidget()->width() > 520 - handles);
    const ads::CDockWidget *other = open(third);
    const auto leftover = [=] { return one->dockAreaWidget()->mapTo(m_window.data(), QPoint()).x(); };
    QTRY_VERIFY(other->dockAreaWidget()->width() > 400 && leftover() >= other->dockAreaWidget()->width());
}

void TestEditorTabs::theTreeKeepsItsWidth()
{
    const auto width = [this] { return m_window->projectTree()->width(); };
    QTRY_VERIFY(width() > 200);
    const int before = width();
    for (bool isRestored : {false, true}) {
        if (isRestored) {
            m_window->layout()->saveState();
            m_window->layout()->restoreState();
            QTRY_COMPARE(width(), before);
        }
        for (int time = 0; time < 3; ++time) {
            ads::CDockWidget *tab = open(first);
            QTRY_VERIFY(tab->dockAreaWidget()->width() > 520 - handles);
            QCOMPARE(width(), before);
            tab->closeDockWidget();
            settle();
            QTRY_VERIFY(m_window->monitoringTabs()->width() > 900);
            QCOMPARE(width(), before);
        }
        m_window->resize(1500, 800);
        QTRY_VERIFY(m_window->monitoringTabs()->width() > 1100);
        QCOMPARE(width(), before);
        m_window->resize(1280, 720);
        QTRY_VERIFY(m_window->monitoringTabs()->width() < 1100);
    }
}

void TestEditorTabs::tabJoinsANeighbour_data()
{
    QTest::addColumn<int>("open");
    QTest::addColumn<int>("next");
    QTest::addColumn<bool>("joins");
    const QList<EditorTab> kinds{EditorTab::Box,      EditorTab::Plc,     EditorTab::Server,
                                 EditorTab::Standard, EditorTab::Service, EditorTab::Project};
    for (const EditorTab open : kinds) {
        for (const EditorTab next : kinds) {
            if (open != next) {
                QTest::newRow(qPrintable(title(open) + QLatin1String(", ") + title(next)))
                    << int(open) << int(next)
                    << (next != EditorTab::Project || open == EditorTab::Box || open == EditorTab::Plc
                        || open == EditorTab::Server);
            }
        }
    }
}

void TestEditorTabs::tabJoinsANeighbour()
{
    QFETCH(int, open);
    QFETCH(int, next);
    QFETCH(bool, joins);
    const QString one = title(EditorTab(open));
    const QString other = title(EditorTab(next));
    this->open(EditorTab(open));
    const ads::CDockWidget *tab = this->open(EditorTab(next));
    QCOMPARE(m_window->areas().contains(QStringList({one, other})), joins);
    QCOMPARE(m_window->areas().contains(QStringList(one)), !joins);
    QCOMPARE(m_window->areas().contains(QStringList(other)), !joins);
    QCOMPARE(tab->dockAreaWidget()->currentDockWidget(), tab);
}

void TestEditorTabs::closedNeighbourIsNoNeighbour()
{
    open(second)->closeDockWidget();
    open(third);
    open(first);
    QVERIFY(m_window->areas().contains(QStringList({title(third), title(first)})));
}

void TestEditorTabs::backgroundNeighbourIsNotFound()
{
    // The tab behind another one is no child of the dock manager, so only the front one can be joined.
    open(first);
    open(second);
    open(third);
    QVERIFY(m_window->areas().contains(QStringList({title(first), title(second)})));
    QVERIFY(m_window->areas().contains(QStringList(title(third))));
}

void TestEditorTabs::neighbourWithoutAPlaceEndsTheSearch()
{
    m_window->layout()->saveState();
    ads::CDockWidget *left = open(first);
    left->toggleView(false); // an open one stays where it was
    m_window->layout()->restoreState();
    QVERIFY(!left->dockAreaWidget());
    left->setParent(m_window->dockManager()); // where later generations of the library leave it
    left->lower();                            // so that it is met first
    m_tabs->place(m_tabs->makeEmpty(EditorTab::Plc), EditorTab::Plc);
    open(EditorTab::Server);
    QVERIFY(m_window->areas().contains(QStringList(title(EditorTab::Plc))));
    QVERIFY(m_window->areas().contains(QStringList(title(EditorTab::Server))));
}

void TestEditorTabs::renamingSavesAndCloses()
{
    QStandardItem *item = Window::addBox(m_window->addProject("plant"), "a");
    Window::addBox(m_window->projectModel()->item(0), "b");
    item->parent()->setRowCount(3); // A row without an item is passed over.
    Form *form = openForm(item);
    const QPointer<ads::CDockWidget> tab = m_tabs->find(first);
    form->name->setText("c");
    form->save->click();
    QCOMPARE(item->text(), "c");
    QCOMPARE(form->saved, QStringList("c"));
    QCOMPARE(m_tabs->find(first), nullptr);
    settle();
    QVERIFY(!tab);
}

void TestEditorTabs::renamingRefuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("topLevel");
    QTest::addColumn<QString>("told");
    const QString noName = "invalid name|Name cannot be null";
    const QString noParent = "error|Unable to find parent directory";
    QTest::newRow("no name") << QString() << false << noName;
    QTest::newRow("no name before no parent") << QString() << true << noName;
    QTest::newRow("no parent") << "c" << true << noParent;
    QTest::newRow("name of a sibling") << "b" << false
                                       << "Duplicate name|The name\"b\"already exists, please "
                                          "change the name.";
}

void TestEditorTabs::renamingRefuses()
{
    QFETCH(QString, name);
    QFETCH(bool, topLevel);
    QFETCH(QString, told);
    QStandardItem *project = m_window->addProject("a");
    QStandardItem *box = Window::addBox(project, "a");
    Window::addBox(project, "b");
    QStandardItem *item = topLevel ? project : box;
    Form *form = openForm(item);
    form->name->setText(name);
    Messages messages;
    messages.expect();
    form->save->click();
    QCOMPARE(messages.told(), QStringList(told));
    QCOMPARE(item->text(), "a");
    QCOMPARE(form->saved, QStringList());
    QVERIFY(m_tabs->find(first));
}

void TestEditorTabs::renamingKeepsTheItemOfTheFirstOpening()
{
    const QStandardItem *project = m_window->addProject("plant");
    QStandardItem *opened = Window::addBox(project, "a");
    const QStandardItem *sibling = Window::addBox(project, "b");
    Form *form = openForm(opened);
    // The form now shows the sibling.
    form->name->setText("b");
    Messages messages;
    messages.expect();
    form->save->click();
    QCOMPARE(messages.told().size(), 1);
    QCOMPARE(form->saved, QStringList());
    form->name->setText("c");
    form->save->click();
    QCOMPARE(opened->text(), "c");
    QCOMPARE(sibling->text(), "b");
    QCOMPARE(form->saved, QStringList("c"));
}

void TestEditorTabs::renamingWithoutItsItemFindsNoParent()
{
    const QStandardItem *project = m_window->addProject("plant");
    QStandardItem *item = Window::addBox(project, "a");
    Form *form = openForm(item);
    item->parent()->removeRow(0);
    form->name->setText("c");
    Messages messages;
    messages.expect();
    form->save->click();
    QCOMPARE(messages.told(), QStringList("error|Unable to find parent directory"));
    QCOMPARE(form->saved, QStringList());
    QVERIFY(m_tabs->find(first));
}

QTEST_MAIN(TestEditorTabs)
#include "tst_editortabs.moc"
