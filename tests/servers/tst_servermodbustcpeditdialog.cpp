#include "modbusformtest.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QSignalSpy>

// The form of the Modbus TCP slave: fields, imported points, what is saved.
class TestServerModbusTCPEditDialog : public ModbusFormTest
{
    Q_OBJECT
private slots:
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
    QCOMPARE(labelsOf(*m_form),
             QStringList({"Server Name:|name", "Type:|type", "Protocol:|protocol", "Port:|port"}));
    QVERIFY(edit(*m_form, "name")->isReadOnly());
    QCOMPARE(entriesOf(list(*m_form, "protocol")), QStringList("ModbusTCP(Slave)"));
    QCOMPARE(textsOf(*m_form, {"name", "protocol", "port"}), QStringList({"Map", "ModbusTCP(Slave)", "502"}));
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
    QCOMPARE(tabsOf(*m_form), QStringList({"Holding Register", "Input Register"}));
    for (const char *name : {"holdingRegisters", "inputRegisters"}) {
        QCOMPARE(headersOf(view(name)),
                 QStringList({"PLC Name", "Variable Name", "Data Type", "Modbus Address", "Address length"}));
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
    QVERIFY(QMetaObject::invokeMethod(m_form.get(), "setupUI"));
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
    m_form->handleImportedData({point("p", type, length)}, source());
    m_form->saveData();
    QCOMPARE(rowsOf(*m_item, serverHoldingRegistersRole), RowList{row("p", type, "0", registers)});
}

void TestServerModbusTCPEditDialog::addressesGrowByTheLengths()
{
    m_form->handleImportedData({point("a", "bool"), point("b", "float")}, source());
    m_form->handleImportedData({point("c", "double")}, source());
    QCOMPARE(addresses(holding()), QStringList({"0", "1", "3"}));
}

void TestServerModbusTCPEditDialog::addressesHeedNoEdit()
{
    m_form->handleImportedData({point("a"), point("b")}, source());
    setAddress(holding(), 0, "2");
    m_form->handleImportedData({point("c"), point("d")}, source());
    QCOMPARE(addresses(holding()), QStringList({"2", "1", "2", "3"}));
}

void TestServerModbusTCPEditDialog::onlyTheAddressOfAnImportedRowIsEditable()
{
    m_form->handleImportedData({point("a")}, source());
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

void TestServerModbusTCPEditDialog::importIsAnnounced()
{
    QSignalSpy imported(m_form.get(), SIGNAL(dataImported(QList<QJsonObject>, QString)));
    QVERIFY(imported.isValid());
    const QList<QJsonObject> points = {point("a")};
    m_form->handleImportedData(points, source());
    QCOMPARE(imported.size(), 1);
    QCOMPARE(imported.first().at(0).value<QList<QJsonObject>>(), points);
    QCOMPARE(imported.first().at(1).toString(), source());
}

void TestServerModbusTCPEditDialog::namesStandInToolTips()
{
    m_form->handleImportedData({point("a", "float")}, source());
    QStringList shown;
    for (int column = 0; column < holding()->columnCount(); ++column) {
        shown.append(holding()->index(0, column).data(Qt::ToolTipRole).toString());
    }
    QCOMPARE(shown, QStringList({"Meter A", "a", "float", "", ""}));
}

void TestServerModbusTCPEditDialog::saveWritesTheRowsOnly()
{
    edit(*m_form, "type")->setText("Master");
    edit(*m_form, "port")->setText("1502");
    m_form->handleImportedData({point("a", "float"), point("b", "string", "5")}, source());
    setAddress(holding(), 1, "40");
    showInput();
    m_form->handleImportedData({point("c", "uint64")}, "Meter B");
    click(*m_form, "saveButton");
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
    m_form->handleImportedData({point("a")}, source());
    QStandardItem &other = *addItem("Second");
    other.setData("Other", serverTypeRole);
    other.setData("77", serverPortRole);
    setRows(&other, serverHoldingRegistersRole, rowsOfLengths({3}));
    m_form->replaceItem(&other);
    QCOMPARE(textsOf(*m_form, {"name", "type", "protocol", "port"}),
             QStringList({"Second", "Other", "ModbusTCP(Slave)", "77"}));
    QCOMPARE(other.data(serverTypeRole), QVariant("Other"));
    QVERIFY(QMetaObject::invokeMethod(m_form.get(), "saveData"));
    QCOMPARE(rowsOf(other, serverHoldingRegistersRole), rowsOfLengths({3}));
    QCOMPARE(rowsOf(other, serverInputRegistersRole), RowList());
    QCOMPARE(rowsOf(*m_item, serverHoldingRegistersRole), rowsOfLengths({1, 1}));
}

void TestServerModbusTCPEditDialog::populatingAgainShowsTheSameRows()
{
    load(rowsOfLengths({1, 2}));
    QVERIFY(QMetaObject::invokeMethod(m_form.get(), "populateData", Q_ARG(QStandardItem *, m_item)));
    QCOMPARE(addresses(holding()), QStringList({"0", "1"}));
}

void TestServerModbusTCPEditDialog::clearDataEmptiesTheForm()
{
    load(rowsOfLengths({1, 2}));
    showInput();
    m_form->handleImportedData({point("a")}, source());
    QVERIFY(QMetaObject::invokeMethod(m_form.get(), "clearData"));
    QCOMPARE(textsOf(*m_form, {"name", "type", "port"}).join(QString()), QString());
    QCOMPARE(holding()->rowCount() + input()->rowCount(), 0);
    QCOMPARE(headersOf(view("inputRegisters")).first(), "PLC Name");
}

void TestServerModbusTCPEditDialog::closeDialogCancels()
{
    QSignalSpy rejected(m_form.get(), &QDialog::rejected);
    QVERIFY(QMetaObject::invokeMethod(m_form.get(), "closeDialog"));
    QCOMPARE(rejected.size(), 1);
}

QTEST_MAIN(TestServerModbusTCPEditDialog)
#include "tst_servermodbustcpeditdialog.moc"
