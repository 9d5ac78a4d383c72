#include "boxsim/acquire/linesilence.h"

#include "boxsim/acquire/stopflag.h"

#include <QDeadlineTimer>

void LineSilence::need(int time)
{
    m_needed = qMax(m_needed, time);
    noteByte();
}

LineSilence::Ending LineSilence::wait(const Listener &listen, const StopFlag &stop, int longestAnswer)
{
    QDeadlineTimer limit(QDeadlineTimer::Forever); // from the first byte on
    while (m_needed > 0) {
        const int heard = listen(qMax<qint64>(0, m_needed - sinceLastByte()));
        if (heard < 0) {
            return Ending::HungUp;
        }
        if (stop.isSet()) {
            return Ending::Stopped;
        }
        if (heard == 0) {
            m_needed = 0;
            break;
        }
        noteByte();
        if (limit.isForever()) {
            limit.setRemainingTime(qint64(m_needed) + longestAnswer);
        } else if (limit.hasExpired()) {
            return Ending::Restless;
        }
    }
    return Ending::Silent;
}
