#include "history/recordingjob.h"

#include <QFileInfo>
#include <QMutexLocker>

#include <algorithm>

namespace {

constexpr int firstPieceRows = 10000;
constexpr int longPiece = 500; // ms of a transaction

// Of samples, and not of what was put between them.
qint64 samplesOf(const QVector<RecordingRows::Row> &rows)
{
    return std::count_if(rows.cbegin(), rows.cend(),
                         [](const RecordingRows::Row &row) { return isReported(row.sample.state); });
}

} // namespace

RecordingJob::RecordingJob(const RecordingTarget &target, const QSet<PointId> &points,
                           const QString &standard, const Recorder::Limits &limits, qint64 since)
    : m_target(target)
    , m_limits(limits)
    , m_queue(points, limits.queueBytes)
    , m_peers(target, points, standard)
    , m_rows(points)
    , m_writer(target, since, limits.patience, &m_peers)
    , m_pieceRows(qMin(limits.rows, firstPieceRows))
{
    m_status.state = Recorder::State::Recording;
    m_status.since = since;
}

Recorder::Status RecordingJob::status() const
{
    const QMutexLocker locker(&m_mutex);
    Recorder::Status status = m_status;
    status.dropped += m_queue.dropped();
    if (m_writing.isValid() && m_writing.hasExpired(m_limits.answer)) {
        status.state = Recorder::State::Troubled;
        status.error = Recorder::tr("%1 does not answer.").arg(m_target.text());
    }
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
    if (!ok) {
        giveUp();
    }
    m_writer.close(); // in its thread
    const QMutexLocker locker(&m_mutex);
    m_status.state = Recorder::State::Stopped;
}

// What a transaction could not write is tried again by the next call.
bool RecordingJob::writeQueued()
{
    for (bool isMore = true; isMore || !m_unwritten.isEmpty();) {
        isMore = takeRows();
        m_progress.dropped = m_queue.dropped();
        if (!writePiece()) {
            return false;
        }
        if (m_unwritten.isEmpty()) {
            m_queue.release();
        }
    }
    return true;
}

// As much as a short transaction takes.
bool RecordingJob::writePiece()
{
    QElapsedTimer taken;
    taken.start();
    {
        const QMutexLocker locker(&m_mutex);
        m_writing = taken;
    }
    const QVector<RecordingRows::Row> piece = m_unwritten.mid(0, m_pieceRows);
    const qint64 leftOut = m_writer.leftOut();
    const bool ok = m_writer.write(piece, m_rows.points(), m_progress);
    const QMutexLocker locker(&m_mutex);
    m_writing.invalidate();
    if (ok && !piece.isEmpty()) {
        m_isHeldBack = m_writer.leftOut() > leftOut;
        m_unwritten.remove(0, piece.size());
        m_status.samples = m_writer.samples();
    }
    if (taken.hasExpired(longPiece)) {
        m_pieceRows = qMax(1, m_pieceRows / 2);
    } else if (piece.size() == m_pieceRows && !taken.hasExpired(longPiece / 2)) {
        m_pieceRows = qMin(m_limits.rows, m_pieceRows * 2);
    }
    return ok;
}

// There is no more time to try again: what is lost is told.
void RecordingJob::giveUp()
{
    const qint64 queued = m_queue.giveUp();
    const qint64 lost = samplesOf(m_unwritten);
    const QMutexLocker locker(&m_mutex);
    m_status.dropped += lost; // the queue has counted its own
    if (queued + lost > 0) {
        m_status.error =
            Recorder::tr("%1 Samples that were not written: %2.").arg(m_status.error).arg(queued + lost);
        qWarning("%s", qPrintable(m_status.error));
    }
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
            m_writer.nameBox(entry.readings);
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
        m_rows.end(stopTime, [this](const PointId &id) { return m_peers.isRecorded(id); });
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
    m_status.hasBegun |= ok;
    m_status.error = ok ? QString() : m_writer.error();
    if (ok && m_isHeldBack) {
        m_status.state = Recorder::State::Troubled;
        m_status.error =
            Recorder::tr("%1 already has later samples of the same points: no others are put among them.")
                .arg(m_target.text());
    }
    m_status.samples = m_writer.samples();
    m_status.dropped = m_writer.leftOut();
    m_status.bytes = bytes;
}
