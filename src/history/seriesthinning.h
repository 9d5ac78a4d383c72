#pragma once

#include "history/thinning.h"

#include <optional>

class Series;

// Thins the samples of one series for a plot that is drawn again and again: as long as it shows the same
// range, only those that have come since.
class SeriesThinning
{
public:
    // Of all samples that the series has by now; to be finished.
    Thinning thinning(const Series &series, const TimeRange &range, int columns);
    qint64 bytes() const;

private:
    std::optional<Thinning> m_thinning;
    TimeRange m_range;
    int m_columns = 0;
    Shape m_shape = Shape::Line;
    TimeRange m_extent; // of the samples that it has taken, or passed over
};
