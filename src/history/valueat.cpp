#include "history/valueat.h"

#include <algorithm>
#include <cmath>

namespace {

// The last sample at the time or before it, of a list that is sorted by time; null for none.
template <class List, class TimeOf>
auto lastBefore(const List &list, qint64 time, TimeOf timeOf) -> const typename List::value_type *
{
    const auto after =
        std::upper_bound(list.cbegin(), list.cend(), time,
                         [&timeOf](qint64 wanted, const auto &one) { return wanted < timeOf(one); });
    return after == list.cbegin() ? nullptr : &*std::prev(after);
}

ValueAt broken(SampleState why)
{
    ValueAt found;
    found.kind = ValueAt::Kind::Break;
    found.why = why;
    return found;
}

SampleState stateOf(const Sample &sample)
{
    const bool isInfinite = sample.state == SampleState::Valid && std::isinf(sample.number);
    return isInfinite ? SampleState::NoNumber : sample.state;
}

} // namespace

ValueAt ValueAt::of(const Sample *last, const Sample *next, qint64 time)
{
    ValueAt found;
    if (!last) {
        return found;
    }
    if (stateOf(*last) != SampleState::Valid) {
        return broken(stateOf(*last));
    }
    if (next && last->time < time && stateOf(*next) != SampleState::Valid) {
        return broken(stateOf(*next));
    }
    found.kind = std::isnan(last->number) ? Kind::Text : Kind::Number;
    found.number = last->number;
    found.text = last->text;
    return found;
}

ValueAt ValueAt::of(const Thinned &curve, qint64 time)
{
    const auto timeOfPoint = [](const QPointF &point) { return qint64(point.x()); };
    const auto *piece = lastBefore(curve.pieces, time, [&](const QVector<QPointF> &one) {
        return one.isEmpty() ? 0 : timeOfPoint(one.first());
    });
    const QPointF *point = piece ? lastBefore(*piece, time, timeOfPoint) : nullptr;
    const auto *event = lastBefore(curve.events, time, [](const Thinned::Event &one) { return one.time; });
    const auto *gap = lastBefore(curve.gaps, time, [](const Thinned::Gap &one) { return one.range.from; });
    const qint64 pointTime = point ? timeOfPoint(*point) : -1;
    const qint64 eventTime = event ? event->time : -1;
    const qint64 sampleTime = qMax(pointTime, eventTime);

    ValueAt found;
    // A gap begins behind the sample before it, and ends at the one after it. A text is the same behind it
    // unless there is another.
    if (gap && time <= gap->range.to && gap->range.from >= sampleTime
        && (time > gap->range.from || sampleTime < gap->range.from)) {
        found = broken(gap->why);
    } else if (event && eventTime >= pointTime) {
        found.kind = Kind::Text;
        found.text = event->text;
    } else if (point) {
        found.kind = Kind::Number;
        found.number = point->y();
    }
    return found;
}
