#include "language.h"
#include "monitoring/monitoringpage.h"
#include "monitoringtest.h"

#include <QLabel>
#include <QPointer>
#include <QTabBar>

#include <memory>

// What a report does to the tree and to the tabs.
class TestMonitoringView : public MonitoringTest
{
    Q_OBJECT
private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void dropsAReportOfAProjectThatIsNotOpen();
    void firstProjectOfANameWins();
    void firstReportMakesTheNodeAndNoTab();
    void makesADataFolderWhereNoneIs();
    void nodeComesWithItsValues();
    void keepsTheRowsInTheNode();
    void skipsWhatIsNotAnObject();
    void keepsTwoPlcsApart();
    void samePlcNameInTwoProjectsSharesATab();
    void tellsEachPageWhoseValuesItShows();
    void valuesOfAnotherProjectThanTheSelectedOneAreTold();
    void renamedProjectKeepsItsValues();
    void newNameOfTheWantedProjectIsTold();
    void closedProjectIsKnownByItsName();
    void endOfTheSessionReachesAllItsPages();
    void firstPageKnowsThePeriod();
    void pauseBetweenSessionsIsNoPeriod();
    void tellsWhetherTheProjectIsOpen();
    void expandsTheTreeWithEachReport();
    void longNamesFitTheirTabs();
    void tabsAreFoundByTheirNames();
    void closedTabComesBackWithAPageOfItsOwn();
    void clickedNodeBringsItsTabToTheFront();
    void pageWithoutATableIsLeftAlone();
    void withoutTabsOrTreeOnlyTheValuesAreKept();
    void followsTheLanguage();
    void tellsOfItsPagesAndOfWhatTheyShow();
    void tellsWhichPageIsInFront();
    void tellsWhoseSessionHasEnded();

private:
    QString line(const QString &plc = "Meter 1") const
    {
        return m_tabs->widget(tabNamed(plc))->findChild<QLabel *>("source")->text();
    }
    // What the first page says when so much of its clock has passed.
    QString lineAfter(qint64 *now, qint64 passed) const
    {
        *now += passed;
        qobject_cast<MonitoringPage *>(m_tabs->widget(0))->refresh();
        return line();
    }
};

void TestMonitoringView::dropsAReportOfAProjectThatIsNotOpen()
{
    const auto data = report("Hillside", "Meter 1", {point("Ua", "230.1")});
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
    QStandardItem *twin = addProject("Riverside");
    showPoints({point("Ua", "230.1")});
    QCOMPARE(dataFolder()->rowCount(), 1);
    QCOMPARE(ProjectTree::childNamed(twin, ProjectTree::dataFolder)->rowCount(), 0);
}

void TestMonitoringView::firstReportMakesTheNodeAndNoTab()
{
    receive({point("Ua", "230.1")});
    QCOMPARE(dataFolder()->rowCount(), 1);
    const QStandardItem *node = dataFolder()->child(0);
    QCOMPARE(node->text(), "Meter 1");
    QCOMPARE(node->data(dataDisplayRole).toString(), "NoDisplay");
    QCOMPARE(node->icon().pixmap(24).toImage(), QIcon(":/adsdemo/images/data-file.svg").pixmap(24).toImage());
    QCOMPARE(m_tabs->count(), 0);
}

void TestMonitoringView::makesADataFolderWhereNoneIs()
{
    m_model->clear();
    m_model->appendRow(ProjectTree::makeProject("Riverside", QString(), QString()));
    receive({point("Ua", "230.1")});
    QCOMPARE(m_model->item(0)->rowCount(), 1);
    QCOMPARE(m_model->item(0)->child(0)->text(), "Data");
    QCOMPARE(m_model->item(0)->child(0)->icon().pixmap(64).toImage(),
             QIcon(":/adsdemo/images/Data.png").pixmap(64).toImage());
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
        seen.append(m_tree->isExpanded(folder) ? QString("open") : "closed");
    });
    receive({point("Ua", "1")});
    QCOMPARE(seen, QStringList({"Meter 1", "1", "NoDisplay", "closed"}));
    QVERIFY(m_tree->isExpanded(dataFolder()->index()));
}

void TestMonitoringView::keepsTheRowsInTheNode()
{
    QJsonObject bare{{"name", "Ub"}, {"value", 7}};
    receive({point("Ua", "230.1", "0"), bare});
    const QVariant stored = dataFolder()->child(0)->data(dataRowsRole);
    QCOMPARE(int(stored.type()), int(QVariant::List));
    const QVariantList rows = stored.toList();
    QCOMPARE(rows.size(), 2);
    const QString time = rows.at(0).toMap().value("updateTime").toString();
    QVERIFY2(timePattern.match(time).hasMatch(), qPrintable(time));
    const QVariantMap first{{"name", "Ua"},     {"addr", "@Ua"}, {"dataType", "float"},
                            {"value", "230.1"}, {"valid", "0"},  {"updateTime", time}};
    const QVariantMap second{{"name", "Ub"},       {"addr", QString()},  {"dataType", QString()},
                             {"value", QString()}, {"valid", "Invalid"}, {"updateTime", time}};
    QCOMPARE(rows.at(0).toMap(), first);
    QCOMPARE(rows.at(1).toMap(), second);

    receive({point("Uc", "1")});
    QCOMPARE(dataFolder()->child(0)->data(dataRowsRole).toList().size(), 1);
    QCOMPARE(dataFolder()->rowCount(), 1);
}

void TestMonitoringView::skipsWhatIsNotAnObject()
{
    const QTableWidget *shown = showPoints({"Ua", 5, QJsonValue(), QJsonArray{1}, point("Ub", "1")});
    QCOMPARE(rowsOf(shown), QStringList("Ub|@Ub|float|1|Effective"));
}

void TestMonitoringView::keepsTwoPlcsApart()
{
    showPoints({point("Ua", "1")}, "Meter 1");
    showPoints({point("Ua", "2")}, "Meter 2");
    receive({point("Ua", "3")}, "Meter 1");
    QCOMPARE(dataFolder()->rowCount(), 2);
    QCOMPARE(m_tabs->count(), 2);
    QCOMPARE(rowsOf(table("Meter 1")), QStringList("Ua|@Ua|float|3|Effective"));
    QCOMPARE(rowsOf(table("Meter 2")), QStringList("Ua|@Ua|float|2|Effective"));
}

void TestMonitoringView::samePlcNameInTwoProjectsSharesATab()
{
    addProject("Hillside");
    showPoints({point("Ua", "1")});
    for (int i = 0; i < 2; ++i) {
        m_view->receive(report("Hillside", "Meter 1", {point("Ia", "5")}));
    }
    QCOMPARE(m_tabs->count(), 1);
    QCOMPARE(rowsOf(table()), QStringList("Ia|@Ia|float|5|Effective"));
}

void TestMonitoringView::tellsEachPageWhoseValuesItShows()
{
    addProject("Hillside");
    showPoints({point("Ua", "1")}); // from outside of any session
    QCOMPARE(line(), "Riverside · 0 s ago");
    m_view->setBox("Gateway north", "127.0.0.2");
    receive({point("Ua", "1")});
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 0 s ago");
    // One page for two projects: it says whose values it shows now.
    m_view->setBox("Gateway south", "127.0.0.3");
    for (int i = 0; i < 2; ++i) {
        m_view->receive(report("Hillside", "Meter 1", {point("Ua", "1")}));
    }
    QCOMPARE(line(), "Hillside · Gateway south 127.0.0.3 · 0 s ago");
    receive({point("Ua", "1")});
    QCOMPARE(line(), "Riverside · Gateway south 127.0.0.3 · 0 s ago");
    // An item that is in no project.
    QStandardItem loose("loose");
    m_view->endSession("127.0.0.2");
    m_view->showData(&loose, QString(), "Meter 2");
    QCOMPARE(line("Meter 2"), "0 s ago");
}

void TestMonitoringView::valuesOfAnotherProjectThanTheSelectedOneAreTold()
{
    addProject("Hillside");
    showPoints({point("Ua", "1")});
    QStandardItem *node = dataFolder()->child(0);
    m_tree->setCurrentIndex(node->index());
    QCOMPARE(line(), "Riverside · 0 s ago");
    for (int i = 0; i < 2; ++i) { // takes the page over
        m_view->receive(report("Hillside", "Meter 1", {point("Ua", "1")}));
    }
    QCOMPARE(line(), "NOT of 'Riverside', whose node is selected · Hillside · 0 s ago");
    m_tree->setCurrentIndex(node->parent()->index());
    QCOMPARE(line(), "Hillside · 0 s ago");
    m_tree->setCurrentIndex(node->index());
    receive({point("Ua", "1")});
    QCOMPARE(line(), "Riverside · 0 s ago");
}

void TestMonitoringView::renamedProjectKeepsItsValues()
{
    showPoints({point("Ua", "1")});
    QStandardItem *node = dataFolder()->child(0);
    m_tree->setCurrentIndex(node->index());
    m_model->item(0)->setText("Riverside B");
    QCOMPARE(line(), "Riverside B · 0 s ago");
    m_tree->setCurrentIndex(m_model->item(0)->index());
    m_tree->setCurrentIndex(node->index());
    QCOMPARE(line(), "Riverside B · 0 s ago");
}

void TestMonitoringView::newNameOfTheWantedProjectIsTold()
{
    QStandardItem *other = addProject("Hillside");
    showPoints({point("Ua", "1")});
    m_view->receive(report("Hillside", "Meter 1", {point("Ua", "1")})); // only makes the node
    m_tree->setCurrentIndex(ProjectTree::childNamed(other, ProjectTree::dataFolder)->child(0)->index());
    QCOMPARE(line(), "NOT of 'Hillside', whose node is selected · Riverside · 0 s ago");
    other->setText("Hillside B");
    QCOMPARE(line(), "NOT of 'Hillside B', whose node is selected · Riverside · 0 s ago");
    // The name that the other one had.
    other->setText("Hillside C");
    m_model->item(0)->setText("Hillside B");
    QCOMPARE(line(), "NOT of 'Hillside C', whose node is selected · Hillside B · 0 s ago");
}

void TestMonitoringView::closedProjectIsKnownByItsName()
{
    showPoints({point("Ua", "1")});
    m_model->removeRow(0);
    addProject("Riverside");
    receive({point("Ua", "1")}); // only makes the node
    m_tree->setCurrentIndex(dataFolder()->child(0)->index());
    QCOMPARE(line(), "Riverside · 0 s ago");
}

void TestMonitoringView::endOfTheSessionReachesAllItsPages()
{
    showPoints({point("Ua", "1")}, "from outside");
    m_view->setBox("Gateway north", "127.0.0.2");
    showPoints({point("Ua", "1")});
    showPoints({point("Ua", "1")}, "Meter 2");
    m_view->endSession("127.0.0.2");
    QCOMPARE(line(), "Out of date: not connected · Riverside · Gateway north 127.0.0.2 · 0 s ago");
    QCOMPARE(line("Meter 2"), line());
    QCOMPARE(line("from outside"), "Riverside · 0 s ago");
    m_view->setBox("Gateway north", "127.0.0.2");
    receive({point("Ua", "1")});
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 0 s ago");
    QCOMPARE(line("Meter 2"), "Out of date: not connected · Riverside · Gateway north 127.0.0.2 · 0 s ago");
}

void TestMonitoringView::firstPageKnowsThePeriod()
{
    qint64 now = 1000;
    m_view->setClock([&now] { return now; });
    m_view->setBox("Gateway north", "127.0.0.2");
    addProject("Hillside");
    receive({point("Ua", "1")});
    now += 60000;
    receive({point("Ua", "1")});
    QCOMPARE(lineAfter(&now, 60000), "Riverside · Gateway north 127.0.0.2 · 60 s ago");
    // The page is there already when another project's node is made.
    m_view->receive(report("Hillside", "Meter 1", {}));
    now += 50000;
    m_view->receive(report("Hillside", "Meter 1", {}));
    QCOMPARE(lineAfter(&now, 60000), "Hillside · Gateway north 127.0.0.2 · 60 s ago");
    QCOMPARE(lineAfter(&now, 90001),
             "Out of date: no new report · Hillside · Gateway north 127.0.0.2 · 2 min ago");
}

void TestMonitoringView::pauseBetweenSessionsIsNoPeriod()
{
    qint64 now = 1000;
    m_view->setClock([&now] { return now; });
    m_view->setBox("Gateway north", "127.0.0.2");
    receive({point("Ua", "1")});
    m_view->endSession("127.0.0.2");
    now += 3600000;
    m_view->setBox("Gateway north", "127.0.0.2");
    receive({point("Ua", "1")});
    QCOMPARE(lineAfter(&now, 10001),
             "Out of date: no new report · Riverside · Gateway north 127.0.0.2 · 10 s ago");
}

void TestMonitoringView::tellsWhetherTheProjectIsOpen()
{
    const QSignalSpy told(m_view.data(), &MonitoringView::received);
    m_view->receive(report("Hillside", "Meter 1", {}));
    m_view->receive(report("Riverside", "Meter 1", {}));
    QCOMPARE(told.size(), 2);
    QCOMPARE(told.at(0), (QVariantList{"Hillside", false}));
    QCOMPARE(told.at(1), (QVariantList{"Riverside", true}));
}

void TestMonitoringView::expandsTheTreeWithEachReport()
{
    for (int i = 0; i < 3; ++i) {
        m_tree->collapseAll();
        receive({point("Ua", "1")});
        QVERIFY(m_tree->isExpanded(m_model->item(0)->index()));
        QVERIFY(m_tree->isExpanded(dataFolder()->index()));
    }
}

void TestMonitoringView::longNamesFitTheirTabs()
{
    const QString name = "Transformer station west, feeder 12";
    const QJsonArray datas{point("a", "1")};
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
                 qPrintable(QString("%1 for %2").arg(bar->tabRect(1).width()).arg(text)));
}

void TestMonitoringView::tabsAreFoundByTheirNames()
{
    const QString name = "R&D &meter";
    for (int time = 0; time < 3; ++time) {
        m_view->receive(report("Riverside", name, {point("Ua", "230.1")}));
    }
    QCOMPARE(m_tabs->count(), 1);
    QCOMPARE(m_tabs->tabText(0), name);
    m_tabs->addTab(new QWidget, "other");
    m_tabs->setCurrentIndex(1);
    m_view->showTab(name);
    QCOMPARE(m_tabs->currentIndex(), 0);
    m_view->closeTab(name);
    QCOMPARE(m_tabs->count(), 1);
    QCOMPARE(m_tabs->tabText(0), "other");
}

void TestMonitoringView::closedTabComesBackWithAPageOfItsOwn()
{
    const QJsonArray datas{point("a", "1")};
    showPoints(datas, "Meter 2");
    showPoints(datas);
    const QPointer<QWidget> page = m_tabs->widget(tabNamed("Meter 1"));
    m_view->closeTab("no such tab");
    QCOMPARE(m_tabs->count(), 2);
    m_view->closeTab("Meter 1");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(m_tabs->count(), 1);
    QCOMPARE(m_tabs->tabText(0), "Meter 2");
    QVERIFY(page);

    receive({point("b", "2")});
    QCOMPARE(m_tabs->count(), 2);
    QVERIFY(m_tabs->widget(tabNamed("Meter 1")) != page);
    QCOMPARE(rowsOf(table()), QStringList("b|@b|float|2|Effective"));

    // Once the node is gone too, the next report makes the node and the one after it the tab.
    dataFolder()->removeRows(0, dataFolder()->rowCount());
    m_view->closeTab("Meter 1");
    receive(datas);
    QCOMPARE(tabNamed("Meter 1"), -1);
    receive(datas);
    QVERIFY(tabNamed("Meter 1") >= 0);

    m_tabs.reset();
    QVERIFY(!page);
}

void TestMonitoringView::clickedNodeBringsItsTabToTheFront()
{
    const QJsonArray datas{point("a", "1")};
    showPoints(datas);
    showPoints(datas, "Meter 2");
    m_view->showTab("Meter 2");
    QCOMPARE(m_tabs->currentIndex(), 1);
    m_view->showTab("Meter 3");
    QCOMPARE(m_tabs->currentIndex(), 1);
    m_view->showTab("Meter 1");
    QCOMPARE(m_tabs->currentIndex(), 0);
    // A report leaves the tab in front alone.
    receive(datas, "Meter 2");
    QCOMPARE(m_tabs->currentIndex(), 0);
}

void TestMonitoringView::pageWithoutATableIsLeftAlone()
{
    m_tabs->addTab(new QWidget, "Meter 1");
    QVERIFY(!showPoints({point("a", "1")}));
    QCOMPARE(m_tabs->count(), 1);
    QVERIFY(!m_tabs->tabsClosable());
}

void TestMonitoringView::withoutTabsOrTreeOnlyTheValuesAreKept()
{
    MonitoringView view(nullptr, m_model.data(), nullptr);
    for (int i = 0; i < 2; ++i) {
        view.receive(report("Riverside", "Meter 1", {point("a", QString::number(i))}));
    }
    const QVariantList rows = dataFolder()->child(0)->data(dataRowsRole).toList();
    QCOMPARE(rows.value(0).toMap().value("value").toString(), "1");
    view.showTab("Meter 1");
    view.closeTab("Meter 1");
    m_view->showData(nullptr, QString(), "Meter 1");
    QCOMPARE(m_tabs->count(), 0);
}

void TestMonitoringView::followsTheLanguage()
{
    const QJsonArray datas{point("a", "1"), point("b", "1", "0"), point("c", "1", "x")};
    QTableWidget *shown = showPoints(datas);
    auto language = std::make_unique<Language>("zh ");
    receive(datas);
    QCOMPARE(column(shown, 4), QStringList({"zh Effective", "zh Invalid", "zh Unknown"}));
    QCOMPARE(shown->horizontalHeaderItem(5)->text(), "zh Update Time");
    // Names that logic compares are no texts of the interface.
    QCOMPARE(dataFolder()->text(), "Data");
    const QVariantList rows = dataFolder()->child(0)->data(dataRowsRole).toList();
    QCOMPARE(rows.at(0).toMap().value("valid").toString(), "1");
    language.reset();
    receive(datas);
    QCOMPARE(shown->horizontalHeaderItem(5)->text(), "Update Time");
}

void TestMonitoringView::tellsOfItsPagesAndOfWhatTheyShow()
{
    QStringList told;
    connect(m_view.data(), &MonitoringView::pageMade, this,
            [&](const MonitoringPage *page) { told.append("made " + page->windowTitle()); });
    connect(m_view.data(), &MonitoringView::shown, this,
            [&](const MonitoringPage *page, const LiveSource &source, const QVariantList &rows) {
                QStringList names;
                for (const QVariant &row : rows) {
                    names.append(row.toMap().value("name").toString());
                }
                told.append(QStringList{page->windowTitle(), source.project, source.box, source.address,
                                        names.join('+')}
                                .join('|'));
                QCOMPARE(page->table()->rowCount(), rows.size()); // it shows them already
            });
    connect(m_view.data(), &MonitoringView::pageClosed, this,
            [&](const MonitoringPage *page) { told.append("closed " + page->windowTitle()); });
    m_view->setBox("Gateway north", "127.0.0.2");
    showPoints({point("Ua", "1"), point("Ub", "2")});
    m_view->setBox("Gateway south", "127.0.0.3");
    receive({});
    m_view->closeTab("no such tab");
    m_view->closeTab("Meter 1");
    QCOMPARE(told,
             QStringList({"made Meter 1", "Meter 1|Riverside|Gateway north|127.0.0.2|Ua+Ub",
                          "Meter 1|Riverside|Gateway south|127.0.0.3|", "closed Meter 1"}));
}

void TestMonitoringView::tellsWhichPageIsInFront()
{
    QVERIFY(!m_view->currentPage());
    m_tabs->addTab(new QWidget, "other");
    QVERIFY(!m_view->currentPage());
    showPoints({point("Ua", "1")});
    showPoints({point("Ua", "1")}, "Meter 2");
    m_view->showTab("Meter 2");
    QCOMPARE(m_view->currentPage()->windowTitle(), "Meter 2");
}

void TestMonitoringView::tellsWhoseSessionHasEnded()
{
    const QSignalSpy ended(m_view.data(), &MonitoringView::sessionEnded);
    m_view->endSession(QString()); // one with no Box
    m_view->setBox("Gateway north", "127.0.0.2");
    m_view->setBox("Gateway south", "127.0.0.3"); // reported last, and goes on
    m_view->endSession("127.0.0.2");
    QCOMPARE(ended, (QList<QVariantList>{{"127.0.0.2"}}));
}

QTEST_MAIN(TestMonitoringView)
#include "tst_monitoringview.moc"
