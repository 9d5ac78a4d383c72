#include "history/point.h"

#include <tuple>

namespace {

auto tied(const PointId &id)
{
    return std::tie(id.box, id.project, id.standard, id.name);
}

} // namespace

bool operator==(const PointId &left, const PointId &right)
{
    return tied(left) == tied(right);
}

bool operator<(const PointId &left, const PointId &right)
{
    return tied(left) < tied(right);
}

uint qHash(const PointId &id, uint seed)
{
    for (const QString *part : {&id.box, &id.project, &id.standard, &id.name}) {
        seed = qHash(*part, seed) + 0x9e3779b9U + (seed << 6) + (seed >> 2);
    }
    return seed;
}

Shape shapeOf(const QString &type)
{
    const auto begins = [&type](const char *with) {
        return type.startsWith(QLatin1String(with), Qt::CaseInsensitive);
    };
    if (begins("string")) {
        return Shape::Event;
    }
    return begins("bool") || begins("bit") || begins("int") || begins("uint") ? Shape::Step : Shape::Line;
}
