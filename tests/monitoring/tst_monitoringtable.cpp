#include "monitoring/monitoringtable.h"
#include "monitoringtest.h"

#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

// What a table of live values shows, and what of it stays from report to report.
class TestMonitoringTable : public MonitoringTest
{
    Q_OBJECT
private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void secondReportShowsTheTable();
    void looksAsDesigned();
    void headersAreReadableOnADarkDesktop();
    void showsValidityInWords_data();
    void showsValidityInWords();
    void numberAsValueShowsAsEmptyCell();
    void sameNameTwiceIsOneRow();
    void missingPointsLeaveTheTable();
    void scatteredPointsLeaveTheOthersAsTheyWere();
    void widthsAreThoseOfTheFirstReportAndTheUser();
    void newPointsComeAtTheEndUntilTheUserSorts();
    void emptyReportEmptiesTheTable();
    void ownTimeOfTheRowsIfNoneIsGiven();
    void rowsStayTogetherWhileSorted_data();
    void rowsStayTogetherWhileSorted();
    void numbersSortAsNumbers_data();
    void numbersSortAsNumbers();
    void foreignCellsAreTakenOver();
    void sortOrderSurvivesEachReport();
    void scrollPositionSurvivesEachReport();
    void selectionFollowsThePoint();
    void currentPointThatGoesIsFollowedByItsNeighbour_data();
    void currentPointThatGoesIsFollowedByItsNeighbour();
    void updatesTheCellsThatAreThere();
    void takesTenThousandPoints();
};

void TestMonitoringTable::secondReportShowsTheTable()
{
    receive({point("Ua", "1")});
    receive({point("Ua", "230.1"), point("Ub", "230.4", "0")});
    QCOMPARE(m_tabs->count(), 1);
    QCOMPARE(m_tabs->tabText(0), "Meter 1");
    QVERIFY(qobject_cast<QVBoxLayout *>(m_tabs->widget(0)->layout()));
    QCOMPARE(rowsOf(table()), QStringList({"Ua|@Ua|float|230.1|Effective", "Ub|@Ub|float|230.4|Invalid"}));
    for (const QString &time : column(table(), 5)) {
        QVERIFY2(timePattern.match(time).hasMatch(), qPrintable(time));
        QVERIFY(!time.startsWith(QLatin1String("1999"))); // when it came, not what the Box's clock said
    }
}

void TestMonitoringTable::looksAsDesigned()
{
    QTableWidget *shown = showPoints({point("Ua", "1")});
    QVERIFY(!m_tabs->tabsClosable());
    QVERIFY(shown->isSortingEnabled());
    QStringList headers;
    for (int i = 0; i < shown->columnCount(); ++i) {
        headers.append(shown->horizontalHeaderItem(i)->text());
    }
    QCOMPARE(headers, QStringList({"Name", "Addr", "DataType", "Value", "Valid", "Update Time"}));
    QCOMPARE(shown->horizontalHeader()->styleSheet(), "QHeaderView::section { background-color: #DDDDDD; }");
    QCOMPARE(shown->columnWidth(5), 180);
    QCOMPARE(m_tabs->styleSheet(),
             "QTabBar::tab { font-size: 16px; color: black; background-color: #e0e0e0; border-radius: "
             "5px; min-width: 80px; height: 20px; padding: 5px 10px; } QTabBar::tab:selected { "
             "background-color: #1296db; color: white; } QTabBar::tab:hover { background-color: "
             "#7dc5eb; }");

    // A name as long as they get is readable from the start; then the width is the user's.
    const QString name = "Combined active total electrical energy of tariff 1";
    const QTableWidget *wide = showPoints({point(name, "1")}, "Meter 2");
    QVERIFY(wide->columnWidth(0) > wide->fontMetrics().horizontalAdvance(name));
    shown->setColumnWidth(0, 234);

    // Each report says so anew.
    m_tabs->setTabsClosable(true);
    m_tabs->setStyleSheet(QString());
    shown->horizontalHeader()->setStyleSheet(QString());
    shown->setColumnWidth(5, 40);
    receive({});
    QVERIFY(!m_tabs->tabsClosable());
    QVERIFY(!m_tabs->styleSheet().isEmpty());
    QVERIFY(!shown->horizontalHeader()->styleSheet().isEmpty());
    QCOMPARE(shown->columnWidth(5), 180);
    QCOMPARE(shown->columnWidth(0), 234);
}

void TestMonitoringTable::headersAreReadableOnADarkDesktop()
{
    const QPalette before = QApplication::palette();
    QPalette dark(QColor(0x30, 0x30, 0x30)); // with white texts
    QCOMPARE(dark.color(QPalette::ButtonText), QColor(Qt::white));
    QApplication::setPalette(dark);
    m_tabs->resize(900, 300);
    m_tabs->show();
    QTableWidget *shown = showPoints({point("Ua", "1")});
    const QHeaderView *header = shown->horizontalHeader();
    const int width = header->sectionSize(0);
    const QImage image =
        shown->horizontalHeader()->grab().toImage().copy(4, 4, width - 8, header->height() - 8);
    QApplication::setPalette(before);
    int darkest = 255;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            darkest = qMin(darkest, qGray(image.pixel(x, y)));
        }
    }
    QVERIFY2(darkest < 0x50, qPrintable(QString::number(darkest)));
}

void TestMonitoringTable::showsValidityInWords_data()
{
    QTest::addColumn<QJsonValue>("valid");
    QTest::addColumn<QString>("shown");
    QTest::newRow("valid") << QJsonValue("1") << "Effective";
    QTest::newRow("invalid") << QJsonValue("0") << "Invalid";
    QTest::newRow("another text") << QJsonValue("2") << "Unknown";
    QTest::newRow("the word Invalid") << QJsonValue("Invalid") << "Unknown";
    QTest::newRow("empty") << QJsonValue(QString()) << "Unknown";
    QTest::newRow("a number") << QJsonValue(1) << "Unknown";
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << "Unknown";
}

void TestMonitoringTable::showsValidityInWords()
{
    QFETCH(QJsonValue, valid);
    QFETCH(QString, shown);
    QJsonObject data = point("Ua", "1");
    data.insert("valid", valid); // an undefined value removes the key
    QCOMPARE(column(showPoints({data}), 4), QStringList(shown));
}

void TestMonitoringTable::numberAsValueShowsAsEmptyCell()
{
    QJsonObject data = point("Ua", QString());
    data.insert("value", 230.1);
    QCOMPARE(rowsOf(showPoints({data})), QStringList("Ua|@Ua|float||Effective"));
}

void TestMonitoringTable::sameNameTwiceIsOneRow()
{
    const QJsonArray datas{point("Ua", "1"), point("Ub", "2"), point("Ua", "3", "0")};
    const QStringList expected{"Ua|@Ua|float|3|Invalid", "Ub|@Ub|float|2|Effective"};
    QTableWidget *shown = showPoints(datas);
    QCOMPARE(rowsOf(shown), expected);
    receive(datas);
    QCOMPARE(rowsOf(shown), expected);
    QCOMPARE(dataFolder()->child(0)->data(dataRowsRole).toList().size(), 3);
}

void TestMonitoringTable::missingPointsLeaveTheTable()
{
    QTableWidget *shown =
        showPoints({point("a", "1"), point("b", "2"), point("c", "3"), point("d", "4"), point("e", "5")});
    receive({point("d", "6"), point("b", "7")});
    QCOMPARE(rowsOf(shown), QStringList({"b|@b|float|7|Effective", "d|@d|float|6|Effective"}));
}

void TestMonitoringTable::scatteredPointsLeaveTheOthersAsTheyWere()
{
    const auto points = [](int step) {
        QJsonArray datas;
        for (int i = 0; i < 100; i += step) {
            datas.prepend(point(QString("point %1").arg(i), QString::number(i)));
        }
        return datas;
    };
    QTableWidget *shown = showPoints(points(1)); // not sorted: from 99 down
    shown->setCurrentCell(39, 1);                // the address of point 60
    shown->item(59, 2)->setSelected(true);       // the type of point 40
    QSignalSpy removed(shown->model(), &QAbstractItemModel::rowsRemoved);
    receive(points(4));
    QCOMPARE(removed.count(), 1); // at once, however many gaps there are
    QStringList expected;
    for (int i = 96; i >= 0; i -= 4) {
        expected.append(QString("point %1|@point %1|float|%1|Effective").arg(i));
    }
    QCOMPARE(rowsOf(shown), expected);
    QCOMPARE(shown->currentItem()->text(), "@point 60");
    QStringList selected;
    for (const QTableWidgetItem *item : shown->selectedItems()) {
        selected.append(QString("%1 %2").arg(item->row()).arg(item->column()));
    }
    selected.sort();
    QCOMPARE(selected, QStringList({"14 2", "9 1"}));
}

void TestMonitoringTable::widthsAreThoseOfTheFirstReportAndTheUser()
{
    const QJsonArray datas{point("a name as long as those of large plants", QString())};
    QTableWidget *shown = showPoints(datas);
    QVERIFY(shown->columnWidth(0) >= shown->fontMetrics().horizontalAdvance(shown->item(0, 0)->text()));
    QCOMPARE(shown->columnWidth(5), 180);
    shown->setColumnWidth(0, 50);
    shown->setColumnWidth(5, 50);
    receive(datas);
    QCOMPARE(shown->columnWidth(0), 50);
    QCOMPARE(shown->columnWidth(5), 180);
}

void TestMonitoringTable::newPointsComeAtTheEndUntilTheUserSorts()
{
    QTableWidget *shown = showPoints({point("c", "1"), point("a", "2")});
    receive({point("b", "3"), point("a", "2"), point("c", "1")});
    QCOMPARE(column(shown, 0), QStringList({"c", "a", "b"}));
}

void TestMonitoringTable::emptyReportEmptiesTheTable()
{
    QTableWidget *shown = showPoints({point("a", "1"), point("b", "2")});
    receive({});
    QCOMPARE(shown->rowCount(), 0);
    QCOMPARE(m_tabs->count(), 1);
    receive({point("b", "3")});
    QCOMPARE(rowsOf(shown), QStringList("b|@b|float|3|Effective"));
}

void TestMonitoringTable::ownTimeOfTheRowsIfNoneIsGiven()
{
    QStandardItem node;
    const QVariantMap row{{"name", "Ua"}, {"updateTime", "2024-05-06 07:08:09"}};
    node.setData(QVariantList{row}, dataRowsRole);
    m_view->showData(&node, QString(), "Meter 1");
    QCOMPARE(column(table(), 5), QStringList("2024-05-06 07:08:09"));
    m_view->showData(&node, "2025-01-02 03:04:05", "Meter 1");
    QCOMPARE(column(table(), 5), QStringList("2025-01-02 03:04:05"));
}

void TestMonitoringTable::rowsStayTogetherWhileSorted_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<Qt::SortOrder>("order");
    for (int section = 0; section < 6; ++section) {
        QTest::addRow("column %d up", section) << section << Qt::AscendingOrder;
        QTest::addRow("column %d down", section) << section << Qt::DescendingOrder;
    }
}

void TestMonitoringTable::rowsStayTogetherWhileSorted()
{
    QFETCH(int, section);
    QFETCH(Qt::SortOrder, order);
    // Every value changes its place from report to report, points come and go.
    const auto points = [](int round) {
        QJsonArray datas;
        for (int i = 0; i < 40; ++i) {
            if ((i + round) % 7 != 0) {
                const int shuffled = (i * 17 + round * 11) % 41;
                datas.append(QJsonObject{{"name", QString("p%1").arg(i, 2, 10, QLatin1Char('0'))},
                                         {"addr", QString("a%1").arg((shuffled + 5) % 41)},
                                         {"dataType", shuffled % 2 ? QString("int16") : "bool"},
                                         {"value", QString::number(shuffled)},
                                         {"valid", QString::number(shuffled % 3)}});
            }
        }
        return datas;
    };
    const QStringList validity{"Invalid", "Effective", "Unknown"};
    QTableWidget *shown = showPoints(points(0));
    shown->sortByColumn(section, order);
    for (int round = 1; round < 8; ++round) {
        receive(points(round));
        QStringList expected;
        for (const QJsonValue &value : points(round)) {
            const QJsonObject data = value.toObject();
            expected.append(QStringList({data.value("name").toString(), data.value("addr").toString(),
                                         data.value("dataType").toString(), data.value("value").toString(),
                                         validity.at(data.value("valid").toString().toInt())})
                                .join(QLatin1Char('|')));
        }
        QStringList rows = rowsOf(shown);
        std::sort(rows.begin(), rows.end());
        std::sort(expected.begin(), expected.end());
        QCOMPARE(rows, expected);

        QStringList keys = column(shown, section);
        if (section == MonitoringTable::Value) { // sorts as numbers
            for (QString &key : keys) {
                key = key.rightJustified(9);
            }
        }
        QVERIFY(order == Qt::AscendingOrder ? std::is_sorted(keys.begin(), keys.end())
                                            : std::is_sorted(keys.rbegin(), keys.rend()));
    }
}

void TestMonitoringTable::numbersSortAsNumbers_data()
{
    QTest::addColumn<QStringList>("sorted");
    QTest::newRow("10 after 9") << QStringList{"-10", "-9.5", "0", "1", "9", "10", "40001", "1e6"};
    QTest::newRow("texts behind numbers") << QStringList{"2", "10", "", "0x10", "M10", "M9", "nan", "on"};
    QTest::newRow("one number, two texts") << QStringList{"1", "1.0", "1.00", "2"};
}

void TestMonitoringTable::numbersSortAsNumbers()
{
    QFETCH(QStringList, sorted);
    QJsonArray datas;
    for (int i = 0; i < sorted.size(); ++i) {
        const int mixed = i * 3 % sorted.size(); // 3 shares no divisor with the sizes
        datas.append(QJsonObject{{"name", QString("p%1").arg(i)},
                                 {"addr", sorted.at(mixed)},
                                 {"dataType", "float"},
                                 {"value", sorted.at(mixed)},
                                 {"valid", "1"}});
    }
    QTableWidget *shown = showPoints(datas);
    for (const int section : {1, 3}) {
        shown->sortByColumn(section, Qt::AscendingOrder);
        QCOMPARE(column(shown, section), sorted);
        shown->sortByColumn(section, Qt::DescendingOrder);
        QStringList reversed = sorted;
        std::reverse(reversed.begin(), reversed.end());
        QCOMPARE(column(shown, section), reversed);
    }
}

// Cells that another hand made become such that sort and are marked as all do.
void TestMonitoringTable::foreignCellsAreTakenOver()
{
    QTableWidget table(3, 6);
    table.horizontalHeader()->setSortIndicator(-1, Qt::AscendingOrder);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 6; ++column) {
            table.setItem(row, column, new QTableWidgetItem(column == 0 ? QString("p%1").arg(row) : "old"));
        }
    }
    QVariantList rows;
    for (const int value : {10, 9}) {
        rows.append(
            QVariantMap{{"name", QString("p%1").arg(rows.size())}, {"value", QString::number(value)}});
    }
    MonitoringTable::update(&table, rows, "now");
    QCOMPARE(column(&table, 0), QStringList({"p0", "p1"}));
    table.sortByColumn(3, Qt::AscendingOrder);
    QCOMPARE(column(&table, 3), QStringList({"9", "10"}));
    MonitoringTable::unsort(&table);
    QCOMPARE(column(&table, 3), QStringList({"10", "9"}));
}

void TestMonitoringTable::sortOrderSurvivesEachReport()
{
    QTableWidget *shown = showPoints({point("a", "1"), point("b", "2"), point("c", "3")});
    shown->sortByColumn(3, Qt::DescendingOrder);
    QCOMPARE(column(shown, 0), QStringList({"c", "b", "a"}));
    receive({point("a", "9"), point("b", "2"), point("c", "3")});
    QCOMPARE(column(shown, 0), QStringList({"a", "c", "b"}));
    QCOMPARE(shown->horizontalHeader()->sortIndicatorSection(), 3);
    QCOMPARE(shown->horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    QVERIFY(shown->horizontalHeader()->isSortIndicatorShown());
    QVERIFY(shown->isSortingEnabled());
}

void TestMonitoringTable::scrollPositionSurvivesEachReport()
{
    const auto points = [](int count, int round) {
        QJsonArray datas;
        for (int i = 0; i < count; ++i) {
            datas.append(point(QString("point %1").arg(i), QString::number((i * 31 + round) % 97)));
        }
        return datas;
    };
    m_tabs->resize(400, 300);
    m_tabs->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_tabs.data()));
    QTableWidget *shown = showPoints(points(200, 0));
    QTRY_VERIFY(shown->verticalScrollBar()->maximum() > 100);
    QTRY_VERIFY(shown->horizontalScrollBar()->maximum() > 1);
    for (const auto mode : {QAbstractItemView::ScrollPerItem, QAbstractItemView::ScrollPerPixel}) {
        shown->setVerticalScrollMode(mode);
        shown->setHorizontalScrollMode(mode);
        shown->sortByColumn(3, Qt::AscendingOrder);
        shown->verticalScrollBar()->setValue(77);
        const int horizontal = mode == QAbstractItemView::ScrollPerItem ? 2 : 33;
        shown->horizontalScrollBar()->setValue(horizontal);
        for (int round = 1; round < 5; ++round) {
            receive(points(200 + round * 5 * (round % 2 ? 1 : -1), round)); // points come and go
            QCOMPARE(shown->verticalScrollBar()->value(), 77);
            QCOMPARE(shown->horizontalScrollBar()->value(), horizontal);
            QCoreApplication::processEvents(); // the view may lay out later
            QCOMPARE(shown->verticalScrollBar()->value(), 77);
            QCOMPARE(shown->horizontalScrollBar()->value(), horizontal);
        }
    }
    // At the very end it stays there too, though rows came.
    shown->verticalScrollBar()->setValue(shown->verticalScrollBar()->maximum());
    const int end = shown->verticalScrollBar()->value();
    receive(points(300, 9));
    QCoreApplication::processEvents();
    QCOMPARE(shown->verticalScrollBar()->value(), end);
}

void TestMonitoringTable::selectionFollowsThePoint()
{
    QTableWidget *shown = showPoints({point("a", "1"), point("b", "2"), point("c", "3")});
    shown->sortByColumn(3, Qt::AscendingOrder);
    shown->setCurrentCell(1, 3); // the value of b
    receive({point("a", "5"), point("b", "9"), point("d", "0")});
    QCOMPARE(column(shown, 0), QStringList({"d", "a", "b"}));
    QCOMPARE(shown->currentRow(), 2);
    QCOMPARE(shown->currentColumn(), 3);
    QCOMPARE(shown->selectedItems().size(), 1);
    QCOMPARE(shown->selectedItems().first()->text(), "9");
}

void TestMonitoringTable::currentPointThatGoesIsFollowedByItsNeighbour_data()
{
    QTest::addColumn<int>("first"); // of those that go
    QTest::addColumn<QString>("next");
    QTest::newRow("the one below") << 120 << "@point 130";
    QTest::newRow("the one above at the end") << 190 << "@point 189";
}

void TestMonitoringTable::currentPointThatGoesIsFollowedByItsNeighbour()
{
    QFETCH(int, first);
    QFETCH(QString, next);
    const auto points = [](int from, int to) {
        QJsonArray datas;
        for (int i = 0; i < 200; ++i) {
            if (i < from || i >= to) {
                datas.append(point(QString("point %1").arg(i), QString::number(i)));
            }
        }
        return datas;
    };
    m_tabs->resize(400, 300);
    m_tabs->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_tabs.data()));
    QTableWidget *shown = showPoints(points(0, 0));
    shown->setCurrentCell(first, 1);
    QTRY_VERIFY(shown->horizontalScrollBar()->maximum() > 1);
    shown->verticalScrollBar()->setValue(33);
    shown->horizontalScrollBar()->setValue(2);
    receive(points(first, first + 10));
    QCOMPARE(shown->currentItem()->text(), next);
    // The user did not ask to see it.
    QCOMPARE(shown->verticalScrollBar()->value(), 33);
    QCOMPARE(shown->horizontalScrollBar()->value(), 2);
    receive({});
    QVERIFY(!shown->currentItem());
}

void TestMonitoringTable::updatesTheCellsThatAreThere()
{
    QTableWidget *shown = showPoints({point("a", "1")});
    const QTableWidgetItem *value = shown->item(0, 3);
    const QTableWidgetItem *valid = shown->item(0, 4);
    QSignalSpy changed(shown->model(), &QAbstractItemModel::dataChanged);
    receive({point("a", "2", "0"), point("b", "3")});
    QCOMPARE(shown->item(0, 3), value);
    QCOMPARE(value->text(), "2");
    QCOMPARE(shown->item(0, 4), valid);
    QCOMPARE(valid->text(), "Invalid");
    QCOMPARE(changed.count(), 1); // told once a report, whatever the number of points
    receive({point("b", "3")});
    QCOMPARE(rowsOf(shown), QStringList("b|@b|float|3|Effective"));
}

void TestMonitoringTable::takesTenThousandPoints()
{
    const int count = 10000;
    const auto points = [](int first, int round) {
        QJsonArray datas;
        for (int i = first; i < count; ++i) {
            datas.append(point(QString("point %1").arg(i), QString::number(i * 31 % 9973 + round)));
        }
        return datas;
    };
    receive(points(0, 0)); // not by showPoints(): who watches the model looks at every cell, often
    receive(points(0, 0));
    QTableWidget *shown = table();
    QCOMPARE(shown->rowCount(), count);
    shown->sortByColumn(3, Qt::AscendingOrder);
    receive(points(0, 7));
    QCOMPARE(shown->rowCount(), count);
    for (int row = 0; row < count; ++row) {
        const int i = shown->item(row, 0)->text().midRef(6).toInt();
        QCOMPARE(shown->item(row, 1)->text(), QString("@point %1").arg(i));
        QCOMPARE(shown->item(row, 3)->text(), QString::number(i * 31 % 9973 + 7));
    }
    receive(points(count / 2, 1));
    QCOMPARE(shown->rowCount(), count / 2);
    receive({});
    QCOMPARE(shown->rowCount(), 0);
}

QTEST_MAIN(TestMonitoringTable)
#include "tst_monitoringtable.moc"
