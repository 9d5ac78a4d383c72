#include "mainwindow/resourceactions.h"

#include "boxes/boxeditdialog.h"
#include "docksundertest.h"
#include "mainwindow/editortabs.h"
#include "messages.h"
#include "modaldialogs.h"
#include "projectdump.h"
#include "windowundertest.h"
#include "workspacefake.h"

#include <QComboBox>

#include <optional>

using Window = WindowUnderTest;

static const QString editBox = "Edit Box";
static const QString editStandard = "Edit Standard";
static const QString editService = "Edit Service";
// Nothing listens there: sessions to it fail and are tried again.
static const QString nobody = "127.0.13.7";

class TestResourceActions : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void addedStandardHasItsRoleAndIcon_data();
    void addedStandardHasItsRoleAndIcon();
    void addedStandardOpensItsTabAtOnce();
    void addedBoxHasItsRolesAndOpensItsTab();
    void cancelledAddingChangesNothing();
    void addingRefuses_data();
    void addingRefuses();
    void namesOfOtherFoldersAndCasesAreFree();
    void addingNeedsACurrentItem();

    void deletingClosesTheTabOfTheKind_data();
    void deletingClosesTheTabOfTheKind();
    void deletingNeedsADefinition();
    void deletedDataNodeLosesItsTabButNotItsPage();
    void deletingAllEmptiesTheFolder();
    void deletingAllOfAnEmptyDataFolderDoesNothing();
    void deletingAllOfADefinitionRemovesIt();
    void closeTabByNameTakesTheFirst();

    void actionsNeedNoMainWindow();

private:
    // Chooses the folder's entry and fills in its dialog.
    void add(void (CMainWindow::*slot)(), const char *folder, const QString &name, const QString &choice);
    QStandardItem *folder(const char *text) const
    {
        return Window::folder(m_project, QString::fromLatin1(text));
    }
    BoxEditDialog *boxForm() const { return qobject_cast<BoxEditDialog *>(m_window->form(editBox)); }

    QScopedPointer<Window> m_window;
    QStandardItem *m_project = nullptr;
};

void TestResourceActions::init()
{
    m_window.reset(new Window);
    m_project = m_window->addProject("plant");
}

void TestResourceActions::add(void (CMainWindow::*slot)(), const char *folderText, const QString &name,
                              const QString &choice)
{
    m_window->select(folder(folderText));
    ModalDialogs dialogs;
    dialogs.expect([&](QWidget *dialog) {
        Window::input<QLineEdit>(dialog, "name")->setText(name);
        if (auto *protocol = Window::input<QComboBox>(dialog, "protocol")) {
            protocol->setCurrentText(choice);
        } else {
            Window::input<QLineEdit>(dialog, "ip")->setText(choice);
        }
        Window::press(dialog, "okButton");
    });
    (m_window.data()->*slot)();
    QCOMPARE(dialogs.pending(), 0);
}

void TestResourceActions::addedStandardHasItsRoleAndIcon_data()
{
    QTest::addColumn<QString>("protocol");
    QTest::newRow("DLT645") << "DLT645";
    QTest::newRow("Modbus") << "Modbus";
}

void TestResourceActions::addedStandardHasItsRoleAndIcon()
{
    QFETCH(QString, protocol);
    // Without its tab, which would write its defaults into the item.
    std::optional<ResourceKind::New> resource;
    {
        ModalDialogs dialogs;
        dialogs.expect([&](QWidget *dialog) {
            Window::input<QLineEdit>(dialog, "name")->setText("bus");
            Window::input<QComboBox>(dialog, "protocol")->setCurrentText(protocol);
            Window::press(dialog, "okButton");
        });
        ResourceKind::standard().ask(m_window.data(), folder("Standard"),
                                     [&](const ResourceKind::New &given) { resource = given; });
    }
    QVERIFY(resource);
    QCOMPARE(resource->name, "bus");
    QCOMPARE(resource->roles, (QVector<QPair<int, QVariant>>{{standardProtocolRole, protocol}}));

    RUN(add(&CMainWindow::standardAddFile, "Standard", "bus", protocol));
    const QStandardItem *standard = folder("Standard")->child(0);
    QCOMPARE(standard->text(), "bus");
    QCOMPARE(standard->data(standardProtocolRole).toString(), protocol);
    QCOMPARE(ProjectDump::iconBytes(standard->icon()),
             ProjectDump::iconBytes(QString(":/adsdemo/images/%1.svg").arg(protocol)));
}

void TestResourceActions::addedStandardOpensItsTabAtOnce()
{
    RUN(add(&CMainWindow::standardAddFile, "Standard", "bus", "Modbus"));
    QCOMPARE(m_window->currentItem(), folder("Standard")->child(0));
    QCOMPARE(m_window->countOf(editStandard), 1);
}

void TestResourceActions::addedBoxHasItsRolesAndOpensItsTab()
{
    RUN(add(&CMainWindow::boxAddFile, "Box", "gate", nobody));
    QStandardItem *box = folder("Box")->child(0);
    QCOMPARE(box->text(), "gate");
    QCOMPARE(box->data(boxIpRole).toString(), nobody);
    QCOMPARE(box->data(boxModelRole).toString(), "MRN-GATE-70");
    QCOMPARE(ProjectDump::iconBytes(box->icon()), ProjectDump::iconBytes(":/adsdemo/images/box-file.svg"));
    QCOMPARE(m_window->currentItem(), box);
    QVERIFY(boxForm());
    QCOMPARE(boxForm()->nameEdit()->text(), "gate");
}

void TestResourceActions::cancelledAddingChangesNothing()
{
    for (auto slot : {&CMainWindow::standardAddFile, &CMainWindow::boxAddFile}) {
        m_window->select(folder("Box"));
        ModalDialogs dialogs;
        Messages messages;
        dialogs.expect([](QWidget *dialog) { Window::press(dialog, "cancelButton"); });
        (m_window.data()->*slot)();
        QCOMPARE(dialogs.pending(), 0);
        QCOMPARE(messages.told(), QStringList());
    }
    QCOMPARE(ProjectDump::shape(m_project), "plant(Standard() Service(IEC61850()) Box() Data())");
    QCOMPARE(m_window->currentItem(), folder("Box"));
}

using Slot = void (CMainWindow::*)();
Q_DECLARE_METATYPE(Slot)

void TestResourceActions::addingRefuses_data()
{
    QTest::addColumn<Slot>("slot");
    QTest::addColumn<QByteArray>("folderText");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("told");
    const QByteArray standard = "Standard";
    const QByteArray box = "Box";
    QTest::newRow("Standard without a name")
        << &CMainWindow::standardAddFile << standard << QString() << "Warning|standard Name cannot be empty.";
    QTest::newRow("Box without a name")
        << &CMainWindow::boxAddFile << box << QString() << "Warning|Box Name cannot be empty.";
    QTest::newRow("Standard of a taken name")
        << &CMainWindow::standardAddFile << standard << "taken"
        << "Warning|A standard file with the same name already exists in PLC or Standard folder. "
           "Please use a different name.";
    QTest::newRow("Box of a taken name")
        << &CMainWindow::boxAddFile << box << "taken"
        << "Warning|A box file with the same name already exists in this folder. Please use a "
           "different name.";
}

void TestResourceActions::addingRefuses()
{
    QFETCH(Slot, slot);
    QFETCH(QByteArray, folderText);
    QFETCH(QString, name);
    QFETCH(QString, told);
    Window::addBox(m_project, "taken", nobody);
    Window::addStandard(m_project, "taken", "Modbus");
    const QStringList before = ProjectDump::tree(m_project);
    const QList<QStringList> areas = m_window->areas();
    Messages messages;
    messages.expect();
    RUN(add(slot, folderText.constData(), name, nobody));
    QCOMPARE(messages.told(), QStringList(told));
    QCOMPARE(ProjectDump::tree(m_project), before);
    QCOMPARE(m_window->areas(), areas);
}

void TestResourceActions::namesOfOtherFoldersAndCasesAreFree()
{
    Window::addBox(m_project, "abc", nobody);
    Window::addStandard(m_project, "ABC", "Modbus");
    Messages messages;
    RUN(add(&CMainWindow::boxAddFile, "Box", "ABC", nobody));
    RUN(add(&CMainWindow::standardAddFile, "Standard", "abc", "Modbus"));
    QCOMPARE(messages.told(), QStringList());
    QCOMPARE(ProjectDump::shape(m_project),
             "plant(Standard(ABC() abc()) Service(IEC61850()) Box(abc() ABC()) Data())");
}

void TestResourceActions::addingNeedsACurrentItem()
{
    m_window->projectTree()->setCurrentIndex(QModelIndex());
    ModalDialogs dialogs;
    m_window->standardAddFile();
    m_window->boxAddFile();
}

void TestResourceActions::deletingClosesTheTabOfTheKind_data()
{
    QTest::addColumn<QByteArray>("folderText");
    QTest::addColumn<QString>("title");
    QTest::newRow("Box") << QByteArray("Box") << editBox;
    QTest::newRow("Standard") << QByteArray("Standard") << editStandard;
    QTest::newRow("Service") << QByteArray("Service") << editService;
}

void TestResourceActions::deletingClosesTheTabOfTheKind()
{
    QFETCH(QByteArray, folderText);
    QFETCH(QString, title);
    EditorTabs tabs(m_window->dockManager(), m_window->viewMenu(), nullptr);
    QHash<QString, QPointer<QWidget>> forms;
    for (const EditorTab kind : {EditorTab::Box, EditorTab::Standard, EditorTab::Service}) {
        auto *form = new QDialog(nullptr, Qt::Widget);
        tabs.place(tabs.make(kind, form), kind);
        forms[EditorTabs::titleOf(kind)] = form;
    }
    // The tab of the kind goes though it shows another node.
    QStandardItem *item = ProjectTree::appendDefinition(folder(folderText.constData()), "gone", QString());
    const int before = folder(folderText.constData())->rowCount();
    m_window->monitoringTabs()->addTab(new QWidget, "gone");
    m_window->select(item);
    Messages messages;
    m_window->slotDeleteFile();
    QCOMPARE(messages.told(), QStringList());
    QCOMPARE(folder(folderText.constData())->rowCount(), before - 1);
    QVERIFY(!ProjectTree::childNamed(folder(folderText.constData()), "gone"));
    QCOMPARE(m_window->monitoringTabs()->count(), 0);
    Window::settle();
    for (const QString &each : {editBox, editStandard, editService}) {
        QCOMPARE(forms[each].isNull(), each == title);
    }
}

void TestResourceActions::deletingNeedsADefinition()
{
    const QString before = ProjectDump::shape(m_project);
    m_window->projectTree()->setCurrentIndex(QModelIndex());
    m_window->slotDeleteFile();
    m_window->slotDeleteAllFile();
    for (const QStandardItem *item : {static_cast<const QStandardItem *>(m_project),
                                      static_cast<const QStandardItem *>(folder("Data"))}) {
        m_window->select(item);
        m_window->slotDeleteFile();
    }
    QCOMPARE(ProjectDump::shape(m_project), before);
    QCOMPARE(m_window->projectModel()->rowCount(), 1);
}

void TestResourceActions::deletedDataNodeLosesItsTabButNotItsPage()
{
    QStandardItem *meter = ProjectTree::appendDefinition(folder("Data"), "meter", QString());
    ProjectTree::appendDefinition(folder("Data"), "pump", QString());
    const QPointer<QWidget> page = new QWidget;
    m_window->monitoringTabs()->addTab(page, "meter");
    m_window->monitoringTabs()->addTab(new QWidget, "pump");
    m_window->click(Window::addBox(m_project, "a", nobody));
    m_window->select(meter);
    m_window->slotDeleteFile();
    Window::settle();
    QCOMPARE(m_window->monitoringTabs()->count(), 1);
    QCOMPARE(m_window->monitoringTabs()->tabText(0), "pump");
    QVERIFY(page);
    QVERIFY(boxForm());
    QCOMPARE(ProjectDump::shape(folder("Data")), "Data(pump())");
}

void TestResourceActions::deletingAllEmptiesTheFolder()
{
    for (const char *name : {"meter", "pump"}) {
        ProjectTree::appendDefinition(folder("Data"), QString::fromLatin1(name), QString());
        m_window->monitoringTabs()->addTab(new QWidget, QString::fromLatin1(name));
    }
    folder("Data")->setRowCount(3); // A row without an item is passed over.
    m_window->monitoringTabs()->addTab(new QWidget, "of another project");
    m_window->select(folder("Data"));
    m_window->slotDeleteAllFile();
    QCOMPARE(folder("Data")->rowCount(), 0);
    QCOMPARE(m_window->monitoringTabs()->count(), 1);
    QCOMPARE(m_window->monitoringTabs()->tabText(0), "of another project");
}

void TestResourceActions::deletingAllOfAnEmptyDataFolderDoesNothing()
{
    const QString before = ProjectDump::shape(m_project);
    m_window->select(folder("Data"));
    m_window->slotDeleteAllFile();
    QCOMPARE(ProjectDump::shape(m_project), before);
}

void TestResourceActions::deletingAllOfADefinitionRemovesIt()
{
    m_window->select(ProjectTree::appendDefinition(folder("Data"), "meter", QString()));
    m_window->monitoringTabs()->addTab(new QWidget, "meter");
    m_window->slotDeleteAllFile();
    QCOMPARE(folder("Data")->rowCount(), 0);
    QCOMPARE(m_window->monitoringTabs()->count(), 0);
}

void TestResourceActions::closeTabByNameTakesTheFirst()
{
    QTabWidget *tabs = m_window->monitoringTabs();
    const QPointer<QWidget> page = new QWidget;
    tabs->addTab(page, "meter");
    tabs->addTab(new QWidget, "meter");
    m_window->closeTabByName("nothing");
    QCOMPARE(tabs->count(), 2);
    m_window->closeTabByName("meter");
    QCOMPARE(tabs->count(), 1);
    QCOMPARE(tabs->indexOf(page), -1);
    QVERIFY(page);
}

void TestResourceActions::actionsNeedNoMainWindow()
{
    DocksUnderTest window;
    WorkspaceFake workspace;
    EditorTabs tabs(window.dockManager(), window.viewMenu(), nullptr);
    ResourceActions actions(window.projectTree(), &tabs, &workspace, &window);
    QSignalSpy made(&actions, &ResourceActions::formMade);
    QSignalSpy removed(&actions, &ResourceActions::removed);
    actions.edit(ResourceKind::standard()); // without a current item
    QCOMPARE(made.count(), 0);

    const QStandardItem *project = window.addProject("plant");
    QStandardItem *standards = ProjectTree::childNamed(project, ProjectTree::standardFolder);
    window.select(
        ProjectTree::appendDefinition(standards, "bus", QString(), {{standardProtocolRole, "Modbus"}}));
    actions.edit(ResourceKind::standard());
    QCOMPARE(made.count(), 1);
    QCOMPARE(made.first().first().value<QDialog *>(), tabs.find(EditorTab::Standard)->widget());

    actions.remove();
    QCOMPARE(standards->rowCount(), 0);
    QCOMPARE(removed, QList<QVariantList>{QVariantList{"bus"}});
    QVERIFY(!tabs.find(EditorTab::Standard));
}

QTEST_MAIN(TestResourceActions)
#include "tst_resourceactions.moc"
