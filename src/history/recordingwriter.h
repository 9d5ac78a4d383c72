#pragma once

#include "history/recordingdatabase.h"
#include "history/recordingpeers.h"
#include "history/recordingrows.h"

#include <optional>
#include <vector>

// Puts rows of samples into the database of a recording, which it opens when it has to.
class RecordingWriter
{
public:
    struct Progress {
        qint64 dropped = 0;
        qint64 ended = -1; // ms since 1970 UTC; -1 while it runs

        bool operator==(const Progress &other) const
        {
            return dropped == other.dropped && ended == other.ended;
        }
    };

    // Since: of the start of the recording, in ms since 1970 UTC.
    RecordingWriter(const RecordingTarget &target, qint64 since, int patience, const RecordingPeers *peers);

    // Writes all of it in one transaction, or nothing: then it gives false, error() tells why, and the next
    // call opens the database anew. The rows refer to the points.
    bool write(QVector<RecordingRows::Row> rows, const QVector<RecordingRows::Recorded> &points,
               const Progress &progress);
    // Of the database; in the thread that wrote.
    void close();
    QString error() const { return m_database.error(); }
    // Of all samples that have been written.
    qint64 samples() const { return m_samples; }

private:
    using Row = RecordingRows::Row;

    bool writeRecording(const Progress &progress);
    bool writeRows(const QVector<Row> &rows, const QVector<RecordingRows::Recorded> &points);
    bool prepareStatements();
    bool preparePoint(const Row &row, const RecordingRows::Recorded &recorded);
    std::optional<qint64> keyOf(const Point &point);
    bool beginCurve(const Row &row, const PointId &id);
    bool insert(QSqlQuery *statement, const Row *rows, int count);

    const qint64 m_since;
    const RecordingPeers *m_peers;
    RecordingDatabase m_database;
    qint64 m_recording = -1; // its key; -1 before the first transaction
    Progress m_written;
    qint64 m_samples = 0;
    std::vector<bool> m_hasBegun; // by curve: there is a sample of it in the recording

    // Of the transaction that is open.
    QVector<int> m_begins; // curves that begin
    int m_breaks = 0;      // that were put before their first samples

    // As long as the database is open.
    bool m_isRecordingKnown = false;
    std::optional<QSqlQuery> m_insertMany;
    std::optional<QSqlQuery> m_insertOne;
    QVector<qint64> m_keys; // of the points; -1 where it is not known
};
