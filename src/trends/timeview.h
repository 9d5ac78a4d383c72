#pragma once

#include "trends/valuescale.h"

#include <QVector>

#include <optional>

// What part of time and values is on screen, and how the user moves it. Knows no widget and no clock.
class TimeView
{
public:
    static constexpr qint64 second = 1000; // ms
    static constexpr qint64 minute = 60 * second;
    static constexpr qint64 hour = 60 * minute;
    static constexpr qint64 leastSpan = second;
    static constexpr qint64 greatestSpan = 10LL * 366 * 24 * hour;

    // The spans that are offered, in ms, from 1 minute to 24 hours.
    static QVector<qint64> spans();

    explicit TimeView(const TimeRange &range = {0, 15 * minute});
    // One that follows the present.
    static TimeView upTo(qint64 present, qint64 span);

    TimeRange range() const { return m_now.range; }
    qint64 span() const { return m_now.range.to - m_now.range.from; }
    // The ends of a scale that the user chose; none where it shows what its curves need.
    std::optional<ValueRange> values(Side side) const { return m_now.values[side == Side::Left ? 0 : 1]; }

    // While following, the range ends at the present. What moves its end away from there pauses it.
    bool isFollowing() const { return m_now.following; }
    void follow(); // without effect while there is no present
    void pause() { m_now.following = false; }
    // The time of the present, which never goes back.
    void setPresent(qint64 time);

    // Keeps the end while following, else the middle.
    void setSpan(qint64 span);
    void setRange(const TimeRange &range);
    // The time stays where it is on screen; a factor under 1 shows less.
    void zoom(qint64 about, double factor);
    // A rectangle: a range of time, and of those scales that are given.
    void zoomInto(const TimeRange &range, const std::optional<ValueRange> &left,
                  const std::optional<ValueRange> &right);
    // By a time, and by a share of the height where the scale is one that the user chose.
    void pan(qint64 by, double share = 0);
    // Those scales that are given. In a row they count as one step.
    void setValues(const std::optional<ValueRange> &left, const std::optional<ValueRange> &right);
    // Lets both scales show what their curves need.
    void fitValues();

    // Steps of one kind in a row, as those of a wheel, count as one.
    bool canGoBack() const { return !m_before.isEmpty(); }
    void back();

private:
    struct State {
        TimeRange range;
        std::optional<ValueRange> values[2];
        bool following = false;
    };
    enum class Step { Single, Zoom, Pan, Scale };

    static void setValues(State *state, const std::optional<ValueRange> &left,
                          const std::optional<ValueRange> &right);
    void go(State next, Step step);
    State limited(State state) const;

    State m_now;
    QVector<State> m_before;
    Step m_step = Step::Single; // the kind of the last one
    qint64 m_present = -1;
};
