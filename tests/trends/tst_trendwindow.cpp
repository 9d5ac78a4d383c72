#include "trends/eventlabels.h"
#include "trends/gapbands.h"
#include "trends/trendcurve.h"
#include "trends/trendtexts.h"
#include "trendtest.h"

#include <QAbstractItemModelTester>
#include <QDateTime>
#include <QLabel>
#include <QPainter>
#include <QScrollBar>

#include <qwt_scale_draw.h>
#include <qwt_scale_map.h>

Q_DECLARE_METATYPE(Sample)

// What the window of a trend draws and tells.
class TestTrendWindow : public TrendTest
{
    Q_OBJECT
private slots:
    void init() { restart(); }
    void cleanup() { delete window; }

    void emptyWindowTellsHowToGetPoints();
    void drawsPiecesAsTheyAre();
    void curvesDifferWithoutColours();
    void drawsStatesAndCountersAsSteps();
    void changedTypeIsDrawnAnew();
    void shadesGapsOnce();
    void showsTextsAsEvents();
    void textThatHeldBeforeIsLabelledAtTheEdge_data();
    void textThatHeldBeforeIsLabelledAtTheEdge();
    void axisTellsWhoseTimeItIs();
    void recordingOpensWithItsLastDay_data();
    void recordingOpensWithItsLastDay();
    void scaleTellsItsStepsApart_data();
    void scaleTellsItsStepsApart();
    void figuresAreOfWhatIsOnScreen();
    void currentIsWhatHoldsAtTheEnd_data();
    void currentIsWhatHoldsAtTheEnd();
    void skippedValuesAreCounted();
    void numberlessCurveDrawsNothing();
    void hiddenCurveIsNotDrawn();
    void tableFitsItsRows_data();
    void tableFitsItsRows();
    void smallCurveGoesToTheRight();
    void pointsAreThereOnce();
    void removedRowsAreThoseSelected();
    void hundredCurves();
    void firstOfTooManyPointsAreTaken();

private:
    // On a plot of ten seconds, from 0 to 1.
    QImage imageOf(int curve) const;
    bool isDrawnAt(int curve, double time, double value) const;
};

namespace {

QVector<QPointF> points(const QVector<Sample> &samples)
{
    QVector<QPointF> made;
    for (const Sample &sample : samples) {
        made.append({double(sample.time), sample.number});
    }
    return made;
}

} // namespace

void TestTrendWindow::emptyWindowTellsHowToGetPoints()
{
    open();
    auto *hint = window->findChild<QLabel *>("hint");
    QVERIFY(hint->isVisible());
    QCOMPARE(hint->text(),
             "Drop rows of live values here, press Add... to choose points, or Open... to show a recording");
    QVERIFY(!plot->isVisible());
    for (const char *tool :
         {"follow", "zoomIn", "zoomOut", "record", "copyTrend", "savePicture", "saveValues", "markers"}) {
        QVERIFY2(!window->findChild<QToolButton *>(QLatin1String(tool))->isEnabled(), tool);
    }
    source->add("Voltage", "float", {valid(0, 1)});
    window->addPoints(source->points());
    QVERIFY(!hint->isVisible());
    QVERIFY(plot->isVisible());
    QVERIFY(window->findChild<QToolButton *>("copyTrend")->isEnabled());
    QVERIFY(window->findChild<QToolButton *>("zoomIn")->isEnabled());
}

void TestTrendWindow::drawsPiecesAsTheyAre()
{
    const QVector<Sample> first{valid(0, 1), valid(1, 3)};
    const QVector<Sample> second{valid(5, 2), valid(6, 2), valid(7, 5)};
    source->add("Voltage", "float", first + QVector<Sample>{broken(2, SampleState::NotValid)} + second);
    RUN(open());
    QCOMPARE(plot->curveItems().size(), 1);
    const TrendCurve *item = plot->curveItems().first();
    QCOMPARE(item->curve().data.pieces, (QVector<QVector<QPointF>>{points(first), points(second)}));
    // All that there is, from the first to the last sample.
    QCOMPARE(source->requests.last().range.from, start);
    QCOMPARE(source->requests.last().range.to, start + 7000);
    QCOMPARE(source->requests.last().columns, plot->columns());
}

// Ten seconds from the start, and values from 0 to 1; white where nothing is drawn.
QImage TestTrendWindow::imageOf(int curve) const
{
    QImage image(400, 400, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    QwtScaleMap x;
    x.setScaleInterval(double(start), double(start + 10000));
    x.setPaintInterval(0, 400);
    QwtScaleMap y;
    y.setScaleInterval(0, 1);
    y.setPaintInterval(400, 0);
    plot->curveItems().at(curve)->draw(&painter, x, y, QRectF(0, 0, 400, 400));
    return image;
}

bool TestTrendWindow::isDrawnAt(int curve, double time, double value) const
{
    const QImage image = imageOf(curve);
    const QPoint at(int((time - start) / 25), int(400 - 400 * value));
    for (int side = -4; side <= 4; ++side) {
        if (image.pixelColor(qBound(0, at.x() + side, 399), at.y()) != QColor(Qt::white)) {
            return true;
        }
    }
    return false;
}

void TestTrendWindow::curvesDifferWithoutColours()
{
    source->add("Voltage A", "float", {valid(0, 0.5), valid(10, 0.5)});
    source->add("Voltage B", "float", {valid(0, 0.5), valid(10, 0.5)});
    RUN(open());
    const auto drawn = [this](int curve) {
        const QImage image = imageOf(curve);
        QByteArray shape;
        for (int at = 0; at < image.width() * image.height(); ++at) {
            shape.append(image.pixelColor(at % image.width(), at / image.width()) == Qt::white ? ' ' : 'x');
        }
        return shape;
    };
    QVERIFY(drawn(0).contains('x'));
    QVERIFY(drawn(0) != drawn(1));
}

void TestTrendWindow::drawsStatesAndCountersAsSteps()
{
    source->add("Voltage", "float", {valid(0, 0), valid(10, 1)});
    source->add("Closed", "bool", {valid(0, 0), valid(10, 1)});
    RUN(open());
    // Half-way up in the middle there is a line, but no step.
    QVERIFY(isDrawnAt(0, start + 5000, 0.5));
    QVERIFY(!isDrawnAt(1, start + 5000, 0.5));
    QVERIFY(isDrawnAt(1, start + 10000, 0.5));
}

void TestTrendWindow::changedTypeIsDrawnAnew()
{
    const PointId closed = source->add("Closed", "float", {valid(0, 0), valid(10, 1)});
    RUN(open());
    QVERIFY(isDrawnAt(0, start + 5000, 0.5));
    source->setType(closed, "bool");
    QTRY_COMPARE(cell(0, FigureModel::Type), "bool");
    redrawn();
    QVERIFY(!isDrawnAt(0, start + 5000, 0.5));
    QVERIFY(isDrawnAt(0, start + 10000, 0.5));
}

void TestTrendWindow::shadesGapsOnce()
{
    const auto samples = [](double second) {
        return QVector<Sample>{valid(0, 1), broken(second, SampleState::NoReport), valid(8, 1)};
    };
    source->add("Voltage", "float",
                samples(3) + QVector<Sample>{broken(9, SampleState::Ended), valid(10, 1)});
    source->add("Current", "float", samples(4));
    RUN(open());
    const QVector<Thinned::Gap> gaps = plot->gapBands()->gaps();
    QCOMPARE(gaps.size(), 2);
    QCOMPARE(int(gaps.last().why), int(SampleState::Ended));
    QCOMPARE(gaps.first().range.from, start);
    QCOMPARE(gaps.first().range.to, start + 8000);
    QCOMPARE(int(gaps.first().why), int(SampleState::NoReport));
}

void TestTrendWindow::showsTextsAsEvents()
{
    source->add("State", "string", {words(0, "Running"), words(5, "12,5"), words(9, QString(65536, 'x'))});
    RUN(open());
    QVERIFY(plot->curveItems().first()->curve().data.pieces.isEmpty());
    const QVector<Curve> labelled = plot->eventLabels()->curves();
    QCOMPARE(labelled.size(), 1);
    QCOMPARE(labelled.first().data.events.size(), 3);
    QCOMPARE(labelled.first().data.events.at(1).text, "12,5");
    QCOMPARE(cell(0, FigureModel::Current), QString(500, 'x'));
}

void TestTrendWindow::textThatHeldBeforeIsLabelledAtTheEdge_data()
{
    QTest::addColumn<qint64>("gap"); // in which nothing holds
    QTest::addColumn<bool>("label");
    QTest::newRow("holds") << qint64(-1) << true;
    QTest::newRow("held before a gap") << qint64(5000) << false;
}

void TestTrendWindow::textThatHeldBeforeIsLabelledAtTheEdge()
{
    QFETCH(qint64, gap);
    QFETCH(bool, label);
    Curve curve;
    curve.point.type = "string";
    curve.answered = {10000, 20000};
    curve.data.events = {{1000, "Running"}};
    if (gap >= 0) {
        curve.data.gaps = {{{gap, 20000}, SampleState::NotValid}};
    }
    EventLabels labels;
    labels.setCurves({curve}, QPalette(Qt::white));
    QImage image(400, 100, QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter painter(&image);
    QwtScaleMap x;
    x.setScaleInterval(10000, 20000);
    x.setPaintInterval(0, 400);
    labels.draw(&painter, x, x, QRectF(0, 0, 400, 100));
    const auto isDrawn = [&image](int top, int bottom) {
        for (int y = top; y < bottom; ++y) {
            for (int column = 0; column < image.width(); ++column) {
                if (image.pixelColor(column, y) != QColor(Qt::red)) {
                    return true;
                }
            }
        }
        return false;
    };
    QCOMPARE(isDrawn(0, 50), label);
    QVERIFY(!isDrawn(60, 100)); // no line: it does not begin there
}

void TestTrendWindow::axisTellsWhoseTimeItIs()
{
    source->add("Voltage", "float", {valid(0, 1), valid(60, 2)});
    RUN(open());
    QCOMPARE(plot->axisTitle(QwtPlot::xBottom).text(),
             "Time of arrival at this computer (" + TrendTexts::ofZone(start) + ')');
    const QString first = QDateTime::fromMSecsSinceEpoch(start + 20000).toString("hh:mm:ss");
    QVERIFY(plot->axisScaleDraw(QwtPlot::xBottom)->label(double(start + 20000)).text().startsWith(first));
}

void TestTrendWindow::recordingOpensWithItsLastDay_data()
{
    QTest::addColumn<bool>("growing");
    QTest::addColumn<qint64>("length"); // minutes
    QTest::addColumn<qint64>("span");
    QTest::newRow("an hour") << false << qint64(60) << qint64(60);
    QTest::newRow("three days") << false << qint64(3 * 24 * 60) << qint64(24 * 60);
    QTest::newRow("growing since an hour") << true << qint64(60) << qint64(60);
    QTest::newRow("growing since three days") << true << qint64(3 * 24 * 60) << qint64(24 * 60);
    QTest::newRow("just begun") << true << qint64(0) << qint64(1);
}

void TestTrendWindow::recordingOpensWithItsLastDay()
{
    QFETCH(bool, growing);
    QFETCH(qint64, length);
    QFETCH(qint64, span);
    const qint64 last = QDateTime::currentMSecsSinceEpoch();
    const qint64 first = last - length * TimeView::minute;
    source->add("Voltage", "float",
                {{first, 1, SampleState::Valid, QString()}, {last, 2, SampleState::Valid, QString()}});
    RUN(open(growing));
    const TimeRange screen = source->requests.last().range;
    QCOMPARE((screen.to - screen.from) / TimeView::minute, span);
    QVERIFY(growing ? screen.to >= last : screen.to == last);
    QCOMPARE(tool("follow")->isChecked(), growing);
}

void TestTrendWindow::scaleTellsItsStepsApart_data()
{
    QTest::addColumn<double>("least");
    QTest::addColumn<double>("greatest");
    QTest::addColumn<QString>("text");
    QTest::newRow("fractions") << 1234567.8 << 1234568.1 << "1234568.1";
    QTest::newRow("counter") << 4294967290.0 << 4294967295.0 << "4294967295";
    QTest::newRow("large counter") << 1e12 << 1e12 + 21 << "1000000000021";
    QTest::newRow("largest integer") << 9e15 << 9e15 + 190000 << "9000000000190000";
}

void TestTrendWindow::scaleTellsItsStepsApart()
{
    QFETCH(double, least);
    QFETCH(double, greatest);
    source->add("Energy", "double", {valid(0, least), valid(9, greatest)});
    RUN(open());
    QSet<QString> labels;
    const QList<double> ticks = plot->axisScaleDiv(QwtPlot::yLeft).ticks(QwtScaleDiv::MajorTick);
    for (const double tick : ticks) {
        const QString label = plot->axisScaleDraw(QwtPlot::yLeft)->label(tick).text();
        QVERIFY2(qAbs(label.toDouble() - tick) < (greatest - least) / 100, qPrintable(label));
        labels.insert(label);
    }
    QVERIFY(ticks.size() > 2);
    QCOMPARE(labels.size(), ticks.size());
    QTEST(cell(0, FigureModel::Greatest), "text");
    QVERIFY(plot->axisInterval(QwtPlot::yLeft).width() < 2 * (greatest - least));
}

void TestTrendWindow::figuresAreOfWhatIsOnScreen()
{
    source->add("Voltage", "float", {valid(0, 100), valid(600, 1), valid(610, 3), valid(620, 2.5)});
    RUN(open());
    QAbstractItemModelTester tester(figures());
    QCOMPARE(cell(0, FigureModel::Greatest), "100");
    plot->canvas()->setFocus();
    QTest::keyClick(plot->canvas(), Qt::Key_1); // one minute
    QTest::keyClick(plot->canvas(), Qt::Key_End);
    redrawn();
    const QStringList row{cell(0, FigureModel::Name),     cell(0, FigureModel::Type),
                          cell(0, FigureModel::Current),  cell(0, FigureModel::Least),
                          cell(0, FigureModel::Greatest), cell(0, FigureModel::Mean)};
    QCOMPARE(row, (QStringList{"Voltage", "float", "2.5", "1", "3", "2.16667"}));
}

void TestTrendWindow::currentIsWhatHoldsAtTheEnd_data()
{
    QTest::addColumn<QVector<Sample>>("samples");
    QTest::addColumn<QString>("current");
    using Samples = QVector<Sample>;
    QTest::newRow("number") << Samples{valid(0, 1), broken(1, SampleState::NotValid), valid(2, 3)} << "3";
    QTest::newRow("not valid") << Samples{valid(0, 1), broken(2, SampleState::NotValid)} << "(not valid)";
    QTest::newRow("no number") << Samples{valid(0, 1), broken(2, SampleState::NoNumber)} << "(no number)";
    QTest::newRow("no report") << Samples{valid(0, 1), broken(2, SampleState::NoReport)} << "(no report)";
    QTest::newRow("ended") << Samples{valid(0, 1), broken(2, SampleState::Ended)} << "(session ended)";
    QTest::newRow("text") << Samples{words(0, "Stopped"), words(2, "Running\nfast")} << "Running fast";
    QTest::newRow("empty text") << Samples{words(0, "Stopped"), words(2, " \n")} << "(empty)";
    const double rounded = 18446744073709551615.0;
    QTest::newRow("all digits") << Samples{{start, rounded, SampleState::Valid, "18446744073709551615"}}
                                << "18446744073709551615";
    QTest::newRow("no text") << Samples{words(0, "Stopped"), broken(2, SampleState::NotValid)}
                             << "(not valid)";
}

void TestTrendWindow::currentIsWhatHoldsAtTheEnd()
{
    QFETCH(QVector<Sample>, samples);
    source->add("Voltage", "float", samples);
    RUN(open());
    QTEST(cell(0, FigureModel::Current), "current");
}

void TestTrendWindow::skippedValuesAreCounted()
{
    source->add("Voltage", "float", {valid(0, 1), broken(1, SampleState::NoNumber), valid(2, 1)});
    source->add("Current", "float", {valid(0, 1), valid(2, 1)});
    RUN(open());
    QVERIFY(!table()->isColumnHidden(FigureModel::Skipped));
    QCOMPARE(cell(0, FigureModel::Skipped), "1");
    QCOMPARE(cell(1, FigureModel::Skipped), "");
    figures()->remove({0});
    QTRY_VERIFY(table()->isColumnHidden(FigureModel::Skipped));
}

void TestTrendWindow::numberlessCurveDrawsNothing()
{
    source->add("Voltage", "float",
                {broken(0, SampleState::NoNumber), broken(1, SampleState::NoNumber),
                 broken(2, SampleState::NoNumber)});
    RUN(open());
    QVERIFY(plot->curveItems().first()->curve().data.pieces.isEmpty());
    QCOMPARE(cell(0, FigureModel::Skipped), "3");
    QCOMPARE(cell(0, FigureModel::Mean), "–");
    const QwtInterval scale = plot->axisInterval(QwtPlot::yLeft);
    QCOMPARE(scale.minValue(), 0.0);
    QCOMPARE(scale.maxValue(), 1.0);
}

void TestTrendWindow::hiddenCurveIsNotDrawn()
{
    source->add("Voltage", "float", {valid(0, 230), valid(9, 231)});
    source->add("Current", "float", {valid(0, 100), broken(2, SampleState::NotValid), valid(9, 102)});
    RUN(open());
    QVERIFY(plot->axisInterval(QwtPlot::yLeft).contains(100));
    table()->setFocus();
    table()->setCurrentIndex(figures()->index(1, FigureModel::Name));
    QTest::keyClick(table(), Qt::Key_Space);
    QCOMPARE(figures()->index(1, FigureModel::Name).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QTRY_VERIFY(!plot->curveItems().at(1)->isVisible());
    QVERIFY(plot->gapBands()->gaps().isEmpty());
    QVERIFY(!plot->axisInterval(QwtPlot::yLeft).contains(100));
    QTest::keyClick(table(), Qt::Key_Space);
    QTRY_VERIFY(plot->curveItems().at(1)->isVisible());
}

void TestTrendWindow::tableFitsItsRows_data()
{
    QTest::addColumn<QSize>("size"); // of the window
    QTest::newRow("first") << QSize();
    QTest::newRow("smaller") << QSize(960, 540);
    QTest::newRow("larger") << QSize(1200, 900);
}

void TestTrendWindow::tableFitsItsRows()
{
    QFETCH(QSize, size);
    for (int curve = 0; curve < 4; ++curve) {
        source->add(QString("Point %1").arg(curve), "float", {valid(0, curve)});
    }
    RUN(open());
    if (size.isValid()) {
        window->resize(size);
    }
    const int rows = table()->rowHeight(0) * figures()->rowCount();
    QTRY_COMPARE(table()->viewport()->height(), rows);
    QCOMPARE(table()->verticalScrollBar()->maximum(), 0);
}

void TestTrendWindow::smallCurveGoesToTheRight()
{
    source->add("Voltage", "float", {valid(0, 228), valid(9, 232)});
    source->add("Power factor", "float", {valid(0, 0.9), valid(9, 0.95)});
    RUN(open());
    QVERIFY(plot->hasScale(Side::Right));
    QCOMPARE(plot->curveItems().at(0)->yAxis(), int(QwtPlot::yLeft));
    QCOMPARE(plot->curveItems().at(1)->yAxis(), int(QwtPlot::yRight));
    QVERIFY(!plot->axisInterval(QwtPlot::yLeft).contains(0.9));
    QVERIFY(plot->axisInterval(QwtPlot::yRight).contains(0.9));
}

void TestTrendWindow::pointsAreThereOnce()
{
    source->add("Voltage", "float", {valid(0, 1)});
    source->add("Voltage", "float", {valid(0, 1)}, "Meter");
    RUN(open());
    figures()->setData(figures()->index(0, FigureModel::Name), Qt::Unchecked, Qt::CheckStateRole);
    window->addPoints(source->points() + source->points());
    QCOMPARE(window->points().size(), 2);
    QCOMPARE(figures()->index(0, FigureModel::Name).data(Qt::CheckStateRole).toInt(), int(Qt::Unchecked));
    QCOMPARE(cell(0, FigureModel::Name), "Relay / Voltage");
    QCOMPARE(window->windowTitle(), "Trend: Relay, Meter");
}

void TestTrendWindow::firstOfTooManyPointsAreTaken()
{
    for (int curve = 0; curve < 10000; ++curve) {
        source->add(QString("Point %1").arg(curve), "float", {valid(0, 1), valid(9, 2)});
    }
    RUN(open());
    QCOMPARE(window->points().size(), TrendWindow::mostAtOnce);
    QCOMPARE(cell(TrendWindow::mostAtOnce - 1, FigureModel::Name), "Point 199");
    const auto *note = window->findChild<QLabel *>("note");
    QVERIFY(note->isVisible());
    QCOMPARE(note->text(), "Of 10000 points only the first 200 were taken: more could not be told apart.");
    window->addPoints(source->points().mid(300, 1));
    QVERIFY(!note->isVisible());
    table()->selectAll();
    table()->setFocus();
    QTest::keyClick(table(), Qt::Key_Delete);
    QCOMPARE(window->points().size(), 0);
}

void TestTrendWindow::removedRowsAreThoseSelected()
{
    for (int curve = 0; curve < 8; ++curve) {
        source->add(QString("Point %1").arg(curve), "float", {valid(0, curve)});
    }
    RUN(open());
    QAbstractItemModelTester tester(figures());
    const QSignalSpy relabelled(figures(), &FigureModel::curvesChanged);
    QCOMPARE(figures()->remove({6, 5, 4, 2, 0}),
             (QVector<PointId>{FakeSource::idOf("Point 6"), FakeSource::idOf("Point 5"),
                               FakeSource::idOf("Point 4"), FakeSource::idOf("Point 2"),
                               FakeSource::idOf("Point 0")}));
    QCOMPARE(relabelled.size(), 1);
    QStringList left;
    for (int row = 0; row < figures()->rowCount(); ++row) {
        left.append(cell(row, FigureModel::Name));
    }
    QCOMPARE(left, (QStringList{"Point 1", "Point 3", "Point 7"}));
}

void TestTrendWindow::hundredCurves()
{
    for (int curve = 0; curve < 100; ++curve) {
        source->add(QString("Point %1").arg(curve), "float", {valid(0, curve), valid(9, curve + 1)});
    }
    RUN(open());
    QCOMPARE(plot->curveItems().size(), 100);
    QVERIFY(plot->canvas()->height() > 150);
    QCOMPARE(source->requests.last().points.size(), 100);
}

QTEST_MAIN(TestTrendWindow)
#include "tst_trendwindow.moc"
