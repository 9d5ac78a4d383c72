#pragma once

#include <QVector>

// How old the last report is, and whether that is too old for reports that come as often as these. Times are
// in ms, of one clock that is never set back.
class Freshness
{
public:
    void report(qint64 now);
    // What comes next does not follow on the last report: the time until then is no usual one.
    void interrupt() { m_interrupted = true; }

    bool hasReport() const { return m_last >= 0; }
    // 0 before the first report.
    qint64 age(qint64 now) const { return hasReport() ? now - m_last : 0; }
    // Whether the age is past three usual periods and past 10 s. The usual period is the median of the last
    // five.
    bool isLate(qint64 now) const { return age(now) > lateAge(); }
    // The greatest age that is not late.
    qint64 lateAge() const;

private:
    qint64 m_last = -1;
    bool m_interrupted = false;
    QVector<qint64> m_periods; // between reports, the latest last
};
