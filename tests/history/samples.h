#pragma once

#include "history/thinned.h"

#include <limits>

// Short forms for samples in tests.
namespace Samples {

constexpr double none = std::numeric_limits<double>::quiet_NaN();

inline Sample number(qint64 time, double number)
{
    return {time, number, SampleState::Valid, {}};
}

inline Sample text(qint64 time, const QString &text)
{
    return {time, none, SampleState::Valid, text};
}

inline Sample broken(qint64 time, SampleState state, const QString &text = {})
{
    return {time, none, state, text};
}

} // namespace Samples
