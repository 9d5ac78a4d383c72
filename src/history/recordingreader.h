#pragma once

#include "history/recordinggrowth.h"
#include "history/recordingtarget.h"
#include "history/samplesource.h"

#include <QElapsedTimer>
#include <QHash>
#include <QPointer>
#include <QThread>

class RecordingPoints;
class RecordingSession;

// A recording that was made before or is being made, also by another program. It is read in a thread of its
// own, and never written to; a file is opened without reading it whole.
class RecordingReader : public SampleSource
{
    Q_OBJECT
public:
    explicit RecordingReader(QObject *parent = nullptr);
    // Does not wait for what is being read.
    ~RecordingReader() override;

    // Once. Opens it and reads its list of points. The answer is opened() or failed(): what is no recording,
    // is cut off or is of a newer schema is refused in words.
    void open(const RecordingTarget &target);
    RecordingTarget target() const;

    // Known from opened() on.
    QVector<Point> points() const override;
    std::optional<Point> point(const PointId &id) const override;
    QStringList boxNames(const PointId &id) const override;
    TimeRange extent(const PointId &id) const override;
    // Whether a recording in it has no end, and samples have come of late, whatever their times.
    bool isGrowing() const override;
    // By the clock of who records, once it is known.
    qint64 present(qint64 clock) const override;
    void request(const void *asker, const Request &request) override;
    void requestAt(const void *asker, const Moment &moment) override;
    std::unique_ptr<SampleCursor> cursor(const PointId &id, const TimeRange &range) const override;

    // How often to look for new samples, in ms; before open().
    void setPollInterval(int interval) { m_pollInterval = interval; }

signals:
    void opened();

private:
    void listen();
    void takePoints(const std::shared_ptr<const RecordingPoints> &points);
    void takeGrown(const std::shared_ptr<const RecordingPoints> &points);

    int m_pollInterval = 1000;
    RecordingTarget m_target;
    std::shared_ptr<const RecordingPoints> m_points;
    QElapsedTimer m_clock;
    RecordingGrowth m_growth;
    QPointer<QThread> m_thread;
    QPointer<RecordingSession> m_session; // lives in the thread, and dies with it
    quint64 m_requests = 0;
    QHash<const void *, quint64> m_newest; // requests that have not been answered, by their askers
};
