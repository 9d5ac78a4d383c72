#include "trends/figuretexts.h"

#include "trends/figuretable.h"
#include "trends/trendtexts.h"

namespace {

// The beginning of a long text.
QString inOneLine(const ValueAt &value)
{
    constexpr int most = 500; // chars, more than a tool tip should have
    return TrendTexts::ofValue(value).left(most);
}

// At the end of what is on screen.
QString current(const Curve &curve)
{
    const ValueAt last = curve.at(Mark::End).value_or(ValueAt());
    const Statistics &figures = curve.data.statistics;
    const bool isNumber = last.kind == ValueAt::Kind::Number && figures.count > 0;
    if (isNumber || last.kind == ValueAt::Kind::Break || last.kind == ValueAt::Kind::Text) {
        return inOneLine(last);
    }
    return TrendTexts::ofNumber(figures.count > 0 ? figures.current : qQNaN());
}

// Of what is on screen. For a moment after that has changed it is not known yet.
QString figure(const Curve &curve, FigureModel::Column column, const TimeRange &screen)
{
    const bool isOfScreen = curve.asked.from == screen.from && curve.asked.to == screen.to;
    if (!isOfScreen || (column == FigureModel::Current && curve.end != curve.answered.to)) {
        return QStringLiteral("…");
    }
    const Statistics &figures = curve.data.statistics;
    const auto known = [&figures](double number) { return figures.count > 0 ? number : qQNaN(); };
    switch (column) {
    case FigureModel::Current:
        return current(curve);
    case FigureModel::Least:
        return TrendTexts::ofNumber(known(figures.least));
    case FigureModel::Greatest:
        return TrendTexts::ofNumber(known(figures.greatest));
    case FigureModel::Mean:
        return TrendTexts::ofMean(known(figures.mean));
    default:
        return figures.notNumbers > 0 ? QString::number(figures.notNumbers) : QString();
    }
}

QString atMarker(const std::optional<ValueAt> &value)
{
    return value ? inOneLine(*value) : QString();
}

QString difference(const std::optional<ValueAt> &a, const std::optional<ValueAt> &b)
{
    if (!a || !b) {
        return {};
    }
    const bool areNumbers = a->kind == ValueAt::Kind::Number && b->kind == ValueAt::Kind::Number;
    return areNumbers ? TrendTexts::ofDifference(a->number, b->number) : QStringLiteral("–");
}

} // namespace

QString FigureTexts::of(const Curve &curve, FigureModel::Column column, const TimeRange &screen)
{
    switch (column) {
    case FigureModel::Name:
        return curve.label;
    case FigureModel::Type:
        return curve.point.type;
    case FigureModel::AtA:
        return atMarker(curve.at(Mark::A));
    case FigureModel::AtB:
        return atMarker(curve.at(Mark::B));
    case FigureModel::Difference:
        return difference(curve.at(Mark::A), curve.at(Mark::B));
    case FigureModel::RightScale:
        return curve.side == Side::Right ? FigureTable::tr("Right") : FigureTable::tr("Left");
    default:
        return figure(curve, column, screen);
    }
}
