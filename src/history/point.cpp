#include "history/point.h"

#include <QHash>

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

QStringList distinctNames(const QVector<PointId> &ids)
{
    constexpr int levels = 4;
    const auto nameOf = [](const PointId &id, int level) {
        const QStringList parts{id.box, id.project, id.standard, id.name};
        return parts.mid(levels - 1 - level).join(QLatin1String(" / "));
    };
    QHash<QString, int> counts[levels];
    for (int level = 0; level < levels; ++level) {
        for (const PointId &id : ids) {
            ++counts[level][nameOf(id, level)];
        }
    }
    QStringList names;
    for (const PointId &id : ids) {
        int level = 0;
        while (level < levels - 1 && counts[level].value(nameOf(id, level)) > 1) {
            ++level;
        }
        names.append(nameOf(id, level));
    }
    return names;
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
