#pragma once

#include "history/recorder.h"

#include <QtTest>

#include <cmath>

// A recording of the last hour of a feeder: three points, a report a second, and a session that ended in
// between. False if it could not be recorded.
inline bool recordHour(const QString &path)
{
    const QString box = "192.168.1.80";
    const qint64 begin = QDateTime::currentMSecsSinceEpoch() - 3600 * 1000;
    const auto row = [](const char *name, double value) {
        return Reading::fromRow({{"name", name},
                                 {"addr", "40001"},
                                 {"dataType", "float"},
                                 {"value", QString::number(value, 'f', 2)},
                                 {"valid", "1"}});
    };
    QString error;
    Recorder recorder;
    recorder.start(RecordingTarget::fromText(path, &error), {});
    for (int second = 0; second < 3600; ++second) {
        const qint64 time = begin + second * 1000;
        if (second == 1700) {
            recorder.endSession(box, time);
        }
        if (second >= 1700 && second < 1930) {
            continue;
        }
        const double voltage = 230 + 2 * std::sin(second / 400.0) + 0.4 * std::sin(second / 7.0);
        const double current = 12 + 3 * std::sin(second / 900.0) + (second > 2600 ? 2 : 0);
        recorder.add({time,
                      box,
                      "North feeder",
                      "Protection relay",
                      {row("Voltage", voltage), row("Current", current),
                       row("Active power", 0.95 * voltage * current)}});
    }
    QSignalSpy stopped(&recorder, &Recorder::stopped);
    recorder.stop();
    return (!stopped.isEmpty() || stopped.wait(20000)) && recorder.status().error.isEmpty();
}
