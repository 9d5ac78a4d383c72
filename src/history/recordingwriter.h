#pragma once

#include "history/recordingdatabase.h"
#include "history/recordingkeys.h"
#include "history/recordingnames.h"
#include "history/recordingpeers.h"
#include "history/recordingrows.h"

#include <optional>

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
    RecordingWriter(const RecordingTarget &target, qint64 since, int patience, RecordingPeers *peers);

    // Writes all of it in one transaction, or nothing: then it gives false, error() tells why, and the next
    // call opens the database anew. The rows refer to the points.
    bool write(QVector<RecordingRows::Row> rows, const QVector<RecordingRows::Recorded> &points,
               const Progress &progress);
    // With what is written next.
    void nameBox(const Readings &report) { m_names.add(report.box, report.project, report.boxName); }
    // Of the database; in the thread that wrote.
    void close();
    QString error() const { return m_database.error(); }
    // Of all samples that have been written.
    qint64 samples() const { return m_samples; }
    // Samples that were left out, since later ones were there before the recording.
    qint64 leftOut() const { return m_leftOut; }

private:
    using Row = RecordingRows::Row;
    using Rows = QVector<RecordingRows::Row>;
    using Points = QVector<RecordingRows::Recorded>;

    struct Curve {
        bool isLookedUp = false;
        bool hasBegun = false;        // there is a sample of it in the recording
        bool isBroken = false;        // begins with a break
        bool isOthers = false;        // another recorder goes on with it
        std::optional<qint64> latest; // was there before; no others are put among those
    };

    bool writeAll(Rows *rows, const Points &points, Progress *progress);
    bool findRecording();
    bool writeRecording(const Progress &progress);
    bool prepareRows(Rows *rows, const Points &points);
    void lookUp(int number, const PointId &id);
    void begin(const Row &row, const RecordingRows::Recorded &recorded, Rows *rows);
    Curve &changed(int number);
    bool insertRows(const Rows &rows);
    bool insert(QSqlQuery *statement, const Row *rows, int count);

    const qint64 m_since;
    RecordingPeers *m_peers;
    RecordingDatabase m_database;
    qint64 m_recording = -1; // its key; -1 before the first transaction
    Progress m_written;
    qint64 m_samples = 0;
    qint64 m_leftOut = 0;
    QVector<Curve> m_curves;

    // Of the transaction that is open: curves as they were before it, and those that begin in it.
    QVector<QPair<int, Curve>> m_before;
    QVector<PointId> m_begun;

    // As long as the database is open.
    bool m_isRecordingKnown = false;
    RecordingKeys m_keys;
    RecordingNames m_names;
};
