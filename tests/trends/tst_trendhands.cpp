#include "fakesource.h"
#include "files.h"
#include "history/history.h"
#include "messages.h"
#include "modaldialogs.h"
#include "run.h"
#include "trends/figuremodel.h"
#include "trends/figuretable.h"
#include "trends/readout.h"
#include "trends/trendfeed.h"
#include "trends/trendplot.h"
#include "trends/trendwindow.h"
#include "widgets/quietline.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDateTime>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QSvgRenderer>
#include <QToolButton>
#include <QtTest>

// What the user does in the window of a trend, by mouse and by keys, and what comes out of it.
class TestTrendHands : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void cleanup();

    void wheelZoomsAtThePointer();
    void dragZoomsIntoTheRectangle();
    void shiftAndMiddleButtonPan_data();
    void shiftAndMiddleButtonPan();
    void keysMoveTheView_data();
    void keysMoveTheView();
    void listChoosesTheSpan();
    void followsWhatComes();
    void recordingHasNoPresent();
    void sampleAheadOfTheClockIsShown();
    void readoutTellsTheSampleBefore();
    void keysMoveTheReadout();
    void markersTellDifferences();
    void markerIsDragged();
    void toolsAskOthers();
    void recordingLineStandsBelowTheTools();
    void takesNoDropsButThoseOfTables();
    void addsPointsOfTheSource();
    void copiesPictureAndFigures();
    void savesAPicture_data();
    void savesAPicture();
    void savesValuesOnScreen();
    void tellsThatAPictureWasNotSaved();
    void silentSourceKeepsTheWindowAlive();
    void sourceThatDiesIsTold();
    void failureIsTold();
    void closesByKey();
    void historyKeepsThePointsOfTheWindow();

private:
    void open(bool growing = false);
    void redrawn();
    QWidget *canvas() const { return m_plot->canvas(); }
    // What is on screen, in seconds since the start.
    QVector<double> screen() const;
    void press(int key, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void point(qint64 second);
    QToolButton *tool(const char *name) const
    {
        return m_window->findChild<QToolButton *>(QLatin1String(name));
    }
    QStringList readout() const { return m_window->findChild<Readout *>()->lines(); }
    QString cell(int row, FigureModel::Column column) const;

    std::unique_ptr<FakeSource> m_source;
    QPointer<TrendWindow> m_window;
    TrendPlot *m_plot = nullptr;
    PointId m_voltage;
};

namespace {

constexpr qint64 start = 1763800000000; // ms

Sample valid(double second, double number)
{
    return {start + qint64(second * 1000), number, SampleState::Valid, QString()};
}

Sample broken(double second, SampleState why)
{
    return {start + qint64(second * 1000), FakeSource::noNumber, why, QString()};
}

} // namespace

void TestTrendHands::initTestCase()
{
    TrendFeed::interval = 0;
    TrendWindow::tick = 10;
}

void TestTrendHands::init()
{
    m_source = std::make_unique<FakeSource>();
    m_voltage = m_source->add("Voltage", "float",
                              {valid(0, 230), valid(400, 240), broken(500, SampleState::NotValid),
                               valid(600, 235), valid(1000, 231.5)});
}

void TestTrendHands::cleanup()
{
    delete m_window;
}

void TestTrendHands::open(bool growing)
{
    m_source->growing = growing;
    m_window = new TrendWindow(m_source.get());
    m_plot = m_window->findChild<TrendPlot *>();
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    m_window->addPoints(m_source->points());
    QApplication::setActiveWindow(m_window);
    QVERIFY(QTest::qWaitForWindowActive(m_window));
    QVERIFY(canvas()->hasFocus());
    redrawn();
}

// The last question is asked and answered, and the answer drawn.
void TestTrendHands::redrawn()
{
    for (int round = 0; round < 3; ++round) {
        QCoreApplication::processEvents();
    }
}

QVector<double> TestTrendHands::screen() const
{
    const TimeRange range = m_source->requests.last().range;
    return {double(range.from - start) / 1000, double(range.to - start) / 1000};
}

void TestTrendHands::press(int key, Qt::KeyboardModifiers modifiers)
{
    QTest::keyClick(canvas(), Qt::Key(key), modifiers);
    redrawn();
}

void TestTrendHands::point(qint64 second)
{
    QTest::mouseMove(canvas(), QPoint(qRound(m_plot->placeOf(start + second * 1000)), 50));
    QCoreApplication::processEvents();
}

QString TestTrendHands::cell(int row, FigureModel::Column column) const
{
    return m_window->findChild<FigureTable *>()->figures()->index(row, column).data().toString();
}

void TestTrendHands::wheelZoomsAtThePointer()
{
    RUN(open());
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
    const int x = canvas()->width() / 4;
    const qint64 pointed = m_plot->timeAt(x);
    QWheelEvent wheel(QPointF(x, 50), canvas()->mapToGlobal(QPoint(x, 50)), QPoint(), QPoint(0, 240),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(canvas(), &wheel);
    redrawn();
    QVERIFY(qAbs(screen().last() - screen().first() - 640) < 2);
    QVERIFY(qAbs(m_plot->timeAt(x) - pointed) < 1000);
    press(Qt::Key_Escape);
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
}

void TestTrendHands::dragZoomsIntoTheRectangle()
{
    RUN(open());
    const int left = qRound(m_plot->placeOf(start + 300000));
    const int right = qRound(m_plot->placeOf(start + 500000));
    const double bottom = m_plot->valuesBetween(Side::Left, 40, 100).least;
    QTest::mousePress(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(left, 40));
    QMouseEvent move(QEvent::MouseMove, QPointF(right, 100), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas(), &move);
    QTest::mouseRelease(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(right, 100));
    redrawn();
    QVERIFY(qAbs(screen().first() - 300) < 3 && qAbs(screen().last() - 500) < 3);
    QVERIFY(qAbs(m_plot->axisInterval(QwtPlot::yLeft).minValue() - bottom) < 0.2);
    QTest::mouseDClick(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 50)); // all values again
    redrawn();
    QVERIFY(m_plot->axisInterval(QwtPlot::yLeft).contains(240));
    tool("back")->click();
    tool("back")->click();
    redrawn();
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
    QVERIFY(!tool("back")->isEnabled());
    // A click is no rectangle.
    QTest::mouseClick(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(left, 40));
    redrawn();
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
}

void TestTrendHands::shiftAndMiddleButtonPan_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<bool>("shift");
    QTest::newRow("Shift") << int(Qt::LeftButton) << true;
    QTest::newRow("middle button") << int(Qt::MiddleButton) << false;
}

void TestTrendHands::shiftAndMiddleButtonPan()
{
    QFETCH(int, button);
    const auto pressed = Qt::MouseButton(button);
    QFETCH(bool, shift);
    RUN(open());
    const Qt::KeyboardModifiers modifiers = shift ? Qt::ShiftModifier : Qt::NoModifier;
    const int x = canvas()->width() / 2;
    QTest::mousePress(canvas(), pressed, modifiers, QPoint(x, 60));
    QMouseEvent move(QEvent::MouseMove, QPointF(x + m_plot->columns() / 10, 60), Qt::NoButton, pressed,
                     modifiers);
    QCoreApplication::sendEvent(canvas(), &move);
    QTest::mouseRelease(canvas(), pressed, modifiers, QPoint(x, 60));
    redrawn();
    QVERIFY(qAbs(screen().first() + 100) < 3 && qAbs(screen().last() - 900) < 3);
}

void TestTrendHands::keysMoveTheView_data()
{
    QTest::addColumn<QVector<int>>("keys");
    QTest::addColumn<QVector<double>>("shown");
    using Keys = QVector<int>;
    using Screen = QVector<double>;
    QTest::newRow("left") << Keys{Qt::Key_Left} << Screen{-100, 900};
    QTest::newRow("right") << Keys{Qt::Key_Right} << Screen{100, 1100};
    QTest::newRow("page up") << Keys{Qt::Key_PageUp} << Screen{-1000, 0};
    QTest::newRow("page down") << Keys{Qt::Key_PageDown} << Screen{1000, 2000};
    QTest::newRow("plus") << Keys{Qt::Key_Plus} << Screen{250, 750};
    QTest::newRow("minus") << Keys{Qt::Key_Minus} << Screen{-500, 1500};
    QTest::newRow("back") << Keys{Qt::Key_Plus, Qt::Key_Right, Qt::Key_Backspace} << Screen{250, 750};
    QTest::newRow("five minutes") << Keys{Qt::Key_2} << Screen{350, 650};
    QTest::newRow("a day") << Keys{Qt::Key_0} << Screen{500 - 43200, 500 + 43200};
    QTest::newRow("home") << Keys{Qt::Key_2, Qt::Key_Home} << Screen{0, 300};
    QTest::newRow("end") << Keys{Qt::Key_2, Qt::Key_End} << Screen{700, 1000};
}

void TestTrendHands::keysMoveTheView()
{
    QFETCH(QVector<int>, keys);
    RUN(open());
    for (const int key : qAsConst(keys)) {
        QTest::keyClick(canvas(), Qt::Key(key));
    }
    redrawn();
    QTEST(screen(), "shown");
}

void TestTrendHands::listChoosesTheSpan()
{
    RUN(open());
    auto *spans = m_window->findChild<QComboBox *>("span");
    QCOMPARE(spans->currentIndex(), -1);
    QCOMPARE(spans->placeholderText(), "17 min");
    spans->setFocus();
    spans->setCurrentIndex(spans->findText("2 h"));
    emit spans->activated(spans->currentIndex());
    redrawn();
    QCOMPARE(screen(), (QVector<double>{500 - 3600, 500 + 3600}));
    QCOMPARE(spans->currentText(), "2 h");
}

void TestTrendHands::followsWhatComes()
{
    RUN(open(true));
    QVERIFY(tool("follow")->isChecked());
    const qint64 before = m_source->requests.last().range.to;
    QVERIFY(qAbs(before - QDateTime::currentMSecsSinceEpoch()) < 5000);
    QCOMPARE(m_source->requests.last().range.from, before - 15 * TimeView::minute);
    m_source->append(m_voltage, {QDateTime::currentMSecsSinceEpoch(), 1, SampleState::Valid, QString()});
    QTRY_VERIFY(m_source->requests.last().range.to > before);
    QTRY_COMPARE(cell(0, FigureModel::Current), "1");
    press(Qt::Key_Space);
    QVERIFY(!tool("follow")->isChecked());
    const qint64 paused = m_source->requests.last().range.to;
    m_source->append(m_voltage, {QDateTime::currentMSecsSinceEpoch(), 2, SampleState::Valid, QString()});
    const int asked = m_source->requests.size();
    QTRY_VERIFY(m_source->requests.size() > asked); // what is on screen may have changed
    QCOMPARE(m_source->requests.last().range.to, paused);
    press(Qt::Key_Space);
    QTRY_VERIFY(m_source->requests.last().range.to > paused);
    QTRY_COMPARE(cell(0, FigureModel::Current), "2");
}

void TestTrendHands::recordingHasNoPresent()
{
    RUN(open());
    QVERIFY(!tool("follow")->isEnabled());
    press(Qt::Key_Space);
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
}

// As after a clock that was set back.
void TestTrendHands::sampleAheadOfTheClockIsShown()
{
    const qint64 ahead = QDateTime::currentMSecsSinceEpoch() + 3600000;
    m_source->add("Current", "float", {{ahead, 7, SampleState::Valid, QString()}});
    RUN(open(true));
    QTRY_COMPARE(cell(1, FigureModel::Current), "7");
}

void TestTrendHands::readoutTellsTheSampleBefore()
{
    m_source->add("State", "string", {{start, FakeSource::noNumber, SampleState::Valid, "Running\nfast"}});
    RUN(open());
    QCOMPARE(readout(), QStringList());
    point(399);
    QCOMPARE(readout().mid(1), (QStringList{"Voltage\t230", "State\tRunning fast"}));
    const QString time = QDateTime::fromMSecsSinceEpoch(start + 399000).toString("yyyy-MM-dd hh:mm");
    QVERIFY2(readout().first().startsWith(time), qPrintable(readout().first()));
    point(550);
    QCOMPARE(readout().at(1), "Voltage\tnot valid");
    point(700);
    QCOMPARE(readout().at(1), "Voltage\t235");
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(canvas(), &leave);
    QCOMPARE(readout(), QStringList());
}

void TestTrendHands::keysMoveTheReadout()
{
    RUN(open());
    press(Qt::Key_Left, Qt::ControlModifier); // from the middle
    QCOMPARE(readout().mid(1), QStringList{"Voltage\tnot valid"});
    for (int step = 0; step < 10; ++step) {
        press(Qt::Key_Left, Qt::ControlModifier);
    }
    QCOMPARE(readout().mid(1), QStringList{"Voltage\t230"});
}

void TestTrendHands::markersTellDifferences()
{
    RUN(open());
    auto *table = m_window->findChild<FigureTable *>();
    QVERIFY(table->isColumnHidden(FigureModel::AtA));
    point(100);
    press(Qt::Key_A);
    point(410);
    press(Qt::Key_B);
    QVERIFY(!table->isColumnHidden(FigureModel::AtA));
    QCOMPARE(cell(0, FigureModel::AtA), "230");
    QCOMPARE(cell(0, FigureModel::AtB), "not valid");
    QCOMPARE(cell(0, FigureModel::Difference), "–");
    point(700);
    press(Qt::Key_B);
    QCOMPARE(cell(0, FigureModel::Difference), "5");
    const QString line = m_window->findChild<QuietLine *>("markerLine")->text();
    QVERIFY2(line.contains("B − A 10 min 0.") || line.contains("B − A 9 min 59."), qPrintable(line));
    press(Qt::Key_M);
    QVERIFY(table->isColumnHidden(FigureModel::AtA));
    QVERIFY(!m_window->findChild<QuietLine *>("markerLine")->isVisible());
    tool("markers")->click();
    QVERIFY(tool("markers")->isChecked());
    QCOMPARE(cell(0, FigureModel::Difference), "5"); // at a third and at two
}

void TestTrendHands::markerIsDragged()
{
    RUN(open());
    point(100);
    press(Qt::Key_A);
    const int from = qRound(m_plot->placeOf(start + 100000));
    const int to = qRound(m_plot->placeOf(start + 700000));
    QTest::mousePress(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(from + 3, 60));
    QMouseEvent move(QEvent::MouseMove, QPointF(to, 60), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas(), &move);
    QTest::mouseRelease(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(to, 60));
    QCOMPARE(cell(0, FigureModel::AtA), "235");
    redrawn();
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
}

void TestTrendHands::toolsAskOthers()
{
    RUN(open());
    QSignalSpy record(m_window.data(), &TrendWindow::recordAsked);
    QSignalSpy recording(m_window.data(), &TrendWindow::openAsked);
    tool("record")->click();
    press(Qt::Key_R, Qt::ControlModifier);
    tool("open")->click();
    press(Qt::Key_O, Qt::ControlModifier);
    QCOMPARE(record.count(), 2);
    QCOMPARE(recording.count(), 2);
    QVERIFY(!tool("record")->isChecked()); // nobody records
}

void TestTrendHands::recordingLineStandsBelowTheTools()
{
    RUN(open());
    auto *line = m_window->findChild<QuietLine *>("recordingLine");
    QVERIFY(!line->isVisible());
    m_window->setRecordingLine("Since 12:00, 7 samples");
    QVERIFY(line->isVisible());
    QCOMPARE(line->text(), "Since 12:00, 7 samples");
    QVERIFY(tool("record")->isChecked());
    m_window->setRecordingLine(QString());
    QVERIFY(!line->isVisible());
    QVERIFY(!tool("record")->isChecked());
}

void TestTrendHands::takesNoDropsButThoseOfTables()
{
    RUN(open());
    QSignalSpy dropped(m_window.data(), &TrendWindow::dropped);
    // The platform of the tests has no drags, so this one has no source.
    QMimeData data;
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    drop.ignore();
    QCoreApplication::sendEvent(m_window, &drop);
    QCOMPARE(dropped.count(), 0);
    QVERIFY(!drop.isAccepted());
    QVERIFY(m_window->acceptDrops());
}

void TestTrendHands::addsPointsOfTheSource()
{
    RUN(open());
    m_source->add("Current", "float", {valid(0, 1)});
    m_source->add("Power", "float", {valid(0, 1)});
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *dialog) {
        auto *list = dialog->findChild<QListView *>("points");
        QCOMPARE(list->model()->rowCount(), 3);
        dialog->findChild<QLineEdit *>("filter")->setText("pow");
        QCOMPARE(list->model()->rowCount(), 1);
        list->selectAll();
        qobject_cast<QDialog *>(dialog)->accept();
    });
    press(Qt::Key_Insert);
    QCOMPARE(dialogs.pending(), 0);
    QCOMPARE(m_window->points().size(), 2);
    QCOMPARE(m_window->points().last().id.name, "Power");
}

void TestTrendHands::copiesPictureAndFigures()
{
    RUN(open());
    tool("copyTrend")->click();
    const QMimeData *data = QApplication::clipboard()->mimeData();
    const QStringList lines = data->text().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines.at(0), "Trend: Relay");
    QCOMPARE(lines.at(2), "Point\tType\tCurrent\tLeast\tGreatest\tMean");
    QCOMPARE(lines.at(3), "Voltage\tfloat\t231.5\t230\t240\t234.125");
    QCOMPARE(qvariant_cast<QImage>(data->imageData()).size(), m_window->size() * 2);
}

void TestTrendHands::savesAPicture_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("PNG") << "trend.png";
    QTest::newRow("SVG") << "trend.svg";
}

void TestTrendHands::savesAPicture()
{
    QFETCH(QString, file);
    m_source->add("State", "string", {{start, FakeSource::noNumber, SampleState::Valid, "Running"}});
    RUN(open());
    ModalDialogs dialogs;
    dialogs.expect([&file](QWidget *dialog) {
        auto *choosing = qobject_cast<QFileDialog *>(dialog);
        QVERIFY(choosing);
        choosing->selectFile(QDir::current().filePath(file));
        choosing->QDialog::accept();
    });
    press(Qt::Key_S, Qt::ControlModifier);
    QCOMPARE(dialogs.pending(), 0);
    if (file.endsWith(".png")) {
        QCOMPARE(QImage(file).size(), m_window->size() * 2);
        return;
    }
    QSvgRenderer page(file);
    QVERIFY(page.isValid());
    QCOMPARE(page.defaultSize(), QSize(1052, 744)); // A4 across, at the 90 pixels an inch of SVG
    QFile svg(file);
    QVERIFY(svg.open(QIODevice::ReadOnly));
    const QByteArray words = svg.readAll();
    for (const char *word :
         {"Trend: Relay", "Voltage", "234.125", "Running", "not valid", "Time of arrival at this computer"}) {
        QVERIFY2(words.contains(word), word);
    }
}

void TestTrendHands::savesValuesOnScreen()
{
    m_source->add("Hidden", "float", {valid(0, 1)});
    RUN(open());
    auto *figures = m_window->findChild<FigureTable *>()->figures();
    figures->setData(figures->index(1, FigureModel::Name), Qt::Unchecked, Qt::CheckStateRole);
    press(Qt::Key_2); // the five minutes in the middle
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *dialog) {
        auto *choosing = qobject_cast<QFileDialog *>(dialog);
        choosing->selectFile(QDir::current().filePath("values.csv"));
        choosing->QDialog::accept();
    });
    press(Qt::Key_E, Qt::ControlModifier);
    const QList<QByteArray> lines = Files::contents("values.csv").split('\n');
    QVERIFY2(lines.size() >= 4, qPrintable(QString::number(lines.size())));
    QVERIFY(lines.at(0).trimmed().endsWith("Voltage"));
    QVERIFY(lines.at(1).trimmed().endsWith(",240"));
    QVERIFY(lines.at(2).trimmed().endsWith(",not valid"));
    QVERIFY(lines.at(3).trimmed().endsWith(",235"));
}

void TestTrendHands::tellsThatAPictureWasNotSaved()
{
    RUN(open());
    ModalDialogs dialogs;
    dialogs.expect([](QWidget *dialog) {
        auto *choosing = qobject_cast<QFileDialog *>(dialog);
        choosing->selectFile("/proc/trend.png");
        choosing->QDialog::accept();
    });
    Messages messages;
    messages.expect();
    tool("savePicture")->click();
    QCOMPARE(messages.told(), QStringList{"Save Picture|The file /proc/trend.png could not be written."});
}

void TestTrendHands::silentSourceKeepsTheWindowAlive()
{
    m_source->answers = false;
    RUN(open(true));
    QCOMPARE(cell(0, FigureModel::Current), "–");
    for (const int key : {Qt::Key_Plus, Qt::Key_Left, Qt::Key_A, Qt::Key_Home, Qt::Key_Escape}) {
        press(key);
    }
    QVERIFY(!m_source->requests.isEmpty());
    m_source->answers = true;
    press(Qt::Key_Home);
    QCOMPARE(cell(0, FigureModel::Current), "240");
}

void TestTrendHands::sourceThatDiesIsTold()
{
    RUN(open(true));
    m_source.reset();
    auto *note = m_window->findChild<QLabel *>("note");
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(), "The source of these values is closed");
    press(Qt::Key_Left);
    press(Qt::Key_Home);
    press(Qt::Key_Insert);
    QCOMPARE(m_window->source(), nullptr);
}

void TestTrendHands::failureIsTold()
{
    RUN(open());
    emit m_source->failed("The file is gone.");
    QCOMPARE(m_window->findChild<QLabel *>("note")->text(), "The file is gone.");
    QVERIFY(m_window->findChild<QLabel *>("note")->isVisible());
}

void TestTrendHands::closesByKey()
{
    RUN(open());
    QTest::keyClick(canvas(), Qt::Key_W, Qt::ControlModifier);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QTRY_VERIFY(!m_window);
}

void TestTrendHands::historyKeepsThePointsOfTheWindow()
{
    History history;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    Readings report{now, "127.0.0.2", "Riverside", "Relay", {}};
    for (const char *name : {"Voltage", "Current"}) {
        report.rows.append({QString::fromLatin1(name), "40001", "float", 230, SampleState::Valid, QString()});
    }
    history.add(report);
    m_window = new TrendWindow(&history);
    m_window->show();
    m_window->addPoints(history.points());
    auto *table = m_window->findChild<FigureTable *>();
    QTRY_COMPARE(cell(0, FigureModel::Current), "230");
    history.forget("127.0.0.2", "Riverside", "Relay"); // its page is closed
    QCOMPARE(history.points().size(), 2);
    table->setFocus();
    table->selectRow(1);
    table->findChild<QAction *>("remove")->trigger();
    QCOMPARE(history.points().size(), 1);
    delete m_window;
    QCOMPARE(history.points().size(), 0);
}

QTEST_MAIN(TestTrendHands)
#include "tst_trendhands.moc"
