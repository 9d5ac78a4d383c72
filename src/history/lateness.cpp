#include "history/lateness.h"

std::optional<qint64> Lateness::report(qint64 time)
{
    std::optional<qint64> breakTime;
    if (m_freshness.hasReport() && !m_ended && m_freshness.isLate(time)) {
        breakTime = time - m_freshness.age(time) + 1;
    }
    m_freshness.report(time);
    m_ended = false;
    return breakTime;
}

void Lateness::endSession()
{
    m_freshness.interrupt();
    m_ended = true;
}
