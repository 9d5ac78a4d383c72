#pragma once

#include "history/reading.h"

#include <QHash>
#include <QMutex>
#include <QSet>
#include <QVector>
#include <QWaitCondition>

// What a recorder has been given and not yet written. One thread adds, another takes; adding never waits for
// the database. What does not fit is dropped and counted.
class RecordingQueue
{
public:
    struct Entry {
        enum class Kind {
            Report,
            SessionEnd, // box and time are set
            Dropped,    // reports of the Standard from that time on have been dropped
        };
        Kind kind = Kind::Report;
        Readings readings;
        qint64 bytes = 0; // about
    };

    // Only these points are kept; of an empty set all. The limit is in bytes; texts that a report has in
    // common with the one before it, of the same Standard, do not count again.
    RecordingQueue(const QSet<PointId> &points, qint64 limit);

    void add(const Readings &given);
    void endSession(const QString &box, qint64 time);
    // Nothing is taken after it.
    void stop(qint64 time);

    // Waits for that many ms at most, until there are so many rows or all is to stop. Whether it is.
    bool wait(int ms, int rows);
    bool waitForStop(int ms);
    qint64 stopTime() const;

    // The oldest entries, about so many rows of them. They count as queued until release().
    QVector<Entry> take(int rows);
    void release();

    // Nothing more will be taken: what is queued is dropped. Its rows.
    qint64 giveUp();

    qint64 dropped() const;

private:
    void append(Entry::Kind kind, const Readings &readings, qint64 bytes);
    Readings wanted(const Readings &report) const;

    QHash<PointId, QSet<QString>> m_wanted; // names by Standard, with an empty name; empty for all
    const qint64 m_limit;
    QHash<PointId, QVector<Reading>> m_before; // rows added last, by Standard; of the thread that adds
    mutable QMutex m_mutex;                    // for all below
    QWaitCondition m_changed;
    QVector<Entry> m_entries;
    int m_rows = 0;          // of the entries
    int m_wantedRows = 0;    // that wait() waits for
    qint64 m_bytes = 0;      // of the entries, and of what has been taken and not released
    qint64 m_takenBytes = 0; // of the latter
    qint64 m_dropped = 0;
    QHash<PointId, qint64> m_droppedFrom; // by Standard, with an empty name
    qint64 m_stopTime = -1;
};
