#include "trends/timeview.h"

namespace {

constexpr int mostSteps = 100;                 // back
constexpr qint64 lastTime = 253402300799000LL; // the end of the year 9999, which all calendars can show

} // namespace

QVector<qint64> TimeView::spans()
{
    return {minute,   5 * minute, 15 * minute, 30 * minute, hour,
            2 * hour, 4 * hour,   8 * hour,    12 * hour,   24 * hour};
}

TimeView::TimeView(const TimeRange &range)
{
    m_now.range = range;
    m_now = limited(m_now);
}

TimeView TimeView::upTo(qint64 present, qint64 span)
{
    TimeView view({present - span, present});
    view.m_present = present;
    view.m_now.following = true;
    return view;
}

void TimeView::follow()
{
    if (m_present < 0) {
        return;
    }
    State next = m_now;
    next.following = true;
    next.range = {m_present - span(), m_present};
    go(next, Step::Single);
}

void TimeView::setPresent(qint64 time)
{
    m_present = qMax(m_present, time);
    if (m_now.following) {
        m_now.range = {m_present - span(), m_present};
        m_now = limited(m_now);
    }
}

void TimeView::setSpan(qint64 span)
{
    const qint64 middle = m_now.range.from + this->span() / 2;
    State next = m_now;
    next.range = m_now.following ? TimeRange{m_now.range.to - span, m_now.range.to}
                                 : TimeRange{middle - span / 2, middle - span / 2 + span};
    go(next, Step::Single);
}

void TimeView::setRange(const TimeRange &range)
{
    State next = m_now;
    next.range = range;
    go(next, Step::Single);
}

void TimeView::zoom(qint64 about, double factor)
{
    const double wanted = qBound(double(leastSpan), double(span()) * factor, double(greatestSpan));
    const double share = double(about - m_now.range.from) / double(span());
    State next = m_now;
    next.range.from = about - qRound64(wanted * share);
    next.range.to = next.range.from + qRound64(wanted);
    go(next, Step::Zoom);
}

void TimeView::zoomInto(const TimeRange &range, const std::optional<ValueRange> &left,
                        const std::optional<ValueRange> &right)
{
    State next = m_now;
    next.range = range;
    setValues(&next, left, right);
    go(next, Step::Single);
}

void TimeView::setValues(const std::optional<ValueRange> &left, const std::optional<ValueRange> &right)
{
    State next = m_now;
    setValues(&next, left, right);
    go(next, Step::Scale);
}

void TimeView::setValues(State *state, const std::optional<ValueRange> &left,
                         const std::optional<ValueRange> &right)
{
    if (left) {
        state->values[0] = left;
    }
    if (right) {
        state->values[1] = right;
    }
}

void TimeView::pan(qint64 by, double share)
{
    State next = m_now;
    next.range = {m_now.range.from + by, m_now.range.to + by};
    for (std::optional<ValueRange> &values : next.values) {
        if (values) {
            const double height = values->greatest - values->least;
            values = ValueRange{values->least + share * height, values->greatest + share * height};
        }
    }
    go(next, Step::Pan);
}

void TimeView::fitValues()
{
    State next = m_now;
    next.values[0].reset();
    next.values[1].reset();
    go(next, Step::Single);
}

void TimeView::back()
{
    if (m_before.isEmpty()) {
        return;
    }
    m_now = m_before.takeLast();
    m_step = Step::Single;
    setPresent(m_present);
}

void TimeView::go(State next, Step step)
{
    if (m_now.following && next.following) {
        next.following = next.range.to >= m_present;
        if (next.following) {
            next.range = {m_present - (next.range.to - next.range.from), m_present};
        }
    }
    if (step == Step::Single || step != m_step) {
        m_before.append(m_now);
        if (m_before.size() > mostSteps) {
            m_before.removeFirst();
        }
    }
    m_step = step;
    m_now = limited(next);
}

// A range that is too short or too long keeps its middle, or the present.
TimeView::State TimeView::limited(State state) const
{
    TimeRange &range = state.range;
    const qint64 asked = range.to - range.from;
    const qint64 span = qBound(leastSpan, asked, greatestSpan);
    if (span != asked) {
        range.from = state.following ? range.to - span : range.from + (asked - span) / 2;
    }
    range.from = qBound<qint64>(0, range.from, lastTime - span);
    range.to = range.from + span;
    return state;
}
