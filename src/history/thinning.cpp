#include "history/thinning.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
// Beyond all times, and small enough to be added and subtracted.
constexpr qint64 farthest = qint64(1) << 60; // ms

} // namespace

void Thinned::endGaps(qint64 now)
{
    while (!gaps.isEmpty() && gaps.last().range.from >= now) {
        gaps.removeLast();
    }
    if (!gaps.isEmpty()) {
        gaps.last().range.to = std::min(gaps.last().range.to, now);
    }
}

Summary Summary::of(const NumberAt *numbers)
{
    const double perMs = 1 / double(numbers[length - 1].time - numbers[0].time + 1);
    Summary summary{numbers[0].number, numbers[0].number, 0, 0, 0, 0};
    for (int index = 1; index < length; ++index) {
        const NumberAt &earlier = numbers[index - 1];
        const NumberAt &later = numbers[index];
        if (later.number < summary.least) {
            summary.least = later.number;
            summary.leastAt = quint8(index);
        }
        if (later.number > summary.greatest) {
            summary.greatest = later.number;
            summary.greatestAt = quint8(index);
        }
        const double part = double(later.time - earlier.time) * perMs;
        summary.meanOfEarlier += part * earlier.number;
        summary.meanOfLater += part * later.number;
    }
    return summary;
}

Thinning::Thinning(const TimeRange &range, int columns, Shape shape)
    : m_range{qBound(-farthest, range.from, farthest), qBound(-farthest, range.to, farthest)}
    , m_columns(std::max(columns, 1))
    , m_held(shape == Shape::Step ? 1 : 0.5)
{
    m_range.to = std::max(m_range.from, m_range.to);
    const auto length = quint64(m_range.to - m_range.from) + 1;
    m_width = length / quint64(m_columns);
    m_remainder = length % quint64(m_columns);
    m_perMs = 1 / double(length);
    m_thinned.statistics.current = nothing;
    m_thinned.statistics.least = nothing;
    m_thinned.statistics.greatest = nothing;
    m_thinned.statistics.mean = nothing;
}

qint64 Thinning::columnStart(qint64 column) const
{
    const auto past = quint64(column);
    return m_range.from + qint64(past * m_width + past * m_remainder / quint64(m_columns));
}

// -1 before the range, the number of columns behind it.
int Thinning::columnOf(qint64 time) const
{
    if (time < m_range.from) {
        return -1;
    }
    if (time > m_range.to) {
        return m_columns;
    }
    const double guess = double(time - m_range.from) * m_perMs * m_columns;
    int column = qBound(0, int(guess), m_columns - 1);
    while (columnStart(column) > time) {
        --column;
    }
    while (columnStart(qint64(column) + 1) <= time) {
        ++column;
    }
    return column;
}

bool Thinning::add(const Sample &sample)
{
    if (m_isDone || (m_hasLast && sample.time <= m_last) || (m_hasBefore && sample.time <= m_before.time)) {
        return !m_isDone;
    }
    if (sample.time < m_range.from) {
        m_hasBefore = true;
        m_before = sample;
        return true;
    }
    takeBefore();
    return take(sample);
}

bool Thinning::add(const NumberAt *numbers, int count, const Summary *summaries)
{
    const auto sampleOf = [numbers](int index) {
        return Sample{numbers[index].time, numbers[index].number, SampleState::Valid, {}};
    };
    const auto firstFrom = [numbers, count](qint64 time) {
        const auto isBefore = [](const NumberAt &number, qint64 at) { return number.time < at; };
        return int(std::lower_bound(numbers, numbers + count, time, isBefore) - numbers);
    };
    const bool isWithin = count > 0 && contains(numbers[0].time) && contains(numbers[count - 1].time);
    const int inside = isWithin ? 0 : firstFrom(m_range.from);
    const int behind = isWithin ? count : firstFrom(m_range.to + 1);
    if (inside > 0) {
        add(sampleOf(inside - 1));
    }
    if (inside < behind && !m_isDone) {
        takeBefore();
        takeNumbers(numbers, inside, behind, summaries);
    }
    return behind == count ? !m_isDone : add(sampleOf(behind));
}

qint64 Thinning::bytes() const
{
    qint64 bytes = m_thinned.gaps.capacity() * qint64(sizeof(Thinned::Gap))
        + m_thinned.events.capacity() * qint64(sizeof(Thinned::Event));
    for (const QVector<QPointF> &piece : m_thinned.pieces) {
        bytes += qint64(sizeof(piece)) + piece.capacity() * qint64(sizeof(QPointF));
    }
    for (const Thinned::Event &event : m_thinned.events) {
        bytes += event.text.size() * qint64(sizeof(QChar));
    }
    return bytes;
}

Thinned Thinning::finish()
{
    takeBefore();
    closeColumn();
    closeGap(std::max(m_last, m_range.to));
    Statistics &statistics = m_thinned.statistics;
    if (statistics.count > 0) {
        statistics.current = m_latest.at.number;
        const double mean = m_measured > 0 ? m_integral / (double(m_measured) * m_perMs) : m_lone;
        // Rounding must not lead it out of the numbers that it is of.
        statistics.mean = qBound(statistics.least, mean, statistics.greatest);
    }
    m_isDone = true;
    return m_thinned;
}

void Thinning::takeBefore()
{
    if (m_hasBefore) {
        m_hasBefore = false;
        take(m_before);
    }
}

bool Thinning::take(const Sample &sample)
{
    const NumberAt number{sample.time, sample.number};
    if (sample.state != SampleState::Valid) {
        takeBreak(sample.time, sample.state);
    } else if (std::isnan(sample.number)) {
        takeText(sample.time, sample.text);
    } else if (std::isinf(sample.number)) {
        takeBreak(sample.time, SampleState::NoNumber);
    } else if (contains(sample.time)) {
        takeNumbers(&number, 0, 1, nullptr);
    } else {
        takeOutside(number);
    }
    m_hasLast = true;
    m_last = sample.time;
    m_isDone = sample.time > m_range.to;
    return !m_isDone;
}

// Numbers of the range.
void Thinning::takeNumbers(const NumberAt *numbers, int from, int to, const Summary *summaries)
{
    constexpr int length = Summary::length;
    closeGap(numbers[from].time);
    m_knowsText = false;
    while (from < to) {
        if (!m_inColumn || numbers[from].time >= m_columnEnd) {
            openColumn(numbers[from]);
        }
        // The end of the summary that the number belongs to.
        const int whole = summaries ? from / length * length + length : std::numeric_limits<int>::max();
        if (from + length == whole && whole <= to && numbers[whole - 1].time < m_columnEnd) {
            takeSummary(numbers + from, summaries[from / length]);
            from = whole;
            continue;
        }
        int behind = from + 1;
        while (behind < std::min(to, whole) && numbers[behind].time < m_columnEnd) {
            ++behind;
        }
        takeRun(numbers + from, behind - from);
        from = behind;
    }
    m_hasLast = true;
    m_last = m_latest.at.time;
}

// Numbers of one column.
void Thinning::takeRun(const NumberAt *numbers, int count)
{
    reach(numbers[0]);
    NumberAt last = numbers[0];
    double integral = m_integral;
    Kept least = m_least;
    Kept greatest = m_greatest;
    for (const NumberAt *number = numbers; number != numbers + count; ++number) {
        if (number->number < least.at.number) {
            least = {*number, m_piece};
        }
        if (number->number > greatest.at.number) {
            greatest = {*number, m_piece};
        }
        integral += double(number->time - last.time) * m_perMs
            * (m_held * last.number + (1 - m_held) * number->number);
        last = *number;
    }
    m_measured += last.time - numbers[0].time;
    m_integral = integral;
    m_least = least;
    m_greatest = greatest;
    m_latest = {last, m_piece};
    m_thinned.statistics.count += count;
}

// The same.
void Thinning::takeSummary(const NumberAt *numbers, const Summary &summary)
{
    reach(numbers[0]);
    if (summary.least < m_least.at.number) {
        m_least = {numbers[summary.leastAt], m_piece};
    }
    if (summary.greatest > m_greatest.at.number) {
        m_greatest = {numbers[summary.greatestAt], m_piece};
    }
    const NumberAt &last = numbers[Summary::length - 1];
    const qint64 passed = last.time - numbers[0].time;
    m_integral +=
        double(passed + 1) * m_perMs * (m_held * summary.meanOfEarlier + (1 - m_held) * summary.meanOfLater);
    m_measured += passed;
    m_latest = {last, m_piece};
    m_thinned.statistics.count += Summary::length;
}

// Counts the time up to a number that is taken next.
void Thinning::reach(const NumberAt &number)
{
    if (m_follows) {
        const qint64 passed = number.time - m_latest.at.time;
        m_integral += double(passed) * m_perMs * (m_held * m_latest.at.number + (1 - m_held) * number.number);
        m_measured += passed;
    } else {
        ++m_loneCount;
        m_lone += number.number / m_loneCount - m_lone / m_loneCount;
        m_follows = true;
    }
}

void Thinning::takeOutside(const NumberAt &number)
{
    closeGap(number.time);
    closeColumn();
    append({number, m_piece});
    m_knowsText = false;
    m_follows = false;
}

void Thinning::takeBreak(qint64 time, SampleState state)
{
    breakCurve();
    m_knowsText = false;
    if (state == SampleState::NoNumber && contains(time)) {
        ++m_thinned.statistics.notNumbers;
    }
    if (m_inGap && m_gap.why == state) {
        return;
    }
    const qint64 from = m_inGap || !m_hasLast ? time : m_last;
    closeGap(time);
    m_inGap = true;
    m_gap = {{from, from}, state};
}

void Thinning::takeText(qint64 time, const QString &text)
{
    closeGap(time);
    breakCurve();
    if (time > m_range.to || (m_knowsText && m_thinned.events.constLast().text == text)) {
        return;
    }
    m_knowsText = true;
    const int column = columnOf(time);
    if (column >= 0 && column == m_eventColumn) {
        m_thinned.events.last() = {time, text};
    } else {
        m_thinned.events.append({time, text});
    }
    m_eventColumn = column;
}

void Thinning::breakCurve()
{
    ++m_piece;
    m_follows = false;
}

void Thinning::closeGap(qint64 time)
{
    if (!m_inGap) {
        return;
    }
    m_inGap = false;
    m_gap.range.to = time;
    const int column = columnOf(m_gap.range.from);
    const bool isWithin = column >= 0 && column < m_columns && column == columnOf(time);
    if (isWithin && column == m_gapColumn) {
        m_thinned.gaps.last().range.to = time;
    } else {
        m_thinned.gaps.append(m_gap);
    }
    m_gapColumn = isWithin ? column : -1;
}

void Thinning::openColumn(const NumberAt &number)
{
    closeColumn();
    m_inColumn = true;
    m_columnEnd = columnStart(qint64(columnOf(number.time)) + 1);
    m_first = {number, m_piece};
    m_least = m_first;
    m_greatest = m_first;
}

void Thinning::closeColumn()
{
    if (!m_inColumn) {
        return;
    }
    m_inColumn = false;
    Statistics &statistics = m_thinned.statistics;
    // Also where there is none yet.
    if (!(statistics.least <= m_least.at.number)) {
        statistics.least = m_least.at.number;
    }
    if (!(statistics.greatest >= m_greatest.at.number)) {
        statistics.greatest = m_greatest.at.number;
    }
    append(m_first);
    const bool isLeastFirst = m_least.at.time < m_greatest.at.time;
    append(isLeastFirst ? m_least : m_greatest);
    append(isLeastFirst ? m_greatest : m_least);
    append(m_latest);
}

void Thinning::append(const Kept &kept)
{
    if (kept.piece != m_pieceOut) {
        m_pieceOut = kept.piece;
        m_thinned.pieces.append(QVector<QPointF>());
    }
    QVector<QPointF> &piece = m_thinned.pieces.last();
    const QPointF point(double(kept.at.time), kept.at.number);
    // One number may be several of the four.
    if (piece.isEmpty() || piece.constLast().x() < point.x()) {
        piece.append(point);
    }
}
