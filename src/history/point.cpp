#include "history/point.h"

#include <QHash>

#include <algorithm>
#include <tuple>

namespace {

auto tied(const PointId &id)
{
    return std::tie(id.box, id.project, id.standard, id.name);
}

enum Level { Name, Standard, Project, Box, LevelCount };

QString nameUpTo(int level, const PointId &id)
{
    const QStringList parts{id.box, id.project, id.standard, id.name};
    return parts.mid(Box - level).join(QLatin1String(" / "));
}

// What all names have in front: nobody should take a point for one of another source.
int commonLevel(const QVector<PointId> &ids)
{
    const auto differ = [&ids](QString PointId::*part) {
        return std::any_of(ids.cbegin(), ids.cend(),
                           [&ids, part](const PointId &id) { return id.*part != ids.first().*part; });
    };
    return differ(&PointId::box) ? Box : differ(&PointId::project) ? Project : Name;
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
    const int least = commonLevel(ids);
    QHash<QString, int> counts[LevelCount];
    for (int level = least; level < LevelCount; ++level) {
        for (const PointId &id : ids) {
            ++counts[level][nameUpTo(level, id)];
        }
    }
    QStringList names;
    for (const PointId &id : ids) {
        int level = least;
        while (level < Box && counts[level].value(nameUpTo(level, id)) > 1) {
            ++level;
        }
        names.append(nameUpTo(level, id));
    }
    return names;
}

QString fullName(const PointId &id)
{
    return nameUpTo(Box, id);
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
