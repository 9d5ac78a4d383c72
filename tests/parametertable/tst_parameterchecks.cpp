#include "parameterformtest.h"

#include <QTimer>

namespace {

const QString lengthMessage = "Warning|Length must be a positive integer between 1 and 10.";
const QString numberMessage = "Warning|Only positive integers and floating-point numbers are allowed.";

} // namespace

// The parameter table in both variants, as a user meets it: what its cells take, and what is told.
class TestParameterChecks : public ParameterFormTest
{
    Q_OBJECT
private slots:
    void typeDecidesTheLength_data();
    void typeDecidesTheLength();
    void cellKeepsWhatIsAllowed_data();
    void cellKeepsWhatIsAllowed();
    void methodDecidesTheAmplitude();
    void untouchedEditorIsNotChecked();
    void duplicateNameOfAnAddedRow();
    void duplicateNameOfALoadedRow();
    void addedRowKeepsTheNumberOfItsCreation();
    void modbusNameIsCheckedWhileTyping();
    void modbusNameRefusesACommaFirst();
    void modbusLoadedNameNamesTheOtherRow();
    void modbusLoadedAddressIsNotChecked();
    void modbusAddressIsLookedUpInTheLatestTable();
    void modbusAddressOfTheLatestTableIsWatchedInstead();
    void withoutAWindowNothingIsTold();
    void itemsOfLengthAndAmplitude();
    void amplitudeCellSlots();
    void oneWarningStandsAtATime_data();
    void oneWarningStandsAtATime();
};

void TestParameterChecks::typeDecidesTheLength_data()
{
    QTest::addColumn<bool>("added");
    QTest::newRow("added row") << true;
    QTest::newRow("loaded row") << false;
}

void TestParameterChecks::typeDecidesTheLength()
{
    QFETCH(bool, added);
    if (added) {
        m_form->addParameter();
    } else {
        m_form->loadParameters({plcRow("1", "a")});
    }
    list(0, Type)->setCurrentText("string");
    QVERIFY(editor(0, Length)->isEnabled());
    type(0, Length, "11");
    QCOMPARE(editor(0, Length)->text(), "11");
    list(0, Type)->setCurrentText("int16");
    QVERIFY(!editor(0, Length)->isEnabled());
    QCOMPARE(editor(0, Length)->text(), "1");
    list(0, Type)->setCurrentText("string");
    QVERIFY(editor(0, Length)->isEnabled());
    QCOMPARE(editor(0, Length)->text(), "1");
}

void TestParameterChecks::cellKeepsWhatIsAllowed_data()
{
    QTest::addColumn<bool>("added");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("kept");
    const auto add = [](bool added, Column column, const char *name, const QString &typed, bool kept) {
        QTest::addRow("%s row, column %d, %s", added ? "added" : "loaded", column, name)
            << added << int(column) << typed << kept;
    };
    add(true, Length, "zero", "0", false);
    add(true, Length, "minus", "-3", false);
    add(true, Length, "empty", "", false);
    add(true, Length, "letters", "ten", false);
    add(true, Length, "a fraction", "1.5", false);
    add(true, Length, "one", "1", true);
    add(true, Length, "eleven", "11", true); // no upper bound, whatever the message says
    add(true, Length, "five hundred", "500", true);
    add(true, Length, "blanks around", " 4 ", true);
    add(true, Amplitude, "empty", "", true);
    add(true, Amplitude, "integer", "12", true);
    add(true, Amplitude, "fraction", "0.5", true);
    add(true, Amplitude, "no leading digit", ".5", true);
    add(true, Amplitude, "minus", "-3", true);
    add(true, Amplitude, "trailing point", "5.", false);
    add(true, Amplitude, "letters", "abc", false);
    add(true, Amplitude, "exponent", "1e3", false);
    add(false, Amplitude, "number", "2.5", true);
    add(false, Amplitude, "exponent", "1e3", true);
    add(false, Amplitude, "no number by its name", "nan", true);
    add(false, Amplitude, "infinite", "inf", true);
    add(false, Amplitude, "negative zero", "-0", true);
    add(false, Amplitude, "minus", "-3", false);
    add(false, Amplitude, "negative infinite", "-inf", false);
    add(false, Amplitude, "empty", "", false);
    add(false, Amplitude, "letters", "abc", false);
    add(true, Address, "empty", "", true);
    add(true, Address, "letters and digits", "DB1.DBW0", true);
    add(true, Address, "any printable ASCII", "!~#,;", true);
    add(true, Address, "blanks around", " D1 ", true);
    add(true, Address, "blank inside", "D 1", false);
    add(true, Address, "Chinese", "地址", false);
    add(false, Address, "blank inside", "D 1", false);
    for (const bool added : {true, false}) {
        for (const Column formula : {Collection, Write}) {
            add(added, formula, "good", "X*0.1+2-3/4", true);
            add(added, formula, "empty", "", true);
            add(added, formula, "small x", "x*2", false);
            add(added, formula, "brackets", "(X)", false);
        }
    }
}

// A length that is refused goes back to 1, any other text is emptied.
void TestParameterChecks::cellKeepsWhatIsAllowed()
{
    QFETCH(bool, added);
    QFETCH(int, column);
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    const char *const noted = column == Address ? "Invalid input in row 2: only letters, digits, "
                                                  "underscores, dots, colons, and brackets are allowed."
        : column == Amplitude
        ? "Invalid input in row 2: only integers and floating-point numbers are allowed."
        : "Invalid input in row 2: only numbers, operators (+, -, *, /) and 'X' are allowed.";
    const bool isTold = !kept && (column == Length || column == Amplitude);
    const bool isNoted = !kept && column != Length && (added || column != Amplitude);
    if (added) {
        m_form->addParameter();
        m_form->addParameter();
    } else {
        const QVariantList row = plcRow("2", "b", "Change amplitude", "3");
        m_form->loadParameters({plcRow("1", "a"), row});
    }
    if (isTold) {
        m_messages->expect();
    }
    if (QLineEdit *cell = editor(1, column)) {
        cell->setText("0");
        type(1, column, typed);
    } else {
        edit(1, column, typed);
    }
    QCOMPARE(m_table->text(1, column), kept ? typed : column == Length ? QString("1") : "");
    QCOMPARE(m_messages->told(),
             isTold ? QStringList(column == Length ? lengthMessage : numberMessage) : QStringList());
    QCOMPARE(m_workspace->messages, isNoted ? QStringList(QLatin1String(noted)) : QStringList());
}

void TestParameterChecks::methodDecidesTheAmplitude()
{
    m_form->loadParameters({plcRow("1", "a", "Change amplitude", "3")});
    m_form->addParameter();
    list(1, Method)->setCurrentText("Change amplitude");
    QVERIFY(editor(1, Amplitude)->isEnabled());
    type(1, Amplitude, "4");
    for (const int row : {0, 1}) {
        list(row, Method)->setCurrentText("Change");
        QVERIFY(!editor(row, Amplitude)->isEnabled());
    }
    QCOMPARE(editor(0, Amplitude)->text(), "3");
    QCOMPARE(editor(1, Amplitude)->text(), QString());
    QCOMPARE(m_table->rows().at(0).at(Amplitude).toString(), "3");
}

void TestParameterChecks::untouchedEditorIsNotChecked()
{
    m_form->addParameter();
    {
        // A text that stands there without having been typed, as an undone edit would leave it.
        const QSignalBlocker quiet(editor(0, Address));
        editor(0, Address)->setText("D 1");
    }
    emit editor(0, Address)->editingFinished();
    QCOMPARE(editor(0, Address)->text(), "D 1");
    editor(0, Address)->setText("D 2");
    editor(0, Address)->setText("D 1");
    emit editor(0, Address)->editingFinished();
    QCOMPARE(editor(0, Address)->text(), QString());
}

void TestParameterChecks::duplicateNameOfAnAddedRow()
{
    m_form->addParameter();
    m_form->addParameter();
    m_form->addParameter();
    type(0, Name, "volt");
    type(1, Name, "Volt");
    type(2, Name, " volt ");
    QCOMPARE(editor(1, Name)->text(), "Volt");
    QCOMPARE(editor(2, Name)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '1' line already exists. Please use a different name."});
}

void TestParameterChecks::duplicateNameOfALoadedRow()
{
    m_form->loadParameters({plcRow("1", "a"), plcRow("2", "b"), plcRow("3", " a")});
    edit(1, Name, "a");
    QCOMPARE(m_table->item(1, Name)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '2' line already exists. Please use a different name."});
    edit(1, Name, "a ");
    QCOMPARE(m_table->item(1, Name)->text(), "a ");
    edit(1, Name, QString());
    QCOMPARE(m_workspace->messages.size(), 1);
}

void TestParameterChecks::addedRowKeepsTheNumberOfItsCreation()
{
    m_form->addParameter();
    m_form->addParameter();
    m_table->setCurrentCell(0, 0);
    m_form->removeParameter();
    // The row that was the second is now the first, and takes itself for a row of the same name.
    type(0, Name, "volt");
    QCOMPARE(editor(0, Name)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '1' line already exists. Please use a different name."});
    type(0, Address, "D 1");
    QCOMPARE(m_workspace->messages.last(),
             "Invalid input in row 2: only letters, digits, underscores, dots, colons, and "
             "brackets are allowed.");
}

void TestParameterChecks::modbusNameIsCheckedWhileTyping()
{
    make(ParameterVariant::modbus());
    m_form->loadParameters({modbusRow("0", "ab")});
    m_form->addParameter();
    editor(1, Name)->setText("a");
    QCOMPARE(editor(1, Name)->text(), "a");
    editor(1, Name)->setText("ab");
    QCOMPARE(editor(1, Name)->text(), QString());
    QCOMPARE(
        m_workspace->messages,
        QStringList{"The name of the '1' line already exists in this tab. Please use a different name."});
    editor(1, Name)->setText("ab ");
    QCOMPARE(editor(1, Name)->text(), "ab ");
}

void TestParameterChecks::modbusNameRefusesACommaFirst()
{
    make(ParameterVariant::modbus());
    m_form->loadParameters({modbusRow("0", "a"), modbusRow("1", "b")});
    m_form->addParameter();
    editor(2, Name)->setText("x,y");
    QCOMPARE(editor(2, Name)->text(), QString());
    edit(1, Name, "a,");
    QCOMPARE(m_table->item(1, Name)->text(), QString());
    const QString refused = "The name cannot contain a comma. Please use a different name.";
    QCOMPARE(m_workspace->messages, (QStringList{refused, refused}));
}

void TestParameterChecks::modbusLoadedNameNamesTheOtherRow()
{
    make(ParameterVariant::modbus());
    m_form->loadParameters({modbusRow("0", "a"), modbusRow("1", "b")});
    edit(1, Name, "a");
    QCOMPARE(m_table->item(1, Name)->text(), QString());
    QCOMPARE(
        m_workspace->messages,
        QStringList{"The name of the '1' line already exists in this tab. Please use a different name."});
}

void TestParameterChecks::modbusLoadedAddressIsNotChecked()
{
    make(ParameterVariant::modbus());
    m_form->loadParameters({modbusRow("0", "a")});
    edit(0, Address, "D 1");
    QCOMPARE(m_table->item(0, Address)->text(), "D 1");
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterChecks::modbusAddressIsLookedUpInTheLatestTable()
{
    make(ParameterVariant::modbus());
    m_form->addParameter();
    type(0, Address, "D 1");
    QCOMPARE(editor(0, Address)->text(), QString());

    make(ParameterVariant::modbus());
    ParameterTable *other = m_form->makeTable(m_form);
    m_latest = other;
    m_form->addParameter();
    type(0, Address, "D 1");
    QCOMPARE(editor(0, Address)->text(), "D 1");
}

void TestParameterChecks::modbusAddressOfTheLatestTableIsWatchedInstead()
{
    make(ParameterVariant::modbus());
    m_form->addParameter();
    QLineEdit *typedInto = editor(0, Address);
    ParameterTable *first = m_table;
    ParameterTable *latest = m_form->makeTable(m_form);
    m_table = latest;
    m_latest = latest;
    m_form->addParameter();
    QLineEdit *watched = editor(0, Address);
    {
        const QSignalBlocker quiet(watched);
        watched->setText("D 1");
    }
    m_table = first;
    typedInto->setText("D 2");
    emit typedInto->editingFinished();
    QCOMPARE(typedInto->text(), "D 2");
    emit watched->editingFinished();
    QCOMPARE(watched->text(), QString());
    QCOMPARE(m_workspace->messages.size(), 1);
}

void TestParameterChecks::withoutAWindowNothingIsTold()
{
    m_workspace = nullptr;
    make(ParameterVariant::plc());
    m_form->addParameter();
    type(0, Address, "D 1");
    type(0, Amplitude, "abc");
    QCOMPARE(editor(0, Address)->text(), QString());
    QCOMPARE(editor(0, Amplitude)->text(), QString());
    QCOMPARE(m_messages->told(), QStringList());
}

void TestParameterChecks::itemsOfLengthAndAmplitude()
{
    m_table->setRowCount(1);
    m_table->setItem(0, Length, new QTableWidgetItem("5"));
    QCOMPARE(m_table->item(0, Length)->data(Qt::UserRole).toString(), "5");
    m_messages->expect();
    edit(0, Length, "0");
    QCOMPARE(m_messages->told(), QStringList{"Warning|Length must be a positive integer."});
    QCOMPARE(m_table->item(0, Length)->text(), "5");
    m_table->setItem(0, Amplitude, new QTableWidgetItem("1"));
    edit(0, Amplitude, "abc");
    QCOMPARE(m_table->item(0, Amplitude)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"Invalid input in row 1: only integers and floating-point numbers are allowed."});
}

void TestParameterChecks::amplitudeCellSlots()
{
    m_form->addParameter();
    m_form->updateChangeAmplitudeCell(0, true);
    QVERIFY(editor(0, Amplitude)->isEnabled());
    editor(0, Amplitude)->setText("3");
    m_form->updateChangeAmplitudeCell(0, false);
    QVERIFY(!editor(0, Amplitude)->isEnabled());
    QCOMPARE(editor(0, Amplitude)->text(), QString());
    m_table->setRowCount(2);
    m_table->setItem(1, Amplitude, new QTableWidgetItem("3"));
    m_form->updateloadChangeAmplitudeCell(1, false);
    QVERIFY(!(m_table->item(1, Amplitude)->flags() & Qt::ItemIsEditable));
    QCOMPARE(m_table->item(1, Amplitude)->text(), QString());
    m_form->updateloadChangeAmplitudeCell(1, true);
    QVERIFY(m_table->item(1, Amplitude)->flags() & Qt::ItemIsEditable);
    m_form->updateChangeAmplitudeCell(9, true);
    m_form->updateloadChangeAmplitudeCell(9, true);
}

void TestParameterChecks::oneWarningStandsAtATime_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("told");
    QTest::addColumn<QString>("after");
    QTest::newRow("length") << int(Length) << lengthMessage << "1";
    QTest::newRow("amplitude") << int(Amplitude) << numberMessage << "";
}

void TestParameterChecks::oneWarningStandsAtATime()
{
    QFETCH(int, column);
    QFETCH(QString, told);
    QFETCH(QString, after);
    const QString bad = "-";
    m_form->loadParameters({plcRow("1", "a", "Change amplitude"), plcRow("2", "b", "Change amplitude")});
    editor(0, column)->setText(bad);
    editor(1, column)->setText(bad);
    // The message box takes the focus, and so ends the editing of the other cell.
    QTimer::singleShot(0, m_form, [this, column] { emit editor(1, column)->editingFinished(); });
    m_messages->expect();
    emit editor(0, column)->editingFinished();
    QCOMPARE(m_messages->told(), QStringList{told});
    QCOMPARE(editor(0, column)->text(), after);
    QCOMPARE(editor(1, column)->text(), bad);
    m_messages->expect();
    emit editor(1, column)->editingFinished();
    QCOMPARE(m_messages->told(), (QStringList{told, told}));
}

QTEST_MAIN(TestParameterChecks)
#include "tst_parameterchecks.moc"
