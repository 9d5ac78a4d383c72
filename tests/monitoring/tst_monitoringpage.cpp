#include "messages.h"
#include "modaldialogs.h"
#include "modelwatch.h"
#include "monitoring/monitoringpage.h"
#include "monitoring/monitoringtable.h"
#include "run.h"

#include <QCheckBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QHeaderView>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QTableWidget>
#include <QtTest>

#include <cmath>

namespace {

QVariantMap point(const QString &name, const QString &addr, const QString &valid = "1")
{
    return {{"name", name}, {"addr", addr}, {"dataType", "float"}, {"value", "1.5"}, {"valid", valid}};
}

QVariantList feeders()
{
    return {point("Ua", "40001"), point("Ub", "40003"), point("Ia", "50001", "0")};
}

const QString reportTime = "2026-01-31 10:00:00";

} // namespace

// The filter, the menu and the colours around a table of live values.
class TestMonitoringPage : public QObject
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { m_page.reset(); }

    void filterShowsMatchingRows_data();
    void filterShowsMatchingRows();
    void filterHoldsThroughReportsAndSorting();
    void pointsThatComeLaterAreFiltered();
    void emptiedFilterShowsAll();
    void rowsThatAreNotValidAreColoured_data();
    void rowsThatAreNotValidAreColoured();
    void rowsThatAreNotValidAreReadableOnADarkDesktop();
    void tellsWhoseValuesItShows_data();
    void tellsWhoseValuesItShows();
    void namesAreNoMarkUp();
    void agesByItself();
    void hiddenPageIsBroughtUpToDateWhenShown();
    void overdueReportMakesTheValuesGrey();
    void endOfTheSessionMakesTheValuesGrey();
    void valuesWithoutABoxOnlyAge();
    void anotherBoxHasItsOwnPeriods();
    void greyValuesAreReadable_data();
    void greyValuesAreReadable();
    void changedValueIsMarkedForAMoment();
    void whatHasNotChangedIsNotMarked();
    void checkShowsOnlyWhatIsNotValid();
    void thirdClickUndoesTheSort();
    void columnsFitANarrowPage();
    void widthsOfTheUserStay();
    void valuesAreNotTypedOver();
    void csvHoldsWhatIsShown();
    void csvQuotesWhatWouldTearIt();
    void menuExportsIntoTheChosenFile();
    void exportThatFailsIsTold();
    void pageMayDieBelowItsFileDialog();

private:
    void openPage();
    QStringList shownNames() const;
    // A cell of a row, by default the value of the first one, as it is drawn.
    QImage drawn(int row = 0, int column = MonitoringTable::Value) const;
    QImage drawnValue() const { return drawn(); }
    // The colour behind the value of a row.
    QColor ground(int row = 0) const
    {
        const QImage picture = drawn(row);
        return picture.pixelColor(picture.width() - 4, 3);
    }
    QString line() const { return m_page->findChild<QLabel *>("source")->text(); }
    // As it comes in a session with a Box, at m_now.
    void live(const QVariantList &rows, const QString &box = "Gateway north")
    {
        m_page->showReport(rows, reportTime, {"Riverside", box, "127.0.0.2"});
    }
    void clickHeader(int column) const;
    void filter(const QString &text) const { m_filter->setText(text); }
    void report(const QVariantList &rows) const { MonitoringTable::update(m_table, rows, reportTime); }
    // Picks the export from the menu and gives the path in the file dialog.
    void exportTo(const QString &path);

    std::unique_ptr<MonitoringPage> m_page;
    QTableWidget *m_table = nullptr;
    QLineEdit *m_filter = nullptr;
    qint64 m_now = 0; // ms, the page's clock
};

void TestMonitoringPage::init()
{
    m_now = 5000;
    openPage();
    report(feeders());
    m_page->resize(700, 300);
    m_page->show();
}

void TestMonitoringPage::openPage()
{
    m_page = std::make_unique<MonitoringPage>();
    m_page->setClock([this] { return m_now; });
    m_table = m_page->findChild<QTableWidget *>();
    m_filter = m_page->findChild<QLineEdit *>("filter");
    watchModel(m_table->model());
}

QStringList TestMonitoringPage::shownNames() const
{
    QStringList names;
    for (int row = 0; row < m_table->rowCount(); ++row) {
        if (!m_table->isRowHidden(row)) {
            names.append(m_table->item(row, MonitoringTable::Name)->text());
        }
    }
    return names;
}

QImage TestMonitoringPage::drawn(int row, int column) const
{
    m_table->clearSelection();
    const QRect cell = m_table->visualItemRect(m_table->item(row, column));
    return m_table->viewport()->grab(cell).toImage();
}

void TestMonitoringPage::clickHeader(int column) const
{
    const QHeaderView *header = m_table->horizontalHeader();
    const QPoint place(header->sectionViewportPosition(column) + 10, header->height() / 2);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, place);
}

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

void TestMonitoringPage::tellsWhoseValuesItShows_data()
{
    QTest::addColumn<QString>("project");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("address");
    QTest::addColumn<int>("age"); // s
    QTest::addColumn<QString>("told");
    const auto row = [](const char *told, const char *project, const char *box, const char *address,
                        int age) {
        QTest::newRow(told) << project << box << address << age << QString::fromUtf8(told);
    };
    const char *const riverside = "Riverside substation";
    const char *const north = "Gateway north";
    row("Riverside substation · Gateway north 127.0.0.2 · 0 s", riverside, north, "127.0.0.2", 0);
    row("Riverside substation · Gateway north 127.0.0.2 · 3 s", riverside, north, "127.0.0.2", 3);
    row("Riverside substation · 7 s", riverside, "", "", 7);
    row("Gateway north · 7 s", "", north, "", 7);
    row("10 s", "", "", "", 10);
    row("11 s · Out of date: no new report", "", "", "", 11);
    row("119 s · Out of date: no new report", "", "", "", 119);
    row("2 min · Out of date: no new report", "", "", "", 120);
    row("119 min · Out of date: no new report", "", "", "", 2 * 3600 - 1);
    row("2 h · Out of date: no new report", "", "", "", 2 * 3600);
}

void TestMonitoringPage::tellsWhoseValuesItShows()
{
    QFETCH(QString, project);
    QFETCH(QString, box);
    QFETCH(QString, address);
    QFETCH(int, age);
    const auto *source = m_page->findChild<QLabel *>("source");
    QVERIFY(!source->isVisible()); // nothing came in a report yet
    m_page->showReport(feeders(), reportTime, {project, box, address});
    QVERIFY(source->isVisible());
    QVERIFY(source->mapTo(m_page.get(), QPoint()).y() < m_table->y());
    m_now += age * 1000;
    m_page->refresh();
    QTEST(line(), "told");
}

void TestMonitoringPage::namesAreNoMarkUp()
{
    live({point("<b>Ua</b>", "40001")}, "<i>north</i>");
    QCOMPARE(m_page->findChild<QLabel *>("source")->textFormat(), Qt::PlainText);
    QCOMPARE(m_table->item(0, MonitoringTable::Name)->toolTip(), "&lt;b&gt;Ua&lt;/b&gt;");
}

void TestMonitoringPage::agesByItself()
{
    live(feeders());
    m_now += 3000;
    QTRY_COMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 3 s");
}

void TestMonitoringPage::hiddenPageIsBroughtUpToDateWhenShown()
{
    m_page->hide();
    live(feeders());
    m_now += 20000;
    m_page->show();
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 20 s · Out of date: no new report");
}

void TestMonitoringPage::overdueReportMakesTheValuesGrey()
{
    live(feeders());
    const QImage fresh = drawn(0, MonitoringTable::Name);
    const QImage freshInvalid = drawn(2, MonitoringTable::Name);
    m_now += 10000;
    m_page->refresh();
    QCOMPARE(drawn(0, MonitoringTable::Name), fresh);
    m_now += 1;
    m_page->refresh();
    QVERIFY(drawn(0, MonitoringTable::Name) != fresh);
    QVERIFY(drawn(2, MonitoringTable::Name) != freshInvalid);
    QVERIFY(m_page->findChild<QLabel *>("source")->font().bold());
    // What the cells hold stays, the filter does its work, and so does the export.
    QCOMPARE(m_table->item(0, MonitoringTable::Valid)->text(), "Effective");
    filter("Ub");
    QCOMPARE(shownNames(), QStringList("Ub"));
    QVERIFY(m_page->shownAsCsv().endsWith("\r\nUb,40003,float,1.5,Effective,2026-01-31 10:00:00\r\n"));
    filter(QString());
    live(feeders());
    QCOMPARE(drawn(0, MonitoringTable::Name), fresh);
    QCOMPARE(drawn(2, MonitoringTable::Name), freshInvalid);
    QVERIFY(!m_page->findChild<QLabel *>("source")->font().bold());
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 0 s");
}

void TestMonitoringPage::endOfTheSessionMakesTheValuesGrey()
{
    live(feeders());
    const QImage fresh = drawn(0, MonitoringTable::Name);
    m_page->endSession();
    QVERIFY(drawn(0, MonitoringTable::Name) != fresh);
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 0 s · Out of date: not connected");
    m_now += 60000;
    m_page->refresh();
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 60 s · Out of date: not connected");
    live(feeders());
    QCOMPARE(drawn(0, MonitoringTable::Name), fresh);
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 0 s");
}

void TestMonitoringPage::valuesWithoutABoxOnlyAge()
{
    m_page->endSession();
    QVERIFY(!m_page->findChild<QLabel *>("source")->isVisible());
    m_page->showReport(feeders(), reportTime, {"Riverside", QString(), QString()});
    m_page->endSession();
    QCOMPARE(line(), "Riverside · 0 s");
}

void TestMonitoringPage::anotherBoxHasItsOwnPeriods()
{
    for (int report = 0; report < 3; ++report) {
        live(feeders());
        m_now += 60000;
    }
    m_page->refresh();
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 60 s");
    live(feeders(), "Gateway south");
    m_now += 60000;
    m_page->refresh();
    QCOMPARE(line(), "Riverside · Gateway south 127.0.0.2 · 60 s · Out of date: no new report");
}

void TestMonitoringPage::greyValuesAreReadable_data()
{
    QTest::addColumn<QColor>("base");
    QTest::addColumn<QColor>("text");
    QTest::addColumn<int>("row");
    const QColor dark(0x23, 0x23, 0x23);
    const QColor pale(0xf0, 0xf0, 0xf0);
    QTest::newRow("light, valid") << QColor(Qt::white) << QColor(Qt::black) << 0;
    QTest::newRow("light, not valid") << QColor(Qt::white) << QColor(Qt::black) << 2;
    QTest::newRow("dark, valid") << dark << pale << 0;
    QTest::newRow("dark, not valid") << dark << pale << 2;
}

// As light goes: the contrast between the brightest and the darkest of a cell (WCAG 2).
static double contrastIn(const QImage &picture)
{
    const auto light = [](QRgb pixel) {
        const auto part = [](int value) {
            const double share = value / 255.0;
            return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * part(qRed(pixel)) + 0.7152 * part(qGreen(pixel)) + 0.0722 * part(qBlue(pixel));
    };
    double least = 1;
    double most = 0;
    for (int x = 2; x < picture.width() - 4; ++x) {
        for (int y = 2; y < picture.height() - 4; ++y) {
            least = qMin(least, light(picture.pixel(x, y)));
            most = qMax(most, light(picture.pixel(x, y)));
        }
    }
    return (most + 0.05) / (least + 0.05);
}

void TestMonitoringPage::greyValuesAreReadable()
{
    QFETCH(QColor, base);
    QFETCH(QColor, text);
    QFETCH(int, row);
    QPalette palette(base);
    palette.setColor(QPalette::Base, base);
    palette.setColor(QPalette::Text, text);
    m_page->setPalette(palette);
    live(feeders());
    const double fresh = contrastIn(drawn(row));
    m_page->endSession();
    const double grey = contrastIn(drawn(row));
    QVERIFY2(grey > 4.5, qPrintable(QString::number(grey)));
    QVERIFY2(grey < 0.75 * fresh, qPrintable(QString("%1 of %2").arg(grey).arg(fresh)));
}

void TestMonitoringPage::changedValueIsMarkedForAMoment()
{
    live(feeders());
    const QColor plain = ground();
    const QColor plainInvalid = ground(2);
    QVariantList rows = feeders();
    for (const int row : {0, 2}) {
        QVariantMap values = rows.at(row).toMap();
        values.insert("value", "2.5");
        rows[row] = values;
    }
    const QTableWidgetItem *cell = m_table->item(0, MonitoringTable::Value);
    live(rows);
    QVERIFY(ground() != plain);
    QVERIFY(ground(2) != plainInvalid);
    QCOMPARE(ground(1), plain);
    QVERIFY(contrastIn(drawn(2)) > 4.5);
    QCOMPARE(m_table->item(0, MonitoringTable::Value), cell);
    // The page repaints it by itself.
    QCoreApplication::processEvents();
    struct Repaints : QObject {
        int count = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } repaints;
    m_table->viewport()->installEventFilter(&repaints);
    m_now += 600;
    QTRY_VERIFY(repaints.count > 0);
    QCOMPARE(ground(), plain);
    QCOMPARE(ground(2), plainInvalid);
}

void TestMonitoringPage::whatHasNotChangedIsNotMarked()
{
    live(feeders());
    const QColor plain = ground();
    live(feeders() << point("New", "60001"));
    QCOMPARE(ground(0), plain);
    QCOMPARE(ground(3), plain); // it has only come
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
    QVERIFY(m_table->rowHeight(0) >= 2 * m_table->fontMetrics().lineSpacing()); // of a name
    QCOMPARE(m_table->item(0, MonitoringTable::Name)->toolTip(), "Feeder 0 voltage");
    QCOMPARE(m_table->horizontalHeaderItem(MonitoringTable::DataType)->toolTip(), "DataType");
    // Where not even that would do, names are not cut short for nothing.
    m_page->resize(300, 300);
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

QTEST_MAIN(TestMonitoringPage)
#include "tst_monitoringpage.moc"
