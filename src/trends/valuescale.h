#pragma once

#include "history/thinned.h"

#include <QVector>

// The two scales of values of a plot.
enum class Side { Left, Right };

// The ends of a scale of values.
struct ValueRange {
    double least = 0;
    double greatest = 1;
};

// What a scale is to show, and on which side.
namespace ValueScale {

// How far the numbers go from zero; negative for none.
double magnitude(const Statistics &curve);

// The side for a curve, by its magnitude and the greatest of those on the left: on the right where it is less
// than a twentieth of that, or more than twenty times as much. Left where nothing can be compared.
Side suggested(double own, double most);

// The sides of curves that come together, none being there yet, by their magnitudes: all left unless one is
// more than twenty times another; then those below the widest step between two neighbours are on the right.
QVector<Side> suggested(const QVector<double> &magnitudes);

// A range that shows all of these with a little room above and below; 0 to 1 where none of them has a number.
ValueRange around(const QVector<Statistics> &curves);

// About its middle; a factor under 1 shows less. Its ends can always be told apart.
ValueRange zoomed(const ValueRange &range, double factor);

} // namespace ValueScale
