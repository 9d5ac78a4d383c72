#include "messages.h"
#include "modaldialogs.h"
#include "pagetest.h"
#include "run.h"

#include <QCheckBox>
#include <QDir>
#include <QDrag>
#include <QFile>
#include <QFileDialog>
#include <QMenu>
#include <QMimeData>
#include <QScrollBar>
#include <QToolButton>

// The filter, the check, the menu, the sorting and the colours of a table of live values.
class TestMonitoringPage : public PageTest
{
    Q_OBJECT
private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void filterShowsMatchingRows_data();
    void filterShowsMatchingRows();
    void filterHoldsThroughReportsAndSorting();
    void pointsThatComeLaterAreFiltered();
    void emptiedFilterShowsAll();
    void rowsThatAreNotValidAreColoured_data();
    void rowsThatAreNotValidAreColoured();
    void rowsThatAreNotValidAreReadableOnADarkDesktop();
    void checkShowsOnlyWhatIsNotValid();
    void tellsHowManyRowsAFilterLeaves();
    void thirdClickUndoesTheSort();
    void columnsFitANarrowPage();
    void widthsOfTheUserStay();
    void valuesAreNotTypedOver();
    void csvHoldsWhatIsShown();
    void csvQuotesWhatWouldTearIt();
    void menuExportsIntoTheChosenFile();
    void exportThatFailsIsTold();
    void pageMayDieBelowItsFileDialog();
    void takesToolsAndLinesOfOthers();
    void takesEntriesOfOthersIntoItsMenu();
    void tellsWhatItShows();
    void selectedRowsAreDraggedOut_data();
    void selectedRowsAreDraggedOut();

private:
    // Picks the export from the menu and gives the path in the file dialog.
    void exportTo(const QString &path);
};

void TestMonitoringPage::filterShowsMatchingRows_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("shown");
    const QString ua = "Ua";
    const QString ub = "Ub";
    const QString ia = "Ia";
    QTest::newRow("name") << "Ub" << QStringList{ub};
    QTest::newRow("part of a name, other case") << "A" << QStringList{ua, ia};
    QTest::newRow("address") << "4000" << QStringList{ua, ub};
    QTest::newRow("value is not searched") << "1.5" << QStringList{};
    QTest::newRow("empty") << QString() << QStringList{ua, ub, ia};
}

void TestMonitoringPage::filterShowsMatchingRows()
{
    QFETCH(QString, text);
    QTest::keyClicks(m_filter, text);
    QTEST(shownNames(), "shown");
}

void TestMonitoringPage::filterHoldsThroughReportsAndSorting()
{
    filter("4000");
    m_table->sortByColumn(MonitoringTable::Name, Qt::AscendingOrder); // the hidden row comes to the top
    QCOMPARE(shownNames(), (QStringList{"Ua", "Ub"}));
    m_table->sortByColumn(MonitoringTable::Name, Qt::DescendingOrder);
    QCOMPARE(shownNames(), (QStringList{"Ub", "Ua"}));
    report(feeders());
    QCOMPARE(shownNames(), (QStringList{"Ub", "Ua"}));
    report({feeders().at(2), feeders().at(0)});
    QCOMPARE(shownNames(), QStringList{"Ua"});
}

void TestMonitoringPage::pointsThatComeLaterAreFiltered()
{
    filter("4000");
    report(feeders() << point("P", "60001") << point("Uc", "40005"));
    QCOMPARE(shownNames(), (QStringList{"Ua", "Ub", "Uc"}));
}

void TestMonitoringPage::emptiedFilterShowsAll()
{
    filter("nothing of this name");
    QCOMPARE(shownNames(), QStringList());
    filter(QString());
    QCOMPARE(shownNames(), (QStringList{"Ua", "Ub", "Ia"}));
}

void TestMonitoringPage::rowsThatAreNotValidAreColoured_data()
{
    QTest::addColumn<QString>("valid");
    QTest::addColumn<bool>("coloured");
    QTest::newRow("valid") << "1" << false;
    QTest::newRow("invalid") << "0" << true;
    QTest::newRow("unknown") << "Invalid" << true;
}

void TestMonitoringPage::rowsThatAreNotValidAreColoured()
{
    QFETCH(QString, valid);
    // The other validity first, so that a colour that stayed behind is seen too.
    const QString other = valid == "1" ? QString("0") : "1";
    report({point("Ua", "40001", other)});
    report({point("Ua", "40001", valid)});
    const QImage picture = drawnValue();
    const QColor background = picture.pixelColor(picture.width() - 4, 3);
    QTEST(background == QColor(0xf6, 0xe6, 0xc8), "coloured");
}

void TestMonitoringPage::rowsThatAreNotValidAreReadableOnADarkDesktop()
{
    const QPalette dark(QColor(0x30, 0x30, 0x30)); // with white texts
    QCOMPARE(dark.color(QPalette::Text), QColor(Qt::white));
    m_page->setPalette(dark);
    report({point("Ua", "40001", "0")});
    const QImage picture = drawnValue();
    int darkest = 255;
    for (int x = 2; x < picture.width() - 4; ++x) {
        for (int y = 2; y < picture.height() - 4; ++y) {
            darkest = qMin(darkest, qGray(picture.pixel(x, y)));
        }
    }
    QVERIFY2(darkest < 0x70, qPrintable(QString::number(darkest)));
}

void TestMonitoringPage::checkShowsOnlyWhatIsNotValid()
{
    auto *check = m_page->findChild<QCheckBox *>("onlyNotValid");
    QCOMPARE(check->text(), "Only not valid");
    check->click();
    QCOMPARE(shownNames(), QStringList("Ia"));
    report({point("Ua", "40001", "x"), point("Ub", "40003"), point("Ia", "50001")});
    QCOMPARE(shownNames(), QStringList("Ua"));
    report({point("Ua", "40001", "0"), point("Ub", "40003", "0"), point("Ia", "50001")});
    QCOMPARE(shownNames(), (QStringList{"Ua", "Ub"}));
    filter("Ub"); // both hold
    QCOMPARE(shownNames(), QStringList("Ub"));
    m_table->sortByColumn(MonitoringTable::Name, Qt::DescendingOrder);
    QCOMPARE(shownNames(), QStringList("Ub"));
    check->click();
    filter(QString());
    QCOMPARE(shownNames(), (QStringList{"Ub", "Ua", "Ia"}));
}

void TestMonitoringPage::tellsHowManyRowsAFilterLeaves()
{
    const auto *shown = m_page->findChild<QLabel *>("shownRows");
    const auto told = [shown] { return shown->isVisible() ? shown->text() : QString("none"); };
    QCOMPARE(told(), "none");
    filter("4000");
    QCOMPARE(told(), "2 of 3");
    filter("no such point");
    QCOMPARE(told(), "0 of 3");
    report({point("Ua", "40001"), point("Ub", "40003"), point("Ia", "50001"), point("Ib", "50003")});
    QCOMPARE(told(), "0 of 4");
    filter(QString());
    QCOMPARE(told(), "none");
}

void TestMonitoringPage::thirdClickUndoesTheSort()
{
    const QStringList arrived{"Ua", "Ub", "Ia"};
    m_table->selectRow(1);
    clickHeader(MonitoringTable::Name);
    QCOMPARE(shownNames(), (QStringList{"Ia", "Ua", "Ub"}));
    report(feeders());
    clickHeader(MonitoringTable::Name);
    QCOMPARE(shownNames(), (QStringList{"Ub", "Ua", "Ia"}));
    report(feeders());
    clickHeader(MonitoringTable::Name);
    QCOMPARE(shownNames(), arrived);
    QCOMPARE(m_table->selectedItems().first()->text(), "Ub");
    QVERIFY(m_table->isSortingEnabled());
    report(feeders() << point("Aa", "1"));
    QCOMPARE(shownNames(), arrived + QStringList("Aa"));

    // It begins anew, and another header begins its own.
    clickHeader(MonitoringTable::Name);
    QCOMPARE(shownNames(), (QStringList{"Aa", "Ia", "Ua", "Ub"}));
    clickHeader(MonitoringTable::Name);
    clickHeader(MonitoringTable::Addr);
    QCOMPARE(shownNames(), (QStringList{"Aa", "Ua", "Ub", "Ia"}));
    clickHeader(MonitoringTable::Name);
    QCOMPARE(shownNames(), (QStringList{"Aa", "Ia", "Ua", "Ub"}));
}

void TestMonitoringPage::columnsFitANarrowPage()
{
    QVariantList rows;
    for (int feeder = 0; feeder < 30; ++feeder) {
        rows.append(point(QString("Feeder %1 voltage").arg(feeder), QString::number(40001 + feeder)));
    }
    openPage();
    QFont font = m_page->font();
    font.setPointSize(9);
    m_page->setFont(font);
    m_page->resize(1000, 300);
    m_page->show();
    live(rows);
    const int full = m_table->columnWidth(MonitoringTable::Name);
    const int oneLine = m_table->rowHeight(0);
    const int title = m_table->columnWidth(MonitoringTable::DataType);
    const int lack = full * 2 / 5;
    const int around = m_page->width() - m_table->width() + 2 * m_table->frameWidth()
        + m_table->verticalScrollBar()->sizeHint().width();
    m_page->resize(m_table->horizontalHeader()->length() - lack + around, 300);
    QTRY_COMPARE(m_table->horizontalScrollBar()->maximum(), 0);
    QCOMPARE(m_table->columnWidth(MonitoringTable::UpdateTime), 180);
    QVERIFY(m_table->columnWidth(MonitoringTable::DataType) < title);
    QVERIFY(m_table->columnWidth(MonitoringTable::Name) < full);
    QVERIFY(m_table->columnWidth(MonitoringTable::Name) >= full * 3 / 5);
    // What is cut goes on below, and has room there.
    const auto *view = static_cast<const QAbstractItemView *>(m_table);
    QVERIFY(m_table->rowHeight(0) > oneLine);
    QVERIFY(m_table->rowHeight(0) >= view->sizeHintForRow(0));
    QCOMPARE(m_table->item(0, MonitoringTable::Name)->toolTip(), "Feeder 0 voltage");
    QCOMPARE(m_table->horizontalHeaderItem(MonitoringTable::DataType)->toolTip(), "DataType");
    // Where not even that would do for all columns, the values at least are seen.
    m_page->resize(300, 300);
    QVERIFY(m_table->columnWidth(MonitoringTable::Name) < full);
    QVERIFY(m_table->columnViewportPosition(MonitoringTable::Valid) <= m_table->viewport()->width());
    // And if not these, names are not cut short for nothing.
    m_page->resize(160, 300);
    QCOMPARE(m_table->rowHeight(0), oneLine);
    QCOMPARE(m_table->columnWidth(MonitoringTable::Name), full);
    m_page->resize(1000, 300);
    QCOMPARE(m_table->columnWidth(MonitoringTable::DataType), title);
}

void TestMonitoringPage::widthsOfTheUserStay()
{
    openPage();
    m_page->show();
    live(feeders());
    m_table->setColumnWidth(MonitoringTable::Name, 234);
    m_page->resize(540, 300);
    live(feeders());
    m_page->resize(1000, 300);
    QCOMPARE(m_table->columnWidth(MonitoringTable::Name), 234);
}

void TestMonitoringPage::valuesAreNotTypedOver()
{
    m_table->setCurrentCell(0, MonitoringTable::Value);
    QTest::keyClick(m_table, Qt::Key_F2);
    QTest::keyClicks(m_table, "9");
    QTest::mouseDClick(m_table->viewport(), Qt::LeftButton, {},
                       m_table->visualItemRect(m_table->currentItem()).center());
    QVERIFY(!m_table->viewport()->findChild<QLineEdit *>());
}

void TestMonitoringPage::csvHoldsWhatIsShown()
{
    filter("4000");
    QCOMPARE(m_page->shownAsCsv(),
             QByteArray("\xef\xbb\xbf"
                        "Name,Addr,DataType,Value,Valid,Update Time\r\n"
                        "Ua,40001,float,1.5,Effective,2026-01-31 10:00:00\r\n"
                        "Ub,40003,float,1.5,Effective,2026-01-31 10:00:00\r\n"));
}

void TestMonitoringPage::csvQuotesWhatWouldTearIt()
{
    report({point("a,b", "say \"x\""), point("two\nlines", "线路"), point("c", "carriage\rreturn")});
    const QByteArray rest = ",float,1.5,Effective,2026-01-31 10:00:00\r\n";
    const QByteArray csv = m_page->shownAsCsv();
    QCOMPARE(csv.mid(csv.indexOf("\r\n") + 2),
             "\"a,b\",\"say \"\"x\"\"\"" + rest + "\"two\nlines\",\xe7\xba\xbf\xe8\xb7\xaf" + rest
                 + "c,\"carriage\rreturn\"" + rest);
}

void TestMonitoringPage::exportTo(const QString &path)
{
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *menu) {
        QCOMPARE(menu->actions().size(), 2);
        QCOMPARE(menu->actions().first()->text(), "Copy");
        qobject_cast<QMenu *>(menu)->setActiveAction(menu->actions().last());
        QTest::keyClick(menu, Qt::Key_Return);
    });
    dialogs.expect([path](QWidget *widget) {
        auto *dialog = qobject_cast<QFileDialog *>(widget);
        QCOMPARE(dialog->findChild<QLineEdit *>("fileNameEdit")->text(), "Relay.csv");
        dialog->setOption(QFileDialog::DontConfirmOverwrite);
        dialog->selectFile(path);
        static_cast<QDialog *>(dialog)->done(QDialog::Accepted);
    });
    m_page->setWindowTitle("Relay");
    emit m_table->customContextMenuRequested(QPoint(5, 5));
    QCOMPARE(dialogs.pending(), 0);
}

void TestMonitoringPage::menuExportsIntoTheChosenFile()
{
    const QString path = QDir::current().filePath("values.csv");
    RUN(exportTo(path));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), m_page->shownAsCsv());
}

void TestMonitoringPage::exportThatFailsIsTold()
{
    QVERIFY(QDir().mkpath("folder/values.csv"));
    const QString path = QDir::current().filePath("folder/values.csv");
    Messages messages;
    messages.expect();
    RUN(exportTo(path));
    QCOMPARE(messages.told(),
             QStringList{QString("Export Values|The file %1 could not be written.").arg(path)});
}

void TestMonitoringPage::pageMayDieBelowItsFileDialog()
{
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *menu) {
        qobject_cast<QMenu *>(menu)->setActiveAction(menu->actions().last());
        QTest::keyClick(menu, Qt::Key_Return);
    });
    dialogs.expect([this](QWidget *) { m_page.reset(); });
    emit m_table->customContextMenuRequested(QPoint(5, 5));
    QCOMPARE(dialogs.pending(), 0);
    QVERIFY(!m_page);
}

void TestMonitoringPage::takesToolsAndLinesOfOthers()
{
    auto *tool = new QToolButton;
    auto *line = new QLabel("a line");
    m_page->addTool(tool);
    m_page->addLine(line);
    QTRY_VERIFY(tool->x() >= m_page->findChild<QCheckBox *>("onlyNotValid")->geometry().right());
    QVERIFY(tool->geometry().intersects(QRect(0, m_filter->y(), m_page->width(), m_filter->height())));
    QVERIFY(line->y() >= m_filter->geometry().bottom());
    QVERIFY(m_table->y() >= line->geometry().bottom());
    tool->setFocusPolicy(Qt::TabFocus);
    QCOMPARE(m_page->findChild<QCheckBox *>("onlyNotValid")->nextInFocusChain(), tool);
}

void TestMonitoringPage::takesEntriesOfOthersIntoItsMenu()
{
    connect(m_page.get(), &MonitoringPage::menuOpening, this, [](QMenu *menu) { menu->addAction("mine"); });
    ModalDialogs dialogs;
    QStringList entries;
    dialogs.expect([&entries](QWidget *menu) {
        for (const QAction *action : menu->actions()) {
            entries.append(action->text());
        }
        menu->close();
    });
    emit m_table->customContextMenuRequested(QPoint(5, 5));
    QCOMPARE(entries, QStringList({"Copy", "mine", "Export..."}));
}

void TestMonitoringPage::tellsWhatItShows()
{
    live(feeders());
    QCOMPARE(m_page->table(), m_table);
    QCOMPARE(m_page->source().project, "Riverside");
    live(feeders(), "Gateway south");
    QCOMPARE(m_page->source().box, "Gateway south");
    QCOMPARE(m_page->source().address, "127.0.0.2");
}

void TestMonitoringPage::selectedRowsAreDraggedOut_data()
{
    QTest::addColumn<bool>("isSelected"); // where the drag begins
    QTest::newRow("what is selected is dragged") << true;
    QTest::newRow("elsewhere a drag selects") << false;
}

void TestMonitoringPage::selectedRowsAreDraggedOut()
{
    QFETCH(bool, isSelected);
    m_table->item(0, MonitoringTable::Value)->setSelected(isSelected);
    const auto placeOf = [this](int row) {
        return m_table->visualItemRect(m_table->item(row, MonitoringTable::Value)).center();
    };
    QTest::mousePress(m_table->viewport(), Qt::LeftButton, {}, placeOf(0));
    for (const QPoint &place : {placeOf(1), placeOf(1) + QPoint(0, 1)}) {
        QMouseEvent move(QEvent::MouseMove, place, Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_table->viewport(), &move);
    }
    const auto *drag = m_table->findChild<QDrag *>(); // it goes with the next events
    QCOMPARE(drag != nullptr, isSelected);
    if (drag) {
        QCOMPARE(drag->source(), m_table);
        QCOMPARE(drag->supportedActions(), Qt::CopyAction); // else who takes the rows would remove them
        QVERIFY(!drag->mimeData()->formats().isEmpty());
    }
    QTest::mouseRelease(m_table->viewport(), Qt::LeftButton, {}, placeOf(1));
    QCOMPARE(m_table->selectedItems().size(), isSelected ? 1 : 2);
}

QTEST_MAIN(TestMonitoringPage)
#include "tst_monitoringpage.moc"
