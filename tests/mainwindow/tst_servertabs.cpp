#include "mainwindow/resourcekinds.h"

#include "mainwindow/editortabs.h"
#include "messages.h"
#include "modaldialogs.h"
#include "projectdump.h"
#include "windowundertest.h"

#include <QComboBox>

#include <optional>

using Window = WindowUnderTest;

static const QString editServer = "Edit Server";
static const QString editBox = "Edit Box";

// Servers in the main window. A project has no folder for them, so the tests add one and call the slots by
// name.
class TestServerTabs : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void addedServerHasItsRolesAndIcon_data();
    void addedServerHasItsRolesAndIcon();
    void addedServerOpensItsTabAtOnce();
    void addingRefuses_data();
    void addingRefuses();
    void cancelledAddingChangesNothing();
    void namesOfOtherFoldersAreFree();
    void folderHasOneSlaveAtMost();

    void protocolChoosesTheForm_data();
    void protocolChoosesTheForm();
    void sameProtocolIsRebound();
    void otherProtocolReplacesTheTab();
    void saveKeepsTheTabAndCancelClosesIt();
    void unknownProtocolOpensAnEmptyTabEachTime();
    void tabStandsBesideItsNeighbours_data();
    void tabStandsBesideItsNeighbours();
    void slotsNeedACurrentItem();
    void currentServerFormIsTheOpcUaForm();
    void noClickLeadsToAServer();
    void readerSlotFillsOneItem();

private:
    void invoke(const char *slot) { QVERIFY(QMetaObject::invokeMethod(m_window.data(), slot)); }
    QStandardItem *addServer(const char *name, const char *protocol) const
    {
        QStandardItem *item = ProjectTree::appendDefinition(m_folder, QString::fromLatin1(name), QString());
        item->setData(QString::fromLatin1(protocol), serverProtocolRole);
        return item;
    }
    QDialog *open(const QStandardItem *item)
    {
        m_window->select(item);
        invoke("slotServerEditFile");
        return m_window->form(editServer);
    }
    static void fillIn(QWidget *dialog, const QString &name, const QString &protocol);
    void add(const QString &name, const QString &protocol);

    QScopedPointer<Window> m_window;
    QStandardItem *m_project = nullptr;
    QStandardItem *m_folder = nullptr;
};

void TestServerTabs::init()
{
    m_window.reset(new Window);
    m_project = m_window->addProject("plant");
    m_folder = ProjectTree::appendDefinition(m_project, "Server", QString());
}

void TestServerTabs::fillIn(QWidget *dialog, const QString &name, const QString &protocol)
{
    Window::input<QLineEdit>(dialog, "name")->setText(name);
    Window::input<QLineEdit>(dialog, "description")->setText("up");
    auto *list = Window::input<QComboBox>(dialog, "protocol");
    list->setCurrentIndex(list->findData(protocol));
    Window::input<QLineEdit>(dialog, "ip")->setText("10.0.0.1");
    Window::input<QLineEdit>(dialog, "domainName")->setText("a.example.com");
    Window::press(dialog, "okButton");
}

void TestServerTabs::add(const QString &name, const QString &protocol)
{
    m_window->select(m_folder);
    ModalDialogs dialogs;
    dialogs.expect([&](QWidget *dialog) { fillIn(dialog, name, protocol); });
    invoke("serverAddFile");
    QCOMPARE(dialogs.pending(), 0);
}

void TestServerTabs::addedServerHasItsRolesAndIcon_data()
{
    QTest::addColumn<QString>("icon");
    QTest::addColumn<QString>("port");
    const auto row = [](const char *protocol, const QString &icon, const QString &port) {
        QTest::newRow(protocol) << icon << port;
    };
    row("MQTT", "MQTT", "1883");
    row("AliMQTT", "ali", "1883");
    row("OneNetMQTT", "onenet", "1883");
    row("HuaWeiMQTT", "HuaWei", "8883");
    row("ModbusTCP(Slave)", "server-file", "502");
    row("HJ212", "HJ212", "");
    row("SL651", "SL651", "");
    row("OpcUaServer", "OpcUaServer", "4840");
}

void TestServerTabs::addedServerHasItsRolesAndIcon()
{
    QFETCH(QString, icon);
    QFETCH(QString, port);
    const QString protocol = QString::fromLatin1(QTest::currentDataTag());
    // Without its tab, whose form may write more into the item.
    std::optional<ResourceKind::New> resource;
    {
        ModalDialogs dialogs;
        dialogs.expect([&](QWidget *dialog) { fillIn(dialog, "north", protocol); });
        ResourceKind::server().ask(m_window.data(), m_folder,
                                   [&](const ResourceKind::New &given) { resource = given; });
    }
    QVERIFY(resource);
    const QVector<QPair<int, QVariant>> roles{{serverDescriptionRole, "up"},
                                              {serverProtocolRole, protocol},
                                              {serverIpRole, "10.0.0.1"},
                                              {serverPortRole, port},
                                              {serverDomainNameRole, "a.example.com"}};
    QCOMPARE(resource->name, "north");
    QCOMPARE(resource->roles, roles);

    RUN(add("north", protocol));
    QCOMPARE(ProjectDump::shape(m_folder), "Server(north())");
    const QStandardItem *server = m_folder->child(0);
    for (const auto &role : roles) {
        QCOMPARE(server->data(role.first), role.second);
    }
    QCOMPARE(ProjectDump::iconBytes(server->icon()),
             ProjectDump::iconBytes(QString(":/adsdemo/images/%1.svg").arg(icon)));
}

void TestServerTabs::addedServerOpensItsTabAtOnce()
{
    RUN(add("north", "OpcUaServer"));
    QCOMPARE(m_window->currentItem(), m_folder->child(0));
    const QDialog *form = m_window->form(editServer);
    QVERIFY(form);
    QCOMPARE(Window::input<QLineEdit>(form, "name")->text(), "north");
    QCOMPARE(Window::input<QLineEdit>(form, "port")->text(), "4840");
    QCOMPARE(Window::input<QComboBox>(form, "anonymous")->currentText(), "false");
    QCOMPARE(Window::input<QLineEdit>(form, "username")->text(), QString());
    QCOMPARE(Window::input<QLineEdit>(form, "password")->text(), QString());
}

void TestServerTabs::addingRefuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("told");
    QTest::newRow("no name") << QString() << "Warning|Server Name cannot be empty.";
    QTest::newRow("taken name")
        << "taken"
        << "Warning|A server file with the same name already exists in this folder. Please use "
           "a different name.";
}

void TestServerTabs::addingRefuses()
{
    QFETCH(QString, name);
    QFETCH(QString, told);
    addServer("taken", "MQTT");
    const QStringList before = ProjectDump::tree(m_project);
    const QList<QStringList> areas = m_window->areas();
    Messages messages;
    messages.expect();
    RUN(add(name, "HJ212"));
    QCOMPARE(messages.told(), QStringList(told));
    QCOMPARE(ProjectDump::tree(m_project), before);
    QCOMPARE(m_window->areas(), areas);
}

void TestServerTabs::cancelledAddingChangesNothing()
{
    m_window->select(m_folder);
    ModalDialogs dialogs;
    Messages messages;
    dialogs.expect([](QWidget *dialog) { Window::press(dialog, "cancelButton"); });
    invoke("serverAddFile");
    QCOMPARE(dialogs.pending(), 0);
    QCOMPARE(messages.told(), QStringList());
    QCOMPARE(m_folder->rowCount(), 0);
    QCOMPARE(m_window->countOf(editServer), 0);
}

void TestServerTabs::namesOfOtherFoldersAreFree()
{
    Window::addStandard(m_project, "north", "Modbus");
    addServer("NORTH", "MQTT");
    Messages messages;
    RUN(add("north", "MQTT"));
    QCOMPARE(messages.told(), QStringList());
    QCOMPARE(ProjectDump::shape(m_folder), "Server(NORTH() north())");
}

void TestServerTabs::folderHasOneSlaveAtMost()
{
    addServer("a", "MQTT");
    addServer("b", "ModbusTCP(Slave)");
    Messages messages;
    messages.expect();
    RUN(add("c", "ModbusTCP(Slave)"));
    QCOMPARE(messages.told(),
             QStringList("Warning|A ModbusTCP(Slave) file already exists. You cannot create another one."));
    QCOMPARE(m_folder->child(2)->data(serverProtocolRole).toString(), "MQTT");
    QCOMPARE(m_folder->child(2)->data(serverPortRole).toString(), "1883");
}

void TestServerTabs::protocolChoosesTheForm_data()
{
    QTest::addColumn<QString>("className");
    QTest::newRow("MQTT") << "ServerEditDialog";
    QTest::newRow("AliMQTT") << "ServerAliMQTTEditDialog";
    QTest::newRow("OneNetMQTT") << "ServerOneNetMQTTEditDialog";
    QTest::newRow("HuaWeiMQTT") << "ServerHuaWeiMQTTEditDialog";
    QTest::newRow("ModbusTCP(Slave)") << "ServerModbusTCPEditDialog";
    QTest::newRow("HJ212") << "ServerHJ212EditDialog";
    QTest::newRow("SL651") << "ServerSL651EditDialog";
    QTest::newRow("OpcUaServer") << "ServerOPCUAEditDialog";
}

void TestServerTabs::protocolChoosesTheForm()
{
    QFETCH(QString, className);
    const QDialog *form = open(addServer("a", QTest::currentDataTag()));
    QVERIFY(form);
    QCOMPARE(QString::fromLatin1(form->metaObject()->className()), className);
    QCOMPARE(Window::input<QLineEdit>(form, "name")->text(), "a");
    const ads::CDockWidget *tab = m_window->tab(editServer);
    QVERIFY(tab->features().testFlag(ads::CDockWidget::DockWidgetDeleteOnClose));
    QVERIFY(!tab->icon().isNull());
    QCOMPARE(tab->windowTitle(), editServer);
}

void TestServerTabs::sameProtocolIsRebound()
{
    const QPointer<QDialog> form = open(addServer("a", "AliMQTT"));
    Window::input<QLineEdit>(form, "port")->setText("typed");
    QCOMPARE(open(addServer("b", "AliMQTT")), form.data());
    QCOMPARE(Window::input<QLineEdit>(form, "name")->text(), "b");
    QCOMPARE(Window::input<QLineEdit>(form, "port")->text(), QString());
    QCOMPARE(m_window->countOf(editServer), 1);
}

void TestServerTabs::otherProtocolReplacesTheTab()
{
    const QPointer<QDialog> old = open(addServer("a", "AliMQTT"));
    const QDialog *form = open(addServer("b", "OneNetMQTT"));
    QVERIFY(form != old);
    QCOMPARE(Window::input<QLineEdit>(form, "name")->text(), "b");
    QCOMPARE(m_window->countOf(editServer), 1);
    Window::settle();
    QVERIFY(!old);
}

void TestServerTabs::saveKeepsTheTabAndCancelClosesIt()
{
    QStandardItem *item = addServer("a", "MQTT");
    const QPointer<QDialog> form = open(item);
    Window::input<QLineEdit>(form, "port")->setText("1884");
    Window::press(form, "saveButton");
    QCOMPARE(item->data(serverPortRole).toString(), "1884");
    QCOMPARE(m_window->messages(), QStringList("The Server MQTT 'a' is saved successfully."));
    QCOMPARE(m_window->form(editServer), form.data());
    Window::input<QLineEdit>(form, "port")->setText("typed");
    Window::press(form, "cancelButton");
    QCOMPARE(m_window->tab(editServer), nullptr);
    Window::settle();
    QVERIFY(!form);
    QCOMPARE(item->data(serverPortRole).toString(), "1884");
}

void TestServerTabs::unknownProtocolOpensAnEmptyTabEachTime()
{
    const QPointer<QDialog> old = open(addServer("a", "MQTT"));
    const QStandardItem *unknown = addServer("b", "mqtt");
    QCOMPARE(open(unknown), nullptr);
    open(addServer("c", ""));
    Window::settle();
    QVERIFY(!old);
    RUN(m_window->compareEmptyTabs(editServer, 2));
}

void TestServerTabs::tabStandsBesideItsNeighbours_data()
{
    QTest::addColumn<int>("neighbour");
    for (const EditorTab kind :
         {EditorTab::Service, EditorTab::Standard, EditorTab::Box, EditorTab::Plc, EditorTab::Project}) {
        QTest::newRow(qPrintable(EditorTabs::titleOf(kind))) << int(kind);
    }
}

void TestServerTabs::tabStandsBesideItsNeighbours()
{
    QFETCH(int, neighbour);
    const auto kind = EditorTab(neighbour);
    EditorTabs tabs(m_window->dockManager(), m_window->viewMenu(), nullptr);
    tabs.place(tabs.make(kind, new QDialog(nullptr, Qt::Widget)), kind);
    open(addServer("a", "MQTT"));
    QVERIFY(m_window->areas().contains(QStringList({EditorTabs::titleOf(kind), editServer})));
}

void TestServerTabs::slotsNeedACurrentItem()
{
    m_window->projectTree()->setCurrentIndex(QModelIndex());
    ModalDialogs dialogs;
    invoke("serverAddFile");
    invoke("slotServerEditFile");
    QCOMPARE(m_window->countOf(editServer), 0);
}

void TestServerTabs::currentServerFormIsTheOpcUaForm()
{
    QCOMPARE(m_window->currentServerForm(), nullptr);
    open(addServer("a", "MQTT"));
    QCOMPARE(m_window->currentServerForm(), nullptr);
    const QPointer<QDialog> form = open(addServer("b", "OpcUaServer"));
    QCOMPARE(m_window->currentServerForm(), form.data());
    // Re-bound, it is the same form.
    open(addServer("c", "OpcUaServer"));
    QCOMPARE(m_window->currentServerForm(), form.data());
    // A form of another kind does not clear it; it goes with its own form.
    for (const char *protocol : {"AliMQTT", "OneNetMQTT", "HuaWeiMQTT", "unknown"}) {
        QVERIFY(open(addServer("d", protocol)) != form);
        QVERIFY(!form || m_window->currentServerForm() == form);
    }
    Window::settle();
    QVERIFY(!form);
    QCOMPARE(m_window->currentServerForm(), nullptr);
    const QDialog *next = open(addServer("e", "OpcUaServer"));
    QVERIFY(next);
    QCOMPARE(m_window->currentServerForm(), next);
}

void TestServerTabs::noClickLeadsToAServer()
{
    m_window->click(addServer("a", "MQTT"));
    m_window->click(m_folder);
    QCOMPARE(m_window->countOf(editServer), 0);
}

void TestServerTabs::readerSlotFillsOneItem()
{
    QStandardItem item;
    const QJsonObject object{{"protocol", "AliMQTT"}, {"productKey", "key"}};
    QVERIFY(QMetaObject::invokeMethod(m_window.data(), "transmitServerDataToEditDialog",
                                      Q_ARG(QJsonObject, object), Q_ARG(QStandardItem *, &item)));
    QCOMPARE(item.data(serverProtocolRole).toString(), "AliMQTT");
    QCOMPARE(item.data(serverProductKeyRole).toString(), "key");
}

QTEST_MAIN(TestServerTabs)
#include "tst_servertabs.moc"
