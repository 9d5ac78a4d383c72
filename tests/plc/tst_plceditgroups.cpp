#include "plcformtest.h"

#include <QStandardItemModel>

// Which groups the PLC form shows, and what opening and saving make of those that it hides.
class TestPLCEditGroups : public PlcFormTest
{
    Q_OBJECT
private slots:
    void kindShowsItsGroups_data();
    void kindShowsItsGroups();
    void protocolShowsItsGroups_data();
    void protocolShowsItsGroups();
    void openingWritesDefaultsIntoEveryGroup_data();
    void openingWritesDefaultsIntoEveryGroup();
    void openingKeepsWhatIsThere();
    void savingWritesWhatShowsAndErasesTheRest_data();
    void savingWritesWhatShowsAndErasesTheRest();
    void savingWhileNothingShowsErasesAll();
    void savedSerialPlcOpensWithDefaultsAgain();
    void newS7ShowsItsModels();
    void modelListFollowsTheProtocol();
    void storedModelIsSelected_data();
    void storedModelIsSelected();
    void modelsOfAnotherProtocolShowNothing();
    void changedProtocolKeepsThePort();
    void portRuleLooksAtEmptyPortsOnly();
    void modbusOpensThoughNoOneCanPickIt();
    void unknownManufacturerShowsNothing();
    void unknownProtocolGivesWayToTheFirst();
    void unknownListValueGivesWayToTheFirst();
    void unacceptableTextIsShownAndSaved();
    void savingWritesRolesInOrder();
};

void TestPLCEditGroups::kindShowsItsGroups_data()
{
    addKindRows();
}

void TestPLCEditGroups::kindShowsItsGroups()
{
    QFETCH(int, kind);
    PlcUnderTest plc(plcKinds.at(kind));
    plc.open();
    QCOMPARE(plc.shownGroups(), words(plcKinds.at(kind).groups));
    QVERIFY(!plc.box("attributes")->isHidden());
    QVERIFY(!plc.box("parameters")->isHidden());
}

void TestPLCEditGroups::protocolShowsItsGroups_data()
{
    QTest::addColumn<QString>("manufacturer");
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("groups");
    const auto row = [](const char *manufacturer, const char *protocol, const char *groups) {
        QTest::addRow("%s %s", manufacturer, protocol) << S(manufacturer) << S(protocol) << S(groups);
    };
    for (const PlcKind &kind : plcKinds) {
        if (!kind.model) {
            row(kind.manufacturer, kind.protocol, kind.groups);
        }
    }
    // No list offers these.
    row("Siemens", "PPI On TCP", "network ppi");
    row("Omron", "HostLink On TCP", "serial hostLink");
    row("AllenBradley", "MicroCIP", "network allenBradleyEip");
    row("Inovance", "Modbus RTU On TCP", "network inovance");
    row("XinJE", "Modbus RTU On TCP", "network xinje");
    row("Modbus", "Modbus RTU On TCP", "");
    row("Delta", "Modbus RTU On TCP", "");
    row("Omron", "S7", "");
    row("Siemens", "Fins", "");
    row("Beckhoff", "ads", "");
    row("Beckhoff", "", "");
    row("Panasonic", "Ads", "");
}

void TestPLCEditGroups::protocolShowsItsGroups()
{
    QFETCH(QString, manufacturer);
    QFETCH(QString, protocol);
    QFETCH(QString, groups);
    PlcUnderTest plc(qPrintable(manufacturer), "none");
    plc.open();
    plc.protocols()->clear(); // so that no S7 is the current one
    QVERIFY(QMetaObject::invokeMethod(plc.form.get(), "onProtocolChanged", Q_ARG(QString, protocol)));
    QCOMPARE(plc.shownGroups().join(QLatin1Char(' ')), groups);
}

void TestPLCEditGroups::openingWritesDefaultsIntoEveryGroup_data()
{
    addKindRows();
}

void TestPLCEditGroups::openingWritesDefaultsIntoEveryGroup()
{
    QFETCH(int, kind);
    PlcUnderTest plc(plcKinds.at(kind));
    plc.open();
    QCOMPARE(ProjectDump::roles(plc.item.get()), openedRoles(plcKinds.at(kind)));
    for (const PlcInput &input : plcInputs) {
        const QString entry = words(input.entries, '|').value(0);
        const QString expected = input.initially ? S(input.initially)
            : S(input.kind) == "codes"           ? S("controllogix")
            : S(input.kind) == "check"           ? S("false")
            : S(input.kind) == "port"            ? S(plcKinds.at(kind).port)
                                                 : entry;
        QCOMPARE(plc.shown(input), expected);
    }
}

void TestPLCEditGroups::openingKeepsWhatIsThere()
{
    PlcUnderTest plc("Omron", "Fins");
    RoleLines expected = attributesOf({"Omron", "Fins", nullptr, "", ""});
    for (const PlcInput &input : plcInputs) {
        // A flag that is off is there, too.
        const QVariant value =
            S(input.kind) == "check" ? QVariant(S(input.other) == "true") : QVariant(S(input.other));
        plc.item->setData(value, input.role);
        expected.value(input, input.other);
    }
    plc.item->setData("other-model", plcOmronEipModelRole);
    expected.text(plcOmronEipModelRole, S("other-model"));
    plc.open();
    QCOMPARE(ProjectDump::roles(plc.item.get()), expected.lines());
}

void TestPLCEditGroups::savingWritesWhatShowsAndErasesTheRest_data()
{
    addKindRows();
}

void TestPLCEditGroups::savingWritesWhatShowsAndErasesTheRest()
{
    QFETCH(int, kind);
    const QStringList groups = words(plcKinds.at(kind).groups) + QStringList("parameters");
    PlcUnderTest plc(plcKinds.at(kind));
    for (const PlcInput &input : plcInputs) {
        plc.item->setData("old", input.role);
    }
    plc.openAndShow();
    RoleLines expected = attributesOf(plcKinds.at(kind));
    for (const PlcInput &input : plcInputs) {
        if (groups.contains(S(input.group))) {
            plc.enter(input);
            expected.value(input, input.other);
        }
    }
    expected.line(plcParametersRole, S("rows "));
    plc.press("saveButton");
    QCOMPARE(ProjectDump::roles(plc.item.get()), expected.lines());
    QCOMPARE(plc.item->text(), "press 1");
}

void TestPLCEditGroups::savingWhileNothingShowsErasesAll()
{
    PlcUnderTest plc("Siemens", "PPI");
    plc.open();
    plc.form->saveChanges();
    RoleLines expected = attributesOf({"Siemens", "PPI", nullptr, "", ""});
    expected.text(plcCollectionIntervalRole, S("2000"));
    expected.line(plcParametersRole, S("rows "));
    QCOMPARE(ProjectDump::roles(plc.item.get()), expected.lines());
}

void TestPLCEditGroups::savedSerialPlcOpensWithDefaultsAgain()
{
    PlcUnderTest plc("Omron", "HostLink");
    plc.openAndShow();
    plc.form->saveChanges();
    QVERIFY(!plc.item->data(plcIpRole).isValid());
    QVERIFY(!plc.item->data(plcPortRole).isValid());
    QVERIFY(!plc.item->data(plcMc1eBinaryRole).isValid());
    plc.open();
    QCOMPARE(plc.item->data(plcIpRole).toString(), "192.168.1.60");
    QCOMPARE(plc.item->data(plcPortRole).toString(), "102");
    QCOMPARE(plc.item->data(plcKeepAliveRole).toString(), "60000");
    QCOMPARE(plc.item->data(plcMc1eBinaryRole), QVariant(true));
}

void TestPLCEditGroups::newS7ShowsItsModels()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    QCOMPARE(plc.models()->count(), 6);
    QCOMPARE(plc.models()->currentText(), "S200");
    QCOMPARE(plc.shownGroups(), words("network s7Model s7Tsap"));
    QCOMPARE(plc.input<QLineEdit>("s7Tsap", "localTSAP")->text(), "4D57");
    QCOMPARE(plc.input<QLineEdit>("s7Tsap", "destTSA")->text(), "4D57");
    plc.models()->setCurrentText("S1200");
    QCOMPARE(plc.shownGroups(), words("network s7Model s7Rack"));
    QCOMPARE(plc.input<QLineEdit>("s7Rack", "connectionType")->text(), "1");
    QCOMPARE(plc.input<QLineEdit>("s7Rack", "rack")->text(), "0");
    QCOMPARE(plc.input<QLineEdit>("s7Rack", "Slot")->text(), "0");
    plc.models()->setCurrentText("S200Smart");
    QCOMPARE(plc.shownGroups(), words("network s7Model"));
    plc.models()->setCurrentText("S200");
    QCOMPARE(plc.shownGroups(), words("network s7Model s7Tsap"));
}

void TestPLCEditGroups::modelListFollowsTheProtocol()
{
    PlcUnderTest plc("Siemens", "S7", "S300");
    plc.openAndShow();
    plc.protocols()->setCurrentText("PPI");
    QCOMPARE(plc.models()->count(), 1);
    QCOMPARE(plc.models()->currentText(), "Empty");
    QCOMPARE(plc.shownGroups(), words("serial ppi"));
    plc.protocols()->setCurrentText("S7");
    QCOMPARE(plc.models()->currentText(), "S300");
    QCOMPARE(plc.shownGroups(), words("network s7Model s7Rack"));
    // However often the list was built, a model shows its settings.
    plc.models()->setCurrentText("S200");
    QCOMPARE(plc.shownGroups(), words("network s7Model s7Tsap"));
}

void TestPLCEditGroups::storedModelIsSelected_data()
{
    QTest::addColumn<QString>("shown");
    for (const char *model : {"S200", "S1200", "S300", "S400", "S1500", "S200Smart"}) {
        QTest::newRow(model) << S(model);
    }
    QTest::newRow("s1200") << S("S200");
    QTest::newRow("S7-1200") << S("S200");
    QTest::newRow("") << S("S200");
}

void TestPLCEditGroups::storedModelIsSelected()
{
    QFETCH(QString, shown);
    PlcUnderTest plc("Siemens", "S7", QTest::currentDataTag());
    plc.openAndShow();
    QCOMPARE(plc.models()->currentText(), shown);
    QCOMPARE(plc.item->data(plcModelRole).toString(), S(QTest::currentDataTag()));
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcModelRole).toString(), shown);
}

void TestPLCEditGroups::modelsOfAnotherProtocolShowNothing()
{
    PlcUnderTest plc("Siemens", "PPI");
    plc.open();
    for (const char *model : {"S1200", "S200"}) {
        QVERIFY(QMetaObject::invokeMethod(plc.form.get(), "onmodelChanged", Q_ARG(QString, S(model))));
        QCOMPARE(plc.shownGroups(), words("serial ppi"));
    }
}

void TestPLCEditGroups::changedProtocolKeepsThePort()
{
    PlcUnderTest plc("Delta", "Modbus TCP");
    plc.item->setData("1502", plcPortRole);
    plc.openAndShow();
    plc.protocols()->setCurrentText("Modbus RTU");
    QCOMPARE(plc.item->data(plcPortRole).toString(), "1502");
    QCOMPARE(plc.input<QLineEdit>("network", "port")->text(), "1502");
    QVERIFY(plc.box("network")->isHidden());
    plc.form->saveChanges();
    QVERIFY(!plc.item->data(plcPortRole).isValid());
    plc.open();
    QCOMPARE(plc.item->data(plcPortRole).toString(), "502");
}

void TestPLCEditGroups::portRuleLooksAtEmptyPortsOnly()
{
    PlcUnderTest plc("Mitsubishi", "MC-1E");
    plc.open();
    plc.protocols()->setCurrentText("EtherNet/IP");
    QCOMPARE(plc.item->data(plcPortRole), QVariant(QString()));
    QCOMPARE(plc.input<QLineEdit>("network", "port")->text(), QString());
    const auto apply = [&](const char *protocol) {
        QVERIFY(
            QMetaObject::invokeMethod(plc.form.get(), "updateProtocolOptions", Q_ARG(QString, S(protocol))));
    };
    apply("Fins");
    QCOMPARE(plc.item->data(plcPortRole).toString(), "9600");
    apply("Ads");
    QCOMPARE(plc.item->data(plcPortRole).toString(), "9600");
}

void TestPLCEditGroups::modbusOpensThoughNoOneCanPickIt()
{
    PlcUnderTest plc("Modbus", "Modbus RTU");
    plc.openAndShow();
    QCOMPARE(plc.protocols()->currentText(), "Modbus RTU");
    const auto *series = plc.input<QComboBox>("modbus", "series");
    QVERIFY(!series->isEnabled());
    QCOMPARE(series->currentText(), "standard");
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcModbusSeriesRole).toString(), "standard");
}

void TestPLCEditGroups::unknownManufacturerShowsNothing()
{
    PlcUnderTest plc("Panasonic", "S7");
    plc.openAndShow();
    QCOMPARE(plc.protocols()->count(), 1);
    QCOMPARE(plc.protocols()->currentText(), "Empty");
    QCOMPARE(plc.shownGroups(), QStringList());
    QCOMPARE(plc.item->data(plcPortRole).toString(), "102");
    plc.form->saveChanges();
    RoleLines expected = attributesOf({"Panasonic", "Empty", nullptr, "", ""});
    expected.text(plcCollectionIntervalRole, S("2000"));
    expected.line(plcParametersRole, S("rows "));
    QCOMPARE(ProjectDump::roles(plc.item.get()), expected.lines());
}

void TestPLCEditGroups::unknownProtocolGivesWayToTheFirst()
{
    for (const char *protocol : {"MicroCIP", "ethernet/ip", "S7", ""}) {
        PlcUnderTest plc("AllenBradley", protocol);
        plc.openAndShow();
        QCOMPARE(plc.protocols()->currentText(), "EtherNet/IP");
        QCOMPARE(plc.shownGroups(), words("network allenBradleyEip"));
        // The port rule, too, goes by what is shown.
        QCOMPARE(plc.item->data(plcPortRole).toString(), "44818");
        QCOMPARE(plc.item->data(plcProtocolRole).toString(), S(protocol));
        plc.form->saveChanges();
        QCOMPARE(plc.item->data(plcProtocolRole).toString(), "EtherNet/IP");
    }
}

void TestPLCEditGroups::unknownListValueGivesWayToTheFirst()
{
    PlcUnderTest plc("AllenBradley", "DF1");
    plc.item->setData("COM9", plcSerialPortRole);
    plc.item->setData("none", plcParityBitRole);
    plc.openAndShow();
    QCOMPARE(plc.input<QComboBox>("serial", "serialport")->currentText(), "COM1");
    QCOMPARE(plc.input<QComboBox>("serial", "parityBit")->currentText(), "NONE");
    QCOMPARE(plc.item->data(plcSerialPortRole).toString(), "COM9");
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcSerialPortRole).toString(), "COM1");

    // The stored value counts, not the shown text.
    PlcUnderTest micro("AllenBradley", "EtherNet/IP");
    micro.item->setData("MicroLogix系列", plcAbModelRole);
    micro.openAndShow();
    micro.form->saveChanges();
    QCOMPARE(micro.item->data(plcAbModelRole).toString(), "controllogix");
}

void TestPLCEditGroups::unacceptableTextIsShownAndSaved()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.item->setData("plc.local", plcIpRole);
    plc.item->setData("70000", plcPortRole);
    plc.item->setData("XYZ12", plcS7LocalTsapRole);
    plc.openAndShow();
    QCOMPARE(plc.input<QLineEdit>("network", "ip")->text(), "plc.local");
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcIpRole).toString(), "plc.local");
    QCOMPARE(plc.item->data(plcPortRole).toString(), "70000");
    QCOMPARE(plc.item->data(plcS7LocalTsapRole).toString(), "XYZ12");
}

// Whoever listens to the tree sees the groups change in one order, the period among them.
void TestPLCEditGroups::savingWritesRolesInOrder()
{
    QStandardItemModel model;
    PlcUnderTest plc("Panasonic", "S7");
    QStandardItem *item = plc.item.release();
    model.appendRow(item);
    for (const PlcInput &input : plcInputs) {
        item->setData("old", input.role);
    }
    item->setData("old", plcModelRole);
    PLCEditDialog form(item, nullptr);
    QStringList groups;
    connect(&model, &QStandardItemModel::dataChanged, &form,
            [&](const QModelIndex &, const QModelIndex &, const QVector<int> &roles) {
                QString group = roles.contains(plcModelRole) ? S("s7Model") : QString();
                for (const PlcInput &input : plcInputs) {
                    group = roles.contains(input.role) ? S(input.group) : group;
                }
                if (!group.isEmpty() && groups.value(groups.size() - 1) != group) {
                    groups.append(group);
                }
            });
    form.findChild<QLineEdit *>("collectionInterval")->setText("new");
    form.saveChanges();
    QCOMPARE(groups.join(QLatin1Char(' ')),
             S("network s7Model serial ppi s7Rack s7Tsap parameters mitsubishiEip mc3c mc1e mc3e fxLinks "
               "fxSerial fins omronEip hostLink allenBradleyEip df1 ads inovance xinje modbus delta"));
}

QTEST_MAIN(TestPLCEditGroups)
#include "tst_plceditgroups.moc"
