#pragma once

#include "history/valuetable.h"

#include "trends/curve.h"
#include "trends/timeview.h"

#include <QPointer>
#include <QTimer>

// The points of a window in their source: asks for what is on screen, not more often than can be seen, and
// has the history keep the points while they are here.
class TrendFeed : public QObject
{
    Q_OBJECT
public:
    using Clock = std::function<ArrivalClock::Present()>;

    TrendFeed(SampleSource *source, QObject *parent);
    ~TrendFeed() override;

    SampleSource *source() const { return m_source; } // null once it has died
    bool isRecorded() const;
    bool isGrowing() const { return m_source && m_source->isGrowing(); }
    void add(const QVector<PointId> &points);
    void remove(const QVector<PointId> &points);

    const QVector<PointId> &ids() const { return m_points; }
    // All of them as they are described now, as far as the source has them.
    QVector<Point> points() const;
    // Whose values they are, in words; each source once.
    QString sources(const QVector<PointId> &points) const;
    // Of all samples of the points; from > to if there are none.
    TimeRange extent() const;
    // What to show first: the last minutes of live values; the last day of a recording or all of it, up to
    // the present while it grows.
    TimeView firstView() const;
    // By which reports arrive; by default the computer's.
    void setClock(const Clock &clock) { m_clock = clock; }
    ArrivalClock::Present clock() const;
    // That of the source, or the last sample where that is later: it may come from another computer.
    qint64 present() const;
    std::vector<ValueTable::Column> values(const QVector<PointId> &points, const TimeRange &range) const;

    // The last question counts. What the points are at its end is asked, too.
    void ask(const TimeRange &range, int columns);
    // The present as it was at that time.
    qint64 askedAt() const { return m_next.now; }
    // Whether an answer is to come; not from a source that has failed since its last one.
    bool isBusy() const { return (m_isWaiting || m_isAsked) && !m_hasFailed; }
    // What the points are at a time, exactly. The last question about each mark counts, but answers to
    // earlier ones may still come. False if there is no source.
    bool askAt(Mark mark, qint64 time, qint64 now);

    inline static int interval = 100; // ms between two questions; for tests to shorten

signals:
    void answered(const SampleSource::Request &request, const QVector<Thinned> &answers);
    void answeredAt(Mark mark, const SampleSource::Moment &moment, const QVector<ValueAt> &values);

private:
    void release(const QVector<PointId> &points);
    void send();
    static qint64 endOf(const SampleSource::Request &request);
    void take(const void *asker, const SampleSource::Request &request, const QVector<Thinned> &answers);
    void takeAt(const void *asker, const SampleSource::Moment &moment, const QVector<ValueAt> &values);

    QPointer<SampleSource> m_source;
    Clock m_clock;
    QVector<PointId> m_points;
    QTimer m_pause; // runs while nothing may be asked
    SampleSource::Request m_next;
    bool m_isWaiting = false; // to be sent
    bool m_isAsked = false;   // sent, and not answered
    bool m_hasFailed = false;
    qint64 m_end = -1;                      // the last one that was told
    std::array<char, markCount> m_askers{}; // their addresses ask about marks
};
