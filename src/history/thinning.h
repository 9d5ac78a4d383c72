#pragma once

#include "history/point.h"
#include "history/thinned.h"

// A valid number at a time in ms since 1970 UTC.
struct NumberAt {
    qint64 time;
    double number;
};

// What so many valid numbers in a row come to, so that they need not be looked at one by one.
struct Summary {
    static constexpr int length = 16;

    static Summary of(const NumberAt *numbers);

    double least;
    double greatest;
    // The means over the time between the numbers, which hold from one to the next, or from the one before.
    // In parts of one ms more than that, so that they never overflow.
    double meanOfEarlier;
    double meanOfLater;
    quint8 leastAt; // the index of the first of the least ones
    quint8 greatestAt;
};

// Thins the samples of one point while they pass, and makes the statistics of them. It takes samples in the
// order of time; what is not later than the one before is left out.
class Thinning
{
public:
    // The shape says what the mean takes for the time between two numbers; what is drawn depends on the
    // samples alone. Fewer than one column count as one.
    Thinning(const TimeRange &range, int columns, Shape shape);

    // Of the samples before the range the last one counts, of those behind it the first. False once it needs
    // no more.
    bool add(const Sample &sample);
    // The same for many valid numbers, in strictly increasing times. There may be summaries of them: of the
    // first ones, of those that follow, and so on, as many as are whole.
    bool add(const NumberAt *numbers, int count, const Summary *summaries = nullptr);
    // What it has allocated.
    qint64 bytes() const;
    // Once, at the end.
    Thinned finish();

private:
    struct Kept {
        NumberAt at;
        int piece;
    };

    qint64 columnStart(qint64 column) const;
    int columnOf(qint64 time) const;
    bool contains(qint64 time) const { return time >= m_range.from && time <= m_range.to; }
    void takeBefore();
    bool take(const Sample &sample);
    void takeNumbers(const NumberAt *numbers, int from, int to, const Summary *summaries);
    void takeRun(const NumberAt *numbers, int count);
    void takeSummary(const NumberAt *numbers, const Summary &summary);
    void reach(const NumberAt &number);
    void takeOutside(const NumberAt &number);
    void takeBreak(qint64 time, SampleState state);
    void takeText(qint64 time, const QString &text);
    void breakCurve();
    void closeGap(qint64 time);
    void openColumn(const NumberAt &number);
    void closeColumn();
    void append(const Kept &kept);

    TimeRange m_range;
    int m_columns;
    double m_held;       // the part of the time between two numbers that the earlier one counts for
    quint64 m_width;     // of a column, in whole ms
    quint64 m_remainder; // ms of the range beyond columns of that width
    double m_perMs;      // what a ms weighs; all of the range weighs 1, so that no sum overflows

    Thinned m_thinned;
    bool m_hasBefore = false;
    bool m_hasLast = false;
    bool m_isDone = false;
    bool m_inColumn = false;
    bool m_inGap = false;
    bool m_knowsText = false; // the last sample was the text of the last event
    bool m_follows = false;   // the last sample is m_latest
    Sample m_before;          // the last one before the range, until one comes behind it
    qint64 m_last = 0;

    qint64 m_columnEnd = 0; // first ms behind the column
    Kept m_first{};         // of the column, as the next two
    Kept m_least{};
    Kept m_greatest{};
    Kept m_latest{};     // of the range
    int m_piece = 0;     // counts up where the curve is broken
    int m_pieceOut = -1; // of the number appended last

    Thinned::Gap m_gap;
    int m_gapColumn = -1;   // of the last gap if one column holds it, else -1
    int m_eventColumn = -1; // of the last event; -1 before the range

    double m_integral = 0;
    qint64 m_measured = 0; // ms that the integral is over
    double m_lone = 0;     // mean of the numbers without a number before them
    int m_loneCount = 0;
};
