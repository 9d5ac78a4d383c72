#include "parameterformtest.h"

#include "barwatch.h"
#include "widgets/progress.h"

#include <QAccessible>
#include <QApplication>
#include <QProgressBar>
#include <QPushButton>
#include <QScrollBar>
#include <QTimer>
#include <QWheelEvent>

#include <algorithm>
#include <utility>

// The parameter table in both variants, as a user meets it: its rows.
class TestParameterTable : public ParameterFormTest
{
    Q_OBJECT
private slots:
    void columnsOfBothVariants_data();
    void columnsOfBothVariants();
    void untouchedAddedRowStoresItsDefaults();
    void loadedRowsComeBackAsTheyWere_data();
    void loadedRowsComeBackAsTheyWere();
    void unknownChoicesFallToTheFirstEntry();
    void storedMethodIsShownTranslated();
    void fieldUnderTheButtonStaysInTheRow();
    void shortAndLongRowsDoNoHarm();
    void deleteButtonRemovesTheCurrentRow();
    void addingKeepsTheCurrentRow();
    void clickedDeleteButtonRemovesTheCurrentRow();
    void removeAllEmptiesTheTable();
    void wheelLeavesListsAlone();
    void fillingRaisesNoMessage();
    void twoThousandRowsAreHandledInOneGo();
    void widgetsOutOfSightWait();
    void rowsThatMoveIntoSightAreShown();
    void tableOutOfSightWaits();
    void styleReachesWhatWaits();
    void focusedCellStaysWhenScrolledAway();
    void tabGoesOnBelowWhatIsInSight();
    void screenReadersFindWhatIsInSight();
    void formThatClosesWhileLoadingIsFilledFirst();

private:
    // A Modbus table that is high enough for eight rows and has 200.
    void makeManyRows()
    {
        setModelsChecked(false);
        make(ParameterVariant::modbus());
        RowList rows;
        for (int row = 0; row < 200; ++row) {
            rows.append(modbusRow(QString::number(row), QString("point %1").arg(row)));
        }
        m_table->setMaximumHeight(QWIDGETSIZE_MAX);
        m_table->setMinimumHeight(0);
        m_table->resize(600, 300);
        m_form->resize(600, 900);
        m_form->loadParameters(rows);
    }
    void showManyRows()
    {
        makeManyRows();
        m_form->show();
        QApplication::setActiveWindow(m_form);
        QVERIFY(QTest::qWaitForWindowActive(m_form));
    }
    // Of the widgets in a row, in the order of the columns.
    QVector<bool> shown(int row) const
    {
        return ofWidgets(row, [](const QWidget *widget) { return widget->isVisible(); });
    }
    QVector<bool> styled(int row) const
    {
        return ofWidgets(row,
                         [](const QWidget *widget) { return widget->testAttribute(Qt::WA_WState_Polished); });
    }
    template <typename Ask> QVector<bool> ofWidgets(int row, Ask ask) const
    {
        QVector<bool> answers;
        for (int column = Type; column <= modbusButton; ++column) {
            answers.append(ask(m_table->cellWidget(row, column)));
        }
        return answers;
    }
    const QVector<bool> all = QVector<bool>(4, true);
    const QVector<bool> none = QVector<bool>(4, false);
    static constexpr int modbusButton = 5; // of a Modbus table
};

void TestParameterTable::columnsOfBothVariants_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QStringList>("headers");
    QTest::addColumn<QList<int>>("widths");
    QTest::newRow("PLC") << false
                         << QStringList{"Address",
                                        "Name",
                                        "Type",
                                        "Length",
                                        "Permissions",
                                        "Reporting Method",
                                        "Change Amplitude",
                                        "Collection Formula",
                                        "Write Formula",
                                        "Deleat"}
                         << QList<int>{70, 70, 80, 70, 70, 120, 80, 100, 100, 35};
    QTest::newRow("Modbus") << true
                            << QStringList{"Address", "Name", "Type", "Length", "Permissions", "Deleat"}
                            << QList<int>{70, 70, 80, 70, 70, 35};
}

void TestParameterTable::columnsOfBothVariants()
{
    QFETCH(bool, modbus);
    QFETCH(QStringList, headers);
    QFETCH(QList<int>, widths);
    make(modbus ? ParameterVariant::modbus() : ParameterVariant::plc());
    QList<int> shownWidths;
    for (int column = 0; column < m_table->columnCount(); ++column) {
        shownWidths.append(m_table->columnWidth(column));
    }
    QCOMPARE(headersOf(m_table), headers);
    QCOMPARE(shownWidths, widths);
    QCOMPARE(m_table->styleSheet(), "QTableWidget { border: none; }");
    QCOMPARE(m_table->inputMethodHints(), Qt::InputMethodHints(Qt::ImhHiddenText));
    QCOMPARE(m_table->maximumHeight() == 600, modbus);
}

void TestParameterTable::untouchedAddedRowStoresItsDefaults()
{
    m_form->addParameter();
    QCOMPARE(m_table->rows(), RowList{QVariantList({"", "", "bool", "1", "r", "Timed", "", "", ""})});
    QVERIFY(!editor(0, Length)->isEnabled());
    QVERIFY(!editor(0, Amplitude)->isEnabled());
    auto *button = qobject_cast<QPushButton *>(m_table->cellWidget(0, Button));
    QCOMPARE(button->size(), QSize(35, 35));
}

void TestParameterTable::loadedRowsComeBackAsTheyWere_data()
{
    QTest::addColumn<bool>("modbus");
    QTest::addColumn<QList<QVariantList>>("rows");
    QTest::newRow("PLC") << false
                         << RowList{plcRow("D100", "a"), plcRow("", "", "Change"),
                                    plcRow("D2", "c", "Change amplitude", "0.5"),
                                    plcRow("D3", "d", "Change", "7")};
    QTest::newRow("Modbus") << true << RowList{modbusRow("0", "a"), modbusRow("", "")};
    QTest::newRow("none") << false << RowList();
}

void TestParameterTable::loadedRowsComeBackAsTheyWere()
{
    QFETCH(bool, modbus);
    QFETCH(QList<QVariantList>, rows);
    make(modbus ? ParameterVariant::modbus() : ParameterVariant::plc());
    m_form->loadParameters(rows);
    QCOMPARE(m_table->rows(), rows);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterTable::unknownChoicesFallToTheFirstEntry()
{
    m_form->loadParameters({{"1", "a", "INT16", "9", "w", "有时", "", "", ""}});
    QCOMPARE(m_table->rows(), RowList{QVariantList({"1", "a", "bool", "9", "r", "Timed", "", "", ""})});
}

void TestParameterTable::storedMethodIsShownTranslated()
{
    m_form->loadParameters({plcRow("1", "a", "Change amplitude", "3")});
    QCOMPARE(list(0, Method)->currentText(), ParameterVariant::plc().amplitudeMethod());
    QVERIFY(editor(0, Amplitude)->isEnabled());
}

void TestParameterTable::fieldUnderTheButtonStaysInTheRow()
{
    QVariantList row = plcRow("1", "a");
    row.append(QString(""));
    m_form->loadParameters({row});
    QCOMPARE(m_table->rows(), RowList{row});
    QVERIFY(qobject_cast<QPushButton *>(m_table->cellWidget(0, Button)));
}

void TestParameterTable::shortAndLongRowsDoNoHarm()
{
    QVariantList longRow = plcRow("1", "a");
    longRow << ""
            << ""
            << "x";
    m_form->loadParameters({{}, {"1"}, {"1", "a", "string"}, longRow});
    QCOMPARE(m_table->rowCount(), 4);
    QCOMPARE(m_table->rows().at(1), QVariantList({"1"}));
    list(2, Type)->setCurrentText("int8");
}

void TestParameterTable::deleteButtonRemovesTheCurrentRow()
{
    m_form->loadParameters({plcRow("1", "a"), plcRow("2", "b"), plcRow("3", "c")});
    auto *lastButton = qobject_cast<QPushButton *>(m_table->cellWidget(2, Button));
    m_table->setCurrentCell(-1, -1);
    lastButton->click();
    QCOMPARE(m_table->rowCount(), 3);
    m_table->setCurrentCell(0, 0);
    lastButton->click();
    QCOMPARE(m_table->rows(), (RowList{plcRow("2", "b"), plcRow("3", "c")}));
}

void TestParameterTable::addingKeepsTheCurrentRow()
{
    m_table->resize(900, 300);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowActive(m_form));
    m_form->startParameter();
    m_form->startParameter();
    QVERIFY(editor(1, Address)->hasFocus());
    QTest::mouseClick(m_table->cellWidget(0, Button), Qt::LeftButton);
    QCOMPARE(m_table->rowCount(), 2);
    editor(0, Name)->setText("first");
    m_table->setCurrentCell(0, Address);
    m_form->startParameter();
    QVERIFY(editor(2, Address)->hasFocus());
    QTest::mouseClick(m_table->cellWidget(2, Button), Qt::LeftButton);
    QCOMPARE(m_table->rowCount(), 2);
    QCOMPARE(m_table->text(0, Name), QString());
}

void TestParameterTable::clickedDeleteButtonRemovesTheCurrentRow()
{
    m_form->loadParameters({plcRow("1", "a"), plcRow("2", "b"), plcRow("3", "c")});
    m_table->resize(900, 300);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form));
    m_table->setFocus();
    m_table->setCurrentCell(0, Address);
    QTest::mouseClick(m_table->cellWidget(2, Button), Qt::LeftButton);
    QCOMPARE(m_table->rows(), (RowList{plcRow("2", "b"), plcRow("3", "c")}));
}

void TestParameterTable::removeAllEmptiesTheTable()
{
    m_form->loadParameters({plcRow("1", "a"), plcRow("2", "b")});
    m_form->removeAllParameters();
    QCOMPARE(m_table->rowCount(), 0);
    m_form->addParameter();
    QCOMPARE(m_table->rowCount(), 1);
}

void TestParameterTable::wheelLeavesListsAlone()
{
    m_form->addParameter();
    for (const int column : {int(Type), int(Permissions), int(Method)}) {
        QComboBox *choice = list(0, column);
        turnWheel(choice);
        QCOMPARE(choice->currentIndex(), 0);
    }
}

void TestParameterTable::fillingRaisesNoMessage()
{
    m_form->loadParameters(
        {plcRow("D 1", "a"), plcRow("D 1", "a"), plcRow("x y", "a", "Change amplitude", "no")});
    QCOMPARE(m_table->rowCount(), 3);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterTable::twoThousandRowsAreHandledInOneGo()
{
    setModelsChecked(false);
    make(ParameterVariant::modbus());
    RowList rows;
    for (int row = 0; row < 2000; ++row) {
        rows.append(modbusRow(QString::number(row), QString("point %1").arg(row)));
    }
    m_form->loadParameters(rows);
    QCoreApplication::processEvents();
    QCOMPARE(m_table->rows(), rows);
    QCOMPARE(m_workspace->messages, QStringList());
}

void TestParameterTable::widgetsOutOfSightWait()
{
    showManyRows();
    QCoreApplication::processEvents();
    QCOMPARE(shown(0), all);
    for (int row = 20; row < 200; ++row) {
        QCOMPARE(shown(row), none);
        QCOMPARE(styled(row), none);
        QCOMPARE(m_table->list(row, Type)->currentText(), "float");
        QCOMPARE(m_table->editor(row, Length)->text(), "1");
    }
    m_table->verticalScrollBar()->setValue(150);
    QCOMPARE(shown(150), all);
    QCOMPARE(styled(150), all);
    QVERIFY(m_table->viewport()->rect().contains(m_table->cellWidget(150, Type)->geometry()));
    QCOMPARE(m_table->cellWidget(150, Type)->geometry(),
             m_table->visualRect(m_table->model()->index(150, Type)));
    QCOMPARE(shown(0), none);
    m_table->verticalScrollBar()->setValue(0);
    QCOMPARE(shown(0), all);
    QCOMPARE(m_table->cellWidget(0, Type)->geometry(), m_table->visualRect(m_table->model()->index(0, Type)));
    QCOMPARE(shown(150), none);
}

void TestParameterTable::rowsThatMoveIntoSightAreShown()
{
    showManyRows();
    QWidget *list = m_table->cellWidget(100, Type);
    QVERIFY(!list->isVisible());
    m_table->model()->removeRows(1, 99); // not the current one, after which the table would scroll
    QCOMPARE(m_table->cellWidget(1, Type), list);
    QTRY_VERIFY(list->isVisible());
    QCOMPARE(list->geometry(), m_table->visualRect(m_table->model()->index(1, Type)));
    QCOMPARE(shown(15), none);
    m_table->resize(600, 900);
    QTRY_COMPARE(shown(15), all);
    m_table->resize(600, 300);
    QTRY_COMPARE(shown(15), none);
    const int last = m_table->rowCount();
    m_form->addParameter();
    QCOMPARE(m_table->list(last, Type)->isVisible(), false);
    m_table->scrollToBottom();
    QVERIFY(m_table->list(last, Type)->isVisible());
}

void TestParameterTable::tableOutOfSightWaits()
{
    makeManyRows();
    m_table->hide(); // as a tab behind another one
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form));
    QCoreApplication::processEvents();
    QCOMPARE(styled(0), none);
    m_table->show();
    QCOMPARE(shown(0), all);
    QCOMPARE(styled(0), all);
    QCOMPARE(styled(100), none);
    m_table->hide();
    m_form->addParameter();
    m_table->show();
    QCOMPARE(shown(0), all);
}

void TestParameterTable::styleReachesWhatWaits()
{
    showManyRows();
    m_table->verticalScrollBar()->setValue(100);
    m_table->verticalScrollBar()->setValue(0);
    m_form->setStyleSheet("QComboBox { font-size: 23px; }");
    for (const int row : {0, 100, 150}) { // in sight, scrolled away, never in sight
        m_table->verticalScrollBar()->setValue(row);
        QTRY_COMPARE(m_table->list(row, Type)->fontInfo().pixelSize(), 23);
    }
}

void TestParameterTable::focusedCellStaysWhenScrolledAway()
{
    showManyRows();
    QLineEdit *length = editor(0, Length);
    length->setEnabled(true);
    length->setFocus();
    m_table->verticalScrollBar()->setValue(150);
    QVERIFY(length->hasFocus());
    QTest::keyClick(length, Qt::Key_7);
    QCOMPARE(length->text(), "17");
    QVERIFY(!m_table->viewport()->rect().intersects(length->geometry()));
}

void TestParameterTable::tabGoesOnBelowWhatIsInSight()
{
    showManyRows();
    m_table->cellWidget(0, modbusButton)->setFocus();
    for (int row = 1; row < 40; ++row) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        QCOMPARE(QApplication::focusWidget(), m_table->cellWidget(row, Type));
        QVERIFY(m_table->cellWidget(row, Type)->isVisible());
        m_table->cellWidget(row, modbusButton)->setFocus();
    }
    m_table->cellWidget(39, Type)->setFocus();
    for (int row = 38; row > 0; --row) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab);
        QCOMPARE(QApplication::focusWidget(), m_table->cellWidget(row, modbusButton));
        m_table->cellWidget(row, Type)->setFocus();
    }
}

void TestParameterTable::screenReadersFindWhatIsInSight()
{
    showManyRows();
    m_table->verticalScrollBar()->setValue(150);
    const QAccessibleInterface *list = QAccessible::queryAccessibleInterface(m_table->list(150, Type));
    QVERIFY(!list->state().invisible);
    QCOMPARE(list->text(QAccessible::Value), "float");
    QVERIFY(
        m_table->viewport()->rect().translated(m_table->viewport()->mapToGlobal({})).contains(list->rect()));
    QAccessibleInterface *table = QAccessible::queryAccessibleInterface(m_table);
    QCOMPARE(table->tableInterface()->rowCount(), 200);
    QCOMPARE(table->tableInterface()->cellAt(150, Name)->text(QAccessible::Name), "point 150");
}

void TestParameterTable::formThatClosesWhileLoadingIsFilledFirst()
{
    showManyRows();
    const int delay = std::exchange(Progress::delay, 0);
    const QPointer<ParameterForm> form(m_form);
    QTimer::singleShot(0, m_form, [this] { delete std::exchange(m_form, nullptr); });
    const BarWatch bars;
    m_form->loadParameters(QVector<QVariantList>(2000, modbusRow("1", "a")).toList());
    Progress::delay = delay;
    QVERIFY(form);
    QCOMPARE(m_table->rowCount(), 2000);
    const QVector<int> values = bars.values();
    QVERIFY(!values.isEmpty());
    QVERIFY(std::is_sorted(values.cbegin(), values.cend()));
    QVERIFY(!m_form->findChild<QProgressBar *>());
    QTRY_VERIFY(!form);
}

QTEST_MAIN(TestParameterTable)
#include "tst_parametertable.moc"
