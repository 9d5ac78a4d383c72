#include "trends/symbolplaces.h"

#include <algorithm>
#include <cmath>

#include <qwt_scale_map.h>

namespace {

constexpr qreal distance = 150; // pixels

// Of the point at the place; the line goes to the right, or up and down.
QPointF pointAt(const QPolygonF &line, qreal place)
{
    const auto isLeft = [](const QPointF &point, qreal x) { return point.x() < x; };
    const auto next = std::lower_bound(line.cbegin() + 1, line.cend() - 1, place, isLeft);
    const QPointF from = *(next - 1);
    const QPointF way = *next - from;
    return way.x() > 0 ? from + way * ((place - from.x()) / way.x()) : from;
}

} // namespace

SymbolPlaces::SymbolPlaces(const QwtScaleMap &xMap, const QRectF &area, int style)
    : m_area(area)
{
    constexpr qreal apart = 0.382; // multiples of it spread over the distance
    const qreal step = distance * xMap.sDist() / xMap.pDist();
    if (!(step > 0)) {
        return;
    }
    const qreal first = std::fmod(apart * style, 1);
    for (qreal number = std::ceil(xMap.s1() / step - first); (number + first) * step <= xMap.s2(); ++number) {
        m_places.append(xMap.transform((number + first) * step));
    }
}

void SymbolPlaces::addLine(const QPolygonF &line, const QVector<QPolygonF> &parts)
{
    if (parts.isEmpty()) {
        return;
    }
    m_end = QPolygonF({parts.last().last()});
    while (m_next < m_places.size() && m_places.at(m_next) < line.first().x()) {
        ++m_next; // nothing is known there
    }
    for (; m_next < m_places.size() && m_places.at(m_next) <= line.last().x(); ++m_next) {
        add(pointAt(line, m_places.at(m_next)));
    }
}

// The first one behind a place has its symbol.
void SymbolPlaces::addDot(const QPointF &dot)
{
    m_end = QPolygonF({dot});
    if (m_next < m_places.size() && m_places.at(m_next) <= dot.x()) {
        add(dot);
    }
    while (m_next < m_places.size() && m_places.at(m_next) <= dot.x()) {
        ++m_next;
    }
}

void SymbolPlaces::add(const QPointF &point)
{
    if (m_area.contains(point)) {
        m_points.append(point);
    }
}

QVector<QPointF> SymbolPlaces::points() const
{
    return m_points.isEmpty() ? m_end : m_points;
}
