#include "mainwindow/monitoringview.h"
#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QAbstractItemModelTester>
#include <QHeaderView>
#include <QJsonObject>
#include <QPointer>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QTabBar>
#include <QTabWidget>
#include <QTableWidget>
#include <QTranslator>
#include <QTreeView>
#include <QVBoxLayout>
#include <QtTest>

#include <algorithm>

namespace {

// A point as a Box sends it: all five values are texts.
QJsonObject point(const QString &name, const QString &value, const QString &valid = QStringLiteral("1"))
{
    return {{QStringLiteral("name"), name},
            {QStringLiteral("addr"), QStringLiteral("@") + name},
            {QStringLiteral("dataType"), QStringLiteral("float")},
            {QStringLiteral("value"), value},
            {QStringLiteral("valid"), valid}};
}

Protocol::dataMonitoringData report(const QString &project, const QString &plc, const QJsonArray &datas)
{
    Protocol::dataMonitoringData data;
    data.projectName = project;
    data.plcName = plc;
    data.time = QStringLiteral("1999-12-31 23:59:59");
    data.datas = datas;
    return data;
}

// The cells of a table, a text a row with the cells between bars; without the time.
QStringList rowsOf(const QTableWidget *table)
{
    QStringList rows;
    for (int row = 0; row < table->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < 5; ++column) {
            const QTableWidgetItem *item = table->item(row, column);
            cells.append(item ? item->text() : QStringLiteral("(no cell)"));
        }
        rows.append(cells.join(QLatin1Char('|')));
    }
    return rows;
}

QStringList column(const QTableWidget *table, int column)
{
    QStringList texts;
    for (int row = 0; row < table->rowCount(); ++row) {
        texts.append(table->item(row, column)->text());
    }
    return texts;
}

// A catalogue of this test's own, with a word in front of each text of the main window.
class MarkingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "CMainWindow") == 0 ? QStringLiteral("zh ") + QLatin1String(source)
                                                    : QString();
    }
};

const QRegularExpression timePattern(QStringLiteral("^\\d{4}-\\d\\d-\\d\\d \\d\\d:\\d\\d:\\d\\d$"));

} // namespace

class TestMonitoringView : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup();

    void dropsAReportOfAProjectThatIsNotOpen();
    void firstProjectOfANameWins();
    void firstReportMakesTheNodeAndNoTab();
    void makesADataFolderWhereNoneIs();
    void nodeComesWithItsValues();
    void keepsTheRowsInTheNode();
    void skipsWhatIsNotAnObject();
    void keepsTwoPlcsApart();
    void samePlcNameInTwoProjectsSharesATab();
    void expandsTheTreeWithEachReport();

    void secondReportShowsTheTable();
    void looksAsDesigned();
    void longNamesFitTheirTabs();
    void headersAreReadableOnADarkDesktop();
    void showsValidityInWords_data();
    void showsValidityInWords();
    void numberAsValueShowsAsEmptyCell();
    void sameNameTwiceIsOneRow();
    void missingPointsLeaveTheTable();
    void newPointsComeAtTheEndUntilTheUserSorts();
    void emptyReportEmptiesTheTable();
    void ownTimeOfTheRowsIfNoneIsGiven();

    void rowsStayTogetherWhileSorted_data();
    void rowsStayTogetherWhileSorted();
    void sortOrderSurvivesEachReport();
    void scrollPositionSurvivesEachReport();
    void selectionFollowsThePoint();
    void updatesTheCellsThatAreThere();
    void takesTenThousandPoints();

    void closedTabComesBackWithAPageOfItsOwn();
    void clickedNodeBringsItsTabToTheFront();
    void pageWithoutATableIsLeftAlone();
    void withoutTabsOrTreeOnlyTheValuesAreKept();
    void followsTheLanguage();

private:
    QStandardItem *addProject(const QString &name);
    void receive(const QJsonArray &datas, const QString &plc = QStringLiteral("Meter 1"));
    // Two reports: the first makes the node only.
    QTableWidget *showPoints(const QJsonArray &datas, const QString &plc = QStringLiteral("Meter 1"));
    QStandardItem *dataFolder() const;
    int tabNamed(const QString &name) const;
    QTableWidget *table(const QString &plc = QStringLiteral("Meter 1")) const;

    QScopedPointer<QStandardItemModel> m_model;
    QScopedPointer<QTreeView> m_tree;
    QScopedPointer<QTabWidget> m_tabs;
    QScopedPointer<MonitoringView> m_view;
};

void TestMonitoringView::init()
{
    m_model.reset(new QStandardItemModel);
    m_tree.reset(new QTreeView);
    m_tree->setModel(m_model.data());
    m_tabs.reset(new QTabWidget);
    m_tabs->setTabsClosable(true);
    m_view.reset(new MonitoringView(m_tabs.data(), m_model.data(), m_tree.data()));
    addProject(QStringLiteral("Riverside"));
}

void TestMonitoringView::cleanup()
{
    m_view.reset();
    m_tabs.reset();
    m_tree.reset();
    m_model.reset();
}

QStandardItem *TestMonitoringView::addProject(const QString &name)
{
    QStandardItem *project = ProjectTree::makeProject(name, QString(), QString());
    ProjectTree::appendMissingFolders(project);
    m_model->appendRow(project);
    return project;
}

void TestMonitoringView::receive(const QJsonArray &datas, const QString &plc)
{
    m_view->receive(report(QStringLiteral("Riverside"), plc, datas));
}

QTableWidget *TestMonitoringView::showPoints(const QJsonArray &datas, const QString &plc)
{
    receive(datas, plc);
    receive(datas, plc);
    return table(plc);
}

QStandardItem *TestMonitoringView::dataFolder() const
{
    return ProjectTree::childNamed(m_model->item(0), ProjectTree::dataFolder);
}

int TestMonitoringView::tabNamed(const QString &name) const
{
    for (int tab = 0; tab < m_tabs->count(); ++tab) {
        if (m_tabs->tabText(tab) == name) {
            return tab;
        }
    }
    return -1;
}

QTableWidget *TestMonitoringView::table(const QString &plc) const
{
    const int tab = tabNamed(plc);
    return tab >= 0 ? m_tabs->widget(tab)->findChild<QTableWidget *>() : nullptr;
}

void TestMonitoringView::dropsAReportOfAProjectThatIsNotOpen()
{
    const auto data = report(QStringLiteral("Hillside"), QStringLiteral("Meter 1"),
                             {point(QStringLiteral("Ua"), QStringLiteral("230.1"))});
    QTest::ignoreMessage(QtDebugMsg, "Main: Hillside");
    m_view->receive(data);
    QTest::ignoreMessage(QtDebugMsg, "Main: Hillside");
    m_view->receive(data);
    QCOMPARE(m_model->rowCount(), 1);
    QCOMPARE(dataFolder()->rowCount(), 0);
    QCOMPARE(m_tabs->count(), 0);
}

void TestMonitoringView::firstProjectOfANameWins()
{
    QStandardItem *twin = addProject(QStringLiteral("Riverside"));
    showPoints({point(QStringLiteral("Ua"), QStringLiteral("230.1"))});
    QCOMPARE(dataFolder()->rowCount(), 1);
    QCOMPARE(ProjectTree::childNamed(twin, ProjectTree::dataFolder)->rowCount(), 0);
}

void TestMonitoringView::firstReportMakesTheNodeAndNoTab()
{
    receive({point(QStringLiteral("Ua"), QStringLiteral("230.1"))});
    QCOMPARE(dataFolder()->rowCount(), 1);
    const QStandardItem *node = dataFolder()->child(0);
    QCOMPARE(node->text(), QStringLiteral("Meter 1"));
    QCOMPARE(node->data(dataDisplayRole).toString(), QStringLiteral("NoDisplay"));
    QCOMPARE(node->icon().pixmap(24).toImage(),
             QIcon(QStringLiteral(":/adsdemo/images/data-file.svg")).pixmap(24).toImage());
    QCOMPARE(m_tabs->count(), 0);
}

void TestMonitoringView::makesADataFolderWhereNoneIs()
{
    m_model->clear();
    m_model->appendRow(ProjectTree::makeProject(QStringLiteral("Riverside"), QString(), QString()));
    receive({point(QStringLiteral("Ua"), QStringLiteral("230.1"))});
    QCOMPARE(m_model->item(0)->rowCount(), 1);
    QCOMPARE(m_model->item(0)->child(0)->text(), QStringLiteral("Data"));
    QCOMPARE(m_model->item(0)->child(0)->icon().pixmap(64).toImage(),
             QIcon(QStringLiteral(":/adsdemo/images/Data.png")).pixmap(64).toImage());
    QCOMPARE(dataFolder()->rowCount(), 1);
}

void TestMonitoringView::nodeComesWithItsValues()
{
    // Whoever hears of the new node finds it complete, and the tree is opened behind it.
    QStringList seen;
    connect(m_model.data(), &QStandardItemModel::rowsInserted, this, [&](const QModelIndex &folder, int row) {
        const QModelIndex node = m_model->index(row, 0, folder);
        seen.append(node.data().toString());
        seen.append(QString::number(node.data(dataRowsRole).toList().size()));
        seen.append(node.data(dataDisplayRole).toString());
        seen.append(m_tree->isExpanded(folder) ? QStringLiteral("open") : QStringLiteral("closed"));
    });
    receive({point(QStringLiteral("Ua"), QStringLiteral("1"))});
    QCOMPARE(seen,
             QStringList({QStringLiteral("Meter 1"), QStringLiteral("1"), QStringLiteral("NoDisplay"),
                          QStringLiteral("closed")}));
    QVERIFY(m_tree->isExpanded(dataFolder()->index()));
}

void TestMonitoringView::keepsTheRowsInTheNode()
{
    QJsonObject bare{{QStringLiteral("name"), QStringLiteral("Ub")}, {QStringLiteral("value"), 7}};
    receive({point(QStringLiteral("Ua"), QStringLiteral("230.1"), QStringLiteral("0")), bare});
    const QVariant stored = dataFolder()->child(0)->data(dataRowsRole);
    QCOMPARE(int(stored.type()), int(QVariant::List));
    const QVariantList rows = stored.toList();
    QCOMPARE(rows.size(), 2);
    const QString time = rows.at(0).toMap().value(QStringLiteral("updateTime")).toString();
    QVERIFY2(timePattern.match(time).hasMatch(), qPrintable(time));
    const QVariantMap first{{QStringLiteral("name"), QStringLiteral("Ua")},
                            {QStringLiteral("addr"), QStringLiteral("@Ua")},
                            {QStringLiteral("dataType"), QStringLiteral("float")},
                            {QStringLiteral("value"), QStringLiteral("230.1")},
                            {QStringLiteral("valid"), QStringLiteral("0")},
                            {QStringLiteral("updateTime"), time}};
    const QVariantMap second{{QStringLiteral("name"), QStringLiteral("Ub")},
                             {QStringLiteral("addr"), QString()},
                             {QStringLiteral("dataType"), QString()},
                             {QStringLiteral("value"), QString()},
                             {QStringLiteral("valid"), QStringLiteral("Invalid")},
                             {QStringLiteral("updateTime"), time}};
    QCOMPARE(rows.at(0).toMap(), first);
    QCOMPARE(rows.at(1).toMap(), second);

    receive({point(QStringLiteral("Uc"), QStringLiteral("1"))});
    QCOMPARE(dataFolder()->child(0)->data(dataRowsRole).toList().size(), 1);
    QCOMPARE(dataFolder()->rowCount(), 1);
}

void TestMonitoringView::skipsWhatIsNotAnObject()
{
    const QTableWidget *shown = showPoints({QStringLiteral("Ua"), 5, QJsonValue(), QJsonArray{1},
                                            point(QStringLiteral("Ub"), QStringLiteral("1"))});
    QCOMPARE(rowsOf(shown), QStringList(QStringLiteral("Ub|@Ub|float|1|Effective")));
}

void TestMonitoringView::keepsTwoPlcsApart()
{
    showPoints({point(QStringLiteral("Ua"), QStringLiteral("1"))}, QStringLiteral("Meter 1"));
    showPoints({point(QStringLiteral("Ua"), QStringLiteral("2"))}, QStringLiteral("Meter 2"));
    receive({point(QStringLiteral("Ua"), QStringLiteral("3"))}, QStringLiteral("Meter 1"));
    QCOMPARE(dataFolder()->rowCount(), 2);
    QCOMPARE(m_tabs->count(), 2);
    QCOMPARE(rowsOf(table(QStringLiteral("Meter 1"))),
             QStringList(QStringLiteral("Ua|@Ua|float|3|Effective")));
    QCOMPARE(rowsOf(table(QStringLiteral("Meter 2"))),
             QStringList(QStringLiteral("Ua|@Ua|float|2|Effective")));
}

void TestMonitoringView::samePlcNameInTwoProjectsSharesATab()
{
    addProject(QStringLiteral("Hillside"));
    showPoints({point(QStringLiteral("Ua"), QStringLiteral("1"))});
    for (int i = 0; i < 2; ++i) {
        m_view->receive(report(QStringLiteral("Hillside"), QStringLiteral("Meter 1"),
                               {point(QStringLiteral("Ia"), QStringLiteral("5"))}));
    }
    QCOMPARE(m_tabs->count(), 1);
    QCOMPARE(rowsOf(table()), QStringList(QStringLiteral("Ia|@Ia|float|5|Effective")));
}

void TestMonitoringView::expandsTheTreeWithEachReport()
{
    for (int i = 0; i < 3; ++i) {
        m_tree->collapseAll();
        receive({point(QStringLiteral("Ua"), QStringLiteral("1"))});
        QVERIFY(m_tree->isExpanded(m_model->item(0)->index()));
        QVERIFY(m_tree->isExpanded(dataFolder()->index()));
    }
}

void TestMonitoringView::secondReportShowsTheTable()
{
    receive({point(QStringLiteral("Ua"), QStringLiteral("1"))});
    receive({point(QStringLiteral("Ua"), QStringLiteral("230.1")),
             point(QStringLiteral("Ub"), QStringLiteral("230.4"), QStringLiteral("0"))});
    QCOMPARE(m_tabs->count(), 1);
    QCOMPARE(m_tabs->tabText(0), QStringLiteral("Meter 1"));
    QVERIFY(qobject_cast<QVBoxLayout *>(m_tabs->widget(0)->layout()));
    QCOMPARE(rowsOf(table()),
             QStringList({QStringLiteral("Ua|@Ua|float|230.1|Effective"),
                          QStringLiteral("Ub|@Ub|float|230.4|Invalid")}));
    for (const QString &time : column(table(), 5)) {
        QVERIFY2(timePattern.match(time).hasMatch(), qPrintable(time));
        QVERIFY(!time.startsWith(QLatin1String("1999"))); // when it came, not what the Box's clock said
    }
}

void TestMonitoringView::looksAsDesigned()
{
    QTableWidget *shown = showPoints({point(QStringLiteral("Ua"), QStringLiteral("1"))});
    QVERIFY(!m_tabs->tabsClosable());
    QVERIFY(shown->isSortingEnabled());
    QStringList headers;
    for (int i = 0; i < shown->columnCount(); ++i) {
        headers.append(shown->horizontalHeaderItem(i)->text());
    }
    QCOMPARE(headers,
             QStringList({QStringLiteral("Name"), QStringLiteral("Addr"), QStringLiteral("DataType"),
                          QStringLiteral("Value"), QStringLiteral("Valid"), QStringLiteral("Update Time")}));
    QCOMPARE(shown->horizontalHeader()->styleSheet(),
             QStringLiteral("QHeaderView::section { background-color: #DDDDDD; }"));
    QCOMPARE(shown->columnWidth(5), 180);
    QCOMPARE(m_tabs->styleSheet(),
             QStringLiteral(
                 "QTabBar::tab { font-size: 16px; color: black; background-color: #e0e0e0; border-radius: "
                 "5px; min-width: 80px; height: 20px; padding: 5px 10px; } QTabBar::tab:selected { "
                 "background-color: #1296db; color: white; } QTabBar::tab:hover { background-color: "
                 "#7dc5eb; }"));

    // A name as long as they get is readable from the start; then the width is the user's.
    const QString name = QStringLiteral("Combined active total electrical energy of tariff 1");
    const QTableWidget *wide = showPoints({point(name, QStringLiteral("1"))}, QStringLiteral("Meter 2"));
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

void TestMonitoringView::longNamesFitTheirTabs()
{
    const QString name = QStringLiteral("Transformer station west, feeder 12");
    const QJsonArray datas{point(QStringLiteral("a"), QStringLiteral("1"))};
    QFont font = m_tabs->font();
    font.setPixelSize(11); // the desktop's
    m_tabs->setFont(font);
    m_tabs->resize(900, 300);
    m_tabs->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_tabs.data()));
    showPoints(datas);
    showPoints(datas, name);
    const QTabBar *bar = m_tabs->tabBar();
    font.setPixelSize(16); // the size and the padding of the style sheet
    const int text = QFontMetrics(font).horizontalAdvance(name);
    QTRY_VERIFY2(bar->tabRect(1).width() >= text + 2 * 10,
                 qPrintable(QStringLiteral("%1 for %2").arg(bar->tabRect(1).width()).arg(text)));
}

void TestMonitoringView::headersAreReadableOnADarkDesktop()
{
    const QPalette before = QApplication::palette();
    QPalette dark(QColor(0x30, 0x30, 0x30)); // with white texts
    QCOMPARE(dark.color(QPalette::ButtonText), QColor(Qt::white));
    QApplication::setPalette(dark);
    m_tabs->resize(900, 300);
    m_tabs->show();
    QTableWidget *shown = showPoints({point(QStringLiteral("Ua"), QStringLiteral("1"))});
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

void TestMonitoringView::showsValidityInWords_data()
{
    QTest::addColumn<QJsonValue>("valid");
    QTest::addColumn<QString>("shown");
    QTest::newRow("valid") << QJsonValue(QStringLiteral("1")) << QStringLiteral("Effective");
    QTest::newRow("invalid") << QJsonValue(QStringLiteral("0")) << QStringLiteral("Invalid");
    QTest::newRow("another text") << QJsonValue(QStringLiteral("2")) << QStringLiteral("Unknown");
    QTest::newRow("the word Invalid") << QJsonValue(QStringLiteral("Invalid")) << QStringLiteral("Unknown");
    QTest::newRow("empty") << QJsonValue(QString()) << QStringLiteral("Unknown");
    QTest::newRow("a number") << QJsonValue(1) << QStringLiteral("Unknown");
    QTest::newRow("missing") << QJsonValue(QJsonValue::Undefined) << QStringLiteral("Unknown");
}

void TestMonitoringView::showsValidityInWords()
{
    QFETCH(QJsonValue, valid);
    QFETCH(QString, shown);
    QJsonObject data = point(QStringLiteral("Ua"), QStringLiteral("1"));
    data.insert(QStringLiteral("valid"), valid); // an undefined value removes the key
    QCOMPARE(column(showPoints({data}), 4), QStringList(shown));
}

void TestMonitoringView::numberAsValueShowsAsEmptyCell()
{
    QJsonObject data = point(QStringLiteral("Ua"), QString());
    data.insert(QStringLiteral("value"), 230.1);
    QCOMPARE(rowsOf(showPoints({data})), QStringList(QStringLiteral("Ua|@Ua|float||Effective")));
}

void TestMonitoringView::sameNameTwiceIsOneRow()
{
    const QJsonArray datas{point(QStringLiteral("Ua"), QStringLiteral("1")),
                           point(QStringLiteral("Ub"), QStringLiteral("2")),
                           point(QStringLiteral("Ua"), QStringLiteral("3"), QStringLiteral("0"))};
    const QStringList expected{QStringLiteral("Ua|@Ua|float|3|Invalid"),
                               QStringLiteral("Ub|@Ub|float|2|Effective")};
    QTableWidget *shown = showPoints(datas);
    QCOMPARE(rowsOf(shown), expected);
    receive(datas);
    QCOMPARE(rowsOf(shown), expected);
    QCOMPARE(dataFolder()->child(0)->data(dataRowsRole).toList().size(), 3);
}

void TestMonitoringView::missingPointsLeaveTheTable()
{
    QTableWidget *shown = showPoints(
        {point(QStringLiteral("a"), QStringLiteral("1")), point(QStringLiteral("b"), QStringLiteral("2")),
         point(QStringLiteral("c"), QStringLiteral("3")), point(QStringLiteral("d"), QStringLiteral("4")),
         point(QStringLiteral("e"), QStringLiteral("5"))});
    receive(
        {point(QStringLiteral("d"), QStringLiteral("6")), point(QStringLiteral("b"), QStringLiteral("7"))});
    QCOMPARE(
        rowsOf(shown),
        QStringList({QStringLiteral("b|@b|float|7|Effective"), QStringLiteral("d|@d|float|6|Effective")}));
}

void TestMonitoringView::newPointsComeAtTheEndUntilTheUserSorts()
{
    QTableWidget *shown = showPoints(
        {point(QStringLiteral("c"), QStringLiteral("1")), point(QStringLiteral("a"), QStringLiteral("2"))});
    receive({point(QStringLiteral("b"), QStringLiteral("3")), point(QStringLiteral("a"), QStringLiteral("2")),
             point(QStringLiteral("c"), QStringLiteral("1"))});
    QCOMPARE(column(shown, 0), QStringList({QStringLiteral("c"), QStringLiteral("a"), QStringLiteral("b")}));
}

void TestMonitoringView::emptyReportEmptiesTheTable()
{
    QTableWidget *shown = showPoints(
        {point(QStringLiteral("a"), QStringLiteral("1")), point(QStringLiteral("b"), QStringLiteral("2"))});
    receive({});
    QCOMPARE(shown->rowCount(), 0);
    QCOMPARE(m_tabs->count(), 1);
    receive({point(QStringLiteral("b"), QStringLiteral("3"))});
    QCOMPARE(rowsOf(shown), QStringList(QStringLiteral("b|@b|float|3|Effective")));
}

void TestMonitoringView::ownTimeOfTheRowsIfNoneIsGiven()
{
    QStandardItem node;
    const QVariantMap row{{QStringLiteral("name"), QStringLiteral("Ua")},
                          {QStringLiteral("updateTime"), QStringLiteral("2024-05-06 07:08:09")}};
    node.setData(QVariantList{row}, dataRowsRole);
    m_view->showData(&node, QString(), QStringLiteral("Meter 1"));
    QCOMPARE(column(table(), 5), QStringList(QStringLiteral("2024-05-06 07:08:09")));
    m_view->showData(&node, QStringLiteral("2025-01-02 03:04:05"), QStringLiteral("Meter 1"));
    QCOMPARE(column(table(), 5), QStringList(QStringLiteral("2025-01-02 03:04:05")));
}

void TestMonitoringView::rowsStayTogetherWhileSorted_data()
{
    QTest::addColumn<int>("section");
    QTest::addColumn<Qt::SortOrder>("order");
    for (int section = 0; section < 6; ++section) {
        QTest::addRow("column %d up", section) << section << Qt::AscendingOrder;
        QTest::addRow("column %d down", section) << section << Qt::DescendingOrder;
    }
}

void TestMonitoringView::rowsStayTogetherWhileSorted()
{
    QFETCH(int, section);
    QFETCH(Qt::SortOrder, order);
    // Every value changes its place from report to report, points come and go.
    const auto points = [](int round) {
        QJsonArray datas;
        for (int i = 0; i < 40; ++i) {
            if ((i + round) % 7 != 0) {
                const int shuffled = (i * 17 + round * 11) % 41;
                datas.append(QJsonObject{
                    {QStringLiteral("name"), QStringLiteral("p%1").arg(i, 2, 10, QLatin1Char('0'))},
                    {QStringLiteral("addr"), QStringLiteral("a%1").arg((shuffled + 5) % 41)},
                    {QStringLiteral("dataType"),
                     shuffled % 2 ? QStringLiteral("int16") : QStringLiteral("bool")},
                    {QStringLiteral("value"), QString::number(shuffled)},
                    {QStringLiteral("valid"), QString::number(shuffled % 3)}});
            }
        }
        return datas;
    };
    const QStringList validity{QStringLiteral("Invalid"), QStringLiteral("Effective"),
                               QStringLiteral("Unknown")};
    QTableWidget *shown = showPoints(points(0));
    shown->sortByColumn(section, order);
    for (int round = 1; round < 8; ++round) {
        receive(points(round));
        QStringList expected;
        for (const QJsonValue &value : points(round)) {
            const QJsonObject data = value.toObject();
            expected.append(QStringList({data.value(QStringLiteral("name")).toString(),
                                         data.value(QStringLiteral("addr")).toString(),
                                         data.value(QStringLiteral("dataType")).toString(),
                                         data.value(QStringLiteral("value")).toString(),
                                         validity.at(data.value(QStringLiteral("valid")).toString().toInt())})
                                .join(QLatin1Char('|')));
        }
        QStringList rows = rowsOf(shown);
        std::sort(rows.begin(), rows.end());
        std::sort(expected.begin(), expected.end());
        QCOMPARE(rows, expected);

        const QStringList keys = column(shown, section);
        QVERIFY(order == Qt::AscendingOrder ? std::is_sorted(keys.begin(), keys.end())
                                            : std::is_sorted(keys.rbegin(), keys.rend()));
    }
}

void TestMonitoringView::sortOrderSurvivesEachReport()
{
    QTableWidget *shown = showPoints({point(QStringLiteral("a"), QStringLiteral("1")),
                                      point(QStringLiteral("b"), QStringLiteral("2")),
                                      point(QStringLiteral("c"), QStringLiteral("3"))});
    shown->sortByColumn(3, Qt::DescendingOrder);
    QCOMPARE(column(shown, 0), QStringList({QStringLiteral("c"), QStringLiteral("b"), QStringLiteral("a")}));
    receive({point(QStringLiteral("a"), QStringLiteral("9")), point(QStringLiteral("b"), QStringLiteral("2")),
             point(QStringLiteral("c"), QStringLiteral("3"))});
    QCOMPARE(column(shown, 0), QStringList({QStringLiteral("a"), QStringLiteral("c"), QStringLiteral("b")}));
    QCOMPARE(shown->horizontalHeader()->sortIndicatorSection(), 3);
    QCOMPARE(shown->horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
    QVERIFY(shown->horizontalHeader()->isSortIndicatorShown());
    QVERIFY(shown->isSortingEnabled());
}

void TestMonitoringView::scrollPositionSurvivesEachReport()
{
    const auto points = [](int count, int round) {
        QJsonArray datas;
        for (int i = 0; i < count; ++i) {
            datas.append(point(QStringLiteral("point %1").arg(i), QString::number((i * 31 + round) % 97)));
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

void TestMonitoringView::selectionFollowsThePoint()
{
    QTableWidget *shown = showPoints({point(QStringLiteral("a"), QStringLiteral("1")),
                                      point(QStringLiteral("b"), QStringLiteral("2")),
                                      point(QStringLiteral("c"), QStringLiteral("3"))});
    shown->sortByColumn(3, Qt::AscendingOrder);
    shown->setCurrentCell(1, 3); // the value of b
    receive({point(QStringLiteral("a"), QStringLiteral("5")), point(QStringLiteral("b"), QStringLiteral("9")),
             point(QStringLiteral("d"), QStringLiteral("0"))});
    QCOMPARE(column(shown, 0), QStringList({QStringLiteral("d"), QStringLiteral("a"), QStringLiteral("b")}));
    QCOMPARE(shown->currentRow(), 2);
    QCOMPARE(shown->currentColumn(), 3);
    QCOMPARE(shown->selectedItems().size(), 1);
    QCOMPARE(shown->selectedItems().first()->text(), QStringLiteral("9"));
}

void TestMonitoringView::updatesTheCellsThatAreThere()
{
    QTableWidget *shown = showPoints({point(QStringLiteral("a"), QStringLiteral("1"))});
    QAbstractItemModelTester tester(shown->model(), QAbstractItemModelTester::FailureReportingMode::QtTest);
    const QTableWidgetItem *value = shown->item(0, 3);
    QSignalSpy changed(shown->model(), &QAbstractItemModel::dataChanged);
    receive(
        {point(QStringLiteral("a"), QStringLiteral("2")), point(QStringLiteral("b"), QStringLiteral("3"))});
    QCOMPARE(shown->item(0, 3), value);
    QCOMPARE(value->text(), QStringLiteral("2"));
    QCOMPARE(changed.count(), 1); // told once a report, whatever the number of points
    receive({point(QStringLiteral("b"), QStringLiteral("3"))});
    QCOMPARE(rowsOf(shown), QStringList(QStringLiteral("b|@b|float|3|Effective")));
}

void TestMonitoringView::takesTenThousandPoints()
{
    const int count = 10000;
    const auto points = [](int first, int round) {
        QJsonArray datas;
        for (int i = first; i < count; ++i) {
            datas.append(point(QStringLiteral("point %1").arg(i), QString::number(i * 31 % 9973 + round)));
        }
        return datas;
    };
    QTableWidget *shown = showPoints(points(0, 0));
    QCOMPARE(shown->rowCount(), count);
    shown->sortByColumn(3, Qt::AscendingOrder);
    receive(points(0, 7));
    QCOMPARE(shown->rowCount(), count);
    for (int row = 0; row < count; ++row) {
        const int i = shown->item(row, 0)->text().mid(6).toInt();
        QCOMPARE(shown->item(row, 1)->text(), QStringLiteral("@point %1").arg(i));
        QCOMPARE(shown->item(row, 3)->text(), QString::number(i * 31 % 9973 + 7));
    }
    receive(points(count / 2, 1));
    QCOMPARE(shown->rowCount(), count / 2);
    receive({});
    QCOMPARE(shown->rowCount(), 0);
}

void TestMonitoringView::closedTabComesBackWithAPageOfItsOwn()
{
    const QJsonArray datas{point(QStringLiteral("a"), QStringLiteral("1"))};
    showPoints(datas, QStringLiteral("Meter 2"));
    showPoints(datas);
    const QPointer<QWidget> page = m_tabs->widget(tabNamed(QStringLiteral("Meter 1")));
    m_view->closeTab(QStringLiteral("no such tab"));
    QCOMPARE(m_tabs->count(), 2);
    m_view->closeTab(QStringLiteral("Meter 1"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_tabs->count(), 1);
    QCOMPARE(m_tabs->tabText(0), QStringLiteral("Meter 2"));
    QVERIFY(page);

    receive({point(QStringLiteral("b"), QStringLiteral("2"))});
    QCOMPARE(m_tabs->count(), 2);
    QVERIFY(m_tabs->widget(tabNamed(QStringLiteral("Meter 1"))) != page);
    QCOMPARE(rowsOf(table()), QStringList(QStringLiteral("b|@b|float|2|Effective")));

    // Once the node is gone too, the next report makes the node and the one after it the tab.
    dataFolder()->removeRows(0, dataFolder()->rowCount());
    m_view->closeTab(QStringLiteral("Meter 1"));
    receive(datas);
    QCOMPARE(tabNamed(QStringLiteral("Meter 1")), -1);
    receive(datas);
    QVERIFY(tabNamed(QStringLiteral("Meter 1")) >= 0);

    m_tabs.reset();
    QVERIFY(!page);
}

void TestMonitoringView::clickedNodeBringsItsTabToTheFront()
{
    const QJsonArray datas{point(QStringLiteral("a"), QStringLiteral("1"))};
    showPoints(datas);
    showPoints(datas, QStringLiteral("Meter 2"));
    m_view->showTab(QStringLiteral("Meter 2"));
    QCOMPARE(m_tabs->currentIndex(), 1);
    m_view->showTab(QStringLiteral("Meter 3"));
    QCOMPARE(m_tabs->currentIndex(), 1);
    m_view->showTab(QStringLiteral("Meter 1"));
    QCOMPARE(m_tabs->currentIndex(), 0);
    // A report leaves the tab in front alone.
    receive(datas, QStringLiteral("Meter 2"));
    QCOMPARE(m_tabs->currentIndex(), 0);
}

void TestMonitoringView::pageWithoutATableIsLeftAlone()
{
    m_tabs->addTab(new QWidget, QStringLiteral("Meter 1"));
    QVERIFY(!showPoints({point(QStringLiteral("a"), QStringLiteral("1"))}));
    QCOMPARE(m_tabs->count(), 1);
    QVERIFY(!m_tabs->tabsClosable());
}

void TestMonitoringView::withoutTabsOrTreeOnlyTheValuesAreKept()
{
    MonitoringView view(nullptr, m_model.data(), nullptr);
    for (int i = 0; i < 2; ++i) {
        view.receive(report(QStringLiteral("Riverside"), QStringLiteral("Meter 1"),
                            {point(QStringLiteral("a"), QString::number(i))}));
    }
    const QVariantList rows = dataFolder()->child(0)->data(dataRowsRole).toList();
    QCOMPARE(rows.value(0).toMap().value(QStringLiteral("value")).toString(), QStringLiteral("1"));
    view.showTab(QStringLiteral("Meter 1"));
    view.closeTab(QStringLiteral("Meter 1"));
    m_view->showData(nullptr, QString(), QStringLiteral("Meter 1"));
    QCOMPARE(m_tabs->count(), 0);
}

void TestMonitoringView::followsTheLanguage()
{
    const QJsonArray datas{point(QStringLiteral("a"), QStringLiteral("1")),
                           point(QStringLiteral("b"), QStringLiteral("1"), QStringLiteral("0")),
                           point(QStringLiteral("c"), QStringLiteral("1"), QStringLiteral("x"))};
    QTableWidget *shown = showPoints(datas);
    MarkingTranslator translator;
    QCoreApplication::installTranslator(&translator);
    receive(datas);
    QCOMPARE(column(shown, 4),
             QStringList({QStringLiteral("zh Effective"), QStringLiteral("zh Invalid"),
                          QStringLiteral("zh Unknown")}));
    QCOMPARE(shown->horizontalHeaderItem(5)->text(), QStringLiteral("zh Update Time"));
    // Names that logic compares are no texts of the interface.
    QCOMPARE(dataFolder()->text(), QStringLiteral("Data"));
    const QVariantList rows = dataFolder()->child(0)->data(dataRowsRole).toList();
    QCOMPARE(rows.at(0).toMap().value(QStringLiteral("valid")).toString(), QStringLiteral("1"));
    QCoreApplication::removeTranslator(&translator);
    receive(datas);
    QCOMPARE(shown->horizontalHeaderItem(5)->text(), QStringLiteral("Update Time"));
}

QTEST_MAIN(TestMonitoringView)
#include "tst_monitoringview.moc"
