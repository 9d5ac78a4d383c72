#include "model/itemroles.h"
#include "parametertable/parametertable.h"
#include "standardformtest.h"
#include "standards/standardopcuaeditdialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QStandardItem>
#include <QTableWidget>
#include <QtTest>

// The checks of the cells of an OpcUA Standard, in added and in loaded rows.
class TestStandardOPCUARows : public StandardFormTest
{
    Q_OBJECT
public:
    TestStandardOPCUARows()
        : StandardFormTest("Line", "OpcUA")
    {
    }
private slots:
    void addressIsChecked_data();
    void addressIsChecked();
    void changeAmplitudeIsChecked_data();
    void changeAmplitudeIsChecked();
    void itemOfTheAmplitudeIsCheckedByItsSlot();
    void formulasAreChecked_data();
    void formulasAreChecked();
    void spatialIndexIsAPositiveNumber_data();
    void spatialIndexIsAPositiveNumber();
    void spatialIndexThatIsNoneGoesBackToOne();
    void slotsActOnTheirOwnColumnsOnly();
    void methodDecidesTheAmplitude();

private:
    static QLineEdit *editor(const QWidget &form, int row, int column);
    static QTableWidgetItem *cell(const QWidget &form, int row, int column);
    static void type(const QWidget &form, int row, int column, const QString &text);
    // Types into the first row, an added or a loaded one: the text stays, or goes with this message.
    void compareTyping(bool added, int column, const QString &text, bool kept, const QString &message);
};

namespace {

enum Column {
    Address,
    Name,
    SpatialIndex,
    NodeType,
    Permissions,
    Method,
    Amplitude,
    CollectionFormula,
    WriteFormula,
    DataType
};

QVariantList node(const QString &index = "1")
{
    return {"Pump", "a", index, "GUID Node", "r", "Change amplitude", "1", "X", "X", "bool"};
}

const QString indexBox = "Warning|The spatial index value type can only be filled with numbers.";

} // namespace

QLineEdit *TestStandardOPCUARows::editor(const QWidget &form, int row, int column)
{
    return qobject_cast<QLineEdit *>(form.findChild<QTableWidget *>()->cellWidget(row, column));
}

QTableWidgetItem *TestStandardOPCUARows::cell(const QWidget &form, int row, int column)
{
    return form.findChild<QTableWidget *>()->item(row, column);
}

// Types into a cell of either kind and ends the editing.
void TestStandardOPCUARows::type(const QWidget &form, int row, int column, const QString &text)
{
    if (QLineEdit *edit = editor(form, row, column)) {
        edit->setText(text + QLatin1Char('?')); // an editor that was not touched is not checked
        edit->setText(text);
        emit edit->editingFinished();
    } else {
        cell(form, row, column)->setText(text);
    }
}

void TestStandardOPCUARows::compareTyping(bool added, int column, const QString &text, bool kept,
                                          const QString &message)
{
    standardOPCUAEditDialog form(m_item, m_workspace);
    form.loadParameters(added ? RowList() : RowList{node()});
    form.addParameter();
    type(form, 0, column, text);
    QCOMPARE(form.findChild<ParameterTable *>()->text(0, column), kept ? text : QString());
    QCOMPARE(m_workspace->messages, kept ? QStringList() : QStringList{message});
}

void TestStandardOPCUARows::addressIsChecked_data()
{
    QTest::addColumn<bool>("added");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("kept");
    for (const bool added : {true, false}) {
        const QByteArray row = added ? "added" : "loaded";
        QTest::newRow(row + ", name") << added << "Pump.Speed_1" << true;
        QTest::newRow(row + ", any printable") << added << "ns=2;s=[1]{~!}" << true;
        QTest::newRow(row + ", empty") << added << "" << true;
        QTest::newRow(row + ", blank inside") << added << "Pump Speed" << false;
        QTest::newRow(row + ", Chinese") << added << "水泵" << false;
    }
}

void TestStandardOPCUARows::addressIsChecked()
{
    QFETCH(bool, added);
    QFETCH(QString, text);
    QFETCH(bool, kept);
    compareTyping(added, Address, text, kept,
                  "Invalid input in row 1: only letters, digits, underscores, and dots are allowed.");
}

void TestStandardOPCUARows::changeAmplitudeIsChecked_data()
{
    QTest::addColumn<bool>("added");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("kept");
    QTest::newRow("added, fraction") << true << "0.5" << true;
    QTest::newRow("added, minus") << true << "-3" << true;
    QTest::newRow("added, empty") << true << "" << true;
    QTest::newRow("added, letters") << true << "abc" << false;
    QTest::newRow("loaded, fraction") << false << "0.5" << true;
    QTest::newRow("loaded, minus") << false << "-3" << false;
    QTest::newRow("loaded, empty") << false << "" << false;
}

void TestStandardOPCUARows::changeAmplitudeIsChecked()
{
    QFETCH(bool, added);
    QFETCH(QString, text);
    QFETCH(bool, kept);
    standardOPCUAEditDialog form(m_item, m_workspace);
    form.loadParameters(added ? RowList() : RowList{node()});
    form.addParameter();
    if (!kept) {
        m_messages->expect();
    }
    type(form, 0, Amplitude, text);
    QCOMPARE(editor(form, 0, Amplitude)->text(), kept ? text : QString());
    QCOMPARE(m_messages->told(),
             kept ? QStringList()
                  : QStringList{"Warning|Only positive integers and floating-point numbers are allowed."});
    QCOMPARE(m_workspace->messages,
             kept || !added ? QStringList()
                            : QStringList{"Invalid input in row 1: only integers and floating-point numbers "
                                          "are allowed."});
}

void TestStandardOPCUARows::itemOfTheAmplitudeIsCheckedByItsSlot()
{
    standardOPCUAEditDialog form(m_item, m_workspace);
    form.addParameter();
    auto *table = form.findChild<QTableWidget *>();
    table->removeCellWidget(0, Amplitude);
    {
        const QSignalBlocker quiet(table);
        table->setItem(0, Amplitude, new QTableWidgetItem("abc"));
    }
    QVERIFY(QMetaObject::invokeMethod(&form, "validateChange", Q_ARG(int, 0), Q_ARG(int, Amplitude)));
    QCOMPARE(cell(form, 0, Amplitude)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"Invalid input in row 1: only integers and floating-point numbers are allowed."});
}

void TestStandardOPCUARows::formulasAreChecked_data()
{
    QTest::addColumn<bool>("added");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("kept");
    for (const bool added : {true, false}) {
        for (const int column : {int(CollectionFormula), int(WriteFormula)}) {
            const QByteArray row = QByteArray(added ? "added, " : "loaded, ") + QByteArray::number(column);
            QTest::newRow(row + ", good") << added << column << "X*0.1+2-3/4" << true;
            QTest::newRow(row + ", empty") << added << column << "" << true;
            QTest::newRow(row + ", small x") << added << column << "x*2" << false;
        }
    }
}

void TestStandardOPCUARows::formulasAreChecked()
{
    QFETCH(bool, added);
    QFETCH(int, column);
    QFETCH(QString, text);
    QFETCH(bool, kept);
    compareTyping(added, column, text, kept,
                  "Invalid input in row 1: only numbers, operators (+, -, *, /) and 'X' are allowed.");
}

void TestStandardOPCUARows::spatialIndexIsAPositiveNumber_data()
{
    QTest::addColumn<bool>("added");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("kept");
    for (const bool added : {true, false}) {
        const QByteArray row = added ? "added" : "loaded";
        QTest::newRow(row + ", one") << added << "1" << true;
        QTest::newRow(row + ", large") << added << "65535" << true;
        QTest::newRow(row + ", blanks around") << added << " 4 " << true;
        QTest::newRow(row + ", zero") << added << "0" << false;
        QTest::newRow(row + ", minus") << added << "-2" << false;
        QTest::newRow(row + ", fraction") << added << "1.5" << false;
        QTest::newRow(row + ", letters") << added << "two" << false;
        QTest::newRow(row + ", empty") << added << "" << false;
    }
}

void TestStandardOPCUARows::spatialIndexIsAPositiveNumber()
{
    QFETCH(bool, added);
    QFETCH(QString, text);
    QFETCH(bool, kept);
    standardOPCUAEditDialog form(m_item, m_workspace);
    form.loadParameters(added ? RowList() : RowList{node()});
    form.addParameter();
    type(form, 0, SpatialIndex, "7");
    if (!kept) {
        m_messages->expect();
    }
    type(form, 0, SpatialIndex, text);
    QCOMPARE(cell(form, 0, SpatialIndex)->text(), kept ? text : "7");
    QCOMPARE(m_messages->told(), kept ? QStringList() : QStringList{indexBox});
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestStandardOPCUARows::spatialIndexThatIsNoneGoesBackToOne()
{
    standardOPCUAEditDialog form(m_item, m_workspace);
    form.loadParameters({node("x")});
    QCOMPARE(cell(form, 0, SpatialIndex)->text(), "x");
    m_messages->expect();
    QVERIFY(QMetaObject::invokeMethod(&form, "validateLength", Q_ARG(int, 0), Q_ARG(int, SpatialIndex)));
    QCOMPARE(cell(form, 0, SpatialIndex)->text(), "1");
    QCOMPARE(m_messages->told(), QStringList{indexBox});
}

void TestStandardOPCUARows::slotsActOnTheirOwnColumnsOnly()
{
    standardOPCUAEditDialog form(m_item, m_workspace);
    QVariantList bad = node("x");
    bad[Address] = "a b";
    bad[Name] = "n n";
    bad[WriteFormula] = "f";
    form.loadParameters({bad});
    for (const char *slot : {"validateAddr", "validateChange", "validateFormula", "validateLength"}) {
        QVERIFY(QMetaObject::invokeMethod(&form, slot, Q_ARG(int, 0), Q_ARG(int, Name)));
        QVERIFY(QMetaObject::invokeMethod(&form, slot, Q_ARG(int, 3), Q_ARG(int, Address)));
        QVERIFY(QMetaObject::invokeMethod(&form, slot, Q_ARG(int, -1), Q_ARG(int, -1)));
    }
    form.saveChanges();
    QCOMPARE(m_item->data(standardDatasRole).value<RowList>(), RowList{bad});
    form.validateAddr(0, Address);
    form.validateFormula(0, WriteFormula);
    QCOMPARE(cell(form, 0, Address)->text(), QString());
    QCOMPARE(cell(form, 0, WriteFormula)->text(), QString());
}

void TestStandardOPCUARows::methodDecidesTheAmplitude()
{
    standardOPCUAEditDialog form(m_item, m_workspace);
    form.loadParameters({node()});
    form.addParameter();
    auto *table = form.findChild<QTableWidget *>();
    QVERIFY(editor(form, 0, Amplitude)->isEnabled());
    QVERIFY(!editor(form, 1, Amplitude)->isEnabled());
    for (int row = 0; row < 2; ++row) {
        auto *method = qobject_cast<QComboBox *>(table->cellWidget(row, Method));
        method->setCurrentText("Change amplitude");
        QVERIFY(editor(form, row, Amplitude)->isEnabled());
        type(form, row, Amplitude, "2");
        method->setCurrentText("Change");
        QVERIFY(!editor(form, row, Amplitude)->isEnabled());
    }
    QCOMPARE(editor(form, 0, Amplitude)->text(), "2");
    QCOMPARE(editor(form, 1, Amplitude)->text(), QString());
}

QTEST_MAIN(TestStandardOPCUARows)
#include "tst_standardopcuarows.moc"
