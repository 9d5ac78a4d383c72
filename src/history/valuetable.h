#pragma once

#include "history/samplesource.h"

#include <memory>
#include <vector>

class QIODevice;

// The values of points as CSV, one line for each time at which one of them has a sample: the time, then one
// column a point under its fullName(), empty where that has none. Times are local and by ISO 8601, with ms
// and the offset from UTC: 2026-01-31T13:45:00.250+01:00. Numbers are the shortest that read back as the same
// double, integers that a double can't hold and texts stand as they are. A break has the word of its state,
// English in each language: "not valid", "no number", "no report", "ended", "dropped".
namespace ValueTable {

struct Column {
    PointId id;
    std::unique_ptr<SampleCursor> samples;
};

// Writes piece by piece, whatever the number of samples. False where the device does not take it, or where a
// cursor can't read on; *error is then what that cursor tells, or empty.
bool write(QIODevice *device, std::vector<Column> columns, QString *error = nullptr);

} // namespace ValueTable
