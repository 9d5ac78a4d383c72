#include "trends/timescaledraw.h"

#include "trends/trendtexts.h"

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
                      Qt::AlignHCenter | Qt::AlignTop, tickLabel(painter->font(), value).text());
}

QwtDate::IntervalType TimeScaleDraw::intervalType(const QwtScaleDiv &ticks) const
{
    if (ticks != m_ticks) {
        m_interval = QwtDateScaleDraw::intervalType(ticks);
        m_ticks = ticks;
    }
    return m_interval;
}

QString TimeScaleDraw::dateFormatOfDate(const QDateTime &date, QwtDate::IntervalType interval) const
{
    QString format = QwtDateScaleDraw::dateFormatOfDate(date, interval);
    if (interval >= QwtDate::Day) {
        return format;
    }
    const auto ticks = scaleDiv().ticks(QwtScaleDiv::MajorTick);
    const int place = ticks.indexOf(double(date.toMSecsSinceEpoch()));
    const QDateTime before = place > 0 ? toDateTime(ticks.at(place - 1)) : QDateTime();
    if (before.date() != date.date()) {
        format += QStringLiteral("\nyyyy-MM-dd");
    }
    if (before.isValid() && before.offsetFromUtc() != date.offsetFromUtc()) {
        format += QStringLiteral("\n'%1'").arg(TrendTexts::ofZone(date.toMSecsSinceEpoch()));
    }
    return format;
}
