#include "files.h"
#include "parametercsvtexts.h"
#include "parameterformtest.h"
#include "parametertable/tablenote.h"

#include <QApplication>
#include <QDir>
#include <QLayout>
#include <QPushButton>
#include <QTextDocumentFragment>
#include <QTimer>

using namespace ParameterCsvTexts;

// Parameter rows to a file and back, as the user meets it.
class TestParameterImport : public ParameterFormTest
{
    Q_OBJECT
private slots:
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
    void lengthIsCheckedBeforeItsRowGoes_data();
    void lengthIsCheckedBeforeItsRowGoes();
    void formMayDieBelowTheMessageOfALength();
    void fileThatCannotBeOpened();
    void withoutTableTheExportIsEmptyAndTheImportTells();
    void noFileWhereThereIsNoCsv();
    void noteTellsWhatAnImportCameTo();
    void noteTellsWhichLinesWereRefused();
    void noteTellsHowManyRowsWentWhere();
    void noteIsOfTheTabsTable();
    void longNameOfAFileDoesNotWidenTheForm();
    void noteIsShownWholeInANarrowForm();

private:
    // A Modbus form whose current table is not the latest one, with a length being typed into.
    void typeIntoLength(bool ofLatest);
};

namespace {

QString noteIn(const QWidget *page)
{
    return page->findChild<TableNote *>()->text();
}

QString tipIn(const QWidget *page)
{
    return QTextDocumentFragment::fromHtml(page->findChild<TableNote *>()->toolTip()).toPlainText();
}

const QString choiceMessage = "error|The multiple-choice content in the CSV row does not match "
                              "the expected format. Set as default value";

QString writeFile(const QByteArray &bytes)
{
    return Files::put("in.csv", bytes);
}

} // namespace

void TestParameterImport::exportWritesHeaderAndRows_data()
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
}

void TestParameterImport::exportWritesHeaderAndRows()
{
    QFETCH(bool, modbus);
    QFETCH(QList<QVariantList>, rows);
    QFETCH(QByteArray, bytes);
    make(variantOf(modbus));
    m_form->loadParameters(rows);
    m_form->exportFile("out.csv");
    QCOMPARE(Files::contents("out.csv"), bytes);
}

void TestParameterImport::exportedFileImportsUnchanged_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::newRow("PLC") << false;
    QTest::newRow("Modbus") << true;
}

void TestParameterImport::exportedFileImportsUnchanged()
{
    QFETCH(bool, modbus);
    make(variantOf(modbus));
    const RowList rows = modbus
        ? RowList{row("0,电压,float,1,r"), row("2,b,string,9,rw")}
        : RowList{row("D1,a,int16,1,rw,Change amplitude,0.5,X*2,X/2"), row("D2,电压,string,5,r,Change,,,")};
    m_form->loadParameters(rows);
    m_form->exportFile("out.csv");
    const QByteArray exported = Files::contents("out.csv");
    m_form->removeAllParameters();
    m_form->importFile("out.csv");
    m_form->exportFile("again.csv");
    QCOMPARE(Files::contents("again.csv"), exported);
    RowList withButtonField = rows;
    for (QVariantList &each : withButtonField) {
        each.append(QString(""));
    }
    QCOMPARE(m_table->rows(), withButtonField);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterImport::refusedFileLeavesTheTable_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QStringList>("told");
    QTest::newRow("behind a good row")
        << false << plcHeader + "D1,a,int16,1,r,Timed,,,,\n1,a,bool,1,r\n"
        << QStringList{"error|CSV file has incorrect column count, unable to import"};
    QTest::newRow("behind a bad choice")
        << true << modbusHeader + "0,a,FLOAT,1,r,\n0,a,float,x,r,\n"
        << QStringList{choiceMessage,
                       "error|The length of the numbers in the CSV row does not match the expected format."};
}

void TestParameterImport::refusedFileLeavesTheTable()
{
    QFETCH(bool, modbus);
    QFETCH(QByteArray, bytes);
    QFETCH(QStringList, told);
    make(variantOf(modbus));
    const RowList before{modbus ? row("7,old,int8,1,r") : row("7,old,int8,1,r,Timed,,,")};
    m_form->loadParameters(before);
    for (int box = 0; box < told.size(); ++box) {
        m_messages->expect();
    }
    m_form->importFile(writeFile(bytes));
    QCOMPARE(m_messages->told(), told);
    QCOMPARE(m_table->rows(), before);
}

void TestParameterImport::acceptedFileReplacesTheTable_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QList<QVariantList>>("rows");
    QTest::newRow("PLC") << false << plcHeader + "D 1,a,int16,1,r,Timed,,,\n"
                         << RowList{row("D 1,a,int16,1,r,Timed,,,")};
    QTest::newRow("byte order mark") << true << "\xEF\xBB\xBF" + modbusHeader + "0,a,float,1,r,\n"
                                     << RowList{row("0,a,float,1,r,")};
}

void TestParameterImport::acceptedFileReplacesTheTable()
{
    QFETCH(bool, modbus);
    QFETCH(QByteArray, bytes);
    QFETCH(QList<QVariantList>, rows);
    make(variantOf(modbus));
    m_form->loadParameters({modbus ? row("7,old,int8,1,r") : row("7,old,int8,1,r,Timed,,,")});
    m_form->importFile(writeFile(bytes));
    QCOMPARE(m_table->rows(), rows);
    for (int each = 0; each < m_table->rowCount(); ++each) {
        QVERIFY(qobject_cast<QPushButton *>(m_table->cellWidget(each, m_table->columnCount() - 1)));
    }
}

void TestParameterImport::badChoiceIsToldOnceARowAndGoesOn()
{
    m_messages->expect();
    m_messages->expect();
    m_messages->expect();
    m_form->importFile(writeFile(plcHeader
                                 + "D1,a,INT16,1,r,Timed,,,,\nD2,b,int16,1,w,Timed,,,,\n"
                                   "D3,c,int16,1,r,Never,,,,\nD4,d,int16,1,r,Change,,,,\n"));
    QCOMPARE(m_messages->told(), (QStringList{choiceMessage, choiceMessage, choiceMessage}));
    QCOMPARE(m_table->rows(),
             (RowList{row("D1,a,bool,1,r,Timed,,,,"), row("D2,b,int16,1,r,Timed,,,,"),
                      row("D3,c,int16,1,r,Timed,,,,"), row("D4,d,int16,1,r,Change,,,,")}));
}

void TestParameterImport::chineseFileAndEnglishWord()
{
    Chinese chinese;
    QCoreApplication::installTranslator(&chinese);
    make(ParameterVariant::plc());
    m_form->loadParameters({row("D1,a,int16,1,r,Change,,,")});
    m_form->exportFile("out.csv");
    const QByteArray header = QString("地址").toUtf8() + plcHeader.mid(7);
    QCOMPARE(Files::contents("out.csv"),
             header + "D1,a,int16,1,r," + QString("变化上报").toUtf8() + ",,,,\n");
    m_form->importFile("out.csv");
    QCOMPARE(m_table->rows(), RowList{row("D1,a,int16,1,r,Change,,,,")});

    // The English word brings the box, and the row loads properly all the same.
    m_messages->expect();
    m_form->importFile(writeFile(header + "D1,a,int16,1,r,Timed,,,,\n"));
    QCOMPARE(m_table->rows(), RowList{row("D1,a,int16,1,r,Timed,,,,")});

    m_messages->expect();
    m_form->importFile(writeFile(plcHeader));
    QCOMPARE(m_messages->told(),
             (QStringList{choiceMessage, "error|CSV header does not match expected format."}));
    QCoreApplication::removeTranslator(&chinese);
}

void TestParameterImport::modbusEmptiesTheLatestTableToo()
{
    make(ParameterVariant::modbus());
    ParameterTable *latest = m_form->makeTable(m_form);
    latest->fill({row("9,z,int8,1,r")});
    m_latest = latest;
    m_form->importFile(writeFile(modbusHeader + "0,a,float,1,r,\n"));
    QCOMPARE(latest->rowCount(), 0);
    QCOMPARE(m_table->rows(), RowList{row("0,a,float,1,r,")});
}

void TestParameterImport::typeIntoLength(bool ofLatest)
{
    make(ParameterVariant::modbus());
    m_latest = m_form->makeTable(m_form);
    for (ParameterTable *table : {m_table, m_latest}) {
        m_form->layout()->addWidget(table);
        table->fill({row("7,old,string,5,r")});
    }
    m_form->show();
    QApplication::setActiveWindow(m_form);
    QVERIFY(QTest::qWaitForWindowActive(m_form));
    QLineEdit *length = (ofLatest ? m_latest : m_table)->editor(0, Length);
    length->setFocus();
    length->setText("none");
}

void TestParameterImport::lengthIsCheckedBeforeItsRowGoes_data()
{
    QTest::addColumn<bool>("ofLatest");
    QTest::newRow("of the table that is filled") << false;
    QTest::newRow("of the table that is emptied") << true;
}

void TestParameterImport::lengthIsCheckedBeforeItsRowGoes()
{
    QFETCH(bool, ofLatest);
    RUN(typeIntoLength(ofLatest));
    int rowsBelow = -1;
    QTimer::singleShot(0, m_form,
                       [this, &rowsBelow] { rowsBelow = m_table->rowCount() + m_latest->rowCount(); });
    m_messages->expect();
    m_form->importFile(writeFile(modbusHeader + "0,a,float,1,r,\n"));
    QCOMPARE(m_messages->told(), QStringList{"Warning|Length must be a positive integer between 1 and 10."});
    QCOMPARE(rowsBelow, 2);
    QCOMPARE(m_table->rows(), RowList{row("0,a,float,1,r,")});
    QCOMPARE(m_latest->rowCount(), 0);
}

void TestParameterImport::formMayDieBelowTheMessageOfALength()
{
    RUN(typeIntoLength(true));
    const QPointer<ParameterForm> form(m_form);
    const UnwatchedModals unwatched;
    QTimer::singleShot(0, this, [this] { delete std::exchange(m_form, nullptr); });
    form->importFile(writeFile(modbusHeader + "0,a,float,1,r,\n"));
    QVERIFY(!form);
}

void TestParameterImport::fileThatCannotBeOpened()
{
    for (int box = 0; box < 4; ++box) {
        m_messages->expect();
    }
    QDir().mkdir("folder");
    m_form->loadParameters({row("7,old,int8,1,r,Timed,,,")});
    m_form->importFile("missing.csv");
    m_form->importFile("folder");
    m_form->exportFile("folder");
    QCOMPARE(m_table->rowCount(), 1);
    make(ParameterVariant::modbus());
    m_form->exportFile("folder");
    QCOMPARE(m_messages->told(),
             (QStringList{
                 "mistake|Unable to open file for reading.", "mistake|Unable to open file for reading.",
                 "mistake|Unable to open file for writing.", "Mistake|Unable to open file for writing."}));
}

void TestParameterImport::withoutTableTheExportIsEmptyAndTheImportTells()
{
    make(ParameterVariant::modbus());
    m_table = nullptr;
    m_latest = nullptr;
    m_form->exportFile("none.csv");
    QCOMPARE(Files::contents("none.csv"), QByteArray());
    m_messages->expect();
    m_form->importFile(writeFile(modbusHeader + "0,a,float,1,r,\n"));
    QCOMPARE(m_messages->told(), QStringList{"Error|No tab selected."});
}

void TestParameterImport::noFileWhereThereIsNoCsv()
{
    make(ParameterVariant::dido());
    m_form->importParameters();
    m_form->exportParameters();
}

void TestParameterImport::noteTellsWhatAnImportCameTo()
{
    make(ParameterVariant::modbus());
    m_form->makeTableButtons(m_form);
    QCOMPARE(noteIn(m_form), QString());
    m_form->importFile(writeFile(modbusHeader + "0,a,float,1,r,\n1,b,float,1,r,\n"));
    QCOMPARE(noteIn(m_form), "Rows imported from in.csv: 2");
    QCOMPARE(tipIn(m_form), "Rows imported from in.csv: 2");
    m_messages->expect();
    m_form->importFile(writeFile(modbusHeader + "0,<b>,FLOAT,1,r,\n"));
    QCOMPARE(noteIn(m_form), "Rows imported from in.csv: 1; with faults: 1");
    QCOMPARE(tipIn(m_form), noteIn(m_form) + "\nLine 2, \"<b>\": Type \"FLOAT\" is not in the list");
    m_form->loadParameters({}); // as for another item
    QCOMPARE(noteIn(m_form) + tipIn(m_form), QString());
}

void TestParameterImport::noteTellsWhichLinesWereRefused()
{
    make(ParameterVariant::modbus());
    m_form->makeTableButtons(m_form);
    m_form->loadParameters({row("7,old,int8,1,r")});
    QByteArray file = modbusHeader + "0,good,float,1,r,\n";
    for (int line = 0; line < 22; ++line) {
        file += "D 1,bad,float,1,r,\n";
    }
    m_messages->expect();
    m_form->importFile(writeFile(file));
    QCOMPARE(m_messages->told(),
             QStringList{"error|The address in the CSV row does not match the expected format."});
    QCOMPARE(m_table->rowCount(), 1);
    QCOMPARE(noteIn(m_form), "Rows imported from in.csv: 0; with faults: 22");
    const QStringList told = tipIn(m_form).split('\n');
    QCOMPARE(told.size(), 1 + 20 + 1);
    QCOMPARE(told.at(1), "Line 3, \"bad\": Address \"D 1\" is not allowed");
    QCOMPARE(told.at(20), "Line 22, \"bad\": Address \"D 1\" is not allowed");
    QCOMPARE(told.last(), "and 2 more");
}

void TestParameterImport::noteTellsHowManyRowsWentWhere()
{
    make(ParameterVariant::modbus());
    m_form->makeTableButtons(m_form);
    m_form->loadParameters({row("0,a,float,1,r"), row("2,b,string,9,rw")});
    m_form->exportFile(QDir::current().filePath("my %2 points.csv"));
    QCOMPARE(noteIn(m_form), "Rows exported to my %2 points.csv: 2");
    QCOMPARE(m_workspace->messages, QStringList());
    if (QFile::exists("/dev/full")) {
        m_form->exportFile("/dev/full");
        QCOMPARE(noteIn(m_form), "full could not be written as a whole");
    }
}

void TestParameterImport::noteIsOfTheTabsTable()
{
    make(ParameterVariant::modbus());
    QWidget *const pages[] = {new QWidget(m_form), new QWidget(m_form)};
    for (QWidget *page : pages) {
        m_form->makeTableButtons(page);
        m_latest = m_form->makeTable(page);
    }
    m_table = pages[0]->findChild<ParameterTable *>();
    m_form->exportFile("out.csv");
    QCOMPARE(noteIn(pages[0]), "Rows exported to out.csv: 0");
    QCOMPARE(noteIn(pages[1]), QString());
    m_table = m_latest;
    m_form->importFile(writeFile(modbusHeader + "0,a,float,1,r,\n"));
    QCOMPARE(noteIn(pages[1]), "Rows imported from in.csv: 1");
    m_table = pages[0]->findChild<ParameterTable *>();
    m_form->importFile("in.csv"); // which empties the other one
    QCOMPARE(noteIn(pages[0]), "Rows imported from in.csv: 1");
    QCOMPARE(noteIn(pages[1]) + tipIn(pages[1]), QString());
}

// In the middle of its text stands how many rows came.
void TestParameterImport::noteIsShownWholeInANarrowForm()
{
    make(ParameterVariant::modbus());
    QWidget *buttons = m_form->makeTableButtons(m_form);
    buttons->resize(440, buttons->sizeHint().height());
    m_messages->expect();
    m_form->importFile(writeFile(modbusHeader + "D 1,a,float,1,r,\n"));
    const auto *note = buttons->findChild<TableNote *>();
    QCOMPARE(note->text(), "Rows imported from in.csv: 0; with faults: 1");
    buttons->layout()->activate();
    QVERIFY(note->width() >= note->sizeHint().width());
}

void TestParameterImport::longNameOfAFileDoesNotWidenTheForm()
{
    make(ParameterVariant::modbus());
    const QWidget *buttons = m_form->makeTableButtons(m_form);
    const int width = buttons->minimumSizeHint().width();
    m_form->exportFile(QString(200, 'x') + ".csv");
    QCOMPARE(buttons->minimumSizeHint().width(), width);
}

QTEST_MAIN(TestParameterImport)
#include "tst_parameterimport.moc"
