#pragma once

#include "history/reading.h"

#include <QPointF>
#include <QString>
#include <QVector>

// Times in ms since 1970 UTC; both ends belong to it.
struct TimeRange {
    qint64 from = 0;
    qint64 to = 0;
};

// Of the numbers within a range. NaN where there are none.
struct Statistics {
    qint64 count = 0;      // valid numbers
    qint64 notNumbers = 0; // values that were skipped since they are no numbers
    double current = 0;    // the last valid number of the range
    double least = 0;
    double greatest = 0;
    double mean = 0; // over the time between them: a line, or what a step holds; breaks do not count. Of
                     // numbers that all stand alone, their plain mean.
};

// The samples of one point in a range, thinned to what a plot of so many columns can show: of each column the
// first, the least, the greatest and the last number remain, in the order of their times. No peak is lost.
struct Thinned {
    // Several gaps within one column are one, from the first's begin to the last's end.
    struct Gap {
        TimeRange range; // from the last sample before to the first after it, or to the end of the range;
                         // where the reason changes, from and to that time
        SampleState why = SampleState::NoReport;
    };
    struct Event {
        qint64 time = 0;
        QString text;
    };

    QVector<QVector<QPointF>> pieces; // unbroken, each in the order of time: ms since 1970 UTC, number. The
                                      // sample before the range and the one after it belong to them.
    QVector<Gap> gaps;
    QVector<Event> events; // valid texts that differ from the one before, or follow a gap; one a column, the
                           // last. A text before the range that holds at its begin is the first.
    Statistics statistics;

    // None goes on into the future.
    void endGaps(qint64 now);
};
