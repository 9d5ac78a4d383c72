#include "pointformtest.h"
#include "servers/servermodbustcpeditdialog.h"
#include "support/messageboxes.h"
#include "support/workspacefake.h"

#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTabWidget>

using namespace PointFormTest;

// The form of the Modbus TCP slave and its two register maps.
class TestServerModbusTCPEditDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void fieldsInTheirOrder();
    void openingMakesTheTypeSlave();
    void tabsAndColumns();
    void setupUIBuildsOnce();
    void addressLength_data();
    void addressLength();
    void addressesGrowByTheLengths();
    void addressesHeedNoEdit();
    void onlyTheAddressOfAnImportedRowIsEditable();
    void loadedRowsKeepTheirEditability();
    void pointThatIsThereIsTold_data();
    void pointThatIsThereIsTold();
    void deletingMovesTheRowsBehind_data();
    void deletingMovesTheRowsBehind();
    void deletingMayEndBelowZero();
    void deletingChecksEachStep();
    void conflict_data();
    void conflict();
    void conflictNeedsAnotherRow();
    void typedConflictIsToldOnceAndEmptied();
    void conflictAtZeroIsNotToldAgain();
    void resolvedConflictIsToldAnew();
    void otherColumnsAreNotChecked();
    void foreignChangeIsNotChecked();
    void formMayCloseUnderTheConflict();
    void mapsAreIndependent();
    void importIsAnnounced();
    void saveWritesTheRowsOnly();
    void replaceItemShowsTheOther();
    void populatingAgainShowsTheSameRows();
    void clearDataEmptiesTheForm();
    void closeDialogCancels();
    void hugeNumbersDoNoHarm();

private:
    void make();
    QTableView *view(const char *name) const;
    QAbstractItemModel *holding() const { return view("holdingRegisters")->model(); }
    QAbstractItemModel *input() const { return view("inputRegisters")->model(); }
    void showInput() const { m_form->findChild<QTabWidget *>()->setCurrentIndex(1); }
    void load(const RowList &rows);

    QStandardItem *m_item = nullptr;
    ServerModbusTCPEditDialog *m_form = nullptr;
    WorkspaceFake *m_workspace = nullptr;
    MessageBoxes *m_boxes = nullptr;
};

namespace {

constexpr int addressColumn = 3;
const QString source = QStringLiteral("Meter A");
const QString conflictBox = QStringLiteral("Warning|Address conflict detected. Please resolve the conflict.");

QVariantList row(const QString &name, const QString &type, const QString &address, const QString &length)
{
    return {source, name, type, address, length};
}

// Rows that follow each other without a gap, named "p0" and so on.
RowList rowsOfLengths(const QVector<int> &lengths)
{
    RowList rows;
    int address = 0;
    for (int length : lengths) {
        rows.append(row(QStringLiteral("p%1").arg(rows.size()), QStringLiteral("t"), QString::number(address),
                        QString::number(length)));
        address += length;
    }
    return rows;
}

QStringList addresses(const QAbstractItemModel *map)
{
    QStringList texts;
    for (int index = 0; index < map->rowCount(); ++index) {
        texts.append(map->index(index, addressColumn).data().toString());
    }
    return texts;
}

QStringList texts(std::initializer_list<const char *> list)
{
    QStringList made;
    for (const char *text : list) {
        made.append(QString::fromLatin1(text));
    }
    return made;
}

void setAddress(QAbstractItemModel *map, int row, const char *address)
{
    map->setData(map->index(row, addressColumn), QString::fromLatin1(address));
}

// Types into the address as a user does, with a double click before and Enter behind.
void typeAddress(QTableView *view, int row, const char *address)
{
    const QPoint place = view->visualRect(view->model()->index(row, addressColumn)).center();
    QTest::mouseClick(view->viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(view->viewport(), Qt::LeftButton, {}, place);
    QTRY_VERIFY(view->viewport()->findChild<QLineEdit *>());
    const QPointer<QLineEdit> editor = view->viewport()->findChild<QLineEdit *>();
    editor->selectAll();
    QTest::keyClicks(editor, QString::fromLatin1(address));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(!editor);
}

} // namespace

void TestServerModbusTCPEditDialog::init()
{
    m_item = new QStandardItem(QStringLiteral("Map"));
    m_item->setData(QStringLiteral("ModbusTCP(Slave)"), serverProtocolRole);
    m_item->setData(QStringLiteral("502"), serverPortRole);
    m_workspace = new WorkspaceFake;
    m_boxes = new MessageBoxes(this);
    make();
}

void TestServerModbusTCPEditDialog::cleanup()
{
    QCOMPARE(m_boxes->unexpected(), QStringList());
    QCOMPARE(m_boxes->pending(), 0);
    delete m_form;
    m_form = nullptr;
    delete m_boxes;
    delete m_workspace;
    delete m_item;
}

void TestServerModbusTCPEditDialog::make()
{
    delete m_form;
    m_form = new ServerModbusTCPEditDialog(m_item, m_workspace);
    m_form->resize(800, 700);
    m_form->show();
}

QTableView *TestServerModbusTCPEditDialog::view(const char *name) const
{
    return m_form->findChild<QTableView *>(QLatin1String(name));
}

// Shows these rows as holding registers of the item.
void TestServerModbusTCPEditDialog::load(const RowList &rows)
{
    m_item->setData(QVariant::fromValue(rows), serverHoldingRegistersRole);
    m_form->replaceItem(m_item);
}

void TestServerModbusTCPEditDialog::fieldsInTheirOrder()
{
    QCOMPARE(inputs(*m_form), texts({"Server Name:|name", "Type:|type", "Protocol:|protocol", "Port:|port"}));
    QCOMPARE(edit(*m_form, "name")->text(), QStringLiteral("Map"));
    QVERIFY(edit(*m_form, "name")->isReadOnly());
    QCOMPARE(list(*m_form, "protocol")->count(), 1);
    QCOMPARE(list(*m_form, "protocol")->currentText(), QStringLiteral("ModbusTCP(Slave)"));
    QCOMPARE(edit(*m_form, "port")->text(), QStringLiteral("502"));
}

void TestServerModbusTCPEditDialog::openingMakesTheTypeSlave()
{
    QStandardItem item;
    item.setData(QStringLiteral("Master"), serverTypeRole);
    const ServerModbusTCPEditDialog form(&item, nullptr);
    QCOMPARE(edit(form, "type")->text(), QStringLiteral("Master"));
    QMap<int, QVariant> expected;
    expected.insert(serverTypeRole, QStringLiteral("Slave"));
    QCOMPARE(rolesOf(item), expected);
    const ServerModbusTCPEditDialog again(&item, nullptr);
    QCOMPARE(edit(again, "type")->text(), QStringLiteral("Slave"));
}

void TestServerModbusTCPEditDialog::tabsAndColumns()
{
    const auto *tabs = m_form->findChild<QTabWidget *>();
    QCOMPARE(tabs->count(), 2);
    QCOMPARE(tabs->tabText(0), QStringLiteral("Holding Register"));
    QCOMPARE(tabs->tabText(1), QStringLiteral("Input Register"));
    for (const char *name : {"holdingRegisters", "inputRegisters"}) {
        QCOMPARE(headers(view(name)),
                 texts({"PLC Name", "Variable Name", "Data Type", "Modbus Address", "Address length"}));
        QCOMPARE(view(name)->contextMenuPolicy(), Qt::CustomContextMenu);
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
    m_form->handleImportedData({point(QStringLiteral("p"), type, length)}, source);
    m_form->saveData();
    QCOMPARE(rowsOf(*m_item, serverHoldingRegistersRole),
             RowList{row(QStringLiteral("p"), type, QStringLiteral("0"), registers)});
}

void TestServerModbusTCPEditDialog::addressesGrowByTheLengths()
{
    m_form->handleImportedData({point(QStringLiteral("a"), QStringLiteral("bool")),
                                point(QStringLiteral("b"), QStringLiteral("float"))},
                               source);
    m_form->handleImportedData({point(QStringLiteral("c"), QStringLiteral("double"))}, source);
    QCOMPARE(addresses(holding()), texts({"0", "1", "3"}));
}

void TestServerModbusTCPEditDialog::addressesHeedNoEdit()
{
    m_form->handleImportedData({point(QStringLiteral("a")), point(QStringLiteral("b"))}, source);
    setAddress(holding(), 0, "2");
    m_form->handleImportedData({point(QStringLiteral("c")), point(QStringLiteral("d"))}, source);
    QCOMPARE(addresses(holding()), texts({"2", "1", "2", "3"}));
}

void TestServerModbusTCPEditDialog::onlyTheAddressOfAnImportedRowIsEditable()
{
    m_form->handleImportedData({point(QStringLiteral("a"))}, source);
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
    QTest::newRow("the same") << source << QStringLiteral("a") << QStringLiteral("int16") << true;
    QTest::newRow("other type") << source << QStringLiteral("a") << QStringLiteral("int32") << false;
    QTest::newRow("other name") << source << QStringLiteral("A") << QStringLiteral("int16") << false;
    QTest::newRow("other source") << QStringLiteral("Meter B") << QStringLiteral("a")
                                  << QStringLiteral("int16") << false;
}

void TestServerModbusTCPEditDialog::pointThatIsThereIsTold()
{
    QFETCH(QString, plc);
    QFETCH(QString, name);
    QFETCH(QString, type);
    QFETCH(bool, refused);
    m_form->handleImportedData({point(QStringLiteral("a"), QStringLiteral("int16"))}, source);
    m_form->handleImportedData({point(name, type), point(QStringLiteral("next"))}, plc);
    QCOMPARE(m_workspace->messages,
             refused ? QStringList(
                 QStringLiteral("The data with device name '% 2' and variable name '% 1' already exists."))
                     : QStringList());
    QCOMPARE(holding()->rowCount(), refused ? 2 : 3);
    QCOMPARE(holding()->index(holding()->rowCount() - 1, 1).data().toString(), QStringLiteral("next"));
}

void TestServerModbusTCPEditDialog::deletingMovesTheRowsBehind_data()
{
    QTest::addColumn<int>("deleted");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("first") << 0 << texts({"0", "1"});
    QTest::newRow("middle") << 1 << texts({"0", "2"});
    QTest::newRow("last") << 2 << texts({"0", "2"});
}

void TestServerModbusTCPEditDialog::deletingMovesTheRowsBehind()
{
    QFETCH(int, deleted);
    QFETCH(QStringList, left);
    load(rowsOfLengths({2, 1, 4}));
    view("holdingRegisters")->selectRow(deleted);
    m_form->deleteSelectedItem();
    QCOMPARE(addresses(holding()), left);
}

void TestServerModbusTCPEditDialog::deletingMayEndBelowZero()
{
    load(rowsOfLengths({2, 1, 4}));
    setAddress(holding(), 0, "100");
    setAddress(holding(), 1, "0");
    view("holdingRegisters")->selectRow(0);
    m_form->deleteSelectedItem();
    QCOMPARE(addresses(holding()), texts({"-2", "1"}));
}

// The rows move one after the other, and the first meets the second where that still was.
void TestServerModbusTCPEditDialog::deletingChecksEachStep()
{
    load({row(QStringLiteral("a"), QStringLiteral("t"), QStringLiteral("10"), QStringLiteral("2")),
          row(QStringLiteral("b"), QStringLiteral("t"), QStringLiteral("5"), QStringLiteral("1")),
          row(QStringLiteral("c"), QStringLiteral("t"), QStringLiteral("3"), QStringLiteral("1"))});
    m_boxes->expect();
    view("holdingRegisters")->selectRow(0);
    m_form->deleteSelectedItem();
    QCOMPARE(m_boxes->told(), QStringList(conflictBox));
    QCOMPARE(addresses(holding()), texts({"", "1"}));
}

void TestServerModbusTCPEditDialog::conflict_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("length");
    QTest::addColumn<bool>("conflicts");
    // Against the registers 10 to 13.
    const auto add = [](const char *name, const char *address, const char *length, bool conflicts) {
        QTest::newRow(name) << QString::fromLatin1(address) << QString::fromLatin1(length) << conflicts;
    };
    add("same place", "10", "4", true);
    add("inside", "12", "1", true);
    add("last register", "13", "4", true);
    add("right behind", "14", "4", false);
    add("right before", "8", "2", false);
    add("reaching in", "8", "3", true);
    add("around", "5", "20", true);
    add("no length, inside", "11", "0", true);
    add("no length, at the start", "10", "0", true);
    add("no length, behind", "14", "0", false);
    add("no number", "x", "4", false);
    add("no number, long enough", "", "11", true);
    add("negative", "-3", "2", false);
}

void TestServerModbusTCPEditDialog::conflict()
{
    QFETCH(QString, address);
    QFETCH(QString, length);
    QFETCH(bool, conflicts);
    load({row(QStringLiteral("a"), QStringLiteral("t"), address, length),
          row(QStringLiteral("b"), QStringLiteral("t"), QStringLiteral("10"), QStringLiteral("4"))});
    auto *map = qobject_cast<QStandardItemModel *>(holding());
    for (int which : {0, 1}) {
        bool found = false;
        QVERIFY(QMetaObject::invokeMethod(m_form, "checkAddressConflict", Q_RETURN_ARG(bool, found),
                                          Q_ARG(QStandardItemModel *, map), Q_ARG(int, which)));
        QCOMPARE(found, conflicts);
    }
}

void TestServerModbusTCPEditDialog::conflictNeedsAnotherRow()
{
    QStandardItemModel map(0, 5);
    QVERIFY(!m_form->checkAddressConflict(&map, 0));
    map.appendRow({new QStandardItem, new QStandardItem, new QStandardItem,
                   new QStandardItem(QStringLiteral("0")), new QStandardItem(QStringLiteral("4"))});
    QVERIFY(!m_form->checkAddressConflict(&map, 0));
}

void TestServerModbusTCPEditDialog::typedConflictIsToldOnceAndEmptied()
{
    load({row(QStringLiteral("a"), QStringLiteral("t"), QStringLiteral("7"), QStringLiteral("2")),
          row(QStringLiteral("b"), QStringLiteral("t"), QStringLiteral("9"), QStringLiteral("2"))});
    m_boxes->expect();
    typeAddress(view("holdingRegisters"), 1, "8");
    QCOMPARE(m_boxes->told(), QStringList(conflictBox));
    QCOMPARE(addresses(holding()), texts({"7", ""}));
    typeAddress(view("holdingRegisters"), 1, "20");
    QCOMPARE(addresses(holding()), texts({"7", "20"}));
}

// The emptied cell counts as address 0: while that conflicts too, the conflict counts as told.
void TestServerModbusTCPEditDialog::conflictAtZeroIsNotToldAgain()
{
    load(rowsOfLengths({4, 2}));
    m_boxes->expect();
    setAddress(holding(), 1, "1");
    QCOMPARE(addresses(holding()), texts({"0", ""}));
    setAddress(holding(), 1, "2");
    QCOMPARE(addresses(holding()), texts({"0", ""}));
    QCOMPARE(m_boxes->told(), QStringList(conflictBox));
}

void TestServerModbusTCPEditDialog::resolvedConflictIsToldAnew()
{
    load(rowsOfLengths({4, 2}));
    for (int time = 0; time < 2; ++time) {
        m_boxes->expect();
        setAddress(holding(), 1, "1");
        setAddress(holding(), 1, "4");
    }
    QCOMPARE(m_boxes->told(), (QStringList{conflictBox, conflictBox}));
    QCOMPARE(addresses(holding()), texts({"0", "4"}));
}

void TestServerModbusTCPEditDialog::otherColumnsAreNotChecked()
{
    load(rowsOfLengths({1, 1}));
    holding()->setData(holding()->index(0, 4), QStringLiteral("5"));
    QCOMPARE(addresses(holding()), texts({"0", "1"}));
}

void TestServerModbusTCPEditDialog::foreignChangeIsNotChecked()
{
    load({row(QStringLiteral("a"), QStringLiteral("t"), QStringLiteral("0"), QStringLiteral("2")),
          row(QStringLiteral("b"), QStringLiteral("t"), QStringLiteral("1"), QStringLiteral("2"))});
    const QModelIndex cell = holding()->index(0, addressColumn);
    QVERIFY(QMetaObject::invokeMethod(m_form, "handleDataChanged", Q_ARG(QModelIndex, cell),
                                      Q_ARG(QModelIndex, cell)));
    QCOMPARE(addresses(holding()), texts({"0", "1"}));
}

void TestServerModbusTCPEditDialog::formMayCloseUnderTheConflict()
{
    load(rowsOfLengths({4, 2}));
    QTimer::singleShot(0, this, [this] {
        delete m_form;
        m_form = nullptr;
    });
    // The box dies with its form, before anybody answers it.
    setAddress(holding(), 1, "1");
    QVERIFY(!m_form);
}

void TestServerModbusTCPEditDialog::mapsAreIndependent()
{
    m_form->handleImportedData({point(QStringLiteral("a"))}, source);
    showInput();
    m_form->handleImportedData({point(QStringLiteral("a")), point(QStringLiteral("b"))}, source);
    setAddress(input(), 1, "7");
    setAddress(holding(), 0, "7");
    QCOMPARE(m_workspace->messages, QStringList());
    QCOMPARE(addresses(holding()), texts({"7"}));
    QCOMPARE(addresses(input()), texts({"0", "7"}));
    view("holdingRegisters")->selectRow(0);
    m_form->deleteSelectedItem(); // of the map that is shown nothing is selected
    QCOMPARE(holding()->rowCount(), 1);
    view("inputRegisters")->selectRow(0);
    m_form->deleteSelectedItem();
    QCOMPARE(addresses(input()), texts({"6"}));
    QCOMPARE(addresses(holding()), texts({"7"}));
}

void TestServerModbusTCPEditDialog::importIsAnnounced()
{
    QSignalSpy imported(m_form, SIGNAL(dataImported(QList<QJsonObject>, QString)));
    QVERIFY(imported.isValid());
    const QList<QJsonObject> points = {point(QStringLiteral("a"))};
    m_form->handleImportedData(points, source);
    QCOMPARE(imported.size(), 1);
    QCOMPARE(imported.first().at(0).value<QList<QJsonObject>>(), points);
    QCOMPARE(imported.first().at(1).toString(), source);
}

void TestServerModbusTCPEditDialog::saveWritesTheRowsOnly()
{
    edit(*m_form, "type")->setText(QStringLiteral("Master"));
    edit(*m_form, "port")->setText(QStringLiteral("1502"));
    m_form->handleImportedData({point(QStringLiteral("a"), QStringLiteral("float")),
                                point(QStringLiteral("b"), QStringLiteral("string"), QStringLiteral("5"))},
                               source);
    setAddress(holding(), 1, "40");
    showInput();
    m_form->handleImportedData({point(QStringLiteral("c"), QStringLiteral("uint64"))},
                               QStringLiteral("Meter B"));
    press(*m_form, "saveButton");
    QCOMPARE(
        rowsOf(*m_item, serverHoldingRegistersRole),
        (RowList{
            row(QStringLiteral("a"), QStringLiteral("float"), QStringLiteral("0"), QStringLiteral("2")),
            row(QStringLiteral("b"), QStringLiteral("string"), QStringLiteral("40"), QStringLiteral("3"))}));
    QCOMPARE(rowsOf(*m_item, serverInputRegistersRole),
             (RowList{{QStringLiteral("Meter B"), QStringLiteral("c"), QStringLiteral("uint64"),
                       QStringLiteral("0"), QStringLiteral("4")}}));
    auto roles = rolesOf(*m_item);
    roles.remove(serverHoldingRegistersRole);
    roles.remove(serverInputRegistersRole);
    QMap<int, QVariant> expected;
    expected.insert(serverProtocolRole, QStringLiteral("ModbusTCP(Slave)"));
    expected.insert(serverPortRole, QStringLiteral("502"));
    expected.insert(serverTypeRole, QStringLiteral("Slave"));
    QCOMPARE(roles, expected);
    QCOMPARE(m_workspace->messages,
             QStringList(QStringLiteral("The Server ModbusTCP(Slave) 'Map' is saved successfully.")));
}

void TestServerModbusTCPEditDialog::replaceItemShowsTheOther()
{
    load(rowsOfLengths({1, 1}));
    showInput();
    m_form->handleImportedData({point(QStringLiteral("a"))}, source);
    QStandardItem other(QStringLiteral("Second"));
    other.setData(QStringLiteral("Other"), serverTypeRole);
    other.setData(QStringLiteral("77"), serverPortRole);
    other.setData(QVariant::fromValue(rowsOfLengths({3})), serverHoldingRegistersRole);
    m_form->replaceItem(&other);
    QCOMPARE(edit(*m_form, "name")->text(), QStringLiteral("Second"));
    QCOMPARE(edit(*m_form, "type")->text(), QStringLiteral("Other"));
    QCOMPARE(other.data(serverTypeRole), QVariant(QStringLiteral("Other")));
    QCOMPARE(edit(*m_form, "port")->text(), QStringLiteral("77"));
    QCOMPARE(list(*m_form, "protocol")->currentText(), QStringLiteral("ModbusTCP(Slave)"));
    m_form->saveData();
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
    m_form->handleImportedData({point(QStringLiteral("a"))}, source);
    QVERIFY(QMetaObject::invokeMethod(m_form, "clearData"));
    for (const char *name : {"name", "type", "port"}) {
        QCOMPARE(edit(*m_form, name)->text(), QString());
    }
    QCOMPARE(holding()->rowCount() + input()->rowCount(), 0);
    QCOMPARE(headers(view("inputRegisters")).first(), QStringLiteral("PLC Name"));
}

void TestServerModbusTCPEditDialog::closeDialogCancels()
{
    QSignalSpy rejected(m_form, &QDialog::rejected);
    QVERIFY(QMetaObject::invokeMethod(m_form, "closeDialog"));
    QCOMPARE(rejected.size(), 1);
}

void TestServerModbusTCPEditDialog::hugeNumbersDoNoHarm()
{
    const QString most = QStringLiteral("2147483647");
    load({row(QStringLiteral("a"), QStringLiteral("t"), most, most),
          row(QStringLiteral("b"), QStringLiteral("t"), QStringLiteral("-2147483648"), most)});
    m_form->handleImportedData({point(QStringLiteral("c"), QStringLiteral("string"), most)}, source);
    QCOMPARE(addresses(holding()).last(), QStringLiteral("4294967294"));
    load({row(QStringLiteral("a"), QStringLiteral("t"), most, most),
          row(QStringLiteral("b"), QStringLiteral("t"), QStringLiteral("-2147483648"), most)});
    view("holdingRegisters")->selectRow(0);
    m_form->deleteSelectedItem();
    QCOMPARE(addresses(holding()), texts({"-4294967295"}));
}

QTEST_MAIN(TestServerModbusTCPEditDialog)
#include "tst_servermodbustcpeditdialog.moc"
