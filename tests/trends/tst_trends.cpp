#include "trends/figuremodel.h"
#include "trends/figuretable.h"
#include "trendstest.h"
#include "widgets/quietline.h"

#include <QLineEdit>
#include <QPointer>

// The windows of trends that live pages open, and what they get from the history.
class TestTrends : public TrendsTest
{
    Q_OBJECT
private slots:
    void initTestCase() { QGuiApplication::setQuitOnLastWindowClosed(false); }
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void lateTrendShowsWhatCameBefore();
    void trendIsOfTheSelectedRowsThatAreShown();
    void trendWithoutAPageIsEmpty();
    void keysOpenWhatTheyName_data();
    void keysOpenWhatTheyName();
    void toolsAreNamedAndSmall();
    void menuAddsToOneOfSeveralWindows();
    void menuWithoutASelectionOffersNoTrend();
    void pointsBelongToTheSourceThatShowedLast();
    void windowsNameTheirSources();
    void curvesEndWhereAnotherBoxReports();
    void droppedRowsAreAdded();
    void onlyTablesMayBeDropped_data();
    void onlyTablesMayBeDropped();
    void changedTypeIsShown();
    void closedPageIsForgotten();
    void closedPageStaysForTheCurvesOfAWindow();
    void endOfTheSessionBreaksTheCurves();
    void endOfASessionLeavesOtherBoxes();
    void windowsCloseWithTheMainWindow();
    void windowsMayDieBeforeTheMainWindow();
};

void TestTrends::lateTrendShowsWhatCameBefore()
{
    const MonitoringPage *shown = openPage({point("Ua", "1"), point("Ub", "2")});
    for (const QString &value : {QString("3"), QString("4"), QString("5")}) {
        receive({point("Ua", value), point("Ub", "2", "0")});
    }
    select(shown, {0});
    RUN(press(shown, "trendTool"));
    QCOMPARE(windows().size(), 1);
    const TrendWindow *window = windows().first();
    QVERIFY(window->isVisible() && window->isWindow());
    QCOMPARE(namesOf(window), QStringList("Ua"));
    const Point traced = window->points().first();
    QVERIFY(traced.id == riverside("Ua"));
    QCOMPARE(traced.address, "@Ua");
    QCOMPARE(traced.type, "float");
    QCOMPARE(samplesOf(window->source(), traced.id), QStringList({"1", "3", "4", "5"}));
    QCOMPARE(samplesOf(window->source(), riverside("Ub")).mid(1),
             QStringList({"state 0", "state 0", "state 0"}));
}

void TestTrends::trendIsOfTheSelectedRowsThatAreShown()
{
    const MonitoringPage *shown =
        openPage({point("c", "1"), point("a", "2"), point("b", "3"), point("x", "4")});
    shown->table()->sortByColumn(0, Qt::AscendingOrder);
    shown->findChild<QLineEdit *>("filter")->setText("@");
    shown->table()->selectAll();
    shown->table()->hideRow(1);
    m_trends->showTrend();
    QCOMPARE(namesOf(windows().first()), QStringList({"a", "c", "x"}));
}

void TestTrends::trendWithoutAPageIsEmpty()
{
    m_trends->showTrend();
    QCOMPARE(windows().size(), 1);
    QCOMPARE(namesOf(windows().first()), QStringList());
    m_trends->record(); // there is nothing to record, and nothing to be asked
}

void TestTrends::keysOpenWhatTheyName_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<QString>("dialog"); // none for a trend
    const int control = Qt::ControlModifier;
    QTest::newRow("trend") << int(Qt::Key_T) << control << QString();
    QTest::newRow("record") << int(Qt::Key_R) << int(Qt::ControlModifier | Qt::ShiftModifier) << "Record";
    QTest::newRow("open") << int(Qt::Key_O) << int(Qt::ControlModifier | Qt::ShiftModifier)
                          << "Open Recording";
}

void TestTrends::keysOpenWhatTheyName()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(QString, dialog);
    openPage({point("Ua", "1")});
    if (!dialog.isEmpty()) {
        m_dialogs->expect([dialog](QWidget *shown) {
            QCOMPARE(shown->windowTitle(), dialog);
            shown->close();
        });
    }
    QTest::keyClick(m_window.get(), Qt::Key(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(windows().size(), dialog.isEmpty() ? 1 : 0);
}

void TestTrends::toolsAreNamedAndSmall()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    QStringList told;
    for (const char *name : {"trendTool", "recordTool"}) {
        const auto *tool = shown->findChild<QToolButton *>(QLatin1String(name));
        told.append(tool->accessibleName() + QLatin1Char('|') + tool->toolTip());
        QVERIFY(tool->text().isEmpty() && !tool->icon().isNull());
        QVERIFY2(tool->width() <= 32, qPrintable(QString::number(tool->width())));
        QVERIFY(tool->focusPolicy() & Qt::TabFocus);
    }
    QCOMPARE(told,
             QStringList({"Trend|Trend of the selected rows (Ctrl+T)",
                          "Record|Record all values of this page (Ctrl+Shift+R)"}));
}

void TestTrends::menuAddsToOneOfSeveralWindows()
{
    const MonitoringPage *shown = openPage({point("Ua", "1"), point("Ub", "2")});
    select(shown, {0});
    chooseInMenu(shown, "Trend");
    m_trends->showTrend();
    QCOMPARE(windows().size(), 2);
    select(shown, {1});
    const QString first = "Add to " + windows().at(0)->windowTitle();
    const QString second = "Add to " + windows().at(1)->windowTitle();
    QVERIFY2(first != second, qPrintable(first)); // although both show the same Standard
    QCOMPARE(chooseInMenu(shown, second),
             QStringList({"Copy", "Trend", first, second, "Record", "Open Recording...", "Export..."}));
    QCOMPARE(namesOf(windows().at(0)), QStringList("Ua"));
    QCOMPARE(namesOf(windows().at(1)), QStringList({"Ua", "Ub"}));
}

void TestTrends::menuWithoutASelectionOffersNoTrend()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    bool isEnabled = true;
    m_dialogs->expect([&isEnabled](QWidget *menu) {
        isEnabled = menu->actions().at(1)->isEnabled();
        menu->close();
    });
    emit shown->table()->customContextMenuRequested(QPoint(5, 5));
    QVERIFY(!isEnabled);
}

void TestTrends::pointsBelongToTheSourceThatShowedLast()
{
    addProject("Hillside");
    MonitoringPage *shown = openPage({point("Ua", "1")});
    select(shown, {0});
    m_trends->showTrend();
    m_view->setBox("Gateway south", "127.0.0.3");
    for (const QString &value : {QString("7"), QString("8")}) {
        m_view->receive(report("Hillside", "Meter 1", {point("Ua", value)}));
    }
    select(shown, {0});
    chooseInMenu(shown, "Add to " + windows().first()->windowTitle());
    const QVector<Point> points = windows().first()->points();
    QCOMPARE(points.size(), 2);
    QVERIFY(points.at(0).id == riverside("Ua"));
    const PointId other{"127.0.0.3", "Hillside", "Meter 1", "Ua"};
    QVERIFY(points.at(1).id == other);
    QCOMPARE(samplesOf(history(), riverside("Ua")), QStringList("1"));
    QCOMPARE(samplesOf(history(), other), QStringList("8"));
}

static QString sourcesOf(const TrendWindow *window)
{
    const auto *line = window->findChild<QuietLine *>("sources");
    return line->isVisible() ? line->text() : QString();
}

static QStringList labelsOf(const TrendWindow *window)
{
    QStringList labels;
    for (const Curve &curve : window->findChild<FigureTable *>()->figures()->curves()) {
        labels.append(curve.label);
    }
    return labels;
}

void TestTrends::windowsNameTheirSources()
{
    const MonitoringPage *shown = openPage({point("Ua", "1"), point("Ub", "2")});
    m_trends->showTrend();
    TrendWindow *window = windows().first();
    QCOMPARE(sourcesOf(window), QString());
    select(shown, {0});
    QVERIFY(drop(shown->table(), window));
    QTRY_COMPARE(sourcesOf(window), "Riverside · Gateway north 127.0.0.2");
    QCOMPARE(labelsOf(window), QStringList("Ua"));
    m_view->endSession("127.0.0.2");
    m_view->setBox("Gateway south", "127.0.0.3");
    receive({point("Ua", "7"), point("Ub", "8")});
    QCoreApplication::processEvents();
    QCOMPARE(sourcesOf(window), "Riverside · Gateway north 127.0.0.2"); // still those curves
    select(shown, {1});
    QVERIFY(drop(shown->table(), window));
    QTRY_COMPARE(sourcesOf(window),
                 "Riverside · Gateway north 127.0.0.2; Riverside · Gateway south 127.0.0.3");
    QCOMPARE(labelsOf(window),
             QStringList({"127.0.0.2 / Riverside / Meter 1 / Ua", "127.0.0.3 / Riverside / Meter 1 / Ub"}));
    auto *table = window->findChild<FigureTable *>();
    table->selectRow(0);
    table->findChild<QAction *>("remove")->trigger();
    QCOMPARE(sourcesOf(window), "Riverside · Gateway south 127.0.0.3");
    QCOMPARE(labelsOf(window), QStringList("Ub"));
}

// Whether it has another address or the same one.
void TestTrends::curvesEndWhereAnotherBoxReports()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    select(shown, {0});
    m_trends->showTrend();
    TrendWindow *window = windows().first();
    for (const QString &address : {QString("127.0.0.2"), QString("127.0.0.3")}) {
        m_view->endSession("127.0.0.2");
        m_view->setBox("Gateway south", address);
        receive({point("Ua", "7")});
    }
    QCOMPARE(samplesOf(history(), riverside("Ua")), QStringList({"1", "state 4", "7", "state 4"}));
    const PointId other{"127.0.0.3", "Riverside", "Meter 1", "Ua"};
    QCOMPARE(samplesOf(history(), other), QStringList("7"));
    QTRY_COMPARE(sourcesOf(window), "Riverside · Gateway north, Gateway south 127.0.0.2");
}

void TestTrends::droppedRowsAreAdded()
{
    const MonitoringPage *shown = openPage({point("Ua", "1"), point("Ub", "2")});
    const MonitoringPage *other = openPage({point("Ia", "3")}, "Meter 2");
    m_trends->showTrend();
    TrendWindow *window = windows().first();
    select(shown, {1});
    QVERIFY(drop(shown->table(), window));
    QTRY_COMPARE(namesOf(window), QStringList("Ub"));
    select(other, {0});
    QVERIFY(drop(other->table(), window));
    QTRY_COMPARE(namesOf(window), QStringList({"Ub", "Ia"}));
    QTableWidget foreign(3, 3);
    foreign.selectAll();
    drop(&foreign, window);
    QCoreApplication::processEvents();
    QCOMPARE(namesOf(window), QStringList({"Ub", "Ia"}));
}

void TestTrends::onlyTablesMayBeDropped_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<bool>("taken");
    QTest::newRow("a live table") << "LiveTable" << true;
    QTest::newRow("the window's own table") << "FigureTable" << false;
    QTest::newRow("a tree") << "QTreeView" << false;
    QTest::newRow("another program") << QString() << false;
}

void TestTrends::onlyTablesMayBeDropped()
{
    QFETCH(QString, from);
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    select(shown, {0});
    m_trends->showTrend();
    TrendWindow *window = windows().first();
    const QList<QObject *> sources{shown->table(), window->findChild<FigureTable *>(), m_tree.data()};
    QObject *source = nullptr;
    for (QObject *each : sources) {
        source = from == QLatin1String(each->metaObject()->className()) ? each : source;
    }
    QCOMPARE(source == nullptr, from.isEmpty());
    QTEST(drop(source, window), "taken");
}

void TestTrends::changedTypeIsShown()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    select(shown, {0});
    m_trends->showTrend();
    QCOMPARE(windows().first()->points().first().type, "float");
    QJsonObject changed = point("Ua", "2");
    changed["dataType"] = "int16";
    receive({changed});
    QTRY_COMPARE(windows().first()->points().first().type, "int16");
}

void TestTrends::closedPageIsForgotten()
{
    openPage({point("Ua", "1")});
    openPage({point("Ua", "2")}, "Meter 2");
    m_view->setBox("Gateway south", "127.0.0.3");
    receive({point("Ua", "3")});
    m_view->closeTab("Meter 1");
    QCOMPARE(samplesOf(history(), riverside("Ua")), QStringList());
    QCOMPARE(samplesOf(history(), {"127.0.0.3", "Riverside", "Meter 1", "Ua"}), QStringList());
    QCOMPARE(samplesOf(history(), riverside("Ua", "Meter 2")), QStringList("2"));
}

void TestTrends::closedPageStaysForTheCurvesOfAWindow()
{
    const MonitoringPage *shown = openPage({point("Ua", "1"), point("Ub", "2")});
    select(shown, {1});
    m_trends->showTrend();
    m_view->closeTab("Meter 1");
    QCOMPARE(samplesOf(history(), riverside("Ua")), QStringList());
    QCOMPARE(samplesOf(history(), riverside("Ub")).mid(0, 1), QStringList("2"));
}

void TestTrends::endOfTheSessionBreaksTheCurves()
{
    openPage({point("Ua", "1")});
    m_view->endSession("127.0.0.2");
    QCOMPARE(samplesOf(history(), riverside("Ua")),
             QStringList({"1", QString("state %1").arg(int(SampleState::Ended))}));
}

void TestTrends::endOfASessionLeavesOtherBoxes()
{
    openPage({point("Ua", "1")});
    m_view->setBox("Gateway south", "127.0.0.3");
    openPage({point("Ua", "2")}, "Meter 2");
    m_view->endSession("127.0.0.2");
    QCOMPARE(samplesOf(history(), riverside("Ua")),
             QStringList({"1", QString("state %1").arg(int(SampleState::Ended))}));
    QCOMPARE(samplesOf(history(), {"127.0.0.3", "Riverside", "Meter 2", "Ua"}), QStringList("2"));
}

void TestTrends::windowsCloseWithTheMainWindow()
{
    openPage({point("Ua", "1")});
    m_trends->showTrend();
    m_trends->showTrend();
    const QPointer<TrendWindow> first(windows().at(0));
    const QPointer<TrendWindow> second(windows().at(1));
    m_window->close();
    QTRY_VERIFY(!first && !second);
    receive({point("Ua", "2")}); // the page lives on
    QCOMPARE(samplesOf(history(), riverside("Ua")), QStringList({"1", "2"}));
}

void TestTrends::windowsMayDieBeforeTheMainWindow()
{
    const MonitoringPage *shown = openPage({point("Ua", "1")});
    select(shown, {0});
    m_trends->showTrend();
    m_trends->showTrend();
    delete windows().first();
    receive({point("Ua", "2")});
    QCOMPARE(chooseInMenu(shown, QString()).filter("Add to"),
             QStringList("Add to " + windows().first()->windowTitle()));
    // The other one is open when the main window goes.
}

QTEST_MAIN(TestTrends)
#include "tst_trends.moc"
