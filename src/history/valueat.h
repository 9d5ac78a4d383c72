#pragma once

#include "history/thinned.h"

// What is known of a point at one time: the sample at it or the last one before it. Never a value in between.
struct ValueAt {
    enum class Kind { Nothing, Number, Text, Break };
    Kind kind = Kind::Nothing;
    double number = 0;                       // of Number
    QString text;                            // of Text; of Number, as that of a Sample
    SampleState why = SampleState::NotValid; // of Break

    // Of the last sample at the time or before it, and the first one after it; null where there is none. From
    // the last value on that comes before a break nothing is known.
    static ValueAt of(const Sample *last, const Sample *next, qint64 time);
    // As it is drawn, which need not be the last sample.
    static ValueAt of(const Thinned &curve, qint64 time);
};
