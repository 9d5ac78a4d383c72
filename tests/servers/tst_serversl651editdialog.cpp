#include "pointformtest.h"
#include "servers/serversl651editdialog.h"
#include "sl651codes.h"

#include <QApplication>
#include <QComboBox>
#include <QLineEdit>
#include <QRegExpValidator>
#include <QTranslator>

// The form of an SL651 server.
class TestServerSL651EditDialog : public PointFormTest
{
    Q_OBJECT
public:
    TestServerSL651EditDialog()
        : PointFormTest("Station", "SL651")
    {
    }
private slots:
    void elements_data();
    void elements();
    void elementsComeBackInEachLanguage_data() { addCatalogues(); }
    void elementsComeBackInEachLanguage();
    void unknownElementIsSavedAsTheFirst_data();
    void unknownElementIsSavedAsTheFirst();
    void textThatIsNoElementIsStoredAsItStands_data();
    void textThatIsNoElementIsStoredAsItStands();
    void codesAreFoundInTheLanguageOfTheMoment();
    void centralStationAddress_data();
    void centralStationAddress();
    void emptyCentralStationAddressIsNoAddress();
    void shortPasswordIsStored();
    void validatorOfTheOlderKind();
    void wheelChangesNoCode();
    void rightClickOnACodeOpensNoMenu();

private:
    static QComboBox *code(const QWidget &form, int row)
    {
        return qobject_cast<QComboBox *>(pointTable(form)->cellWidget(row, 2));
    }
    static RowList onePoint(const QString &element) { return {pointRow("Gauge", "p", element)}; }
};

namespace {

const QString source = "Gauge";
constexpr int elementCount = int(sizeof(sl651Codes) / sizeof(*sl651Codes));

} // namespace

void TestServerSL651EditDialog::elements_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<QString>("label");
    int place = 0;
    for (const auto &element : sl651Codes) {
        QTest::newRow(element.code) << place++ << QString::fromLatin1(element.label);
    }
}

void TestServerSL651EditDialog::elements()
{
    QFETCH(int, place);
    QFETCH(QString, label);
    const RowList stored = onePoint(QString::fromLatin1(QTest::currentDataTag()));
    setPoints(m_item, stored);
    ServerSL651EditDialog form(m_item, m_workspace);
    QCOMPARE(code(form, 0)->currentText(), label);
    QCOMPARE(code(form, 0)->currentIndex(), place);
    click(form, "saveButton");
    QCOMPARE(pointsOf(*m_item), stored);
    code(form, 0)->setCurrentIndex(0);
    code(form, 0)->setCurrentText(label); // as a user would choose it
    click(form, "saveButton");
    QCOMPARE(pointsOf(*m_item), stored);
}

// The code is found again by the label that is shown: two labels alike would change the code.
void TestServerSL651EditDialog::elementsComeBackInEachLanguage()
{
    QFETCH(QString, catalogue);
    QTranslator language;
    QVERIFY(language.load(catalogue));
    QVERIFY(QCoreApplication::installTranslator(&language));
    RowList stored;
    for (const auto &element : sl651Codes) {
        const QString code = QString::fromLatin1(element.code);
        stored.append(pointRow("Gauge", code, code));
    }
    setPoints(m_item, stored);
    ServerSL651EditDialog form(m_item, m_workspace);
    QStringList labels = entriesOf(code(form, 0));
    QCOMPARE(elementCount, 117);
    QCOMPARE(labels.size(), 117);
    QCOMPARE(labels.removeDuplicates(), 0);
    click(form, "saveButton");
    QCOMPARE(pointsOf(*m_item), stored);
}

void TestServerSL651EditDialog::unknownElementIsSavedAsTheFirst_data()
{
    QTest::addColumn<QString>("stored");
    for (const char *element : {"05", "45", "", "f0", "3a", "FF"}) {
        QTest::addRow("\"%s\"", element) << QString::fromLatin1(element);
    }
}

void TestServerSL651EditDialog::unknownElementIsSavedAsTheFirst()
{
    QFETCH(QString, stored);
    setPoints(m_item, onePoint(stored));
    ServerSL651EditDialog form(m_item, m_workspace);
    QCOMPARE(code(form, 0)->currentText(), "Observation time guide symbol");
    click(form, "saveButton");
    QCOMPARE(pointsOf(*m_item), onePoint("F0"));
}

void TestServerSL651EditDialog::textThatIsNoElementIsStoredAsItStands_data()
{
    QTest::addColumn<int>("place");
    QTest::newRow("in front") << 0;
    QTest::newRow("in between") << 50;
    QTest::newRow("behind") << elementCount;
}

void TestServerSL651EditDialog::textThatIsNoElementIsStoredAsItStands()
{
    QFETCH(int, place);
    setPoints(
        m_item,
        {pointRow("Gauge", "own", "39"), pointRow("Gauge", "ph", "46"), pointRow("Gauge", "rain", "25")});
    ServerSL651EditDialog form(m_item, m_workspace);
    for (int row : {0, 1}) {
        code(form, row)->insertItem(place, "snow depth");
    }
    code(form, 0)->setCurrentIndex(place);
    form.handleImportedData({point("new")}, source);
    click(form, "saveButton");
    QCOMPARE(pointsOf(*m_item),
             (RowList{pointRow("Gauge", "own", "snow depth"), pointRow("Gauge", "ph", "46"),
                      pointRow("Gauge", "rain", "25"), pointRow("Gauge", "new", "F0")}));
    QCOMPARE(code(form, 2)->count(), elementCount);
    QCOMPARE(code(form, 3)->count(), elementCount);
}

// A row keeps the labels of the language in which it was built.
void TestServerSL651EditDialog::codesAreFoundInTheLanguageOfTheMoment()
{
    setPoints(m_item, onePoint("25"));
    ServerSL651EditDialog form(m_item, m_workspace);
    QTranslator language;
    QVERIFY(language.load(":/adsdemo/chinese.qm"));
    QVERIFY(QCoreApplication::installTranslator(&language));
    form.handleImportedData({point("new")}, source);
    code(form, 1)->setCurrentText(ServerSL651EditDialog::tr("Rainstorm"));
    QVERIFY(code(form, 1)->currentText() != "Rainstorm");
    click(form, "saveButton");
    QCOMPARE(pointsOf(*m_item),
             (RowList{pointRow("Gauge", "p", "Rainstorm"), pointRow("Gauge", "new", "25")}));
    QVERIFY(QCoreApplication::removeTranslator(&language));
    click(form, "saveButton");
    QCOMPARE(pointsOf(*m_item).value(0), pointRow("Gauge", "p", "25"));
    QCOMPARE(pointsOf(*m_item).value(1).value(2).toString(), code(form, 1)->currentText());
}

void TestServerSL651EditDialog::centralStationAddress_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("refused");
    QTest::newRow("FF") << "FF" << false;
    QTest::newRow("1") << "1" << false;
    QTest::newRow("0a") << "0a" << false;
    QTest::newRow("0") << "0" << true;
    QTest::newRow("00") << "00" << true;
}

void TestServerSL651EditDialog::centralStationAddress()
{
    QFETCH(QString, typed);
    QFETCH(bool, refused);
    const ServerSL651EditDialog form(m_item, m_workspace);
    QLineEdit *input = edit(form, "centralStationAddress");
    if (refused) {
        m_messages->expect();
    }
    QTest::keyClicks(input, typed);
    QTest::keyClick(input, Qt::Key_Return);
    QCOMPARE(input->text(), refused ? QString() : typed);
    QCOMPARE(m_messages->told(),
             refused ? QStringList("Input Error|Please enter a valid address between 1 and 255.")
                     : QStringList());
}

void TestServerSL651EditDialog::emptyCentralStationAddressIsNoAddress()
{
    ServerSL651EditDialog form(m_item, m_workspace);
    m_messages->expect();
    QVERIFY(QMetaObject::invokeMethod(&form, "validateCentralStationAddress"));
    QCOMPARE(m_messages->told().size(), 1);
    m_messages->expect();
    edit(form, "centralStationAddress")->setText("100"); // 256, as a file may give it
    QVERIFY(QMetaObject::invokeMethod(&form, "validateCentralStationAddress"));
    QCOMPARE(edit(form, "centralStationAddress")->text(), QString());
}

void TestServerSL651EditDialog::shortPasswordIsStored()
{
    const ServerSL651EditDialog form(m_item, m_workspace);
    QTest::keyClicks(edit(form, "password"), "1A2");
    click(form, "saveButton");
    QCOMPARE(m_item->data(serverPasswordRole), QVariant("1A2"));
}

void TestServerSL651EditDialog::validatorOfTheOlderKind()
{
    const ServerSL651EditDialog form(m_item, m_workspace);
    QVERIFY(qobject_cast<const QRegExpValidator *>(edit(form, "ip")->validator()));
}

void TestServerSL651EditDialog::wheelChangesNoCode()
{
    ServerSL651EditDialog form(m_item, m_workspace);
    form.handleImportedData({point("rain")}, source);
    form.resize(800, 700);
    form.show();
    QApplication::setActiveWindow(&form);
    QVERIFY(QTest::qWaitForWindowActive(&form));
    code(form, 0)->setCurrentIndex(5);
    QComboBox *station = list(form, "remoteStationType");
    station->setCurrentIndex(5);
    code(form, 0)->setFocus();
    turnWheel(code(form, 0));
    QCOMPARE(code(form, 0)->currentIndex(), 5);
    station->setFocus();
    turnWheel(station);
    QCOMPARE(station->currentIndex(), 6); // only what scrolls away is kept from turning
    QTest::keyClick(code(form, 0), Qt::Key_Down);
    QCOMPARE(code(form, 0)->currentIndex(), 6);
}

// The menu deletes the selected row, which need not be the one of the list below the pointer.
void TestServerSL651EditDialog::rightClickOnACodeOpensNoMenu()
{
    ServerSL651EditDialog form(m_item, m_workspace);
    form.handleImportedData({point("rain"), point("wind")}, source);
    form.show();
    pointTable(form)->selectRow(0);
    QContextMenuEvent request(QContextMenuEvent::Mouse, QPoint(5, 5),
                              code(form, 1)->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(code(form, 1), &request);
    QCoreApplication::processEvents();
}

QTEST_MAIN(TestServerSL651EditDialog)
#include "tst_serversl651editdialog.moc"
