#include "history/recordinggrowth.h"

#include <algorithm>

namespace {

constexpr qint64 minute = 60000; // ms

} // namespace

void RecordingGrowth::open(qint64 latest, qint64 wall, qint64 monotonic)
{
    if (std::abs(wall - latest) < minute) {
        m_growths.report(monotonic);
        m_isGuessed = true;
        m_present = std::max(wall, latest);
        m_at = monotonic;
    }
}

void RecordingGrowth::grow(qint64 latest, qint64 monotonic)
{
    // A sample is seen some time after it has come: of all the one that was seen soonest tells the present.
    const auto known = m_isGuessed ? std::nullopt : present(monotonic);
    if (!known || latest > *known) {
        m_present = latest;
        m_at = monotonic;
    }
    m_isGuessed = false;
    m_growths.report(monotonic);
}

bool RecordingGrowth::isGrowing(qint64 monotonic) const
{
    return m_growths.hasReport() && m_growths.age(monotonic) < std::max(minute, m_growths.lateAge());
}

std::optional<qint64> RecordingGrowth::present(qint64 monotonic) const
{
    return m_growths.hasReport() ? std::make_optional(m_present + monotonic - m_at) : std::nullopt;
}
