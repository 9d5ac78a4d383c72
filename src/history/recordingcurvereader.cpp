#include "history/recordingcurvereader.h"

#include "history/lateness.h"
#include "history/recordingcursor.h"
#include "history/thinning.h"

#include <QVariant>

#include <algorithm>
#include <limits>

namespace {

constexpr int samplesBetween = 10000; // that are read until it asks whether to go on
constexpr int latePauses = 3;
constexpr int samplesForUsual = 16; // more than one program may record the same reports

// Whatever is usual.
bool mayBeLate(const Sample &last, qint64 now)
{
    Lateness alone;
    alone.report(last.time);
    return isReported(last.state) && alone.lateSince(now);
}

// Between reports without a break; 0 if there is none. Where several programs record the same reports, most
// pauses are short ones between their samples.
qint64 longestPause(const QVector<QPair<qint64, SampleState>> &samples)
{
    qint64 longest = 0;
    for (int place = 1; place < samples.size(); ++place) {
        if (isReported(samples.at(place - 1).second) && isReported(samples.at(place).second)) {
            longest = std::max(longest, samples.at(place).first - samples.at(place - 1).first);
        }
    }
    return longest;
}

} // namespace

RecordingCurveReader::RecordingCurveReader(RecordingDatabase *database, const RecordingPoints::Curve &curve,
                                           qint64 monotonic)
    : m_database(database)
    , m_curve(curve)
    , m_monotonic(monotonic)
{
}

// By the clock of who records it, once a sample was seen to come.
qint64 RecordingCurveReader::presentOf(qint64 given) const
{
    return m_curve.seen < 0 ? given : m_curve.extent.to + m_monotonic - m_curve.seen;
}

RecordingCurveReader::Result RecordingCurveReader::thin(const SampleSource::Request &request,
                                                        const std::function<Result()> &goesOn,
                                                        Thinned *thinned)
{
    const TimeRange &range = request.range;
    Thinning thinning(range, request.columns, shapeOf(m_curve.point.type));
    Sample sample;
    bool isAny = false;
    if (!readNeighbour(m_database, m_curve.keys, Neighbour::Before, range.from, &sample, &isAny)) {
        return Result::Failed;
    }
    if (isAny) {
        thinning.add(sample);
    }
    RecordingMerge samples(m_database, m_curve.keys, range);
    for (int count = 1; samples.next(&sample); ++count) {
        isAny = true;
        thinning.add(sample);
        const Result result = count % samplesBetween == 0 ? goesOn() : Result::Done;
        if (result != Result::Done) {
            return result;
        }
    }
    std::optional<Sample> next;
    if (samples.hasFailed() || !readNext(isAny ? &sample : nullptr, range.to, request.present(), &next)) {
        return Result::Failed;
    }
    if (next) {
        thinning.add(*next);
    }
    *thinned = thinning.finish();
    thinned->endGaps(request.now);
    return Result::Done;
}

bool RecordingCurveReader::valueAt(qint64 time, qint64 now, ValueAt *value)
{
    Sample last;
    bool hasLast = false;
    std::optional<Sample> next;
    if (!readNeighbour(m_database, m_curve.keys, Neighbour::Before, time + 1, &last, &hasLast)
        || (hasLast && !readNext(&last, time, now, &next))) {
        return false;
    }
    const bool isLast = next && next->time <= time;
    *value = ValueAt::of(isLast        ? &*next
                             : hasLast ? &last
                                       : nullptr,
                         next && !isLast ? &*next : nullptr, time);
    return true;
}

bool RecordingCurveReader::readNext(const Sample *last, qint64 time, qint64 now, std::optional<Sample> *next)
{
    Sample after;
    bool found = false;
    if (!readNeighbour(m_database, m_curve.keys, Neighbour::After, time, &after, &found)) {
        return false;
    }
    if (found) {
        *next = after;
    }
    // Of an ended recording nobody knows whether reports came later: that is not told as none.
    return found || !last || !m_curve.isOpenEnded || readLateBreak(*last, presentOf(now), next);
}

QString RecordingCurveReader::latestStatement()
{
    return QStringLiteral(
               "SELECT time, validity FROM sample WHERE point = ? AND time <= ? ORDER BY time DESC LIMIT %1")
        .arg(samplesForUsual);
}

bool RecordingCurveReader::readLateBreak(const Sample &last, qint64 now, std::optional<Sample> *late)
{
    if (!mayBeLate(last, now)) {
        return true; // nearly always, and without a look at the database
    }
    QVector<QPair<qint64, SampleState>> samples;
    for (const qint64 key : m_curve.keys) {
        QSqlQuery query = m_database->kept(latestStatement());
        query.addBindValue(key);
        query.addBindValue(last.time);
        if (!m_database->run(&query)) {
            return false;
        }
        while (query.next()) {
            samples.append({query.value(0).toLongLong(), SampleState(query.value(1).toInt())});
        }
        if (m_database->hasFailed(query)) {
            return false;
        }
    }
    std::sort(samples.begin(), samples.end());
    Lateness lateness;
    for (const auto &sample : qAsConst(samples)) {
        if (isReported(sample.second)) {
            lateness.report(sample.first);
        } else if (sample.second == SampleState::Ended) {
            lateness.endSession();
        }
    }
    const auto since = lateness.lateSince(now);
    const qint64 leastSince = last.time + latePauses * longestPause(samples);
    if (since && now > leastSince) {
        *late = Sample{std::max(*since, leastSince),
                       std::numeric_limits<double>::quiet_NaN(),
                       SampleState::NoReport,
                       {}};
    }
    return true;
}
