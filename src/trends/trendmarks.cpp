#include "trends/trendmarks.h"

namespace {

qint64 middleOf(const TimeRange &screen)
{
    return screen.from + (screen.to - screen.from) / 2;
}

} // namespace

void TrendMarks::setCursor(std::optional<qint64> time)
{
    if (time != m_cursor) {
        m_cursor = time;
        emit cursorChanged();
    }
}

void TrendMarks::moveCursor(qint64 by, const TimeRange &screen)
{
    setCursor(qBound(screen.from, m_cursor.value_or(middleOf(screen)) + by, screen.to));
}

void TrendMarks::setMarker(int marker, qint64 time)
{
    m_markers.times[marker] = time;
    emit markersChanged();
}

void TrendMarks::setMarkerAtCursor(int marker, const TimeRange &screen)
{
    setMarker(marker, m_cursor.value_or(middleOf(screen)));
}

void TrendMarks::toggle(const TimeRange &screen)
{
    if (m_markers.isAnySet()) {
        m_markers = {};
    } else {
        const qint64 third = (screen.to - screen.from) / 3;
        m_markers.times[0] = screen.from + third;
        m_markers.times[1] = screen.to - third;
    }
    emit markersChanged();
}
