#include "trends/pointlabels.h"

#include <QStringList>

#include <algorithm>

namespace {

constexpr QString PointId::*parts[] = {&PointId::standard, &PointId::project, &PointId::box};

} // namespace

QStringList PointLabels::of(const QVector<Point> &points)
{
    QVector<QString PointId::*> telling;
    for (const auto part : parts) {
        const bool differs = std::any_of(points.cbegin(), points.cend(), [&](const Point &point) {
            return point.id.*part != points.first().id.*part;
        });
        if (differs) {
            telling.append(part);
        }
    }
    QStringList labels;
    for (const Point &point : points) {
        QStringList label{point.id.name};
        for (const auto part : qAsConst(telling)) {
            if (!(point.id.*part).isEmpty()) {
                label.append(point.id.*part);
            }
        }
        labels.append(label.join(QStringLiteral(" · ")));
    }
    return labels;
}

QString PointLabels::inFull(const Point &point)
{
    QStringList lines{point.id.name};
    for (const auto part : parts) {
        lines.append(point.id.*part);
    }
    lines.append(point.address);
    lines.append(point.type);
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}
