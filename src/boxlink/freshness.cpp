#include "boxlink/freshness.h"

#include <algorithm>

namespace {

constexpr int keptPeriods = 5;
constexpr int latePeriods = 3;
constexpr qint64 leastLateAge = 10000; // ms

// The lower one of an even number: a single long pause does not pass for usual.
qint64 median(QVector<qint64> values)
{
    if (values.isEmpty()) {
        return 0;
    }
    const auto middle = values.begin() + (values.size() - 1) / 2;
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

} // namespace

void Freshness::report(qint64 now)
{
    if (hasReport() && !m_interrupted) {
        m_periods.append(now - m_last);
        if (m_periods.size() > keptPeriods) {
            m_periods.removeFirst();
        }
    }
    m_last = now;
    m_interrupted = false;
}

qint64 Freshness::lateAge() const
{
    return std::max(leastLateAge, latePeriods * median(m_periods));
}
