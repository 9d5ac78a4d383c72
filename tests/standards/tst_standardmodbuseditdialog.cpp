#include "barwatch.h"
#include "model/itemroles.h"
#include "parametertable/parametertable.h"
#include "standardformtest.h"
#include "standards/standardmodbuseditdialog.h"
#include "standards/standardtabs.h"
#include "widgets/progress.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardItem>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QtTest>

#include <utility>

// The form of a Modbus Standard on an item and a faked main window.
class TestStandardModbusEditDialog : public StandardFormTest
{
    Q_OBJECT
public:
    TestStandardModbusEditDialog()
        : StandardFormTest("Feeder", "Modbus")
    {
    }
private slots:
    void newStandardShowsItsDefaults();
    void tabsAppearAfterTheConstructor();
    void oneBarShowsHowFarAllTabsAreLoaded();
    void unknownModeShowsTcpAndIsOverwritten();
    void linkDecidesWhatIsSavedAndErased();
    void otherLinkShowsNoGroup();
    void serialLineIsSaved();
    void newTabHasItsInitialValues();
    void saveStoresEveryTab();
    void twelveTabsComeBackInTextOrder();
    void storedTabIsShown();
    void sameNameInTwoTabsIsAccepted();
    void buttonsActOnTheCurrentTab();
    void whatIsTypedGoesIntoTheRowThatWasAdded();
    void replaceItemShowsTheOtherStandard();
    void replaceItemBeforeTheTabsAppearedLoadsThemOnce();
    void operationsWithoutATab();
    void tabWithoutOneOfItsInputsIsLeftOut_data();
    void tabWithoutOneOfItsInputsIsLeftOut();
    void tabOrderLeadsThroughTheRowsToSave();
    void tabWithABadLengthIsClosedAfterItsMessage();
    void badLengthIsToldBeforeATabIsDuplicated_data();
    void badLengthIsToldBeforeATabIsDuplicated();
    void clearDataGoesBackToTcp();
    void formMayDieBelowItsFileDialog_data();
    void formMayDieBelowItsFileDialog();
};

namespace {

QStringList stations(const QWidget &form)
{
    QStringList texts;
    const auto *tabs = form.findChild<QTabWidget *>();
    for (int index = 0; index < tabs->count(); ++index) {
        texts.append(tabs->widget(index)->findChild<QLineEdit *>("stationNumEdit")->text());
    }
    return texts;
}

RowList group(const QString &station, const RowList &points = {})
{
    return RowList{{"standard", station, "CDAB", true, false}} + points;
}

} // namespace

void TestStandardModbusEditDialog::newStandardShowsItsDefaults()
{
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    QCOMPARE(form.nameEdit()->text(), "Feeder");
    QCOMPARE(list(form, "protocol")->currentText(), "Modbus");
    QCOMPARE(list(form, "modbus")->currentText(), "ModbusTCP");
    QVERIFY(edit(form, "ip")->isVisible());
    QVERIFY(!list(form, "baudRate")->isVisible());
    QCOMPARE(textsOf(form,
                     {"ip", "port", "connectionTimeout", "communicationTimeout", "keepAlive",
                      "rtuCommunicationTimeout", "communicationGap", "collectionInterval"}),
             QStringList({"192.168.1.60", "502", "2000", "2000", "60000", "2000", "-1", "2000"}));
    QVERIFY(!check(form, "rtsEnable")->isChecked());
    QCOMPARE(tabsOf(form), QStringList());
}

void TestStandardModbusEditDialog::tabsAppearAfterTheConstructor()
{
    setGroups(m_item, {{"Modbus-7", group("4")}});
    standardModbusEditDialog form(m_item, m_workspace);
    QCOMPARE(tabsOf(form), QStringList());
    QTRY_COMPARE(tabsOf(form), QStringList{"Modbus-1"});
    QCOMPARE(stations(form), QStringList{"4"});
}

void TestStandardModbusEditDialog::oneBarShowsHowFarAllTabsAreLoaded()
{
    const RowList points = QVector<QVariantList>(300, {"0", "a", "float", "1", "r"}).toList();
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
    QCoreApplication::processEvents(); // the tabs of the empty Standard
    setGroups(m_item, {{"Modbus-1", group("1", points)}, {"Modbus-2", group("2", points)}});
    const int delay = std::exchange(Progress::delay, 0);
    const BarWatch bars;
    form.replaceItem(m_item);
    Progress::delay = delay;
    QCOMPARE(tabsOf(form).size(), 2);
    QVERIFY(!bars.values().isEmpty());
    QCOMPARE(bars.maxima(), QSet<int>{600});
    QVERIFY(!form.findChild<QProgressBar *>());
}

void TestStandardModbusEditDialog::unknownModeShowsTcpAndIsOverwritten()
{
    m_item->setData("ModbusASCII", standardModbusModeRole);
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    QCOMPARE(list(form, "modbus")->currentText(), "ModbusTCP");
    form.saveChanges();
    QCOMPARE(m_item->data(standardModbusModeRole), QVariant("ModbusTCP"));
}

void TestStandardModbusEditDialog::linkDecidesWhatIsSavedAndErased()
{
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    edit(form, "ip")->setText("10.0.0.9");
    form.saveChanges();
    QCOMPARE(m_item->data(standardIpRole), QVariant("10.0.0.9"));
    QCOMPARE(m_item->data(standardRtuCommunicationTimeoutRole), QVariant());

    list(form, "modbus")->setCurrentText("ModbusRTU");
    QVERIFY(!edit(form, "ip")->isVisible());
    QVERIFY(list(form, "baudRate")->isVisible());
    form.saveChanges();
    for (const int role : {standardIpRole, standardPortRole, standardConnectionTimeoutRole,
                           standardCommunicationTimeoutRole, standardKeepAliveRole}) {
        QCOMPARE(m_item->data(role), QVariant());
    }
    QCOMPARE(m_item->data(standardCommunicationGapRole), QVariant("-1"));

    standardModbusEditDialog again(m_item, m_workspace);
    QCOMPARE(edit(again, "ip")->text(), "192.168.1.60");
}

void TestStandardModbusEditDialog::otherLinkShowsNoGroup()
{
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    form.onProtocolChanged("ModbusASCII");
    QVERIFY(!edit(form, "ip")->isVisible());
    QVERIFY(!list(form, "baudRate")->isVisible());
}

void TestStandardModbusEditDialog::serialLineIsSaved()
{
    m_item->setData("ModbusRTU", standardModbusModeRole);
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    list(form, "serialport")->setCurrentText("COM2");
    list(form, "baudRate")->setCurrentText("9600");
    list(form, "dataBit")->setCurrentText("7");
    list(form, "stopBit")->setCurrentText("2");
    list(form, "parityBit")->setCurrentText("ODD");
    check(form, "rtsEnable")->setChecked(true);
    edit(form, "rtuCommunicationTimeout")->setText("900");
    form.saveChanges();
    const QList<QVariant> saved{m_item->data(standardSerialPortRole),
                                m_item->data(standardBaudRateRole),
                                m_item->data(standardDataBitRole),
                                m_item->data(standardStopBitRole),
                                m_item->data(standardParityBitRole),
                                m_item->data(standardRtsEnableRole),
                                m_item->data(standardRtuCommunicationTimeoutRole)};
    QCOMPARE(saved, (QList<QVariant>{"COM2", "9600", "7", "2", "ODD", true, "900"}));
}

void TestStandardModbusEditDialog::newTabHasItsInitialValues()
{
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    click(form, "addTabButton");
    click(form, "addTabButton");
    QCOMPARE(tabsOf(form), (QStringList{"Modbus-1", "Modbus-2"}));
    auto *tabs = form.findChild<QTabWidget *>();
    QCOMPARE(tabs->currentIndex(), 0);
    const QWidget &page = *tabs->widget(1);
    QCOMPARE(list(page, "seriesComboBox")->currentText(), "standard");
    QVERIFY(!list(page, "seriesComboBox")->isEnabled());
    QCOMPARE(edit(page, "stationNumEdit")->text(), "1");
    QCOMPARE(list(page, "byteOrderComboBox")->currentText(), "ABCD");
    QVERIFY(check(page, "startAddress0CheckBox")->isChecked());
    QVERIFY(!check(page, "charReversedCheckBox")->isChecked());
    QCOMPARE(page.findChild<QTableWidget *>()->rowCount(), 0);
    QCOMPARE(page.findChild<QTableWidget *>()->height(), 600);
}

void TestStandardModbusEditDialog::saveStoresEveryTab()
{
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    form.addTab();
    form.addTab();
    form.loadTab("Modbus-2", group(QString(), {{"0", "a", "string", "5", "rw"}}));
    form.nameEdit()->setText("Renamed");
    form.saveChanges();
    QCOMPARE(m_item->text(), "Renamed");
    QCOMPARE(
        groupsOf(m_item),
        (GroupMap{{"Modbus-1", {{"standard", "1", "ABCD", true, false}}},
                  {"Modbus-2", {{"standard", "", "CDAB", true, false}, {"0", "a", "string", "5", "rw"}}}}));
    QCOMPARE(m_workspace->messages, QStringList{"The Standard Modbus 'Renamed' is saved successfully."});
}

void TestStandardModbusEditDialog::twelveTabsComeBackInTextOrder()
{
    GroupMap groups;
    for (int number = 1; number <= 12; ++number) {
        groups.insert(QString("Modbus-%1").arg(number), group(QString::number(number)));
    }
    setGroups(m_item, groups);
    standardModbusEditDialog form(m_item, m_workspace);
    QTRY_COMPARE(stations(form),
                 (QStringList{"1", "10", "11", "12", "2", "3", "4", "5", "6", "7", "8", "9"}));
    QCOMPARE(tabsOf(form).at(1), "Modbus-2");
    QCOMPARE(tabsOf(form).last(), "Modbus-12");
}

void TestStandardModbusEditDialog::storedTabIsShown()
{
    setGroups(m_item,
              {{"Modbus-1",
                {{"unknown", "5", "EFGH", "true", "true"},
                 {"0", "a", "string", "4", "r"},
                 {"1", "b", "int8", "4", "rw"}}}});
    standardModbusEditDialog form(m_item, m_workspace);
    QTRY_COMPARE(tabsOf(form).size(), 1);
    const QWidget &page = *form.findChild<QTabWidget *>()->widget(0);
    QCOMPARE(list(page, "seriesComboBox")->currentText(), "standard");
    QCOMPARE(list(page, "byteOrderComboBox")->currentText(), "ABCD");
    QVERIFY(check(page, "startAddress0CheckBox")->isChecked());
    QVERIFY(check(page, "charReversedCheckBox")->isChecked());
    const auto *table = page.findChild<QTableWidget *>();
    QVERIFY(table->cellWidget(0, 3)->isEnabled());
    QVERIFY(!table->cellWidget(1, 3)->isEnabled());
    QCOMPARE(table->item(1, 1)->text(), "b");
}

void TestStandardModbusEditDialog::sameNameInTwoTabsIsAccepted()
{
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    auto *tabs = form.findChild<QTabWidget *>();
    for (int tab = 0; tab < 2; ++tab) {
        form.addTab();
        tabs->setCurrentIndex(tab);
        form.addParameter();
        auto *name =
            qobject_cast<QLineEdit *>(tabs->widget(tab)->findChild<QTableWidget *>()->cellWidget(0, 1));
        name->setText("volt");
        QCOMPARE(name->text(), "volt");
    }
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestStandardModbusEditDialog::buttonsActOnTheCurrentTab()
{
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    form.addTab();
    form.addTab();
    auto *tabs = form.findChild<QTabWidget *>();
    auto *first = tabs->widget(0)->findChild<QTableWidget *>();
    auto *second = tabs->widget(1)->findChild<QTableWidget *>();
    click(*tabs->widget(0), "addButton");
    tabs->setCurrentIndex(1);
    click(*tabs->widget(1), "addButton");
    click(*tabs->widget(1), "addButton");
    QCOMPARE(first->rowCount(), 1);
    QCOMPARE(second->rowCount(), 2);
    click(*tabs->widget(1), "removeAllButton");
    QCOMPARE(first->rowCount(), 1);
    QCOMPARE(second->rowCount(), 0);
    tabs->setCurrentIndex(0);
    first->setCurrentCell(0, 0);
    qobject_cast<QPushButton *>(first->cellWidget(0, 5))->click();
    QCOMPARE(first->rowCount(), 0);
}

void TestStandardModbusEditDialog::whatIsTypedGoesIntoTheRowThatWasAdded()
{
    standardModbusEditDialog form(m_item, m_workspace);
    form.resize(480, 460); // much lower than what it holds
    RUN(show(form));
    QVERIFY(QTest::qWaitForWindowActive(&form));
    form.addTab();
    const QWidget *page = form.findChild<QTabWidget *>()->widget(0);
    QTRY_VERIFY(page->height() > StandardTabs::tableHeight); // it is laid out
    const auto *button = page->findChild<QPushButton *>("addButton");
    for (int point = 1; point <= 6; ++point) {
        const QPoint place = button->mapTo(&form, QPoint());
        click(*page, "addButton");
        QCOMPARE(button->mapTo(&form, QPoint()), place); // for the next click
        QTest::keyClicks(QApplication::focusWidget(), QString::number(40000 + point));
        QCOMPARE(QApplication::focusWidget()->visibleRegion(), QRegion(QApplication::focusWidget()->rect()));
    }
    const auto *table = page->findChild<ParameterTable *>();
    QCOMPARE(table->texts(0).first(), "40001");
    QCOMPARE(table->texts(5).first(), "40006");
    QCOMPARE(table->rowCount(), 6);
}

void TestStandardModbusEditDialog::replaceItemShowsTheOtherStandard()
{
    setGroups(m_item, {{"Modbus-1", group("1")}});
    QStandardItem other("Other");
    other.setData("ModbusRTU", standardModbusModeRole);
    other.setData("9600", standardBaudRateRole);
    other.setData("true", standardRtsEnableRole);
    setGroups(&other, {{"Modbus-10", group("10")}, {"Modbus-2", group("2")}});
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    QTRY_COMPARE(tabsOf(form).size(), 1);
    form.replaceItem(&other);
    QCOMPARE(form.nameEdit()->text(), "Other");
    QVERIFY(list(form, "baudRate")->isVisible());
    QCOMPARE(list(form, "baudRate")->currentText(), "9600");
    QVERIFY(check(form, "rtsEnable")->isChecked());
    QCOMPARE(edit(form, "ip")->text(), "192.168.1.60");
    QCOMPARE(tabsOf(form), (QStringList{"Modbus-1", "Modbus-2"}));
    QCOMPARE(stations(form), (QStringList{"10", "2"}));
    form.replaceItem(m_item);
    QCOMPARE(list(form, "modbus")->currentText(), "ModbusTCP");
    QCOMPARE(list(form, "baudRate")->currentText(), "115200");
    QCOMPARE(stations(form), QStringList{"1"});
}

void TestStandardModbusEditDialog::replaceItemBeforeTheTabsAppearedLoadsThemOnce()
{
    GroupMap groups;
    for (int number = 1; number <= 12; ++number) {
        groups.insert(QString("Modbus-%1").arg(number), group(QString::number(number)));
    }
    QStandardItem other("Other");
    setGroups(&other, groups);
    standardModbusEditDialog form(m_item, m_workspace);
    form.replaceItem(&other);
    const QStringList expected{"1", "10", "11", "12", "2", "3", "4", "5", "6", "7", "8", "9"};
    QCOMPARE(stations(form), expected);
    RUN(show(form));
    QCoreApplication::processEvents();
    QCOMPARE(stations(form), expected);
}

void TestStandardModbusEditDialog::operationsWithoutATab()
{
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    form.addParameter();
    form.removeParameter();
    form.removeAllParameters();
    form.validateName(0, 1);
    form.validateAddrOnChange(0, 0, QString());
    m_messages->expect();
    form.loadParameters({});
    form.addTab();
    delete form.findChild<QTableWidget *>();
    m_messages->expect();
    form.loadParameters({});
    QCOMPARE(m_messages->told(), (QStringList{"Error|No tab selected.", "Error|Parameter table not found."}));
    form.saveChanges();
    QCOMPARE(groupsOf(m_item), GroupMap());
}

void TestStandardModbusEditDialog::tabWithoutOneOfItsInputsIsLeftOut_data()
{
    QTest::addColumn<QString>("input");
    for (const char *input : {"seriesComboBox", "stationNumEdit", "byteOrderComboBox",
                              "startAddress0CheckBox", "charReversedCheckBox"}) {
        QTest::newRow(input) << input;
    }
}

void TestStandardModbusEditDialog::tabWithoutOneOfItsInputsIsLeftOut()
{
    QFETCH(QString, input);
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    form.addTab();
    form.addTab();
    delete form.findChild<QTabWidget *>()->widget(0)->findChild<QWidget *>(input);
    form.loadTab("Modbus-1", group("5", {{"1", "a", "float", "1", "r"}}));
    form.saveChanges();
    QCOMPARE(groupsOf(m_item).keys(), QStringList("Modbus-2"));
}

void TestStandardModbusEditDialog::tabOrderLeadsThroughTheRowsToSave()
{
    const RowList points{{"0", "a", "float", "1", "r"}, {"1", "b", "float", "1", "r"}};
    setGroups(m_item, {{"Modbus-1", group("1", points)}, {"Modbus-2", group("2", points)}});
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    QTRY_COMPARE(tabsOf(form).size(), 2);
    form.addParameter();
    QApplication::setActiveWindow(&form);
    QVERIFY(QTest::qWaitForWindowActive(&form));
    auto *table = form.findChild<QTabWidget *>()->widget(0)->findChild<QTableWidget *>();
    table->setFocus();
    QVector<QWidget *> visited;
    while (QApplication::focusWidget()->objectName() != "saveButton" && visited.size() < 100) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited.append(QApplication::focusWidget());
    }
    QCOMPARE(visited.size(), 3 + 3 + 5 + 1);
    QCOMPARE(visited.first(), table->cellWidget(0, 2));
    QCOMPARE(visited.at(6), table->cellWidget(2, 0));
    QCOMPARE(visited.at(10), table->cellWidget(2, 5));
}

void TestStandardModbusEditDialog::tabWithABadLengthIsClosedAfterItsMessage()
{
    setGroups(m_item, {{"Modbus-1", group("1", {{"0", "a", "string", "1", "r"}})}});
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    QTRY_COMPARE(tabsOf(form).size(), 1);
    QApplication::setActiveWindow(&form);
    QVERIFY(QTest::qWaitForWindowActive(&form));
    auto *length = qobject_cast<QLineEdit *>(form.findChild<QTableWidget *>()->cellWidget(0, 3));
    length->setFocus();
    length->setText("none");
    int tabsBelow = -1;
    QTimer::singleShot(0, &form, [&] { tabsBelow = form.findChild<QTabWidget *>()->count(); });
    m_messages->expect();
    form.deleteTab(0);
    QCOMPARE(tabsBelow, 1);
    QCOMPARE(tabsOf(form), QStringList());
}

void TestStandardModbusEditDialog::badLengthIsToldBeforeATabIsDuplicated_data()
{
    QTest::addColumn<int>("tab");
    QTest::newRow("of the tab") << 0;
    QTest::newRow("of another tab") << 1;
}

void TestStandardModbusEditDialog::badLengthIsToldBeforeATabIsDuplicated()
{
    QFETCH(int, tab);
    const QList<QVariantList> parameters{{"0", "a", "string", "1", "r"}};
    setGroups(m_item, {{"Modbus-1", group("1", parameters)}, {"Modbus-2", group("1", parameters)}});
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    QTRY_COMPARE(tabsOf(form).size(), 2);
    QApplication::setActiveWindow(&form);
    QVERIFY(QTest::qWaitForWindowActive(&form));
    const QWidget *shown = form.findChild<QTabWidget *>()->currentWidget();
    auto *length = qobject_cast<QLineEdit *>(shown->findChild<QTableWidget *>()->cellWidget(0, 3));
    length->setFocus();
    length->setText("none");
    int tabsBelow = -1;
    QTimer::singleShot(0, &form, [&] { tabsBelow = form.findChild<QTabWidget *>()->count(); });
    m_messages->expect();
    emit form.findChild<StandardTabs *>()->duplicateRequested(tab);
    QCOMPARE(tabsBelow, 2);
    form.saveChanges();
    const RowList stored = group("1", parameters);
    QCOMPARE(groupsOf(m_item), (GroupMap{{"Modbus-1", stored}, {"Modbus-2", stored}, {"Modbus-3", stored}}));
}

void TestStandardModbusEditDialog::clearDataGoesBackToTcp()
{
    standardModbusEditDialog form(m_item, m_workspace);
    RUN(show(form));
    list(form, "modbus")->setCurrentIndex(1);
    form.clearData();
    QCOMPARE(edit(form, "ip")->text(), QString());
    QCOMPARE(list(form, "modbus")->currentIndex(), 0);
}

void TestStandardModbusEditDialog::formMayDieBelowItsFileDialog_data()
{
    QTest::addColumn<QByteArray>("button");
    QTest::newRow("import") << QByteArray("importButton");
    QTest::newRow("export") << QByteArray("exportButton");
}

void TestStandardModbusEditDialog::formMayDieBelowItsFileDialog()
{
    QFETCH(QByteArray, button);
    const QPointer<standardModbusEditDialog> form = new standardModbusEditDialog(m_item, m_workspace);
    form->addTab();
    form->addParameter();
    m_dialogs->expect([form](QWidget *) { delete form; });
    click(*form, button);
    QVERIFY(!form);
    QCOMPARE(m_workspace->messages, QStringList());
}

QTEST_MAIN(TestStandardModbusEditDialog)
#include "tst_standardmodbuseditdialog.moc"
