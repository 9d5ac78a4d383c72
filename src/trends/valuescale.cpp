#include "trends/valuescale.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace {

constexpr double manyTimes = 20;
constexpr double room = 0.05; // of the range, above and below
// Beyond it the distance between two numbers is none that a double can hold.
constexpr double farthest = 1e300;
// The least room above and below, as a part of the numbers. With less Qwt takes steps of the scale for equal,
// and labels them wrong.
constexpr double finest = 1e-12;

} // namespace

double ValueScale::magnitude(const Statistics &curve)
{
    return curve.count > 0 ? qMax(std::abs(curve.least), std::abs(curve.greatest)) : -1;
}

Side ValueScale::suggested(double own, double most)
{
    if (own <= 0 || most <= 0) {
        return Side::Left;
    }
    return own < most / manyTimes || own / manyTimes > most ? Side::Right : Side::Left;
}

QVector<Side> ValueScale::suggested(const QVector<double> &magnitudes)
{
    QVector<double> sorted;
    std::copy_if(magnitudes.cbegin(), magnitudes.cend(), std::back_inserter(sorted),
                 [](double magnitude) { return magnitude > 0; });
    std::sort(sorted.begin(), sorted.end());
    double bound = 0; // what is less is on the right
    if (!sorted.isEmpty() && sorted.last() / manyTimes > sorted.first()) {
        double widest = 1;
        for (int i = 1; i < sorted.size(); ++i) {
            const double step = sorted.at(i) / sorted.at(i - 1);
            if (step > widest) {
                widest = step;
                bound = sorted.at(i);
            }
        }
    }
    QVector<Side> sides;
    for (const double magnitude : magnitudes) {
        sides.append(magnitude > 0 && magnitude < bound ? Side::Right : Side::Left);
    }
    return sides;
}

ValueRange ValueScale::around(const QVector<Statistics> &curves)
{
    ValueRange range{farthest, -farthest};
    for (const Statistics &curve : curves) {
        if (curve.count > 0) {
            range.least = qMin(range.least, curve.least);
            range.greatest = qMax(range.greatest, curve.greatest);
        }
    }
    if (range.least > range.greatest) {
        return {};
    }
    range.least = qMax(range.least, -farthest);
    range.greatest = qMin(range.greatest, farthest);
    double more = (range.greatest - range.least) * room;
    const double least = qMax(std::abs(range.least), std::abs(range.greatest)) * finest;
    if (more <= least) {
        more = range.greatest == 0 ? 1 : std::abs(range.greatest) * room;
    }
    return {range.least - more, range.greatest + more};
}

ValueRange ValueScale::zoomed(const ValueRange &range, double factor)
{
    const double middle = range.least / 2 + range.greatest / 2;
    const double least = qMax(std::abs(middle) * 10 * finest, 1e-300);
    const double half = qMax(least, (range.greatest / 2 - range.least / 2) * factor);
    return {qMax(-farthest, middle - half), qMin(farthest, middle + half)};
}
