#pragma once

#include "trends/figuremodel.h"

// What the columns of the figures say of a curve.
namespace FigureTexts {

// Figures of another time than what is on screen are not told.
QString of(const Curve &curve, FigureModel::Column column, const TimeRange &screen);

} // namespace FigureTexts
