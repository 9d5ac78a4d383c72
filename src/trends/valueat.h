#pragma once

#include "history/thinned.h"

// What a curve says of one time: the sample at it or the last one before it. Never a value in between.
struct ValueAt {
    enum class Kind { Nothing, Number, Text, Break };
    Kind kind = Kind::Nothing;
    double number = 0;                       // of Number
    QString text;                            // of Text
    SampleState why = SampleState::NotValid; // of Break

    static ValueAt of(const Thinned &curve, qint64 time);
};
