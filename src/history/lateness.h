#pragma once

#include "boxlink/freshness.h"

#include <optional>

// Whether the reports of one Standard come as usual. Times are in ms since 1970 UTC, strictly increasing.
class Lateness
{
public:
    // Takes the time of a report. Where it comes later than three usual periods after the one before (10 s at
    // least), gives the time of the break between the two: 1 ms after the one before.
    std::optional<qint64> report(qint64 time);
    // The session has ended. The pause until the next report is neither late nor a usual period.
    void endSession();

private:
    Freshness m_freshness;
    bool m_ended = false;
};
