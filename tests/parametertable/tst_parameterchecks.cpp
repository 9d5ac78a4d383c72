#include "parameterformtest.h"

#include <QTimer>

namespace {

const QString lengthBox = "Warning|Length must be a positive integer between 1 and 10.";
const QString numberBox = "Warning|Only positive integers and floating-point numbers are allowed.";

} // namespace

// The parameter table in both variants, as a user meets it: what its cells take, and what is told.
class TestParameterChecks : public ParameterFormTest
{
    Q_OBJECT
private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void typeDecidesTheLength_data();
    void typeDecidesTheLength();
    void lengthRuleHasNoUpperBound_data();
    void lengthRuleHasNoUpperBound();
    void methodDecidesTheAmplitude();
    void amplitudeOfAnAddedRow_data();
    void amplitudeOfAnAddedRow();
    void amplitudeOfALoadedRow_data();
    void amplitudeOfALoadedRow();
    void addressOfAnAddedRow_data();
    void addressOfAnAddedRow();
    void addressOfALoadedRow();
    void formulas_data();
    void formulas();
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

void TestParameterChecks::lengthRuleHasNoUpperBound_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("kept");
    QTest::newRow("zero") << "0" << false;
    QTest::newRow("minus") << "-3" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("letters") << "ten" << false;
    QTest::newRow("a fraction") << "1.5" << false;
    QTest::newRow("one") << "1" << true;
    QTest::newRow("eleven") << "11" << true;
    QTest::newRow("five hundred") << "500" << true;
    QTest::newRow("blanks around") << " 4 " << true;
}

void TestParameterChecks::lengthRuleHasNoUpperBound()
{
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    m_form->addParameter();
    if (!kept) {
        m_messages->expect();
    }
    type(0, Length, typed);
    QCOMPARE(editor(0, Length)->text(), kept ? typed : "1");
    QCOMPARE(m_messages->told(), kept ? QStringList() : QStringList{lengthBox});
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

void TestParameterChecks::amplitudeOfAnAddedRow_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("kept");
    QTest::newRow("empty") << "" << true;
    QTest::newRow("integer") << "12" << true;
    QTest::newRow("fraction") << "0.5" << true;
    QTest::newRow("no leading digit") << ".5" << true;
    QTest::newRow("minus") << "-3" << true;
    QTest::newRow("trailing point") << "5." << false;
    QTest::newRow("letters") << "abc" << false;
    QTest::newRow("exponent") << "1e3" << false;
}

void TestParameterChecks::amplitudeOfAnAddedRow()
{
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    m_form->addParameter();
    editor(0, Amplitude)->setText("0");
    if (!kept) {
        m_messages->expect();
    }
    type(0, Amplitude, typed);
    QCOMPARE(editor(0, Amplitude)->text(), kept ? typed : QString());
    QCOMPARE(m_messages->told(), kept ? QStringList() : QStringList{numberBox});
    QCOMPARE(
        m_workspace->messages,
        kept ? QStringList()
             : QStringList{"Invalid input in row 1: only integers and floating-point numbers are allowed."});
}

void TestParameterChecks::amplitudeOfALoadedRow_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("kept");
    QTest::newRow("number") << "2.5" << true;
    QTest::newRow("exponent") << "1e3" << true;
    QTest::newRow("no number by its name") << "nan" << true;
    QTest::newRow("infinite") << "inf" << true;
    QTest::newRow("negative zero") << "-0" << true;
    QTest::newRow("minus") << "-3" << false;
    QTest::newRow("negative infinite") << "-inf" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("letters") << "abc" << false;
}

void TestParameterChecks::amplitudeOfALoadedRow()
{
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    m_form->loadParameters({plcRow("1", "a", "Change amplitude", "3")});
    if (!kept) {
        m_messages->expect();
    }
    type(0, Amplitude, typed);
    QCOMPARE(editor(0, Amplitude)->text(), kept ? typed : QString());
    QCOMPARE(m_messages->told(), kept ? QStringList() : QStringList{numberBox});
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterChecks::addressOfAnAddedRow_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("kept");
    QTest::newRow("empty") << "" << true;
    QTest::newRow("letters and digits") << "DB1.DBW0" << true;
    QTest::newRow("any printable ASCII") << "!~#,;" << true;
    QTest::newRow("blanks around") << " D1 " << true;
    QTest::newRow("blank inside") << "D 1" << false;
    QTest::newRow("Chinese") << "地址" << false;
}

void TestParameterChecks::addressOfAnAddedRow()
{
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    m_form->addParameter();
    editor(0, Address)->setText("x");
    type(0, Address, typed);
    QCOMPARE(editor(0, Address)->text(), kept ? typed : QString());
    QCOMPARE(m_workspace->messages,
             kept
                 ? QStringList()
                 : QStringList{"Invalid input in row 1: only letters, digits, underscores, dots, colons, and "
                               "brackets are allowed."});
}

void TestParameterChecks::addressOfALoadedRow()
{
    m_form->loadParameters({plcRow("1", "a"), plcRow("2", "b")});
    edit(1, Address, "D 1");
    QCOMPARE(m_table->item(1, Address)->text(), QString());
    QCOMPARE(
        m_workspace->messages,
        QStringList{"Invalid input in row 2: only letters, digits, underscores, dots, colons, and brackets "
                    "are allowed."});
}

void TestParameterChecks::formulas_data()
{
    QTest::addColumn<bool>("added");
    QTest::addColumn<int>("column");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("kept");
    for (const bool added : {true, false}) {
        for (const int column : {int(Collection), int(Write)}) {
            const QByteArray row = QByteArray(added ? "added, " : "loaded, ") + QByteArray::number(column);
            QTest::newRow(row + ", good") << added << column << "X*0.1+2-3/4" << true;
            QTest::newRow(row + ", empty") << added << column << "" << true;
            QTest::newRow(row + ", small x") << added << column << "x*2" << false;
            QTest::newRow(row + ", brackets") << added << column << "(X)" << false;
        }
    }
}

void TestParameterChecks::formulas()
{
    QFETCH(bool, added);
    QFETCH(int, column);
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    if (added) {
        m_form->addParameter();
        editor(0, column)->setText("X");
        type(0, column, typed);
    } else {
        m_form->loadParameters({plcRow("1", "a")});
        edit(0, column, typed);
    }
    QCOMPARE(m_table->text(0, column), kept ? typed : QString());
    QCOMPARE(m_workspace->messages,
             kept ? QStringList()
                  : QStringList{
                      "Invalid input in row 1: only numbers, operators (+, -, *, /) and 'X' are allowed."});
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
    delete m_workspace;
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
    QTest::newRow("length") << int(Length) << lengthBox << "1";
    QTest::newRow("amplitude") << int(Amplitude) << numberBox << "";
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
