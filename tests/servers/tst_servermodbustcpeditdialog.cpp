#include "modbusformtest.h"

#include <QHeaderView>
#include <QSignalSpy>

using namespace ModbusFormTest;

// The form of the Modbus TCP slave: fields, imported points, what is saved.
class TestServerModbusTCPEditDialog : public Fixture
{
    Q_OBJECT
private slots:
    void init() { open(); }
    void cleanup() { close(); }
    void fieldsInTheirOrder();
    void openingMakesTheTypeSlave();
    void tabsAndColumns();
    void headersAreReadableInANarrowTab();
    void setupUIBuildsOnce();
    void addressLength_data();
    void addressLength();
    void addressesGrowByTheLengths();
    void addressesHeedNoEdit();
    void onlyTheAddressOfAnImportedRowIsEditable();
    void loadedRowsKeepTheirEditability();
    void pointThatIsThereIsTold_data();
    void pointThatIsThereIsTold();
    void importIsAnnounced();
    void namesStandInToolTips();
    void saveWritesTheRowsOnly();
    void replaceItemShowsTheOther();
    void populatingAgainShowsTheSameRows();
    void clearDataEmptiesTheForm();
    void closeDialogCancels();
};

void TestServerModbusTCPEditDialog::fieldsInTheirOrder()
{
    QCOMPARE(inputs(*m_form), texts({"Server Name:|name", "Type:|type", "Protocol:|protocol", "Port:|port"}));
    QCOMPARE(edit(*m_form, "name")->text(), "Map");
    QVERIFY(edit(*m_form, "name")->isReadOnly());
    QCOMPARE(list(*m_form, "protocol")->count(), 1);
    QCOMPARE(list(*m_form, "protocol")->currentText(), "ModbusTCP(Slave)");
    QCOMPARE(edit(*m_form, "port")->text(), "502");
}

void TestServerModbusTCPEditDialog::openingMakesTheTypeSlave()
{
    QStandardItem item;
    item.setData("Master", serverTypeRole);
    const ServerModbusTCPEditDialog form(&item, nullptr);
    QCOMPARE(edit(form, "type")->text(), "Master");
    QMap<int, QVariant> expected;
    expected.insert(serverTypeRole, "Slave");
    QCOMPARE(rolesOf(item), expected);
    const ServerModbusTCPEditDialog again(&item, nullptr);
    QCOMPARE(edit(again, "type")->text(), "Slave");
}

void TestServerModbusTCPEditDialog::tabsAndColumns()
{
    const auto *tabs = m_form->findChild<QTabWidget *>();
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->tabText(0), "Holding Register");
    QCOMPARE(tabs->tabText(1), "Input Register");
    for (const char *name : {"holdingRegisters", "inputRegisters"}) {
        QCOMPARE(headers(view(name)),
                 texts({"PLC Name", "Variable Name", "Data Type", "Modbus Address", "Address length"}));
        QCOMPARE(view(name)->contextMenuPolicy(), Qt::CustomContextMenu);
    }
}

void TestServerModbusTCPEditDialog::headersAreReadableInANarrowTab()
{
    m_form->resize(330, 700);
    const QTableView *map = view("holdingRegisters");
    QTRY_VERIFY(map->width() < 330);
    for (int column = 0; column < map->model()->columnCount(); ++column) {
        const QString text = map->model()->headerData(column, Qt::Horizontal).toString();
        QVERIFY(map->columnWidth(column) > map->horizontalHeader()->fontMetrics().horizontalAdvance(text));
    }
}

void TestServerModbusTCPEditDialog::setupUIBuildsOnce()
{
    QVERIFY(QMetaObject::invokeMethod(m_form, "setupUI"));
    QCOMPARE(m_form->findChildren<QTableView *>().size(), 2);
    QCOMPARE(m_form->findChild<QTabWidget *>()->count(), 2);
}

void TestServerModbusTCPEditDialog::addressLength_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("length");
    QTest::addColumn<QString>("registers");
    const auto add = [](const char *type, const char *length, const char *registers) {
        QTest::addRow("%s of %s", type, length)
            << QString::fromLatin1(type) << QString::fromLatin1(length) << QString::fromLatin1(registers);
    };
    for (const char *type : {"bool", "int8", "uint8", "int16", "uint16", "bit"}) {
        add(type, "9", "1");
    }
    for (const char *type : {"int32", "uint32", "float"}) {
        add(type, "9", "2");
    }
    for (const char *type : {"int64", "uint64", "double"}) {
        add(type, "9", "4");
    }
    add("string", "5", "3");
    add("string", "6", "3");
    add("string", "1", "1");
    add("string", "0", "0");
    add("string", "", "0");
    add("string", "many", "0");
    add("String", "5", "0");
    add("date", "5", "0");
    add("", "5", "0");
}

void TestServerModbusTCPEditDialog::addressLength()
{
    QFETCH(QString, type);
    QFETCH(QString, length);
    QFETCH(QString, registers);
    m_form->handleImportedData({point("p", type, length)}, source);
    m_form->saveData();
    QCOMPARE(rowsOf(*m_item, serverHoldingRegistersRole), RowList{row("p", type, "0", registers)});
}

void TestServerModbusTCPEditDialog::addressesGrowByTheLengths()
{
    m_form->handleImportedData({point("a", "bool"), point("b", "float")}, source);
    m_form->handleImportedData({point("c", "double")}, source);
    QCOMPARE(addresses(holding()), texts({"0", "1", "3"}));
}

void TestServerModbusTCPEditDialog::addressesHeedNoEdit()
{
    m_form->handleImportedData({point("a"), point("b")}, source);
    setAddress(holding(), 0, "2");
    m_form->handleImportedData({point("c"), point("d")}, source);
    QCOMPARE(addresses(holding()), texts({"2", "1", "2", "3"}));
}

void TestServerModbusTCPEditDialog::onlyTheAddressOfAnImportedRowIsEditable()
{
    m_form->handleImportedData({point("a")}, source);
    for (int column = 0; column < holding()->columnCount(); ++column) {
        QCOMPARE(bool(holding()->index(0, column).flags() & Qt::ItemIsEditable), column == addressColumn);
    }
}

void TestServerModbusTCPEditDialog::loadedRowsKeepTheirEditability()
{
    load(rowsOfLengths({1}));
    for (int column = 0; column < holding()->columnCount(); ++column) {
        QVERIFY(holding()->index(0, column).flags() & Qt::ItemIsEditable);
    }
}

void TestServerModbusTCPEditDialog::pointThatIsThereIsTold_data()
{
    QTest::addColumn<QString>("plc");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("refused");
    QTest::newRow("the same") << source << "a"
                              << "int16" << true;
    QTest::newRow("other type") << source << "a"
                                << "int32" << false;
    QTest::newRow("other name") << source << "A"
                                << "int16" << false;
    QTest::newRow("other source") << "Meter B"
                                  << "a"
                                  << "int16" << false;
}

void TestServerModbusTCPEditDialog::pointThatIsThereIsTold()
{
    QFETCH(QString, plc);
    QFETCH(QString, name);
    QFETCH(QString, type);
    QFETCH(bool, refused);
    m_form->handleImportedData({point("a", "int16")}, source);
    m_form->handleImportedData({point(name, type), point("next")}, plc);
    QCOMPARE(m_workspace->messages,
             refused ? QStringList("The data with device name '% 2' and variable name '% 1' already exists.")
                     : QStringList());
    QCOMPARE(holding()->rowCount(), refused ? 2 : 3);
    QCOMPARE(holding()->index(holding()->rowCount() - 1, 1).data().toString(), "next");
}

void TestServerModbusTCPEditDialog::importIsAnnounced()
{
    QSignalSpy imported(m_form, SIGNAL(dataImported(QList<QJsonObject>, QString)));
    QVERIFY(imported.isValid());
    const QList<QJsonObject> points = {point("a")};
    m_form->handleImportedData(points, source);
    QCOMPARE(imported.size(), 1);
    QCOMPARE(imported.first().at(0).value<QList<QJsonObject>>(), points);
    QCOMPARE(imported.first().at(1).toString(), source);
}

void TestServerModbusTCPEditDialog::namesStandInToolTips()
{
    m_form->handleImportedData({point("a", "float")}, source);
    QStringList shown;
    for (int column = 0; column < holding()->columnCount(); ++column) {
        shown.append(holding()->index(0, column).data(Qt::ToolTipRole).toString());
    }
    QCOMPARE(shown, texts({"Meter A", "a", "float", "", ""}));
}

void TestServerModbusTCPEditDialog::saveWritesTheRowsOnly()
{
    edit(*m_form, "type")->setText("Master");
    edit(*m_form, "port")->setText("1502");
    m_form->handleImportedData({point("a", "float"), point("b", "string", "5")}, source);
    setAddress(holding(), 1, "40");
    showInput();
    m_form->handleImportedData({point("c", "uint64")}, "Meter B");
    press(*m_form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverHoldingRegistersRole),
             (RowList{row("a", "float", "0", "2"), row("b", "string", "40", "3")}));
    QCOMPARE(rowsOf(*m_item, serverInputRegistersRole), (RowList{{"Meter B", "c", "uint64", "0", "4"}}));
    auto roles = rolesOf(*m_item);
    roles.remove(serverHoldingRegistersRole);
    roles.remove(serverInputRegistersRole);
    QMap<int, QVariant> expected;
    expected.insert(serverProtocolRole, "ModbusTCP(Slave)");
    expected.insert(serverPortRole, "502");
    expected.insert(serverTypeRole, "Slave");
    QCOMPARE(roles, expected);
    QCOMPARE(m_workspace->messages, QStringList("The Server ModbusTCP(Slave) 'Map' is saved successfully."));
}

void TestServerModbusTCPEditDialog::replaceItemShowsTheOther()
{
    load(rowsOfLengths({1, 1}));
    showInput();
    m_form->handleImportedData({point("a")}, source);
    QStandardItem other("Second");
    other.setData("ModbusTCP(Slave)", serverProtocolRole);
    other.setData("Other", serverTypeRole);
    other.setData("77", serverPortRole);
    other.setData(QVariant::fromValue(rowsOfLengths({3})), serverHoldingRegistersRole);
    m_form->replaceItem(&other);
    QCOMPARE(edit(*m_form, "name")->text(), "Second");
    QCOMPARE(edit(*m_form, "type")->text(), "Other");
    QCOMPARE(other.data(serverTypeRole), QVariant("Other"));
    QCOMPARE(edit(*m_form, "port")->text(), "77");
    QCOMPARE(list(*m_form, "protocol")->currentText(), "ModbusTCP(Slave)");
    QVERIFY(QMetaObject::invokeMethod(m_form, "saveData"));
    QCOMPARE(rowsOf(other, serverHoldingRegistersRole), rowsOfLengths({3}));
    QCOMPARE(rowsOf(other, serverInputRegistersRole), RowList());
    QCOMPARE(rowsOf(*m_item, serverHoldingRegistersRole), rowsOfLengths({1, 1}));
}

void TestServerModbusTCPEditDialog::populatingAgainShowsTheSameRows()
{
    load(rowsOfLengths({1, 2}));
    QVERIFY(QMetaObject::invokeMethod(m_form, "populateData", Q_ARG(QStandardItem *, m_item)));
    QCOMPARE(addresses(holding()), texts({"0", "1"}));
}

void TestServerModbusTCPEditDialog::clearDataEmptiesTheForm()
{
    load(rowsOfLengths({1, 2}));
    showInput();
    m_form->handleImportedData({point("a")}, source);
    QVERIFY(QMetaObject::invokeMethod(m_form, "clearData"));
    for (const char *name : {"name", "type", "port"}) {
        QCOMPARE(edit(*m_form, name)->text(), QString());
    }
    QCOMPARE(holding()->rowCount() + input()->rowCount(), 0);
    QCOMPARE(headers(view("inputRegisters")).first(), "PLC Name");
}

void TestServerModbusTCPEditDialog::closeDialogCancels()
{
    QSignalSpy rejected(m_form, &QDialog::rejected);
    QVERIFY(QMetaObject::invokeMethod(m_form, "closeDialog"));
    QCOMPARE(rejected.size(), 1);
}

QTEST_MAIN(TestServerModbusTCPEditDialog)
#include "tst_servermodbustcpeditdialog.moc"
