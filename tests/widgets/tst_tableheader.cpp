#include "widgets/tableheader.h"

#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableWidget>
#include <QtTest>

// What the headers of the tables have in common.
class TestTableHeader : public QObject
{
    Q_OBJECT
private slots:
    void greyHeaderHasDarkText();
    void titlesStandInToolTips();
    void titlesOfAModelStandInToolTips();
};

namespace {

const QStringList titles = {"Collection Formula", "Write Formula"};

} // namespace

void TestTableHeader::greyHeaderHasDarkText()
{
    QTableWidget table(0, titles.size());
    table.setHorizontalHeaderLabels(titles);
    TableHeader::makeGrey(&table);
    QCOMPARE(table.horizontalHeader()->styleSheet(), "QHeaderView::section { background-color: #DDDDDD; }");
    for (int column = 0; column < titles.size(); ++column) {
        // The brush, since the colour of none is black as well.
        QCOMPARE(table.horizontalHeaderItem(column)->foreground(), QBrush(Qt::black));
    }
}

void TestTableHeader::titlesStandInToolTips()
{
    QTableWidget table(0, titles.size());
    table.setHorizontalHeaderLabels(titles);
    TableHeader::explain(&table);
    for (int column = 0; column < titles.size(); ++column) {
        QCOMPARE(table.horizontalHeaderItem(column)->toolTip(), titles.at(column));
    }
    QCOMPARE(table.horizontalHeader()->textElideMode(), Qt::ElideRight);
}

void TestTableHeader::titlesOfAModelStandInToolTips()
{
    QStandardItemModel model(0, titles.size());
    model.setHorizontalHeaderLabels(titles);
    QTableView view;
    view.setModel(&model);
    TableHeader::explain(&view);
    for (int column = 0; column < titles.size(); ++column) {
        QCOMPARE(model.headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString(), titles.at(column));
    }
}

QTEST_MAIN(TestTableHeader)
#include "tst_tableheader.moc"
