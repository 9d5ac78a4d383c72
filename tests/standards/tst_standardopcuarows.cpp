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
    void cellKeepsWhatIsAllowed_data();
    void cellKeepsWhatIsAllowed();
    void itemOfTheAmplitudeIsCheckedByItsSlot();
    void spatialIndexThatIsNoneGoesBackToOne();
    void slotsActOnTheirOwnColumnsOnly();
    void methodDecidesTheAmplitude();

private:
    static QLineEdit *editor(const QWidget &form, int row, int column);
    static QTableWidgetItem *cell(const QWidget &form, int row, int column);
    static void type(const QWidget &form, int row, int column, const QString &text);
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

const QString indexMessage = "Warning|The spatial index value type can only be filled with numbers.";
const QString amplitudeMessage = "Warning|Only positive integers and floating-point numbers are allowed.";

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

void TestStandardOPCUARows::cellKeepsWhatIsAllowed_data()
{
    QTest::addColumn<bool>("added");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("kept");
    for (const bool added : {true, false}) {
        const auto add = [added](Column column, const char *name, const QString &text, bool kept) {
            QTest::addRow("%s row, column %d, %s", added ? "added" : "loaded", column, name)
                << added << int(column) << text << kept;
        };
        add(Address, "name", "Pump.Speed_1", true);
        add(Address, "any printable", "ns=2;s=[1]{~!}", true);
        add(Address, "empty", "", true);
        add(Address, "blank inside", "Pump Speed", false);
        add(Address, "Chinese", "水泵", false);
        add(Amplitude, "fraction", "0.5", true);
        add(Amplitude, "minus", "-3", added);
        add(Amplitude, "empty", "", added);
        add(Amplitude, "letters", "abc", false);
        for (const Column formula : {CollectionFormula, WriteFormula}) {
            add(formula, "good", "X*0.1+2-3/4", true);
            add(formula, "empty", "", true);
            add(formula, "small x", "x*2", false);
        }
        add(SpatialIndex, "one", "1", true);
        add(SpatialIndex, "large", "65535", true);
        add(SpatialIndex, "blanks around", " 4 ", true);
        add(SpatialIndex, "zero", "0", false);
        add(SpatialIndex, "minus", "-2", false);
        add(SpatialIndex, "fraction", "1.5", false);
        add(SpatialIndex, "letters", "two", false);
        add(SpatialIndex, "empty", "", false);
    }
}

// A spatial index that is refused goes back to the one before, any other text is emptied.
void TestStandardOPCUARows::cellKeepsWhatIsAllowed()
{
    QFETCH(bool, added);
    QFETCH(int, column);
    QFETCH(QString, text);
    QFETCH(bool, kept);
    const char *const noted = column == Address
        ? "Invalid input in row 1: only letters, digits, underscores, and dots are allowed."
        : column == Amplitude
        ? "Invalid input in row 1: only integers and floating-point numbers are allowed."
        : "Invalid input in row 1: only numbers, operators (+, -, *, /) and 'X' are allowed.";
    const bool isTold = !kept && (column == Amplitude || column == SpatialIndex);
    const bool isNoted = !kept && column != SpatialIndex && (added || column != Amplitude);
    standardOPCUAEditDialog form(m_item, m_workspace);
    form.loadParameters(added ? RowList() : RowList{node()});
    form.addParameter();
    if (column == SpatialIndex) {
        type(form, 0, column, "7");
    }
    if (isTold) {
        m_messages->expect();
    }
    type(form, 0, column, text);
    QCOMPARE(form.findChild<ParameterTable *>()->text(0, column),
             kept                         ? text
                 : column == SpatialIndex ? QString("7")
                                          : "");
    QCOMPARE(m_messages->told(),
             isTold ? QStringList(column == SpatialIndex ? indexMessage : amplitudeMessage) : QStringList());
    QCOMPARE(m_workspace->messages, isNoted ? QStringList(QLatin1String(noted)) : QStringList());
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

void TestStandardOPCUARows::spatialIndexThatIsNoneGoesBackToOne()
{
    standardOPCUAEditDialog form(m_item, m_workspace);
    form.loadParameters({node("x")});
    QCOMPARE(cell(form, 0, SpatialIndex)->text(), "x");
    m_messages->expect();
    QVERIFY(QMetaObject::invokeMethod(&form, "validateLength", Q_ARG(int, 0), Q_ARG(int, SpatialIndex)));
    QCOMPARE(cell(form, 0, SpatialIndex)->text(), "1");
    QCOMPARE(m_messages->told(), QStringList{indexMessage});
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
    QCOMPARE(rowsOf(*m_item, standardDatasRole), RowList{bad});
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
