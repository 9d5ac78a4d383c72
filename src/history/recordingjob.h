#pragma once

#include "history/recorder.h"
#include "history/recordingqueue.h"
#include "history/recordingwriter.h"

#include <QMutex>

// What the thread of a recorder does. The recorder may be gone before it ends.
class RecordingJob
{
public:
    RecordingJob(const RecordingTarget &target, const QSet<PointId> &points, const QString &standard,
                 const Recorder::Limits &limits, qint64 since);

    RecordingQueue *queue() { return &m_queue; }
    Recorder::Status status() const;
    // Returns once the queue has been stopped, and written or given up.
    void run();

private:
    bool writeQueued();
    bool takeRows();
    void tell(bool ok);

    const RecordingTarget m_target;
    const Recorder::Limits m_limits;
    RecordingQueue m_queue;
    RecordingPeers m_peers;
    RecordingRows m_rows;
    RecordingWriter m_writer;
    QVector<RecordingRows::Row> m_unwritten;
    RecordingWriter::Progress m_progress;

    mutable QMutex m_mutex; // for the status
    Recorder::Status m_status;
};
