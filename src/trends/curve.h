#pragma once

#include "history/point.h"
#include "history/valueat.h"
#include "trends/valuescale.h"

#include <array>
#include <optional>

// The times at which the user is told values: the two markers, what the pointer is at, and the end of what is
// on screen.
enum class Mark { A, B, Pointer, End };
constexpr int markCount = 4;

// A point in a trend: how it is shown, and what was answered last.
struct Curve {
    Point point;
    QString label;
    int style = 0; // of CurveStyle
    bool shown = true;
    Side side = Side::Left;
    bool hasSide = false; // chosen by the user, or suggested since there were numbers but 0
    Thinned data;
    TimeRange asked{0, -1};    // what the data is of
    TimeRange answered{0, -1}; // the same up to the present; it tells nothing of other times
    qint64 end = -1;           // the time of the value at the end
    std::array<std::optional<ValueAt>, markCount> values; // none as long as the source has not told it

    const std::optional<ValueAt> &at(Mark mark) const { return values[size_t(mark)]; }
    // For what is drawn beside the curve: it need not be the last sample.
    ValueAt drawnAt(qint64 time) const
    {
        return time >= answered.from && time <= answered.to ? ValueAt::of(data, time) : ValueAt();
    }
};
