#pragma once

#include <QtGlobal>

// The beat of one Standard: when its next reading is due, and which beats fall out because a reading took too
// long. Times are milliseconds of a clock that only runs forward.
class Beat
{
public:
    enum class Change {
        None,
        Skipping, // beats fall out from now on
        Keeping,  // they no longer do
    };

    Beat(int interval, qint64 start);

    int interval() const { return m_interval; }
    qint64 due() const { return m_start + m_next * m_interval; }
    // Beats that fell out since the last change to Skipping.
    qint64 skipped() const { return m_skipped; }

    // A reading begins, not before due(), and ends.
    void begin(qint64 now);
    Change end(qint64 now);
    // Whatever else held the Standard up is over. Beats that fell into it are left out, but for the last,
    // which is late. They count as skipped if beats are, and do not begin that.
    void resume(qint64 now);

private:
    int m_interval;
    qint64 m_start;
    qint64 m_next = 0; // beat that is due, counted from 0 at m_start
    qint64 m_skipped = 0;
    qint64 m_missed = 0; // beats that fell out before the reading that runs
    int m_kept = 0;      // beats without a loss, one after the other
    bool m_skipping = false;
};
