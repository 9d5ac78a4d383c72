#include "plc/parametereditor.h"
#include "support/messageboxes.h"
#include "support/workspacefake.h"

#include <QComboBox>
#include <QDialog>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTableWidget>
#include <QtTest>

// The parameter table in both variants, as a user meets it: rows, cell rules, messages.
class TestParameterEditor : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void columnsOfBothVariants_data();
    void columnsOfBothVariants();
    void untouchedAddedRowStoresItsDefaults();
    void loadedRowsComeBackAsTheyWere_data();
    void loadedRowsComeBackAsTheyWere();
    void unknownChoicesFallToTheFirstEntry();
    void storedMethodIsShownTranslated();
    void fieldUnderTheButtonStaysInTheRow();
    void shortAndLongRowsDoNoHarm();
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
    void deleteButtonRemovesTheCurrentRow();
    void clickedDeleteButtonRemovesTheCurrentRow();
    void removeAllEmptiesTheTable();
    void wheelIsLeftToTheForm();
    void withoutAWindowNothingIsTold();
    void fillingRaisesNoMessage();
    void itemsOfLengthAndAmplitude();
    void amplitudeCellSlots();
    void twoThousandRowsAreHandledInOneGo();
    void rowsAreMadeUnseenAndInTheirPlace();

private:
    void make(const ParameterVariant &variant);
    QLineEdit *editor(int row, int column) const;
    QComboBox *list(int row, int column) const;
    void type(int row, int column, const QString &text) const;
    void edit(int row, int column, const QString &text) const { m_table->item(row, column)->setText(text); }

    QDialog *m_form = nullptr;
    QTableWidget *m_table = nullptr;
    QTableWidget *m_latest = nullptr;
    ParameterEditor *m_editor = nullptr;
    WorkspaceFake *m_workspace = nullptr;
    MessageBoxes *m_boxes = nullptr;
};

namespace {

enum Column { Address, Name, Type, Length, Permissions, Method, Amplitude, Collection, Write, Button };

QVariantList plcRow(const QString &address, const QString &name, const QString &method = QStringLiteral("Timed"),
                    const QString &amplitude = QString(QLatin1String("")))
{
    return {address, name, QStringLiteral("int16"), QStringLiteral("1"), QStringLiteral("r"),
            method,  amplitude, QStringLiteral("X*2"), QStringLiteral("X/2")};
}

QVariantList modbusRow(const QString &address, const QString &name)
{
    return {address, name, QStringLiteral("float"), QStringLiteral("1"), QStringLiteral("rw")};
}

const QString lengthBox = QStringLiteral("Warning|Length must be a positive integer between 1 and 10.");
const QString numberBox
    = QStringLiteral("Warning|Only positive integers and floating-point numbers are allowed.");

} // namespace

void TestParameterEditor::init()
{
    m_workspace = new WorkspaceFake;
    m_boxes = new MessageBoxes(this);
    make(ParameterVariant::plc());
}

void TestParameterEditor::cleanup()
{
    QCOMPARE(m_boxes->unexpected(), QStringList());
    QCOMPARE(m_boxes->pending(), 0);
    delete m_form;
    m_form = nullptr;
    delete m_boxes;
    delete m_workspace;
}

void TestParameterEditor::make(const ParameterVariant &variant)
{
    delete m_form;
    m_form = new QDialog;
    m_table = new QTableWidget(m_form);
    m_latest = m_table;
    m_editor = new ParameterEditor(
        variant, m_form, m_workspace, [this] { return m_table; }, [this] { return m_latest; });
    m_editor->prepare(m_table);
}

QLineEdit *TestParameterEditor::editor(int row, int column) const
{
    return qobject_cast<QLineEdit *>(m_table->cellWidget(row, column));
}

QComboBox *TestParameterEditor::list(int row, int column) const
{
    return qobject_cast<QComboBox *>(m_table->cellWidget(row, column));
}

// Types into an editor and ends the editing.
void TestParameterEditor::type(int row, int column, const QString &text) const
{
    QLineEdit *cell = editor(row, column);
    cell->setText(text);
    emit cell->editingFinished();
}

void TestParameterEditor::columnsOfBothVariants_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QStringList>("headers");
    QTest::addColumn<QList<int>>("widths");
    QTest::newRow("PLC") << false
                         << QStringList{"Address", "Name", "Type", "Length", "Permissions", "Reporting Method",
                                        "Change Amplitude", "Collection Formula", "Write Formula", "Deleat"}
                         << QList<int>{70, 70, 80, 70, 70, 120, 80, 100, 100, 35};
    QTest::newRow("Modbus") << true
                            << QStringList{"Address", "Name", "Type", "Length", "Permissions", "Deleat"}
                            << QList<int>{70, 70, 80, 70, 70, 35};
}

void TestParameterEditor::columnsOfBothVariants()
{
    QFETCH(bool, modbus);
    QFETCH(QStringList, headers);
    QFETCH(QList<int>, widths);
    make(modbus ? ParameterVariant::modbus() : ParameterVariant::plc());
    QStringList shown;
    QList<int> shownWidths;
    for (int column = 0; column < m_table->columnCount(); ++column) {
        shown.append(m_table->horizontalHeaderItem(column)->text());
        shownWidths.append(m_table->columnWidth(column));
    }
    QCOMPARE(shown, headers);
    QCOMPARE(shownWidths, widths);
    QCOMPARE(m_table->styleSheet(), QStringLiteral("QTableWidget { border: none; }"));
    QCOMPARE(m_table->inputMethodHints(), Qt::InputMethodHints(Qt::ImhHiddenText));
    QCOMPARE(m_table->maximumHeight() == 600, modbus);
}

void TestParameterEditor::untouchedAddedRowStoresItsDefaults()
{
    m_editor->addParameter();
    QCOMPARE(m_editor->rows(m_table),
             RowList{QVariantList({"", "", "bool", "1", "r", "Timed", "", "", ""})});
    QVERIFY(!editor(0, Length)->isEnabled());
    QVERIFY(!editor(0, Amplitude)->isEnabled());
    auto *button = qobject_cast<QPushButton *>(m_table->cellWidget(0, Button));
    QCOMPARE(button->size(), QSize(35, 35));
}

void TestParameterEditor::loadedRowsComeBackAsTheyWere_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QList<QVariantList>>("rows");
    QTest::newRow("PLC") << false
                         << RowList{plcRow("D100", "a"), plcRow("", "", "Change"),
                                    plcRow("D2", "c", "Change amplitude", "0.5"), plcRow("D3", "d", "Change", "7")};
    QTest::newRow("Modbus") << true << RowList{modbusRow("0", "a"), modbusRow("", "")};
    QTest::newRow("none") << false << RowList();
}

void TestParameterEditor::loadedRowsComeBackAsTheyWere()
{
    QFETCH(bool, modbus);
    QFETCH(QList<QVariantList>, rows);
    make(modbus ? ParameterVariant::modbus() : ParameterVariant::plc());
    m_editor->loadParameters(rows);
    QCOMPARE(m_editor->rows(m_table), rows);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterEditor::unknownChoicesFallToTheFirstEntry()
{
    m_editor->loadParameters({{"1", "a", "INT16", "9", "w", "有时", "", "", ""}});
    QCOMPARE(m_editor->rows(m_table),
             RowList{QVariantList({"1", "a", "bool", "9", "r", "Timed", "", "", ""})});
}

void TestParameterEditor::storedMethodIsShownTranslated()
{
    m_editor->loadParameters({plcRow("1", "a", "Change amplitude", "3")});
    QCOMPARE(list(0, Method)->currentText(), ParameterText::amplitudeMethod());
    QVERIFY(editor(0, Amplitude)->isEnabled());
}

void TestParameterEditor::fieldUnderTheButtonStaysInTheRow()
{
    QVariantList row = plcRow("1", "a");
    row.append(QString(QLatin1String("")));
    m_editor->loadParameters({row});
    QCOMPARE(m_editor->rows(m_table), RowList{row});
    QVERIFY(qobject_cast<QPushButton *>(m_table->cellWidget(0, Button)));
}

void TestParameterEditor::shortAndLongRowsDoNoHarm()
{
    QVariantList longRow = plcRow("1", "a");
    longRow << "" << "" << "x";
    m_editor->loadParameters({{}, {"1"}, {"1", "a", "string"}, longRow});
    QCOMPARE(m_table->rowCount(), 4);
    QCOMPARE(m_editor->rows(m_table).at(1), QVariantList({"1"}));
    list(2, Type)->setCurrentText(QStringLiteral("int8"));
}

void TestParameterEditor::typeDecidesTheLength_data()
{
    QTest::addColumn<bool>("added");
    QTest::newRow("added row") << true;
    QTest::newRow("loaded row") << false;
}

void TestParameterEditor::typeDecidesTheLength()
{
    QFETCH(bool, added);
    if (added) {
        m_editor->addParameter();
    } else {
        m_editor->loadParameters({plcRow("1", "a")});
    }
    list(0, Type)->setCurrentText(QStringLiteral("string"));
    QVERIFY(editor(0, Length)->isEnabled());
    type(0, Length, QStringLiteral("11"));
    QCOMPARE(editor(0, Length)->text(), QStringLiteral("11"));
    list(0, Type)->setCurrentText(QStringLiteral("int16"));
    QVERIFY(!editor(0, Length)->isEnabled());
    QCOMPARE(editor(0, Length)->text(), QStringLiteral("1"));
    list(0, Type)->setCurrentText(QStringLiteral("string"));
    QVERIFY(editor(0, Length)->isEnabled());
    QCOMPARE(editor(0, Length)->text(), QStringLiteral("1"));
}

void TestParameterEditor::lengthRuleHasNoUpperBound_data()
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

void TestParameterEditor::lengthRuleHasNoUpperBound()
{
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    m_editor->addParameter();
    if (!kept) {
        m_boxes->expect();
    }
    type(0, Length, typed);
    QCOMPARE(editor(0, Length)->text(), kept ? typed : QStringLiteral("1"));
    QCOMPARE(m_boxes->told(), kept ? QStringList() : QStringList{lengthBox});
}

void TestParameterEditor::methodDecidesTheAmplitude()
{
    m_editor->loadParameters({plcRow("1", "a", "Change amplitude", "3")});
    m_editor->addParameter();
    list(1, Method)->setCurrentText(QStringLiteral("Change amplitude"));
    QVERIFY(editor(1, Amplitude)->isEnabled());
    type(1, Amplitude, QStringLiteral("4"));
    for (const int row : {0, 1}) {
        list(row, Method)->setCurrentText(QStringLiteral("Change"));
        QVERIFY(!editor(row, Amplitude)->isEnabled());
    }
    QCOMPARE(editor(0, Amplitude)->text(), QStringLiteral("3"));
    QCOMPARE(editor(1, Amplitude)->text(), QString());
    QCOMPARE(m_editor->rows(m_table).at(0).at(Amplitude).toString(), QStringLiteral("3"));
}

void TestParameterEditor::amplitudeOfAnAddedRow_data()
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

void TestParameterEditor::amplitudeOfAnAddedRow()
{
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    m_editor->addParameter();
    editor(0, Amplitude)->setText(QStringLiteral("0"));
    if (!kept) {
        m_boxes->expect();
    }
    type(0, Amplitude, typed);
    QCOMPARE(editor(0, Amplitude)->text(), kept ? typed : QString());
    QCOMPARE(m_boxes->told(), kept ? QStringList() : QStringList{numberBox});
    QCOMPARE(m_workspace->messages,
             kept ? QStringList()
                  : QStringList{"Invalid input in row 1: only integers and floating-point numbers are allowed."});
}

void TestParameterEditor::amplitudeOfALoadedRow_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("kept");
    QTest::newRow("number") << "2.5" << true;
    QTest::newRow("exponent") << "1e3" << true;
    QTest::newRow("minus") << "-3" << false;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("letters") << "abc" << false;
}

void TestParameterEditor::amplitudeOfALoadedRow()
{
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    m_editor->loadParameters({plcRow("1", "a", "Change amplitude", "3")});
    if (!kept) {
        m_boxes->expect();
    }
    type(0, Amplitude, typed);
    QCOMPARE(editor(0, Amplitude)->text(), kept ? typed : QString());
    QCOMPARE(m_boxes->told(), kept ? QStringList() : QStringList{numberBox});
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterEditor::addressOfAnAddedRow_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("kept");
    QTest::newRow("empty") << "" << true;
    QTest::newRow("letters and digits") << "DB1.DBW0" << true;
    QTest::newRow("any printable ASCII") << "!~#,;" << true;
    QTest::newRow("blanks around") << " D1 " << true;
    QTest::newRow("blank inside") << "D 1" << false;
    QTest::newRow("Chinese") << QStringLiteral("地址") << false;
}

void TestParameterEditor::addressOfAnAddedRow()
{
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    m_editor->addParameter();
    editor(0, Address)->setText(QStringLiteral("x"));
    type(0, Address, typed);
    QCOMPARE(editor(0, Address)->text(), kept ? typed : QString());
    QCOMPARE(m_workspace->messages,
             kept ? QStringList()
                  : QStringList{"Invalid input in row 1: only letters, digits, underscores, dots, colons, and "
                                "brackets are allowed."});
}

void TestParameterEditor::addressOfALoadedRow()
{
    m_editor->loadParameters({plcRow("1", "a"), plcRow("2", "b")});
    edit(1, Address, QStringLiteral("D 1"));
    QCOMPARE(m_table->item(1, Address)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"Invalid input in row 2: only letters, digits, underscores, dots, colons, and brackets "
                         "are allowed."});
}

void TestParameterEditor::formulas_data()
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

void TestParameterEditor::formulas()
{
    QFETCH(bool, added);
    QFETCH(int, column);
    QFETCH(QString, typed);
    QFETCH(bool, kept);
    if (added) {
        m_editor->addParameter();
        editor(0, column)->setText(QStringLiteral("X"));
        type(0, column, typed);
    } else {
        m_editor->loadParameters({plcRow("1", "a")});
        edit(0, column, typed);
    }
    QCOMPARE(parameterCellText(m_table, 0, column), kept ? typed : QString());
    QCOMPARE(m_workspace->messages,
             kept ? QStringList()
                  : QStringList{"Invalid input in row 1: only numbers, operators (+, -, *, /) and 'X' are allowed."});
}

void TestParameterEditor::untouchedEditorIsNotChecked()
{
    m_editor->addParameter();
    {
        // A text that stands there without having been typed, as an undone edit would leave it.
        const QSignalBlocker quiet(editor(0, Address));
        editor(0, Address)->setText(QStringLiteral("D 1"));
    }
    emit editor(0, Address)->editingFinished();
    QCOMPARE(editor(0, Address)->text(), QStringLiteral("D 1"));
    editor(0, Address)->setText(QStringLiteral("D 2"));
    editor(0, Address)->setText(QStringLiteral("D 1"));
    emit editor(0, Address)->editingFinished();
    QCOMPARE(editor(0, Address)->text(), QString());
}

void TestParameterEditor::duplicateNameOfAnAddedRow()
{
    m_editor->addParameter();
    m_editor->addParameter();
    m_editor->addParameter();
    type(0, Name, QStringLiteral("volt"));
    type(1, Name, QStringLiteral("Volt"));
    type(2, Name, QStringLiteral(" volt "));
    QCOMPARE(editor(1, Name)->text(), QStringLiteral("Volt"));
    QCOMPARE(editor(2, Name)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '1' line already exists. Please use a different name."});
}

void TestParameterEditor::duplicateNameOfALoadedRow()
{
    m_editor->loadParameters({plcRow("1", "a"), plcRow("2", "b"), plcRow("3", " a")});
    edit(1, Name, QStringLiteral("a"));
    QCOMPARE(m_table->item(1, Name)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '2' line already exists. Please use a different name."});
    edit(1, Name, QStringLiteral("a "));
    QCOMPARE(m_table->item(1, Name)->text(), QStringLiteral("a "));
    edit(1, Name, QString());
    QCOMPARE(m_workspace->messages.size(), 1);
}

void TestParameterEditor::addedRowKeepsTheNumberOfItsCreation()
{
    m_editor->addParameter();
    m_editor->addParameter();
    m_table->setCurrentCell(0, 0);
    m_editor->removeParameter();
    // The row that was the second is now the first, and takes itself for a row of the same name.
    type(0, Name, QStringLiteral("volt"));
    QCOMPARE(editor(0, Name)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '1' line already exists. Please use a different name."});
    type(0, Address, QStringLiteral("D 1"));
    QCOMPARE(m_workspace->messages.last(),
             QStringLiteral("Invalid input in row 2: only letters, digits, underscores, dots, colons, and "
                            "brackets are allowed."));
}

void TestParameterEditor::modbusNameIsCheckedWhileTyping()
{
    make(ParameterVariant::modbus());
    m_editor->loadParameters({modbusRow("0", "ab")});
    m_editor->addParameter();
    editor(1, Name)->setText(QStringLiteral("a"));
    QCOMPARE(editor(1, Name)->text(), QStringLiteral("a"));
    editor(1, Name)->setText(QStringLiteral("ab"));
    QCOMPARE(editor(1, Name)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '1' line already exists in this tab. Please use a different name."});
    editor(1, Name)->setText(QStringLiteral("ab "));
    QCOMPARE(editor(1, Name)->text(), QStringLiteral("ab "));
}

void TestParameterEditor::modbusNameRefusesACommaFirst()
{
    make(ParameterVariant::modbus());
    m_editor->loadParameters({modbusRow("0", "a"), modbusRow("1", "b")});
    m_editor->addParameter();
    editor(2, Name)->setText(QStringLiteral("x,y"));
    QCOMPARE(editor(2, Name)->text(), QString());
    edit(1, Name, QStringLiteral("a,"));
    QCOMPARE(m_table->item(1, Name)->text(), QString());
    const QString refused = QStringLiteral("The name cannot contain a comma. Please use a different name.");
    QCOMPARE(m_workspace->messages, (QStringList{refused, refused}));
}

void TestParameterEditor::modbusLoadedNameNamesTheOtherRow()
{
    make(ParameterVariant::modbus());
    m_editor->loadParameters({modbusRow("0", "a"), modbusRow("1", "b")});
    edit(1, Name, QStringLiteral("a"));
    QCOMPARE(m_table->item(1, Name)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '1' line already exists in this tab. Please use a different name."});
}

void TestParameterEditor::modbusLoadedAddressIsNotChecked()
{
    make(ParameterVariant::modbus());
    m_editor->loadParameters({modbusRow("0", "a")});
    edit(0, Address, QStringLiteral("D 1"));
    QCOMPARE(m_table->item(0, Address)->text(), QStringLiteral("D 1"));
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterEditor::modbusAddressIsLookedUpInTheLatestTable()
{
    make(ParameterVariant::modbus());
    m_editor->addParameter();
    type(0, Address, QStringLiteral("D 1"));
    QCOMPARE(editor(0, Address)->text(), QString());

    make(ParameterVariant::modbus());
    QTableWidget other(m_form);
    m_editor->prepare(&other);
    m_latest = &other;
    m_editor->addParameter();
    type(0, Address, QStringLiteral("D 1"));
    QCOMPARE(editor(0, Address)->text(), QStringLiteral("D 1"));
}

void TestParameterEditor::modbusAddressOfTheLatestTableIsWatchedInstead()
{
    make(ParameterVariant::modbus());
    m_editor->addParameter();
    QLineEdit *typedInto = editor(0, Address);
    QTableWidget *first = m_table;
    QTableWidget latest(m_form);
    m_editor->prepare(&latest);
    m_table = &latest;
    m_latest = &latest;
    m_editor->addParameter();
    QLineEdit *watched = editor(0, Address);
    {
        const QSignalBlocker quiet(watched);
        watched->setText(QStringLiteral("D 1"));
    }
    m_table = first;
    typedInto->setText(QStringLiteral("D 2"));
    emit typedInto->editingFinished();
    QCOMPARE(typedInto->text(), QStringLiteral("D 2"));
    emit watched->editingFinished();
    QCOMPARE(watched->text(), QString());
    QCOMPARE(m_workspace->messages.size(), 1);
}

void TestParameterEditor::deleteButtonRemovesTheCurrentRow()
{
    m_editor->loadParameters({plcRow("1", "a"), plcRow("2", "b"), plcRow("3", "c")});
    auto *lastButton = qobject_cast<QPushButton *>(m_table->cellWidget(2, Button));
    m_table->setCurrentCell(-1, -1);
    lastButton->click();
    QCOMPARE(m_table->rowCount(), 3);
    m_table->setCurrentCell(0, 0);
    lastButton->click();
    QCOMPARE(m_editor->rows(m_table), (RowList{plcRow("2", "b"), plcRow("3", "c")}));
}

void TestParameterEditor::clickedDeleteButtonRemovesTheCurrentRow()
{
    m_editor->loadParameters({plcRow("1", "a"), plcRow("2", "b"), plcRow("3", "c")});
    m_table->resize(900, 300);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form));
    m_table->setFocus();
    m_table->setCurrentCell(0, Address);
    QTest::mouseClick(m_table->cellWidget(2, Button), Qt::LeftButton);
    QCOMPARE(m_editor->rows(m_table), (RowList{plcRow("2", "b"), plcRow("3", "c")}));
}

void TestParameterEditor::removeAllEmptiesTheTable()
{
    m_editor->loadParameters({plcRow("1", "a"), plcRow("2", "b")});
    m_editor->removeAllParameters();
    QCOMPARE(m_table->rowCount(), 0);
    m_editor->addParameter();
    QCOMPARE(m_table->rowCount(), 1);
}

void TestParameterEditor::wheelIsLeftToTheForm()
{
    // The form swallows the wheel by its event filter; here one that records stands for it.
    class Filter : public QDialog
    {
    public:
        int wheels = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            wheels += event->type() == QEvent::Wheel;
            return event->type() == QEvent::Wheel;
        }
    } filter;
    QTableWidget table(&filter);
    ParameterEditor watched(
        ParameterVariant::plc(), &filter, nullptr, [&table] { return &table; }, [&table] { return &table; });
    watched.prepare(&table);
    watched.addParameter();
    for (const int column : {int(Type), int(Permissions), int(Method)}) {
        auto *box = qobject_cast<QComboBox *>(table.cellWidget(0, column));
        QWheelEvent wheel(QPointF(1, 1), QPointF(1, 1), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentIndex(), 0);
    }
    QCOMPARE(filter.wheels, 3);
}

void TestParameterEditor::withoutAWindowNothingIsTold()
{
    delete m_workspace;
    m_workspace = nullptr;
    make(ParameterVariant::plc());
    m_editor->addParameter();
    type(0, Address, QStringLiteral("D 1"));
    type(0, Amplitude, QStringLiteral("abc"));
    QCOMPARE(editor(0, Address)->text(), QString());
    QCOMPARE(editor(0, Amplitude)->text(), QString());
    QCOMPARE(m_boxes->told(), QStringList());
}

void TestParameterEditor::fillingRaisesNoMessage()
{
    m_editor->loadParameters({plcRow("D 1", "a"), plcRow("D 1", "a"), plcRow("x y", "a", "Change amplitude", "no")});
    QCOMPARE(m_table->rowCount(), 3);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterEditor::itemsOfLengthAndAmplitude()
{
    m_table->setRowCount(1);
    m_table->setItem(0, Length, new QTableWidgetItem(QStringLiteral("5")));
    QCOMPARE(m_table->item(0, Length)->data(Qt::UserRole).toString(), QStringLiteral("5"));
    m_boxes->expect();
    edit(0, Length, QStringLiteral("0"));
    QCOMPARE(m_boxes->told(), QStringList{"Warning|Length must be a positive integer."});
    QCOMPARE(m_table->item(0, Length)->text(), QStringLiteral("5"));
    m_table->setItem(0, Amplitude, new QTableWidgetItem(QStringLiteral("1")));
    edit(0, Amplitude, QStringLiteral("abc"));
    QCOMPARE(m_table->item(0, Amplitude)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"Invalid input in row 1: only integers and floating-point numbers are allowed."});
}

void TestParameterEditor::amplitudeCellSlots()
{
    m_editor->addParameter();
    m_editor->updateChangeAmplitudeCell(0, true);
    QVERIFY(editor(0, Amplitude)->isEnabled());
    editor(0, Amplitude)->setText(QStringLiteral("3"));
    m_editor->updateChangeAmplitudeCell(0, false);
    QVERIFY(!editor(0, Amplitude)->isEnabled());
    QCOMPARE(editor(0, Amplitude)->text(), QString());
    m_table->setRowCount(2);
    m_table->setItem(1, Amplitude, new QTableWidgetItem(QStringLiteral("3")));
    m_editor->updateloadChangeAmplitudeCell(1, false);
    QVERIFY(!(m_table->item(1, Amplitude)->flags() & Qt::ItemIsEditable));
    QCOMPARE(m_table->item(1, Amplitude)->text(), QString());
    m_editor->updateloadChangeAmplitudeCell(1, true);
    QVERIFY(m_table->item(1, Amplitude)->flags() & Qt::ItemIsEditable);
    m_editor->updateChangeAmplitudeCell(9, true);
    m_editor->updateloadChangeAmplitudeCell(9, true);
}

void TestParameterEditor::twoThousandRowsAreHandledInOneGo()
{
    make(ParameterVariant::modbus());
    RowList rows;
    for (int row = 0; row < 2000; ++row) {
        rows.append(modbusRow(QString::number(row), QStringLiteral("point %1").arg(row)));
    }
    m_editor->loadParameters(rows);
    QCoreApplication::processEvents();
    QCOMPARE(m_editor->rows(m_table), rows);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterEditor::rowsAreMadeUnseenAndInTheirPlace()
{
    // Each of these events comes once a cell if it comes at all, and some cost as much as there are cells.
    class Events : public QObject
    {
    public:
        using QObject::QObject;
        int styleChanges = 0;
        int lateMoves = 0;
        bool filled = false;
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            // A widget under construction is not of its class yet and takes a change of style lightly.
            const bool cell = qobject_cast<QComboBox *>(watched) || qobject_cast<QPushButton *>(watched);
            styleChanges += cell && event->type() == QEvent::StyleChange;
            lateMoves += cell && filled && (event->type() == QEvent::Move || event->type() == QEvent::Resize);
            return false;
        }
    };
    make(ParameterVariant::modbus());
    m_form->setStyleSheet(QStringLiteral("QScrollArea { border: none; }"));
    m_table->resize(600, 300);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form));
    Events events;
    qApp->installEventFilter(&events);
    m_editor->loadParameters({modbusRow("0", "a"), modbusRow("1", "b"), modbusRow("2", "c")});
    QVERIFY(m_table->viewport()->isVisible());
    QVERIFY(m_table->cellWidget(2, Type)->isVisible());
    events.filled = true;
    QCoreApplication::processEvents();
    m_table->doItemsLayout();
    qApp->removeEventFilter(&events);
    QCOMPARE(events.styleChanges, 0);
    QCOMPARE(events.lateMoves, 0);
    QCOMPARE(m_table->viewport()->findChildren<QPushButton *>().size(), 3);
}

QTEST_MAIN(TestParameterEditor)
#include "tst_parametereditor.moc"
