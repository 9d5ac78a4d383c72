#pragma once

#include "boxlink/freshness.h"

#include <optional>

// Whether a recording grows, and what the present of its samples is: their times are of the clock of who
// records, which may be another one than that of this computer. It is told monotonic times, in ms.
class RecordingGrowth
{
public:
    // The time of the last sample, and what this computer's clock shows, in ms since 1970 UTC. A sample of
    // the last minute counts as one that has just come.
    void open(qint64 latest, qint64 wall, qint64 monotonic);
    // A later sample has come.
    void grow(qint64 latest, qint64 monotonic);

    // Whether one has come within the last minute, or within the last three usual pauses between them.
    bool isGrowing(qint64 monotonic) const;
    // None if it never grew. Never before the last sample.
    std::optional<qint64> present(qint64 monotonic) const;

private:
    Freshness m_growths;      // by monotonic times
    bool m_isGuessed = false; // the present is that of this computer
    qint64 m_present = 0;     // ms since 1970 UTC, at the time
    qint64 m_at = 0;
};
