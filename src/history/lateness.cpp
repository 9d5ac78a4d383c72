#include "history/lateness.h"

std::optional<qint64> Lateness::report(qint64 time)
{
    const auto late = lateSince(time);
    m_freshness.report(time);
    m_ended = false;
    return late;
}

std::optional<qint64> Lateness::lateSince(qint64 now) const
{
    if (!m_freshness.hasReport() || m_ended || !m_freshness.isLate(now)) {
        return {};
    }
    return now - m_freshness.age(now) + m_freshness.lateAge();
}

void Lateness::endSession()
{
    m_freshness.interrupt();
    m_ended = true;
}
