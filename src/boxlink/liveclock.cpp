#include "boxlink/liveclock.h"

#include <QDateTime>
#include <QDeadlineTimer>

namespace {

constexpr qint64 leastSleep = 1000; // ms; less is how a wall clock is kept right

} // namespace

qint64 WakingClock::at(qint64 monotonic, qint64 wall)
{
    const qint64 ahead = wall - monotonic;
    const qint64 slept = ahead - m_ahead.value_or(ahead);
    if (slept >= leastSleep) {
        m_slept += slept;
    }
    m_ahead = ahead;
    return monotonic + m_slept;
}

qint64 liveTime()
{
    static WakingClock clock;
    return clock.at(QDeadlineTimer::current().deadline(), QDateTime::currentMSecsSinceEpoch());
}
