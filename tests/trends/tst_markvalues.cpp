#include "../history/recordings.h"
#include "history/history.h"
#include "history/recordingreader.h"
#include "trends/readout.h"
#include "trends/trendmarks.h"
#include "trends/viewcontrol.h"
#include "trendtest.h"
#include "widgets/quietline.h"

#include <QTemporaryDir>

namespace {

// A day, a sample a second: 100 and more of them in a column of the plot. Voltage is broken for a while and
// no report comes for another; the last two breaks of Current are in the same column.
constexpr int day = 86400; // s
constexpr int noReportsFrom = 50000;
constexpr int noReportsUntil = 50100;
constexpr char meters[] = "meters";

Reading readingOf(const QString &name, int second, SampleState state)
{
    const bool isValid = state == SampleState::Valid;
    return {name, "40001", "float", isValid ? second * 7919 % 977 : FakeSource::noNumber, state, {}};
}

QString valueAt(int second)
{
    return QString::number(second * 7919 % 977);
}

Readings reportAt(int second)
{
    const bool isBroken = second >= 3000 && second < 3500;
    const SampleState last = second == day - 10 ? SampleState::NotValid
        : second == day - 1                     ? SampleState::NoNumber
                                                : SampleState::Valid;
    return {start + second * qint64(1000),
            "192.168.1.80",
            "plant",
            meters,
            {readingOf("Voltage", second, isBroken ? SampleState::NotValid : SampleState::Valid),
             readingOf("Current", second, last)}};
}

template <class Taker> void giveDay(Taker *taker)
{
    for (int second = 0; second < day; ++second) {
        if (second < noReportsFrom || second >= noReportsUntil) {
            taker->add(reportAt(second));
        }
    }
}

} // namespace

// The readout, the markers and the end of the screen tell samples, however few of them a plot can show.
class TestMarkValues : public TrendTest
{
    Q_OBJECT
private slots:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();
    void tellsTheSampleOfADay_data();
    void tellsTheSampleOfADay();
    void tellsWhatIsLate_data() { currentIsTheLastOfItsColumn_data(); }
    void tellsWhatIsLate();
    void markersOfADay_data();
    void markersOfADay();
    void currentIsTheLastOfItsColumn_data();
    void currentIsTheLastOfItsColumn();
    void figuresOfAnotherRangeAreNotTold_data();
    void figuresOfAnotherRangeAreNotTold();
    void currentOfAnotherTimeIsNotTold();
    void followedFiguresDoNotComeAndGo();
    void followingWaitsForASlowSource();
    void followingGoesOnAfterAFailure();
    void doesNotWaitForCurves();
    void oldValuesStayWithTheirTime();
    void takenAwayMeanwhile();
    void tellsNothingOnceTheSourceIsGone();

private:
    // Over the day, and an hour before and after it. All rows of one kind share a window.
    void showDay(const QString &kind, int late = 5);
    void setPresent(int late);
    void view(const TimeRange &range);
    SampleSource *history();
    SampleSource *recording();
    void openFake(bool growing = false);
    QStringList row() const;
    void answerAll();
    // Until the window has looked at the present some times more.
    static void letTick();
    void point(double second) { marks()->setCursor(start + qint64(second * 1000)); }
    TrendMarks *marks() const { return window->findChild<TrendMarks *>(); }
    QStringList readout() const { return window->findChild<Readout *>()->lines(); }
    QString line() const { return window->findChild<QuietLine *>("markerLine")->text(); }
    static QString timeAt(double second)
    {
        return QDateTime::fromMSecsSinceEpoch(start + qint64(second * 1000))
            .toString("yyyy-MM-dd hh:mm:ss.zzz");
    }

    QTemporaryDir m_folder{Recordings::folderTemplate()};
    QMap<QString, QPointer<TrendWindow>> m_shown; // by the kind of their sources
    std::unique_ptr<History> m_history;
    std::unique_ptr<RecordingReader> m_reader;
};

void TestMarkValues::initTestCase()
{
    Recordings::registerAnswers();
}

void TestMarkValues::cleanup()
{
    if (std::find(m_shown.cbegin(), m_shown.cend(), window) == m_shown.cend()) {
        delete window;
    }
}

void TestMarkValues::cleanupTestCase()
{
    for (TrendWindow *each : qAsConst(m_shown)) {
        delete each;
    }
}

SampleSource *TestMarkValues::history()
{
    if (!m_history) {
        m_history = std::make_unique<History>();
        giveDay(m_history.get());
    }
    return m_history.get();
}

SampleSource *TestMarkValues::recording()
{
    if (m_reader) {
        return m_reader.get();
    }
    const RecordingTarget target = Recordings::file(m_folder.filePath("day.sqlite"));
    Recorder recorder;
    Recorder::Limits limits;
    limits.queueBytes = 512LL * 1024 * 1024;
    recorder.setLimits(limits);
    recorder.start(target, {});
    giveDay(&recorder);
    m_reader = std::make_unique<RecordingReader>();
    QSignalSpy opened(m_reader.get(), &RecordingReader::opened);
    if (!Recordings::stopAndWait(&recorder) || recorder.status().dropped > 0) {
        qFatal("%s", qPrintable(recorder.status().error));
    }
    // As its recorder would have left it, had it been killed then.
    Recordings::asked(target.file,
                      QString("DELETE FROM sample WHERE time >= %1").arg(start + day * qint64(1000)));
    Recordings::asked(target.file, "UPDATE recording SET ended = NULL");
    m_reader->open(target);
    if (opened.isEmpty() && !opened.wait(10000)) {
        qFatal("The recording does not open.");
    }
    return m_reader.get();
}

void TestMarkValues::setPresent(int late)
{
    window->setClock([late] { return ArrivalClock::Present{start + (day + late) * qint64(1000), 0}; });
}

void TestMarkValues::showDay(const QString &kind, int late)
{
    window = m_shown.value(kind);
    if (window) {
        setPresent(late);
        marks()->setCursor(std::nullopt);
        marks()->setMarker(0, start); // so that both are taken away
        marks()->toggle({start, start});
        return;
    }
    SampleSource *const real = kind == "history" ? history() : recording();
    TrendFeed::interval = 0;
    window = new TrendWindow(real);
    plot = window->findChild<TrendPlot *>();
    setPresent(late);
    window->resize(900, 600);
    window->show();
    QVERIFY(QTest::qWaitForWindowExposed(window));
    window->addPoints(real->points());
    RUN(view({start - TimeView::hour, start + day * qint64(1000) + TimeView::hour}));
    QVERIFY(plot->columns() < 900);
    m_shown.insert(kind, window);
}

// Waits until all of it is answered.
void TestMarkValues::view(const TimeRange &range)
{
    QSignalSpy thinned(window->source(), &SampleSource::thinned);
    window->findChild<ViewControl *>()->setView(TimeView(range));
    QTRY_VERIFY(!thinned.isEmpty()
                && thinned.last().at(1).value<SampleSource::Request>().range.to == range.to);
    QSignalSpy known(window->findChild<TrendFeed *>(), &TrendFeed::answeredAt);
    window->findChild<TrendFeed *>()->askAt(Mark::Pointer, start, start);
    QTRY_VERIFY(!known.isEmpty());
}

void TestMarkValues::tellsTheSampleOfADay_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<double>("second");
    QTest::addColumn<QString>("value");
    const struct {
        const char *name;
        double second;
        QString value;
    } rows[] = {
        {"before the first", -0.001, "–"},
        {"at the first", 0, valueAt(0)},
        {"at one", 40000, valueAt(40000)},
        {"between two", 40000.5, valueAt(40000)},
        {"before the next", 40000.999, valueAt(40000)},
        {"behind the last before a gap", 2999.5, "(not valid)"},
        {"in the gap", 3100.5, "(not valid)"},
        {"behind the gap", 3500, valueAt(3500)},
        {"no report yet", 50001, "(no report)"},
        {"no report", 50050, "(no report)"},
        {"reports come again", 50100.5, valueAt(50100)},
        {"after the last", day + 3, valueAt(day - 1)},
        {"after the present", day + 6, "–"},
    };
    for (const char *const kind : {"history", "recording"}) {
        for (const auto &row : rows) {
            QTest::addRow("%s, %s", kind, row.name) << QString::fromLatin1(kind) << row.second << row.value;
        }
    }
}

void TestMarkValues::tellsTheSampleOfADay()
{
    QFETCH(QString, kind);
    QFETCH(double, second);
    QFETCH(QString, value);
    RUN(showDay(kind));
    point(second);
    QTRY_COMPARE(readout().value(0), timeAt(second));
    QCOMPARE(readout().value(1), "Voltage\t" + value);
}

void TestMarkValues::tellsWhatIsLate()
{
    QFETCH(QString, kind);
    RUN(showDay(kind, 60));
    RUN(view({start, start + (day + 10) * qint64(1000)}));
    QTRY_COMPARE(cell(0, FigureModel::Current), QString("(no report)"));
    point(day + 3);
    QTRY_COMPARE(readout().value(1), QString("Voltage\t(no report)"));
    point(day - 1);
    QTRY_COMPARE(readout().value(1), "Voltage\t" + valueAt(day - 1));
}

void TestMarkValues::markersOfADay_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<double>("a");
    QTest::addColumn<double>("b");
    QTest::addColumn<QStringList>("cells");
    for (const char *const kind : {"history", "recording"}) {
        QTest::addRow("%s, two numbers", kind)
            << QString::fromLatin1(kind) << 40000.5 << 60001.5
            << QStringList{valueAt(40000), valueAt(60001),
                           QString::number(valueAt(60001).toInt() - valueAt(40000).toInt())};
        QTest::addRow("%s, one in a gap", kind) << QString::fromLatin1(kind) << 40000.5 << 50050.0
                                                << QStringList{valueAt(40000), "(no report)", "–"};
        QTest::addRow("%s, one before all", kind)
            << QString::fromLatin1(kind) << -5.0 << 100.0 << QStringList{"–", valueAt(100), "–"};
    }
}

void TestMarkValues::markersOfADay()
{
    QFETCH(QString, kind);
    QFETCH(double, a);
    QFETCH(double, b);
    RUN(showDay(kind));
    marks()->setMarker(0, start + qint64(a * 1000));
    QTRY_COMPARE(line(), "A " + timeAt(a));
    QCOMPARE(cell(0, FigureModel::AtB), QString());
    marks()->setMarker(1, start + qint64(b * 1000));
    QTRY_VERIFY(line().contains("B " + timeAt(b)));
    QTEST(
        (QStringList{cell(0, FigureModel::AtA), cell(0, FigureModel::AtB), cell(0, FigureModel::Difference)}),
        "cells");
}

void TestMarkValues::currentIsTheLastOfItsColumn_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("history") << "history";
    QTest::newRow("recording") << "recording";
}

void TestMarkValues::currentIsTheLastOfItsColumn()
{
    QFETCH(QString, kind);
    RUN(showDay(kind));
    RUN(view({start - TimeView::hour, start + day * qint64(1000)}));
    QTRY_COMPARE(cell(0, FigureModel::Current), valueAt(day - 1));
    QTRY_COMPARE(cell(1, FigureModel::Current), QString("(no number)"));
}

void TestMarkValues::doesNotWaitForCurves()
{
    SampleSource *const reader = recording();
    QSignalSpy thinned(reader, &SampleSource::thinned);
    QStringList told;
    const QObject until;
    connect(reader, &SampleSource::knownAt, &until,
            [&](const void *asker, const SampleSource::Moment &moment, const QVector<ValueAt> &values) {
                if (asker == this) {
                    told.append(QString("%1=%2, curves: %3")
                                    .arg((moment.time - start) / 1000)
                                    .arg(values.value(0).number)
                                    .arg(thinned.size()));
                    if (told.size() == 1) {
                        reader->requestAt(this, {moment.points, start + 41000 * qint64(1000)});
                    }
                }
            });
    const PointId id = reader->points().first().id;
    reader->request(this, {QVector<PointId>(8, id), {start, start + day * qint64(1000)}, 800});
    reader->requestAt(this, {{id}, start + 40000 * qint64(1000)});
    QTRY_COMPARE(
        told,
        (QStringList{"40000=" + valueAt(40000) + ", curves: 0", "41000=" + valueAt(41000) + ", curves: 0"}));
    QTRY_COMPARE_WITH_TIMEOUT(thinned.size(), 1, 20000);
}

void TestMarkValues::openFake(bool growing)
{
    source = std::make_unique<FakeSource>();
    source->add("Voltage", "float", {valid(0, 230), valid(400, 240), valid(600, 235), valid(1000, 231.5)});
    RUN(open(growing));
}

QStringList TestMarkValues::row() const
{
    return {cell(0, FigureModel::Current), cell(0, FigureModel::Least), cell(0, FigureModel::Greatest),
            cell(0, FigureModel::Mean), cell(0, FigureModel::Skipped)};
}

void TestMarkValues::answerAll()
{
    const auto moments = source->moments;
    source->moments.clear();
    for (const auto &each : moments) {
        source->answerAt(each.first, each.second);
    }
    source->answer(window->findChild<TrendFeed *>(), source->requests.last());
    redrawn();
}

void TestMarkValues::letTick()
{
    QTimer timer;
    const QSignalSpy ticks(&timer, &QTimer::timeout);
    timer.start(TrendWindow::tick);
    QTRY_VERIFY(ticks.size() > 5);
}

void TestMarkValues::figuresOfAnotherRangeAreNotTold_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QStringList>("figures");
    QTest::newRow("less") << int(Qt::Key_Plus) << QStringList{"235", "235", "240", "237.5", ""};
    QTest::newRow("another time") << int(Qt::Key_PageUp) << QStringList{"230", "230", "230", "230", ""};
    QTest::newRow("nothing there") << int(Qt::Key_PageDown)
                                   << QStringList{"231.5", "231.5", "231.5", "231.5", ""};
}

void TestMarkValues::figuresOfAnotherRangeAreNotTold()
{
    QFETCH(int, key);
    RUN(openFake());
    QCOMPARE(row(), (QStringList{"231.5", "230", "240", "234.125", ""}));
    source->answers = false;
    source->answersMoments = false;
    source->moments.clear();
    press(key);
    QCOMPARE(row(), (QStringList{"…", "…", "…", "…", "…"}));
    RUN(answerAll());
    QTEST(row(), "figures");
}

// The figures of curves come before the value at their end, which the source may even forget.
void TestMarkValues::currentOfAnotherTimeIsNotTold()
{
    RUN(openFake());
    source->answersMoments = false;
    source->moments.clear();
    press(Qt::Key_PageUp);
    QCOMPARE(row(), (QStringList{"…", "230", "230", "230", ""}));
    QVERIFY(source->moments.size() > 1);
    source->moments = source->moments.mid(1); // the first one is forgotten
    RUN(answerAll());
    QCOMPARE(row(), (QStringList{"230", "230", "230", "230", ""}));
}

void TestMarkValues::followedFiguresDoNotComeAndGo()
{
    RUN(openFake(true));
    QTRY_VERIFY(!row().contains("…"));
    const QStringList before = row();
    const qint64 shown = plot->timeAt(plot->columns());
    source->answers = false;
    source->answersMoments = false;
    const int asked = source->requests.size();
    source->append(FakeSource::idOf("Voltage"),
                   {QDateTime::currentMSecsSinceEpoch(), 7, SampleState::Valid, {}});
    QTRY_VERIFY(source->requests.size() > asked);
    RUN(letTick());
    QCOMPARE(row(), before);
    QCOMPARE(plot->timeAt(plot->columns()), shown);
    RUN(answerAll());
    QTRY_VERIFY(plot->timeAt(plot->columns()) > shown);
    QVERIFY(!row().contains("…"));
}

// A question that takes the place of another one would keep both from being answered.
void TestMarkValues::followingWaitsForASlowSource()
{
    RUN(openFake(true));
    source->answers = false;
    const auto append = [this] {
        source->append(FakeSource::idOf("Voltage"),
                       {QDateTime::currentMSecsSinceEpoch(), 7, SampleState::Valid, {}});
    };
    const int asked = source->requests.size();
    append();
    QTRY_COMPARE(source->requests.size(), asked + 1);
    append();
    RUN(letTick());
    QCOMPARE(source->requests.size(), asked + 1);
    press(Qt::Key_Plus); // the user does not wait
    QCOMPARE(source->requests.size(), asked + 2);
    RUN(answerAll());
    QTRY_VERIFY(source->requests.size() > asked + 2); // what came meanwhile
}

void TestMarkValues::followingGoesOnAfterAFailure()
{
    RUN(openFake(true));
    source->answers = false;
    const int asked = source->requests.size();
    const PointId id = FakeSource::idOf("Voltage");
    source->append(id, {QDateTime::currentMSecsSinceEpoch(), 7, SampleState::Valid, {}});
    QTRY_COMPARE(source->requests.size(), asked + 1);
    emit source->failed("The server can't be reached.");
    RUN(letTick());
    const int before = source->requests.size(); // the note has made the plot smaller
    source->append(id, {QDateTime::currentMSecsSinceEpoch(), 7, SampleState::Valid, {}});
    QTRY_VERIFY(source->requests.size() > before);
}

void TestMarkValues::oldValuesStayWithTheirTime()
{
    RUN(openFake());
    point(399);
    marks()->setMarker(0, start + 399000);
    QCOMPARE(readout(), (QStringList{timeAt(399), "Voltage\t230"}));
    source->answersMoments = false;
    point(700);
    marks()->setMarker(0, start + 700000);
    redrawn();
    QCOMPARE(readout(), (QStringList{timeAt(399), "Voltage\t230"}));
    QCOMPARE(cell(0, FigureModel::AtA), QString("230"));
    QCOMPARE(line(), "A " + timeAt(399));
    const auto asked = source->moments;
    for (const auto &each : asked) {
        source->answerAt(each.first, each.second);
    }
    QCOMPARE(readout(), (QStringList{timeAt(700), "Voltage\t235"}));
    QCOMPARE(cell(0, FigureModel::AtA), QString("235"));
    QCOMPARE(line(), "A " + timeAt(700));
}

void TestMarkValues::takenAwayMeanwhile()
{
    RUN(openFake());
    source->answersMoments = false;
    point(399);
    marks()->setMarker(1, start + 399000);
    marks()->setCursor(std::nullopt);
    marks()->toggle({start, start + 1000000});
    const auto asked = source->moments;
    for (const auto &each : asked) {
        source->answerAt(each.first, each.second);
    }
    QCOMPARE(readout(), QStringList());
    QCOMPARE(line(), QString());
    QCOMPARE(cell(0, FigureModel::AtB), QString());
}

void TestMarkValues::tellsNothingOnceTheSourceIsGone()
{
    RUN(openFake());
    point(399);
    source.reset();
    point(700);
    marks()->setMarker(0, start + 700000);
    QCOMPARE(readout(), (QStringList{timeAt(700), "Voltage\t"}));
    QCOMPARE(line(), "A " + timeAt(700));
    QCOMPARE(cell(0, FigureModel::AtA), QString());
}

QTEST_MAIN(TestMarkValues)
#include "tst_markvalues.moc"
