#include "parametercsvtexts.h"
#include "parameters/parametercsv.h"

#include <QtTest>

using namespace ParameterCsvTexts;

// Parameter rows as text and back, and every text that is refused.
class TestParameterCsv : public QObject
{
    Q_OBJECT
private slots:
    void rowsBecomeLines_data();
    void rowsBecomeLines();
    void refusedText_data();
    void refusedText();
    void acceptedText_data();
    void acceptedText();
    void badChoiceCountsOnceARowAndGoesOn();
    void faultsTellLineNameAndReason_data();
    void faultsTellLineNameAndReason();
    void faultsAreBounded();
    void wordsAreThoseOfTheLanguage();
    void hostileTextIsSurvived();
};

void TestParameterCsv::rowsBecomeLines_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QList<QStringList>>("rows");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("none") << true << QList<QStringList>() << modbusHeader;
    QTest::newRow("Modbus") << true
                            << QList<QStringList>{{"0", "a", "float", "1", "r", ""},
                                                  {"", "", "bool", "", "r", ""}}
                            << modbusHeader + "0,a,float,1,r,\n,,bool,,r,\n";
    QTest::newRow("a comma is not protected")
        << false << QList<QStringList>{{"D,1", "a", "bool", "1", "r", "Timed", "", "", "", ""}}
        << plcHeader + "D,1,a,bool,1,r,Timed,,,,\n";
}

void TestParameterCsv::rowsBecomeLines()
{
    QFETCH(bool, modbus);
    QFETCH(QList<QStringList>, rows);
    QFETCH(QByteArray, text);
    QCOMPARE(ParameterCsv::write(rows, variantOf(modbus)).toUtf8(), text);
}

void TestParameterCsv::refusedText_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QByteArray>("refusal");
    const QByteArray count = "CSV file has incorrect column count, unable to import";
    const QByteArray header = "CSV header does not match expected format.";
    const QByteArray length = "The length of the numbers in the CSV row does not match the expected format.";
    const QByteArray goodPlc = "D1,a,int16,1,r,Timed,,,,\n";
    const QByteArray goodModbus = "0,a,float,1,r,\n";

    QTest::newRow("five fields") << false << plcHeader + "1,a,bool,1,r\n" << count;
    QTest::newRow("five fields, Modbus") << true << modbusHeader + "1,a,bool,1,r\n" << count;
    QTest::newRow("five fields behind a good row") << false << plcHeader + goodPlc + "1,a,bool,1,r\n"
                                                   << count;
    QTest::newRow("short header") << true << QByteArray("Address,Name\n") << count;
    QTest::newRow("other header") << true << QByteArray("Addr,Name,Type,Length,Permissions,Deleat\n")
                                  << header;
    QTest::newRow("trailing comma in the header") << true << modbusHeader.chopped(1) + ",\n" << header;
    QTest::newRow("blank in the header")
        << true << QByteArray("Address, Name,Type,Length,Permissions,Deleat\n") << header;
    QTest::newRow("header of the other variant") << true << plcHeader << header;
    QTest::newRow("quotes") << true
                            << QByteArray(
                                   "\"Address\",\"Name\",\"Type\",\"Length\",\"Permissions\",\"Deleat\"\n")
                            << header;
    QTest::newRow("length with letters") << false << plcHeader + "D1,a,int16,x,r,Timed,,,,\n" << length;
    QTest::newRow("length with letters, Modbus") << true << modbusHeader + "0,a,float,1.5,r,\n" << length;
    QTest::newRow("length with a blank") << true << modbusHeader + "0,a,float, 1,r,\n" << length;
    QTest::newRow("amplitude")
        << false << plcHeader + "D1,a,int16,1,r,Timed,x,,,\n"
        << QByteArray("The magnitude of the change in the CSV row does not match the expected format.");
    QTest::newRow("collection formula")
        << false << plcHeader + "D1,a,int16,1,r,Timed,,y,,\n"
        << QByteArray("The collection formula in the CSV row does not match the expected format.");
    QTest::newRow("write formula")
        << false << plcHeader + "D1,a,int16,1,r,Timed,,,y,\n"
        << QByteArray("The write formula in the CSV row does not match the expected format.");
    QTest::newRow("bad address, Modbus")
        << true << modbusHeader + goodModbus + "D 1,a,float,1,r,\n"
        << QByteArray("The address in the CSV row does not match the expected format.");
    QTest::newRow("empty address, Modbus")
        << true << modbusHeader + ",a,float,1,r,\n"
        << QByteArray("The address in the CSV row does not match the expected format.");
}

void TestParameterCsv::refusedText()
{
    QFETCH(bool, modbus);
    QFETCH(QByteArray, bytes);
    QFETCH(QByteArray, refusal);
    const RowImport import = ParameterCsv::read(QString::fromUtf8(bytes), variantOf(modbus));
    QCOMPARE(QByteArray(import.refusal), refusal);
    QCOMPARE(import.rows, RowList());
    QCOMPARE(import.badChoices, 0);
}

void TestParameterCsv::acceptedText_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<QVariantList>>("rows");
    QTest::newRow("empty file") << false << QByteArray() << RowList();
    QTest::newRow("header only") << false << plcHeader << RowList();
    QTest::newRow("empty lines") << true << "\n\n" + modbusHeader + "\n0,a,float,1,r,\n\n"
                                 << RowList{row("0,a,float,1,r,")};
    QTest::newRow("nine fields") << false << plcHeader + "D1,a,int16,1,r,Timed,,X,X\n"
                                 << RowList{row("D1,a,int16,1,r,Timed,,X,X")};
    QTest::newRow("CR LF") << true << QByteArray(modbusHeader).replace("\n", "\r\n") + "0,a,float,1,r,\r\n"
                           << RowList{row("0,a,float,1,r,")};
    QTest::newRow("fields are trimmed, blank name") << true << modbusHeader + "0,  a  ,float,1,r, \n"
                                                    << RowList{row("0,a,float,1,r,")};
    QTest::newRow("duplicate names") << true << modbusHeader + "0,a,float,1,r,\n1,a,float,1,r,\n"
                                     << RowList{row("0,a,float,1,r,"), row("1,a,float,1,r,")};
    QTest::newRow("negative and empty length") << true << modbusHeader + "0,a,string,-3,r,\n1,b,string,,r,\n"
                                               << RowList{row("0,a,string,-3,r,"), row("1,b,string,,r,")};
    QTest::newRow("bad address in a PLC table, later fields untested")
        << false << plcHeader + "D 1,a,int16,1,r,Timed,x,y,z,\n"
        << RowList{row("D 1,a,int16,1,r,Timed,x,y,z,")};
    QTest::newRow("more fields than columns") << true << modbusHeader + "0,a,float,1,r,,x,y\n"
                                              << RowList{row("0,a,float,1,r,")};
    QTest::newRow("no line feed at the end")
        << true << modbusHeader + "0,a,float,1,r," << RowList{row("0,a,float,1,r,")};
}

void TestParameterCsv::acceptedText()
{
    QFETCH(bool, modbus);
    QFETCH(QByteArray, bytes);
    QFETCH(QList<QVariantList>, rows);
    const RowImport import = ParameterCsv::read(QString::fromUtf8(bytes), variantOf(modbus));
    QVERIFY(!import.refusal);
    QCOMPARE(import.rows, rows);
    QCOMPARE(import.badChoices, 0);
}

void TestParameterCsv::badChoiceCountsOnceARowAndGoesOn()
{
    const QByteArray rows = "D1,a,INT16,1,w,Timed,,,,\nD2,b,int16,1,w,Timed,,,,\n"
                            "D3,c,int16,1,r,Never,,,,\nD4,d,int16,1,r,Change,,,,\n";
    const QString text = QString::fromUtf8(plcHeader + rows);
    const RowImport import = ParameterCsv::read(text, ParameterVariant::plc());
    QVERIFY(!import.refusal);
    QCOMPARE(import.badChoices, 3);
    QCOMPARE(import.rows,
             (RowList{row("D1,a,INT16,1,w,Timed,,,,"), row("D2,b,int16,1,w,Timed,,,,"),
                      row("D3,c,int16,1,r,Never,,,,"), row("D4,d,int16,1,r,Change,,,,")}));

    // Those before the line that is refused are told too.
    const RowImport refused =
        ParameterCsv::read(text + "D5,e,int16,x,r,Timed,,,,\n", ParameterVariant::plc());
    QVERIFY(refused.refusal);
    QCOMPARE(refused.badChoices, 3);
    QCOMPARE(refused.rows, RowList());
}

void TestParameterCsv::faultsTellLineNameAndReason_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("told");
    const QByteArray good = "0,a,float,1,r,\n";
    QTest::newRow("nothing wrong") << true << modbusHeader + good << QStringList();
    QTest::newRow("other header") << true << "\n" + plcHeader + good
                                  << QStringList{"Line 2: not the header of this table, "
                                                 "Address,Name,Type,Length,Permissions,Deleat"};
    QTest::newRow("header in another encoding")
        << true << "\xb5\xd8\xd6\xb7,b,c,d,e,f\n" + good
        << QStringList{"Line 1: characters that cannot be read: save the file as \"CSV UTF-8\""};
    QTest::newRow("a name in another encoding, kept")
        << true << modbusHeader + good + "2,\xb5\xe7,float,1,r,\n"
        << QStringList{QString("Line 3, \"%1%1\": characters that cannot be read: "
                               "save the file as \"CSV UTF-8\"")
                           .arg(QChar(QChar::ReplacementCharacter))};
    QTest::newRow("short header, what follows is not looked at")
        << true << "Address,Name\n1,2\n" + good << QStringList{"Line 1: too few columns"};
    QTest::newRow("bad choices, kept") << true << modbusHeader + good + "\n1,volt,FLOAT,1,r,\n2,,float,1,w,\n"
                                       << QStringList{"Line 4, \"volt\": Type \"FLOAT\" is not in the list",
                                                      "Line 5: Permissions \"w\" is not in the list"};
    QTest::newRow("each refused line, and those between that are wrong")
        << true << modbusHeader + "D 1,a,float,1,r,\n" + good + "1,b,FLOAT,1,r,\n1,c\n2, d ,float,x,r,\n"
        << QStringList{"Line 2, \"a\": Address \"D 1\" is not allowed",
                       "Line 4, \"b\": Type \"FLOAT\" is not in the list", "Line 5, \"c\": too few columns",
                       "Line 6, \"d\": Length \"x\" is not allowed"};
    QTest::newRow("a PLC takes a bad address") << false << plcHeader + "D 1,a,int16,1,r,Timed,,,,\n"
                                               << QStringList();
    QTest::newRow("a formula of a PLC")
        << false << plcHeader + "D1,a,int16,1,r,Timed,,y,,\n"
        << QStringList{"Line 2, \"a\": Collection Formula \"y\" is not allowed"};
    QTest::newRow("CR LF") << true
                           << QByteArray(modbusHeader + good + "D 1,a,float,1,r,\n").replace("\n", "\r\n")
                           << QStringList{"Line 3, \"a\": Address \"D 1\" is not allowed"};
    // Nothing is quoted: the two lines that a spreadsheet makes of such a cell are both too short.
    QTest::newRow("a quoted line break ends a line")
        << true << modbusHeader + good + "1,\"b\nc\",float,1,r,\nD 1,d,float,1,r,\n"
        << QStringList{"Line 3, \"\"b\": too few columns", "Line 4, \"float\": too few columns",
                       "Line 5, \"d\": Address \"D 1\" is not allowed"};
}

void TestParameterCsv::faultsTellLineNameAndReason()
{
    QFETCH(bool, modbus);
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, told);
    const RowImport import = ParameterCsv::read(QString::fromUtf8(bytes), variantOf(modbus));
    QCOMPARE(import.faults.told, told);
    QCOMPARE(import.faults.count, told.size());
}

void TestParameterCsv::faultsAreBounded()
{
    QByteArray bytes = modbusHeader;
    for (int line = 0; line < 1000; ++line) {
        bytes += QByteArray(line, 'n') + ",name " + QByteArray::number(line) + ",float,x,r,\n";
    }
    bytes += "0," + QByteArray(100000, 'n') + ",float,x,r,\n";
    const RowImport import = ParameterCsv::read(QString::fromUtf8(bytes), ParameterVariant::modbus());
    QCOMPARE(import.faults.count, 1001);
    QCOMPARE(import.faults.told.size(), 20);

    const RowImport wide =
        ParameterCsv::read(QString::fromUtf8(modbusHeader + "0," + QByteArray(100000, 'n') + ",float,x,r,\n"),
                           ParameterVariant::modbus());
    QCOMPARE(
        wide.faults.told,
        QStringList{"Line 2, \"" + QString(40, 'n') + QChar(0x2026) + "\": Length \"x\" is not allowed"});
}

void TestParameterCsv::wordsAreThoseOfTheLanguage()
{
    Chinese chinese;
    QCoreApplication::installTranslator(&chinese);
    const QByteArray header = QString("地址").toUtf8() + plcHeader.mid(7);
    QCOMPARE(ParameterCsv::write({}, ParameterVariant::plc()).toUtf8(), header);
    const auto badChoices = [&header](const char *method) {
        const QString text =
            QString::fromUtf8(header) + QString("D1,a,int16,1,r,%1,,,,\n").arg(QString::fromUtf8(method));
        return ParameterCsv::read(text, ParameterVariant::plc()).badChoices;
    };
    QCOMPARE(badChoices("变化上报"), 0);
    QCOMPARE(badChoices("Change"), 1);
    QVERIFY(ParameterCsv::read(QString::fromUtf8(plcHeader), ParameterVariant::plc()).refusal);
    QCoreApplication::removeTranslator(&chinese);
}

void TestParameterCsv::hostileTextIsSurvived()
{
    QString binary;
    for (int unit = 0; unit < 4096; ++unit) {
        binary.append(QChar(ushort(unit * 37)));
    }
    for (const QString &text :
         {binary, QString(10 * 1024 * 1024, QLatin1Char('x')), QString(64 * 1024, QLatin1Char(','))}) {
        QVERIFY(ParameterCsv::read(text, ParameterVariant::modbus()).refusal);
    }
    QByteArray many = modbusHeader;
    for (int line = 0; line < 100000; ++line) {
        many += "0,a,float,1,r,\n";
    }
    QCOMPARE(ParameterCsv::read(QString::fromUtf8(many), ParameterVariant::modbus()).rows.size(), 100000);
    for (const QByteArray &amplitude :
         {QByteArray(4 * 1024 * 1024, '1') + 'x', "0." + QByteArray(4 * 1024 * 1024, '1') + '.'}) {
        const QByteArray text = plcHeader + "D1,a,int16,1,r,Timed," + amplitude + ",,,\n";
        QVERIFY(ParameterCsv::read(QString::fromUtf8(text), ParameterVariant::plc()).refusal);
    }
}

QTEST_GUILESS_MAIN(TestParameterCsv)
#include "tst_parametercsv.moc"
