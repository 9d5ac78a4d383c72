#pragma once

#include "boxsim/simproject.h"

#include <QString>

// The simulated course of one point. What it measures is guessed from its name, or from its address where
// that is the data identifier of a DL/T 645 meter; its data type says how the value is written and bounded.
// The course depends on seed, name, address and step alone, so that a run can be repeated.
class PointSignal
{
public:
    enum class Motion {
        Wander, // swings around a base
        Grow,   // a counter, larger at each step until its type wraps
        Flip,   // "0" and "1" in turn, for some steps each
        Steady, // one number for good
        Text,   // one text for good
    };

    PointSignal(const SimPoint &point, quint32 seed);

    // The value at a step, counted from 0, as a Box reports it.
    QString value(quint64 step) const;

private:
    double noise(quint64 step) const;
    QString number(double value) const;

    Motion m_motion = Motion::Wander;
    quint64 m_key = 0; // stirs seed and point
    double m_base = 0;
    double m_swing = 0; // a wanderer's reach to each side; a counter's growth a step
    double m_low = 0;
    double m_high = 0;
    int m_decimals = 0;
    QString m_text;
};
