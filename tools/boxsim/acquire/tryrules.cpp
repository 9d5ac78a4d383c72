#include "boxsim/acquire/tryrules.h"

namespace {

constexpr int longestPause = 10000;         // between two tries of what is lost
constexpr qint64 longestImpatience = 60000; // between two tries that wait their whole time-out

// What tries that hold others up may take of the time: a quarter, and a half rather than leave out the pause.
constexpr int usualPart = 4;
constexpr int mostPart = 2;

} // namespace

TryRules::TryRules(int interval)
    : m_interval(interval)
    , m_rounds(1 + (interval - 1) / longestPause)
    , m_pace(qMin(interval, longestPause))
{
}

qint64 TryRules::nextRound(qint64 now, qint64 due, qint64 most) const
{
    const qint64 pause = m_interval / m_rounds;
    qint64 next = due - qMin(most, pause / 2) - (m_rounds - 1) * pause;
    while (next <= now) {
        next += pause;
    }
    return next;
}

int TryRules::count(int lost) const
{
    const qint64 turns = (lost * qint64(m_pace) + longestPause - 1) / longestPause;
    return static_cast<int>(qMin<qint64>(turns, lost));
}

// Its time-out, and as much before it if the line is to be opened, or the silence after it.
qint64 TryRules::timeOf(int timeout, int quiet)
{
    return quiet > 0 ? qint64(timeout) + quiet : 2 * qint64(timeout);
}

qint64 TryRules::share(qint64 left, int tries, const Cost &cost)
{
    return left / qBound<qint64>(1, left / timeOf(qMin(cost.least, cost.whole), cost.quiet), tries);
}

// Whether a try is to have the whole time-out, for what answers slowly: one a minute, in turn, or each ten
// seconds where nobody is held up.
bool TryRules::isPatient(const History &history, const Room &room, qint64 now) const
{
    const qint64 pause = room.othersWait ? longestImpatience : longestPause - m_pace;
    return now - m_lastWhole >= pause && now - history.lastWhole >= pause * room.lost;
}

// What there is room for is tried in each round. Where there is none, a try has the least that an answer
// needs.
int TryRules::timeout(const History &history, const Room &room, const Cost &cost, qint64 now) const
{
    const int least = qMin(cost.least, cost.whole);
    const qint64 share = cost.quiet > 0 ? room.time - cost.quiet : room.time / 2;
    const bool patient = isPatient(history, room, now);
    const bool isUrgent = patient || now - history.last >= longestPause - m_pace;
    const bool mayOverrun = isUrgent && (!room.othersWait || now >= m_nextOverrun);
    if (history.round == m_round || (share < least && !mayOverrun)) {
        return 0;
    }
    return patient ? cost.whole : static_cast<int>(qBound<qint64>(least, share, cost.whole));
}

void TryRules::note(History *history, qint64 now) const
{
    history->last = now;
    history->round = m_round;
}

void TryRules::noteVain(History *history, const Room &room, bool whole, qint64 begin, qint64 now)
{
    if (whole) {
        history->lastWhole = m_lastWhole = now;
    }
    const qint64 cost = now - begin;
    if (cost > room.time) {
        m_nextOverrun = begin + qMax(cost * mostPart, qMin<qint64>(longestPause - m_pace, cost * usualPart));
    }
}
