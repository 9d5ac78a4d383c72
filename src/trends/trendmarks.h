#pragma once

#include "trends/markerlines.h"

#include "history/thinned.h"

#include <QObject>

// The time that the user points at, by mouse or keys, and the two markers.
class TrendMarks : public QObject
{
    Q_OBJECT
public:
    using QObject::QObject;

    std::optional<qint64> cursor() const { return m_cursor; }
    const Markers &markers() const { return m_markers; }

    void setCursor(std::optional<qint64> time);
    // From where it is, or from the middle of what is on screen; it stays on screen.
    void moveCursor(qint64 by, const TimeRange &screen);
    void setMarker(int marker, qint64 time);
    // To where the cursor is, or into the middle of what is on screen.
    void setMarkerAtCursor(int marker, const TimeRange &screen);
    // Takes both away, or sets those that are missing on screen.
    void toggle(const TimeRange &screen);

signals:
    void cursorChanged();
    void markersChanged();

private:
    std::optional<qint64> m_cursor;
    Markers m_markers;
};
