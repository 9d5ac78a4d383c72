#include "model/itemroles.h"
#include "standardformtest.h"
#include "standards/standarddlt645editdialog.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardItem>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QtTest>

// The form of a DLT645 Standard on an item and a faked main window.
class TestStandardDLT645EditDialog : public StandardFormTest
{
    Q_OBJECT
public:
    TestStandardDLT645EditDialog()
        : StandardFormTest("Meters", "DLT645")
    {
    }
private slots:
    void newStandardShowsItsDefaults();
    void savingWritesTheListsDefaults();
    void newTabShowsTheWholeCatalogue();
    void editionChangesTheTable();
    void selectAllTicksAndUnticks();
    void headerClickActsOnTheFirstColumnOnly();
    void duplicateNameIsCleared();
    void emptiedNameCountsToo();
    void sameNameInTwoTabsIsAccepted();
    void saveKeepsEveryRow();
    void loadedTabsAreCalledModbus();
    void loadedEditionLeavesOtherTabsAlone();
    void wheelLeavesTheEditionAlone();
    void filterHidesRowsFromSight();
    void hiddenRowsAreSavedAndTickedWithTheOthers();
    void filterStaysForAnotherEdition();
    void tabGoesThroughTheTicksInSight();
    void storedRowsAreAppliedByPosition();
    void unknownEditionIsTheNewer();
    void tabWithoutRowsKeepsItsSettings();
    void tabWithoutOneOfItsInputsIsLeftOut_data();
    void tabWithoutOneOfItsInputsIsLeftOut();
    void controlWClosesTheCurrentTab();
    void replaceItemSelectsOtherEntries();
    void slaveAddressTakesHexadecimalDigitsOnly();
};

namespace {

QCheckBox *tick(const QTableWidget *table, int row)
{
    return qobject_cast<QCheckBox *>(table->cellWidget(row, 0));
}

QStringList shownItems(const QTableWidget *table)
{
    QStringList labels;
    for (int row = 0; row < table->rowCount(); ++row) {
        if (!table->isRowHidden(row)) {
            labels.append(table->item(row, 1)->text());
        }
    }
    return labels;
}

int ticked(const QTableWidget *table)
{
    int count = 0;
    for (int row = 0; row < table->rowCount(); ++row) {
        count += tick(table, row)->isChecked();
    }
    return count;
}

} // namespace

void TestStandardDLT645EditDialog::newStandardShowsItsDefaults()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    QCOMPARE(form.nameEdit()->text(), "Meters");
    QCOMPARE(textsOf(form,
                     {"protocol", "serialport", "baudRate", "dataBit", "stopBit", "parityBit",
                      "communicationTimeout", "communicationGap", "collectionInterval"}),
             QStringList({"DLT645", "COM1", "2400", "8", "1", "EVEN", "2000", "-1", "2000"}));
    QVERIFY(!check(form, "rtsEnable")->isChecked());
    QCOMPARE(tabsOf(form), QStringList());
}

void TestStandardDLT645EditDialog::savingWritesTheListsDefaults()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.saveChanges();
    QCOMPARE(m_item->data(standardBaudRateRole), QVariant("2400"));
    QCOMPARE(m_item->data(standardParityBitRole), QVariant("EVEN"));
}

void TestStandardDLT645EditDialog::newTabShowsTheWholeCatalogue()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    form.addTab();
    QCOMPARE(tabsOf(form), (QStringList{"DLT645-1", "DLT645-2"}));
    QCOMPARE(form.findChild<QTabWidget *>()->currentIndex(), 0);
    auto *table = form.findChild<QTableWidget *>();
    QCOMPARE(table->rowCount(), 44);
    QCOMPARE(ticked(table), 0);
    QCOMPARE(edit(form, "slaveAddressEdit")->text(), "AAAAAAAAAAAA");
    QCOMPARE(list(form, "protocolVersionComboBox")->currentText(), "DLT645_2007");
    QCOMPARE(table->item(0, 1)->text(), "Positive active power rate of 4 electric energy");
    QCOMPARE(table->item(43, 1)->text(), "C-phase voltage");
    QVERIFY(!(table->item(0, 1)->flags() & Qt::ItemIsEditable));
    QVERIFY(table->item(0, 2)->flags() & Qt::ItemIsEditable);
    const QList<int> widths{table->columnWidth(0), table->columnWidth(1), table->columnWidth(2)};
    QCOMPARE(widths, (QList<int>{40, 150, 90}));
    QCOMPARE(table->maximumHeight(), 600);
}

void TestStandardDLT645EditDialog::editionChangesTheTable()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    auto *table = form.findChild<QTableWidget *>();
    tick(table, 0)->setChecked(true);
    table->item(0, 2)->setText("mine");
    list(form, "protocolVersionComboBox")->setCurrentText("DLT645_1997");
    QCOMPARE(table->rowCount(), 30);
    QCOMPARE(ticked(table), 0);
    QCOMPARE(table->item(0, 2)->text(), QString());
    QCOMPARE(m_workspace->messages, QStringList());
    list(form, "protocolVersionComboBox")->setCurrentText("DLT645_2007");
    QCOMPARE(table->rowCount(), 44);
}

void TestStandardDLT645EditDialog::selectAllTicksAndUnticks()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    auto *table = form.findChild<QTableWidget *>();
    auto *button = find<QPushButton>(form, "selectAllButton");
    button->click();
    QCOMPARE(ticked(table), 44);
    tick(table, 7)->setChecked(false);
    button->click();
    QCOMPARE(ticked(table), 44);
    button->click();
    QCOMPARE(ticked(table), 0);
}

void TestStandardDLT645EditDialog::headerClickActsOnTheFirstColumnOnly()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    auto *table = form.findChild<QTableWidget *>();
    emit table->horizontalHeader()->sectionClicked(1);
    QCOMPARE(ticked(table), 0);
    emit table->horizontalHeader()->sectionClicked(2);
    QCOMPARE(ticked(table), 0);
    emit table->horizontalHeader()->sectionClicked(0);
    QCOMPARE(ticked(table), 44);
}

void TestStandardDLT645EditDialog::duplicateNameIsCleared()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    auto *table = form.findChild<QTableWidget *>();
    table->item(0, 2)->setText("volt");
    table->item(4, 2)->setText("Volt");
    table->item(5, 2)->setText("volt");
    QCOMPARE(table->item(4, 2)->text(), "Volt");
    QCOMPARE(table->item(5, 2)->text(), QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '6' line already exists. Please use a different name."});
    QVERIFY(form.isNameDuplicate(table, 5, "volt"));
    QVERIFY(!form.isNameDuplicate(table, 0, "volt"));
}

void TestStandardDLT645EditDialog::emptiedNameCountsToo()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    auto *table = form.findChild<QTableWidget *>();
    table->item(2, 2)->setText("volt");
    QCOMPARE(m_workspace->messages, QStringList());
    table->item(2, 2)->setText(QString());
    QCOMPARE(m_workspace->messages,
             QStringList{"The name of the '3' line already exists. Please use a different name."});
}

void TestStandardDLT645EditDialog::sameNameInTwoTabsIsAccepted()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    form.addTab();
    const auto tables = form.findChildren<QTableWidget *>();
    for (QTableWidget *table : tables) {
        table->item(0, 2)->setText("volt");
        QCOMPARE(table->item(0, 2)->text(), "volt");
    }
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestStandardDLT645EditDialog::saveKeepsEveryRow()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    list(form, "protocolVersionComboBox")->setCurrentText("DLT645_1997");
    edit(form, "slaveAddressEdit")->setText(QString());
    auto *table = form.findChild<QTableWidget *>();
    tick(table, 1)->setChecked(true);
    table->item(1, 2)->setText("energy");
    form.nameEdit()->setText("Renamed");
    form.saveChanges();
    const auto groups = m_item->data(standardDatasRole).value<GroupMap>();
    QCOMPARE(groups.keys(), QStringList{"DLT645-1"});
    const RowList rows = groups.value("DLT645-1");
    QCOMPARE(rows.size(), 31);
    QCOMPARE(rows.at(0), QVariantList({"", "DLT645_1997"}));
    QCOMPARE(rows.at(1), QVariantList({false, "Positive active power rate of 4 electric energy", ""}));
    QCOMPARE(rows.at(2), QVariantList({true, "Positive active power rate of 3 electric energy", "energy"}));
    QCOMPARE(m_item->text(), "Renamed");
    QCOMPARE(m_workspace->messages, QStringList{"The Standard DLT645 'Renamed' is saved successfully."});
}

void TestStandardDLT645EditDialog::loadedTabsAreCalledModbus()
{
    {
        standardDLT645EditDialog form(m_item, m_workspace);
        form.addTab();
        form.addTab();
        form.saveChanges();
    }
    standardDLT645EditDialog form(m_item, m_workspace);
    QCOMPARE(tabsOf(form), (QStringList{"Modbus-1", "Modbus-2"}));
    form.addTab();
    QCOMPARE(tabsOf(form), (QStringList{"Modbus-1", "Modbus-2", "DLT645-3"}));
    form.saveChanges();
    QCOMPARE(m_item->data(standardDatasRole).value<GroupMap>().keys(),
             (QStringList{"DLT645-3", "Modbus-1", "Modbus-2"}));
}

void TestStandardDLT645EditDialog::loadedEditionLeavesOtherTabsAlone()
{
    const GroupMap groups{
        {"DLT645-1", {{"1", "DLT645_2007"}, {"true", "label", "mine"}}},
        {"DLT645-2", {{"2", "DLT645_1997"}, {"true", "label", "other"}}},
    };
    setGroups(m_item, groups);
    standardDLT645EditDialog form(m_item, m_workspace);
    const auto *tabs = form.findChild<QTabWidget *>();
    const auto *newer = tabs->widget(0)->findChild<QTableWidget *>();
    const auto *older = tabs->widget(1)->findChild<QTableWidget *>();
    QCOMPARE(newer->rowCount(), 44);
    QCOMPARE(newer->item(0, 2)->text(), "mine");
    QCOMPARE(ticked(newer), 1);
    QCOMPARE(older->rowCount(), 30);
    QCOMPARE(older->item(0, 2)->text(), "other");
    QCOMPARE(ticked(older), 1);
}

void TestStandardDLT645EditDialog::wheelLeavesTheEditionAlone()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    RUN(show(form));
    auto *version = list(form, "protocolVersionComboBox");
    turnWheel(version);
    QCOMPARE(version->currentText(), "DLT645_2007");
}

void TestStandardDLT645EditDialog::filterHidesRowsFromSight()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    auto *table = form.findChild<QTableWidget *>();
    table->item(20, 2)->setText("Ua");
    typeInto(edit(form, "filter"), "PHASE VOLTAGE");
    QCOMPARE(shownItems(table), (QStringList{"A-phase voltage", "B-phase voltage", "C-phase voltage"}));
    typeInto(edit(form, "filter"), "ua");
    QVERIFY(shownItems(table).contains(table->item(20, 1)->text()));
    typeInto(edit(form, "filter"), "no such item");
    QCOMPARE(shownItems(table), QStringList());
    edit(form, "filter")->clear();
    QCOMPARE(shownItems(table).size(), 44);
    // The page's address is its first input.
    QCOMPARE(table->parentWidget()->findChild<QLineEdit *>()->objectName(), "slaveAddressEdit");
}

void TestStandardDLT645EditDialog::hiddenRowsAreSavedAndTickedWithTheOthers()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    auto *table = form.findChild<QTableWidget *>();
    table->item(0, 2)->setText("energy");
    tick(table, 0)->setChecked(true);
    typeInto(edit(form, "filter"), "C-phase voltage");
    form.saveChanges();
    const RowList rows = groupsOf(m_item).value("DLT645-1");
    QCOMPARE(rows.size(), 45);
    QCOMPARE(rows.at(1).at(0), QVariant(true));
    QCOMPARE(rows.at(1).at(2), QVariant("energy"));
    click(form, "selectAllButton");
    QCOMPARE(ticked(table), 44);
    table->item(43, 2)->setText("energy"); // as the hidden row
    QCOMPARE(table->item(43, 2)->text(), QString());
}

void TestStandardDLT645EditDialog::filterStaysForAnotherEdition()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    auto *table = form.findChild<QTableWidget *>();
    typeInto(edit(form, "filter"), "c-phase voltage");
    list(form, "protocolVersionComboBox")->setCurrentText("DLT645_1997");
    QCOMPARE(table->rowCount(), 30);
    QCOMPARE(shownItems(table), QStringList{"C-phase voltage"});
    edit(form, "filter")->clear();
    QCOMPARE(shownItems(table).size(), 30);
}

void TestStandardDLT645EditDialog::tabGoesThroughTheTicksInSight()
{
    setGroups(m_item, {{"DLT645-1", {{"1", "DLT645_1997"}}}, {"DLT645-2", {{"2", "DLT645_1997"}}}});
    standardDLT645EditDialog form(m_item, m_workspace);
    RUN(show(form));
    QApplication::setActiveWindow(&form);
    QVERIFY(QTest::qWaitForWindowActive(&form));
    const QWidget &page = *form.findChild<QTabWidget *>()->widget(0);
    auto *table = page.findChild<QTableWidget *>();
    typeInto(edit(page, "filter"), "-phase voltage");
    tick(table, 27)->setFocus();
    for (const int row : {28, 29}) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), tick(table, row));
    }
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget()->objectName(), "saveButton");
}

void TestStandardDLT645EditDialog::storedRowsAreAppliedByPosition()
{
    RowList rows{{"00112233", "DLT645_1997"}, {"true", "my label", "n0"}, {false, "b", ""}};
    for (int row = 0; row < 40; ++row) {
        rows.append({"true", "x", QString::number(row)});
    }
    setGroups(m_item, {{"DLT645-1", rows}});
    standardDLT645EditDialog form(m_item, m_workspace);
    auto *table = form.findChild<QTableWidget *>();
    QCOMPARE(table->rowCount(), 30);
    QCOMPARE(edit(form, "slaveAddressEdit")->text(), "00112233");
    QVERIFY(tick(table, 0)->isChecked());
    QVERIFY(!tick(table, 1)->isChecked());
    QCOMPARE(table->item(0, 1)->text(), "my label");
    QCOMPARE(table->item(0, 1)->toolTip(), "my label");
    QCOMPARE(table->item(0, 2)->text(), "n0");
    QCOMPARE(table->item(29, 2)->text(), "27");
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestStandardDLT645EditDialog::unknownEditionIsTheNewer()
{
    setGroups(m_item, {{"DLT645-1", {{"1", "DLT645_2030"}, {true, "label", "n"}}}});
    standardDLT645EditDialog form(m_item, m_workspace);
    auto *table = form.findChild<QTableWidget *>();
    QCOMPARE(list(form, "protocolVersionComboBox")->currentText(), "DLT645_2007");
    QCOMPARE(table->rowCount(), 44);
    QCOMPARE(table->item(0, 1)->text(), "label");
}

void TestStandardDLT645EditDialog::tabWithoutRowsKeepsItsSettings()
{
    m_item->setData(QVariant::fromValue(GroupMap{{"DLT645-1", {}}}), standardDatasRole);
    standardDLT645EditDialog form(m_item, m_workspace);
    QCOMPARE(edit(form, "slaveAddressEdit")->text(), "AAAAAAAAAAAA");
    QCOMPARE(list(form, "protocolVersionComboBox")->currentText(), "DLT645_2007");
    QCOMPARE(form.findChild<QTableWidget *>()->rowCount(), 44);
    form.loadTab("Modbus-1", {{QString(), "DLT645_1997"}});
    QCOMPARE(edit(form, "slaveAddressEdit")->text(), QString()); // as stored
    edit(form, "slaveAddressEdit")->setText("12");
    form.loadTab("Modbus-1", {});
    QCOMPARE(edit(form, "slaveAddressEdit")->text(), "12");
    QCOMPARE(form.findChild<QTableWidget *>()->rowCount(), 30);
}

void TestStandardDLT645EditDialog::tabWithoutOneOfItsInputsIsLeftOut_data()
{
    QTest::addColumn<QString>("input");
    QTest::newRow("address") << "slaveAddressEdit";
    QTest::newRow("edition") << "protocolVersionComboBox";
}

void TestStandardDLT645EditDialog::tabWithoutOneOfItsInputsIsLeftOut()
{
    QFETCH(QString, input);
    standardDLT645EditDialog form(m_item, m_workspace);
    RUN(show(form));
    form.addTab();
    form.addTab();
    const QStringList titles = tabsOf(form);
    delete form.findChild<QTabWidget *>()->widget(0)->findChild<QWidget *>(input);
    form.loadTab(titles.first(), {{"12", "DLT645_1997"}});
    form.saveChanges();
    QCOMPARE(groupsOf(m_item).keys(), titles.mid(1));
}

void TestStandardDLT645EditDialog::controlWClosesTheCurrentTab()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    form.addTab();
    RUN(show(form));
    QApplication::setActiveWindow(&form);
    QVERIFY(QTest::qWaitForWindowActive(&form));
    auto *bar = form.findChild<QTabWidget *>()->tabBar();
    bar->setFocus();
    QTest::keyClick(bar, Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(tabsOf(form), QStringList{"DLT645-1"});
    QTest::keyClick(bar, Qt::Key_W, Qt::ControlModifier);
    QTest::keyClick(bar, Qt::Key_W, Qt::ControlModifier);
    QCOMPARE(tabsOf(form), QStringList());
}

void TestStandardDLT645EditDialog::replaceItemSelectsOtherEntries()
{
    QStandardItem other("Other");
    setGroups(&other, {{"DLT645-1", {{"77", "DLT645_2007"}}}});
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    form.replaceItem(&other);
    QCOMPARE(form.nameEdit()->text(), "Other");
    QCOMPARE(list(form, "baudRate")->currentText(), "115200");
    QCOMPARE(list(form, "parityBit")->currentText(), "NONE");
    QCOMPARE(other.data(standardCommunicationTimeoutRole), QVariant("2000"));
    QCOMPARE(tabsOf(form), QStringList{"Modbus-1"});
    form.saveChanges();
    QCOMPARE(other.data(standardBaudRateRole), QVariant("115200"));
    QCOMPARE(m_item->data(standardBaudRateRole), QVariant());
}

void TestStandardDLT645EditDialog::slaveAddressTakesHexadecimalDigitsOnly()
{
    standardDLT645EditDialog form(m_item, m_workspace);
    form.addTab();
    QLineEdit *address = edit(form, "slaveAddressEdit");
    typeInto(address, "12xZaF0123456789AB");
    QCOMPARE(address->text(), "12aF01234567");
}

QTEST_MAIN(TestStandardDLT645EditDialog)
#include "tst_standarddlt645editdialog.moc"
