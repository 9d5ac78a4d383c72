#include "trends/readout.h"
#include "trends/trendcurve.h"
#include "trends/viewcontrol.h"
#include "trendtest.h"
#include "widgets/quietline.h"

#include <QComboBox>
#include <QDateTime>
#include <QLabel>

// What the user does in the window of a trend, by mouse and by keys.
class TestTrendHands : public TrendTest
{
    Q_OBJECT
private slots:
    void init();
    void cleanup() { delete window; }

    void wheelZoomsAtThePointer();
    void wheelTurnedSidewaysDoesNothing();
    void dragZoomsIntoTheRectangle();
    void shiftAndMiddleButtonPan_data();
    void shiftAndMiddleButtonPan();
    void keysMoveTheView_data();
    void keysMoveTheView();
    void keysMoveTheValues_data();
    void keysMoveTheValues();
    void listChoosesTheSpan();
    void plotKeepsItsWidth();
    void followsWhatComes();
    void followsNoMoreWhatHasEnded();
    void followsByTheClockOfTheSource();
    void pausedWindowSeesWhatIsLate();
    void recordingHasNoPresent();
    void sampleAheadOfTheClockIsShown();
    void clockThatWasSetBackIsTold();
    void nothingIsKnownOfTheFuture();
    void readoutTellsTheSampleBefore();
    void keysMoveTheReadout();
    void markersTellDifferences();
    void markerOffTheScreenTellsNothing();
    void markerIsDragged();
    void removedCurveIsGone();
    void userChoosesTheScale();

private:
    void point(qint64 second);
    void turnWheel(int x, const QPoint &angle);
    QStringList readout() const { return window->findChild<Readout *>()->lines(); }

    PointId voltage;
};

void TestTrendHands::init()
{
    restart();
    voltage = source->add("Voltage", "float",
                          {valid(0, 230), valid(400, 240), broken(500, SampleState::NotValid),
                           valid(600, 235), valid(1000, 231.5)});
}

void TestTrendHands::point(qint64 second)
{
    QTest::mouseMove(canvas(), QPoint(qRound(plot->placeOf(start + second * 1000)), 50));
    QCoreApplication::processEvents();
}

void TestTrendHands::turnWheel(int x, const QPoint &angle)
{
    QWheelEvent wheel(QPointF(x, 50), canvas()->mapToGlobal(QPoint(x, 50)), QPoint(), angle, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(canvas(), &wheel);
    redrawn();
}

void TestTrendHands::wheelZoomsAtThePointer()
{
    RUN(open());
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
    const int x = canvas()->width() / 4;
    const qint64 pointed = plot->timeAt(x);
    turnWheel(x, QPoint(0, 240));
    QVERIFY(qAbs(screen().last() - screen().first() - 640) < 2);
    QVERIFY(qAbs(plot->timeAt(x) - pointed) < 1000);
    press(Qt::Key_Escape);
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
}

void TestTrendHands::wheelTurnedSidewaysDoesNothing()
{
    RUN(open(true));
    turnWheel(100, QPoint(240, 0));
    QVERIFY(tool("follow")->isChecked());
    QVERIFY(!tool("back")->isEnabled());
}

void TestTrendHands::dragZoomsIntoTheRectangle()
{
    RUN(open());
    const int left = qRound(plot->placeOf(start + 300000));
    const int right = qRound(plot->placeOf(start + 500000));
    const double bottom = plot->valuesBetween(Side::Left, 40, 100).least;
    QTest::mousePress(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(left, 40));
    QMouseEvent move(QEvent::MouseMove, QPointF(right, 100), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas(), &move);
    QTest::mouseRelease(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(right, 100));
    redrawn();
    QVERIFY(qAbs(screen().first() - 300) < 3 && qAbs(screen().last() - 500) < 3);
    QVERIFY(qAbs(plot->axisInterval(QwtPlot::yLeft).minValue() - bottom) < 0.2);
    QTest::mouseDClick(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(50, 50)); // all values again
    redrawn();
    QVERIFY(plot->axisInterval(QwtPlot::yLeft).contains(240));
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
    QMouseEvent move(QEvent::MouseMove, QPointF(x + plot->columns() / 10, 60), Qt::NoButton, pressed,
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

void TestTrendHands::keysMoveTheValues_data()
{
    QTest::addColumn<QStringList>("keys");
    QTest::addColumn<QVector<double>>("shown");
    using Scale = QVector<double>;
    const Scale all{229.5, 240.5};
    QTest::newRow("nothing chosen to be moved") << QStringList{"Up", "Down", "Down"} << all;
    QTest::newRow("in") << QStringList{"Shift+Up"} << Scale{232.25, 237.75};
    QTest::newRow("out") << QStringList{"Shift+Down"} << Scale{224, 246};
    QTest::newRow("up") << QStringList{"Shift+Up", "Up"} << Scale{232.8, 238.3};
    QTest::newRow("down") << QStringList{"Shift+Up", "Down"} << Scale{231.7, 237.2};
    QTest::newRow("all") << QStringList{"Shift+Up", "Up", "F"} << all;
    QTest::newRow("back") << QStringList{"Shift+Up", "Shift+Up", "Escape"} << all;
}

void TestTrendHands::keysMoveTheValues()
{
    QFETCH(QStringList, keys);
    RUN(open());
    for (const QString &text : qAsConst(keys)) {
        const int key = QKeySequence(text)[0];
        press(key & ~int(Qt::KeyboardModifierMask),
              Qt::KeyboardModifiers(key & int(Qt::KeyboardModifierMask)));
    }
    const QwtInterval shown = plot->axisInterval(QwtPlot::yLeft);
    QTEST((QVector<double>{shown.minValue(), shown.maxValue()}), "shown");
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
}

void TestTrendHands::listChoosesTheSpan()
{
    RUN(open());
    auto *spans = window->findChild<QComboBox *>("span");
    QCOMPARE(spans->currentIndex(), -1);
    QCOMPARE(spans->placeholderText(), "17 min");
    const QImage shown = spans->grab().toImage();
    spans->setPlaceholderText("18 min");
    QVERIFY(spans->grab().toImage() != shown);
    spans->setFocus();
    spans->setCurrentIndex(spans->findText("2 h"));
    emit spans->activated(spans->currentIndex());
    redrawn();
    QCOMPARE(screen(), (QVector<double>{500 - 3600, 500 + 3600}));
    QCOMPARE(spans->currentText(), "2 h");
}

// Else it would ask twice for each step.
void TestTrendHands::plotKeepsItsWidth()
{
    RUN(open());
    auto *control = window->findChild<ViewControl *>();
    QSet<int> widths;
    for (int step = 0; step < 60; ++step) {
        const qint64 moved = start + step * 3700;
        control->setView(TimeView({moved, moved + 900000}));
        redrawn();
        widths.insert(plot->columns());
    }
    QCOMPARE(widths.size(), 1);
}

void TestTrendHands::followsWhatComes()
{
    RUN(open(true));
    QVERIFY(tool("follow")->isChecked());
    const qint64 before = source->requests.last().range.to;
    QVERIFY(qAbs(before - QDateTime::currentMSecsSinceEpoch()) < 5000);
    source->append(voltage, {QDateTime::currentMSecsSinceEpoch(), 1, SampleState::Valid, QString()});
    QTRY_VERIFY(source->requests.last().range.to > before);
    QTRY_COMPARE(cell(0, FigureModel::Current), "1");
    press(Qt::Key_Space);
    QVERIFY(!tool("follow")->isChecked());
    const qint64 paused = source->requests.last().range.to;
    source->append(voltage, {QDateTime::currentMSecsSinceEpoch(), 2, SampleState::Valid, QString()});
    const int asked = source->requests.size();
    QTRY_VERIFY(source->requests.size() > asked); // what is on screen may have changed
    QCOMPARE(source->requests.last().range.to, paused);
    press(Qt::Key_Space);
    QTRY_VERIFY(source->requests.last().range.to > paused);
    QTRY_COMPARE(cell(0, FigureModel::Current), "2");
}

void TestTrendHands::followsNoMoreWhatHasEnded()
{
    RUN(open(true));
    QVERIFY(tool("follow")->isChecked());
    source->growing = false;
    QTRY_VERIFY(!tool("follow")->isChecked());
    QVERIFY(!tool("follow")->isEnabled());
    source->growing = true;
    QTRY_VERIFY(tool("follow")->isEnabled());
}

// Somebody else records it.
void TestTrendHands::followsByTheClockOfTheSource()
{
    source->ahead = -3600000;
    RUN(open(true));
    const qint64 behind = QDateTime::currentMSecsSinceEpoch() - source->requests.last().range.to;
    QVERIFY2(qAbs(behind - 3600000) < 5000, qPrintable(QString::number(behind)));
    QVERIFY(qAbs(source->requests.last().now - source->requests.last().range.to) < 5000);
}

// Although nothing comes: that is what it should see.
void TestTrendHands::pausedWindowSeesWhatIsLate()
{
    RUN(open(true));
    press(Qt::Key_Space);
    const SampleSource::Request paused = source->requests.last();
    const qint64 later = paused.now + TimeView::hour;
    window->setClock([later] { return ArrivalClock::Present{later, 0}; });
    QTRY_COMPARE(source->requests.last().now, later);
    QCOMPARE(source->requests.last().range.to, paused.range.to);
    press(Qt::Key_1);
    press(Qt::Key_Home); // to where samples follow
    const int asked = source->requests.size();
    window->setClock([later] { return ArrivalClock::Present{later + TimeView::hour, 0}; });
    QTimer timer;
    const QSignalSpy ticks(&timer, &QTimer::timeout);
    timer.start(TrendWindow::tick);
    QTRY_VERIFY(ticks.size() > 5);
    QCOMPARE(source->requests.size(), asked);
}

void TestTrendHands::recordingHasNoPresent()
{
    RUN(open());
    QVERIFY(!tool("follow")->isEnabled());
    press(Qt::Key_Space);
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
}

void TestTrendHands::sampleAheadOfTheClockIsShown()
{
    const qint64 ahead = QDateTime::currentMSecsSinceEpoch() + 3600000;
    source->add("Current", "float", {{ahead, 7, SampleState::Valid, QString()}});
    RUN(open(true));
    QTRY_COMPARE(cell(1, FigureModel::Current), "7");
}

void TestTrendHands::clockThatWasSetBackIsTold()
{
    ArrivalClock::Present present{QDateTime::currentMSecsSinceEpoch() + TimeView::hour, TimeView::hour + 300};
    RUN(open(true));
    const auto *note = window->findChild<QLabel *>("note");
    QVERIFY(!note->isVisible());
    window->setClock([&present] { return present; });
    QTRY_COMPARE(source->requests.last().range.to, present.time);
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(),
             "The clock of this computer was set back. The times go on from before, 1 h 0 min 0.000 s ahead "
             "of it.");
    present.time += TimeView::hour; // no report comes, and the present goes on
    QTRY_COMPARE(source->requests.last().range.to, present.time);
    present.ahead = 0;
    QTRY_VERIFY(!note->isVisible());
    window->setClock({});
}

void TestTrendHands::nothingIsKnownOfTheFuture()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    source->append(voltage, {now, 7, SampleState::Valid, QString()});
    RUN(open(true));
    window->setClock([now] { return ArrivalClock::Present{now + 1000, 0}; });
    press(Qt::Key_Space);
    press(Qt::Key_PageDown);
    press(Qt::Key_Left);
    QCOMPARE(source->requests.last().now, now + 1000);
    QVERIFY(source->requests.last().range.to > now + TimeView::minute);
    QTest::mouseMove(canvas(), QPoint(qRound(plot->placeOf(now + TimeView::minute)), 50));
    QCoreApplication::processEvents();
    QCOMPARE(readout().mid(1), QStringList{"Voltage\t–"});
    QCOMPARE(cell(0, FigureModel::Current), "7");
    window->setClock({});
}

void TestTrendHands::readoutTellsTheSampleBefore()
{
    source->add("State", "string", {{start, FakeSource::noNumber, SampleState::Valid, "Running\nfast"}});
    RUN(open());
    QCOMPARE(readout(), QStringList());
    point(399);
    QCOMPARE(readout().mid(1), (QStringList{"Voltage\t230", "State\tRunning fast"}));
    const QString time = QDateTime::fromMSecsSinceEpoch(start + 399000).toString("yyyy-MM-dd hh:mm");
    QVERIFY2(readout().first().startsWith(time), qPrintable(readout().first()));
    point(550);
    QCOMPARE(readout().at(1), "Voltage\t(not valid)");
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
    QCOMPARE(readout().mid(1), QStringList{"Voltage\t(not valid)"});
    for (int step = 0; step < 10; ++step) {
        press(Qt::Key_Left, Qt::ControlModifier);
    }
    QCOMPARE(readout().mid(1), QStringList{"Voltage\t230"});
}

void TestTrendHands::markersTellDifferences()
{
    RUN(open());
    auto *table = window->findChild<FigureTable *>();
    QVERIFY(table->isColumnHidden(FigureModel::AtA));
    point(100);
    press(Qt::Key_A);
    point(410);
    press(Qt::Key_B);
    QVERIFY(!table->isColumnHidden(FigureModel::AtA));
    QCOMPARE(cell(0, FigureModel::AtA), "230");
    QCOMPARE(cell(0, FigureModel::AtB), "(not valid)");
    const int longest = table->fontMetrics().horizontalAdvance("(session ended)");
    for (const FigureModel::Column column : {FigureModel::Current, FigureModel::AtA, FigureModel::AtB}) {
        QVERIFY(table->columnWidth(column) >= longest + 6); // and its margins
    }
    QCOMPARE(cell(0, FigureModel::Difference), "–");
    point(700);
    press(Qt::Key_B);
    QCOMPARE(cell(0, FigureModel::Difference), "5");
    const QString line = window->findChild<QuietLine *>("markerLine")->text();
    QVERIFY2(line.contains("B − A 10 min 0.") || line.contains("B − A 9 min 59."), qPrintable(line));
    press(Qt::Key_M);
    QVERIFY(table->isColumnHidden(FigureModel::AtA));
    QVERIFY(!window->findChild<QuietLine *>("markerLine")->isVisible());
    tool("markers")->click();
    QVERIFY(tool("markers")->isChecked());
    QCOMPARE(cell(0, FigureModel::Difference), "5"); // at a third and at two
}

void TestTrendHands::markerOffTheScreenTellsNothing()
{
    RUN(open());
    point(100);
    press(Qt::Key_A);
    point(700);
    press(Qt::Key_B);
    QCOMPARE(cell(0, FigureModel::Difference), "5");
    press(Qt::Key_2);
    press(Qt::Key_Home);
    QCOMPARE(screen(), (QVector<double>{0, 300}));
    QCOMPARE(cell(0, FigureModel::AtA), "230");
    QCOMPARE(cell(0, FigureModel::AtB), "–");
    QCOMPARE(cell(0, FigureModel::Difference), "–");
}

void TestTrendHands::markerIsDragged()
{
    RUN(open());
    point(100);
    press(Qt::Key_A);
    const int from = qRound(plot->placeOf(start + 100000));
    const int to = qRound(plot->placeOf(start + 700000));
    QTest::mousePress(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(from + 3, 60));
    QMouseEvent move(QEvent::MouseMove, QPointF(to, 60), Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(canvas(), &move);
    QTest::mouseRelease(canvas(), Qt::LeftButton, Qt::NoModifier, QPoint(to, 60));
    QCOMPARE(cell(0, FigureModel::AtA), "235");
    redrawn();
    QCOMPARE(screen(), (QVector<double>{0, 1000}));
}

void TestTrendHands::removedCurveIsGone()
{
    source->add("Voltage", "float", {valid(0, 230), valid(9, 231)});
    const PointId current = source->add("Current", "float", {valid(0, 100), valid(9, 102)});
    RUN(open());
    table()->setFocus();
    table()->selectRow(0);
    QTest::keyClick(table(), Qt::Key_Delete);
    QCOMPARE(window->points().size(), 1);
    QVERIFY(window->points().first().id == current);
    QTRY_COMPARE(plot->curveItems().size(), 1);
    QTRY_COMPARE(source->requests.last().points, QVector<PointId>{current});
    table()->selectRow(0);
    QTest::keyClick(table(), Qt::Key_Delete);
    QVERIFY(window->findChild<QLabel *>("hint")->isVisible());
}

void TestTrendHands::userChoosesTheScale()
{
    source->add("Voltage", "float", {valid(0, 228), valid(9, 232)});
    source->add("Power factor", "float", {valid(0, 0.9), valid(9, 0.95)});
    RUN(open());
    const QModelIndex check = figures()->index(1, FigureModel::RightScale);
    QCOMPARE(check.data(Qt::CheckStateRole).toInt(), int(Qt::Checked));
    table()->setFocus();
    table()->setCurrentIndex(check);
    QTest::keyClick(table(), Qt::Key_Space);
    redrawn();
    QCOMPARE(plot->curveItems().at(1)->yAxis(), int(QwtPlot::yLeft));
    QVERIFY(!plot->hasScale(Side::Right));
}

QTEST_MAIN(TestTrendHands)
#include "tst_trendhands.moc"
