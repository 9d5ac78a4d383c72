#include "boxsim/acquire/beat.h"

namespace {

// A reading that takes about as long as the interval is not told back and forth.
constexpr int keptBeats = 3;

} // namespace

Beat::Beat(int interval, qint64 start)
    : m_interval(interval)
    , m_start(start)
{
}

void Beat::begin(qint64 now)
{
    const qint64 current = (now - m_start) / m_interval;
    m_missed = qMax<qint64>(0, current - m_next);
    m_next = qMax(m_next, current);
}

Beat::Change Beat::end(qint64 now)
{
    const qint64 following = m_next + 1;
    m_next = qMax(following, (now - m_start + m_interval - 1) / m_interval);
    const qint64 lost = m_missed + m_next - following;
    m_kept = lost > 0 ? 0 : m_kept + 1;
    if (lost > 0) {
        m_skipped = m_skipping ? m_skipped + lost : lost;
        const bool begins = !m_skipping;
        m_skipping = true;
        return begins ? Change::Skipping : Change::None;
    }
    if (m_skipping && m_kept == keptBeats) {
        m_skipping = false;
        return Change::Keeping;
    }
    return Change::None;
}

void Beat::resume(qint64 now)
{
    const qint64 current = (now - m_start) / m_interval;
    if (m_skipping && current > m_next) {
        m_skipped += current - m_next;
        m_kept = 0;
    }
    m_next = qMax(m_next, current);
}
