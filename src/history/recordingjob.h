#pragma once

#include "history/recorder.h"
#include "history/recordingqueue.h"
#include "history/recordingwriter.h"

#include <QElapsedTimer>
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
    bool writePiece();
    void giveUp();
    void tell(bool ok);

    const RecordingTarget m_target;
    const Recorder::Limits m_limits;
    RecordingQueue m_queue;
    RecordingPeers m_peers;
    RecordingRows m_rows;
    RecordingWriter m_writer;
    QVector<RecordingRows::Row> m_unwritten;
    int m_pieceRows; // of a transaction
    RecordingWriter::Progress m_progress;
    bool m_isHeldBack = false; // samples were left out of what was written last

    mutable QMutex m_mutex;    // for the status
    Recorder::Status m_status; // without what the queue has dropped
    QElapsedTimer m_writing;   // since the begin of a transaction; invalid between them
};
