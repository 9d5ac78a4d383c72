#include "history/recordingwriter.h"

#include "history/recordingschema.h"

#include <QVariant>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int rowsAtOnce = 50; // of one INSERT; older SQLites take 999 values

QString insertStatement(int rows)
{
    // What is there already was recorded by another recorder at the same time.
    return RecordingSchema::insertion("sample", "point, time, number, text, validity", rows);
}

// NULL where nothing was reported, or a number says it all.
QVariant textOf(const Sample &sample)
{
    const bool isText = sample.state == SampleState::NoNumber
        || (sample.state == SampleState::Valid && std::isnan(sample.number));
    if (sample.text.isEmpty()) {
        return isText ? QVariant(QLatin1String("")) : QVariant(QVariant::String);
    }
    return RecordingDatabase::storable(sample.text);
}

QVariant numberOf(const Sample &sample)
{
    return std::isnan(sample.number) ? QVariant(QVariant::Double) : QVariant(sample.number);
}

} // namespace

RecordingWriter::RecordingWriter(const RecordingTarget &target, qint64 since, int patience,
                                 RecordingPeers *peers)
    : m_since(since)
    , m_peers(peers)
    , m_database(target)
    , m_keys(&m_database)
{
    m_database.setPatience(patience);
}

bool RecordingWriter::write(QVector<Row> rows, const QVector<RecordingRows::Recorded> &points,
                            const Progress &progress)
{
    const bool isOpen =
        m_database.isOpen() ? m_database.isInPlace() : m_database.open(RecordingDatabase::Access::Write);
    Progress all{progress.dropped + m_leftOut, progress.ended};
    if (isOpen && m_isRecordingKnown && rows.isEmpty() && all == m_written) {
        return true;
    }
    if (isOpen) {
        m_names.write(&m_database);
    }
    m_before.clear();
    m_begun.clear();
    const qint64 recording = m_recording;
    const qint64 leftOut = m_leftOut;
    if (!isOpen || !writeAll(&rows, points, &all)) {
        m_recording = recording;
        m_leftOut = leftOut;
        for (auto each = m_before.crbegin(); each != m_before.crend(); ++each) {
            m_curves[each->first] = each->second;
        }
        for (const PointId &point : qAsConst(m_begun)) {
            m_peers->takeBack(point);
        }
        close();
        return false;
    }
    m_keys.forgetLatest();
    m_written = all;
    m_samples += rows.size();
    return true;
}

// The rows become those that are written, the progress what is known of it then.
bool RecordingWriter::writeAll(Rows *rows, const Points &points, Progress *progress)
{
    const qint64 leftOut = m_leftOut;
    if (!m_database.begin() || !findRecording() || !prepareRows(rows, points)) {
        return false;
    }
    progress->dropped += m_leftOut - leftOut;
    return writeRecording(*progress) && insertRows(*rows) && m_database.commit();
}

// Whether the row of the recording is still there: the file may have been removed, or another one put in its
// place.
bool RecordingWriter::findRecording()
{
    if (m_isRecordingKnown || m_recording < 0) {
        return true;
    }
    QSqlQuery query =
        m_database.prepared(QStringLiteral("SELECT id FROM recording WHERE id = ? AND started = ?"));
    query.addBindValue(m_recording);
    query.addBindValue(m_since);
    if (!m_database.run(&query)) {
        return false;
    }
    m_isRecordingKnown = query.next();
    if (!m_isRecordingKnown) {
        m_curves.fill(Curve());
        m_peers->takeAllBack();
    }
    return true;
}

bool RecordingWriter::writeRecording(const Progress &progress)
{
    if (m_isRecordingKnown && progress == m_written) {
        return true;
    }
    const QVariant ended = progress.ended < 0 ? QVariant(QVariant::LongLong) : QVariant(progress.ended);
    const QString statement = m_isRecordingKnown
        ? QStringLiteral("UPDATE recording SET ended = ?, dropped = ? WHERE id = ?")
        : QStringLiteral("INSERT INTO recording (ended, dropped, started, program) VALUES (?, ?, ?, ?)");
    QSqlQuery query = m_database.kept(statement);
    query.addBindValue(ended);
    query.addBindValue(progress.dropped);
    if (m_isRecordingKnown) {
        query.addBindValue(m_recording);
        return m_database.run(&query);
    }
    query.addBindValue(m_since);
    query.addBindValue(QCoreApplication::applicationName());
    if (!m_database.run(&query)) {
        return false;
    }
    m_recording = query.lastInsertId().toLongLong();
    m_isRecordingKnown = true;
    return true;
}

// Finds the keys of the points, and sees to the beginnings of curves.
bool RecordingWriter::prepareRows(Rows *rows, const Points &points)
{
    m_curves.resize(points.size()); // there are no more curves than points
    QVector<int> unknown;
    bool isAnyBeginning = false;
    for (const Row &row : qAsConst(*rows)) {
        const Curve &curve = m_curves.at(points.at(row.point).curve);
        isAnyBeginning = isAnyBeginning || !curve.hasBegun;
        if (!curve.isLookedUp || m_keys.key(row.point) < 0) {
            unknown.append(row.point);
        }
    }
    std::sort(unknown.begin(), unknown.end());
    unknown.erase(std::unique(unknown.begin(), unknown.end()), unknown.end());
    if (!unknown.isEmpty() && !m_keys.find(unknown, points)) {
        return false;
    }
    for (const int number : qAsConst(unknown)) {
        lookUp(points.at(number).curve, points.at(number).point.id);
    }
    if (isAnyBeginning) {
        Rows given;
        given.swap(*rows);
        for (const Row &row : qAsConst(given)) {
            begin(row, points.at(row.point), rows);
        }
    }
    // By points, since that is how they lie in the database.
    std::stable_sort(rows->begin(), rows->end(),
                     [](const Row &a, const Row &b) { return a.point < b.point; });
    return true;
}

// A recording that was killed did not say where it ended: a break keeps it from being joined with this one.
// If the clock has been set back since, no sample is put among the older ones.
void RecordingWriter::lookUp(int number, const PointId &id)
{
    if (m_curves.at(number).isLookedUp) {
        return;
    }
    Curve &curve = changed(number);
    curve.isLookedUp = true;
    if (const auto latest = m_keys.latest(id)) {
        curve.isOthers = m_peers->hasBegun(id);
        curve.isBroken = !curve.isOthers;
        curve.latest = *latest;
    }
}

// Appends the row, with what must stand before it.
void RecordingWriter::begin(const Row &row, const RecordingRows::Recorded &recorded, Rows *rows)
{
    const int number = recorded.curve;
    if (!m_curves.at(number).hasBegun) {
        const Curve &known = m_curves.at(number);
        // The break needs a place.
        if (known.latest && row.sample.time <= *known.latest + (known.isBroken ? 1 : 0)) {
            const bool isThere = row.sample.time == *known.latest;
            m_leftOut += known.isOthers || isThere || !isReported(row.sample.state) ? 0 : 1;
            if (isThere) { // another recorder, which may have ended since, was quicker
                changed(number).isBroken = false;
            }
            return;
        }
        Curve &curve = changed(number);
        curve.hasBegun = true;
        m_peers->begin(recorded.point.id);
        m_begun.append(recorded.point.id);
        if (curve.isBroken) {
            rows->append(
                {row.point,
                 {row.sample.time - 1, std::numeric_limits<double>::quiet_NaN(), SampleState::Ended, {}}});
        }
    }
    rows->append(row);
}

RecordingWriter::Curve &RecordingWriter::changed(int number)
{
    m_before.append({number, m_curves.at(number)});
    return m_curves[number];
}

bool RecordingWriter::insertRows(const Rows &rows)
{
    int done = 0;
    for (const int count : {rowsAtOnce, 1}) {
        QSqlQuery statement = m_database.kept(insertStatement(count));
        for (; rows.size() - done >= count; done += count) {
            if (!insert(&statement, rows.constData() + done, count)) {
                return false;
            }
        }
    }
    return true;
}

bool RecordingWriter::insert(QSqlQuery *statement, const Row *rows, int count)
{
    int place = 0;
    for (int i = 0; i < count; ++i) {
        const Sample &sample = rows[i].sample;
        statement->bindValue(place++, m_keys.key(rows[i].point));
        statement->bindValue(place++, sample.time);
        statement->bindValue(place++, numberOf(sample));
        statement->bindValue(place++, textOf(sample));
        statement->bindValue(place++, int(sample.state));
    }
    return m_database.run(statement);
}

void RecordingWriter::close()
{
    m_keys.forget();
    m_names.forgetWritten();
    m_isRecordingKnown = false;
    if (m_database.isOpen()) {
        m_database.close();
    }
}
