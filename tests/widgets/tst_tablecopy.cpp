#include "tablerow.h"
#include "widgets/tablecopy.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QHeaderView>
#include <QLineEdit>
#include <QListWidget>
#include <QTableWidget>
#include <QtTest>

// What "Copy" puts on the clipboard.
class TestTableCopy : public QObject
{
    Q_OBJECT
private slots:
    void init();

    void copiesARectangleAsTabSeparatedLines();
    void cellsThatAreNotSelectedStayEmpty();
    void hiddenRowsStayBehind();
    void columnsComeInTheOrderShown();
    void cellWidgetsGiveWhatTheyShow();
    void breaksAndTabsDoNotTearTheLines_data();
    void breaksAndTabsDoNotTearTheLines();
    void listsAreCopiedToo();
    void nothingSelectedIsAnEmptyText();
    void shortcutCopies();

private:
    void select(int row, int column) const { m_table->item(row, column)->setSelected(true); }

    std::unique_ptr<QTableWidget> m_table;
};

void TestTableCopy::init()
{
    m_table = std::make_unique<QTableWidget>(3, 3);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            m_table->setItem(row, column,
                             new QTableWidgetItem(QString("%1%2").arg(QChar('a' + row)).arg(column)));
        }
    }
}

void TestTableCopy::copiesARectangleAsTabSeparatedLines()
{
    m_table->selectAll();
    QCOMPARE(TableCopy::selectedText(m_table.get()), "a0\ta1\ta2\nb0\tb1\tb2\nc0\tc1\tc2");
}

void TestTableCopy::cellsThatAreNotSelectedStayEmpty()
{
    select(0, 1);
    select(2, 2);
    QCOMPARE(TableCopy::selectedText(m_table.get()), "a1\t\n\tc2");
}

void TestTableCopy::hiddenRowsStayBehind()
{
    m_table->selectAll();
    m_table->setRowHidden(1, true);
    QCOMPARE(TableCopy::selectedText(m_table.get()), "a0\ta1\ta2\nc0\tc1\tc2");
}

void TestTableCopy::columnsComeInTheOrderShown()
{
    m_table->horizontalHeader()->moveSection(2, 0);
    m_table->selectRow(1);
    QCOMPARE(TableCopy::selectedText(m_table.get()), "b2\tb0\tb1");
}

void TestTableCopy::cellWidgetsGiveWhatTheyShow()
{
    m_table->setCellWidget(0, 0, new QLineEdit("40001"));
    auto *list = new QComboBox;
    list->addItems({"bool", "float"});
    list->setCurrentIndex(1);
    m_table->setCellWidget(0, 1, list);
    auto *check = new QCheckBox;
    check->setChecked(true);
    m_table->setCellWidget(0, 2, check);
    m_table->selectRow(0);
    QCOMPARE(TableCopy::selectedText(m_table.get()), "40001\tfloat\ttrue");
}

void TestTableCopy::breaksAndTabsDoNotTearTheLines_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("copied");
    tableRow("line feed and tab", "one\ntwo\tthree", "one two three");
    tableRow("carriage return", "one\rtwo", "one two");
    tableRow("both are one line break", "one\r\ntwo", "one two");
    tableRow("two line breaks", "one\n\ntwo", "one  two");
    tableRow("separators of Unicode", "one\u2028two\u2029three", "one two three");
}

void TestTableCopy::breaksAndTabsDoNotTearTheLines()
{
    QFETCH(QString, text);
    QFETCH(QString, copied);
    m_table->item(0, 0)->setText(text);
    select(0, 0);
    select(0, 1);
    QCOMPARE(TableCopy::selectedText(m_table.get()), copied + "\ta1");
}

void TestTableCopy::listsAreCopiedToo()
{
    QListWidget list;
    list.addItems({"192.168.1.10\n255.255.255.0", "192.168.1.11"});
    list.setSelectionMode(QAbstractItemView::ExtendedSelection);
    list.selectAll();
    QCOMPARE(TableCopy::selectedText(&list), "192.168.1.10 255.255.255.0\n192.168.1.11");
}

void TestTableCopy::nothingSelectedIsAnEmptyText()
{
    QCOMPARE(TableCopy::selectedText(m_table.get()), QString());
}

void TestTableCopy::shortcutCopies()
{
    QCOMPARE(TableCopy::install(m_table.get())->shortcut(), QKeySequence(QKeySequence::Copy));
    m_table->show();
    QApplication::setActiveWindow(m_table.get());
    QVERIFY(QTest::qWaitForWindowActive(m_table.get()));
    m_table->setFocus();
    select(2, 0);
    QTest::keyClick(m_table.get(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QApplication::clipboard()->text(), "c0");
}

QTEST_MAIN(TestTableCopy)
#include "tst_tablecopy.moc"
