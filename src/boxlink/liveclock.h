#pragma once

#include <QtGlobal>

#include <functional>
#include <optional>

// A clock that gives ms and is never set back.
using LiveClock = std::function<qint64()>;

// Makes one clock of two. It goes with the monotonic one, which may stand still while the computer sleeps,
// and makes up for what the wall clock has gone on more. A wall clock that is set back changes nothing.
class WakingClock
{
public:
    // The time when the two clocks show this, all in ms.
    qint64 at(qint64 monotonic, qint64 wall);

private:
    std::optional<qint64> m_ahead; // the wall clock of the monotonic one, at the last call
    qint64 m_slept = 0;
};

// The time by the clocks of the system, in ms.
qint64 liveTime();
