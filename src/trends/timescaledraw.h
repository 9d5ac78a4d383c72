#pragma once

#include <qwt_date_scale_draw.h>
#include <qwt_scale_div.h>

// Labels of local time, in digits alone. The date stands below the first one, and where it has changed; the
// zone where clocks have been set.
class TimeScaleDraw : public QwtDateScaleDraw
{
public:
    TimeScaleDraw();

protected:
    void drawLabel(QPainter *painter, double value) const override;
    // Of the ticks of the scale it is found once: by itself the base does so for each label, and whoever asks
    // for local time has the system look whether the zone is another one.
    QwtDate::IntervalType intervalType(const QwtScaleDiv &ticks) const override;
    QString dateFormatOfDate(const QDateTime &date, QwtDate::IntervalType interval) const override;

private:
    mutable QwtScaleDiv m_ticks;
    mutable QwtDate::IntervalType m_interval = QwtDate::Millisecond;
};
