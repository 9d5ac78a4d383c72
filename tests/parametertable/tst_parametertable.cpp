#include "parameterformtest.h"

#include <QPushButton>
#include <QWheelEvent>

// The parameter table in both variants, as a user meets it: its rows.
class TestParameterTable : public ParameterFormTest
{
    Q_OBJECT
private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

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
    void clickedDeleteButtonRemovesTheCurrentRow();
    void removeAllEmptiesTheTable();
    void wheelLeavesListsAlone();
    void fillingRaisesNoMessage();
    void twoThousandRowsAreHandledInOneGo();
    void rowsAreMadeUnseenAndInTheirPlace();
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
    QStringList shown;
    QList<int> shownWidths;
    for (int column = 0; column < m_table->columnCount(); ++column) {
        shown.append(m_table->horizontalHeaderItem(column)->text());
        shownWidths.append(m_table->columnWidth(column));
    }
    QCOMPARE(shown, headers);
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
    row.append(QString(QLatin1String("")));
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
        QComboBox *box = list(0, column);
        QWheelEvent wheel(QPointF(1, 1), QPointF(1, 1), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentIndex(), 0);
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

void TestParameterTable::rowsAreMadeUnseenAndInTheirPlace()
{
    // Each of these events comes once a cell if it comes at all, and some cost as much as there are cells.
    class Events : public QObject
    {
    public:
        using QObject::QObject;
        int styleChanges = 0;
        int lateMoves = 0;
        int lateUpdates = 0;
        bool filled = false;
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            // A widget under construction is not of its class yet and takes a change of style lightly.
            const bool cell = qobject_cast<QComboBox *>(watched) || qobject_cast<QPushButton *>(watched);
            styleChanges += cell && event->type() == QEvent::StyleChange;
            lateMoves += cell && filled && (event->type() == QEvent::Move || event->type() == QEvent::Resize);
            lateUpdates += cell && filled && event->type() == QEvent::UpdateLater;
            return false;
        }
    };
    make(ParameterVariant::modbus());
    m_form->setStyleSheet("QScrollArea { border: none; }");
    m_table->resize(600, 300);
    m_form->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_form));
    Events events;
    qApp->installEventFilter(&events);
    m_form->loadParameters({modbusRow("0", "a"), modbusRow("1", "b"), modbusRow("2", "c")});
    QVERIFY(m_table->viewport()->isVisible());
    QVERIFY(m_table->cellWidget(2, Type)->isVisible());
    events.filled = true;
    QCoreApplication::processEvents();
    m_table->doItemsLayout();
    qApp->removeEventFilter(&events);
    QCOMPARE(events.styleChanges, 0);
    QCOMPARE(events.lateMoves, 0);
    QCOMPARE(events.lateUpdates, 0);
    QCOMPARE(m_table->viewport()->findChildren<QPushButton *>().size(), 3);
}

QTEST_MAIN(TestParameterTable)
#include "tst_parametertable.moc"
