#include "mainwindow/projecttreemenu.h"

#include "messages.h"
#include "modaldialogs.h"
#include "windowundertest.h"

using Window = WindowUnderTest;

class TestProjectTreeMenu : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void menuBelongsToTheNode_data();
    void menuBelongsToTheNode();
    void eachRequestThatShowedAMenuSwallowsTheNext();
    void emptyMenuSwallowsTheNextToo();
    void menuKeyShowsTheMenuOfTheCurrentNode();
    void requestBesideTheNodesShowsNothingAndSwallowsNothing();
    void entriesFollowTheLanguage();
    void entriesLeadToTheirSlots_data();
    void entriesLeadToTheirSlots();

    void clicksOpenTheNodesForm_data();
    void clicksOpenTheNodesForm();
    void clickOnADataNodeShowsItsTab();
    void pressAndDoubleClickDoNothing();
    void menuNeedsNoMainWindow();

private:
    // The node that the path of texts leads to, such as "plant/Box/gate".
    QStandardItem *node(const QString &path) const;
    // Asks for a menu at the node and gives the entries of the one that came; nothing means that none came.
    QStringList request(const QPoint &position, bool *came = nullptr, const QString &choose = QString());
    QStringList request(const QString &path, bool *came = nullptr)
    {
        return request(m_window->centreOf(node(path)), came);
    }

    QScopedPointer<Window> m_window;
    QStringList m_dialogs; // that the chosen entry opened, "<class>|<title>"
};

// Where the menu key asks for a menu, as Qt finds the place.
static QPoint placeOfMenuKey(const QWidget *widget)
{
    return widget->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
}

static const QString noMenu = "no menu";

void TestProjectTreeMenu::init()
{
    m_window.reset(new Window);
    const QStandardItem *project = m_window->addProject("plant");
    Window::addStandard(project, "bus", "OpcUA");
    Window::addBox(project, "gate", "127.0.13.8");
    ProjectTree::appendDefinition(Window::folder(project, ProjectTree::dataFolder), "meter", QString());
    ProjectTree::appendDefinition(project->model()->item(0), "Spare", QString());
    ProjectTree::appendDefinition(project->child(4), "thing", QString());
    // Kinds with forms that nothing in the window leads to.
    QStandardItem *plcs =
        ProjectTree::appendDefinition(project->model()->item(0), ProjectTree::plcFolder, QString());
    ProjectTree::appendDefinition(plcs, "press", QString());
    QStandardItem *servers =
        ProjectTree::appendDefinition(project->model()->item(0), ProjectTree::serverFolder, QString());
    ProjectTree::appendDefinition(servers, "north", QString())->setData("MQTT", serverProtocolRole);
}

QStandardItem *TestProjectTreeMenu::node(const QString &path) const
{
    QStandardItem *item = m_window->projectModel()->invisibleRootItem();
    for (const QString &text : path.split(QLatin1Char('/'))) {
        item = ProjectTree::childNamed(item, text);
    }
    return item;
}

QStringList TestProjectTreeMenu::request(const QPoint &position, bool *came, const QString &choose)
{
    QStringList entries{noMenu};
    ModalDialogs dialogs;
    dialogs.allowOthers();
    dialogs.expect([&](QWidget *widget) {
        auto *menu = qobject_cast<QMenu *>(widget);
        QVERIFY(menu);
        entries.clear();
        QAction *chosen = nullptr;
        for (QAction *action : menu->actions()) {
            entries.append(action->text());
            chosen = action->text() == choose ? action : chosen;
        }
        menu->close();
        if (chosen) {
            chosen->trigger();
        }
    });
    emit m_window->projectTree()->customContextMenuRequested(position);
    m_dialogs = dialogs.others();
    if (came) {
        *came = dialogs.pending() == 0;
    }
    return entries;
}

void TestProjectTreeMenu::menuBelongsToTheNode_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QStringList>("entries");
    const auto row = [](const char *path, const QStringList &entries) {
        QTest::newRow(path) << path << entries;
    };
    row("plant", {"Edit Project", "Close Project", "Save Project"});
    row("plant/Standard", {"Add Standard"});
    row("plant/Service", {});
    row("plant/Box", {"Add Box", "Search Box"});
    row("plant/Data", {"Delete All"});
    row("plant/Spare", {});
    row("plant/Standard/bus", {"Editing Standard", "Delete"});
    row("plant/Service/IEC61850", {"Editing Service"});
    row("plant/Box/gate", {"Editing Box", "Delete"});
    row("plant/Data/meter", {"Delete"});
    row("plant/Spare/thing", {});
    row("plant/PLC", {});
    row("plant/PLC/press", {});
    row("plant/Server", {});
    row("plant/Server/north", {});
}

void TestProjectTreeMenu::menuBelongsToTheNode()
{
    QFETCH(QString, path);
    QFETCH(QStringList, entries);
    QCOMPARE(request(path), entries);
}

void TestProjectTreeMenu::eachRequestThatShowedAMenuSwallowsTheNext()
{
    QVERIFY(request("plant") != QStringList(noMenu));
    QCOMPARE(request("plant/Box"), QStringList(noMenu));
    QCOMPARE(request("plant/Data"), QStringList("Delete All"));
    QCOMPARE(request("plant/Data"), QStringList(noMenu));
}

void TestProjectTreeMenu::emptyMenuSwallowsTheNextToo()
{
    bool came = false;
    QCOMPARE(request("plant/Service", &came), QStringList());
    QVERIFY(came);
    request("plant", &came);
    QVERIFY(!came);
    QCOMPARE(request("plant/Data"), QStringList("Delete All"));
}

// A form can be opened without a mouse.
void TestProjectTreeMenu::menuKeyShowsTheMenuOfTheCurrentNode()
{
    QTreeView *tree = m_window->projectTree();
    tree->setCurrentIndex(node("plant/Box/gate")->index());
    QStringList entries;
    ModalDialogs dialogs;
    dialogs.expect([&entries](QWidget *menu) {
        for (const QAction *action : menu->actions()) {
            entries.append(action->text());
        }
        menu->close();
    });
    const QPoint place = placeOfMenuKey(tree);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, place, tree->mapToGlobal(place));
    QCoreApplication::sendEvent(tree, &event);
    QCOMPARE(entries, QStringList({CMainWindow::tr("Editing Box"), CMainWindow::tr("Delete")}));
}

void TestProjectTreeMenu::requestBesideTheNodesShowsNothingAndSwallowsNothing()
{
    const QPoint beside = m_window->projectTree()->viewport()->rect().bottomLeft() - QPoint(0, 2);
    QVERIFY(!m_window->projectTree()->indexAt(beside).isValid());
    bool came = true;
    request(beside, &came);
    QVERIFY(!came);
    QCOMPARE(request("plant/Data"), QStringList("Delete All"));
    // A swallowed request is swallowed wherever it is made.
    request(beside, &came);
    QVERIFY(!came);
    QCOMPARE(request("plant/Data"), QStringList("Delete All"));
}

void TestProjectTreeMenu::entriesFollowTheLanguage()
{
    m_window->CESwitching();
    QCOMPARE(request("plant/Data"), QStringList(CMainWindow::tr("Delete All")));
}

void TestProjectTreeMenu::entriesLeadToTheirSlots_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("effect");
    const auto row = [](const char *path, const char *entry, const char *effect) {
        QTest::addRow("%s: %s", path, entry) << path << entry << effect;
    };
    row("plant", "Edit Project", "tab Edit Project");
    row("plant", "Close Project", "box Save Changes");
    row("plant", "Save Project", "log Could not open file for writing:");
    row("plant/Standard", "Add Standard", "dialog standardInputDialog");
    row("plant/Box", "Add Box", "dialog BoxInputDialog");
    row("plant/Box", "Search Box", "window BoxSearchDialog");
    row("plant/Data", "Delete All", "gone plant/Data/meter");
    row("plant/Standard/bus", "Editing Standard", "tab Edit Standard");
    row("plant/Standard/bus", "Delete", "gone plant/Standard/bus");
    row("plant/Service/IEC61850", "Editing Service", "tab Edit Service");
    row("plant/Box/gate", "Editing Box", "tab Edit Box");
    row("plant/Box/gate", "Delete", "gone plant/Box/gate");
    row("plant/Data/meter", "Delete", "gone plant/Data/meter");
}

void TestProjectTreeMenu::entriesLeadToTheirSlots()
{
    QFETCH(QString, path);
    QFETCH(QString, entry);
    QFETCH(QString, effect);
    const QString kind = effect.section(QLatin1Char(' '), 0, 0);
    const QString object = effect.section(QLatin1Char(' '), 1);
    m_window->select(node(path));
    Messages messages;
    if (kind == QLatin1String("box")) {
        messages.expect(QMessageBox::Cancel);
    }
    if (kind == QLatin1String("log")) {
        QTest::ignoreMessage(QtDebugMsg, QRegularExpression(QLatin1Char('^') + object));
    }
    request(m_window->centreOf(node(path)), nullptr, entry);
    const bool dialogCame = !m_dialogs.filter(object).isEmpty();
    QCOMPARE(dialogCame, kind == QLatin1String("dialog"));
    QCOMPARE(m_dialogs.size(), dialogCame ? 1 : 0);
    QCOMPARE(messages.told().filter(object).size(), kind == QLatin1String("box") ? 1 : 0);
    if (kind == QLatin1String("tab")) {
        QCOMPARE(m_window->countOf(object), 1);
    }
    if (kind == QLatin1String("gone")) {
        QVERIFY(!node(object));
    }
    QWidget *window = nullptr;
    for (QWidget *top : QApplication::topLevelWidgets()) {
        window = top->inherits(object.toLatin1()) && top->isVisible() ? top : window;
    }
    QCOMPARE(window != nullptr, kind == QLatin1String("window"));
    if (window) {
        QVERIFY(!window->isModal());
        QVERIFY(window->testAttribute(Qt::WA_DeleteOnClose));
        QCOMPARE(window->parentWidget(), static_cast<QWidget *>(m_window.data()));
    }
}

void TestProjectTreeMenu::clicksOpenTheNodesForm_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("title");
    const auto row = [](const QString &path, const QString &title = QString()) {
        QTest::newRow(qPrintable(path)) << path << title;
    };
    row("plant", "Edit Project");
    row("plant/Standard/bus", "Edit Standard");
    row("plant/Service/IEC61850", "Edit Service");
    row("plant/Box/gate", "Edit Box");
    for (const char *path :
         {"plant/Standard", "plant/Service", "plant/Box", "plant/Data", "plant/Spare", "plant/Spare/thing",
          "plant/Data/meter", "plant/PLC", "plant/PLC/press", "plant/Server", "plant/Server/north"}) {
        row(QLatin1String(path));
    }
}

void TestProjectTreeMenu::clicksOpenTheNodesForm()
{
    QFETCH(QString, path);
    QFETCH(QString, title);
    const int before = int(m_window->dockManager()->dockWidgetsMap().size());
    m_window->click(node(path));
    QCOMPARE(int(m_window->dockManager()->dockWidgetsMap().size()), title.isEmpty() ? before : before + 1);
    QCOMPARE(m_window->countOf(title), title.isEmpty() ? 0 : 1);
}

void TestProjectTreeMenu::clickOnADataNodeShowsItsTab()
{
    QTabWidget *tabs = m_window->monitoringTabs();
    for (const char *text : {"other", "meter", "meter"}) {
        tabs->addTab(new QWidget, QString::fromLatin1(text));
    }
    m_window->click(node("plant/Data/meter"));
    QCOMPARE(tabs->currentIndex(), 1);
    tabs->setCurrentIndex(0);
    node("plant/Data/meter")->setText("METER");
    m_window->click(node("plant/Data/METER"));
    QCOMPARE(tabs->currentIndex(), 0);
}

void TestProjectTreeMenu::pressAndDoubleClickDoNothing()
{
    const int before = int(m_window->dockManager()->dockWidgetsMap().size());
    const QModelIndex box = node("plant/Box/gate")->index();
    QVERIFY(QMetaObject::invokeMethod(m_window.data(), "prjectTreeView_pressed", Q_ARG(QModelIndex, box)));
    QVERIFY(
        QMetaObject::invokeMethod(m_window.data(), "prjectTreeView_doubleClicked", Q_ARG(QModelIndex, box)));
    QCOMPARE(int(m_window->dockManager()->dockWidgetsMap().size()), before);
}

void TestProjectTreeMenu::menuNeedsNoMainWindow()
{
    QStandardItemModel model;
    auto *tree = new QTreeView;
    tree->setModel(&model);
    model.appendRow(ProjectTree::makeProject("plant", QString(), QString()));
    QStandardItem *project = model.item(0);
    ProjectTree::appendMissingFolders(project);
    const QStandardItem *meter = ProjectTree::appendDefinition(
        ProjectTree::childNamed(project, ProjectTree::dataFolder), "meter", QString());
    ProjectTreeMenu menu(tree, nullptr);

    QSignalSpy edits(&menu, &ProjectTreeMenu::editProject);
    QSignalSpy shown(&menu, &ProjectTreeMenu::showData);
    menu.click(project->index());
    menu.click(meter->index());
    QCOMPARE(edits.count(), 1);
    QCOMPARE(shown, QList<QVariantList>{QVariantList{"meter"}});

    QSignalSpy saves(&menu, &ProjectTreeMenu::saveProject);
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *widget) {
        qobject_cast<QMenu *>(widget)->setActiveAction(widget->actions().last());
        QTest::keyClick(widget, Qt::Key_Return);
    });
    menu.popUp(tree->visualRect(project->index()).center());
    QCOMPARE(saves.count(), 1);

    menu.popUp(QPoint()); // which is swallowed
    delete tree;
    menu.popUp(QPoint());
    QCOMPARE(dialogs.pending(), 0);
}

QTEST_MAIN(TestProjectTreeMenu)
#include "tst_projecttreemenu.moc"
