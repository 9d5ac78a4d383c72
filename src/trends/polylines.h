#pragma once

#include <QLineF>
#include <QPolygonF>
#include <QVector>

// Lines in pixels. Not every picture can clip what is drawn (SVG can't), so lines are cut before.
namespace Polylines {

// As a value that holds until the next one: two lines between two points, across and then up or down.
QPolygonF steps(const QPolygonF &points);

// The parts of the line that lie inside; touching the edge is inside.
QVector<QPolygonF> cut(const QPolygonF &line, const QRectF &area);

// Whether the line fills its area rather than crossing it: by its points, in pixels, or the way that its
// parts go up and down.
bool isDense(const QPolygonF &line, const QVector<QPolygonF> &parts);

// Slanted lines over the area, this far from each other; rising to the right, or falling.
QVector<QLineF> hatching(const QRectF &area, qreal distance, bool rising);

} // namespace Polylines
