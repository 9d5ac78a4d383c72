#include "barwatch.h"
#include "model/itemroles.h"
#include "standardformtest.h"
#include "standards/standardmodbuseditdialog.h"
#include "widgets/progress.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardItem>
#include <QTabWidget>
#include <QTableWidget>
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
    void openingWritesTheTextDefaults();
    void tabsAppearAfterTheConstructor();
    void oneBarShowsHowFarAllTabsAreLoaded();
    void unknownModeShowsTcpAndIsOverwritten();
    void linkDecidesWhatIsSavedAndErased();
    void otherLinkShowsNoGroup();
    void serialLineIsSaved();
    void newTabHasItsInitialValues();
    void saveStoresEveryTab();
    void deletedTabClosesTheNumbers();
    void twelveTabsComeBackInTextOrder();
    void storedTabIsShown();
    void sameNameInTwoTabsIsAccepted();
    void buttonsActOnTheCurrentTab();
    void replaceItemShowsTheOtherStandard();
    void replaceItemBeforeTheTabsAppearedLoadsThemOnce();
    void operationsWithoutATab();
    void wheelLeavesListsAlone();
    void clearDataEmptiesTheForm();
    void cancelRejects();
    void everyInputHasItsName();
    void rolesOfTheWrongTypeDoNoHarm();
    void saveWithoutItsNodeDoesNothing();
    void writesItsLifeToTheLog();
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
    show(form);
    QCOMPARE(form.nameEdit()->text(), "Feeder");
    QCOMPARE(find<QComboBox>(form, "protocol")->currentText(), "Modbus");
    QCOMPARE(find<QComboBox>(form, "modbus")->currentText(), "ModbusTCP");
    QVERIFY(find<QLineEdit>(form, "ip")->isVisible());
    QVERIFY(!find<QComboBox>(form, "baudRate")->isVisible());
    const struct {
        const char *name;
        const char *text;
    } fields[] = {{"ip", "192.168.1.60"},        {"port", "502"},
                  {"connectionTimeout", "2000"}, {"communicationTimeout", "2000"},
                  {"keepAlive", "60000"},        {"rtuCommunicationTimeout", "2000"},
                  {"communicationGap", "-1"},    {"collectionInterval", "2000"}};
    for (const auto &field : fields) {
        QCOMPARE(find<QLineEdit>(form, field.name)->text(), QLatin1String(field.text));
    }
    QVERIFY(!find<QCheckBox>(form, "rtsEnable")->isChecked());
    QCOMPARE(titles(form), QStringList());
}

void TestStandardModbusEditDialog::openingWritesTheTextDefaults()
{
    standardModbusEditDialog form(m_item, m_workspace);
    QCOMPARE(m_item->data(standardIpRole), QVariant("192.168.1.60"));
    QCOMPARE(m_item->data(standardCommunicationGapRole), QVariant("-1"));
    QCOMPARE(m_item->data(standardCollectionIntervalRole), QVariant("2000"));
    QCOMPARE(m_item->data(standardBaudRateRole), QVariant());
    QCOMPARE(m_item->data(standardModbusModeRole), QVariant());
    QCOMPARE(m_item->data(standardDatasRole), QVariant());
}

void TestStandardModbusEditDialog::tabsAppearAfterTheConstructor()
{
    setGroups(m_item, {{"Modbus-7", group("4")}});
    standardModbusEditDialog form(m_item, m_workspace);
    QCOMPARE(titles(form), QStringList());
    QTRY_COMPARE(titles(form), QStringList{"Modbus-1"});
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
    QCOMPARE(titles(form).size(), 2);
    QVERIFY(!bars.values().isEmpty());
    QCOMPARE(bars.maxima(), QSet<int>{600});
    QVERIFY(!form.findChild<QProgressBar *>());
}

void TestStandardModbusEditDialog::unknownModeShowsTcpAndIsOverwritten()
{
    m_item->setData("ModbusASCII", standardModbusModeRole);
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
    QCOMPARE(find<QComboBox>(form, "modbus")->currentText(), "ModbusTCP");
    form.saveChanges();
    QCOMPARE(m_item->data(standardModbusModeRole), QVariant("ModbusTCP"));
}

void TestStandardModbusEditDialog::linkDecidesWhatIsSavedAndErased()
{
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
    find<QLineEdit>(form, "ip")->setText("10.0.0.9");
    form.saveChanges();
    QCOMPARE(m_item->data(standardIpRole), QVariant("10.0.0.9"));
    QCOMPARE(m_item->data(standardRtuCommunicationTimeoutRole), QVariant());

    find<QComboBox>(form, "modbus")->setCurrentText("ModbusRTU");
    QVERIFY(!find<QLineEdit>(form, "ip")->isVisible());
    QVERIFY(find<QComboBox>(form, "baudRate")->isVisible());
    form.saveChanges();
    for (const int role : {standardIpRole, standardPortRole, standardConnectionTimeoutRole,
                           standardCommunicationTimeoutRole, standardKeepAliveRole}) {
        QCOMPARE(m_item->data(role), QVariant());
    }
    QCOMPARE(m_item->data(standardCommunicationGapRole), QVariant("-1"));

    standardModbusEditDialog again(m_item, m_workspace);
    QCOMPARE(find<QLineEdit>(again, "ip")->text(), "192.168.1.60");
}

void TestStandardModbusEditDialog::otherLinkShowsNoGroup()
{
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
    form.onProtocolChanged("ModbusASCII");
    QVERIFY(!find<QLineEdit>(form, "ip")->isVisible());
    QVERIFY(!find<QComboBox>(form, "baudRate")->isVisible());
}

void TestStandardModbusEditDialog::serialLineIsSaved()
{
    m_item->setData("ModbusRTU", standardModbusModeRole);
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
    find<QComboBox>(form, "serialport")->setCurrentText("COM2");
    find<QComboBox>(form, "baudRate")->setCurrentText("9600");
    find<QComboBox>(form, "dataBit")->setCurrentText("7");
    find<QComboBox>(form, "stopBit")->setCurrentText("2");
    find<QComboBox>(form, "parityBit")->setCurrentText("ODD");
    find<QCheckBox>(form, "rtsEnable")->setChecked(true);
    find<QLineEdit>(form, "rtuCommunicationTimeout")->setText("900");
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
    show(form);
    find<QPushButton>(form, "addTabButton")->click();
    find<QPushButton>(form, "addTabButton")->click();
    QCOMPARE(titles(form), (QStringList{"Modbus-1", "Modbus-2"}));
    auto *tabs = form.findChild<QTabWidget *>();
    QCOMPARE(tabs->currentIndex(), 0);
    const QWidget &page = *tabs->widget(1);
    QCOMPARE(find<QComboBox>(page, "seriesComboBox")->currentText(), "standard");
    QVERIFY(!find<QComboBox>(page, "seriesComboBox")->isEnabled());
    QCOMPARE(find<QLineEdit>(page, "stationNumEdit")->text(), "1");
    QCOMPARE(find<QComboBox>(page, "byteOrderComboBox")->currentText(), "ABCD");
    QVERIFY(find<QCheckBox>(page, "startAddress0CheckBox")->isChecked());
    QVERIFY(!find<QCheckBox>(page, "charReversedCheckBox")->isChecked());
    QCOMPARE(page.findChild<QTableWidget *>()->rowCount(), 0);
    QCOMPARE(page.findChild<QTableWidget *>()->height(), 600);
}

void TestStandardModbusEditDialog::saveStoresEveryTab()
{
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
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

void TestStandardModbusEditDialog::deletedTabClosesTheNumbers()
{
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
    for (const char *station : {"11", "12", "13"}) {
        form.addTab();
        auto *tabs = form.findChild<QTabWidget *>();
        find<QLineEdit>(*tabs->widget(tabs->count() - 1), "stationNumEdit")->setText(QLatin1String(station));
    }
    emit form.findChild<QTabWidget *>()->tabCloseRequested(1);
    QCOMPARE(titles(form), (QStringList{"Modbus-1", "Modbus-2"}));
    QCOMPARE(stations(form), (QStringList{"11", "13"}));
    form.addTab();
    QCOMPARE(titles(form), (QStringList{"Modbus-1", "Modbus-2", "Modbus-3"}));
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
    QCOMPARE(titles(form).at(1), "Modbus-2");
    QCOMPARE(titles(form).last(), "Modbus-12");
}

void TestStandardModbusEditDialog::storedTabIsShown()
{
    setGroups(m_item,
              {{"Modbus-1",
                {{"unknown", "5", "EFGH", "true", "true"},
                 {"0", "a", "string", "4", "r"},
                 {"1", "b", "int8", "4", "rw"}}}});
    standardModbusEditDialog form(m_item, m_workspace);
    QTRY_COMPARE(titles(form).size(), 1);
    const QWidget &page = *form.findChild<QTabWidget *>()->widget(0);
    QCOMPARE(find<QComboBox>(page, "seriesComboBox")->currentText(), "standard");
    QCOMPARE(find<QComboBox>(page, "byteOrderComboBox")->currentText(), "ABCD");
    QVERIFY(find<QCheckBox>(page, "startAddress0CheckBox")->isChecked());
    QVERIFY(find<QCheckBox>(page, "charReversedCheckBox")->isChecked());
    auto *table = page.findChild<QTableWidget *>();
    QVERIFY(table->cellWidget(0, 3)->isEnabled());
    QVERIFY(!table->cellWidget(1, 3)->isEnabled());
    QCOMPARE(table->item(1, 1)->text(), "b");
}

void TestStandardModbusEditDialog::sameNameInTwoTabsIsAccepted()
{
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
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
    show(form);
    form.addTab();
    form.addTab();
    auto *tabs = form.findChild<QTabWidget *>();
    auto *first = tabs->widget(0)->findChild<QTableWidget *>();
    auto *second = tabs->widget(1)->findChild<QTableWidget *>();
    find<QPushButton>(*tabs->widget(0), "addButton")->click();
    tabs->setCurrentIndex(1);
    find<QPushButton>(*tabs->widget(1), "addButton")->click();
    find<QPushButton>(*tabs->widget(1), "addButton")->click();
    QCOMPARE(first->rowCount(), 1);
    QCOMPARE(second->rowCount(), 2);
    find<QPushButton>(*tabs->widget(1), "removeAllButton")->click();
    QCOMPARE(first->rowCount(), 1);
    QCOMPARE(second->rowCount(), 0);
    tabs->setCurrentIndex(0);
    first->setCurrentCell(0, 0);
    qobject_cast<QPushButton *>(first->cellWidget(0, 5))->click();
    QCOMPARE(first->rowCount(), 0);
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
    show(form);
    QTRY_COMPARE(titles(form).size(), 1);
    form.replaceItem(&other);
    QCOMPARE(form.nameEdit()->text(), "Other");
    QVERIFY(find<QComboBox>(form, "baudRate")->isVisible());
    QCOMPARE(find<QComboBox>(form, "baudRate")->currentText(), "9600");
    QVERIFY(find<QCheckBox>(form, "rtsEnable")->isChecked());
    QCOMPARE(find<QLineEdit>(form, "ip")->text(), "192.168.1.60");
    QCOMPARE(titles(form), (QStringList{"Modbus-1", "Modbus-2"}));
    QCOMPARE(stations(form), (QStringList{"10", "2"}));
    form.replaceItem(m_item);
    QCOMPARE(find<QComboBox>(form, "modbus")->currentText(), "ModbusTCP");
    QCOMPARE(find<QComboBox>(form, "baudRate")->currentText(), "115200");
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
    show(form);
    QCoreApplication::processEvents();
    QCOMPARE(stations(form), expected);
}

void TestStandardModbusEditDialog::operationsWithoutATab()
{
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
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

void TestStandardModbusEditDialog::wheelLeavesListsAlone()
{
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
    form.addTab();
    form.addParameter();
    auto *type = qobject_cast<QComboBox *>(form.findChild<QTableWidget *>()->cellWidget(0, 2));
    turnWheel(type);
    QCOMPARE(type->currentText(), "bool");
}

void TestStandardModbusEditDialog::clearDataEmptiesTheForm()
{
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
    form.addTab();
    find<QComboBox>(form, "modbus")->setCurrentIndex(1);
    form.clearData();
    QCOMPARE(form.nameEdit()->text(), QString());
    QCOMPARE(find<QLineEdit>(form, "ip")->text(), QString());
    QCOMPARE(find<QComboBox>(form, "modbus")->currentIndex(), 0);
    QCOMPARE(titles(form), QStringList());
}

void TestStandardModbusEditDialog::cancelRejects()
{
    standardModbusEditDialog form(m_item, m_workspace);
    QSignalSpy rejected(&form, &QDialog::rejected);
    find<QPushButton>(form, "cancelButton")->click();
    QCOMPARE(rejected.size(), 1);
}

void TestStandardModbusEditDialog::everyInputHasItsName()
{
    standardModbusEditDialog form(m_item, m_workspace);
    form.addTab();
    QStringList expected{"name",
                         "protocol",
                         "modbus",
                         "ip",
                         "port",
                         "connectionTimeout",
                         "communicationTimeout",
                         "keepAlive",
                         "serialport",
                         "baudRate",
                         "dataBit",
                         "stopBit",
                         "parityBit",
                         "rtsEnable",
                         "rtuCommunicationTimeout",
                         "communicationGap",
                         "trigger",
                         "collectionInterval",
                         "seriesComboBox",
                         "stationNumEdit",
                         "byteOrderComboBox",
                         "startAddress0CheckBox",
                         "charReversedCheckBox"};
    expected.sort();
    QCOMPARE(inputNames(form), expected);
}

void TestStandardModbusEditDialog::rolesOfTheWrongTypeDoNoHarm()
{
    m_item->setData("not a map", standardDatasRole);
    m_item->setData(QVariantList{1, 2}, standardIpRole);
    standardModbusEditDialog form(m_item, m_workspace);
    show(form);
    QCOMPARE(titles(form), QStringList());
    setGroups(m_item, {{"a", {}}, {"b", {{}, {}, {1, 2, 3, 4, 5, 6, 7}}}});
    form.replaceItem(m_item);
    form.saveChanges();
    QCOMPARE(titles(form).size(), 2);
}

void TestStandardModbusEditDialog::saveWithoutItsNodeDoesNothing()
{
    saveWithoutItsNode<standardModbusEditDialog>();
}

void TestStandardModbusEditDialog::writesItsLifeToTheLog()
{
    QCOMPARE(linesOfALife<standardModbusEditDialog>(),
             (QStringList{"standardModbusEditDialog: new-nuilt", "standardModbusEditDialog: replace",
                          "standardModbusEditDialog: save", "standardModbusEditDialog: destroyed"}));
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
    find<QPushButton>(*form, button)->click();
    QVERIFY(!form);
    QCOMPARE(m_workspace->messages, QStringList());
}

QTEST_MAIN(TestStandardModbusEditDialog)
#include "tst_standardmodbuseditdialog.moc"
