#include "language.h"
#include "logtail.h"
#include "model/itemroles.h"
#include "parametertable/parametertable.h"
#include "standardformtest.h"
#include "tableform.h"

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardItem>
#include <QStandardItemModel>
#include <QTableWidget>
#include <QtTest>

// What the forms of the three Standards without tabs have in common, on an item and a faked main window.
class TestStandardTableForms : public StandardFormTest
{
    Q_OBJECT
public:
    TestStandardTableForms()
        : StandardFormTest("Yard", "DIDO")
    {
    }
private slots:
    void initTestCase_data();
    void everyInputHasItsName();
    void openingWritesTheTextDefaultsOnly();
    void tableHasItsColumns();
    void newRowStoresItsDefaults();
    void storedRowsComeBackAsTheyWere();
    void listsAreShownTranslatedAndStoredInEnglish();
    void duplicateNameIsCleared();
    void nameSlotsActOnTheirOwnColumnOnly();
    void buttonsAddAndRemoveRows();
    void replaceItemShowsTheOtherStandard();
    void clearDataEmptiesTheForm();
    void rowsOfTheWrongShapeAreKept();
    void withoutAWindowNothingIsTold();
    void writesItsOperationsToTheLog();

private:
    using Form = StandardTableFormPtr;
    // Of the kind that the test runs for.
    static Form makeForm(QStandardItem *item, Workspace *workspace);
    Form makeForm() { return makeForm(m_item, m_workspace); }
};

namespace {

// One row for each kind: what its form and its table have.
struct KindRow {
    const char *protocol;
    const char *className;
    QStringList inputs; // beside name, protocol, trigger and period
    QStringList headers;
    int name;         // column
    QVariantList row; // a full one, as stored
    QVariantList untouched;
};

const QVector<KindRow> &kinds()
{
    static const QVector<KindRow> table{
        {"CustomPoll",
         "standardCustomPollEditDialog",
         {"serialport", "baudRate", "dataBit", "stopBit", "parityBit", "rtsEnable", "communicationTimeout",
          "communicationGap"},
         {"Name", "HEX", "Data Content", "CRC", "Permissions", "Reporting Method", "Deleat"},
         0,
         {"ask", "true", "01 03 00 00", "false", "rw", "Change"},
         {"", "true", "", "true", "r", "Timed"}},
        {"DIDO",
         "standardDIOEditDialog",
         {},
         {"Address", "Name", "Permissions", "Reporting Method", "Deleat"},
         1,
         {"DI 1", "door", "rw", "Change"},
         {"", "", "r", "Timed"}},
        {"OpcUA",
         "standardOPCUAEditDialog",
         {"url", "securityPolicy", "messageSecurityMode", "authentication", "username", "password",
          "certificatePath", "privateKeyPath"},
         {"Address", "Name", "Spatial Index", "Node Type", "Permissions", "Reporting Method",
          "Change Amplitude", "Collection Formula", "Write Formula", "Type", "Deleat"},
         1,
         {"Pump.Speed", "speed", "3", "String Node", "rw", "Change amplitude", "0.5", "X*2", "X/2", "double"},
         {"", "", "1", "GUID Node", "r", "Timed", "", "", "", "bool"}},
    };
    return table;
}

const KindRow &kindOfTest()
{
    QFETCH_GLOBAL(int, kind);
    return kinds().at(kind);
}

ParameterTable *tableOf(const StandardTableForm &form)
{
    return form.findChild<ParameterTable *>();
}

QVariantList named(QVariantList row, int column, const QString &name)
{
    row[column] = name;
    return row;
}

} // namespace

// Every test runs for every kind.
void TestStandardTableForms::initTestCase_data()
{
    QTest::addColumn<int>("kind");
    for (int kind = 0; kind < kinds().size(); ++kind) {
        QTest::newRow(kinds().at(kind).protocol) << kind;
    }
}

StandardTableFormPtr TestStandardTableForms::makeForm(QStandardItem *item, Workspace *workspace)
{
    return makeTableForm(kindOfTest().protocol, item, workspace);
}

void TestStandardTableForms::everyInputHasItsName()
{
    const Form form = makeForm();
    form->addParameter();
    QStringList expected =
        kindOfTest().inputs + QStringList{"name", "protocol", "trigger", "collectionInterval"};
    expected.sort();
    QCOMPARE(inputsOf(*form), expected);
    QCOMPARE(list(*form, "trigger")->currentText(), "Timed Loops");
}

void TestStandardTableForms::openingWritesTheTextDefaultsOnly()
{
    const Form form = makeForm();
    const bool serial = kindOfTest().inputs.contains("communicationGap");
    QMap<int, QVariant> expected{{standardProtocolRole, "DIDO"}, {standardCollectionIntervalRole, "2000"}};
    if (serial) {
        expected.insert(standardCommunicationTimeoutRole, "2000");
        expected.insert(standardCommunicationGapRole, "-1");
    }
    QCOMPARE(rolesOf(*m_item), expected);
}

void TestStandardTableForms::tableHasItsColumns()
{
    const Form form = makeForm();
    QCOMPARE(headersOf(tableOf(*form)), kindOfTest().headers);
}

void TestStandardTableForms::newRowStoresItsDefaults()
{
    const Form form = makeForm();
    form->addParameter();
    form->saveChanges();
    QCOMPARE(rowsOf(*m_item, standardDatasRole), RowList{kindOfTest().untouched});
}

void TestStandardTableForms::storedRowsComeBackAsTheyWere()
{
    const KindRow &kind = kindOfTest();
    const RowList rows{kind.row, kind.untouched, kind.untouched};
    setRows(m_item, standardDatasRole, rows);
    const Form form = makeForm();
    form->saveChanges();
    QCOMPARE(rowsOf(*m_item, standardDatasRole), rows);
}

void TestStandardTableForms::listsAreShownTranslatedAndStoredInEnglish()
{
    const KindRow &kind = kindOfTest();
    setRows(m_item, standardDatasRole, {kind.row});
    const Marked language;
    const Form form = makeForm();
    for (const char *header : {"Reporting Method", "Node Type"}) {
        const int column = kind.headers.indexOf(QLatin1String(header));
        if (column >= 0) {
            QCOMPARE(tableOf(*form)->text(0, column), QLatin1Char('*') + kind.row.at(column).toString());
        }
    }
    form->addParameter();
    form->saveChanges();
    QCOMPARE(rowsOf(*m_item, standardDatasRole), (RowList{kind.row, kind.untouched}));
}

void TestStandardTableForms::duplicateNameIsCleared()
{
    const KindRow &kind = kindOfTest();
    const Form form = makeForm();
    QTableWidget *table = tableOf(*form);
    form->loadParameters({named(kind.row, kind.name, "a"), named(kind.row, kind.name, "b")});
    form->addParameter();
    table->item(1, kind.name)->setText("A");
    table->item(1, kind.name)->setText("a");
    QCOMPARE(table->item(1, kind.name)->text(), QString());
    auto *editor = qobject_cast<QLineEdit *>(table->cellWidget(2, kind.name));
    editor->setText(" a ");
    emit editor->editingFinished();
    QCOMPARE(editor->text(), QString());
    // In a loaded row the message tells its own number, in an added one that of the other row.
    QCOMPARE(m_workspace->messages,
             (QStringList{"The name of the '2' line already exists. Please use a different name.",
                          "The name of the '1' line already exists. Please use a different name."}));
}

void TestStandardTableForms::nameSlotsActOnTheirOwnColumnOnly()
{
    const KindRow &kind = kindOfTest();
    const Form form = makeForm();
    form->loadParameters({named(kind.row, kind.name, "a"), named(kind.row, kind.name, "a")});
    const auto call = [&form](const char *slot, int row, int column) {
        return QMetaObject::invokeMethod(form.get(), slot, Q_ARG(int, row), Q_ARG(int, column));
    };
    QVERIFY(call("validateName", 1, kind.headers.size() - 1));
    QVERIFY(call("validateName", 7, kind.name));
    QCOMPARE(m_workspace->messages, QStringList());
    QVERIFY(call("validateName", 1, kind.name));
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '2' line already exists. Please use a different name."});
    form->addParameter();
    auto *editor = qobject_cast<QLineEdit *>(tableOf(*form)->cellWidget(2, kind.name));
    {
        const QSignalBlocker quiet(editor);
        editor->setText("a");
    }
    QVERIFY(QMetaObject::invokeMethod(form.get(), "validateNameOnChange", Q_ARG(int, 2),
                                      Q_ARG(int, kind.name), Q_ARG(QString, "a")));
    QCOMPARE(editor->text(), "a");
    emit editor->editingFinished();
    QCOMPARE(editor->text(), QString());
}

void TestStandardTableForms::buttonsAddAndRemoveRows()
{
    const Form form = makeForm();
    QTableWidget *table = tableOf(*form);
    for (int row = 0; row < 3; ++row) {
        click(*form, "addButton");
    }
    QCOMPARE(table->rowCount(), 3);
    table->setCurrentCell(1, 0);
    qobject_cast<QPushButton *>(table->cellWidget(1, table->columnCount() - 1))->click();
    QCOMPARE(table->rowCount(), 2);
    form->removeParameter();
    QCOMPARE(table->rowCount(), 1);
    click(*form, "removeAllButton");
    QCOMPARE(table->rowCount(), 0);
}

void TestStandardTableForms::replaceItemShowsTheOtherStandard()
{
    const KindRow &kind = kindOfTest();
    setRows(m_item, standardDatasRole, {kind.untouched, kind.untouched});
    QStandardItem other("Other");
    other.setData("700", standardCollectionIntervalRole);
    setRows(&other, standardDatasRole, {kind.row});
    const Form form = makeForm();
    form->nameEdit()->setText("not saved");
    form->replaceItem(&other);
    QCOMPARE(form->nameEdit()->text(), "Other");
    QCOMPARE(edit(*form, "collectionInterval")->text(), "700");
    form->saveChanges();
    QCOMPARE(rowsOf(other, standardDatasRole), RowList{kind.row});
    QCOMPARE(m_item->text(), "Yard");
    QCOMPARE(rowsOf(*m_item, standardDatasRole).size(), 2);
    form->replaceItem(m_item);
    QCOMPARE(tableOf(*form)->rowCount(), 2);
}

void TestStandardTableForms::clearDataEmptiesTheForm()
{
    setRows(m_item, standardDatasRole, {kindOfTest().row});
    for (const int role : {standardUrlRole, standardCertificatePathRole, standardPrivateKeyPathRole,
                           standardUsernameRole, standardPasswordRole}) {
        m_item->setData("x", role);
    }
    const Form form = makeForm();
    QVERIFY(QMetaObject::invokeMethod(form.get(), "clearData"));
    const QStringList names = inputsOf(*form);
    for (const QString &name : names) {
        const auto *edit = form->findChild<QLineEdit *>(name);
        QCOMPARE(edit ? edit->text() : QString(), QString());
    }
    QCOMPARE(tableOf(*form)->rowCount(), 0);
    QCOMPARE(rowsOf(*m_item, standardDatasRole).size(), 1);
}

void TestStandardTableForms::rowsOfTheWrongShapeAreKept()
{
    // What a Standard with tabs stores.
    setGroups(m_item, {{"Modbus-1", {{"standard", "1"}}}});
    const Form form = makeForm();
    QCOMPARE(tableOf(*form)->rowCount(), 0);
    form->saveChanges();
    QCOMPARE(rowsOf(*m_item, standardDatasRole), RowList());
    setRows(m_item, standardDatasRole, {{}, {"1"}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13}});
    form->replaceItem(m_item);
    QCOMPARE(tableOf(*form)->rowCount(), 3);
    form->saveChanges();
    QCOMPARE(rowsOf(*m_item, standardDatasRole).at(1), QVariantList{"1"});
}

void TestStandardTableForms::withoutAWindowNothingIsTold()
{
    const KindRow &kind = kindOfTest();
    const Form form = makeForm(m_item, nullptr);
    form->loadParameters({kind.row, kind.row});
    form->validateName(1, kind.name);
    form->saveChanges();
    QCOMPARE(rowsOf(*m_item, standardDatasRole),
             (RowList{kind.row, named(kind.row, kind.name, QString(""))}));
}

void TestStandardTableForms::writesItsOperationsToTheLog()
{
    const QString name = QLatin1String(kindOfTest().className);
    const Form form = makeForm();
    const LogTail log(name);
    form->addParameter();
    form->removeParameter();
    form->removeAllParameters();
    QCOMPARE(
        log.events(),
        QStringList({name + ": addParameter", name + ": removeParameter", name + ": removeAllParameters"}));
}

QTEST_MAIN(TestStandardTableForms)
#include "tst_standardtableforms.moc"
