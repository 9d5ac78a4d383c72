#pragma once

#include <qwt_date_scale_draw.h>

// Labels of local time, in digits alone. The date stands below the first one, and where it has changed; the
// zone where clocks have been set.
class TimeScaleDraw : public QwtDateScaleDraw
{
public:
    TimeScaleDraw();

protected:
    void drawLabel(QPainter *painter, double value) const override;
    QString dateFormatOfDate(const QDateTime &date, QwtDate::IntervalType interval) const override;
};
