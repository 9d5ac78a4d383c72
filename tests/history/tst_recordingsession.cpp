#include "history/recordingcursor.h"
#include "history/recordingdatabase.h"
#include "history/recordinghelpers.h"
#include "history/recordingreader.h"
#include "history/recordingsession.h"
#include "recordings.h"

#include <QTemporaryDir>
#include <QThread>

using namespace Recordings;

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
