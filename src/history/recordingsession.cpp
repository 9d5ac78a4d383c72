#include "history/recordingsession.h"

#include <QElapsedTimer>
#include <QMutexLocker>

#include <algorithm>
#include <atomic>
#include <optional>
#include <vector>

namespace {

constexpr int patience = 1000;  // ms for a locked file
constexpr int momentsEach = 20; // ms, while the helpers read on
constexpr int tries = 3;        // of a request, each with the database opened anew

template <class Asked> bool hasAsker(const QVector<Asked> &all, const void *asker)
{
    return std::any_of(all.cbegin(), all.cend(), [asker](const Asked &each) { return each.asker == asker; });
}

template <class Asked> void replaceOrAppend(QVector<Asked> *all, const Asked &asked)
{
    const auto older = std::find_if(all->begin(), all->end(),
                                    [&asked](const Asked &each) { return each.asker == asked.asker; });
    if (older == all->end()) {
        all->append(asked);
    } else {
        *older = asked;
    }
}

} // namespace

RecordingSession::RecordingSession(const RecordingTarget &target, int pollInterval)
    : m_isFile(target.kind == RecordingTarget::Kind::File)
    , m_pollInterval(pollInterval)
    , m_database(target)
    , m_helpers(target, patience)
    , m_timer(this)
{
    m_database.setPatience(patience);
    m_clock.start();
    m_timer.setInterval(pollInterval);
    connect(&m_timer, &QTimer::timeout, this, &RecordingSession::poll);
}

void RecordingSession::ask(const Asked &asked)
{
    const QMutexLocker locker(&m_mutex);
    replaceOrAppend(&m_asked, asked);
}

void RecordingSession::askAt(const AskedAt &asked)
{
    const QMutexLocker locker(&m_mutex);
    replaceOrAppend(&m_askedAt, asked);
}

void RecordingSession::open()
{
    auto points = std::make_shared<RecordingPoints>();
    if (!openDatabase() || !readVersion() || !points->read(&m_database)) {
        tellFailure();
        return;
    }
    m_points = points;
    emit opened(points);
    m_timer.start();
    answerAll();
}

bool RecordingSession::openDatabase()
{
    m_helpers.reopen();
    return m_database.open(RecordingDatabase::Access::Read);
}

void RecordingSession::poll()
{
    if (!m_database.isOpen() && !openDatabase()) {
        return;
    }
    QElapsedTimer took;
    took.start();
    const QVariant before = m_version;
    const bool isOk = m_database.isInPlace() && readVersion();
    if (isOk && m_version == before && (m_isFile || !m_points->isOpenEnded())) {
        return;
    }
    auto points = std::make_shared<RecordingPoints>();
    if (!isOk || !points->read(&m_database)) {
        m_version.clear();
        if (!m_database.isLocked()) {
            tellFailure();
            m_database.close(); // the server or the file may come back
        }
        return;
    }
    points->setSeen(*m_points, m_clock.elapsed());
    const bool isOther = !points->isSameAs(*m_points);
    m_points = points;
    if (isOther) {
        emit grown(points);
    }
    // Many points take longer: most of the time is for the requests.
    m_timer.setInterval(qMax(m_pollInterval, int(took.elapsed()) * 10));
    answerAll(); // what could not be answered before
    if (m_database.isOpen()) {
        m_told.clear();
    }
}

// What changes whenever there may be more than has been read; of a server, while nothing is recorded.
bool RecordingSession::readVersion()
{
    return m_database.readCell(m_isFile
                                   ? QStringLiteral("PRAGMA data_version")
                                   : QStringLiteral("SELECT count(*) FROM recording WHERE ended IS NULL"),
                               &m_version);
}

void RecordingSession::answerAll()
{
    while (m_points && m_database.isOpen() && !m_isAbandoned) {
        if (!answerMoments()) {
            tellFailure();
            recover();
            return;
        }
        Answer answer;
        {
            const QMutexLocker locker(&m_mutex);
            if (m_asked.isEmpty()) {
                return;
            }
            answer.asked = m_asked.takeFirst();
        }
        const Result result = thinAll(&answer);
        if (result == Result::Done) {
            m_told.clear();
            emit answered(answer);
        } else if (result == Result::Failed) {
            tellFailure();
            tryAgain(answer.asked);
            return;
        }
    }
}

// A lock is given back, and a server or a file may come back; what is damaged stays so.
void RecordingSession::tryAgain(Asked asked)
{
    asked.failures += m_database.isLocked() ? 0 : 1;
    if (asked.failures < tries && isWanted(asked)) {
        ask(asked);
    }
    recover();
}

void RecordingSession::recover()
{
    if (m_database.isLocked()) {
        QTimer::singleShot(m_pollInterval, this, &RecordingSession::answerAll);
    } else {
        m_database.close(); // opened again by the next poll
        m_version.clear();
    }
}

bool RecordingSession::isWanted(const Asked &asked)
{
    const QMutexLocker locker(&m_mutex);
    return !m_isAbandoned && !hasAsker(m_asked, asked.asker);
}

// A few look-ups by key each, which do not wait for what is being thinned. Each asker is answered once, or
// else a pointer that moves on and on would keep the curves waiting on a slow server. One that fails
// otherwise than by a lock is left to whoever asked.
bool RecordingSession::answerMoments()
{
    int left = 0;
    {
        const QMutexLocker locker(&m_mutex);
        left = m_askedAt.size();
    }
    for (; left > 0; --left) {
        AskedAt asked;
        {
            const QMutexLocker locker(&m_mutex);
            asked = m_askedAt.takeFirst();
        }
        const SampleSource::Moment &moment = asked.moment;
        for (const PointId &id : moment.points) {
            const RecordingPoints::Curve *const known = m_points->find(id);
            ValueAt value;
            if (known && moment.time <= moment.now
                && !RecordingCurveReader(&m_database, *known, m_clock.elapsed())
                        .valueAt(moment.time, moment.now, &value)) {
                const QMutexLocker locker(&m_mutex);
                if (m_database.isLocked() && !hasAsker(m_askedAt, asked.asker)) {
                    m_askedAt.append({asked.asker, moment, {}});
                }
                return false;
            }
            asked.values.append(value);
        }
        emit answeredAt(asked);
    }
    return true;
}

// Each of several threads takes one curve after the other.
RecordingSession::Result RecordingSession::thinAll(Answer *answer)
{
    const QVector<PointId> &points = answer->asked.request.points;
    const int count = points.size();
    std::vector<std::optional<Thinned>> all(static_cast<size_t>(count));
    std::atomic<int> next{0};
    const auto take = [&](RecordingDatabase *database) {
        Result result = Result::Done;
        for (int place; result == Result::Done && (place = next++) < count;) {
            Thinned thinned;
            result = thin(database, points.at(place), answer->asked, &thinned);
            if (result == Result::Done) {
                all[size_t(place)] = thinned;
            }
        }
        return result;
    };
    m_helpers.start(count - 1,
                    [&take](RecordingDatabase *database) { return take(database) != Result::Failed; });
    Result result = take(&m_database);
    next = count; // if not for all, then for none
    m_hasFailed = result == Result::Failed;
    while (!m_helpers.wait(momentsEach)) {
        if (!m_hasFailed && !answerMoments()) {
            m_hasFailed = true;
            result = Result::Failed;
        }
    }
    m_hasFailed = false;
    for (int place = 0; place < count && result == Result::Done; ++place) {
        Thinned thinned;
        // What a helper has failed with.
        if (!all[size_t(place)]) {
            result = thin(&m_database, points.at(place), answer->asked, &thinned);
        }
        answer->thinned.append(all[size_t(place)].value_or(thinned));
    }
    return result;
}

RecordingSession::Result RecordingSession::thin(RecordingDatabase *database, const PointId &id,
                                                const Asked &asked, Thinned *thinned)
{
    const RecordingPoints::Curve *const known = m_points->find(id);
    const RecordingPoints::Curve none;
    return RecordingCurveReader(database, known ? *known : none, m_clock.elapsed())
        .thin(
            asked.request,
            [&] {
                // Of the threads only the session's own looks up what else is asked.
                if (database == &m_database && !answerMoments()) {
                    return Result::Failed;
                }
                return m_hasFailed || !isWanted(asked) ? Result::GivenUp : Result::Done;
            },
            thinned);
}

// Each failure once, until something goes well.
void RecordingSession::tellFailure()
{
    if (m_told != m_database.error()) {
        m_told = m_database.error();
        emit failed(m_told);
    }
}
