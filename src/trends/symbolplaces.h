#pragma once

#include <QPolygonF>
#include <QRectF>
#include <QVector>

class QwtScaleMap;

// Where a curve has its symbols: at a few times, far from each other, at which a line or a dot is seen. These
// go along with the curve.
class SymbolPlaces
{
public:
    // In pixels of the area. Curves of different styles have theirs at different times.
    SymbolPlaces(const QwtScaleMap &xMap, const QRectF &area, int style);

    // Pieces of the curve in the order of time, in pixels, and the parts of a line that are seen.
    void addLine(const QPolygonF &line, const QVector<QPolygonF> &parts);
    void addDot(const QPointF &dot);

    // One at the end of the curve where no time has one.
    QVector<QPointF> points() const;

private:
    void add(const QPointF &point);

    QRectF m_area;
    QVector<qreal> m_places; // from left to right
    int m_next = 0;          // of these
    QVector<QPointF> m_points;
    QPolygonF m_end; // the last point that is seen, if any
};
