#pragma once

#include "history/recordingrows.h"
#include "history/recordingtarget.h"

#include <QHash>
#include <QVector>

#include <optional>

class RecordingDatabase;

// The keys in the database of the points of a recording, which it makes there where they are missing: many at
// a time, since thousands of points may come at once, and without reading the others of their Standard.
class RecordingKeys
{
public:
    explicit RecordingKeys(RecordingDatabase *database);

    // In an open transaction; the numbers are those of the points. False if the database fails.
    bool find(const QVector<int> &numbers, const QVector<RecordingRows::Recorded> &points);
    // -1 where it is not known.
    qint64 key(int number) const { return m_keys.value(number, -1); }
    // The time of the latest sample that was there when the point was looked for, of all forms of the point;
    // breaks do not count.
    std::optional<qint64> latest(const PointId &id) const;
    // To be called after each transaction, since others write too.
    void forgetLatest() { m_latest.clear(); }
    void forget();

    // The statement that looks for points by their names.
    static QString statement(RecordingTarget::Kind kind);

private:
    using Numbers = QVector<int>;
    using Points = QVector<RecordingRows::Recorded>;

    bool findPiece(const PointId &standard, const Numbers &numbers, const Points &points);
    bool read(const PointId &standard, const Numbers &numbers, const Points &points);
    bool insert(const Numbers &numbers, const Points &points);

    RecordingDatabase *m_database;
    QVector<qint64> m_keys; // by number
    QHash<PointId, qint64> m_latest;
};
