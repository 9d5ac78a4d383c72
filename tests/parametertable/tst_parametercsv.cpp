#include "parametereditortest.h"
#include "support/files.h"

#include <QDir>
#include <QPushButton>
#include <QTranslator>

// Parameter rows to a file and back, and every file that an import refuses.
class TestParameterCsv : public ParameterEditorTest
{
    Q_OBJECT
private slots:
    void init()
    {
        setUp();
        make(ParameterVariant::plc());
    }
    void cleanup() { tearDown(); }
    void exportWritesHeaderAndRows_data();
    void exportWritesHeaderAndRows();
    void exportedFileImportsUnchanged_data();
    void exportedFileImportsUnchanged();
    void refusedFileLeavesTheTable_data();
    void refusedFileLeavesTheTable();
    void acceptedFileReplacesTheTable_data();
    void acceptedFileReplacesTheTable();
    void badChoiceIsToldOnceARowAndGoesOn();
    void chineseFileAndEnglishWord();
    void modbusEmptiesTheLatestTableToo();
    void fileThatCannotBeOpened();
    void hostileFilesAreSurvived();
    void withoutTableTheExportIsEmptyAndTheImportTells();

private:
    // Of a form with tabs, which tells when it has none.
    void make(const ParameterVariant &variant)
    {
        ParameterEditorTest::make(variant);
        m_editor->setMissingText([] { return QStringLiteral("No tab selected."); });
    }
};

namespace {

const QByteArray plcHeader =
    "Address,Name,Type,Length,Permissions,Reporting Method,Change Amplitude,Collection Formula,Write "
    "Formula,Deleat\n";
const QByteArray modbusHeader = "Address,Name,Type,Length,Permissions,Deleat\n";
const QString choiceBox = QStringLiteral("error|The multiple-choice content in the CSV row does not match "
                                         "the expected format. Set as default value");

QVariantList row(const QByteArray &fields)
{
    QVariantList values;
    const QStringList texts = QString::fromUtf8(fields).split(QLatin1Char(','));
    for (const QString &text : texts) {
        values.append(text);
    }
    return values;
}

QString writeFile(const QByteArray &bytes)
{
    return Files::put(QStringLiteral("in.csv"), bytes);
}

class Chinese : public QTranslator
{
public:
    QString translate(const char *, const char *source, const char *, int) const override
    {
        static const QHash<QByteArray, QString> texts{{"Timed", QStringLiteral("定时上报")},
                                                      {"Change", QStringLiteral("变化上报")},
                                                      {"Address", QStringLiteral("地址")}};
        return texts.value(source);
    }
    bool isEmpty() const override { return false; }
};

} // namespace

void TestParameterCsv::exportWritesHeaderAndRows_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QList<QVariantList>>("rows");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("PLC") << false
                         << RowList{row("D1,a,int16,1,rw,Change amplitude,0.5,X*2,X/2"),
                                    row("x y,,bool,1,r,Timed,,,")}
                         << plcHeader
            + "D1,a,int16,1,rw,Change amplitude,0.5,X*2,X/2,\nx y,,bool,1,r,Timed,,,,\n";
    QTest::newRow("Modbus") << true << RowList{row("0,a,float,1,r"), row("2,b,string,9,rw")}
                            << modbusHeader + "0,a,float,1,r,\n2,b,string,9,rw,\n";
    QTest::newRow("no rows") << true << RowList() << modbusHeader;
    QTest::newRow("a comma is not protected")
        << false << RowList{QVariantList{"D,1", "a", "bool", "1", "r", "Timed", "", "", ""}}
        << plcHeader + "D,1,a,bool,1,r,Timed,,,,\n";
}

void TestParameterCsv::exportWritesHeaderAndRows()
{
    QFETCH(bool, modbus);
    QFETCH(QList<QVariantList>, rows);
    QFETCH(QByteArray, bytes);
    make(modbus ? ParameterVariant::modbus() : ParameterVariant::plc());
    m_editor->loadParameters(rows);
    m_editor->exportFile(QStringLiteral("out.csv"));
    QCOMPARE(Files::contents(QStringLiteral("out.csv")), bytes);
}

void TestParameterCsv::exportedFileImportsUnchanged_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::newRow("PLC") << false;
    QTest::newRow("Modbus") << true;
}

void TestParameterCsv::exportedFileImportsUnchanged()
{
    QFETCH(bool, modbus);
    make(modbus ? ParameterVariant::modbus() : ParameterVariant::plc());
    const RowList rows = modbus
        ? RowList{row("0,电压,float,1,r"), row("2,b,string,9,rw")}
        : RowList{row("D1,a,int16,1,rw,Change amplitude,0.5,X*2,X/2"), row("D2,电压,string,5,r,Change,,,")};
    m_editor->loadParameters(rows);
    m_editor->exportFile(QStringLiteral("out.csv"));
    const QByteArray exported = Files::contents(QStringLiteral("out.csv"));
    m_editor->removeAllParameters();
    m_editor->importFile(QStringLiteral("out.csv"));
    m_editor->exportFile(QStringLiteral("again.csv"));
    QCOMPARE(Files::contents(QStringLiteral("again.csv")), exported);
    RowList withButtonField = rows;
    for (QVariantList &each : withButtonField) {
        each.append(QString(QLatin1String("")));
    }
    QCOMPARE(m_editor->rows(m_table), withButtonField);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterCsv::refusedFileLeavesTheTable_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("told");
    const auto error = [](const char *text) {
        return QStringList{QStringLiteral("error|") + QLatin1String(text)};
    };
    const QStringList count = error("CSV file has incorrect column count, unable to import");
    const QStringList header = error("CSV header does not match expected format.");
    const QStringList length =
        error("The length of the numbers in the CSV row does not match the expected format.");
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
        << error("The magnitude of the change in the CSV row does not match the expected format.");
    QTest::newRow("collection formula")
        << false << plcHeader + "D1,a,int16,1,r,Timed,,y,,\n"
        << error("The collection formula in the CSV row does not match the expected format.");
    QTest::newRow("write formula")
        << false << plcHeader + "D1,a,int16,1,r,Timed,,,y,\n"
        << error("The write formula in the CSV row does not match the expected format.");
    QTest::newRow("bad address, Modbus")
        << true << modbusHeader + goodModbus + "D 1,a,float,1,r,\n"
        << error("The address in the CSV row does not match the expected format.");
    QTest::newRow("empty address, Modbus")
        << true << modbusHeader + ",a,float,1,r,\n"
        << error("The address in the CSV row does not match the expected format.");
}

void TestParameterCsv::refusedFileLeavesTheTable()
{
    QFETCH(bool, modbus);
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, told);
    make(modbus ? ParameterVariant::modbus() : ParameterVariant::plc());
    const RowList before{modbus ? row("7,old,int8,1,r") : row("7,old,int8,1,r,Timed,,,")};
    m_editor->loadParameters(before);
    for (int box = 0; box < told.size(); ++box) {
        m_boxes->expect();
    }
    m_editor->importFile(writeFile(bytes));
    QCOMPARE(m_boxes->told(), told);
    QCOMPARE(m_editor->rows(m_table), before);
}

void TestParameterCsv::acceptedFileReplacesTheTable_data()
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
    QTest::newRow("byte order mark") << true << "\xEF\xBB\xBF" + modbusHeader + "0,a,float,1,r,\n"
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

void TestParameterCsv::acceptedFileReplacesTheTable()
{
    QFETCH(bool, modbus);
    QFETCH(QByteArray, bytes);
    QFETCH(QList<QVariantList>, rows);
    make(modbus ? ParameterVariant::modbus() : ParameterVariant::plc());
    m_editor->loadParameters({modbus ? row("7,old,int8,1,r") : row("7,old,int8,1,r,Timed,,,")});
    m_editor->importFile(writeFile(bytes));
    QCOMPARE(m_editor->rows(m_table), rows);
    for (int each = 0; each < m_table->rowCount(); ++each) {
        QVERIFY(qobject_cast<QPushButton *>(m_table->cellWidget(each, m_table->columnCount() - 1)));
    }
}

void TestParameterCsv::badChoiceIsToldOnceARowAndGoesOn()
{
    m_boxes->expect();
    m_boxes->expect();
    m_boxes->expect();
    m_editor->importFile(writeFile(plcHeader
                                   + "D1,a,INT16,1,r,Timed,,,,\nD2,b,int16,1,w,Timed,,,,\n"
                                     "D3,c,int16,1,r,Never,,,,\nD4,d,int16,1,r,Change,,,,\n"));
    QCOMPARE(m_boxes->told(), (QStringList{choiceBox, choiceBox, choiceBox}));
    QCOMPARE(m_editor->rows(m_table),
             (RowList{row("D1,a,bool,1,r,Timed,,,,"), row("D2,b,int16,1,r,Timed,,,,"),
                      row("D3,c,int16,1,r,Timed,,,,"), row("D4,d,int16,1,r,Change,,,,")}));
}

void TestParameterCsv::chineseFileAndEnglishWord()
{
    Chinese chinese;
    QCoreApplication::installTranslator(&chinese);
    make(ParameterVariant::plc());
    m_editor->loadParameters({row("D1,a,int16,1,r,Change,,,")});
    m_editor->exportFile(QStringLiteral("out.csv"));
    const QByteArray header = QStringLiteral("地址").toUtf8() + plcHeader.mid(7);
    QCOMPARE(Files::contents(QStringLiteral("out.csv")),
             header + "D1,a,int16,1,r," + QStringLiteral("变化上报").toUtf8() + ",,,,\n");
    m_editor->importFile(QStringLiteral("out.csv"));
    QCOMPARE(m_editor->rows(m_table), RowList{row("D1,a,int16,1,r,Change,,,,")});

    // The English word brings the box, and the row loads properly all the same.
    m_boxes->expect();
    m_editor->importFile(writeFile(header + "D1,a,int16,1,r,Timed,,,,\n"));
    QCOMPARE(m_editor->rows(m_table), RowList{row("D1,a,int16,1,r,Timed,,,,")});

    m_boxes->expect();
    m_editor->importFile(writeFile(plcHeader));
    QCOMPARE(m_boxes->told(),
             (QStringList{choiceBox, QStringLiteral("error|CSV header does not match expected format.")}));
    QCoreApplication::removeTranslator(&chinese);
}

void TestParameterCsv::modbusEmptiesTheLatestTableToo()
{
    make(ParameterVariant::modbus());
    QTableWidget latest(m_form);
    m_editor->prepare(&latest);
    m_editor->fill(&latest, {row("9,z,int8,1,r")});
    m_latest = &latest;
    m_editor->importFile(writeFile(modbusHeader + "0,a,float,1,r,\n"));
    QCOMPARE(latest.rowCount(), 0);
    QCOMPARE(m_editor->rows(m_table), RowList{row("0,a,float,1,r,")});
}

void TestParameterCsv::fileThatCannotBeOpened()
{
    for (int box = 0; box < 4; ++box) {
        m_boxes->expect();
    }
    QDir().mkdir(QStringLiteral("folder"));
    m_editor->loadParameters({row("7,old,int8,1,r,Timed,,,")});
    m_editor->importFile(QStringLiteral("missing.csv"));
    m_editor->importFile(QStringLiteral("folder"));
    m_editor->exportFile(QStringLiteral("folder"));
    QCOMPARE(m_table->rowCount(), 1);
    make(ParameterVariant::modbus());
    m_editor->exportFile(QStringLiteral("folder"));
    QCOMPARE(m_boxes->told(),
             (QStringList{QStringLiteral("mistake|Unable to open file for reading."),
                          QStringLiteral("mistake|Unable to open file for reading."),
                          QStringLiteral("mistake|Unable to open file for writing."),
                          QStringLiteral("Mistake|Unable to open file for writing.")}));
}

void TestParameterCsv::hostileFilesAreSurvived()
{
    make(ParameterVariant::modbus());
    QByteArray binary;
    for (int byte = 0; byte < 4096; ++byte) {
        binary.append(static_cast<char>(byte * 37));
    }
    for (const QByteArray &bytes : {binary, QByteArray(10 * 1024 * 1024, 'x'), QByteArray(64 * 1024, ',')}) {
        m_boxes->expect();
        m_editor->importFile(writeFile(bytes));
    }
    QCOMPARE(m_table->rowCount(), 0);
    m_boxes->expect();
    QByteArray many = modbusHeader;
    for (int line = 0; line < 100000; ++line) {
        many += "0,a,float,1,r,\n";
    }
    m_editor->importFile(writeFile(many + "end\n"));
    QCOMPARE(m_table->rowCount(), 0);

    make(ParameterVariant::plc());
    for (const QByteArray &amplitude :
         {QByteArray(4 * 1024 * 1024, '1') + 'x', "0." + QByteArray(4 * 1024 * 1024, '1') + '.'}) {
        m_boxes->expect();
        m_editor->importFile(writeFile(plcHeader + "D1,a,int16,1,r,Timed," + amplitude + ",,,\n"));
    }
    QCOMPARE(m_table->rowCount(), 0);
}

void TestParameterCsv::withoutTableTheExportIsEmptyAndTheImportTells()
{
    make(ParameterVariant::modbus());
    m_table = nullptr;
    m_latest = nullptr;
    m_editor->exportFile(QStringLiteral("none.csv"));
    QCOMPARE(Files::contents(QStringLiteral("none.csv")), QByteArray());
    m_boxes->expect();
    m_editor->importFile(writeFile(modbusHeader + "0,a,float,1,r,\n"));
    QCOMPARE(m_boxes->told(), QStringList{QStringLiteral("Error|No tab selected.")});
}

QTEST_MAIN(TestParameterCsv)
#include "tst_parametercsv.moc"
