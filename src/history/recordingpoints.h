#pragma once

#include "history/point.h"
#include "history/thinned.h"

#include <QHash>
#include <QVector>

class RecordingDatabase;

// The points of a recording, found without reading its samples.
class RecordingPoints
{
public:
    struct Curve {
        Point point;              // as it was recorded last
        QVector<qint64> keys;     // in the database; one for each address and type that it had
        TimeRange extent;         // of all samples; from > to if there are none
        qint64 seen = -1;         // when the last one was found, in ms; -1 if it was there from the beginning
        bool isOpenEnded = false; // as of all
    };

    // False if the database can't be read.
    bool read(RecordingDatabase *database);
    // By a monotonic clock of the reader's, in ms: when what is new since the other was read has been found.
    void setSeen(const RecordingPoints &before, qint64 now);
    static QString statement();

    const QVector<Curve> &curves() const { return m_curves; }
    // Null if there is none.
    const Curve *find(const PointId &id) const;
    // What the Box of the point was called; empty if nobody has told it.
    QString boxName(const PointId &id) const;
    // Whether a recording has no end.
    bool isOpenEnded() const { return m_isOpenEnded; }
    // Whether nothing has come since the other was read.
    bool isSameAs(const RecordingPoints &other) const;
    // Of the latest sample of all, in ms since 1970 UTC.
    qint64 latest() const { return m_latest; }

private:
    QVector<Curve> m_curves;
    QHash<PointId, int> m_places;
    QHash<QString, QString> m_boxNames; // by the keys of RecordingNames
    bool m_isOpenEnded = false;
    qint64 m_latest = 0;
};
