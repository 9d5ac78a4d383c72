#include "files.h"
#include "history/recordingcursor.h"
#include "history/recordingcurvereader.h"
#include "history/recordingkeys.h"
#include "history/recordingpoints.h"
#include "history/recordingreader.h"
#include "recordings.h"

#include <QTemporaryDir>

using namespace Recordings;

namespace {

// An answer as a line of text: pieces, gaps, events.
QString shown(const Thinned &thinned)
{
    QStringList parts;
    for (const QVector<QPointF> &piece : thinned.pieces) {
        QStringList points;
        for (const QPointF &point : piece) {
            points.append(QString("%1=%2").arg(qint64(point.x()) - start).arg(point.y()));
        }
        parts.append('[' + points.join(' ') + ']');
    }
    for (const Thinned::Gap &gap : thinned.gaps) {
        parts.append(
            QString("%1..%2:%3").arg(gap.range.from - start).arg(gap.range.to - start).arg(int(gap.why)));
    }
    for (const Thinned::Event &event : thinned.events) {
        parts.append(QString("%1'%2'").arg(event.time - start).arg(event.text));
    }
    return parts.join(' ');
}

QString shown(SampleCursor *cursor)
{
    QStringList samples;
    Sample sample;
    while (cursor->next(&sample)) {
        samples.append(QString("%1=%2%3:%4")
                           .arg(sample.time - start)
                           .arg(sample.number)
                           .arg(sample.text)
                           .arg(int(sample.state)));
    }
    return samples.join(' ') + cursor->error();
}

} // namespace

// A recording as a trend window reads it.
class TestRecordingReader : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase();
    void init();
    void pointsAndExtents();
    void answersThinned_data();
    void answersThinned();
    void cursorWalksOverAll();
    void longTextsAreReadInPieces();
    void cursorSurvivesItsReader();
    void newerRequestReplaces();
    void noPeakIsLost();
    void findsByKeysAlone_data();
    void findsByKeysAlone();
    void growsWhileItIsRecorded();
    void recordingWithoutSamples();
    void readsWhileItIsLocked();
    void removedFileIsTold();
    void strangeRows();
    void documentedQueriesAnswer();
    void documentedMinutesAreApart();
    void queryOfTheManualAnswers_data();
    void queryOfTheManualAnswers();

private:
    QString path() const { return m_folder->filePath("plant.sqlite"); }
    // Empty once it is open.
    QString open(RecordingReader *reader) const;
    QVector<Thinned> answer(RecordingReader *reader, const QVector<PointId> &points, const TimeRange &range,
                            int columns) const;
    void recordSome() const;
    QStringList answersOf(const QString &document, const QString &zone) const;

    std::unique_ptr<QTemporaryDir> m_folder;
};

void TestRecordingReader::initTestCase()
{
    registerAnswers();
}

void TestRecordingReader::init()
{
    m_folder = std::make_unique<QTemporaryDir>(folderTemplate());
}

QString TestRecordingReader::open(RecordingReader *reader) const
{
    QSignalSpy opened(reader, &RecordingReader::opened);
    QSignalSpy failed(reader, &RecordingReader::failed);
    reader->setPollInterval(30);
    reader->open(file(path()));
    const bool isTold = QTest::qWaitFor([&] { return !opened.isEmpty() || !failed.isEmpty(); }, 10000);
    return isTold ? failed.value(0).value(0).toString() : "nothing is told";
}

QVector<Thinned> TestRecordingReader::answer(RecordingReader *reader, const QVector<PointId> &points,
                                             const TimeRange &range, int columns) const
{
    QSignalSpy thinned(reader, &RecordingReader::thinned);
    reader->request(this, {points, {start + range.from, start + range.to}, columns});
    return thinned.isEmpty() && !thinned.wait(20000) ? QVector<Thinned>()
                                                     : thinned.first().at(2).value<QVector<Thinned>>();
}

// U changes its type, S is a text, and a report does not come.
void TestRecordingReader::recordSome() const
{
    const auto some = [](qint64 time, const QString &type) {
        return report(time,
                      {reading("U", QString::number(time / 1000), type),
                       reading("S", time < 2000 ? QString("off") : QString("on"), "string")});
    };
    record(file(path()),
           {some(0, "int16"), some(1000, "int16"), some(2000, "float"), some(3000, "float"),
            some(60000, "float")});
    // Its end is that of the samples, and not of today.
    asked(path(), QString("UPDATE sample SET time = %1 WHERE time > %1").arg(start + 60001));
}

void TestRecordingReader::pointsAndExtents()
{
    recordSome();
    RecordingReader reader;
    QVERIFY(reader.points().isEmpty());
    QCOMPARE(open(&reader), QString());
    QStringList points;
    for (const Point &point : reader.points()) {
        points.append(QStringList{point.id.box, point.id.project, point.id.standard, point.id.name,
                                  point.address, point.type}
                          .join('|'));
    }
    QCOMPARE(
        points,
        (QStringList{"192.168.1.80|plant|meters|U|40001|float", "192.168.1.80|plant|meters|S|40001|string"}));
    QCOMPARE(reader.extent(id("U")).from, start);
    QCOMPARE(reader.extent(id("U")).to, start + 60001);
    QVERIFY(reader.extent(id("never")).from > reader.extent(id("never")).to);
    QVERIFY(!reader.isGrowing());
    QCOMPARE(reader.target().text(), path());
}

void TestRecordingReader::answersThinned_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<qint64>("from");
    QTest::addColumn<qint64>("to");
    QTest::addColumn<QString>("answer");
    const auto row = [](const char *title, const QString &name, qint64 from, qint64 to,
                        const QString &answer) { QTest::newRow(title) << name << from << to << answer; };
    row("all", "U", -5000, 70000, "[0=0 1000=1 2000=2 3000=3] [60000=60] 3000..60000:3 60000..70000:4");
    row("with the neighbours", "U", 1500, 2500, "[1000=1 2000=2 3000=3]");
    row("in a gap", "U", 20000, 30000, "[60000=60] 13000..60000:3");
    row("before all", "U", -20000, -10000, "[0=0]");
    row("texts", "S", 0, 50000, "3000..60000:3 0'off' 2000'on'");
    row("not recorded", "never", 0, 50000, "");
}

void TestRecordingReader::answersThinned()
{
    QFETCH(QString, name);
    QFETCH(qint64, from);
    QFETCH(qint64, to);
    recordSome();
    RecordingReader reader;
    QCOMPARE(open(&reader), QString());
    const QVector<Thinned> answers = answer(&reader, {id("never"), id(name)}, {from, to}, 1000);
    QCOMPARE(answers.size(), 2);
    QCOMPARE(shown(answers.first()), QString());
    QTEST(shown(answers.last()), "answer");
}

void TestRecordingReader::cursorWalksOverAll()
{
    recordSome();
    RecordingReader reader;
    QCOMPARE(open(&reader), QString());
    const auto of = [&reader](const QString &name, qint64 from, qint64 to) {
        return shown(reader.cursor(id(name), {start + from, start + to}).get());
    };
    QCOMPARE(of("U", 0, 100000),
             QString("0=0:1 1000=1:1 2000=2:1 3000=3:1 13000=nan:3 60000=60:1 60001=nan:4"));
    QCOMPARE(of("S", 1000, 2000), QString("1000=nanoff:1 2000=nanon:1"));
    QCOMPARE(of("never", 0, 100000), QString());

    // Many more than are read at once, a break and a text far among them.
    asked(path(),
          QString("WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 25000) "
                  "INSERT INTO sample SELECT 1, %1 + i, i, NULL, 1 FROM n;"
                  "UPDATE sample SET number = NULL, validity = 3 WHERE time = %1 + 12345;"
                  "UPDATE sample SET text = '15000' WHERE time = %1 + 15000")
              .arg(start + 100000));
    const auto cursor = reader.cursor(id("U"), {start + 100000, start + 1000000});
    Sample sample;
    int count = 0;
    while (cursor->next(&sample)) {
        ++count;
        QCOMPARE(sample.state, count == 12345 ? SampleState::NoReport : SampleState::Valid);
        QCOMPARE(sample.number, count == 12345 ? noNumber : double(count));
        QCOMPARE(sample.text, count == 15000 ? QString("15000") : QString());
        QCOMPARE(sample.time, start + 100000 + count);
    }
    QCOMPARE(count, 25000);
}

// 128 MiB of them, of which it never has more than a part.
void TestRecordingReader::longTextsAreReadInPieces()
{
    record(file(path()), {report(0, {reading("T", "", "string")})});
    asked(path(),
          QString("DELETE FROM sample; "
                  "WITH RECURSIVE n(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 1000) "
                  "INSERT INTO sample SELECT 1, %1 + i, NULL, hex(zeroblob(32768)), 1 FROM n")
              .arg(start));
    const auto memory = [] { // in pages
        return Files::contents("/proc/self/statm").split(' ').value(1).toLongLong();
    };
    const qint64 before = memory();
    RecordingCursor cursor(file(path()), {1}, {start, start + 100000});
    Sample sample;
    int count = 0;
    qint64 most = 0;
    while (cursor.next(&sample)) {
        QCOMPARE(sample.time, start + ++count);
        most = qMax(most, count % 10 == 1 ? memory() - before : 0);
    }
    QCOMPARE(count, 1000);
    QVERIFY2(most * 4096 < 60 * 1024 * 1024, qPrintable(QString::number(most)));
}

void TestRecordingReader::cursorSurvivesItsReader()
{
    recordSome();
    auto reader = std::make_unique<RecordingReader>();
    QCOMPARE(open(reader.get()), QString());
    const auto cursor = reader->cursor(id("U"), {start, start + 1000});
    reader.reset();
    QCOMPARE(shown(cursor.get()), QString("0=0:1 1000=1:1"));
}

void TestRecordingReader::newerRequestReplaces()
{
    recordSome();
    RecordingReader reader;
    QCOMPARE(open(&reader), QString());
    QSignalSpy thinned(&reader, &RecordingReader::thinned);
    int other = 0;
    for (int columns = 1; columns <= 100; ++columns) {
        reader.request(this, {{id("U")}, {start, start + 5000}, columns});
    }
    reader.request(&other, {{id("U")}, {start, start + 5000}, 200});
    QTRY_COMPARE(thinned.size(), 2);
    QCOMPARE(thinned.at(0).at(1).value<SampleSource::Request>().columns, 100);
    QCOMPARE(thinned.at(1).at(1).value<SampleSource::Request>().columns, 200);
    QTest::qWait(0);
    QCOMPARE(thinned.size(), 2);
}

// Three hours, a sample a second; one of them is a peak.
void TestRecordingReader::noPeakIsLost()
{
    record(file(path()), {});
    asked(
        path(),
        QString("WITH RECURSIVE p(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM p WHERE i < 16) INSERT INTO "
                "point SELECT i, '192.168.1.80', 'plant', 'meters', 'U' || i, '', 'float' FROM p;"
                "WITH RECURSIVE n(i) AS (SELECT 0 UNION ALL SELECT i + 1 FROM n WHERE i < 10799) INSERT INTO "
                "sample SELECT id, %1 + i * 1000, i % (100 + id), NULL, 1 FROM point, n;"
                "UPDATE sample SET number = 5000 WHERE point = 7 AND time = %1 + 4321000")
            .arg(start));
    QVector<PointId> points;
    for (int point = 1; point <= 16; ++point) {
        points.append(id(QString("U%1").arg(point)));
    }
    RecordingReader reader;
    QCOMPARE(open(&reader), QString());
    const QVector<Thinned> answers = answer(&reader, points, {0, 86400000}, 1000);
    QCOMPARE(answers.size(), 16);
    for (const Thinned &each : answers) {
        QCOMPARE(each.statistics.count, qint64(10800));
        QCOMPARE(each.pieces.size(), 1);
        QVERIFY(each.pieces.first().size() <= 4000);
    }
    QVERIFY(answers.at(6).pieces.first().contains(QPointF(double(start + 4321000), 5000)));
    QCOMPARE(answers.at(6).statistics.greatest, 5000.0);
}

void TestRecordingReader::findsByKeysAlone_data()
{
    QTest::addColumn<QString>("sql");
    QTest::addColumn<QString>("search");
    const QString byKey = "SEARCH sample USING PRIMARY KEY (point=?";
    QTest::newRow("points") << RecordingPoints::statement() << byKey;
    QTest::newRow("plain samples") << RecordingWalk::statement(RecordingWalk::Columns::Plain) << byKey;
    QTest::newRow("samples") << RecordingWalk::statement(RecordingWalk::Columns::All) << byKey;
    QTest::newRow("before") << neighbourStatement(Neighbour::Before) << byKey;
    QTest::newRow("after") << neighbourStatement(Neighbour::After) << byKey;
    QTest::newRow("usual") << RecordingCurveReader::latestStatement() << byKey;
    const QString ofNames = RecordingKeys::statement(RecordingTarget::Kind::File);
    QTest::newRow("names") << ofNames << "point_form (box=? AND project=? AND standard=? AND name=?)";
    QTest::newRow("latest") << ofNames << byKey;
}

void TestRecordingReader::findsByKeysAlone()
{
    QFETCH(QString, sql);
    QFETCH(QString, search);
    record(file(path()), {});
    const QString plan = asked(path(), "EXPLAIN QUERY PLAN " + sql).join('\n');
    QVERIFY2(plan.contains(search), qPrintable(plan));
    QVERIFY2(!plan.contains("SCAN sample") && !plan.contains("TEMP B-TREE"), qPrintable(plan));
}

void TestRecordingReader::growsWhileItIsRecorded()
{
    const qint64 now = QDateTime::currentMSecsSinceEpoch() - start;
    Recorder recorder;
    QVERIFY(begin(&recorder, file(path()), report(now, {reading("U", "1")})));
    RecordingReader reader;
    QSignalSpy grown(&reader, &RecordingReader::grown);
    QCOMPARE(open(&reader), QString());
    QVERIFY(reader.isGrowing());
    recorder.add(report(now + 10, {reading("U", "2"), reading("I", "3")}));
    QVERIFY(grown.wait());
    QCOMPARE(reader.points().size(), 2);
    QCOMPARE(reader.extent(id("U")).to, start + now + 10);
    QCOMPARE(shown(answer(&reader, {id("I")}, {now, now + 20}, 10).value(0)),
             QString("[%1=3]").arg(now + 10));
    QVERIFY(stopAndWait(&recorder));
    QTRY_VERIFY(!reader.isGrowing());
}

void TestRecordingReader::recordingWithoutSamples()
{
    record(file(path()), {});
    RecordingReader reader;
    QCOMPARE(open(&reader), QString());
    QVERIFY(reader.points().isEmpty());
    QCOMPARE(answer(&reader, {}, {0, 1000}, 10).size(), 0);
    QVERIFY(!reader.isGrowing());
}

void TestRecordingReader::readsWhileItIsLocked()
{
    recordSome();
    RecordingReader reader;
    QCOMPARE(open(&reader), QString());
    Lock lock(path());
    QVERIFY(lock.isHeld());
    QSignalSpy failed(&reader, &RecordingReader::failed);
    QSignalSpy thinned(&reader, &RecordingReader::thinned);
    reader.request(this, {{id("U")}, {start + 1500, start + 2500}, 100});
    QVERIFY(failed.wait());
    QCOMPARE(failed.first().first().toString(), path() + " is locked by another program.");
    QVERIFY(thinned.isEmpty());
    QVERIFY(lock.release());
    QVERIFY(thinned.wait());
    QCOMPARE(shown(thinned.first().at(2).value<QVector<Thinned>>().value(0)),
             QString("[1000=1 2000=2 3000=3]"));
    QCOMPARE(failed.size(), 1);
}

void TestRecordingReader::removedFileIsTold()
{
    recordSome();
    RecordingReader reader;
    QCOMPARE(open(&reader), QString());
    const auto counts = [this, &reader](const QString &name) {
        QSet<qint64> all;
        const QVector<Thinned> answers = answer(&reader, QVector<PointId>(200, id(name)), {0, 600000}, 10);
        for (const Thinned &each : answers) {
            all.insert(each.statistics.count);
        }
        return all;
    };
    QCOMPARE(counts("U"), QSet<qint64>{5});
    QSignalSpy failed(&reader, &RecordingReader::failed);
    QVERIFY(QFile::remove(path()));
    QVERIFY(failed.wait());
    QCOMPARE(failed.first().first().toString(), path() + " has been removed or renamed.");
    // As a recorder makes it anew.
    QSignalSpy grown(&reader, &RecordingReader::grown);
    record(file(path()), {report(500000, {reading("I", "1")})});
    QVERIFY(grown.wait());
    QTRY_COMPARE(reader.extent(id("I")).from, start + 500000);
    QCOMPARE(failed.size(), 1);
    QCOMPARE(counts("I"), QSet<qint64>{1}); // what the old file had there is gone
}

// What another program has put into the tables.
void TestRecordingReader::strangeRows()
{
    record(file(path()), {});
    asked(path(),
          QString("INSERT INTO point VALUES (5, '192.168.1.80', 'plant', 'meters', 'U', '', 'float');"
                  "INSERT INTO sample VALUES (5, %1, 9e999, NULL, 1), (5, %1 + 1, 2, NULL, 77), "
                  "(5, %1 + 2, NULL, NULL, 1), (5, %1 + 3, 'abc', NULL, 1), (5, %1 + 4, 3, NULL, 0), "
                  "(5, %1 + 5, 4, NULL, 1), (5, 'later', 4, NULL, 1)")
              .arg(start));
    RecordingReader reader;
    QCOMPARE(open(&reader), QString());
    QCOMPARE(shown(reader.cursor(id("U"), {start, start + 100}).get()),
             QString("0=nan:2 1=nan:0 2=nan:2 3=nan:2 4=nan:0 5=4:1"));
    QCOMPARE(answer(&reader, {id("U")}, {0, 100}, 10).value(0).statistics.count, qint64(1));
}

// Those of a document, run as they stand there, but that they name this file.
QStringList TestRecordingReader::answersOf(const QString &document, const QString &zone) const
{
    QStringList answers;
    const QStringList blocks =
        QString::fromUtf8(Files::contents(SOURCE_ROOT "/docs/" + document)).split("\n\n");
    for (QString block : blocks) {
        if (!block.startsWith("    sqlite3")) {
            continue;
        }
        static const QRegularExpression name("\"Riverside.*\\.sqlite\"|plant\\.sqlite");
        block.replace(name, path());
        block.remove(" > voltage.csv");
        QProcess shell;
        shell.setProcessChannelMode(QProcess::MergedChannels);
        shell.start("env", {"TZ=" + zone, "sh", "-c", block});
        answers.append(shell.waitForFinished() ? QString::fromUtf8(shell.readAll()).remove('\r') : "no end");
    }
    return answers;
}

void TestRecordingReader::documentedQueriesAnswer()
{
    const qint64 noon =
        QDateTime::fromString("2026-03-01T12:00:00Z", Qt::ISODate).toMSecsSinceEpoch() - start;
    record(file(path()),
           {report(noon, {reading("Voltage L1", "230.5")}),
            report(noon + 1500, {reading("Voltage L1", "231.5")}),
            report(noon + 2500, {reading("Voltage L1", "", "float", "0")})});
    asked(path(), "DELETE FROM sample WHERE validity = 4"); // its end is of today
    const QStringList answers = answersOf("recording.md", "UTC");
    QCOMPARE(answers.size(), 4);
    QCOMPARE(answers.at(0), QString("2026-03-01 12:00:00|230.5\n2026-03-01 12:00:01|231.5\n"));
    QCOMPARE(answers.at(1),
             QString("time,value\n\"2026-03-01 12:00:00.000\",230.5\n"
                     "\"2026-03-01 12:00:01.500\",231.5\n\"2026-03-01 12:00:02.500\",\n"));
    QVERIFY2(answers.at(2).contains("│ 3       │ 2026-03-01 12:00:00 │ 2026-03-01 12:00:02 │"),
             qPrintable(answers.at(2)));
    QCOMPARE(answers.at(3),
             QString("minute,min(number),avg(number),max(number)\n"
                     "\"2026-03-01 12:00:00\",230.5,231.0,231.5\n"));
}

// The hour that summer time ends with comes twice.
void TestRecordingReader::documentedMinutesAreApart()
{
    const qint64 first =
        QDateTime::fromString("2026-10-25T00:30:00Z", Qt::ISODate).toMSecsSinceEpoch() - start;
    record(
        file(path()),
        {report(first, {reading("Voltage L1", "1")}), report(first + 3600000, {reading("Voltage L1", "9")})});
    QCOMPARE(answersOf("recording.md", "Europe/Berlin").value(3),
             QString("minute,min(number),avg(number),max(number)\n"
                     "\"2026-10-25 02:30:00\",1.0,1.0,1.0\n\"2026-10-25 02:30:00\",9.0,9.0,9.0\n"));
}

void TestRecordingReader::queryOfTheManualAnswers_data()
{
    QTest::addColumn<QString>("manual");
    QTest::newRow("English") << "manual.md";
    QTest::newRow("Chinese") << "manual.zh.md";
}

void TestRecordingReader::queryOfTheManualAnswers()
{
    QFETCH(QString, manual);
    const qint64 midnight =
        QDateTime::fromString("2026-11-21T23:00:00Z", Qt::ISODate).toMSecsSinceEpoch() - start;
    const auto at = [midnight](qint64 time, const QString &value) {
        return report(midnight + time, {reading("Voltage A", value)});
    };
    record(file(path()), {at(-1, "1"), at(0, "2"), at(86399999, "3"), at(86400000, "4")});
    const QStringList lines = answersOf(manual, "Europe/Berlin").join("").split('\n');
    QCOMPARE(lines.value(0), QString("local,number"));
    QCOMPARE(lines.filter(QRegularExpression("\",.")),
             (QStringList{"\"2026-11-22 00:00:00\",2.0", "\"2026-11-22 23:59:59\",3.0"}));
}

QTEST_GUILESS_MAIN(TestRecordingReader)
#include "tst_recordingreader.moc"
