#include "plcformtest.h"

#include <QStandardItemModel>

// Which groups the PLC form shows, and what opening and saving make of those that it hides.
class TestPLCEditGroups : public QObject
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
    void mc3eOpensWithAnEmptyPort();
    void modbusOpensThoughNoOneCanPickIt();
    void deltaAloneBeginsWithoutAddressZero();
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
            : S(input.kind) == S("codes")        ? S("controllogix")
            : S(input.kind) == S("check")        ? S("false")
            : S(input.kind) == S("port")         ? S(plcKinds.at(kind).port)
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
            S(input.kind) == S("check") ? QVariant(S(input.other) == S("true")) : QVariant(S(input.other));
        plc.item->setData(value, input.role);
        expected.value(input, input.other);
    }
    plc.item->setData(S("other-model"), plcOmronEipModelRole);
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
    const QStringList groups = words(plcKinds.at(kind).groups) + QStringList(S("parameters"));
    PlcUnderTest plc(plcKinds.at(kind));
    for (const PlcInput &input : plcInputs) {
        plc.item->setData(S("old"), input.role);
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
    QCOMPARE(plc.item->text(), S("press 1"));
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
    QCOMPARE(plc.item->data(plcIpRole).toString(), S("192.168.1.60"));
    QCOMPARE(plc.item->data(plcPortRole).toString(), S("102"));
    QCOMPARE(plc.item->data(plcKeepAliveRole).toString(), S("60000"));
    QCOMPARE(plc.item->data(plcMc1eBinaryRole), QVariant(true));
}

void TestPLCEditGroups::newS7ShowsItsModels()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.openAndShow();
    QCOMPARE(plc.models()->count(), 6);
    QCOMPARE(plc.models()->currentText(), S("S200"));
    QCOMPARE(plc.shownGroups(), words("network s7Model s7Tsap"));
    QCOMPARE(plc.input<QLineEdit>("s7Tsap", "localTSAP")->text(), S("4D57"));
    QCOMPARE(plc.input<QLineEdit>("s7Tsap", "destTSA")->text(), S("4D57"));
    plc.models()->setCurrentText(S("S1200"));
    QCOMPARE(plc.shownGroups(), words("network s7Model s7Rack"));
    QCOMPARE(plc.input<QLineEdit>("s7Rack", "connectionType")->text(), S("1"));
    QCOMPARE(plc.input<QLineEdit>("s7Rack", "rack")->text(), S("0"));
    QCOMPARE(plc.input<QLineEdit>("s7Rack", "Slot")->text(), S("0"));
    plc.models()->setCurrentText(S("S200Smart"));
    QCOMPARE(plc.shownGroups(), words("network s7Model"));
    plc.models()->setCurrentText(S("S200"));
    QCOMPARE(plc.shownGroups(), words("network s7Model s7Tsap"));
}

void TestPLCEditGroups::modelListFollowsTheProtocol()
{
    PlcUnderTest plc("Siemens", "S7", "S300");
    plc.openAndShow();
    plc.protocols()->setCurrentText(S("PPI"));
    QCOMPARE(plc.models()->count(), 1);
    QCOMPARE(plc.models()->currentText(), S("Empty"));
    QCOMPARE(plc.shownGroups(), words("serial ppi"));
    plc.protocols()->setCurrentText(S("S7"));
    QCOMPARE(plc.models()->currentText(), S("S300"));
    QCOMPARE(plc.shownGroups(), words("network s7Model s7Rack"));
    // However often the list was built, a model shows its settings.
    plc.models()->setCurrentText(S("S200"));
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
    plc.item->setData(S("1502"), plcPortRole);
    plc.openAndShow();
    plc.protocols()->setCurrentText(S("Modbus RTU"));
    QCOMPARE(plc.item->data(plcPortRole).toString(), S("1502"));
    QCOMPARE(plc.input<QLineEdit>("network", "port")->text(), S("1502"));
    QVERIFY(plc.box("network")->isHidden());
    plc.form->saveChanges();
    QVERIFY(!plc.item->data(plcPortRole).isValid());
    plc.open();
    QCOMPARE(plc.item->data(plcPortRole).toString(), S("502"));
}

void TestPLCEditGroups::portRuleLooksAtEmptyPortsOnly()
{
    PlcUnderTest plc("Mitsubishi", "MC-1E");
    plc.open();
    plc.protocols()->setCurrentText(S("EtherNet/IP"));
    QCOMPARE(plc.item->data(plcPortRole), QVariant(QString()));
    QCOMPARE(plc.input<QLineEdit>("network", "port")->text(), QString());
    const auto apply = [&](const char *protocol) {
        QVERIFY(
            QMetaObject::invokeMethod(plc.form.get(), "updateProtocolOptions", Q_ARG(QString, S(protocol))));
    };
    apply("Fins");
    QCOMPARE(plc.item->data(plcPortRole).toString(), S("9600"));
    apply("Ads");
    QCOMPARE(plc.item->data(plcPortRole).toString(), S("9600"));
}

void TestPLCEditGroups::mc3eOpensWithAnEmptyPort()
{
    PlcUnderTest mc3e("Mitsubishi", "MC-3E");
    mc3e.open();
    QCOMPARE(mc3e.input<QLineEdit>("network", "port")->text(), QString());
    QCOMPARE(mc3e.item->data(plcPortRole), QVariant(QString()));
    PlcUnderTest mc3c("Mitsubishi", "MC-3C");
    mc3c.open();
    QCOMPARE(mc3c.item->data(plcPortRole).toString(), S("102"));
}

void TestPLCEditGroups::modbusOpensThoughNoOneCanPickIt()
{
    PlcUnderTest plc("Modbus", "Modbus RTU");
    plc.openAndShow();
    QCOMPARE(plc.protocols()->currentText(), S("Modbus RTU"));
    const auto *series = plc.input<QComboBox>("modbus", "series");
    QVERIFY(!series->isEnabled());
    QCOMPARE(series->currentText(), S("standard"));
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcModbusSeriesRole).toString(), S("standard"));
}

void TestPLCEditGroups::deltaAloneBeginsWithoutAddressZero()
{
    PlcUnderTest plc("Delta", "Modbus TCP");
    plc.open();
    for (const char *group : {"inovance", "xinje", "modbus", "delta"}) {
        QCOMPARE(plc.input<QCheckBox>(group, "startAddress0")->isChecked(), S(group) != S("delta"));
    }
    QVERIFY(!plc.item->data(plcDeltaStartAddress0Role).isValid());
}

void TestPLCEditGroups::unknownManufacturerShowsNothing()
{
    PlcUnderTest plc("Panasonic", "S7");
    plc.openAndShow();
    QCOMPARE(plc.protocols()->count(), 1);
    QCOMPARE(plc.protocols()->currentText(), S("Empty"));
    QCOMPARE(plc.shownGroups(), QStringList());
    QCOMPARE(plc.item->data(plcPortRole).toString(), S("102"));
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
        QCOMPARE(plc.protocols()->currentText(), S("EtherNet/IP"));
        QCOMPARE(plc.shownGroups(), words("network allenBradleyEip"));
        // The port rule, too, goes by what is shown.
        QCOMPARE(plc.item->data(plcPortRole).toString(), S("44818"));
        QCOMPARE(plc.item->data(plcProtocolRole).toString(), S(protocol));
        plc.form->saveChanges();
        QCOMPARE(plc.item->data(plcProtocolRole).toString(), S("EtherNet/IP"));
    }
}

void TestPLCEditGroups::unknownListValueGivesWayToTheFirst()
{
    PlcUnderTest plc("AllenBradley", "DF1");
    plc.item->setData(S("COM9"), plcSerialPortRole);
    plc.item->setData(S("none"), plcParityBitRole);
    plc.openAndShow();
    QCOMPARE(plc.input<QComboBox>("serial", "serialport")->currentText(), S("COM1"));
    QCOMPARE(plc.input<QComboBox>("serial", "parityBit")->currentText(), S("NONE"));
    QCOMPARE(plc.item->data(plcSerialPortRole).toString(), S("COM9"));
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcSerialPortRole).toString(), S("COM1"));

    // The stored value counts, not the shown text.
    PlcUnderTest micro("AllenBradley", "EtherNet/IP");
    micro.item->setData(S("MicroLogix系列"), plcAbModelRole);
    micro.openAndShow();
    micro.form->saveChanges();
    QCOMPARE(micro.item->data(plcAbModelRole).toString(), S("controllogix"));
}

void TestPLCEditGroups::unacceptableTextIsShownAndSaved()
{
    PlcUnderTest plc("Siemens", "S7");
    plc.item->setData(S("plc.local"), plcIpRole);
    plc.item->setData(S("70000"), plcPortRole);
    plc.item->setData(S("XYZ12"), plcS7LocalTsapRole);
    plc.openAndShow();
    QCOMPARE(plc.input<QLineEdit>("network", "ip")->text(), S("plc.local"));
    plc.form->saveChanges();
    QCOMPARE(plc.item->data(plcIpRole).toString(), S("plc.local"));
    QCOMPARE(plc.item->data(plcPortRole).toString(), S("70000"));
    QCOMPARE(plc.item->data(plcS7LocalTsapRole).toString(), S("XYZ12"));
}

// Whoever listens to the tree sees the groups change in one order, the period among them.
void TestPLCEditGroups::savingWritesRolesInOrder()
{
    QStandardItemModel model;
    PlcUnderTest plc("Panasonic", "S7");
    QStandardItem *item = plc.item.release();
    model.appendRow(item);
    for (const PlcInput &input : plcInputs) {
        item->setData(S("old"), input.role);
    }
    item->setData(S("old"), plcModelRole);
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
    form.findChild<QLineEdit *>(S("collectionInterval"))->setText(S("new"));
    form.saveChanges();
    QCOMPARE(groups.join(QLatin1Char(' ')),
             S("network s7Model serial ppi s7Rack s7Tsap parameters mitsubishiEip mc3c mc1e mc3e fxLinks "
               "fxSerial fins omronEip hostLink allenBradleyEip df1 ads inovance xinje modbus delta"));
}

QTEST_MAIN(TestPLCEditGroups)
#include "tst_plceditgroups.moc"
