#include "history/seriesthinning.h"

#include "history/series.h"

Thinning SeriesThinning::thinning(const Series &series, const TimeRange &range, int columns)
{
    const Shape shape = shapeOf(series.type());
    const TimeRange extent = series.extent();
    // Samples go at the front only, and come behind.
    const bool goesOn = m_thinning && range.from == m_range.from && range.to == m_range.to
        && columns == m_columns && shape == m_shape && extent.from == m_extent.from;
    if (goesOn) {
        series.feedAfter(&*m_thinning, m_extent.to, range.to);
    } else {
        m_thinning.emplace(range, columns, shape);
        series.feed(&*m_thinning, range);
    }
    m_range = range;
    m_columns = columns;
    m_shape = shape;
    m_extent = extent;
    return *m_thinning;
}

qint64 SeriesThinning::bytes() const
{
    return qint64(sizeof(*this)) + (m_thinning ? m_thinning->bytes() : 0);
}
