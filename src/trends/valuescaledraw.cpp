#include "trends/valuescaledraw.h"

#include "trends/trendtexts.h"

QwtText ValueScaleDraw::label(double value) const
{
    const QList<double> ticks = scaleDiv().ticks(QwtScaleDiv::MajorTick);
    const double step = ticks.size() > 1 ? ticks.at(1) - ticks.at(0) : 0;
    return TrendTexts::ofTick(value, step);
}
