#include "trends/timescaledraw.h"

#include <QDateTime>
#include <QPainter>

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

// The base draws a second line from where the first one begins, not below the tick.
void TimeScaleDraw::drawLabel(QPainter *painter, double value) const
{
    constexpr QSizeF room(400, 100); // more than any label takes
    const QPointF top = labelPosition(value);
    painter->drawText(QRectF(QPointF(top.x() - room.width() / 2, top.y()), room),
                      Qt::AlignHCenter | Qt::AlignTop, label(value).text());
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
