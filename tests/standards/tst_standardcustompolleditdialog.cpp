#include "model/itemroles.h"
#include "standardformtest.h"
#include "standards/standardcustompolleditdialog.h"

#include <QComboBox>
#include <QLineEdit>
#include <QRegularExpressionValidator>
#include <QStandardItem>
#include <QTableWidget>
#include <QtTest>

// What the list "HEX" of a row of raw polling decides.
class TestStandardCustomPollEditDialog : public StandardFormTest
{
    Q_OBJECT
public:
    TestStandardCustomPollEditDialog()
        : StandardFormTest("Poll", "CustomPoll")
    {
    }
private slots:
    void newStandardShowsItsDefaults();
    void crcSlotFollowsTheIndex_data();
    void crcSlotFollowsTheIndex();
    void hexSlotFollowsTheIndex_data();
    void hexSlotFollowsTheIndex();
    void listOfARowDecides_data();
    void listOfARowDecides();
    void storedRowIsShownAsItIs_data();
    void storedRowIsShownAsItIs();
    void textRowHasNoCrc();
    void removedRowTakesItsConnectionsAlong();
};

namespace {

enum Column { Name, Hex, DataContent, Crc };

QComboBox *listOf(const QTableWidget *table, int row, int column)
{
    return qobject_cast<QComboBox *>(table->cellWidget(row, column));
}

QLineEdit *dataOf(const QTableWidget *table, int row)
{
    return qobject_cast<QLineEdit *>(table->cellWidget(row, DataContent));
}

QString patternOf(const QLineEdit *edit)
{
    const auto *validator = qobject_cast<const QRegularExpressionValidator *>(edit->validator());
    return validator ? validator->regularExpression().pattern() : QString();
}

void addIndices()
{
    QTest::addColumn<int>("index");
    QTest::newRow("hexadecimal digits") << 0;
    QTest::newRow("text") << 1;
    QTest::newRow("nothing selected") << -1;
    QTest::newRow("any other") << 5;
}

const QString hexPattern = "[0-9a-fA-F ]*";
const QString textPattern = "[ -~]*";

} // namespace

void TestStandardCustomPollEditDialog::newStandardShowsItsDefaults()
{
    const standardCustomPollEditDialog form(m_item, m_workspace);
    QCOMPARE(textsOf(form,
                     {"serialport", "baudRate", "dataBit", "stopBit", "parityBit", "protocol",
                      "communicationTimeout", "communicationGap"}),
             QStringList({"COM1", "115200", "8", "1", "NONE", "CustomPoll", "2000", "-1"}));
}

void TestStandardCustomPollEditDialog::crcSlotFollowsTheIndex_data()
{
    addIndices();
}

void TestStandardCustomPollEditDialog::crcSlotFollowsTheIndex()
{
    QFETCH(int, index);
    standardCustomPollEditDialog form(m_item, m_workspace);
    QComboBox crc;
    crc.addItems({"true", "false"});
    QVERIFY(QMetaObject::invokeMethod(&form, "onCRCComboBoxChanged", Q_ARG(int, index),
                                      Q_ARG(QComboBox *, &crc)));
    QCOMPARE(crc.isEnabled(), index == 0);
    QCOMPARE(crc.currentIndex(), index == 0 ? 0 : 1);
    form.onCRCComboBoxChanged(0, &crc);
    QVERIFY(crc.isEnabled());
    QCOMPARE(crc.currentIndex(), index == 0 ? 0 : 1);
}

void TestStandardCustomPollEditDialog::hexSlotFollowsTheIndex_data()
{
    addIndices();
}

void TestStandardCustomPollEditDialog::hexSlotFollowsTheIndex()
{
    QFETCH(int, index);
    standardCustomPollEditDialog form(m_item, m_workspace);
    QComboBox crc;
    crc.addItems({"true", "false"});
    QLineEdit data("AB");
    QVERIFY(QMetaObject::invokeMethod(&form, "onHexComboBoxChanged", Q_ARG(int, index),
                                      Q_ARG(QComboBox *, &crc), Q_ARG(QLineEdit *, &data)));
    QCOMPARE(crc.isEnabled(), index == 0);
    QCOMPARE(crc.currentIndex(), index == 0 ? 0 : 1);
    QCOMPARE(data.text(), QString());
    QCOMPARE(patternOf(&data), index == 0 ? hexPattern : textPattern);
    QTest::keyClicks(&data, "0x1F ~z");
    QCOMPARE(data.text(), index == 0 ? QString("01F ") : "0x1F ~z");
}

void TestStandardCustomPollEditDialog::listOfARowDecides_data()
{
    QTest::addColumn<bool>("added");
    QTest::newRow("added row") << true;
    QTest::newRow("loaded row") << false;
}

void TestStandardCustomPollEditDialog::listOfARowDecides()
{
    QFETCH(bool, added);
    standardCustomPollEditDialog form(m_item, m_workspace);
    form.addParameter(); // a neighbour, which must not change
    if (added) {
        form.addParameter();
    } else {
        form.loadParameters(
            {{"other", "true", "01", "true", "r", "Timed"}, {"ask", "true", "0A", "true", "r", "Timed"}});
    }
    auto *table = form.findChild<QTableWidget *>();
    dataOf(table, 0)->setText("FF");
    dataOf(table, 1)->setText("0A");
    listOf(table, 1, Hex)->setCurrentText("false");
    QVERIFY(!listOf(table, 1, Crc)->isEnabled());
    QCOMPARE(listOf(table, 1, Crc)->currentText(), "false");
    QCOMPARE(dataOf(table, 1)->text(), QString());
    QCOMPARE(patternOf(dataOf(table, 1)), textPattern);
    listOf(table, 1, Hex)->setCurrentText("true");
    QVERIFY(listOf(table, 1, Crc)->isEnabled());
    QCOMPARE(listOf(table, 1, Crc)->currentText(), "false");
    QCOMPARE(patternOf(dataOf(table, 1)), hexPattern);
    QCOMPARE(dataOf(table, 0)->text(), "FF");
    QVERIFY(listOf(table, 0, Crc)->isEnabled());
}

void TestStandardCustomPollEditDialog::storedRowIsShownAsItIs_data()
{
    QTest::addColumn<QString>("hex");
    QTest::addColumn<QString>("data");
    QTest::addColumn<bool>("live");
    QTest::addColumn<QString>("pattern");
    QTest::newRow("hexadecimal digits") << "true"
                                        << "01 03" << true << hexPattern;
    QTest::newRow("text") << "false"
                          << "READ?" << false << textPattern;
    QTest::newRow("digits that are none") << "true"
                                          << "xyz" << true << hexPattern;
}

void TestStandardCustomPollEditDialog::storedRowIsShownAsItIs()
{
    QFETCH(QString, hex);
    QFETCH(QString, data);
    QFETCH(bool, live);
    QFETCH(QString, pattern);
    setRows(m_item, standardDatasRole, {{"ask", hex, data, "false", "r", "Timed"}});
    const standardCustomPollEditDialog form(m_item, m_workspace);
    const auto *table = form.findChild<QTableWidget *>();
    QCOMPARE(dataOf(table, 0)->text(), data);
    QCOMPARE(listOf(table, 0, Crc)->isEnabled(), live);
    QCOMPARE(patternOf(dataOf(table, 0)), pattern);
}

void TestStandardCustomPollEditDialog::textRowHasNoCrc()
{
    setRows(m_item, standardDatasRole, {{"ask", "false", "READ?", "true", "r", "Timed"}});
    standardCustomPollEditDialog form(m_item, m_workspace);
    form.saveChanges();
    QCOMPARE(rowsOf(*m_item, standardDatasRole), (RowList{{"ask", "false", "READ?", "false", "r", "Timed"}}));
}

void TestStandardCustomPollEditDialog::removedRowTakesItsConnectionsAlong()
{
    standardCustomPollEditDialog form(m_item, m_workspace);
    form.addParameter();
    form.addParameter();
    auto *table = form.findChild<QTableWidget *>();
    table->setCurrentCell(0, 0);
    form.removeParameter();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    listOf(table, 0, Hex)->setCurrentIndex(1);
    QVERIFY(!listOf(table, 0, Crc)->isEnabled());
}

QTEST_MAIN(TestStandardCustomPollEditDialog)
#include "tst_standardcustompolleditdialog.moc"
