#include "history/recordingwriter.h"

#include <QSqlError>
#include <QVariant>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int rowsAtOnce = 50; // of one INSERT; older SQLites take 999 values

QString insertStatement(int rows)
{
    QStringList places;
    for (int row = 0; row < rows; ++row) {
        places.append(QStringLiteral("(?, ?, ?, ?, ?)"));
    }
    // What is there already was recorded by another recorder at the same time.
    return QStringLiteral("INSERT INTO sample (point, time, number, text, validity) VALUES ")
        + places.join(QLatin1String(", ")) + QStringLiteral(" ON CONFLICT DO NOTHING");
}

// A server takes no NUL in a text.
QString storable(QString text)
{
    return text.replace(QChar(0), QChar(QChar::ReplacementCharacter));
}

// NULL where nothing was reported, or a number says it all.
QVariant textOf(const Sample &sample)
{
    const bool isText = sample.state == SampleState::NoNumber
        || (sample.state == SampleState::Valid && std::isnan(sample.number));
    if (sample.text.isEmpty()) {
        return isText ? QVariant(QLatin1String("")) : QVariant(QVariant::String);
    }
    return storable(sample.text);
}

QVariant numberOf(const Sample &sample)
{
    return std::isnan(sample.number) ? QVariant(QVariant::Double) : QVariant(sample.number);
}

} // namespace

RecordingWriter::RecordingWriter(const RecordingTarget &target, qint64 since, int patience,
                                 const RecordingPeers *peers)
    : m_since(since)
    , m_peers(peers)
    , m_database(target)
{
    m_database.setPatience(patience);
}

bool RecordingWriter::write(QVector<Row> rows, const QVector<RecordingRows::Recorded> &points,
                            const Progress &progress)
{
    const bool isOpen =
        m_database.isOpen() ? m_database.isInPlace() : m_database.open(RecordingDatabase::Access::Write);
    if (isOpen && m_isRecordingKnown && rows.isEmpty() && progress == m_written) {
        return true;
    }
    // By points, since that is how they lie in the database.
    std::stable_sort(rows.begin(), rows.end(), [](const Row &a, const Row &b) { return a.point < b.point; });
    m_begins.clear();
    m_breaks = 0;
    const qint64 recording = m_recording;
    if (!isOpen || !m_database.begin() || !writeRecording(progress) || !writeRows(rows, points)
        || !m_database.commit()) {
        m_recording = recording;
        for (const int curve : qAsConst(m_begins)) {
            m_hasBegun.at(size_t(curve)) = false;
        }
        close();
        return false;
    }
    m_written = progress;
    m_samples += rows.size() + m_breaks;
    return true;
}

bool RecordingWriter::writeRecording(const Progress &progress)
{
    const QVariant ended = progress.ended < 0 ? QVariant(QVariant::LongLong) : QVariant(progress.ended);
    if (!m_isRecordingKnown && m_recording >= 0) {
        // Where the file was removed there is none.
        QSqlQuery query =
            m_database.prepared(QStringLiteral("SELECT id FROM recording WHERE id = ? AND started = ?"));
        query.addBindValue(m_recording);
        query.addBindValue(m_since);
        if (!m_database.run(&query)) {
            return false;
        }
        m_isRecordingKnown = query.next();
    }
    const QString statement = m_isRecordingKnown
        ? QStringLiteral("UPDATE recording SET ended = ?, dropped = ? WHERE id = ?")
        : QStringLiteral("INSERT INTO recording (ended, dropped, started, program) VALUES (?, ?, ?, ?)");
    QSqlQuery query = m_database.prepared(statement);
    query.addBindValue(ended);
    query.addBindValue(progress.dropped);
    if (m_isRecordingKnown) {
        query.addBindValue(m_recording);
        return progress == m_written || m_database.run(&query);
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

bool RecordingWriter::writeRows(const QVector<Row> &rows, const QVector<RecordingRows::Recorded> &points)
{
    if (!prepareStatements()) {
        return false;
    }
    while (m_keys.size() < points.size()) {
        m_keys.append(-1);
    }
    m_hasBegun.resize(size_t(points.size())); // there are no more curves than points
    for (const Row &row : rows) {
        if (!preparePoint(row, points.at(row.point))) {
            return false;
        }
    }
    int done = 0;
    for (; rows.size() - done >= rowsAtOnce; done += rowsAtOnce) {
        if (!insert(&*m_insertMany, rows.constData() + done, rowsAtOnce)) {
            return false;
        }
    }
    for (; done < rows.size(); ++done) {
        if (!insert(&*m_insertOne, rows.constData() + done, 1)) {
            return false;
        }
    }
    return true;
}

bool RecordingWriter::prepareStatements()
{
    if (m_insertOne) {
        return true;
    }
    m_insertMany = m_database.prepared(insertStatement(rowsAtOnce));
    m_insertOne = m_database.prepared(insertStatement(1));
    return !m_insertMany->lastError().isValid() && !m_insertOne->lastError().isValid();
}

bool RecordingWriter::preparePoint(const Row &row, const RecordingRows::Recorded &recorded)
{
    qint64 &key = m_keys[row.point];
    if (key < 0) {
        key = keyOf(recorded.point).value_or(-1);
        if (key < 0) {
            return false;
        }
    }
    if (m_hasBegun.at(size_t(recorded.curve))) {
        return true;
    }
    m_hasBegun.at(size_t(recorded.curve)) = true;
    m_begins.append(recorded.curve);
    return beginCurve(row, recorded.point.id);
}

std::optional<qint64> RecordingWriter::keyOf(const Point &point)
{
    const QString values[] = {point.id.box,  point.id.project, point.id.standard,
                              point.id.name, point.address,    point.type};
    for (const char *const statement :
         {"INSERT INTO point (box, project, standard, name, address, type) VALUES (?, ?, ?, ?, ?, ?) "
          "ON CONFLICT DO NOTHING",
          "SELECT id FROM point WHERE box = ? AND project = ? AND standard = ? AND name = ? AND address = ? "
          "AND type = ?"}) {
        QSqlQuery query = m_database.prepared(QLatin1String(statement));
        for (const QString &value : values) {
            query.addBindValue(value.isEmpty() ? QVariant(QLatin1String("")) : QVariant(storable(value)));
        }
        if (!m_database.run(&query)) {
            return {};
        }
        if (query.next()) {
            return query.value(0).toLongLong();
        }
    }
    return {};
}

// A recording that was killed did not say where it ended: a break keeps it from being joined with this one.
bool RecordingWriter::beginCurve(const Row &row, const PointId &id)
{
    QSqlQuery query = m_database.prepared(QStringLiteral(
        "SELECT max((SELECT max(time) FROM sample WHERE point = point.id AND time < ?)) FROM point "
        "WHERE box = ? AND project = ? AND standard = ? AND name = ?"));
    query.addBindValue(row.sample.time);
    for (const QString &text : {id.box, id.project, id.standard, id.name}) {
        query.addBindValue(text.isEmpty() ? QVariant(QLatin1String("")) : QVariant(storable(text)));
    }
    if (!m_database.run(&query)) {
        return false;
    }
    if (!query.next() || query.isNull(0)) {
        return true;
    }
    const auto others = m_peers->recordingSince(id);
    if (others && query.value(0).toLongLong() >= *others) {
        return true;
    }
    ++m_breaks;
    const Row before{row.point,
                     {row.sample.time - 1, std::numeric_limits<double>::quiet_NaN(), SampleState::Ended, {}}};
    return insert(&*m_insertOne, &before, 1);
}

bool RecordingWriter::insert(QSqlQuery *statement, const Row *rows, int count)
{
    int place = 0;
    for (int i = 0; i < count; ++i) {
        const Sample &sample = rows[i].sample;
        statement->bindValue(place++, m_keys.at(rows[i].point));
        statement->bindValue(place++, sample.time);
        statement->bindValue(place++, numberOf(sample));
        statement->bindValue(place++, textOf(sample));
        statement->bindValue(place++, int(sample.state));
    }
    return m_database.run(statement);
}

void RecordingWriter::close()
{
    m_insertMany.reset();
    m_insertOne.reset();
    m_keys.clear();
    m_isRecordingKnown = false;
    if (m_database.isOpen()) {
        m_database.close();
    }
}
