#pragma once

#include "boxsim/acquire/beat.h"
#include "boxsim/acquire/devicereader.h"
#include "boxsim/acquire/health.h"
#include "boxsim/acquire/stopflag.h"
#include "boxsim/acquire/tryrules.h"
#include "boxsim/simproject.h"

#include <QVector>

#include <functional>
#include <memory>
#include <optional>
#include <vector>

// Reads one Standard beat by beat, in the thread of its link. What does not answer is lost after some beats;
// from then on it is no longer read, but tried between the readings. All times are milliseconds of the clock.
class StandardRun
{
public:
    // What a run needs of its surroundings. tell takes a line for the log.
    struct Surroundings {
        std::function<qint64()> clock;
        std::function<void(const QString &)> tell;
        const StopFlag *stop;
    };

    // Without a reader nothing is ever read, and all points are reported as not valid.
    StandardRun(const SimStandard &standard, std::unique_ptr<DeviceReader> reader, int interval,
                const Surroundings &surroundings);

    // When the next reading is due.
    qint64 due() const { return m_beat.due(); }
    // When there is something to do next: a reading, or before it tries of what is lost.
    qint64 wake() const;
    // The reading of the beat that is due: one row a point of the Standard.
    QVector<PointReading> read();
    // Tries some of what is lost. That takes no longer than until the time given, at which a reading is due,
    // as far as that is possible; alone says that no other Standard waits for the line.
    void tryLost(qint64 until, bool alone);
    void close();

private:
    // A device, or the line.
    struct Target {
        Health health;
        TryRules::History tries;
    };
    struct Patience {
        int open;
        int request;
    };
    bool isOver() const { return m_surroundings.stop->isSet(); }
    qint64 now() const { return m_surroundings.clock(); }
    void tell(const QString &text) const;
    void readDevices();
    QVector<int> devicesToRead() const;
    void tellNobody();
    DeviceReader::Result exchange(int device, const Patience &patience, PointReading *readings);
    DeviceReader::Outcome ask(int device, const Patience &patience, PointReading *readings);
    void succeed(Target *target, const QString &name);
    bool fail(Target *target, const QString &name, const QString &reason);
    Patience patience(int most) const;
    TryRules::Cost cost(const Target &target) const;
    std::optional<DeviceReader::Outcome> tryOnce(Target *target, int device, const TryRules::Room &room);
    qint64 longestRound() const;
    void tryLine(qint64 until, bool alone);
    void tryDevices(qint64 until, bool alone);
    QVector<int> devicesWithWork(bool lost) const;
    Target &target(int device) { return m_devices[static_cast<size_t>(device)]; }
    const Target &target(int device) const { return m_devices[static_cast<size_t>(device)]; }

    SimStandard m_standard;
    std::unique_ptr<DeviceReader> m_reader;
    Surroundings m_surroundings;
    Beat m_beat;
    QVector<PointReading> m_readings;
    std::vector<Target> m_devices; // as in the Standard
    Target m_line;
    int m_lineTries = 0;
    TryRules m_rules;
    qint64 m_nextRound = 0;   // of tries between two readings
    bool m_heard = true;      // whether anybody was, in the last reading; true again once the line is closed
    bool m_hasAnswer = false; // of a device, in the last reading
    bool m_toldNobody = false;
};
