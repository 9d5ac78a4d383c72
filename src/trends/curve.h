#pragma once

#include "history/point.h"
#include "history/thinned.h"
#include "trends/valueat.h"
#include "trends/valuescale.h"

// A point in a trend: how it is shown, and what was answered last.
struct Curve {
    Point point;
    QString label;
    int style = 0; // of CurveStyle
    bool shown = true;
    Side side = Side::Left;
    bool hasSide = false; // chosen by the user, or suggested since there were numbers
    Thinned data;
    TimeRange answered{0, -1}; // what the data is of; it tells nothing of other times

    ValueAt at(qint64 time) const
    {
        return time >= answered.from && time <= answered.to ? ValueAt::of(data, time) : ValueAt();
    }
};
