#include "pointformtest.h"
#include "servers/serverhj212editdialog.h"
#include "servers/serversl651editdialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTranslator>

// The fields and the one table of the forms of HJ212 and SL651: each has a list of codes and, behind each
// point, the code of the point.
class TestPointFields : public PointFormTest
{
    Q_OBJECT
public:
    TestPointFields()
        : PointFormTest("Platform", QString())
    {
    }
private slots:
    void fieldsInTheirOrder_data() { addForms(); }
    void fieldsInTheirOrder();
    void openingWritesTheCommandCodeOnly_data() { addForms(); }
    void openingWritesTheCommandCodeOnly();
    void codes_data();
    void codes();
    void codesDifferInEachLanguage_data();
    void codesDifferInEachLanguage();
    void unknownCodeShowsTheFirst_data();
    void unknownCodeShowsTheFirst();
    void typing_data();
    void typing();
    void importedPointStartsWithTheFirstCode_data() { addForms(); }
    void importedPointStartsWithTheFirstCode();
    void saveWritesEveryRole_data() { addForms(); }
    void saveWritesEveryRole();
    void replaceItemShowsTheOther_data() { addForms(); }
    void replaceItemShowsTheOther();
    void clearDataEmptiesTheForm_data() { addForms(); }
    void clearDataEmptiesTheForm();
    void thousandPointsComeBack_data() { addForms(); }
    void thousandPointsComeBack();

private:
    struct Form;
    static const Form &form(const QString &protocol);
    static void addForms();
    std::unique_ptr<PointForm> open(const Form &form) { return open(form, m_item); }
    std::unique_ptr<PointForm> open(const Form &form, QStandardItem *item);
    static void enterCode(const QWidget &form, int row, const QString &code);
};

namespace {

const QString source = "Meter A";

// A line edit below the protocol: a text that it takes, and its role.
struct Field {
    const char *name;
    int role;
    const char *text;
};

struct Code {
    int code;
    const char *text;
};

} // namespace

struct TestPointFields::Form {
    const char *protocol;
    QStringList labels;
    QString codeHeader; // of the points
    QVector<Field> fields;
    QMap<int, QVariant> opened; // what opening writes
    const char *list;           // of codes
    int role;                   // of that list
    QVector<Code> codes;
    const char *newCode;     // of an imported point
    QStringList pointCodes;  // two that a point may have
    const char *shownSecond; // how the second shows
};

const TestPointFields::Form &TestPointFields::form(const QString &protocol)
{
    static const Form hj212{"HJ212",
                            {"Server Name:|name", "Protocol:|protocol", "IP Address:|ip", "Port:|port",
                             "Client ID:|clientId", "Password:|password", "System Code:|systemCode",
                             "Command Code:|commandCode"},
                            "Factor Code",
                            {{"ip", serverIpRole, "10.1.2.3"},
                             {"port", serverPortRole, "9001"},
                             {"clientId", serverClientIdRole, "0A1B"},
                             {"password", serverPasswordRole, "secret"},
                             {"commandCode", serverCommandCodeRole, "2051"}},
                            {{serverCommandCodeRole, "2011"}},
                            "systemCode",
                            serverSystemCodeRole,
                            {{21, "Surface water quality testing"},
                             {22, "Air quality testing"},
                             {23, "Acoustic environment quality testing"},
                             {24, "Groundwater quality testing"},
                             {25, "Soil quality testing"},
                             {26, "Sea water quality testing"},
                             {27, "Volatile organic compound detection"},
                             {31, "Air pollution sources"},
                             {32, "Surface water pollution sources"},
                             {33, "Groundwater environmental pollution sources"},
                             {34, "Marine environmental pollution sources"},
                             {35, "Soil environmental pollution sources"},
                             {36, "Sources of acoustic environmental pollution"},
                             {37, "Vibration environmental pollution sources"},
                             {38, "Radioactive environmental pollution source"},
                             {39, "Construction site dust pollution source"},
                             {41, "Electromagnetic environmental pollution sources"},
                             {51, "Monitoring of flue gas emission process"},
                             {52, "Monitoring of sewage discharge process"},
                             {91, "system interaction"}},
                            "",
                            {"w01018", "w01001"},
                            "w01001"};
    static const Form sl651{"SL651",
                            {"Server Name:|name", "Protocol:|protocol", "IP Address:|ip", "Port:|port",
                             "centralStationAddress:|centralStationAddress",
                             "remoteStationAddress:|remoteStationAddress", "Password:|password",
                             "remoteStationType:|remoteStationType"},
                            "Code",
                            {{"ip", serverIpRole, "10.1.2.3"},
                             {"port", serverPortRole, "9001"},
                             {"centralStationAddress", serverCentralStationAddressRole, "FF"},
                             {"remoteStationAddress", serverRemoteStationAddressRole, "0012345678"},
                             {"password", serverPasswordRole, "A1B2"}},
                            {},
                            "remoteStationType",
                            serverRemoteStationTypeRole,
                            {{80, "precipitation"},
                             {72, "river course"},
                             {75, "Reservoir (Lake)"},
                             {90, "gate dam"},
                             {68, "pump station"},
                             {84, "tide"},
                             {77, "soil moisture content"},
                             {71, "groundwater"},
                             {81, "water quality"},
                             {73, "Water intake"},
                             {79, "Drain"}},
                            "F0",
                            {"39", "47"},
                            "dissolved oxygen"};
    return protocol == QLatin1String("HJ212") ? hj212 : sl651;
}

#define FETCH_FORM                                                                                           \
    QFETCH(QString, protocol);                                                                               \
    const Form &row = form(protocol);                                                                        \
    m_item->setData(protocol, serverProtocolRole)

void TestPointFields::addForms()
{
    QTest::addColumn<QString>("protocol");
    QTest::newRow("HJ212") << "HJ212";
    QTest::newRow("SL651") << "SL651";
}

std::unique_ptr<PointForm> TestPointFields::open(const Form &form, QStandardItem *item)
{
    if (qstrcmp(form.protocol, "HJ212") == 0) {
        return std::make_unique<ServerHJ212EditDialog>(item, m_workspace);
    }
    return std::make_unique<ServerSL651EditDialog>(item, m_workspace);
}

// As the user does in the cell behind a point.
void TestPointFields::enterCode(const QWidget &form, int row, const QString &code)
{
    QWidget *cell = pointTable(form)->cellWidget(row, 2);
    if (auto *edit = qobject_cast<QLineEdit *>(cell)) {
        edit->setText(code);
    } else {
        qobject_cast<QComboBox *>(cell)->setCurrentText(code);
    }
}

void TestPointFields::fieldsInTheirOrder()
{
    FETCH_FORM;
    const auto form = open(row);
    QCOMPARE(labelsOf(*form), row.labels);
    QVERIFY(edit(*form, "name")->isReadOnly());
    QVERIFY(!list(*form, "protocol")->isEnabled());
    QCOMPARE(entriesOf(list(*form, "protocol")), QStringList(protocol));
    QCOMPARE(edit(*form, "password")->echoMode(), QLineEdit::Password);
    QCOMPARE(headersOf(pointTable(*form)), QStringList({"PLC Name", "Name", row.codeHeader}));
}

void TestPointFields::openingWritesTheCommandCodeOnly()
{
    FETCH_FORM;
    auto expected = row.opened;
    expected.insert(serverProtocolRole, protocol);
    const auto form = open(row);
    QCOMPARE(rolesOf(*m_item), expected);
    for (const Field &field : row.fields) {
        QCOMPARE(edit(*form, field.name)->text(), row.opened.value(field.role).toString());
    }
}

void TestPointFields::codes_data()
{
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<int>("place");
    for (const char *protocol : {"HJ212", "SL651"}) {
        int place = 0;
        for (const Code &code : form(QString::fromLatin1(protocol)).codes) {
            QTest::newRow(QByteArray(protocol) + ", " + code.text)
                << QString::fromLatin1(protocol) << place++;
        }
    }
}

void TestPointFields::codes()
{
    FETCH_FORM;
    QFETCH(int, place);
    const Code &code = row.codes.at(place);
    const auto form = open(row);
    QComboBox *entries = list(*form, row.list);
    QCOMPARE(entries->itemText(place), QLatin1String(code.text));
    entries->setCurrentIndex(place);
    click(*form, "saveButton");
    QCOMPARE(m_item->data(row.role), QVariant(code.code));
    QCOMPARE(m_item->data(row.role).type(), QVariant::Int);
    entries->setCurrentIndex(place == 0 ? 1 : 0);
    form->replaceItem(m_item);
    QCOMPARE(entries->currentIndex(), place);
    m_item->setData(QString::number(code.code), row.role); // as a document gives it
    QCOMPARE(list(*open(row), row.list)->currentIndex(), place);
}

void TestPointFields::codesDifferInEachLanguage_data()
{
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("catalogue");
    for (const char *protocol : {"HJ212", "SL651"}) {
        for (const char *catalogue : {":/adsdemo/english.qm", ":/adsdemo/chinese.qm"}) {
            QTest::addRow("%s, %s", protocol, catalogue)
                << QString::fromLatin1(protocol) << QString::fromLatin1(catalogue);
        }
    }
}

void TestPointFields::codesDifferInEachLanguage()
{
    FETCH_FORM;
    QFETCH(QString, catalogue);
    QTranslator language;
    QVERIFY(language.load(catalogue));
    QVERIFY(QCoreApplication::installTranslator(&language));
    const auto form = open(row);
    QStringList texts = entriesOf(list(*form, row.list));
    QCOMPARE(texts.size(), row.codes.size());
    QCOMPARE(texts.removeDuplicates(), 0);
}

void TestPointFields::unknownCodeShowsTheFirst_data()
{
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QVariant>("stored");
    for (const char *protocol : {"HJ212", "SL651"}) {
        const QVector<QVariant> unknown{QVariant(), 28, 1, "water"};
        for (const QVariant &stored : unknown) {
            const QByteArray text = stored.toByteArray();
            QTest::newRow(QByteArray(protocol) + ", stored: " + text)
                << QString::fromLatin1(protocol) << stored;
        }
    }
}

void TestPointFields::unknownCodeShowsTheFirst()
{
    FETCH_FORM;
    QFETCH(QVariant, stored);
    m_item->setData(row.codes.last().code, row.role);
    const auto form = open(row);
    QCOMPARE(list(*form, row.list)->currentData(), QVariant(row.codes.last().code));
    m_item->setData(stored, row.role);
    form->replaceItem(m_item);
    QCOMPARE(list(*form, row.list)->currentData(), QVariant(row.codes.first().code));
    QCOMPARE(list(*open(row), row.list)->currentIndex(), 0);
}

void TestPointFields::typing_data()
{
    QTest::addColumn<QString>("protocol");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    const auto add = [](const char *protocol, const char *field, const QString &typed, const QString &taken) {
        QTest::addRow("%s %s: %s", protocol, field, qPrintable(typed))
            << QString::fromLatin1(protocol) << QString::fromLatin1(field) << typed << taken;
    };
    add("HJ212", "clientId", "abc", "");
    add("HJ212", "clientId", "ABC", "ABC");
    add("HJ212", "clientId", "0AG9", "0A9");
    add("HJ212", "clientId", QString(25, QLatin1Char('7')), QString(24, QLatin1Char('7')));
    add("HJ212", "ip", "192.168.1.10", "192.168.1.10");
    add("HJ212", "ip", "256", "25");
    add("HJ212", "ip", "host", "");
    add("HJ212", "port", "-1", "-1");
    add("HJ212", "port", "655350", "65535");
    add("HJ212", "password", "p\u00e4ss 1", "p\u00e4ss 1");
    add("HJ212", "password", "a\u5bc6b", "ab");
    add("HJ212", "commandCode", "x-\u4ee4", "x-\u4ee4");
    add("SL651", "centralStationAddress", "100", "10");
    add("SL651", "centralStationAddress", "fF", "fF");
    add("SL651", "centralStationAddress", "G1", "1");
    add("SL651", "remoteStationAddress", "00aB12345678", "00aB12345678");
    add("SL651", "remoteStationAddress", "x1 2", "12");
    add("SL651", "password", "12Ab5", "12Ab");
    add("SL651", "password", "pw", "");
    add("SL651", "ip", "10.0.0.256", "10.0.0.25");
    add("SL651", "port", "-12", "-1");
}

void TestPointFields::typing()
{
    FETCH_FORM;
    QFETCH(QString, field);
    QFETCH(QString, typed);
    QFETCH(QString, taken);
    const auto form = open(row);
    QLineEdit *input = edit(*form, field.toLatin1());
    typeInto(input, typed);
    QCOMPARE(input->text(), taken);
}

void TestPointFields::importedPointStartsWithTheFirstCode()
{
    FETCH_FORM;
    const auto form = open(row);
    form->handleImportedData({point("flow"), point("level")}, source);
    for (int column = 0; column < 2; ++column) {
        const QTableWidgetItem *cell = pointTable(*form)->item(0, column);
        QVERIFY(!(cell->flags() & Qt::ItemIsEditable));
        QCOMPARE(cell->toolTip(), cell->text());
    }
    click(*form, "saveButton");
    const QString code = QString::fromLatin1(row.newCode);
    QCOMPARE(pointsOf(*m_item), RowList({pointRow(source, "flow", code), pointRow(source, "level", code)}));
}

void TestPointFields::saveWritesEveryRole()
{
    FETCH_FORM;
    const QString code = row.pointCodes.first();
    setPoints(m_item, {pointRow(source, "flow", code), pointRow("Pump", "ph", "46")});
    const auto form = open(row);
    QMap<int, QVariant> expected{{serverProtocolRole, protocol}, {row.role, row.codes.at(2).code}};
    for (const Field &field : row.fields) {
        edit(*form, field.name)->setText(QString::fromLatin1(field.text));
        expected.insert(field.role, QString::fromLatin1(field.text));
    }
    list(*form, row.list)->setCurrentIndex(2);
    enterCode(*form, 1, QString::fromLatin1(row.shownSecond));
    click(*form, "saveButton");
    QCOMPARE(pointsOf(*m_item),
             RowList({pointRow(source, "flow", code), pointRow("Pump", "ph", row.pointCodes.last())}));
    m_item->setData(QVariant(), serverPointsRole);
    QCOMPARE(rolesOf(*m_item), expected);
}

void TestPointFields::replaceItemShowsTheOther()
{
    FETCH_FORM;
    setPoints(m_item, {pointRow("a", "b", "01"), pointRow("d", "e", "02")});
    const auto form = open(row);
    QStandardItem *other = addItem("Second");
    other->setData(row.codes.at(5).code, row.role);
    for (const Field &field : row.fields) {
        other->setData(QString::fromLatin1(field.text), field.role);
    }
    const RowList points{pointRow("g", "h", row.pointCodes.first())};
    setPoints(other, points);
    form->replaceItem(other);
    QCOMPARE(edit(*form, "name")->text(), "Second");
    for (const Field &field : row.fields) {
        QCOMPARE(edit(*form, field.name)->text(), QLatin1String(field.text));
    }
    QCOMPARE(list(*form, row.list)->currentText(), QLatin1String(row.codes.at(5).text));
    click(*form, "saveButton");
    QCOMPARE(pointsOf(*other), points);
    QCOMPARE(pointsOf(*m_item).size(), 2);
}

void TestPointFields::clearDataEmptiesTheForm()
{
    FETCH_FORM;
    m_item->setData(row.codes.last().code, row.role);
    setPoints(m_item, {pointRow("a", "b", row.pointCodes.first())});
    const auto form = open(row);
    for (const Field &field : row.fields) {
        edit(*form, field.name)->setText(QString::fromLatin1(field.text));
    }
    form->clearData();
    for (const Field &field : row.fields) {
        QCOMPARE(edit(*form, field.name)->text(), QString());
    }
    QCOMPARE(edit(*form, "name")->text(), QString());
    QCOMPARE(list(*form, row.list)->currentIndex(), 0);
    QCOMPARE(pointTable(*form)->rowCount(), 0);
    QCOMPARE(m_item->data(row.role), QVariant(row.codes.last().code));
}

void TestPointFields::thousandPointsComeBack()
{
    FETCH_FORM;
    setModelsChecked(false);
    RowList stored;
    for (int number = 0; number < 1000; ++number) {
        stored.append(pointRow(source, QString("p%1").arg(number), row.pointCodes.at(number % 2)));
    }
    setPoints(m_item, stored);
    click(*open(row), "saveButton");
    QCOMPARE(pointsOf(*m_item), stored);
}

QTEST_MAIN(TestPointFields)
#include "tst_pointfields.moc"
