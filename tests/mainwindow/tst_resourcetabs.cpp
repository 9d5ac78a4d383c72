#include "mainwindow/resourceactions.h"

#include "boxes/boxeditdialog.h"
#include "document/projectreader.h"
#include "fakebox.h"
#include "mainwindow/editortabs.h"
#include "messages.h"
#include "projectdump.h"
#include "windowundertest.h"

#include <QJsonDocument>
#include <QJsonObject>

using Window = WindowUnderTest;

static const QString editBox = "Edit Box";
static const QString editStandard = "Edit Standard";
static const QString editService = "Edit Service";
static const QString editProject = "Edit Project";
// Nothing listens there: sessions to it fail and are tried again.
static const QString nobody = "127.0.13.17";

class TestResourceTabs : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_window.reset(); }

    void boxFormShowsTheItem();
    void clickOnAnotherBoxReusesTheTabAndMovesTheSession();
    void saveInAReboundTabReportsTheBoxsOwnName();
    void saveRenamesTheBoxAndClosesItsTab();
    void cancelClosesTheTabAndLeavesTheItem();
    void closedBoxTabEndsItsSession();
    void boxReportsReachTheTree();
    void foreignWidgetInTheBoxTabStopsTheSlot();

    void otherFormReplacesTheTab();
    void sameFormIsRebound();
    void kindWithoutAFormOpensAnEmptyTabEachTime_data();
    void kindWithoutAFormOpensAnEmptyTabEachTime();
    void loadedDidoStandardOpensAnEmptyTab();
    void kindWithoutAFormClosesTheOpenForm();
    void tabsStandBesideTheirNeighbours();
    void hiddenTabComesBackWithTheOtherItem();

private:
    QStandardItem *folder(const char *text) const
    {
        return Window::folder(m_project, QString::fromLatin1(text));
    }
    BoxEditDialog *boxForm() const { return qobject_cast<BoxEditDialog *>(m_window->form(editBox)); }

    QScopedPointer<Window> m_window;
    QStandardItem *m_project = nullptr;
};

void TestResourceTabs::init()
{
    m_window.reset(new Window);
    m_project = m_window->addProject("plant");
}

void TestResourceTabs::boxFormShowsTheItem()
{
    m_window->click(Window::addBox(m_project, "gate", nobody));
    QVERIFY(boxForm());
    QCOMPARE(boxForm()->nameEdit()->text(), "gate");
    const ads::CDockWidget *tab = m_window->tab(editBox);
    QVERIFY(tab->features().testFlag(ads::CDockWidget::DockWidgetDeleteOnClose));
    QVERIFY(!tab->icon().isNull());
}

void TestResourceTabs::clickOnAnotherBoxReusesTheTabAndMovesTheSession()
{
    const FakeBox firstBox("127.0.13.2");
    const FakeBox secondBox("127.0.13.3");
    const QStandardItem *a = Window::addBox(m_project, "a", "127.0.13.2");
    const QStandardItem *b = Window::addBox(m_project, "b", "127.0.13.3");
    m_window->click(a);
    QTRY_VERIFY(firstBox.isLinked());
    const QPointer<BoxEditDialog> form = boxForm();
    form->nameEdit()->setText("typed");
    m_window->click(b);
    QCOMPARE(boxForm(), form.data());
    QCOMPARE(m_window->countOf(editBox), 1);
    QCOMPARE(form->nameEdit()->text(), "b");
    QTRY_VERIFY(secondBox.isLinked() && !firstBox.isLinked());
}

void TestResourceTabs::saveInAReboundTabReportsTheBoxsOwnName()
{
    QStandardItem *a = Window::addBox(m_project, "a", nobody);
    QStandardItem *b = Window::addBox(m_project, "b", nobody);
    m_window->click(a);
    m_window->click(b);
    Window::input<QLineEdit>(boxForm(), "ip")->setText("127.0.13.6");
    Messages messages;
    messages.expect();
    boxForm()->saveButton()->click();
    QCOMPARE(messages.told(),
             QStringList("Duplicate name|The name\"b\"already exists, please change "
                         "the name."));
    QVERIFY(boxForm());
    QCOMPARE(b->data(boxIpRole).toString(), nobody);
    // A fresh name goes to the first item, the fields to the second, and its form's name to the text of both.
    boxForm()->nameEdit()->setText("c");
    boxForm()->saveButton()->click();
    QCOMPARE(a->text(), "c");
    QCOMPARE(a->data(boxIpRole).toString(), nobody);
    QCOMPARE(b->text(), "c");
    QCOMPARE(b->data(boxIpRole).toString(), "127.0.13.6");
    QCOMPARE(m_window->tab(editBox), nullptr);
    QCOMPARE(messages.told().size(), 1);
}

void TestResourceTabs::saveRenamesTheBoxAndClosesItsTab()
{
    QStandardItem *box = Window::addBox(m_project, "a", nobody);
    m_window->click(box);
    const QPointer<BoxEditDialog> form = boxForm();
    form->nameEdit()->setText("gate");
    Window::input<QLineEdit>(form, "ip")->setText("127.0.13.6");
    form->saveButton()->click();
    QCOMPARE(box->text(), "gate");
    QCOMPARE(box->data(boxIpRole).toString(), "127.0.13.6");
    QCOMPARE(m_window->messages(), QStringList("The box 'gate' is saved successfully."));
    QCOMPARE(m_window->tab(editBox), nullptr);
    Window::settle();
    QVERIFY(!form);
}

void TestResourceTabs::cancelClosesTheTabAndLeavesTheItem()
{
    QStandardItem *box = Window::addBox(m_project, "a", nobody);
    m_window->click(box);
    const QPointer<BoxEditDialog> form = boxForm();
    form->nameEdit()->setText("typed");
    Window::press(form, "cancelButton");
    QCOMPARE(m_window->tab(editBox), nullptr);
    Window::settle();
    QVERIFY(!form);
    QCOMPARE(box->text(), "a");
}

void TestResourceTabs::closedBoxTabEndsItsSession()
{
    const FakeBox box("127.0.13.4");
    m_window->click(Window::addBox(m_project, "a", "127.0.13.4"));
    QTRY_VERIFY(box.isLinked());
    m_window->tab(editBox)->closeDockWidget();
    QTRY_VERIFY(!box.isLinked());
}

void TestResourceTabs::boxReportsReachTheTree()
{
    m_window->click(Window::addBox(m_project, "a", nobody));
    Protocol::dataMonitoringData report;
    report.projectName = "plant";
    report.plcName = "meter";
    emit boxForm()->sendDataToMainWindow(report);
    QCOMPARE(ProjectDump::shape(folder("Data")), "Data(meter())");
    QCOMPARE(m_window->monitoringTabs()->count(), 0);
    emit boxForm()->sendDataToMainWindow(report);
    QCOMPARE(m_window->monitoringTabs()->count(), 1);
}

void TestResourceTabs::foreignWidgetInTheBoxTabStopsTheSlot()
{
    EditorTabs tabs(m_window->dockManager(), m_window->viewMenu(), nullptr);
    auto *form = new QDialog(nullptr, Qt::Widget);
    tabs.place(tabs.make(EditorTab::Box, form), EditorTab::Box);
    m_window->click(Window::addBox(m_project, "a", nobody));
    QCOMPARE(m_window->form(editBox), form);
    QCOMPARE(m_window->countOf(editBox), 1);
}

namespace {

// Forms of two sub-kinds, of a kind "Edit Standard".
class FirstForm : public QDialog
{
    Q_OBJECT
public:
    FirstForm(const QStandardItem *item, Workspace *)
        : QDialog(nullptr, Qt::Widget)
    {
        showItem(item);
    }
    void replaceItem(const QStandardItem *item) { showItem(item); }

private:
    void showItem(const QStandardItem *item) { setWindowTitle(item->text()); }
};

class SecondForm : public FirstForm
{
    Q_OBJECT
public:
    using FirstForm::FirstForm;
};

// Opens the current item's form of the two.
void editWithTwoForms(Window *window)
{
    static const FormOf<FirstForm> first("one");
    static const FormOf<SecondForm> second("two");
    EditorTabs tabs(window->dockManager(), window->viewMenu(), nullptr);
    ResourceActions(window->projectTree(), &tabs, window, nullptr)
        .edit({EditorTab::Standard, standardProtocolRole, {&first, &second}});
}

} // namespace

void TestResourceTabs::otherFormReplacesTheTab()
{
    m_window->select(Window::addStandard(m_project, "a", "two"));
    editWithTwoForms(m_window.data());
    const QPointer<QDialog> old = m_window->form(editStandard);
    QVERIFY(qobject_cast<SecondForm *>(old));
    m_window->select(Window::addStandard(m_project, "b", "one"));
    editWithTwoForms(m_window.data());
    QVERIFY(m_window->form(editStandard) != old);
    QVERIFY(!qobject_cast<SecondForm *>(m_window->form(editStandard)));
    QCOMPARE(m_window->form(editStandard)->windowTitle(), "b");
    QCOMPARE(m_window->countOf(editStandard), 1);
    Window::settle();
    QVERIFY(!old);
    QCOMPARE(m_window->tabs(editStandard).size(), 1);
}

void TestResourceTabs::sameFormIsRebound()
{
    m_window->select(Window::addStandard(m_project, "a", "two"));
    editWithTwoForms(m_window.data());
    const QPointer<QDialog> old = m_window->form(editStandard);
    m_window->select(Window::addStandard(m_project, "b", "two"));
    editWithTwoForms(m_window.data());
    QCOMPARE(m_window->form(editStandard), old.data());
    QCOMPARE(old->windowTitle(), "b");
    QCOMPARE(m_window->countOf(editStandard), 1);
    old->accept();
    QCOMPARE(m_window->tab(editStandard), nullptr);
}

void TestResourceTabs::kindWithoutAFormOpensAnEmptyTabEachTime_data()
{
    QTest::addColumn<QByteArray>("folderText");
    QTest::addColumn<int>("role");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("subKind");
    for (const char *subKind : {"DIDO", "CustomPoll", "OpcUA", "modbus", ""}) {
        QTest::addRow("Standard \"%s\"", subKind) << QByteArray("Standard") << int(standardProtocolRole)
                                                  << editStandard << QString::fromLatin1(subKind);
    }
    QTest::newRow("Service") << QByteArray("Service") << int(serviceProtocolRole) << editService << "IEC104";
}

void TestResourceTabs::kindWithoutAFormOpensAnEmptyTabEachTime()
{
    QFETCH(QByteArray, folderText);
    QFETCH(int, role);
    QFETCH(QString, title);
    QFETCH(QString, subKind);
    QStandardItem *item = ProjectTree::appendDefinition(folder(folderText.constData()), "dormant", QString());
    item->setData(subKind, role);
    m_window->click(item);
    m_window->click(item);
    m_window->click(item);
    RUN(m_window->compareEmptyTabs(title, 3));
}

void TestResourceTabs::loadedDidoStandardOpensAnEmptyTab()
{
    const QJsonObject document =
        QJsonDocument::fromJson(R"({"name": "plant", "standards": [{"name": "inputs", "protocol": "DIDO",
            "parameter": {"collectionInterval": "500"},
            "datas": [{"addr": "1", "name": "door", "permissions": "r", "reportingMethod": "Timed"}]}]})")
            .object();
    QCOMPARE(loadProject(*m_window->projectModel(), document, QString()), m_project);
    const QStandardItem *standard = folder("Standard")->child(0);
    QCOMPARE(standard->text(), "inputs");
    QCOMPARE(standard->data(standardCollectionIntervalRole), QVariant("500"));
    QCOMPARE(standard->data(standardDatasRole), QVariant());
    m_window->click(standard);
    QCOMPARE(m_window->countOf(editStandard), 1);
    QCOMPARE(m_window->form(editStandard), nullptr);
}

void TestResourceTabs::kindWithoutAFormClosesTheOpenForm()
{
    m_window->select(Window::addStandard(m_project, "a", "two"));
    editWithTwoForms(m_window.data());
    const QPointer<QDialog> old = m_window->form(editStandard);
    QVERIFY(old);
    m_window->click(Window::addStandard(m_project, "b", "OpcUA"));
    QCOMPARE(m_window->tab(editStandard), nullptr);
    QCOMPARE(m_window->countOf(editStandard), 1);
    Window::settle();
    QVERIFY(!old);
}

void TestResourceTabs::tabsStandBesideTheirNeighbours()
{
    m_window->click(m_project);
    m_window->click(Window::addBox(m_project, "a", nobody));
    m_window->click(Window::addStandard(m_project, "b", "OpcUA"));
    m_window->click(folder("Service")->child(0));
    QVERIFY(m_window->areas().contains(QStringList({editProject, editBox, editStandard, editService})));
    // The project's form looks for Box, Server and PLC only, and the one in front here is none of them.
    m_window->click(m_project);
    QVERIFY(m_window->areas().contains(QStringList({editBox, editStandard, editService})));
    QVERIFY(m_window->areas().contains(QStringList(editProject)));
}

void TestResourceTabs::hiddenTabComesBackWithTheOtherItem()
{
    m_window->click(Window::addBox(m_project, "a", nobody));
    m_window->tab(editBox)->toggleViewAction()->trigger();
    QVERIFY(m_window->tab(editBox)->isClosed());
    m_window->click(Window::addBox(m_project, "b", nobody));
    QVERIFY(m_window->tab(editBox)->isVisible());
    QCOMPARE(boxForm()->nameEdit()->text(), "b");
}

QTEST_MAIN(TestResourceTabs)
#include "tst_resourcetabs.moc"
