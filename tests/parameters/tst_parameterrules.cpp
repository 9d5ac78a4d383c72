#include "parameters/parameterrules.h"

#include <QtTest>

// What the cells of a parameter table may hold.
class TestParameterRules : public QObject
{
    Q_OBJECT
private slots:
    void numbers_data();
    void numbers();
    void texts_data();
    void texts();
    void addressOfAFileIsNotEmpty();
    void nameOfAnotherRow_data();
    void nameOfAnotherRow();
};

void TestParameterRules::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("isCount");
    QTest::addColumn<bool>("isThreshold");
    QTest::newRow("empty") << "" << false << false;
    QTest::newRow("zero") << "0" << false << true;
    QTest::newRow("one") << "1" << true << true;
    QTest::newRow("no upper bound") << "500" << true << true;
    QTest::newRow("blanks around") << " 4 " << true << true;
    QTest::newRow("minus") << "-3" << false << false;
    QTest::newRow("negative zero") << "-0" << false << true;
    QTest::newRow("fraction") << "1.5" << false << true;
    QTest::newRow("exponent") << "1e3" << false << true;
    QTest::newRow("letters") << "ten" << false << false;
    QTest::newRow("no number by its name") << "nan" << false << true;
    QTest::newRow("infinite") << "inf" << false << true;
    QTest::newRow("negative infinite") << "-inf" << false << false;
    QTest::newRow("beyond 32 bits") << "4294967297" << false << true;
}

void TestParameterRules::numbers()
{
    QFETCH(QString, text);
    QTEST(ParameterRules::isCount(text), "isCount");
    QTEST(ParameterRules::isThreshold(text), "isThreshold");
}

void TestParameterRules::texts_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<int>("cell");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("fault");
    const auto add = [](const char *name, ParameterCell cell, const char *text, const char *fault = "",
                        bool modbus = false) {
        QTest::addRow("%s: %s", name, text)
            << modbus << int(cell) << QString::fromUtf8(text) << QByteArray(fault);
    };
    const char *const address =
        "Invalid input in row %1: only letters, digits, underscores, dots, colons, and "
        "brackets are allowed.";
    for (const char *text : {"", "DB1.DBW0", "!~#,;"}) {
        add("address", ParameterCell::Address, text);
    }
    for (const char *text : {"D 1", "地址", "\t"}) {
        add("address", ParameterCell::Address, text, address);
    }
    add("name", ParameterCell::Name, "a,b");
    add("name of Modbus", ParameterCell::Name, "a b", "", true);
    add("name of Modbus", ParameterCell::Name, "a,b",
        "The name cannot contain a comma. Please use a different name.", true);
    for (const char *text : {"", "12", "0.5", ".5", "-3"}) {
        add("amplitude", ParameterCell::Amplitude, text);
    }
    for (const char *text : {"5.", "abc", "1e3", "nan"}) {
        add("amplitude", ParameterCell::Amplitude, text,
            "Invalid input in row %1: only integers and floating-point numbers are allowed.");
    }
    for (const ParameterCell cell : {ParameterCell::CollectionFormula, ParameterCell::WriteFormula}) {
        const char *const name = cell == ParameterCell::WriteFormula ? "write formula" : "collection formula";
        add(name, cell, "");
        add(name, cell, "X*0.1+2-3/4");
        for (const char *text : {"x*2", "(X)", "X 2"}) {
            add(name, cell, text,
                "Invalid input in row %1: only numbers, operators (+, -, *, /) and 'X' are allowed.");
        }
    }
    add("permissions", ParameterCell::Permissions, "anything");
}

void TestParameterRules::texts()
{
    QFETCH(bool, modbus);
    QFETCH(int, cell);
    QFETCH(QString, text);
    const ParameterVariant &variant = modbus ? ParameterVariant::modbus() : ParameterVariant::plc();
    QTEST(QByteArray(ParameterRules::faultOf(variant, ParameterCell(cell), text)), "fault");
}

void TestParameterRules::addressOfAFileIsNotEmpty()
{
    QVERIFY(!ParameterRules::isAddress(QString()));
    QVERIFY(ParameterRules::isFormula(QString()));
    // The digital inputs of the Box have addresses of their own.
    QVERIFY(!ParameterRules::faultOf(ParameterVariant::dido(), ParameterCell::Address, "D 1"));
}

void TestParameterRules::nameOfAnotherRow_data()
{
    QTest::addColumn<int>("except");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("row");
    QTest::newRow("other row") << 0 << "b" << 1;
    QTest::newRow("first of two") << 3 << "a" << 0;
    QTest::newRow("itself") << 1 << "b" << -1;
    QTest::newRow("a row that is gone") << 9 << "b" << 1;
    QTest::newRow("other case") << 0 << "B" << -1;
    QTest::newRow("blanks count") << 0 << "b " << -1;
}

void TestParameterRules::nameOfAnotherRow()
{
    QFETCH(int, except);
    QFETCH(QString, name);
    QTEST(ParameterRules::rowWithName({"a", "b", "a", "c"}, except, name), "row");
}

QTEST_GUILESS_MAIN(TestParameterRules)
#include "tst_parameterrules.moc"
