#include "standardformtest.h"
#include "standards/standarddlt645editdialog.h"
#include "standards/standardmodbuseditdialog.h"

#include <QLineEdit>
#include <QTabWidget>

// What the forms of Modbus and DLT645 have in common: a tab a slave.
class TestStandardTabs : public StandardFormTest
{
    Q_OBJECT
public:
    TestStandardTabs()
        : StandardFormTest("Feeder", QString())
    {
    }
private slots:
    void initTestCase_data();

    void everyInputHasItsName();
    void openingWritesTheTextDefaultsOnly();
    void deletedTabClosesTheNumbers();
    void rowsOfTheWrongShapeAreTabs();
    void clearDataEmptiesTheForm();

private:
    // Of the Standard that the test runs for.
    std::unique_ptr<DefinitionForm> open();
    static QStringList addresses(const QWidget &form);
};

namespace {

bool isModbus()
{
    QFETCH_GLOBAL(bool, modbus);
    return modbus;
}

const char *addressInput()
{
    return isModbus() ? "stationNumEdit" : "slaveAddressEdit";
}

} // namespace

void TestStandardTabs::initTestCase_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::newRow("Modbus") << true;
    QTest::newRow("DLT645") << false;
}

std::unique_ptr<DefinitionForm> TestStandardTabs::open()
{
    if (isModbus()) {
        return std::make_unique<standardModbusEditDialog>(m_item, m_workspace);
    }
    return std::make_unique<standardDLT645EditDialog>(m_item, m_workspace);
}

QStringList TestStandardTabs::addresses(const QWidget &form)
{
    QStringList texts;
    const auto *tabs = form.findChild<QTabWidget *>();
    for (int index = 0; index < tabs->count(); ++index) {
        texts.append(edit(*tabs->widget(index), addressInput())->text());
    }
    return texts;
}

void TestStandardTabs::everyInputHasItsName()
{
    const auto form = open();
    click(*form, "addTabButton");
    const char *const expected = isModbus()
        ? "baudRate byteOrderComboBox charReversedCheckBox collectionInterval communicationGap "
          "communicationTimeout connectionTimeout dataBit ip keepAlive modbus name parityBit port protocol "
          "rtsEnable rtuCommunicationTimeout serialport seriesComboBox startAddress0CheckBox stationNumEdit "
          "stopBit trigger"
        : "baudRate collectionInterval communicationGap communicationTimeout dataBit filter name parityBit "
          "protocol "
          "protocolVersionComboBox rtsEnable serialport slaveAddressEdit stopBit trigger";
    QCOMPARE(inputsOf(*form).join(QLatin1Char(' ')), QLatin1String(expected));
}

void TestStandardTabs::openingWritesTheTextDefaultsOnly()
{
    const auto form = open();
    QMap<int, QVariant> expected{{standardCollectionIntervalRole, "2000"},
                                 {standardCommunicationTimeoutRole, "2000"},
                                 {standardCommunicationGapRole, "-1"}};
    if (isModbus()) {
        expected.insert(standardIpRole, "192.168.1.60");
        expected.insert(standardPortRole, "502");
        expected.insert(standardConnectionTimeoutRole, "2000");
        expected.insert(standardKeepAliveRole, "60000");
        expected.insert(standardRtuCommunicationTimeoutRole, "2000");
    }
    QCOMPARE(rolesOf(*m_item), expected);
}

void TestStandardTabs::deletedTabClosesTheNumbers()
{
    const auto form = open();
    RUN(show(*form));
    auto *tabs = form->findChild<QTabWidget *>();
    for (const char *address : {"11", "12", "13"}) {
        click(*form, "addTabButton");
        edit(*tabs->widget(tabs->count() - 1), addressInput())->setText(QLatin1String(address));
    }
    const QString title = isModbus() ? QString("Modbus-") : "DLT645-";
    QCOMPARE(tabsOf(*form), QStringList({title + "1", title + "2", title + "3"}));
    QCOMPARE(tabs->currentIndex(), 0);
    emit tabs->tabCloseRequested(1);
    QCOMPARE(tabsOf(*form), QStringList({title + "1", title + "2"}));
    QCOMPARE(addresses(*form), QStringList({"11", "13"}));
    click(*form, "addTabButton");
    QCOMPARE(tabsOf(*form), QStringList({title + "1", title + "2", title + "3"}));
}

void TestStandardTabs::rowsOfTheWrongShapeAreTabs()
{
    m_item->setData("not a map", standardDatasRole);
    const auto form = open();
    RUN(show(*form));
    QCOMPARE(tabsOf(*form), QStringList());
    setGroups(m_item, {{"a", {}}, {"b", {{}, {}, {1, 2, 3, 4, 5, 6, 7}}}});
    form->replaceItem(m_item);
    form->saveChanges();
    QCOMPARE(tabsOf(*form).size(), 2);
}

void TestStandardTabs::clearDataEmptiesTheForm()
{
    const auto form = open();
    RUN(show(*form));
    click(*form, "addTabButton");
    form->clearData();
    QCOMPARE(textsOf(*form, {"name", "communicationGap", "collectionInterval"}).join(QString()), QString());
    QCOMPARE(tabsOf(*form), QStringList());
}

QTEST_MAIN(TestStandardTabs)
#include "tst_standardtabs.moc"
