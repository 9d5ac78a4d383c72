#include "history/recordingcursor.h"
#include "history/recordingcurvereader.h"
#include "history/recordingdatabase.h"
#include "history/recordinghelpers.h"
#include "history/recordingreader.h"
#include "history/recordingsession.h"
#include "recordings.h"

#include <QTemporaryDir>
#include <QThread>

using namespace Recordings;

Q_DECLARE_METATYPE(SampleState)
Q_DECLARE_METATYPE(ValueAt::Kind)

// The threads that read a recording for a trend window: what they do for each other, and when one fails.
class TestRecordingSession : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void curvesDoNotWaitForThePointer();
    void pointerDoesNotWaitForCurves();
    void sessionReadsWhatHelpersCanNot();
    void helperThatCanNotOpenDoesNothing();
    void helperOpensAnew_data();
    void helperOpensAnew();
    void lookUpLeavesTheFileFree();
    void looksUpAgainAfterALock();
    void looksUpInTheFileThatIsOpen();
    void silenceBreaks_data();
    void silenceBreaks();
    void endIsNoSilence_data();
    void endIsNoSilence();
    void silenceWithTwoRecorders_data();
    void silenceWithTwoRecorders();
    void silenceIsThatOfACurve_data();
    void silenceIsThatOfACurve();
    void clocksOfRecordersMayDiffer();
    void growsByAnyClock_data();
    void growsByAnyClock();
    void namesBoxes_data();
    void namesBoxes();

private:
    QString path() const { return m_folder->filePath("plant.sqlite"); }
    // In the place of what was there.
    void recordSome(const QStringList &names) const;
    // The number of the first point's last sample, or why there is none.
    static QString lastNumber(RecordingDatabase *database);

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestRecordingSession::initTestCase()
{
    registerAnswers();
}

void TestRecordingSession::init()
{
    m_folder = std::make_unique<QTemporaryDir>(folderTemplate());
}

void TestRecordingSession::recordSome(const QStringList &names) const
{
    QVector<Reading> rows;
    for (const QString &name : names) {
        rows.append(reading(name, "1"));
    }
    QFile::remove(path());
    record(file(path()), {report(0, rows), report(1000, rows)});
}

// The pointer moves on as soon as it is told its values, on a server that is slower than that.
void TestRecordingSession::curvesDoNotWaitForThePointer()
{
    recordSome({"U"});
    RecordingSession session(file(path()), 30);
    session.open();
    bool hasCurves = false;
    int moments = 0;
    connect(&session, &RecordingSession::answered, this, [&] { hasCurves = true; });
    connect(&session, &RecordingSession::answeredAt, this, [&](const RecordingSession::AskedAt &asked) {
        if (!hasCurves && ++moments < 100) {
            session.askAt({asked.asker, asked.moment, {}});
        }
    });
    session.askAt({this, {{id("U")}, start + 500}, {}});
    session.ask({1, this, {{id("U")}, {start, start + 1000000}, 10}});
    session.answerAll();
    QVERIFY(hasCurves);
    QCOMPARE(moments, 1);
}

// Nor does it when the session's own thread has nothing left to read, but another one has.
void TestRecordingSession::pointerDoesNotWaitForCurves()
{
    record(file(path()), {report(0, {reading("Short", "1"), reading("Long", "1")})});
    asked(path(),
          QString("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 500000) "
                  "INSERT INTO sample SELECT id, %1 + 100000 + i, i, NULL, 1 FROM n, point "
                  "WHERE name = 'Long' OR i < 20000")
              .arg(start));
    RecordingReader reader;
    QSignalSpy opened(&reader, &RecordingReader::opened);
    reader.open(file(path()));
    QVERIFY(opened.wait());
    QElapsedTimer clock;
    qint64 last = 0;
    qint64 longest = 0; // ms without an answer
    const auto told = [&] {
        longest = qMax(longest, clock.elapsed() - last);
        last = clock.elapsed();
    };
    connect(&reader, &RecordingReader::knownAt, this,
            [&](const void *asker, const SampleSource::Moment &moment) {
                told();
                reader.requestAt(asker, moment);
            });
    QSignalSpy thinned(&reader, &RecordingReader::thinned);
    clock.start();
    reader.request(this, {{id("Short"), id("Long")}, {start, start + 1000000}, 1000});
    reader.requestAt(&last, {{id("Long")}, start + 100500});
    QVERIFY(thinned.wait(20000));
    told();
    QVERIFY2(longest < last / 2, qPrintable(QString("%1 of %2 ms").arg(longest).arg(last)));
}

// The file is no longer there to be opened; the session still has it.
void TestRecordingSession::sessionReadsWhatHelpersCanNot()
{
    QStringList names;
    QVector<PointId> points;
    for (int point = 0; point < 50; ++point) {
        names.append(QString("U%1").arg(point));
        points.append(id(names.last()));
    }
    recordSome(names);
    constexpr int never = 1000000; // ms; nor does it look for the file
    RecordingSession session(file(path()), never);
    session.open();
    QVERIFY(QFile::remove(path()));
    QVector<qint64> counts;
    connect(&session, &RecordingSession::answered, this, [&counts](const RecordingSession::Answer &answer) {
        for (const Thinned &each : answer.thinned) {
            counts.append(each.statistics.count);
        }
    });
    session.ask({1, this, {points, {start, start + 1000}, 10}});
    session.answerAll();
    QCOMPARE(counts, QVector<qint64>(50, 2));
}

void TestRecordingSession::helperThatCanNotOpenDoesNothing()
{
    RecordingHelpers helpers(file(path()), 50);
    std::atomic<int> worked{0};
    helpers.start(1, [&worked](RecordingDatabase *) { return ++worked > 0; });
    QVERIFY(helpers.wait(20000));
    QCOMPARE(int(worked), 0);
}

void TestRecordingSession::helperOpensAnew_data()
{
    QTest::addColumn<bool>("fails");
    QTest::addColumn<bool>("reopens");
    QTest::addColumn<QVariantList>("points"); // in the file, as seen one after the other
    QTest::newRow("all is well") << false << false << QVariantList{1, 1, 1};
    QTest::newRow("its connection fails") << true << false << QVariantList{1, 1, 2};
    QTest::newRow("another file is there") << false << true << QVariantList{1, 2, 2};
}

void TestRecordingSession::helperOpensAnew()
{
    QFETCH(bool, fails);
    QFETCH(bool, reopens);
    if (QThread::idealThreadCount() < 2) {
        QSKIP("There is no processor for a helper.");
    }
    recordSome({"U"});
    RecordingHelpers helpers(file(path()), 50);
    QVariantList points;
    bool isOk = true;
    const auto look = [&] {
        helpers.start(1, [&](RecordingDatabase *database) {
            QVariant count;
            database->readCell("SELECT count(*) FROM point", &count);
            points.append(count.toInt());
            return isOk;
        });
        QVERIFY(helpers.wait(20000));
    };
    look();
    recordSome({"U", "I"});
    if (reopens) {
        helpers.reopen();
    }
    isOk = !fails;
    look();
    isOk = true;
    look();
    QTEST(points, "points");
}

QString TestRecordingSession::lastNumber(RecordingDatabase *database)
{
    Sample sample;
    bool found = false;
    if (!readNeighbour(database, {1}, Neighbour::Before, start + 5000, &sample, &found)) {
        return database->isLocked() ? "locked" : database->error();
    }
    return found ? QString::number(sample.number) : "none";
}

// A statement that waits for its next row would keep recorders from writing.
void TestRecordingSession::lookUpLeavesTheFileFree()
{
    record(file(path()),
           {report(0, {reading("U", "1")}), report(1000, {reading("U", "no number")}),
            report(2000, {reading("U", "1")})});
    RecordingDatabase database(file(path()));
    QVERIFY(database.open(RecordingDatabase::Access::Read));
    RecordingMerge samples(&database, {1}, {start, start + 5000});
    Sample sample;
    QVERIFY(samples.next(&sample));
    QCOMPARE(lastNumber(&database), QString("1"));
    QCOMPARE(asked(path(), "UPDATE sample SET number = 2 WHERE validity = 1"), QStringList());
}

void TestRecordingSession::looksUpAgainAfterALock()
{
    recordSome({"U"});
    RecordingDatabase database(file(path()));
    database.setPatience(50);
    QVERIFY(database.open(RecordingDatabase::Access::Read));
    QCOMPARE(lastNumber(&database), QString("1"));
    Lock lock(path());
    QVERIFY(lock.isHeld());
    QCOMPARE(lastNumber(&database), QString("locked"));
    QVERIFY(lock.release());
    QCOMPARE(lastNumber(&database), QString("1"));
}

void TestRecordingSession::looksUpInTheFileThatIsOpen()
{
    recordSome({"U"});
    RecordingDatabase database(file(path()));
    QVERIFY(database.open(RecordingDatabase::Access::Read));
    QCOMPARE(lastNumber(&database), QString("1"));
    recordSome({"U"});
    QCOMPARE(asked(path(), "UPDATE sample SET number = 2 WHERE validity = 1"), QStringList());
    QVERIFY(database.open(RecordingDatabase::Access::Read));
    QCOMPARE(lastNumber(&database), QString("2"));
}

// A recorder tells with the next report that one was late. Until that comes its reader sees so.
void TestRecordingSession::silenceBreaks_data()
{
    QTest::addColumn<QVector<int>>("reports"); // s
    QTest::addColumn<bool>("ended");
    QTest::addColumn<int>("now");
    QTest::addColumn<QString>("gaps");  // up to a time before the present
    QTest::addColumn<QString>("value"); // at that time
    const QVector<int> seconds{0, 1, 2, 3};
    const QVector<int> minutes{0, 300, 600, 900, 1200, 1500, 1800};
    QTest::newRow("in time") << seconds << false << 13 << ""
                             << "number";
    QTest::newRow("late") << seconds << false << 14 << "3..13: 3"
                          << "break";
    QTest::newRow("ended") << seconds << true << 60 << "3..55: 4"
                           << "break";
    QTest::newRow("one report") << QVector<int>{0} << false << 60 << "0..55: 3"
                                << "break";
    QTest::newRow("five minutes are usual") << minutes << false << 2700 << ""
                                            << "number";
    QTest::newRow("fifteen are not") << minutes << false << 2701 << "1800..2700: 3"
                                     << "break";
}

void TestRecordingSession::silenceBreaks()
{
    QFETCH(QVector<int>, reports);
    QFETCH(bool, ended);
    QFETCH(int, now);
    QVector<Readings> all;
    for (const int second : qAsConst(reports)) {
        all.append(report(second * 1000, {reading("U", "1")}));
    }
    record(file(path()), all);
    asked(path(),
          ended ? QString("UPDATE sample SET time = %1 WHERE validity = 4").arg(start + 4000)
                : QString("DELETE FROM sample WHERE validity = 4 OR validity = 3 AND time > %1")
                      .arg(start + reports.last() * 1000));
    asked(path(), QString("UPDATE recording SET ended = NULL WHERE %1").arg(int(!ended)));
    RecordingDatabase database(file(path()));
    QVERIFY(database.open(RecordingDatabase::Access::Read));
    RecordingPoints points;
    QVERIFY(points.read(&database));
    RecordingCurveReader reader(&database, *points.find(id("U")), 0);
    constexpr int before = 5;
    const qint64 time = start + (now - before) * 1000;
    Thinned thinned;
    const auto goesOn = [] { return RecordingCurveReader::Result::Done; };
    const TimeRange range{start + qMax(0, reports.last() - 1) * 1000, time};
    QCOMPARE(reader.thin({{id("U")}, range, 100, start + now * 1000}, goesOn, &thinned),
             RecordingCurveReader::Result::Done);
    QStringList gaps;
    for (const Thinned::Gap &gap : qAsConst(thinned.gaps)) {
        gaps.append(QString("%1..%2: %3")
                        .arg((gap.range.from - start) / 1000)
                        .arg((gap.range.to - start) / 1000)
                        .arg(int(gap.why)));
    }
    QTEST(gaps.join(' '), "gaps");
    ValueAt value;
    QVERIFY(reader.valueAt(time, start + now * 1000, &value));
    QTEST(QString::fromLatin1(value.kind == ValueAt::Kind::Break ? "break" : "number"), "value");
}

// Whatever was reported last.
void TestRecordingSession::endIsNoSilence_data()
{
    QTest::addColumn<QString>("valid");
    QTest::addColumn<QString>("sql");
    QTest::addColumn<SampleState>("why");
    QTest::newRow("valid") << "1"
                           << "" << SampleState::Ended;
    QTest::newRow("not valid") << "0"
                               << "" << SampleState::Ended;
    QTest::newRow("not valid, of an earlier version")
        << "0"
        << "DELETE FROM sample WHERE validity = 4" << SampleState::NotValid;
}

void TestRecordingSession::endIsNoSilence()
{
    QFETCH(QString, valid);
    QFETCH(QString, sql);
    const auto at = [&valid](qint64 time) { return report(time, {reading("U", "1", "float", valid)}); };
    record(file(path()), {at(0), at(1000)});
    asked(path(), QString("UPDATE sample SET time = %1 WHERE validity = 4;").arg(start + 2000) + sql);
    RecordingDatabase database(file(path()));
    QVERIFY(database.open(RecordingDatabase::Access::Read));
    RecordingPoints points;
    QVERIFY(points.read(&database));
    ValueAt value;
    QVERIFY(RecordingCurveReader(&database, *points.find(id("U")), 0)
                .valueAt(start + 60000, start + 60000, &value));
    QCOMPARE(value.kind, ValueAt::Kind::Break);
    QTEST(value.why, "why");
}

// Which are two programs: each of the reports is there twice.
void TestRecordingSession::silenceWithTwoRecorders_data()
{
    QTest::addColumn<int>("apart");            // ms
    QTest::addColumn<QVector<int>>("reports"); // min
    QTest::addColumn<int>("quiet");            // s
    QTest::addColumn<ValueAt::Kind>("kind");
    const QVector<int> each{0, 1, 2, 3, 4, 5};
    const QVector<int> outage{0, 1, 2, 3, 60};
    QTest::newRow("in time") << 5 << each << 60 << ValueAt::Kind::Number;
    QTest::newRow("late") << 5 << each << 181 << ValueAt::Kind::Break;
    QTest::newRow("other clocks") << 5000 << each << 60 << ValueAt::Kind::Number;
    QTest::newRow("in time after an outage") << 5 << outage << 60 << ValueAt::Kind::Number;
    QTest::newRow("late after an outage") << 5 << outage << 181 << ValueAt::Kind::Break;
}

void TestRecordingSession::silenceWithTwoRecorders()
{
    QFETCH(int, apart);
    QFETCH(QVector<int>, reports);
    QFETCH(int, quiet);
    QVector<Readings> all;
    for (const int minute : qAsConst(reports)) {
        all.append(report(minute * 60000, {reading("U", "1")}));
    }
    record(file(path()), all);
    asked(path(),
          QString("DELETE FROM sample WHERE validity = 4; UPDATE recording SET ended = NULL; "
                  "INSERT INTO sample SELECT point, time + %1, number, text, validity FROM sample")
              .arg(apart));
    RecordingDatabase database(file(path()));
    QVERIFY(database.open(RecordingDatabase::Access::Read));
    RecordingPoints points;
    QVERIFY(points.read(&database));
    const qint64 now = start + reports.last() * 60000 + apart + quiet * 1000;
    ValueAt value;
    QVERIFY(RecordingCurveReader(&database, *points.find(id("U")), 0).valueAt(now, now, &value));
    QTEST(value.kind, "kind");
}

// Whatever the present of the others.
void TestRecordingSession::silenceIsThatOfACurve_data()
{
    QTest::addColumn<qint64>("seen"); // ms before now
    QTest::addColumn<ValueAt::Kind>("kind");
    QTest::newRow("came a moment ago") << qint64(10000) << ValueAt::Kind::Number;
    QTest::newRow("silent") << qint64(10001) << ValueAt::Kind::Break;
}

void TestRecordingSession::silenceIsThatOfACurve()
{
    QFETCH(qint64, seen);
    record(file(path()), {report(0, {reading("U", "1")}), report(1000, {reading("U", "1")})});
    asked(path(), "DELETE FROM sample WHERE validity = 4; UPDATE recording SET ended = NULL");
    RecordingDatabase database(file(path()));
    QVERIFY(database.open(RecordingDatabase::Access::Read));
    RecordingPoints points;
    QVERIFY(points.read(&database));
    RecordingPoints::Curve curve = *points.find(id("U"));
    constexpr qint64 now = 1000000;
    curve.seen = now - seen;
    ValueAt value;
    QVERIFY(RecordingCurveReader(&database, curve, now).valueAt(start + 60000, start + 60000, &value));
    QTEST(value.kind, "kind");
}

// One that is a minute behind does not look late for that.
void TestRecordingSession::clocksOfRecordersMayDiffer()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch() - start;
    Recorder ahead;
    Recorder behind;
    const auto add = [&](qint64 time) {
        ahead.add(report(now + time, {reading("A", "1")}));
        Readings other = report(now + time - 60000, {reading("B", "1")});
        other.standard = "others";
        behind.add(other);
    };
    for (Recorder *recorder : {&ahead, &behind}) {
        recorder->setLimits(quick());
        recorder->start(file(path()), {});
    }
    add(0);
    QTRY_VERIFY(ahead.status().samples == 1 && behind.status().samples == 1);
    RecordingReader reader;
    QSignalSpy opened(&reader, &RecordingReader::opened);
    reader.setPollInterval(30);
    reader.open(file(path()));
    QVERIFY(opened.wait());
    add(1000);
    const PointId id{"192.168.1.80", "plant", "others", "B"};
    QTRY_COMPARE(reader.extent(id).to, start + now - 59000);
    QSignalSpy thinned(&reader, &RecordingReader::thinned);
    const qint64 present = qMax(start + now, reader.present(start + now));
    reader.request(this, {{id}, {start + now - 61000, present}, 100, present});
    QVERIFY(thinned.wait());
    const Thinned answer = thinned.first().at(2).value<QVector<Thinned>>().value(0);
    QCOMPARE(answer.statistics.count, qint64(2));
    QVERIFY(answer.gaps.isEmpty());
    QVERIFY(stopAndWait(&ahead) && stopAndWait(&behind));
}

void TestRecordingSession::growsByAnyClock_data()
{
    QTest::addColumn<int>("ahead");  // min
    QTest::addColumn<bool>("other"); // whether a point has ended, by the clock of this computer
    QTest::newRow("of this computer") << 0 << false;
    QTest::newRow("behind") << -10 << false;
    QTest::newRow("ahead") << 10 << false;
    QTest::newRow("beside one ahead") << -10 << true;
}

void TestRecordingSession::growsByAnyClock()
{
    QFETCH(int, ahead);
    QFETCH(bool, other);
    const qint64 wall = QDateTime::currentMSecsSinceEpoch();
    const qint64 now = wall - start + ahead * 60000;
    if (other) {
        record(file(path()), {report(now + 60000, {reading("V", "1")})});
    }
    Recorder recorder;
    recorder.setLimits(quick());
    recorder.start(file(path()), {});
    recorder.add(report(now, {reading("U", "1")}));
    QTRY_COMPARE(recorder.status().samples, qint64(1));
    RecordingReader reader;
    QSignalSpy opened(&reader, &RecordingReader::opened);
    reader.setPollInterval(30);
    reader.open(file(path()));
    QVERIFY(opened.wait());
    QCOMPARE(reader.isGrowing(), ahead == 0 || other);
    recorder.add(report(now + 1000, {reading("U", "2")}));
    QTRY_VERIFY(reader.extent(id("U")).to == start + now + 1000 && reader.isGrowing());
    const qint64 present = reader.present(wall) - start;
    QVERIFY2(present >= now + 1000 && present < now + 6000, qPrintable(QString::number(present - now)));
    QVERIFY(stopAndWait(&recorder));
    QTRY_VERIFY(!reader.isGrowing());
}

// Beside the samples, which are kept whether or not names can be.
void TestRecordingSession::namesBoxes_data()
{
    QTest::addColumn<QStringList>("names"); // as the reports tell them
    QTest::addColumn<QString>("before");    // what is done to the database
    QTest::addColumn<QStringList>("shown");
    const QString refuse =
        "CREATE TRIGGER no BEFORE INSERT ON recording_info BEGIN SELECT RAISE(ABORT, 'no'); END";
    QTest::newRow("no name") << QStringList{""} << "" << QStringList();
    QTest::newRow("a name") << QStringList{"North", "North"} << "" << QStringList{"North"};
    QTest::newRow("another name") << QStringList{"North", "South", ""} << "" << QStringList{"South"};
    QTest::newRow("told late") << QStringList{"", "Tor 北"} << "" << QStringList{"Tor 北"};
    QTest::newRow("none may be written") << QStringList{"North", "South"} << refuse << QStringList();
}

void TestRecordingSession::namesBoxes()
{
    QFETCH(QStringList, names);
    QFETCH(QString, before);
    record(file(path()), {});
    asked(path(), before);
    QVector<Readings> reports;
    for (const QString &name : qAsConst(names)) {
        reports.append(report(reports.size() * 1000, {reading("U", "1")}));
        reports.last().boxName = name;
    }
    const Recorder::Status status = record(file(path()), reports);
    QCOMPARE(status.error, QString());
    QCOMPARE(status.samples, qint64(names.size()) + 1); // with its end
    RecordingReader reader;
    QSignalSpy opened(&reader, &RecordingReader::opened);
    reader.open(file(path()));
    QVERIFY(opened.wait());
    QTEST(reader.boxNames(id("U")), "shown");
    QCOMPARE(reader.boxNames({"192.168.1.80", "another", "meters", "U"}), QStringList());
    // As the documented query has it.
    QCOMPARE(
        asked(path(), "SELECT value FROM point JOIN recording_info ON key = 'box ' || box || ' ' || project"),
        reader.boxNames(id("U")));
}

QTEST_GUILESS_MAIN(TestRecordingSession)
#include "tst_recordingsession.moc"
