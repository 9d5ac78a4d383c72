#include "logtail.h"
#include "messages.h"
#include "plcformtest.h"

#include <QSignalSpy>
#include <QStandardItemModel>
#include <QWheelEvent>

// The PLC form as a whole: saving, another PLC, its parameter table, its end.
class TestPLCEditDialog : public QObject
{
    Q_OBJECT
private slots:
    void writesItsLifeToTheLog();
    void savingTellsTheMainWindow();
    void savingWithoutAMainWindow();
    void savingKeepsTheFormOpen();
    void cancelRejectsOnly();
    void savedFlagsAreBooleans();
    void omronModelStays();
    void parametersAreLoadedAndSaved();
    void tableButtonsWork();
    void tableSlotsAreReachedByName();
    void wheelOverAListOfTheTableIsSwallowed();
    void clearDataEmptiesEverything();
    void replaceItemShowsTheOther_data();
    void replaceItemShowsTheOther();
    void replaceItemWritesDefaultsOfWhatShowsOnly();
    void replaceItemLeavesHiddenGroupsAlone();
    void replaceItemFallsBackToFirstEntries();
    void replaceItemOfAnUnknownManufacturer();
    void replaceItemLeavesTheOmronModelAlone();
    void saveAfterReplaceWritesTheOther();
    void saveWithoutItsNodeDoesNothing();
    void rolesOfTheWrongTypeDoNoHarm();
};

namespace {

const RowList storedRows{
    {S("DB1.0"), S("speed"), S("float"), S("1"), S("rw"), S("Change amplitude"), S("0.5"), S("X*2"),
     S("X/2")},
    {S("DB1.4"), S("label"), S("string"), S("12"), S("r"), S("Timed"), S(), S(), S()},
};

} // namespace

void TestPLCEditDialog::writesItsLifeToTheLog()
{
    const LogTail log(S("PLCEditDialog"));
    {
        PlcUnderTest plc("Siemens", "S7");
        plc.open();
        plc.form->saveChanges();
        plc.form->replaceItem(plc.item.get());
    }
    QStringList events;
    for (const char *event :
         {"loadParameters", "new-nuilt", "save", "loadParameters", "replace", "destroyed"}) {
        events.append(S("PLCEditDialog: ") + S(event));
    }
    QCOMPARE(log.events(), events);
}

void TestPLCEditDialog::savingTellsTheMainWindow()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    plc.press("saveButton");
    QCOMPARE(plc.workspace.messages, QStringList(S("The PLC 'press 1' is saved successfully.")));
}

void TestPLCEditDialog::savingWithoutAMainWindow()
{
    PlcUnderTest plc("Siemens", "S7");
    PLCEditDialog form(plc.item.get(), nullptr);
    form.show();
    form.saveChanges();
    QCOMPARE(plc.item->data(plcModelRole).toString(), S("S200"));
}

void TestPLCEditDialog::savingKeepsTheFormOpen()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    const QSignalSpy accepted(plc.form.get(), &QDialog::accepted);
    const QSignalSpy rejected(plc.form.get(), &QDialog::rejected);
    plc.press("saveButton");
    QCOMPARE(accepted.count() + rejected.count(), 0);
    QVERIFY(plc.form->isVisible());
}

void TestPLCEditDialog::cancelRejectsOnly()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    plc.input<QLineEdit>("network", "ip")->setText(S("10.0.0.1"));
    const QStringList before = ProjectDump::roles(plc.item.get());
    const QSignalSpy rejected(plc.form.get(), &QDialog::rejected);
    plc.press("cancelButton");
    QCOMPARE(rejected.count(), 1);
    QVERIFY(plc.form->isVisible()); // its tab closes it
    QCOMPARE(plc.input<QLineEdit>("network", "ip")->text(), S("10.0.0.1"));
    QCOMPARE(ProjectDump::roles(plc.item.get()), before);
    QCOMPARE(plc.workspace.messages, QStringList());
}

void TestPLCEditDialog::savedFlagsAreBooleans()
{
    PlcUnderTest plc("Mitsubishi", "MC-3C");
    plc.item->setData(S("true"), plcMc3cSumCheckRole);
    plc.item->setData(S("false"), plcMc3cWriteBitByWordRole);
    plc.openAndShow();
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcMc3cSumCheckRole).type(), QVariant::Bool);
    QCOMPARE(plc.item->data(plcMc3cSumCheckRole).toBool(), true);
    QCOMPARE(plc.item->data(plcMc3cWriteBitByWordRole).type(), QVariant::Bool);
    QCOMPARE(plc.item->data(plcMc3cWriteBitByWordRole).toBool(), false);
}

void TestPLCEditDialog::omronModelStays()
{
    PlcUnderTest plc("Omron", "EtherNet/IP");
    plc.openAndShow();
    QCOMPARE(plc.item->data(plcOmronEipModelRole).toString(), S("omron-njnx"));
    plc.item->setData(S("omron-cs"), plcOmronEipModelRole);
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcOmronEipModelRole).toString(), S("omron-cs"));
    plc.protocols()->setCurrentText(S("Fins"));
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcOmronEipModelRole).toString(), S("omron-cs"));
}

void TestPLCEditDialog::parametersAreLoadedAndSaved()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.item->setData(QVariant::fromValue(storedRows), plcParametersRole);
    plc.openAndShow();
    QCOMPARE(plc.table()->rowCount(), 2);
    plc.table()->item(0, 1)->setText(S("rpm"));
    plc.press("addButton");
    plc.form->saveChanges();
    RowList expected = storedRows;
    expected[0][1] = S("rpm");
    expected.append(QVariantList{S(), S(), S("bool"), S("1"), S("r"), S("Timed"), S(), S(), S()});
    QCOMPARE(ProjectDump::valueText(plc.item->data(plcParametersRole)),
             ProjectDump::valueText(QVariant::fromValue(expected)));
    QCOMPARE(plc.item->data(plcParametersRole).typeName(), "QList<QVariantList>");
}

void TestPLCEditDialog::tableButtonsWork()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    const LogTail log(S("PLCEditDialog"));
    plc.press("addButton");
    plc.press("addButton");
    QCOMPARE(plc.table()->rowCount(), 2);
    plc.table()->setCurrentCell(0, 0);
    qobject_cast<QPushButton *>(plc.table()->cellWidget(1, 9))->click();
    QCOMPARE(plc.table()->rowCount(), 1);
    plc.press("removeAllButton");
    QCOMPARE(plc.table()->rowCount(), 0);
    QCOMPARE(log.events(),
             QStringList({S("PLCEditDialog: addParameter"), S("PLCEditDialog: addParameter"),
                          S("PLCEditDialog: removeParameter"), S("PLCEditDialog: removeAllParameters")}));
}

void TestPLCEditDialog::tableSlotsAreReachedByName()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.item->setData(QVariant::fromValue(storedRows), plcParametersRole);
    plc.openAndShow();
    PLCEditDialog *form = plc.form.get();
    for (const char *slot :
         {"validateLength", "validateName", "validateAddr", "validateChange", "validateFormula"}) {
        QVERIFY2(QMetaObject::invokeMethod(form, slot, Q_ARG(int, 0), Q_ARG(int, 0)), slot);
    }
    for (const char *slot : {"validateNameOnChange", "validateAddrOnChange", "validateChangeOnChange",
                             "validateFormulaOnChange"}) {
        QVERIFY2(QMetaObject::invokeMethod(form, slot, Q_ARG(int, 0), Q_ARG(int, 0), Q_ARG(QString, S("x"))),
                 slot);
    }
    QVERIFY(
        QMetaObject::invokeMethod(form, "updateloadChangeAmplitudeCell", Q_ARG(int, 0), Q_ARG(bool, false)));
    QVERIFY(QMetaObject::invokeMethod(form, "updateChangeAmplitudeCell", Q_ARG(int, 0), Q_ARG(bool, false)));
    const auto *amplitude = qobject_cast<QLineEdit *>(plc.table()->cellWidget(0, 6));
    QVERIFY(!amplitude->isEnabled());
    QCOMPARE(amplitude->text(), QString());
    QVERIFY(QMetaObject::invokeMethod(form, "saveChanges"));
    QVERIFY(QMetaObject::invokeMethod(form, "clearData"));
}

void TestPLCEditDialog::wheelOverAListOfTheTableIsSwallowed()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    plc.press("addButton");
    auto *type = qobject_cast<QComboBox *>(plc.table()->cellWidget(0, 2));
    QWheelEvent wheel(QPointF(5, 5), type->mapToGlobal(QPoint(5, 5)), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(type, &wheel);
    QCOMPARE(type->currentText(), S("bool"));
}

void TestPLCEditDialog::clearDataEmptiesEverything()
{
    PlcUnderTest plc("Siemens", "PPI");
    plc.item->setData(QVariant::fromValue(storedRows), plcParametersRole);
    for (const PlcInput &input : plcInputs) {
        plc.item->setData(S(input.other), input.role);
    }
    plc.openAndShow();
    const QStringList before = ProjectDump::roles(plc.item.get());
    plc.form->clearData();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete); // the cells' editors
    for (const QLineEdit *edit : plc.form->findChildren<QLineEdit *>()) {
        QVERIFY2(edit->text().isEmpty(), qPrintable(edit->objectName()));
    }
    for (const QComboBox *list : plc.form->findChildren<QComboBox *>()) {
        QVERIFY2(list->currentIndex() == 0, qPrintable(list->objectName()));
    }
    for (const QCheckBox *check : plc.form->findChildren<QCheckBox *>()) {
        QVERIFY2(!check->isChecked(), qPrintable(check->objectName()));
    }
    QCOMPARE(plc.table()->rowCount(), 0);
    QCOMPARE(ProjectDump::roles(plc.item.get()), before);
}

void TestPLCEditDialog::replaceItemShowsTheOther_data()
{
    addKindRows();
}

// From each kind to the next one in the table.
void TestPLCEditDialog::replaceItemShowsTheOther()
{
    QFETCH(int, kind);
    const PlcKind &next = plcKinds.at((kind + 1) % plcKinds.size());
    PlcUnderTest plc(plcKinds.at(kind));
    plc.openAndShow();
    const auto other = PlcUnderTest::make(next.manufacturer, next.protocol, next.model);
    other->setText(S("press 2"));
    other->setData(QVariant::fromValue(storedRows), plcParametersRole);
    const QStringList groups = words(next.groups);
    for (const PlcInput &input : plcInputs) {
        other->setData(S(input.other), input.role);
    }
    plc.form->replaceItem(other.get());
    QCOMPARE(plc.input<QLineEdit>("attributes", "name")->text(), S("press 2"));
    QCOMPARE(plc.input<QLineEdit>("attributes", "manufacturer")->text(), S(next.manufacturer));
    QCOMPARE(plc.protocols()->currentText(), S(next.protocol));
    QCOMPARE(plc.shownGroups(), groups);
    if (next.model) {
        QCOMPARE(plc.models()->currentText(), S(next.model));
    }
    for (const PlcInput &input : plcInputs) {
        if (groups.contains(S(input.group)) || S(input.group) == S("parameters")) {
            QCOMPARE(plc.shown(input), S(input.other));
        }
    }
    QCOMPARE(plc.table()->rowCount(), 2);
}

void TestPLCEditDialog::replaceItemWritesDefaultsOfWhatShowsOnly()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    const PlcKind kind{"Mitsubishi", "MC-3C", nullptr, "serial mc3c", "102"};
    const auto other = PlcUnderTest::make(kind.manufacturer, kind.protocol);
    plc.form->replaceItem(other.get());
    RoleLines expected;
    expected.text(plcManufacturerRole, S(kind.manufacturer));
    expected.text(plcProtocolRole, S(kind.protocol));
    expected.text(plcPortRole, S(kind.port));
    for (const PlcInput &input : plcInputs) {
        const bool written =
            words("network serial mc3c parameters").contains(S(input.group)) && input.initially;
        if (written) {
            expected.value(input, input.initially);
        }
    }
    QCOMPARE(ProjectDump::roles(other.get()), expected.lines());
}

// In a tab behind another no protocol group is visible.
void TestPLCEditDialog::replaceItemLeavesHiddenGroupsAlone()
{
    PlcUnderTest plc("Siemens", "PPI");
    plc.item->setData(S("7"), plcPpiStationNumRole);
    plc.open();
    const auto other = PlcUnderTest::make("Siemens", "PPI");
    other->setData(S("9"), plcPpiStationNumRole);
    other->setData(S("10.0.0.9"), plcIpRole);
    other->setData(S("COM2"), plcSerialPortRole);
    other->setData(S("500"), plcCollectionIntervalRole);
    plc.form->replaceItem(other.get());
    QCOMPARE(plc.input<QLineEdit>("ppi", "stationNum")->text(), S("7"));
    QCOMPARE(plc.input<QLineEdit>("network", "ip")->text(), S("10.0.0.9"));
    QCOMPARE(plc.input<QComboBox>("serial", "serialport")->currentText(), S("COM2"));
    QCOMPARE(plc.input<QLineEdit>("parameters", "collectionInterval")->text(), S("500"));
    QVERIFY(!other->data(plcMc1eBinaryRole).isValid());
}

void TestPLCEditDialog::replaceItemFallsBackToFirstEntries()
{
    PlcUnderTest plc("Omron", "HostLink");
    for (const PlcInput &input : plcInputs) {
        plc.item->setData(S(input.other), input.role);
    }
    plc.openAndShow();
    const auto other = PlcUnderTest::make("Omron", "HostLink");
    other->setData(S("COM77"), plcSerialPortRole);
    plc.form->replaceItem(other.get());
    for (const PlcInput &input : plcInputs) {
        if (S(input.group) == S("serial") && input.entries) {
            // A port that is no entry leaves the one of the PLC before.
            const bool unknown = input.role == plcSerialPortRole;
            QCOMPARE(plc.shown(input), unknown ? S(input.other) : words(input.entries, '|').first());
        }
    }
    QVERIFY(!plc.input<QCheckBox>("serial", "rtsEnable")->isChecked());
    QCOMPARE(plc.input<QComboBox>("hostLink", "byteOrder")->currentText(), S("ABCD"));
}

void TestPLCEditDialog::replaceItemOfAnUnknownManufacturer()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    const auto other = PlcUnderTest::make("Panasonic", "S7");
    plc.form->replaceItem(other.get());
    QCOMPARE(plc.protocols()->count(), 1);
    QCOMPARE(plc.protocols()->currentText(), S("Empty"));
    QCOMPARE(plc.shownGroups(), QStringList());
}

void TestPLCEditDialog::replaceItemLeavesTheOmronModelAlone()
{
    PlcUnderTest plc("Omron", "EtherNet/IP");
    plc.openAndShow();
    const auto other = PlcUnderTest::make("Omron", "EtherNet/IP");
    plc.form->replaceItem(other.get());
    plc.form->saveChanges();
    QVERIFY(!other->data(plcOmronEipModelRole).isValid());
}

void TestPLCEditDialog::saveAfterReplaceWritesTheOther()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    const QStringList before = ProjectDump::roles(plc.item.get());
    const auto other = PlcUnderTest::make("Beckhoff", "Ads");
    other->setText(S("drive"));
    plc.form->replaceItem(other.get());
    plc.form->saveChanges();
    QCOMPARE(plc.workspace.messages, QStringList(S("The PLC 'drive' is saved successfully.")));
    QCOMPARE(other->data(plcPortRole).toString(), S("48898"));
    QCOMPARE(other->data(plcAdsTagCacheRole), QVariant(false));
    QCOMPARE(ProjectDump::roles(plc.item.get()), before);
}

void TestPLCEditDialog::saveWithoutItsNodeDoesNothing()
{
    QStandardItemModel model;
    WorkspaceFake workspace;
    model.appendRow(PlcUnderTest::make("Siemens", "S7").release());
    PLCEditDialog form(model.item(0), &workspace);
    form.show();
    model.removeRow(0);
    form.saveChanges();
    form.onProtocolChanged(S("PPI"));
    form.updateProtocolOptions(S("PPI"));
    QCOMPARE(workspace.messages, QStringList());
}

void TestPLCEditDialog::rolesOfTheWrongTypeDoNoHarm()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.item->setData(S("no rows"), plcParametersRole);
    plc.item->setData(QVariantList{1}, plcIpRole);
    plc.item->setData(7, plcMc3cFormatRole);
    plc.open();
    QCOMPARE(plc.table()->rowCount(), 0);
    QCOMPARE(plc.input<QLineEdit>("network", "ip")->text(), S("192.168.1.60"));
}

QTEST_MAIN(TestPLCEditDialog)
#include "tst_plceditdialog.moc"
