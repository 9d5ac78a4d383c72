#include "pagetest.h"

#include <QTextDocument>
#include <QTextDocumentFragment>

#include <cmath>

// Whose values a live page shows, how old they are, and how that looks.
class TestLivePage : public PageTest
{
    Q_OBJECT
private slots:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void tellsWhoseValuesItShows_data();
    void tellsWhoseValuesItShows();
    void namesAreNoMarkUp_data();
    void namesAreNoMarkUp();
    void agesByItself();
    void hiddenPageIsBroughtUpToDateWhenShown();
    void overdueReportMakesTheValuesGrey();
    void endOfTheSessionMakesTheValuesGrey();
    void silentBoxMakesTheValuesGrey();
    void valuesWithoutABoxOnlyAge();
    void anotherBoxHasItsOwnPeriods();
    void sourcesThatTakeTurnsHaveTheirOwnPeriods();
    void numbersStandAtTheRight();
    void oldValuesDifferInShape();
    void greyValuesAreReadable_data();
    void greyValuesAreReadable();
    void changedValueIsMarkedForAMoment();
    void markGoesWhateverTheTimer();
    void whatHasNotChangedIsNotMarked();
    void longLineLeavesTheTableInPlace();
};

void TestLivePage::tellsWhoseValuesItShows_data()
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
    row("Riverside substation · Gateway north 127.0.0.2 · 0 s ago", riverside, north, "127.0.0.2", 0);
    row("Riverside substation · Gateway north 127.0.0.2 · 3 s ago", riverside, north, "127.0.0.2", 3);
    row("Riverside substation · 7 s ago", riverside, "", "", 7);
    row("Gateway north · 7 s ago", "", north, "", 7);
    row("10 s ago", "", "", "", 10);
    row("Out of date: no new report · 11 s ago", "", "", "", 11);
    row("Out of date: no new report · 119 s ago", "", "", "", 119);
    row("Out of date: no new report · 2 min ago", "", "", "", 120);
    row("Out of date: no new report · 119 min ago", "", "", "", 2 * 3600 - 1);
    row("Out of date: no new report · 2 h ago", "", "", "", 2 * 3600);
}

void TestLivePage::tellsWhoseValuesItShows()
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

void TestLivePage::namesAreNoMarkUp_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a tag") << "<b>Ua</b>";
    QTest::newRow("an ampersand") << "P & Q";
    QTest::newRow("an escape") << "P &lt; Q";
}

void TestLivePage::namesAreNoMarkUp()
{
    QFETCH(QString, name);
    live({point(name, "40001")}, "<i>north</i>");
    QCOMPARE(m_page->findChild<QLabel *>("source")->textFormat(), Qt::PlainText);
    const QString tip = m_table->item(0, MonitoringTable::Name)->toolTip();
    QCOMPARE(Qt::mightBeRichText(tip) ? QTextDocumentFragment::fromHtml(tip).toPlainText() : tip, name);
}

void TestLivePage::agesByItself()
{
    live(feeders());
    m_now += 3000;
    QTRY_COMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 3 s ago");
}

void TestLivePage::hiddenPageIsBroughtUpToDateWhenShown()
{
    m_page->hide();
    live(feeders());
    m_now += 20000;
    m_page->show();
    QCOMPARE(line(), "Out of date: no new report · Riverside · Gateway north 127.0.0.2 · 20 s ago");
}

void TestLivePage::overdueReportMakesTheValuesGrey()
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
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 0 s ago");
}

void TestLivePage::endOfTheSessionMakesTheValuesGrey()
{
    live(feeders());
    const QImage fresh = drawn(0, MonitoringTable::Name);
    m_page->endSession();
    QVERIFY(drawn(0, MonitoringTable::Name) != fresh);
    QCOMPARE(line(), "Out of date: not connected · Riverside · Gateway north 127.0.0.2 · 0 s ago");
    m_now += 60000;
    m_page->refresh();
    QCOMPARE(line(), "Out of date: not connected · Riverside · Gateway north 127.0.0.2 · 60 s ago");
    live(feeders());
    QCOMPARE(drawn(0, MonitoringTable::Name), fresh);
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 0 s ago");
}

void TestLivePage::silentBoxMakesTheValuesGrey()
{
    live(feeders());
    const QImage fresh = drawn(0, MonitoringTable::Name);
    const QString current = line();
    m_page->setAnswering(true);
    QCOMPARE(line(), current);
    m_page->setAnswering(false);
    QVERIFY(drawn(0, MonitoringTable::Name) != fresh);
    QCOMPARE(line(), "Out of date: the Box does not answer · " + current);
    // It reports again, or answers again.
    live(feeders());
    QCOMPARE(line(), current);
    m_page->setAnswering(false);
    m_page->setAnswering(true);
    QCOMPARE(line(), current);
    QCOMPARE(drawn(0, MonitoringTable::Name), fresh);
    // Neither silence nor an answer of another session changes that this one has ended.
    m_page->endSession();
    for (const bool answers : {false, true}) {
        m_page->setAnswering(answers);
        QCOMPARE(line(), "Out of date: not connected · " + current);
    }
}

void TestLivePage::valuesWithoutABoxOnlyAge()
{
    m_page->endSession();
    QVERIFY(!m_page->findChild<QLabel *>("source")->isVisible());
    m_page->showReport(feeders(), reportTime, {"Riverside", QString(), QString()});
    m_page->setAnswering(false);
    m_page->endSession();
    QCOMPARE(line(), "Riverside · 0 s ago");
}

void TestLivePage::anotherBoxHasItsOwnPeriods()
{
    for (int report = 0; report < 3; ++report) {
        live(feeders());
        m_now += 60000;
    }
    m_page->refresh();
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 60 s ago");
    live(feeders(), "Gateway south");
    m_now += 60000;
    m_page->refresh();
    QCOMPARE(line(), "Out of date: no new report · Riverside · Gateway south 127.0.0.2 · 60 s ago");
}

void TestLivePage::sourcesThatTakeTurnsHaveTheirOwnPeriods()
{
    for (int report = 0; report < 2; ++report) {
        live(feeders(), "Gateway south");
        m_now += 20000;
        live(feeders());
        m_now += 40000;
    }
    m_page->refresh();
    QCOMPARE(line(), "Riverside · Gateway north 127.0.0.2 · 40 s ago");
    m_now += 140001;
    m_page->refresh();
    QCOMPARE(line(), "Out of date: no new report · Riverside · Gateway north 127.0.0.2 · 3 min ago");
    live(feeders(), "Gateway south");
    m_now += 60000;
    m_page->refresh();
    QCOMPARE(line(), "Riverside · Gateway south 127.0.0.2 · 60 s ago");
}

// Where there is ink in a cell: black, the rest white, whatever the colours.
static QImage inkIn(const QImage &picture)
{
    const QRgb ground = picture.pixel(picture.width() / 2, 2);
    QImage ink(picture.size(), QImage::Format_Mono);
    ink.fill(0);
    for (int x = 0; x < picture.width() - 1; ++x) { // without the grid
        for (int y = 0; y < picture.height() - 1; ++y) {
            if (qAbs(qGray(picture.pixel(x, y)) - qGray(ground)) > 60) {
                ink.setPixel(x, y, 1);
            }
        }
    }
    return ink;
}

static int firstInk(const QImage &ink)
{
    for (int x = 0; x < ink.width(); ++x) {
        for (int y = 0; y < ink.height(); ++y) {
            if (ink.pixelIndex(x, y) == 1) {
                return x;
            }
        }
    }
    return -1;
}

void TestLivePage::numbersStandAtTheRight()
{
    live({point("Ua", "1", "1"), point("State", "open", "1")});
    m_table->setColumnWidth(MonitoringTable::Value, 200);
    m_table->item(0, MonitoringTable::Value)->setText("7");
    m_table->item(1, MonitoringTable::Value)->setText("open");
    QVERIFY(firstInk(inkIn(drawn(0))) > 100);
    const int text = firstInk(inkIn(drawn(1)));
    QVERIFY(text >= 0 && text < 20);
}

// Grey alone is hard to tell from black in bad light.
void TestLivePage::oldValuesDifferInShape()
{
    live(feeders());
    const QImage fresh = inkIn(drawn());
    QCOMPARE(inkIn(drawn()), fresh);
    m_page->endSession();
    QVERIFY(inkIn(drawn()) != fresh);
}

void TestLivePage::greyValuesAreReadable_data()
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

void TestLivePage::greyValuesAreReadable()
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

void TestLivePage::changedValueIsMarkedForAMoment()
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

// A timer that is early by the clock, as one in steps of some ms may be.
void TestLivePage::markGoesWhateverTheTimer()
{
    QElapsedTimer timer;
    timer.start();
    m_page->setClock([&timer] { return timer.elapsed() * 4 / 5; });
    struct Repaints : QObject {
        const QElapsedTimer *timer;
        qint64 last = 0; // by the page's clock
        bool eventFilter(QObject *, QEvent *event) override
        {
            last = event->type() == QEvent::Paint ? timer->elapsed() * 4 / 5 : last;
            return false;
        }
    } repaints;
    repaints.timer = &timer;
    live(feeders());
    QVariantMap changed = feeders().first().toMap();
    changed.insert("value", "2.5");
    live({changed, feeders().at(1), feeders().at(2)});
    m_table->viewport()->installEventFilter(&repaints);
    QTRY_VERIFY_WITH_TIMEOUT(repaints.last >= 600, 2000);
}

void TestLivePage::whatHasNotChangedIsNotMarked()
{
    live(feeders());
    const QColor plain = ground();
    live(feeders() << point("New", "60001"));
    QCOMPARE(ground(0), plain);
    QCOMPARE(ground(3), plain); // it has only come
}

void TestLivePage::longLineLeavesTheTableInPlace()
{
    live(feeders(), "Gateway of the northern switchyard");
    m_page->resize(m_page->minimumSizeHint().width(), 300);
    QCoreApplication::processEvents();
    const QRect place = m_table->geometry();
    const int least = m_page->minimumSizeHint().width();
    auto *source = m_page->findChild<QLabel *>("source");
    const QImage calm = source->grab().toImage();
    m_page->setWanted("Riverside substation");
    m_page->endSession();
    QCoreApplication::processEvents();
    QCOMPARE(m_table->geometry(), place);
    QCOMPARE(m_page->minimumSizeHint().width(), least);
    QVERIFY(source->sizeHint().width() > source->width());
    QVERIFY(source->grab().toImage() != calm); // what is new stands where there is room
    QCOMPARE(source->toolTip().section('\n', 0, 0), line());
    QVERIFY2(line().startsWith("NOT of 'Riverside substation', whose node is selected · Out of date: "),
             qPrintable(line()));
}

QTEST_MAIN(TestLivePage)
#include "tst_livepage.moc"
