#include "messages.h"
#include "pointformtest.h"
#include "servers/serversl651editdialog.h"
#include "sl651codes.h"
#include "workspacefake.h"

#include <QRegExpValidator>
#include <QTranslator>
#include <QWheelEvent>

using namespace PointFormTest;

// The form of an SL651 server.
class TestServerSL651EditDialog : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();
    void fieldsInTheirOrder();
    void openingWritesNothing();
    void stationTypes_data();
    void stationTypes();
    void unknownStationTypeShowsTheFirst();
    void elements_data();
    void elements();
    void elementsComeBackInEachLanguage_data() { catalogues(); }
    void elementsComeBackInEachLanguage();
    void unknownElementIsSavedAsTheFirst_data();
    void unknownElementIsSavedAsTheFirst();
    void textThatIsNoElementIsStoredAsItStands_data();
    void textThatIsNoElementIsStoredAsItStands();
    void codesAreFoundInTheLanguageOfTheMoment();
    void typing_data();
    void typing();
    void centralStationAddress_data();
    void centralStationAddress();
    void emptyCentralStationAddressIsNoAddress();
    void shortPasswordIsStored();
    void importedPointStartsWithTheFirstElement();
    void pointThatIsThereIsSkippedSilently();
    void wheelChangesNoCode();
    void rightClickOnACodeOpensNoMenu();
    void saveWritesEveryRole();
    void replaceItemShowsTheOther();
    void clearDataEmptiesTheForm();
    void thousandPointsComeBack();

private:
    QStandardItem *m_item = nullptr;
    WorkspaceFake *m_workspace = nullptr;
    Messages *m_messages = nullptr;
};

namespace {

const QString source = "Gauge";
constexpr int elementCount = int(sizeof(sl651Codes) / sizeof(*sl651Codes));

QComboBox *code(const QWidget &form, int row)
{
    return qobject_cast<QComboBox *>(pointTable(form)->cellWidget(row, 2));
}

RowList onePoint(const char *element)
{
    return {pointRow("Gauge", "p", element)};
}

} // namespace

void TestServerSL651EditDialog::init()
{
    m_item = new QStandardItem("Station");
    m_item->setData("SL651", serverProtocolRole);
    m_workspace = new WorkspaceFake;
    m_messages = new Messages;
}

void TestServerSL651EditDialog::cleanup()
{
    QCOMPARE(m_messages->pending(), 0);
    delete m_messages;
    delete m_workspace;
    delete m_item;
}

void TestServerSL651EditDialog::fieldsInTheirOrder()
{
    const ServerSL651EditDialog form(m_item, m_workspace);
    QCOMPARE(inputs(form),
             (QStringList{"Server Name:|name", "Protocol:|protocol", "IP Address:|ip", "Port:|port",
                          "centralStationAddress:|centralStationAddress",
                          "remoteStationAddress:|remoteStationAddress", "Password:|password",
                          "remoteStationType:|remoteStationType"}));
    QVERIFY(edit(form, "name")->isReadOnly());
    QCOMPARE(edit(form, "name")->text(), "Station");
    QVERIFY(!list(form, "protocol")->isEnabled());
    QCOMPARE(list(form, "protocol")->currentText(), "SL651");
    QCOMPARE(list(form, "protocol")->count(), 1);
    QCOMPARE(list(form, "remoteStationType")->count(), 11);
    QCOMPARE(edit(form, "password")->echoMode(), QLineEdit::Password);
    QVERIFY(qobject_cast<const QRegExpValidator *>(edit(form, "ip")->validator()));
    QCOMPARE(headers(pointTable(form)), (QStringList{"PLC Name", "Name", "Code"}));
}

void TestServerSL651EditDialog::openingWritesNothing()
{
    const auto before = rolesOf(*m_item);
    const ServerSL651EditDialog form(m_item, nullptr);
    QCOMPARE(rolesOf(*m_item), before);
}

void TestServerSL651EditDialog::stationTypes_data()
{
    QTest::addColumn<int>("place");
    QTest::addColumn<int>("type");
    const struct {
        int type;
        const char *text;
    } types[] = {{80, "precipitation"},
                 {72, "river course"},
                 {75, "Reservoir (Lake)"},
                 {90, "gate dam"},
                 {68, "pump station"},
                 {84, "tide"},
                 {77, "soil moisture content"},
                 {71, "groundwater"},
                 {81, "water quality"},
                 {73, "Water intake"},
                 {79, "Drain"}};
    int place = 0;
    for (const auto &entry : types) {
        QTest::newRow(entry.text) << place++ << entry.type;
    }
}

void TestServerSL651EditDialog::stationTypes()
{
    QFETCH(int, place);
    QFETCH(int, type);
    ServerSL651EditDialog form(m_item, m_workspace);
    QComboBox *entries = list(form, "remoteStationType");
    QCOMPARE(entries->itemText(place), QString::fromLatin1(QTest::currentDataTag()));
    entries->setCurrentIndex(place);
    press(form, "saveButton");
    QCOMPARE(m_item->data(serverRemoteStationTypeRole), QVariant(type));
    QCOMPARE(m_item->data(serverRemoteStationTypeRole).type(), QVariant::Int);
    m_item->setData(QString::number(type), serverRemoteStationTypeRole); // as a document gives it
    const ServerSL651EditDialog loaded(m_item, m_workspace);
    QCOMPARE(list(loaded, "remoteStationType")->currentIndex(), place);
}

void TestServerSL651EditDialog::unknownStationTypeShowsTheFirst()
{
    m_item->setData(79, serverRemoteStationTypeRole);
    ServerSL651EditDialog form(m_item, m_workspace);
    QCOMPARE(list(form, "remoteStationType")->currentIndex(), 10);
    m_item->setData(1, serverRemoteStationTypeRole);
    form.replaceItem(m_item);
    QCOMPARE(list(form, "remoteStationType")->currentIndex(), 0);
}

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
    const RowList stored = onePoint(QTest::currentDataTag());
    m_item->setData(QVariant::fromValue(stored), serverPointsRole);
    ServerSL651EditDialog form(m_item, m_workspace);
    QCOMPARE(code(form, 0)->currentText(), label);
    QCOMPARE(code(form, 0)->currentIndex(), place);
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole), stored);
    code(form, 0)->setCurrentIndex(0);
    code(form, 0)->setCurrentText(label); // as a user would choose it
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole), stored);
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
        stored.append(pointRow("Gauge", element.code, element.code));
    }
    m_item->setData(QVariant::fromValue(stored), serverPointsRole);
    ServerSL651EditDialog form(m_item, m_workspace);
    QSet<QString> labels;
    for (int index = 0; index < code(form, 0)->count(); ++index) {
        labels.insert(code(form, 0)->itemText(index));
    }
    QCOMPARE(elementCount, 117);
    QCOMPARE(code(form, 0)->count(), 117);
    QCOMPARE(labels.size(), 117);
    QSet<QString> types;
    for (int index = 0; index < 11; ++index) {
        types.insert(list(form, "remoteStationType")->itemText(index));
    }
    QCOMPARE(types.size(), 11);
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole), stored);
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
    m_item->setData(QVariant::fromValue(onePoint(stored.toLatin1().constData())), serverPointsRole);
    ServerSL651EditDialog form(m_item, m_workspace);
    QCOMPARE(code(form, 0)->currentText(), "Observation time guide symbol");
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole), onePoint("F0"));
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
    m_item->setData(QVariant::fromValue(RowList{pointRow("Gauge", "own", "39"), pointRow("Gauge", "ph", "46"),
                                                pointRow("Gauge", "rain", "25")}),
                    serverPointsRole);
    ServerSL651EditDialog form(m_item, m_workspace);
    for (int row : {0, 1}) {
        code(form, row)->insertItem(place, "snow depth");
    }
    code(form, 0)->setCurrentIndex(place);
    form.handleImportedData({point("new")}, source);
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole),
             (RowList{pointRow("Gauge", "own", "snow depth"), pointRow("Gauge", "ph", "46"),
                      pointRow("Gauge", "rain", "25"), pointRow("Gauge", "new", "F0")}));
    QCOMPARE(code(form, 2)->count(), elementCount);
    QCOMPARE(code(form, 3)->count(), elementCount);
}

// A row keeps the labels of the language in which it was built.
void TestServerSL651EditDialog::codesAreFoundInTheLanguageOfTheMoment()
{
    m_item->setData(QVariant::fromValue(onePoint("25")), serverPointsRole);
    ServerSL651EditDialog form(m_item, m_workspace);
    QTranslator language;
    QVERIFY(language.load(":/adsdemo/chinese.qm"));
    QVERIFY(QCoreApplication::installTranslator(&language));
    form.handleImportedData({point("new")}, source);
    code(form, 1)->setCurrentText(ServerSL651EditDialog::tr("Rainstorm"));
    QVERIFY(code(form, 1)->currentText() != "Rainstorm");
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole),
             (RowList{pointRow("Gauge", "p", "Rainstorm"), pointRow("Gauge", "new", "25")}));
    QVERIFY(QCoreApplication::removeTranslator(&language));
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole).value(0), pointRow("Gauge", "p", "25"));
    QCOMPARE(rowsOf(*m_item, serverPointsRole).value(1).value(2).toString(), code(form, 1)->currentText());
}

void TestServerSL651EditDialog::typing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("taken");
    const auto add = [](const char *field, const char *typed, const char *taken) {
        QTest::addRow("%s %s", field, typed) << QString::fromLatin1(typed) << QString::fromLatin1(taken);
    };
    add("centralStationAddress", "100", "10");
    add("centralStationAddress", "fF", "fF");
    add("centralStationAddress", "G1", "1");
    add("remoteStationAddress", "00aB12345678", "00aB12345678");
    add("remoteStationAddress", "x1 2", "12");
    add("password", "12Ab5", "12Ab");
    add("password", "pw", "");
    add("ip", "10.0.0.256", "10.0.0.25");
    add("port", "-12", "-1");
}

void TestServerSL651EditDialog::typing()
{
    QFETCH(QString, typed);
    QFETCH(QString, taken);
    const ServerSL651EditDialog form(m_item, m_workspace);
    QLineEdit *input = edit(form, QByteArray(QTest::currentDataTag()).split(' ').first().constData());
    QTest::keyClicks(input, typed);
    QCOMPARE(input->text(), taken);
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
    press(form, "saveButton");
    QCOMPARE(m_item->data(serverPasswordRole), QVariant("1A2"));
}

void TestServerSL651EditDialog::importedPointStartsWithTheFirstElement()
{
    ServerSL651EditDialog form(m_item, m_workspace);
    form.handleImportedData({point("rain")}, source);
    QCOMPARE(code(form, 0)->currentText(), "Observation time guide symbol");
    for (int column = 0; column < 2; ++column) {
        QVERIFY(!(pointTable(form)->item(0, column)->flags() & Qt::ItemIsEditable));
    }
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole), RowList{pointRow("Gauge", "rain", "F0")});
}

void TestServerSL651EditDialog::pointThatIsThereIsSkippedSilently()
{
    ServerSL651EditDialog form(m_item, m_workspace);
    form.handleImportedData({point("rain"), point("rain")}, source);
    form.handleImportedData({point("rain", "float")}, source);
    form.handleImportedData({point("rain")}, "Other");
    QCOMPARE(m_workspace->messages, QStringList());
    press(form, "saveButton");
    QCOMPARE(rowsOf(*m_item, serverPointsRole),
             (RowList{pointRow("Gauge", "rain", "F0"), pointRow("Other", "rain", "F0")}));
}

void TestServerSL651EditDialog::wheelChangesNoCode()
{
    ServerSL651EditDialog form(m_item, m_workspace);
    form.handleImportedData({point("rain")}, source);
    form.resize(800, 700);
    form.show();
    code(form, 0)->setCurrentIndex(5);
    QComboBox *station = list(form, "remoteStationType");
    station->setCurrentIndex(5);
    for (QComboBox *box : {code(form, 0), station}) {
        const QPointF place = box->rect().center();
        QWheelEvent turn(place, box->mapToGlobal(place.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                         Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(box, &turn);
    }
    QCOMPARE(code(form, 0)->currentIndex(), 5);
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
    const ModalDialogs menus;
    QContextMenuEvent request(QContextMenuEvent::Mouse, QPoint(5, 5),
                              code(form, 1)->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(code(form, 1), &request);
    QCoreApplication::processEvents();
}

void TestServerSL651EditDialog::saveWritesEveryRole()
{
    m_item->setData(
        QVariant::fromValue(RowList{pointRow("Gauge", "level", "39"), pointRow("Pump", "ph", "46")}),
        serverPointsRole);
    ServerSL651EditDialog form(m_item, m_workspace);
    edit(form, "ip")->setText("10.1.2.3");
    edit(form, "port")->setText("9001");
    edit(form, "centralStationAddress")->setText("FF");
    edit(form, "remoteStationAddress")->setText("0012345678");
    edit(form, "password")->setText("A1B2");
    list(form, "remoteStationType")->setCurrentIndex(2);
    code(form, 1)->setCurrentText("dissolved oxygen");
    press(form, "saveButton");
    QMap<int, QVariant> expected;
    expected.insert(serverProtocolRole, "SL651");
    expected.insert(serverIpRole, "10.1.2.3");
    expected.insert(serverPortRole, "9001");
    expected.insert(serverCentralStationAddressRole, "FF");
    expected.insert(serverRemoteStationAddressRole, "0012345678");
    expected.insert(serverPasswordRole, "A1B2");
    expected.insert(serverRemoteStationTypeRole, 75);
    QCOMPARE(rowsOf(*m_item, serverPointsRole),
             (RowList{pointRow("Gauge", "level", "39"), pointRow("Pump", "ph", "47")}));
    auto roles = rolesOf(*m_item);
    roles.remove(serverPointsRole);
    QCOMPARE(roles, expected);
    QCOMPARE(m_item->text(), "Station");
    QCOMPARE(m_workspace->messages, QStringList("The Server SL651 'Station' is saved successfully."));
}

void TestServerSL651EditDialog::replaceItemShowsTheOther()
{
    m_item->setData(QVariant::fromValue(RowList{pointRow("a", "b", "01"), pointRow("d", "e", "02")}),
                    serverPointsRole);
    ServerSL651EditDialog form(m_item, m_workspace);
    QStandardItem other("Second");
    other.setData("1.2.3.4", serverIpRole);
    other.setData("77", serverPortRole);
    other.setData("0B", serverCentralStationAddressRole);
    other.setData("99", serverRemoteStationAddressRole);
    other.setData("1234", serverPasswordRole);
    other.setData(84, serverRemoteStationTypeRole);
    other.setData(QVariant::fromValue(RowList{pointRow("g", "h", "75")}), serverPointsRole);
    form.replaceItem(&other);
    QCOMPARE(
        textsOf(form, {"name", "ip", "port", "centralStationAddress", "remoteStationAddress", "password"}),
        (QStringList{"Second", "1.2.3.4", "77", "0B", "99", "1234"}));
    QCOMPARE(list(form, "remoteStationType")->currentText(), "tide");
    press(form, "saveButton");
    QCOMPARE(rowsOf(other, serverPointsRole), RowList{pointRow("g", "h", "75")});
    QCOMPARE(rowsOf(*m_item, serverPointsRole).size(), 2);
}

void TestServerSL651EditDialog::clearDataEmptiesTheForm()
{
    m_item->setData(79, serverRemoteStationTypeRole);
    m_item->setData("1.2.3.4", serverIpRole);
    m_item->setData(QVariant::fromValue(onePoint("01")), serverPointsRole);
    ServerSL651EditDialog form(m_item, m_workspace);
    form.clearData();
    QCOMPARE(
        textsOf(form, {"name", "ip", "port", "centralStationAddress", "remoteStationAddress", "password"})
            .join(QString()),
        QString());
    QCOMPARE(list(form, "remoteStationType")->currentIndex(), 0);
    QCOMPARE(pointTable(form)->rowCount(), 0);
    QCOMPARE(m_item->data(serverRemoteStationTypeRole), QVariant(79));
}

void TestServerSL651EditDialog::thousandPointsComeBack()
{
    RowList stored;
    for (int number = 0; number < 1000; ++number) {
        stored.append({source, QString("p%1").arg(number),
                       QString::fromLatin1(sl651Codes[number % elementCount].code)});
    }
    comparePointsAfterSave<ServerSL651EditDialog>(m_item, stored);
}

QTEST_MAIN(TestServerSL651EditDialog)
#include "tst_serversl651editdialog.moc"
