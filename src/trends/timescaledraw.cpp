#include "trends/timescaledraw.h"

#include <QDateTime>

namespace {

const struct {
    QwtDate::IntervalType interval;
    const char *format;
} formats[] = {
    {QwtDate::Millisecond, "hh:mm:ss.zzz"},
    {QwtDate::Second, "hh:mm:ss"},
    {QwtDate::Minute, "hh:mm"},
    {QwtDate::Hour, "hh:mm"},
    {QwtDate::Day, "yyyy-MM-dd"},
    {QwtDate::Week, "yyyy-MM-dd"},
    {QwtDate::Month, "yyyy-MM"},
    {QwtDate::Year, "yyyy"},
};

} // namespace

TimeScaleDraw::TimeScaleDraw()
    : QwtDateScaleDraw(Qt::LocalTime)
{
    for (const auto &row : formats) {
        setDateFormat(row.interval, QLatin1String(row.format));
    }
}

QString TimeScaleDraw::dateFormatOfDate(const QDateTime &date, QwtDate::IntervalType interval) const
{
    const QString format = QwtDateScaleDraw::dateFormatOfDate(date, interval);
    if (interval >= QwtDate::Day) {
        return format;
    }
    const auto ticks = scaleDiv().ticks(QwtScaleDiv::MajorTick);
    const int place = ticks.indexOf(double(date.toMSecsSinceEpoch()));
    const bool hasDate = place <= 0 || toDateTime(ticks.at(place - 1)).date() != date.date();
    return hasDate ? format + QStringLiteral("\nyyyy-MM-dd") : format;
}
