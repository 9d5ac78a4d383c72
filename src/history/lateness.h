#pragma once

#include "boxlink/freshness.h"

#include <optional>

// Whether the reports of one Standard come as usual. Times are in ms since 1970 UTC, strictly increasing.
class Lateness
{
public:
    // Takes the time of a report. Where it comes late, gives the time of the break before it.
    std::optional<qint64> report(qint64 time);
    // If no report has come for longer than three usual periods (10 s at least): when that was so first, less
    // a ms. There the points break.
    std::optional<qint64> lateSince(qint64 now) const;
    // The session has ended. The pause until the next report is neither late nor a usual period.
    void endSession();

private:
    Freshness m_freshness;
    bool m_ended = false;
};
