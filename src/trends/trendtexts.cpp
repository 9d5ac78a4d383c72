#include "trends/trendtexts.h"

#include "trends/timeview.h"

#include <QDateTime>

#include <QLocale>

#include <cmath>

namespace {

constexpr int shortest = QLocale::FloatingPointShortest; // that reads back as the same number

// Others are told with an exponent.
bool isPlain(double number)
{
    const double size = std::abs(number);
    return number == 0 || (size >= 1e-5 && size < 1e15);
}

int decimalsOf(double number)
{
    const QString text = QString::number(number, 'f', shortest);
    const int point = text.indexOf(QLatin1Char('.'));
    return point < 0 ? 0 : text.size() - point - 1;
}

// Of ten, as high as the number goes.
int powerOf(double number)
{
    return int(std::floor(std::log10(std::abs(number)) + 1e-9));
}

qint64 aheadOfUtc(qint64 time)
{
    return QDateTime::fromMSecsSinceEpoch(time).offsetFromUtc() * TimeView::second;
}

// Whether local time comes to it twice.
bool isTwice(qint64 time)
{
    constexpr qint64 day = 24 * TimeView::hour;
    const qint64 setBack = aheadOfUtc(time - day) - aheadOfUtc(time + day);
    const qint64 ahead = aheadOfUtc(time);
    return setBack > 0 && (aheadOfUtc(time - setBack) != ahead || aheadOfUtc(time + setBack) != ahead);
}

} // namespace

QString TrendTexts::ofPoint(const Point &point)
{
    QStringList lines{point.id.name, point.id.standard, point.id.project,
                      point.id.box,  point.address,     point.type};
    lines.removeAll(QString());
    return lines.join(QLatin1Char('\n'));
}

QString TrendTexts::ofSource(const PointId &point, const QStringList &boxNames)
{
    const QString box = boxNames.join(QStringLiteral(", ")) + QLatin1Char(' ') + point.box;
    QStringList parts{point.project, box.trimmed()};
    parts.removeAll(QString());
    return parts.join(QStringLiteral(" · "));
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
    return QString::number(number, isPlain(number) ? 'f' : 'g', shortest);
}

QString TrendTexts::ofMean(double number)
{
    constexpr int digits = 6;
    if (std::isnan(number) || number == 0) {
        return ofNumber(number);
    }
    return QString::number(number, 'g', isPlain(number) ? qMax(digits, powerOf(number) + 1) : digits);
}

QString TrendTexts::ofDifference(double from, double to)
{
    const double difference = to - from;
    return isPlain(from) && isPlain(to)
        ? QString::number(difference, 'f', qMax(decimalsOf(from), decimalsOf(to)))
        : ofMean(difference);
}

QString TrendTexts::ofTick(double number, double step)
{
    if (!(std::abs(step) > 0)) {
        return ofNumber(number);
    }
    if (std::abs(number) < std::abs(step) / 1000) {
        return QStringLiteral("0"); // steps do not add up to it
    }
    if (isPlain(number) && isPlain(step)) {
        return QString::number(number, 'f', qMax(0, -powerOf(step)));
    }
    return QString::number(number, 'g', qBound(1, powerOf(number) - powerOf(step) + 1, 17));
}

QString TrendTexts::ofValue(const ValueAt &value)
{
    switch (value.kind) {
    case ValueAt::Kind::Number:
        return value.text.isEmpty() ? ofNumber(value.number) : ofText(value.text);
    case ValueAt::Kind::Text:
        return ofText(value.text);
    case ValueAt::Kind::Break:
        return tr("(%1)", "why there is no value").arg(ofBreak(value.why));
    case ValueAt::Kind::Nothing:
        break;
    }
    return QStringLiteral("–");
}

QString TrendTexts::ofText(const QString &text)
{
    const QString line = text.simplified();
    return line.isEmpty() ? tr("(empty)") : line;
}

QString TrendTexts::ofTime(qint64 time)
{
    const QString text =
        QDateTime::fromMSecsSinceEpoch(time).toString(QStringLiteral("yyyy-MM-dd hh:mm:ss.zzz"));
    return isTwice(time) ? text + QLatin1Char(' ') + ofZone(time) : text;
}

QString TrendTexts::ofRange(const TimeRange &range)
{
    const QString format = QStringLiteral("yyyy-MM-dd hh:mm:ss");
    return QDateTime::fromMSecsSinceEpoch(range.from).toString(format) + QStringLiteral(" – ")
        + QDateTime::fromMSecsSinceEpoch(range.to).toString(format) + QLatin1Char(' ') + ofZones(range);
}

QString TrendTexts::ofZone(qint64 time)
{
    const qint64 ahead = aheadOfUtc(time);
    const QTime offset = QTime::fromMSecsSinceStartOfDay(int(qAbs(ahead)));
    return QLatin1String(ahead < 0 ? "UTC-" : "UTC+") + offset.toString(QStringLiteral("hh:mm"));
}

QString TrendTexts::ofZones(const TimeRange &range)
{
    const QString first = ofZone(range.from);
    const QString last = ofZone(range.to);
    return first == last ? first : first + QStringLiteral(" – ") + last;
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
