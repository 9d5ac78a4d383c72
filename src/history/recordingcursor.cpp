#include "history/recordingcursor.h"

#include <QVariant>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int samplesAtOnce = 10000;
constexpr int charactersAtOnce = 2 * 1024 * 1024; // of their texts; 4 MiB

// Reads "time, number, validity, text". What other programs may have written amiss is nothing that is known.
Sample sampleOf(const QSqlQuery &query)
{
    Sample sample;
    sample.time = query.value(0).toLongLong();
    const QVariant number = query.value(1);
    bool isNumber = false;
    sample.number = number.toDouble(&isNumber);
    if (!isNumber || number.isNull() || !std::isfinite(sample.number)) {
        sample.number = std::numeric_limits<double>::quiet_NaN();
    }
    const int state = query.value(2).toInt();
    sample.state =
        state >= 0 && state <= int(SampleState::Dropped) ? SampleState(state) : SampleState::NotValid;
    const QVariant text = query.value(3);
    if (!text.isNull()) {
        sample.text = text.toString();
    }
    if (sample.state != SampleState::Valid) {
        sample.number = std::numeric_limits<double>::quiet_NaN();
    } else if (std::isnan(sample.number) && text.isNull()) {
        sample.state = SampleState::NoNumber;
    }
    return sample;
}

// Reads "time, number" of a plain sample. False where there is more to it.
bool readPlain(const QSqlQuery &query, Sample *sample)
{
    bool isNumber = false;
    sample->time = query.value(0).toLongLong();
    sample->number = query.value(1).toDouble(&isNumber);
    sample->state = SampleState::Valid;
    return isNumber && !query.isNull(1) && std::isfinite(sample->number);
}

} // namespace

RecordingWalk::RecordingWalk(RecordingDatabase *database, qint64 key, const TimeRange &range)
    : m_database(database)
    , m_key(key)
    , m_range(range)
{
}

const Sample *RecordingWalk::current()
{
    if (m_place == m_samples.size() && !m_isAtEnd) {
        fetch();
    }
    return m_place < m_samples.size() ? &m_samples.at(m_place) : nullptr;
}

void RecordingWalk::fetch()
{
    m_place = 0;
    // Most samples are plain, and each column that is read costs as much as the next one.
    bool isCut = false;
    if (!fetchPlain() && !m_hasFailed) {
        isCut = !fetchAll();
    }
    const bool isPiece = isCut || m_samples.size() == samplesAtOnce;
    m_isAtEnd = m_hasFailed || !isPiece || m_samples.last().time >= m_range.to
        || m_samples.last().time < m_range.from;
    if (!m_isAtEnd) {
        m_range.from = m_samples.last().time + 1;
    }
}

bool RecordingWalk::fetchPlain()
{
    QSqlQuery query = asked(Columns::Plain);
    bool isPlain = true;
    Sample sample;
    while (isPlain && !m_hasFailed && query.next()) {
        isPlain = readPlain(query, &sample);
        m_samples.append(sample);
    }
    m_hasFailed = m_hasFailed || m_database->hasFailed(query);
    query.finish();
    return isPlain && !m_hasFailed;
}

bool RecordingWalk::fetchAll()
{
    QSqlQuery query = asked(Columns::All);
    int characters = 0;
    while (!m_hasFailed && characters < charactersAtOnce && query.next()) {
        m_samples.append(sampleOf(query));
        characters += m_samples.last().text.size();
    }
    m_hasFailed = m_hasFailed || m_database->hasFailed(query);
    query.finish();
    return characters < charactersAtOnce;
}

QString RecordingWalk::statement(Columns columns)
{
    return QStringLiteral("SELECT time, %1 FROM sample WHERE point = ? AND time >= ? AND time <= ? "
                          "ORDER BY time LIMIT ?")
        .arg(columns == Columns::Plain
                 ? QStringLiteral("CASE WHEN validity = 1 AND text IS NULL THEN number END")
                 : QStringLiteral("number, validity, text"));
}

// Begins anew with the samples that follow.
QSqlQuery RecordingWalk::asked(Columns columns)
{
    m_samples.clear();
    m_samples.reserve(samplesAtOnce);
    QSqlQuery query = m_database->kept(statement(columns));
    query.addBindValue(m_key);
    query.addBindValue(m_range.from);
    query.addBindValue(m_range.to);
    query.addBindValue(samplesAtOnce);
    m_hasFailed = !m_database->run(&query);
    return query;
}

RecordingMerge::RecordingMerge(RecordingDatabase *database, const QVector<qint64> &keys,
                               const TimeRange &range)
{
    for (const qint64 key : keys) {
        m_walks.emplace_back(database, key, range);
    }
}

bool RecordingMerge::next(Sample *sample)
{
    RecordingWalk *first = nullptr;
    for (;;) {
        first = nullptr;
        for (RecordingWalk &walk : m_walks) {
            const Sample *const each = walk.current();
            if (walk.hasFailed()) {
                return false;
            }
            if (each && (!first || each->time < first->current()->time)) {
                first = &walk;
            }
        }
        if (!first) {
            return false;
        }
        *sample = *first->current();
        first->advance();
        if (!m_hasLast || sample->time > m_last) {
            m_hasLast = true;
            m_last = sample->time;
            return true;
        }
    }
}

bool RecordingMerge::hasFailed() const
{
    return std::any_of(m_walks.cbegin(), m_walks.cend(),
                       [](const RecordingWalk &walk) { return walk.hasFailed(); });
}

QString neighbourStatement(Neighbour which)
{
    return which == Neighbour::Before
        ? QStringLiteral("SELECT time, number, validity, text FROM sample "
                         "WHERE point = ? AND time < ? ORDER BY time DESC LIMIT 1")
        : QStringLiteral("SELECT time, number, validity, text FROM sample "
                         "WHERE point = ? AND time > ? ORDER BY time LIMIT 1");
}

bool readNeighbour(RecordingDatabase *database, const QVector<qint64> &keys, Neighbour which, qint64 time,
                   Sample *sample, bool *found)
{
    const bool isBefore = which == Neighbour::Before;
    *found = false;
    QSqlQuery query = database->kept(neighbourStatement(which));
    for (const qint64 key : keys) {
        query.bindValue(0, key);
        query.bindValue(1, time);
        if (!database->run(&query)) {
            return false;
        }
        if (query.next()) {
            const Sample each = sampleOf(query);
            if (!*found || (isBefore ? each.time > sample->time : each.time < sample->time)) {
                *sample = each;
                *found = true;
            }
        }
        query.finish();
    }
    return true;
}

RecordingCursor::RecordingCursor(const RecordingTarget &target, const QVector<qint64> &keys,
                                 const TimeRange &range)
    : m_database(target)
    , m_merge(&m_database, keys, range)
{
}

bool RecordingCursor::next(Sample *sample)
{
    const bool isOpen =
        m_database.isOpen() || (m_error.isEmpty() && m_database.open(RecordingDatabase::Access::Read));
    if (isOpen && m_merge.next(sample)) {
        return true;
    }
    if (m_error.isEmpty() && (!isOpen || m_merge.hasFailed())) {
        m_error = m_database.error();
    }
    return false;
}
