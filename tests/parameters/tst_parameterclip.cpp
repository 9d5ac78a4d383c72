#include "parametercsvtexts.h"
#include "parameters/parameterclip.h"
#include "parameters/rowcheck.h"

#include <QtTest>

using namespace ParameterCsvTexts;

// Parameter rows as spreadsheets copy and paste them.
class TestParameterClip : public QObject
{
    Q_OBJECT
private slots:
    void rowsBecomeLines();
    void pastedRows_data();
    void pastedRows();
    void refusedRowsAreLeftOut_data();
    void refusedRowsAreLeftOut();
    void refusedText_data();
    void refusedText();
    void copiedRowsComeBack();
    void manyQuotesAreReadWithFewFaultsTold();
};

void TestParameterClip::rowsBecomeLines()
{
    QCOMPARE(
        ParameterClip::write({{"0", "a b", "r"}, {"1", "tab\there", "\"quoted\""}, {"2", "two\nlines", ""}}),
        "0\ta b\tr\n1\t\"tab\there\"\t\"\"\"quoted\"\"\"\n2\t\"two\nlines\"\t");
    QCOMPARE(ParameterClip::write({}), QString());
}

void TestParameterClip::pastedRows_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<QVariantList>>("rows");
    const RowList one{row("0,a,float,1,r")};
    QTest::newRow("one row") << true << "0\ta\tfloat\t1\tr" << one;
    QTest::newRow("with the button's column") << true << "0\ta\tfloat\t1\tr\t\n" << one;
    QTest::newRow("more columns") << true << "0\ta\tfloat\t1\tr\tTimed\t\t\t\n" << one;
    QTest::newRow("a spreadsheet's line breaks") << true << "0\ta\tfloat\t1\tr\r\n\r\n1\tb\tint8\t1\trw\r\n"
                                                 << RowList{row("0,a,float,1,r"), row("1,b,int8,1,rw")};
    QTest::newRow("single carriage returns") << true << "0\ta\tfloat\t1\tr\r1\tb\tint8\t1\trw\r"
                                             << RowList{row("0,a,float,1,r"), row("1,b,int8,1,rw")};
    QTest::newRow("header") << true << "Address\tName\tType\tLength\tPermissions\tDeleat\n0\ta\tfloat\t1\tr\t"
                            << one;
    QTest::newRow("header without the button's column")
        << true << "Address\tName\tType\tLength\tPermissions\n0\ta\tfloat\t1\tr" << one;
    QTest::newRow("a blank in an address") << true << " 0\t  a \tfloat\t1\tr" << RowList();
    QTest::newRow("a blank name is trimmed") << true << "0\t  a \tfloat\t1\tr" << one;
    QTest::newRow("quoted cells") << true << "0\t\"say \"\"a\"\"\tto\nb\"\tfloat\t1\t\"r\""
                                  << RowList{{"0", "say \"a\"\tto\nb", "float", "1", "r"}};
    QTest::newRow("a quote that nothing closes")
        << true << "0\t\"a\tfloat\t1\tr" << RowList{row("0,\"a,float,1,r")};
    QTest::newRow("a quote inside") << true << "0\t5\" pipe\tfloat\t1\tr"
                                    << RowList{row("0,5\" pipe,float,1,r")};
    QTest::newRow("PLC") << false << "D1\ta\tint16\t1\tr\tTimed\t\tX*2\tX/2\t"
                         << RowList{row("D1,a,int16,1,r,Timed,,X*2,X/2")};
    QTest::newRow("a comma in a name of a PLC")
        << false << "D1\ta,b\tint16\t1\tr\tTimed\t\t\t"
        << RowList{{"D1", "a,b", "int16", "1", "r", "Timed", "", "", ""}};
}

void TestParameterClip::pastedRows()
{
    QFETCH(bool, modbus);
    QFETCH(QString, text);
    QFETCH(QList<QVariantList>, rows);
    const RowImport import = ParameterClip::read(text, variantOf(modbus));
    QVERIFY(!import.refusal);
    QCOMPARE(import.rows, rows);
}

void TestParameterClip::refusedRowsAreLeftOut_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QString>("bad");
    QTest::addColumn<QString>("told");
    QTest::addColumn<bool>("stays");
    QTest::newRow("too short") << true << "1\tb\tfloat\t1"
                               << "too few columns" << false;
    QTest::newRow("too short for a PLC") << false << "1\tb\tint16\t1\tr"
                                         << "too few columns" << false;
    QTest::newRow("address") << true << "D 1\tb\tfloat\t1\tr"
                             << "Address \"D 1\" is not allowed" << false;
    QTest::newRow("length") << true << "1\tb\tfloat\tx\tr"
                            << "Length \"x\" is not allowed" << false;
    QTest::newRow("formula") << false << "1\tb\tint16\t1\tr\tTimed\t\ty\t"
                             << "Collection Formula \"y\" is not allowed" << false;
    QTest::newRow("a word that its list does not have") << true << "1\tb\tFLOAT\t1\tr"
                                                        << "Type \"FLOAT\" is not in the list" << true;
}

void TestParameterClip::refusedRowsAreLeftOut()
{
    QFETCH(bool, modbus);
    QFETCH(QString, bad);
    QFETCH(QString, told);
    QFETCH(bool, stays);
    const QString good = modbus ? QString("0\ta\tfloat\t1\tr\n") : "0\ta\tint16\t1\tr\tTimed\t\t\t\n";
    const RowImport import = ParameterClip::read(good + bad + '\n' + good, variantOf(modbus));
    QVERIFY(!import.refusal);
    QCOMPARE(import.rows.size(), stays ? 3 : 2);
    QCOMPARE(import.faults.told, QStringList{"Row 2, \"b\": " + told});
}

void TestParameterClip::refusedText_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("refusal");
    QTest::newRow("nothing") << QString() << QByteArray("The clipboard holds no rows");
    QTest::newRow("binary") << "0\ta\tfloat\t1\tr" + QString(1, QChar(QChar::Null))
                            << QByteArray("The clipboard holds no rows");
    QTest::newRow("too much") << QString(ParameterClip::mostText + 1, QLatin1Char('\t'))
                              << QByteArray("The clipboard holds too much to be pasted");
}

void TestParameterClip::refusedText()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, refusal);
    const RowImport import = ParameterClip::read(text, ParameterVariant::modbus());
    QCOMPARE(QByteArray(import.refusal), refusal);
    QCOMPARE(import.rows, RowList());
}

void TestParameterClip::copiedRowsComeBack()
{
    const QList<QStringList> rows{{"0", "a\tb", "float", "1", "r"},
                                  {"1", "say \"c\"", "int8", "1", "rw"},
                                  {"2", "\"", "bool", "1", "r"},
                                  {"3", "two\r\nlines", "string", "9", "r"},
                                  {"4", "电压", "bool", "", "r"}};
    RowList expected;
    for (const QStringList &row : rows) {
        expected.append(RowCheck::row(row, row.size()));
    }
    QCOMPARE(ParameterClip::read(ParameterClip::write(rows), ParameterVariant::modbus()).rows, expected);
}

void TestParameterClip::manyQuotesAreReadWithFewFaultsTold()
{
    constexpr int pieces = 100000;
    for (const char *piece : {"\"", "\"\"", "\"\t", "\"\"\"\n", "\"a\t", "\n\"\"a"}) {
        const QString text = QString::fromLatin1(piece).repeated(pieces);
        for (const QString &start : {QString(), QString("\"")}) {
            const RowImport import = ParameterClip::read(start + text, ParameterVariant::modbus());
            QVERIFY(!import.refusal);
            QVERIFY(import.faults.told.size() <= RowFaults::mostTold);
        }
    }
}

QTEST_GUILESS_MAIN(TestParameterClip)
#include "tst_parameterclip.moc"
