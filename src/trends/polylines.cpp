#include "trends/polylines.h"

#include <cmath>

namespace {

// Cuts the line to what lies inside; false if nothing does.
bool cutLine(QPointF *from, QPointF *to, const QRectF &area)
{
    const QPointF start = *from;
    const QPointF way = *to - start;
    qreal first = 0; // shares of the way
    qreal last = 1;
    const struct {
        qreal step;
        qreal room;
    } edges[] = {{-way.x(), start.x() - area.left()},
                 {way.x(), area.right() - start.x()},
                 {-way.y(), start.y() - area.top()},
                 {way.y(), area.bottom() - start.y()}};
    for (const auto &edge : edges) {
        if (edge.step == 0) {
            if (edge.room < 0) {
                return false;
            }
        } else if (edge.step > 0) {
            last = qMin(last, edge.room / edge.step);
        } else {
            first = qMax(first, edge.room / edge.step);
        }
    }
    if (first > last) {
        return false;
    }
    if (last < 1) {
        *to = start + last * way;
    }
    if (first > 0) {
        *from = start + first * way;
    }
    return true;
}

} // namespace

QPolygonF Polylines::steps(const QPolygonF &points)
{
    QPolygonF line;
    line.reserve(2 * points.size());
    for (const QPointF &point : points) {
        if (!line.isEmpty() && line.last().y() != point.y()) {
            line.append(QPointF(point.x(), line.last().y()));
        }
        line.append(point);
    }
    return line;
}

QVector<QPolygonF> Polylines::cut(const QPolygonF &line, const QRectF &area)
{
    QVector<QPolygonF> parts;
    bool goesOn = false; // the last part ends where the next line begins
    for (int index = 1; index < line.size(); ++index) {
        QPointF from = line.at(index - 1);
        QPointF to = line.at(index);
        if (!cutLine(&from, &to, area)) {
            goesOn = false;
            continue;
        }
        if (!goesOn) {
            parts.append(QPolygonF({from}));
        }
        parts.last().append(to);
        goesOn = to == line.at(index);
    }
    return parts;
}

bool Polylines::isDense(const QPolygonF &line, const QVector<QPolygonF> &parts)
{
    constexpr qreal most = 1.5;      // points a pixel
    constexpr qreal longestWay = 15; // times the width
    const qreal width = qMax<qreal>(1, line.last().x() - line.first().x());
    qreal way = 0;
    for (const QPolygonF &part : parts) {
        for (int index = 1; index < part.size(); ++index) {
            way += qAbs(part.at(index).y() - part.at(index - 1).y());
        }
    }
    return line.size() > most * width || way > longestWay * width;
}

QVector<QLineF> Polylines::hatching(const QRectF &area, qreal distance, bool rising)
{
    QVector<QLineF> lines;
    // From a grid of the plot, not of the area, so that the lines of neighbours meet.
    const int first = int(std::floor((area.left() - area.height()) / distance));
    const int last = int(std::ceil((area.right() + area.height()) / distance));
    for (int place = first; place < last; ++place) {
        const qreal x = place * distance;
        QPointF from(x, rising ? area.bottom() : area.top());
        QPointF to(x + area.height(), rising ? area.top() : area.bottom());
        if (cutLine(&from, &to, area)) {
            lines.append({from, to});
        }
    }
    return lines;
}
