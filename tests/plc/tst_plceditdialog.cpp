#include "logtail.h"
#include "plcformtest.h"

// The PLC form as a whole: saving, another PLC, its parameter table, its end.
class TestPLCEditDialog : public PlcFormTest
{
    Q_OBJECT
private slots:
    void omronModelStays();
    void parametersAreLoadedAndSaved();
    void tableButtonsWork();
    void tableSlotsAreReachedByName();
    void clearDataEmptiesEverything();
    void replaceItemShowsTheOther_data();
    void replaceItemShowsTheOther();
    void replaceItemWritesDefaultsOfWhatShowsOnly();
    void replaceItemLeavesHiddenGroupsAlone();
    void replaceItemFallsBackToFirstEntries();
    void replaceItemOfAnUnknownManufacturer();
    void replaceItemLeavesTheOmronModelAlone();
    void saveAfterReplaceWritesTheOther();
    void slotsOutliveTheNode();
    void roleOfTheWrongTypeCountsAsEmpty();
};

namespace {

const RowList storedRows{
    {S("DB1.0"), S("speed"), S("float"), S("1"), S("rw"), S("Change amplitude"), S("0.5"), S("X*2"),
     S("X/2")},
    {S("DB1.4"), S("label"), S("string"), S("12"), S("r"), S("Timed"), S(), S(), S()},
};

} // namespace

void TestPLCEditDialog::omronModelStays()
{
    PlcUnderTest plc("Omron", "EtherNet/IP");
    plc.openAndShow();
    QCOMPARE(plc.item->data(plcOmronEipModelRole).toString(), "omron-njnx");
    plc.item->setData("omron-cs", plcOmronEipModelRole);
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcOmronEipModelRole).toString(), "omron-cs");
    plc.protocols()->setCurrentText("Fins");
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcOmronEipModelRole).toString(), "omron-cs");
}

void TestPLCEditDialog::parametersAreLoadedAndSaved()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.item->setData(QVariant::fromValue(storedRows), plcParametersRole);
    plc.openAndShow();
    QCOMPARE(plc.table()->rowCount(), 2);
    plc.table()->item(0, 1)->setText("rpm");
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
    const LogTail log("PLCEditDialog");
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
        QVERIFY2(QMetaObject::invokeMethod(form, slot, Q_ARG(int, 0), Q_ARG(int, 0), Q_ARG(QString, "x")),
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
    other->setText("press 2");
    other->setData(QVariant::fromValue(storedRows), plcParametersRole);
    const QStringList groups = words(next.groups);
    for (const PlcInput &input : plcInputs) {
        other->setData(S(input.other), input.role);
    }
    plc.form->replaceItem(other.get());
    QCOMPARE(plc.input<QLineEdit>("attributes", "name")->text(), "press 2");
    QCOMPARE(plc.input<QLineEdit>("attributes", "manufacturer")->text(), S(next.manufacturer));
    QCOMPARE(plc.protocols()->currentText(), S(next.protocol));
    QCOMPARE(plc.shownGroups(), groups);
    if (next.model) {
        QCOMPARE(plc.models()->currentText(), S(next.model));
    }
    for (const PlcInput &input : plcInputs) {
        if (groups.contains(S(input.group)) || S(input.group) == "parameters") {
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
    plc.item->setData("7", plcPpiStationNumRole);
    plc.open();
    const auto other = PlcUnderTest::make("Siemens", "PPI");
    other->setData("9", plcPpiStationNumRole);
    other->setData("10.0.0.9", plcIpRole);
    other->setData("COM2", plcSerialPortRole);
    other->setData("500", plcCollectionIntervalRole);
    plc.form->replaceItem(other.get());
    QCOMPARE(plc.input<QLineEdit>("ppi", "stationNum")->text(), "7");
    QCOMPARE(plc.input<QLineEdit>("network", "ip")->text(), "10.0.0.9");
    QCOMPARE(plc.input<QComboBox>("serial", "serialport")->currentText(), "COM2");
    QCOMPARE(plc.input<QLineEdit>("parameters", "collectionInterval")->text(), "500");
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
    other->setData("COM77", plcSerialPortRole);
    plc.form->replaceItem(other.get());
    for (const PlcInput &input : plcInputs) {
        if (S(input.group) == "serial" && input.entries) {
            // A port that is no entry leaves the one of the PLC before.
            const bool unknown = input.role == plcSerialPortRole;
            QCOMPARE(plc.shown(input), unknown ? S(input.other) : words(input.entries, '|').first());
        }
    }
    QVERIFY(!plc.input<QCheckBox>("serial", "rtsEnable")->isChecked());
    QCOMPARE(plc.input<QComboBox>("hostLink", "byteOrder")->currentText(), "ABCD");
}

void TestPLCEditDialog::replaceItemOfAnUnknownManufacturer()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    const auto other = PlcUnderTest::make("Panasonic", "S7");
    plc.form->replaceItem(other.get());
    QCOMPARE(plc.protocols()->count(), 1);
    QCOMPARE(plc.protocols()->currentText(), "Empty");
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
    other->setText("drive");
    plc.form->replaceItem(other.get());
    plc.form->saveChanges();
    QCOMPARE(plc.workspace.messages, QStringList("The PLC 'drive' is saved successfully."));
    QCOMPARE(other->data(plcPortRole).toString(), "48898");
    QCOMPARE(other->data(plcAdsTagCacheRole), QVariant(false));
    QCOMPARE(ProjectDump::roles(plc.item.get()), before);
}

void TestPLCEditDialog::slotsOutliveTheNode()
{
    m_item->setData("Siemens", plcManufacturerRole);
    PLCEditDialog form(m_item, m_workspace);
    form.show();
    removeItems();
    form.onProtocolChanged("PPI");
    form.updateProtocolOptions("PPI");
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestPLCEditDialog::roleOfTheWrongTypeCountsAsEmpty()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.item->setData(QVariantList{1}, plcIpRole);
    plc.open();
    QCOMPARE(plc.input<QLineEdit>("network", "ip")->text(), "192.168.1.60");
}

QTEST_MAIN(TestPLCEditDialog)
#include "tst_plceditdialog.moc"
