#include "standardformtest.h"
#include "standards/standarddlt645editdialog.h"
#include "standards/standardmodbuseditdialog.h"
#include "standards/standardtabs.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>

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
    void duplicatedTabIsShownWithItsRows();
    void duplicateHasWhatIsBeingTyped();
    void menuKeyDuplicatesTheCurrentTab();
    void menuIsForTabsAlone();
    void formMayDieBelowTheMenu();
    void rowsOfTheWrongShapeAreTabs();
    void clearDataEmptiesTheForm();

private:
    // Of the Standard that the test runs for.
    std::unique_ptr<DefinitionForm> open();
    static QStringList addresses(const QWidget &form);
    // What is stored for a tab with an address.
    static RowList rows(const QString &address);
    void chooseInMenu(const QString &entry);
    // As a right click does; the place is one of the tab bar.
    static void askForMenu(QTabBar *bar, const QPoint &place, QContextMenuEvent::Reason reason);
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

RowList TestStandardTabs::rows(const QString &address)
{
    if (isModbus()) {
        return {{"standard", address, "CDAB", false, true}, {"0", "a", "string", "5", "rw"}};
    }
    RowList rows{{address, "DLT645_1997"}};
    for (int row = 0; row < 30; ++row) {
        rows.append({row == 3, QString("item %1").arg(row), row == 3 ? QString("volt") : ""});
    }
    return rows;
}

void TestStandardTabs::chooseInMenu(const QString &entry)
{
    m_dialogs->expect([entry](QWidget *menu) {
        QCOMPARE(menu->actions().size(), 1);
        QCOMPARE(menu->actions().first()->text(), entry);
        qobject_cast<QMenu *>(menu)->setActiveAction(menu->actions().first());
        QTest::keyClick(menu, Qt::Key_Return);
    });
}

void TestStandardTabs::askForMenu(QTabBar *bar, const QPoint &place, QContextMenuEvent::Reason reason)
{
    QContextMenuEvent event(reason, place, bar->mapToGlobal(place));
    QApplication::sendEvent(bar, &event);
}

void TestStandardTabs::duplicatedTabIsShownWithItsRows()
{
    setGroups(m_item, {{"a", rows("11")}, {"b", rows("12")}});
    const auto form = open();
    RUN(show(*form));
    auto *tabs = form->findChild<QTabWidget *>();
    QTRY_COMPARE(tabs->count(), 2);
    QApplication::setActiveWindow(form.get());
    QVERIFY(QTest::qWaitForWindowActive(form.get()));
    chooseInMenu("Duplicate");
    askForMenu(tabs->tabBar(), tabs->tabBar()->tabRect(1).center(), QContextMenuEvent::Mouse);
    const QString title = isModbus() ? QString("Modbus-3") : "DLT645-3";
    QCOMPARE(tabsOf(*form), QStringList({"Modbus-1", "Modbus-2", title}));
    QCOMPARE(addresses(*form), QStringList({"11", "12", "12"}));
    QCOMPARE(tabs->currentIndex(), 2);
    // The address is what differs, so it is typed over.
    QLineEdit *address = edit(*tabs->currentWidget(), addressInput());
    QCOMPARE(form->focusWidget(), address);
    QTest::keyClicks(address, "13");
    form->saveChanges();
    QCOMPARE(groupsOf(m_item),
             (GroupMap{{"Modbus-1", rows("11")}, {"Modbus-2", rows("12")}, {title, rows("13")}}));
    QCOMPARE(m_messages->told(), QStringList());
}

void TestStandardTabs::duplicateHasWhatIsBeingTyped()
{
    setGroups(m_item, {{"a", rows("11")}});
    const auto form = open();
    RUN(show(*form));
    auto *tabs = form->findChild<QTabWidget *>();
    QTRY_COMPARE(tabs->count(), 1);
    QApplication::setActiveWindow(form.get());
    QVERIFY(QTest::qWaitForWindowActive(form.get()));
    auto *table = tabs->currentWidget()->findChild<QTableWidget *>();
    table->setCurrentCell(0, isModbus() ? 1 : 2);
    table->setFocus();
    table->editItem(table->currentItem());
    QTest::keyClicks(QApplication::focusWidget(), "amp");
    // Without the menu, which takes the focus on some platforms and not on others.
    emit form->findChild<StandardTabs *>()->duplicateRequested(0);
    form->saveChanges();
    RowList expected = rows("11");
    expected[1][isModbus() ? 1 : 2] = "amp";
    QCOMPARE(groupsOf(m_item),
             (GroupMap{{"Modbus-1", expected}, {isModbus() ? "Modbus-2" : "DLT645-2", expected}}));
}

void TestStandardTabs::menuKeyDuplicatesTheCurrentTab()
{
    setGroups(m_item, {{"a", rows("11")}, {"b", rows("12")}});
    const auto form = open();
    RUN(show(*form));
    auto *tabs = form->findChild<QTabWidget *>();
    QTRY_COMPARE(tabs->count(), 2);
    tabs->setCurrentIndex(1);
    QApplication::setActiveWindow(form.get());
    QVERIFY(QTest::qWaitForWindowActive(form.get()));
    tabs->tabBar()->setFocus();
    chooseInMenu("Duplicate");
    askForMenu(tabs->tabBar(), tabs->tabBar()->tabRect(0).center(), QContextMenuEvent::Keyboard);
    QCOMPARE(addresses(*form), QStringList({"11", "12", "12"}));
}

void TestStandardTabs::menuIsForTabsAlone()
{
    const auto form = open();
    RUN(show(*form));
    click(*form, "addTabButton");
    auto *tabs = form->findChild<QTabWidget *>();
    askForMenu(tabs->tabBar(), tabs->tabBar()->rect().topRight() + QPoint(50, 5), QContextMenuEvent::Mouse);
    askForMenu(tabs->tabBar(), QPoint(20, 200), QContextMenuEvent::Mouse);
    QCOMPARE(tabs->count(), 1);
}

void TestStandardTabs::formMayDieBelowTheMenu()
{
    auto form = open();
    RUN(show(*form));
    click(*form, "addTabButton");
    auto *bar = form->findChild<QTabWidget *>()->tabBar();
    m_dialogs->expect([&form](QWidget *menu) {
        form.reset();
        menu->close();
    });
    askForMenu(bar, bar->tabRect(0).center(), QContextMenuEvent::Mouse);
    QVERIFY(!form);
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
