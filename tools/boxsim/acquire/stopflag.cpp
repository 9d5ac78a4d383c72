#include "boxsim/acquire/stopflag.h"

#include <QDeadlineTimer>

void StopFlag::set()
{
    const QMutexLocker locker(&m_mutex);
    m_set = true;
    m_condition.wakeAll();
}

bool StopFlag::wait(qint64 time)
{
    const QDeadlineTimer deadline(qMax<qint64>(0, time)); // below 0 would be for ever
    QMutexLocker locker(&m_mutex);
    while (!m_set && m_condition.wait(&m_mutex, deadline)) {}
    return !m_set;
}
