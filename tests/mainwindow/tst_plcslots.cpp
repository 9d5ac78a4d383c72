#include "mainwindow/cmainwindow.h"

#include "document/projectwriter.h"
#include "messages.h"
#include "modaldialogs.h"
#include "plc/plceditdialog.h"
#include "projectdump.h"
#include "windowundertest.h"

#include <QComboBox>
#include <QGroupBox>
#include <QJsonDocument>

using Window = WindowUnderTest;

static const QString editPlc = "Edit PLC";

// The PLC slots of the main window, which nothing but their names leads to.
class TestPlcSlots : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void addedPlcHasItsRolesAndIconAndOpens();
    void addingRefuses_data();
    void addingRefuses();
    void otherCasesAndFoldersAreFree();
    void blankNameIsTaken();
    void cancelledAddingChangesNothing();
    void slotsNeedACurrentItem();
    void addingToAProjectWithoutFolders();
    void secondPlcTakesTheTab();
    void tabShowsAndFillsItsDock();
    void tabOfAnotherFormIsLeftAlone();
    void tabOpensBesideItsNeighbours_data();
    void tabOpensBesideItsNeighbours();
    void cancelClosesTheTab();
    void savingTellsTheMessageDock();
    void noClickLeadsToAPlc();
    void documentFillsThePlc();
    void plcIsNotInTheDocument();

private:
    bool invoke(const char *slot) { return QMetaObject::invokeMethod(m_window.data(), slot); }
    // Adds with the dialog, which enters these.
    void add(const QString &name, const char *manufacturer, const char *protocol);
    QStandardItem *plc(const char *name, const char *manufacturer, const char *protocol) const;
    PLCEditDialog *open(const QStandardItem *item)
    {
        m_window->select(item);
        invoke("slotPLCEditFile");
        return form();
    }
    PLCEditDialog *form() const { return qobject_cast<PLCEditDialog *>(m_window->form(editPlc)); }

    QScopedPointer<Window> m_window;
    QStandardItem *m_project = nullptr;
    QStandardItem *m_folder = nullptr; // a "PLC" folder that the project does not have by itself
};

void TestPlcSlots::init()
{
    m_window.reset(new Window);
    m_project = m_window->addProject("plant");
    m_folder = ProjectTree::appendDefinition(m_project, "PLC", QString());
}

void TestPlcSlots::add(const QString &name, const char *manufacturer, const char *protocol)
{
    ModalDialogs dialogs;
    dialogs.expect([&](QWidget *dialog) {
        QCOMPARE(dialog->windowTitle(), "Add PLC");
        Window::input<QLineEdit>(dialog, "name")->setText(name);
        Window::input<QComboBox>(dialog, "manufacturer")->setCurrentText(QLatin1String(manufacturer));
        Window::input<QComboBox>(dialog, "protocol")->setCurrentText(QLatin1String(protocol));
        Window::press(dialog, "okButton");
    });
    QVERIFY(invoke("plcAddFile"));
    QCOMPARE(dialogs.pending(), 0);
}

QStandardItem *TestPlcSlots::plc(const char *name, const char *manufacturer, const char *protocol) const
{
    QStandardItem *item = ProjectTree::appendDefinition(m_folder, QLatin1String(name), QString());
    item->setData(QLatin1String(manufacturer), plcManufacturerRole);
    item->setData(QLatin1String(protocol), plcProtocolRole);
    return item;
}

void TestPlcSlots::addedPlcHasItsRolesAndIconAndOpens()
{
    m_window->select(m_folder);
    RUN(add("press 1", "Mitsubishi", "MC-3C"));
    QCOMPARE(m_folder->rowCount(), 1);
    const QStandardItem *item = m_folder->child(0);
    QCOMPARE(item->text(), "press 1");
    QCOMPARE(item->data(plcManufacturerRole).toString(), "Mitsubishi");
    QCOMPARE(item->data(plcProtocolRole).toString(), "MC-3C");
    QCOMPARE(ProjectDump::iconBytes(item->icon()), ProjectDump::iconBytes(":/adsdemo/images/PLC-file.svg"));
    QCOMPARE(m_window->currentItem(), item);
    QVERIFY(form());
    // The opening gives it its settings.
    QCOMPARE(item->data(plcPortRole).toString(), "102");
    QCOMPARE(item->data(plcMc3cSumCheckRole), QVariant(true));
}

void TestPlcSlots::addingRefuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("told");
    const QString taken =
        "Warning|A PLC file with the same name already exists in PLC or StandardDIO folder. "
        "Please use a different name.";
    QTest::newRow("no name") << QString() << "Warning|PLC Name cannot be empty.";
    QTest::newRow("name of a Standard") << "meter" << taken;
    QTest::newRow("name of a service") << "IEC61850" << taken;
}

void TestPlcSlots::addingRefuses()
{
    QFETCH(QString, name);
    QFETCH(QString, told);
    Window::addStandard(m_project, "meter", "Modbus");
    m_window->select(m_folder);
    const QStringList before = ProjectDump::tree(m_project);
    Messages messages;
    messages.expect();
    RUN(add(name, "Siemens", "S7"));
    QCOMPARE(messages.told(), QStringList(told));
    QCOMPARE(ProjectDump::tree(m_project), before);
    QCOMPARE(m_window->currentItem(), m_folder);
    QVERIFY(!form());
}

// Only the first two folders of the project are compared, and exactly: its own is not among them.
void TestPlcSlots::otherCasesAndFoldersAreFree()
{
    Window::addStandard(m_project, "meter", "Modbus");
    Window::addBox(m_project, "gate", "127.0.0.1");
    Messages messages;
    for (const char *name : {"Meter", "gate", "Meter"}) {
        m_window->select(m_folder);
        RUN(add(QLatin1String(name), "Siemens", "S7"));
    }
    QCOMPARE(messages.told(), QStringList());
    QCOMPARE(m_folder->rowCount(), 3);
}

void TestPlcSlots::blankNameIsTaken()
{
    m_window->select(m_folder);
    RUN(add("  ", "Siemens", "S7"));
    QCOMPARE(m_folder->child(0)->text(), "  ");
}

void TestPlcSlots::cancelledAddingChangesNothing()
{
    m_window->select(m_folder);
    Messages messages;
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *dialog) { Window::press(dialog, "cancelButton"); });
    QVERIFY(invoke("plcAddFile"));
    QCOMPARE(dialogs.pending(), 0);
    QCOMPARE(messages.told(), QStringList());
    QCOMPARE(m_folder->rowCount(), 0);
}

void TestPlcSlots::slotsNeedACurrentItem()
{
    m_window->projectTree()->setCurrentIndex(QModelIndex());
    ModalDialogs dialogs;
    QVERIFY(invoke("plcAddFile"));
    QVERIFY(invoke("slotPLCEditFile"));
    QVERIFY(!form());
}

void TestPlcSlots::addingToAProjectWithoutFolders()
{
    auto *bare = new QStandardItem("bare");
    m_window->projectModel()->appendRow(bare);
    m_window->select(bare);
    RUN(add("press", "Omron", "Fins"));
    QCOMPARE(ProjectDump::shape(bare), "bare(press())");
}

void TestPlcSlots::secondPlcTakesTheTab()
{
    const PLCEditDialog *opened = open(plc("one", "Siemens", "S7"));
    QVERIFY(opened);
    QCOMPARE(open(plc("two", "Omron", "Fins")), opened);
    QCOMPARE(m_window->countOf(editPlc), 1);
    QCOMPARE(Window::input<QLineEdit>(opened, "name")->text(), "two");
    QVERIFY(!opened->findChild<QGroupBox *>("fins")->isHidden());
}

void TestPlcSlots::tabShowsAndFillsItsDock()
{
    open(plc("one", "Siemens", "S7"));
    QTRY_VERIFY(form()->isVisible());
    QTRY_COMPARE(form()->size(), form()->parentWidget()->size());
    // The form sizes itself to its groups and yet stays in its place.
    Window::input<QComboBox>(form(), "protocol")->setCurrentText("PPI");
    QTRY_COMPARE(form()->size(), form()->parentWidget()->size());
    Window::press(form(), "saveButton");
    QVERIFY(!m_folder->child(0)->data(plcIpRole).isValid());
    QCOMPARE(m_folder->child(0)->data(plcPpiStationNumRole).toString(), "2");
}

void TestPlcSlots::tabOfAnotherFormIsLeftAlone()
{
    open(plc("one", "Siemens", "S7"));
    ads::CDockWidget *tab = m_window->tab(editPlc);
    delete tab->takeWidget();
    auto *other = new QDialog;
    tab->setWidget(other);
    QVERIFY(invoke("slotPLCEditFile"));
    QCOMPARE(m_window->tabs(editPlc).size(), 1);
    QCOMPARE(m_window->tab(editPlc)->widget(), other);
}

void TestPlcSlots::tabOpensBesideItsNeighbours_data()
{
    QTest::addColumn<QByteArray>("slot");
    QTest::addColumn<QString>("title");
    QTest::newRow("Service") << QByteArray("slotServiceEditFile") << "Edit Service";
    QTest::newRow("Standard") << QByteArray("slotstandardEditFile") << "Edit Standard";
    QTest::newRow("Server") << QByteArray("slotServerEditFile") << "Edit Server";
    QTest::newRow("Project") << QByteArray("slotEditProject") << "Edit Project";
}

void TestPlcSlots::tabOpensBesideItsNeighbours()
{
    QFETCH(QByteArray, slot);
    QFETCH(QString, title);
    QStandardItem *server = ProjectTree::appendDefinition(m_project, "broker", QString());
    server->setData("MQTT", serverProtocolRole);
    const QMap<QString, QStandardItem *> items{
        {"Edit Server", server},
        {"Edit Service", Window::folder(m_project, "Service")->child(0)},
        {"Edit Standard", Window::addStandard(m_project, "meter", "Modbus")},
        {"Edit Project", m_project}};
    m_window->select(items.value(title));
    QVERIFY(invoke(slot.constData()));
    open(plc("one", "Siemens", "S7"));
    QVERIFY(m_window->areas().contains(QStringList({title, editPlc})));
}

void TestPlcSlots::cancelClosesTheTab()
{
    open(plc("one", "Siemens", "S7"));
    Window::press(form(), "cancelButton");
    Window::settle();
    QCOMPARE(m_window->countOf(editPlc), 0);
    QVERIFY(!form());
}

void TestPlcSlots::savingTellsTheMessageDock()
{
    open(plc("one", "Siemens", "S7"));
    Window::press(form(), "saveButton");
    QCOMPARE(m_window->messages(), QStringList("The PLC 'one' is saved successfully."));
    QVERIFY(form()); // it stays open
}

void TestPlcSlots::noClickLeadsToAPlc()
{
    QStandardItem *item = plc("one", "Siemens", "S7");
    m_window->click(item);
    m_window->click(m_folder);
    QVERIFY(!form());
    QCOMPARE(m_window->countOf(editPlc), 0);
}

void TestPlcSlots::documentFillsThePlc()
{
    QStandardItem item;
    const QJsonObject object = QJsonDocument::fromJson(R"({"manufacturer": "Omron", "protocol": "Fins",
                                    "extendedParameters": {"unitNumber": "4"}, "parameter": {"ip": "10.0.0.8"}})")
                                   .object();
    QVERIFY(QMetaObject::invokeMethod(m_window.data(), "transmitPLCDataToEditDialog",
                                      Q_ARG(QJsonObject, object), Q_ARG(QStandardItem *, &item)));
    QCOMPARE(item.data(plcManufacturerRole).toString(), "Omron");
    QCOMPARE(item.data(plcFinsUnitNumberRole).toString(), "4");
    QCOMPARE(item.data(plcIpRole).toString(), "10.0.0.8");
    PLCEditDialog opened(&item, nullptr);
    QCOMPARE(opened.findChild<QGroupBox *>("fins")->findChild<QLineEdit *>("unitNumber")->text(), "4");
}

void TestPlcSlots::plcIsNotInTheDocument()
{
    const QByteArray before = projectDocument(m_project);
    open(plc("one", "Siemens", "S7"));
    Window::press(form(), "saveButton");
    QCOMPARE(projectDocument(m_project), before);
}

QTEST_MAIN(TestPlcSlots)
#include "tst_plcslots.moc"
