#include "history/recordingjob.h"

#include <QFileInfo>
#include <QMutexLocker>

RecordingJob::RecordingJob(const RecordingTarget &target, const QSet<PointId> &points,
                           const QString &standard, const Recorder::Limits &limits, qint64 since)
    : m_target(target)
    , m_limits(limits)
    , m_queue(points, limits.queueBytes)
    , m_peers(target, points, standard, since)
    , m_rows(points)
    , m_writer(target, since, limits.patience, &m_peers)
{
    m_status.state = Recorder::State::Recording;
    m_status.since = since;
}

Recorder::Status RecordingJob::status() const
{
    const QMutexLocker locker(&m_mutex);
    Recorder::Status status = m_status;
    status.dropped = m_queue.dropped();
    if (status.state != Recorder::State::Stopped && m_queue.stopTime() >= 0) {
        status.state = Recorder::State::Stopping;
    }
    return status;
}

void RecordingJob::run()
{
    bool ok = writeQueued(); // opens it, so that what is wrong with it is told at once
    tell(ok);
    for (bool isLast = false; !isLast;) {
        isLast = ok ? m_queue.wait(m_limits.interval, m_limits.rows) : m_queue.waitForStop(m_limits.retry);
        ok = writeQueued();
        tell(ok);
    }
    m_writer.close(); // in its thread
    const QMutexLocker locker(&m_mutex);
    m_status.state = Recorder::State::Stopped;
}

// In transactions of so many rows; what a transaction could not write is tried again by the next call.
bool RecordingJob::writeQueued()
{
    bool isMore = true;
    while (isMore) {
        isMore = takeRows();
        m_progress.dropped = m_queue.dropped();
        if (!m_writer.write(m_unwritten, m_rows.points(), m_progress)) {
            return false;
        }
        m_unwritten.clear();
        m_queue.release();
    }
    return true;
}

// Whether there may be more.
bool RecordingJob::takeRows()
{
    if (!m_unwritten.isEmpty()) {
        return true;
    }
    const qint64 stopTime = m_queue.stopTime(); // nothing is added after it
    const QVector<RecordingQueue::Entry> entries = m_queue.take(m_limits.rows);
    for (const RecordingQueue::Entry &entry : entries) {
        switch (entry.kind) {
        case RecordingQueue::Entry::Kind::Report:
            m_rows.add(entry.readings);
            break;
        case RecordingQueue::Entry::Kind::SessionEnd:
            m_rows.endSession(entry.readings.box, entry.readings.time);
            break;
        case RecordingQueue::Entry::Kind::Dropped:
            m_rows.drop(entry.readings);
            break;
        }
    }
    if (entries.isEmpty() && stopTime >= 0) {
        m_peers.leave();
        m_rows.end(stopTime, [this](const PointId &id) { return m_peers.recordingSince(id).has_value(); });
        m_progress.ended = stopTime;
    }
    m_unwritten = m_rows.takeRows();
    return !entries.isEmpty();
}

void RecordingJob::tell(bool ok)
{
    const qint64 bytes =
        m_target.kind == RecordingTarget::Kind::File ? QFileInfo(m_target.file).size() : qint64(-1);
    const QMutexLocker locker(&m_mutex);
    m_status.state = ok ? Recorder::State::Recording : Recorder::State::Troubled;
    m_status.error = ok ? QString() : m_writer.error();
    m_status.samples = m_writer.samples();
    m_status.bytes = bytes;
}
