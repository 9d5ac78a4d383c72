#include "history/recordingcurvereader.h"
#include "history/recordingdatabase.h"
#include "history/recordingreader.h"
#include "recordings.h"

#include <QTemporaryDir>

using namespace Recordings;

Q_DECLARE_METATYPE(SampleState)
Q_DECLARE_METATYPE(ValueAt::Kind)

// A recording to which nothing has come for a while: it may have ended, be late, or be of another clock.
class TestRecordingSilence : public QObject
{
    Q_OBJECT
private slots:
    void initTestCase() { registerAnswers(); }
    void init() { m_folder = std::make_unique<QTemporaryDir>(folderTemplate()); }
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
    void pointWithoutSamplesTellsNoTime();

private:
    QString path() const { return m_folder->filePath("plant.sqlite"); }

    std::unique_ptr<QTemporaryDir> m_folder;
};

// A recorder tells with the next report that one was late. Until that comes its reader sees so.
void TestRecordingSilence::silenceBreaks_data()
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

void TestRecordingSilence::silenceBreaks()
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
void TestRecordingSilence::endIsNoSilence_data()
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

void TestRecordingSilence::endIsNoSilence()
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
void TestRecordingSilence::silenceWithTwoRecorders_data()
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

void TestRecordingSilence::silenceWithTwoRecorders()
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
void TestRecordingSilence::silenceIsThatOfACurve_data()
{
    QTest::addColumn<qint64>("seen"); // ms before now
    QTest::addColumn<ValueAt::Kind>("kind");
    QTest::newRow("came a moment ago") << qint64(10000) << ValueAt::Kind::Number;
    QTest::newRow("silent") << qint64(10001) << ValueAt::Kind::Break;
}

void TestRecordingSilence::silenceIsThatOfACurve()
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
void TestRecordingSilence::clocksOfRecordersMayDiffer()
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

void TestRecordingSilence::growsByAnyClock_data()
{
    QTest::addColumn<int>("ahead");  // min
    QTest::addColumn<bool>("other"); // whether a point has ended, by the clock of this computer
    QTest::newRow("of this computer") << 0 << false;
    QTest::newRow("behind") << -10 << false;
    QTest::newRow("ahead") << 10 << false;
    QTest::newRow("beside one ahead") << -10 << true;
}

void TestRecordingSilence::growsByAnyClock()
{
    QFETCH(int, ahead);
    QFETCH(bool, other);
    const qint64 wall = QDateTime::currentMSecsSinceEpoch();
    const qint64 now = wall - start + ahead * 60000;
    if (other) {
        record(file(path()), {report(now + 60000, {reading("V", "1")})});
    }
    Recorder recorder;
    QVERIFY(begin(&recorder, file(path()), report(now, {reading("U", "1")})));
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

// As another program may add one.
void TestRecordingSilence::pointWithoutSamplesTellsNoTime()
{
    const qint64 wall = QDateTime::currentMSecsSinceEpoch();
    Recorder recorder;
    QVERIFY(begin(&recorder, file(path()), report(wall - start, {reading("U", "1")})));
    RecordingReader reader;
    QSignalSpy opened(&reader, &RecordingReader::opened);
    QSignalSpy grown(&reader, &RecordingReader::grown);
    reader.setPollInterval(30);
    reader.open(file(path()));
    QVERIFY(opened.wait());
    QCOMPARE(asked(path(),
                   "INSERT INTO point (box, project, standard, name, address, type) "
                   "VALUES ('192.168.1.80', 'plant', 'meters', 'I', '40002', 'float')"),
             QStringList());
    QVERIFY(grown.wait());
    QCOMPARE(reader.points().size(), 2);
    QVERIFY2(reader.present(wall) >= wall, qPrintable(QString::number(reader.present(wall))));
    QVERIFY(stopAndWait(&recorder));
}

QTEST_GUILESS_MAIN(TestRecordingSilence)
#include "tst_recordingsilence.moc"
