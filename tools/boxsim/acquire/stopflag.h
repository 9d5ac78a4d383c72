#pragma once

#include <QMutex>
#include <QWaitCondition>

#include <atomic>

// Tells a thread to end, and cuts its waits short. Each function may be called from any thread.
class StopFlag
{
public:
    // A wait that this flag cannot cut short, such as for a serial line, is made of slices so long at most,
    // with isSet() looked at in between.
    static constexpr int slice = 50; // milliseconds

    void set();
    bool isSet() const { return m_set; }
    // Waits so many milliseconds, none if there are less than 0. False as soon as the flag is set.
    bool wait(qint64 time);

private:
    std::atomic<bool> m_set{false};
    QMutex m_mutex;
    QWaitCondition m_condition;
};
