#include "definitions/values.h"
#include "formtest.h"
#include "logtail.h"
#include "looks.h"
#include "model/itemroles.h"
#include "plc/plceditdialog.h"
#include "projectdump.h"
#include "servers/serveralimqtteditdialog.h"
#include "servers/servereditdialog.h"
#include "servers/serverhj212editdialog.h"
#include "servers/serverhuaweimqtteditdialog.h"
#include "servers/servermodbustcpeditdialog.h"
#include "servers/serveronenetmqtteditdialog.h"
#include "servers/serveropcuaeditdialog.h"
#include "servers/serversl651editdialog.h"
#include "services/serviceiec61850editdialog.h"
#include "standards/standardcustompolleditdialog.h"
#include "standards/standarddioeditdialog.h"
#include "standards/standarddlt645editdialog.h"
#include "standards/standardmodbuseditdialog.h"
#include "standards/standardopcuaeditdialog.h"
#include "widgets/unitmark.h"

#include <QAbstractSpinBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableWidget>
#include <QToolButton>

// What every form of a definition does, beside those of Boxes, which talk to one.
class TestEveryForm : public FormTest
{
    Q_OBJECT
public:
    TestEveryForm()
        : FormTest("north", Qt::UserRole, QString())
    {
    }
private slots:
    void initTestCase_data();

    void isTitledAndFoundByItsClass();
    void buttonsStandBelowAFramelessScrollArea();
    void everyLabelHasItsInput();
    void slotsAreCalledByName();
    void savingTellsAndKeepsTheFormOpen();
    void saveButtonSaves();
    void savingNeedsNoMainWindow();
    void savingWithoutItsNodeDoesNothing();
    void cancelRejectsAndLeavesTheItem();
    void replacedItemIsLeftAlone();
    void clearingLeavesTheItemAlone();
    void wheelLeavesListsInTablesAlone();
    void wheelScrollsThePageOverAList();
    void wheelChangesTheListInUse();
    void timesTellTheirUnit();
    void passwordsAreShownToWhoHoldsTheirEye();
    void fieldsThatOnlyShowLookSo();
    void rolesOfTheWrongTypeDoNoHarm();
    void writesItsLifeToTheLog();

private:
    std::unique_ptr<DefinitionForm> open(QStandardItem *item, Workspace *workspace) const;
    std::unique_ptr<DefinitionForm> open() const { return open(m_item, m_workspace); }
    void prepare(QStandardItem *item) const override;
    QString saved(const char *name) const;
};

namespace {

using Definitions::Kind;
using Make = DefinitionForm *(QStandardItem *item, Workspace *workspace);

template <class Form> DefinitionForm *make(QStandardItem *item, Workspace *workspace)
{
    return new Form(item, workspace);
}

struct FormRow {
    const char *protocol;
    const char *className;
    Make *make;
    Kind kind;
    const char *title;
    const char *saved;             // whose name the message of a save has
    const char *savedAs = nullptr; // which class's name the log has at a save, if not its own
    bool logsFilling = false;      // whether the log has the points or parameters that were filled in
};

// clang-format off
const FormRow forms[] = {
    {"MQTT", "ServerEditDialog", make<ServerEditDialog>, Kind::Server, "Edit Server", "Server MQTT"},
    {"AliMQTT", "ServerAliMQTTEditDialog", make<ServerAliMQTTEditDialog>, Kind::Server, "Edit Server", "Server AliMQTT"},
    {"OneNetMQTT", "ServerOneNetMQTTEditDialog", make<ServerOneNetMQTTEditDialog>, Kind::Server, "Edit Server", "Server OneNetMQTT"},
    {"HuaWeiMQTT", "ServerHuaWeiMQTTEditDialog", make<ServerHuaWeiMQTTEditDialog>, Kind::Server, "Edit Server", "Server HuaWeiMQTT"},
    {"OpcUaServer", "ServerOPCUAEditDialog", make<ServerOPCUAEditDialog>, Kind::Server, "Edit Server", "Server OpcUa"},
    {"ModbusTCP(Slave)", "ServerModbusTCPEditDialog", make<ServerModbusTCPEditDialog>, Kind::Server, "Edit Server", "Server ModbusTCP(Slave)"},
    {"HJ212", "ServerHJ212EditDialog", make<ServerHJ212EditDialog>, Kind::Server, "Edit Standard", "Server HJ212", nullptr, true},
    {"SL651", "ServerSL651EditDialog", make<ServerSL651EditDialog>, Kind::Server, "Edit Standard", "Server SL651"},
    {"Modbus", "standardModbusEditDialog", make<standardModbusEditDialog>, Kind::Standard, "Edit Standard", "Standard Modbus"},
    {"DLT645", "standardDLT645EditDialog", make<standardDLT645EditDialog>, Kind::Standard, "Edit Standard", "Standard DLT645"},
    {"CustomPoll", "standardCustomPollEditDialog", make<standardCustomPollEditDialog>, Kind::Standard, "Edit Standard", "Standard CustomPoll"},
    {"DIDO", "standardDIOEditDialog", make<standardDIOEditDialog>, Kind::Standard, "Edit Standard", "Standard DIDO", "standardDIDOEditDialog"},
    {"OpcUA", "standardOPCUAEditDialog", make<standardOPCUAEditDialog>, Kind::Standard, "Edit Standard", "Standard OpcUa"},
    {"IEC61850", "ServiceIEC61850EditDialog", make<ServiceIEC61850EditDialog>, Kind::Service, "Edit Service", "Standard OpcUa"},
    {"S7", "PLCEditDialog", make<PLCEditDialog>, Kind::Plc, "Edit PLC", "PLC", nullptr, true},
};
// clang-format on

const FormRow &row()
{
    QFETCH_GLOBAL(int, form);
    return forms[form];
}

// All that the document has of such a definition.
QVector<int> rolesOfTheKind()
{
    QVector<int> roles;
    for (const Definitions::Value &value : Definitions::values(row().kind)) {
        if (value.role >= Qt::UserRole) {
            roles.append(value.role);
        }
    }
    return roles;
}

} // namespace

void TestEveryForm::initTestCase_data()
{
    QTest::addColumn<int>("form");
    int index = 0;
    for (const FormRow &form : forms) {
        QTest::newRow(form.protocol) << index++;
    }
}

void TestEveryForm::prepare(QStandardItem *item) const
{
    const QString protocol = QString::fromLatin1(row().protocol);
    switch (row().kind) {
    case Kind::Plc:
        item->setData("Siemens", plcManufacturerRole);
        item->setData(protocol, plcProtocolRole);
        break;
    case Kind::Server:
        item->setData(protocol, serverProtocolRole);
        break;
    case Kind::Service:
        item->setData(protocol, serviceProtocolRole);
        break;
    default:
        item->setData(protocol, standardProtocolRole);
    }
}

std::unique_ptr<DefinitionForm> TestEveryForm::open(QStandardItem *item, Workspace *workspace) const
{
    return std::unique_ptr<DefinitionForm>(row().make(item, workspace));
}

QString TestEveryForm::saved(const char *name) const
{
    return QString("The %1 '%2' is saved successfully.").arg(QLatin1String(row().saved), QLatin1String(name));
}

void TestEveryForm::isTitledAndFoundByItsClass()
{
    const auto form = open();
    QCOMPARE(form->windowTitle(), QLatin1String(row().title));
    QCOMPARE(QLatin1String(form->metaObject()->className()), QLatin1String(row().className));
    QCOMPARE(edit(*form, "name")->text(), "north");
}

void TestEveryForm::buttonsStandBelowAFramelessScrollArea()
{
    const auto form = open();
    RUN(show(*form));
    const auto *area = form->findChild<QScrollArea *>();
    QCOMPARE(area->frameShape(), QFrame::NoFrame);
    QCOMPARE(area->styleSheet(), "QScrollArea { border: none; }");
    QVERIFY(area->isAncestorOf(edit(*form, "name")));
    const struct {
        const char *name;
        const char *text;
        const char *icon;
    } buttons[] = {{"saveButton", "Save", ":/adsdemo/images/ok.svg"},
                   {"cancelButton", "Cancel", ":/adsdemo/images/cancel.svg"}};
    for (const auto &button : buttons) {
        const auto *found = find<QPushButton>(*form, button.name);
        QCOMPARE(found->text(), QLatin1String(button.text));
        QCOMPARE(ProjectDump::iconBytes(found->icon()), ProjectDump::iconBytes(QLatin1String(button.icon)));
        QVERIFY(!area->isAncestorOf(found));
        QVERIFY(found->y() >= area->geometry().bottom());
    }
}

void TestEveryForm::everyLabelHasItsInput()
{
    const auto form = open();
    const auto labels = form->findChildren<QLabel *>();
    QVERIFY(labels.size() >= 3);
    for (const QLabel *label : labels) {
        QVERIFY2(label->buddy(), qPrintable(label->text()));
    }
}

void TestEveryForm::slotsAreCalledByName()
{
    const auto form = open();
    QVERIFY(QMetaObject::invokeMethod(form.get(), "saveChanges"));
    QCOMPARE(m_workspace->messages.size(), 1);
    QVERIFY(QMetaObject::invokeMethod(form.get(), "clearData"));
    QCOMPARE(edit(*form, "name")->text(), QString());
}

void TestEveryForm::savingTellsAndKeepsTheFormOpen()
{
    const auto form = open();
    const QSignalSpy finished(form.get(), &QDialog::finished);
    const QSignalSpy rejected(form.get(), &QDialog::rejected);
    form->show();
    form->saveChanges();
    form->saveChanges();
    QCOMPARE(m_workspace->messages, QStringList({saved("north"), saved("north")}));
    QCOMPARE(finished.size() + rejected.size(), 0);
    QVERIFY(form->isVisible());
    QCOMPARE(m_item->text(), "north");
}

// Of a Standard with tabs it is connected by whoever opens the form.
void TestEveryForm::saveButtonSaves()
{
    const bool hasTabs =
        row().make == &make<standardModbusEditDialog> || row().make == &make<standardDLT645EditDialog>;
    const auto form = open();
    click(*form, "saveButton");
    QCOMPARE(m_workspace->messages, hasTabs ? QStringList() : QStringList(saved("north")));
}

void TestEveryForm::savingNeedsNoMainWindow()
{
    const auto form = open(m_item, nullptr);
    for (int role : rolesOfTheKind()) {
        m_item->setData(QVariant(), role);
    }
    form->saveChanges();
    QVERIFY(!rolesOf(*m_item).isEmpty());
}

void TestEveryForm::savingWithoutItsNodeDoesNothing()
{
    const auto form = open();
    form->show();
    removeItems();
    form->saveChanges();
    QCoreApplication::processEvents();
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestEveryForm::cancelRejectsAndLeavesTheItem()
{
    const auto form = open();
    form->show();
    const auto before = rolesOf(*m_item);
    const QSignalSpy rejected(form.get(), &QDialog::rejected);
    const auto inputs = form->findChildren<QLineEdit *>();
    for (QLineEdit *input : inputs) {
        input->setText("12");
    }
    click(*form, "cancelButton");
    QCOMPARE(rejected.size(), 1);
    QVERIFY(form->isVisible()); // its tab closes it
    QCOMPARE(edit(*form, "name")->text(), "12");
    QCOMPARE(rolesOf(*m_item), before);
    QCOMPARE(m_item->text(), "north");
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestEveryForm::replacedItemIsLeftAlone()
{
    const auto form = open();
    form->show();
    const auto before = rolesOf(*m_item);
    QStandardItem *south = addItem("south");
    edit(*form, "name")->setText("not saved");
    form->replaceItem(south);
    QCOMPARE(edit(*form, "name")->text(), "south");
    form->saveChanges();
    QCOMPARE(m_workspace->messages, QStringList(saved("south")));
    QCOMPARE(rolesOf(*m_item), before);
    QCOMPARE(m_item->text(), "north");
}

void TestEveryForm::clearingLeavesTheItemAlone()
{
    for (int role : rolesOfTheKind()) {
        m_item->setData("x", role);
    }
    const auto form = open();
    const auto before = rolesOf(*m_item);
    form->clearData();
    QCOMPARE(edit(*form, "name")->text(), QString());
    QCOMPARE(rolesOf(*m_item), before);
    QCOMPARE(m_item->text(), "north");
}

void TestEveryForm::wheelLeavesListsInTablesAlone()
{
    const auto form = open();
    for (const char *name : {"addTabButton", "addButton"}) {
        if (auto *button = find<QPushButton>(*form, name)) {
            button->click();
        }
    }
    bool hasLists = false;
    const auto lists = form->findChildren<QComboBox *>();
    for (QComboBox *each : lists) {
        if (qobject_cast<QTableWidget *>(each->parentWidget()->parentWidget())) {
            hasLists = true;
            const int before = each->currentIndex();
            turnWheel(each);
            QCOMPARE(each->currentIndex(), before);
        }
    }
    QCOMPARE(hasLists, find<QPushButton>(*form, "addButton") != nullptr);
}

// In a tab that is too low for any form, so that there is something to scroll.
void TestEveryForm::wheelScrollsThePageOverAList()
{
    const auto form = open();
    for (const char *name : {"addTabButton", "addButton"}) {
        if (auto *button = find<QPushButton>(*form, name)) {
            button->click();
        }
    }
    RUN(show(*form));
    form->setFixedSize(520, 200);
    QScrollBar *bar = form->findChild<QScrollArea *>()->verticalScrollBar();
    QTRY_VERIFY(bar->maximum() > 0);
    edit(*form, "name")->setFocus();
    const auto lists = form->findChildren<QComboBox *>();
    QVERIFY(!lists.isEmpty());
    for (QComboBox *each : lists) {
        const int before = each->currentIndex();
        bar->setValue(0);
        turnWheel(each);
        QCOMPARE(each->currentIndex(), before);
        QVERIFY2(bar->value() > 0 || !each->isVisible(), qPrintable(each->objectName()));
        QVERIFY2(!each->hasFocus(), qPrintable(each->objectName()));
    }
    const auto numbers = form->findChildren<QAbstractSpinBox *>();
    QVERIFY(numbers.isEmpty()); // which would turn below the wheel, too
}

void TestEveryForm::wheelChangesTheListInUse()
{
    const auto form = open();
    RUN(show(*form));
    QApplication::setActiveWindow(form.get());
    QVERIFY(QTest::qWaitForWindowActive(form.get()));
    const auto lists = form->findChildren<QComboBox *>();
    for (QComboBox *each : lists) {
        if (each->isVisible() && each->isEnabled() && each->count() > 1) {
            each->setCurrentIndex(0);
            each->setFocus();
            turnWheel(each);
            QCOMPARE(each->currentIndex(), 1);
        }
    }
}

void TestEveryForm::timesTellTheirUnit()
{
    const QStringList times{"collectionInterval", "communicationGap", "communicationTimeout",
                            "connectionTimeout",  "keepAlive",        "rtuCommunicationTimeout"};
    const auto form = open();
    const auto edits = form->findChildren<QLineEdit *>();
    for (const QLineEdit *each : edits) {
        const bool isTime = times.contains(each->objectName());
        QCOMPARE(each->toolTip() == "In milliseconds (ms)", isTime);
        const auto *mark = each->findChild<UnitMark *>();
        QCOMPARE(mark ? mark->unit() : QString(), isTime ? QString("ms") : QString());
        QVERIFY(!mark || each->textMargins().right() >= mark->width()); // no number below it
    }
    const bool hasTimes = row().kind == Kind::Standard || row().kind == Kind::Plc;
    QCOMPARE(edit(*form, "collectionInterval") != nullptr, hasTimes);
}

void TestEveryForm::fieldsThatOnlyShowLookSo()
{
    const auto form = open();
    RUN(show(*form));
    const auto edits = form->findChildren<QLineEdit *>();
    for (const QLineEdit *edit : edits) {
        const bool isOpen = edit->isEnabled() && !edit->isReadOnly();
        QVERIFY2(looksReadOnly(edit) != isOpen, qPrintable(edit->objectName()));
    }
}

void TestEveryForm::passwordsAreShownToWhoHoldsTheirEye()
{
    const auto form = open();
    RUN(show(*form));
    const auto edits = form->findChildren<QLineEdit *>();
    for (QLineEdit *each : edits) {
        if (each->echoMode() == QLineEdit::Password) {
            each->setText("1a2B");
            const auto *eye = each->findChild<QToolButton *>();
            QVERIFY2(eye, qPrintable(each->objectName()));
            QCOMPARE(eye->text(), "Show the password while held (F8)");
            QTest::keyPress(each, Qt::Key_F8);
            QCOMPARE(each->displayText(), "1a2B");
            form->replaceItem(m_item);
            QCOMPARE(each->echoMode(), QLineEdit::Password);
        }
    }
}

// Texts, numbers and lists, whichever a role is to hold.
void TestEveryForm::rolesOfTheWrongTypeDoNoHarm()
{
    const RowList rows{{}, {"1"}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}};
    const GroupMap groups{{"a", {}}, {"b", rows}};
    const QVariantList values{QVariantList{1, "x"}, 42, "no rows", QVariant::fromValue(rows),
                              QVariant::fromValue(groups)};
    for (const QVariant &value : values) {
        for (int role : rolesOfTheKind()) {
            m_item->setData(value, role);
        }
        const auto form = open();
        RUN(show(*form));
        form->replaceItem(m_item);
        form->saveChanges();
    }
    QCOMPARE(m_workspace->messages.size(), values.size());
}

void TestEveryForm::writesItsLifeToTheLog()
{
    QStandardItem *south = addItem("south");
    const LogTail log{QString()};
    {
        const auto form = open();
        form->replaceItem(south);
        form->saveChanges();
    }
    const QString name = QString::fromLatin1(row().className);
    QStringList lines{name + ": new-nuilt", name + ": replace",
                      QString::fromLatin1(row().savedAs ? row().savedAs : row().className) + ": save",
                      name + ": destroyed"};
    if (row().logsFilling) {
        lines.insert(1, name + ": loadParameters");
        lines.insert(0, name + ": loadParameters");
    }
    QCOMPARE(log.events(), lines);
}

QTEST_MAIN(TestEveryForm)
#include "tst_everyform.moc"
