#include "trends/trendtexts.h"

#include "trends/timeview.h"

#include <QDateTime>

#include <cmath>

QString TrendTexts::ofPoint(const Point &point)
{
    QStringList lines{point.id.name, point.id.standard, point.id.project,
                      point.id.box,  point.address,     point.type};
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

QString TrendTexts::ofBreak(SampleState why)
{
    switch (why) {
    case SampleState::NotValid:
        return tr("not valid");
    case SampleState::NoNumber:
        return tr("no number");
    case SampleState::NoReport:
        return tr("no report");
    case SampleState::Ended:
        return tr("session ended");
    case SampleState::Dropped:
        return tr("not recorded");
    case SampleState::Valid:
        break;
    }
    return {};
}

QString TrendTexts::ofNumber(double number)
{
    if (std::isnan(number)) {
        return QStringLiteral("–");
    }
    // All digits of what counts, up to where a double holds whole numbers.
    const bool isWhole = std::abs(number) < 1e15 && number == std::floor(number);
    return isWhole ? QString::number(number, 'f', 0) : QString::number(number, 'g', 6);
}

QString TrendTexts::ofValue(const ValueAt &value)
{
    switch (value.kind) {
    case ValueAt::Kind::Number:
        return ofNumber(value.number);
    case ValueAt::Kind::Text:
        return value.text;
    case ValueAt::Kind::Break:
        return ofBreak(value.why);
    case ValueAt::Kind::Nothing:
        break;
    }
    return QStringLiteral("–");
}

QString TrendTexts::ofTime(qint64 time)
{
    return QDateTime::fromMSecsSinceEpoch(time).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz"));
}

QString TrendTexts::ofRange(const TimeRange &range)
{
    const QString format = QStringLiteral("yyyy-MM-dd hh:mm:ss");
    return QDateTime::fromMSecsSinceEpoch(range.from).toString(format) + QStringLiteral(" – ")
        + QDateTime::fromMSecsSinceEpoch(range.to).toString(format);
}

QString TrendTexts::ofDuration(qint64 duration)
{
    const qint64 length = qAbs(duration);
    const qint64 minutes = length % TimeView::hour / TimeView::minute;
    const double seconds = double(length % TimeView::minute) / TimeView::second;
    QStringList parts;
    if (length >= TimeView::hour) {
        parts.append(tr("%1 h").arg(length / TimeView::hour));
    }
    if (length >= TimeView::minute) {
        parts.append(tr("%1 min").arg(minutes));
    }
    parts.append(tr("%1 s").arg(seconds, 0, 'f', 3));
    return (duration < 0 ? QStringLiteral("−") : QString()) + parts.join(QLatin1Char(' '));
}
