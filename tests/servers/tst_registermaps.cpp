#include "modbusformtest.h"

#include <QLineEdit>
#include <QStandardItemModel>
#include <QTimer>

// The register maps of the Modbus TCP slave: deleted rows and conflicts of addresses.
class TestRegisterMaps : public ModbusFormTest
{
    Q_OBJECT
private slots:
    void deletingMovesTheRowsBehind_data();
    void deletingMovesTheRowsBehind();
    void deletingMayEndBelowZero();
    void deletingChecksEachStep();
    void conflict_data();
    void conflict();
    void conflictNeedsAnotherRow();
    void typedConflictIsToldOnceAndEmptied();
    void conflictAmongInputRegistersIsTold();
    void conflictAtZeroIsNotToldAgain();
    void resolvedConflictIsToldAnew();
    void otherColumnsAreNotChecked();
    void foreignChangeIsNotChecked();
    void formMayCloseUnderTheConflict();
    void formMayCloseUnderTheConflictOfADelete();
    void mapsAreIndependent();
    void hugeNumbersDoNoHarm();
};

namespace {

const QString conflictMessage = "Warning|Address conflict detected. Please resolve the conflict.";

// Types into the address as a user does, with a double click before and Enter behind.
void typeAddress(QTableView *view, int row, const char *address)
{
    const QPoint place = view->visualRect(view->model()->index(row, 3)).center();
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

void TestRegisterMaps::deletingMovesTheRowsBehind_data()
{
    QTest::addColumn<int>("deleted");
    QTest::addColumn<QStringList>("left");
    QTest::newRow("first") << 0 << QStringList({"0", "1"});
    QTest::newRow("middle") << 1 << QStringList({"0", "2"});
    QTest::newRow("last") << 2 << QStringList({"0", "2"});
}

void TestRegisterMaps::deletingMovesTheRowsBehind()
{
    QFETCH(int, deleted);
    QFETCH(QStringList, left);
    load(rowsOfLengths({2, 1, 4}));
    view("holdingRegisters")->selectRow(deleted);
    m_form->deleteSelectedItem();
    QCOMPARE(addresses(holding()), left);
}

void TestRegisterMaps::deletingMayEndBelowZero()
{
    load(rowsOfLengths({2, 1, 4}));
    setAddress(holding(), 0, "100");
    setAddress(holding(), 1, "0");
    view("holdingRegisters")->selectRow(0);
    m_form->deleteSelectedItem();
    QCOMPARE(addresses(holding()), QStringList({"-2", "1"}));
}

// The rows move one after the other, and the first meets the second where that still was.
void TestRegisterMaps::deletingChecksEachStep()
{
    load({row("a", "t", "10", "2"), row("b", "t", "5", "1"), row("c", "t", "3", "1")});
    m_messages->expect();
    view("holdingRegisters")->selectRow(0);
    m_form->deleteSelectedItem();
    QCOMPARE(m_messages->told(), QStringList(conflictMessage));
    QCOMPARE(addresses(holding()), QStringList({"", "1"}));
}

void TestRegisterMaps::conflict_data()
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

void TestRegisterMaps::conflict()
{
    QFETCH(QString, address);
    QFETCH(QString, length);
    QFETCH(bool, conflicts);
    load({row("a", "t", address, length), row("b", "t", "10", "4")});
    auto *map = qobject_cast<QStandardItemModel *>(holding());
    for (int which : {0, 1}) {
        bool found = false;
        QVERIFY(QMetaObject::invokeMethod(m_form.get(), "checkAddressConflict", Q_RETURN_ARG(bool, found),
                                          Q_ARG(QStandardItemModel *, map), Q_ARG(int, which)));
        QCOMPARE(found, conflicts);
    }
}

void TestRegisterMaps::conflictNeedsAnotherRow()
{
    QStandardItemModel map(0, 5);
    QVERIFY(!m_form->checkAddressConflict(&map, 0));
    map.appendRow({new QStandardItem, new QStandardItem, new QStandardItem, new QStandardItem("0"),
                   new QStandardItem("4")});
    QVERIFY(!m_form->checkAddressConflict(&map, 0));
}

void TestRegisterMaps::typedConflictIsToldOnceAndEmptied()
{
    load({row("a", "t", "7", "2"), row("b", "t", "9", "2")});
    m_messages->expect();
    RUN(typeAddress(view("holdingRegisters"), 1, "8"));
    QCOMPARE(m_messages->told(), QStringList(conflictMessage));
    QCOMPARE(addresses(holding()), QStringList({"7", ""}));
    RUN(typeAddress(view("holdingRegisters"), 1, "20"));
    QCOMPARE(addresses(holding()), QStringList({"7", "20"}));
}

void TestRegisterMaps::conflictAmongInputRegistersIsTold()
{
    showInput();
    m_form->handleImportedData({point("a"), point("b")}, source());
    setAddress(input(), 0, "5");
    m_messages->expect();
    setAddress(input(), 1, "5");
    QCOMPARE(m_messages->told(), QStringList(conflictMessage));
    QCOMPARE(addresses(input()), QStringList({"5", ""}));
}

// The emptied cell counts as address 0: while that conflicts too, the conflict counts as told.
void TestRegisterMaps::conflictAtZeroIsNotToldAgain()
{
    load(rowsOfLengths({4, 2}));
    m_messages->expect();
    setAddress(holding(), 1, "1");
    QCOMPARE(addresses(holding()), QStringList({"0", ""}));
    setAddress(holding(), 1, "2");
    QCOMPARE(addresses(holding()), QStringList({"0", ""}));
    QCOMPARE(m_messages->told(), QStringList(conflictMessage));
}

void TestRegisterMaps::resolvedConflictIsToldAnew()
{
    load(rowsOfLengths({4, 2}));
    for (int time = 0; time < 2; ++time) {
        m_messages->expect();
        setAddress(holding(), 1, "1");
        setAddress(holding(), 1, "4");
    }
    QCOMPARE(m_messages->told(), (QStringList{conflictMessage, conflictMessage}));
    QCOMPARE(addresses(holding()), QStringList({"0", "4"}));
}

void TestRegisterMaps::otherColumnsAreNotChecked()
{
    load(rowsOfLengths({1, 1}));
    holding()->setData(holding()->index(0, 4), "5");
    QCOMPARE(addresses(holding()), QStringList({"0", "1"}));
}

void TestRegisterMaps::foreignChangeIsNotChecked()
{
    load({row("a", "t", "0", "2"), row("b", "t", "1", "2")});
    const QModelIndex cell = holding()->index(0, addressColumn);
    QVERIFY(QMetaObject::invokeMethod(m_form.get(), "handleDataChanged", Q_ARG(QModelIndex, cell),
                                      Q_ARG(QModelIndex, cell)));
    QCOMPARE(addresses(holding()), QStringList({"0", "1"}));
}

void TestRegisterMaps::formMayCloseUnderTheConflict()
{
    load(rowsOfLengths({4, 2}));
    QTimer::singleShot(0, this, [this] { m_form.reset(); });
    // The message dies with its form, before anybody answers it.
    setAddress(holding(), 1, "1");
    QVERIFY(!m_form);
}

void TestRegisterMaps::formMayCloseUnderTheConflictOfADelete()
{
    load({row("a", "t", "10", "2"), row("b", "t", "5", "1"), row("c", "t", "3", "1")});
    QTimer::singleShot(0, this, [this] { m_form.reset(); });
    view("holdingRegisters")->selectRow(0);
    m_form->deleteSelectedItem();
    QVERIFY(!m_form);
}

void TestRegisterMaps::mapsAreIndependent()
{
    m_form->handleImportedData({point("a")}, source());
    showInput();
    m_form->handleImportedData({point("a"), point("b")}, source());
    setAddress(input(), 1, "7");
    setAddress(holding(), 0, "7");
    QCOMPARE(m_workspace->messages, QStringList());
    QCOMPARE(addresses(holding()), QStringList({"7"}));
    QCOMPARE(addresses(input()), QStringList({"0", "7"}));
    view("holdingRegisters")->selectRow(0);
    m_form->deleteSelectedItem(); // of the map that is shown nothing is selected
    QCOMPARE(holding()->rowCount(), 1);
    view("inputRegisters")->selectRow(0);
    m_form->deleteSelectedItem();
    QCOMPARE(addresses(input()), QStringList({"6"}));
    QCOMPARE(addresses(holding()), QStringList({"7"}));
}

void TestRegisterMaps::hugeNumbersDoNoHarm()
{
    const QString most = "2147483647";
    load({row("a", "t", most, most), row("b", "t", "-2147483648", most)});
    m_form->handleImportedData({point("c", "string", most)}, source());
    QCOMPARE(addresses(holding()).last(), "4294967294");
    load({row("a", "t", most, most), row("b", "t", "-2147483648", most)});
    view("holdingRegisters")->selectRow(0);
    m_form->deleteSelectedItem();
    QCOMPARE(addresses(holding()), QStringList({"-4294967295"}));
}

QTEST_MAIN(TestRegisterMaps)
#include "tst_registermaps.moc"
