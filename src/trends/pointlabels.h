#pragma once

#include "history/point.h"

// What curves are called.
namespace PointLabels {

// A label a point: its name, and of Standard, project and Box those parts that are not the same for all.
QStringList of(const QVector<Point> &points);
// All that is known of the point, a line each.
QString inFull(const Point &point);

} // namespace PointLabels
