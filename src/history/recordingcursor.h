#pragma once

#include "history/recordingdatabase.h"
#include "history/samplesource.h"

#include <QVector>

#include <vector>

// Walks over the samples of one key of the database. It reads them in pieces, so that it never locks a file
// for long.
class RecordingWalk
{
public:
    enum class Columns {
        Plain, // time, and the number of a sample that is nothing else, or NULL
        All,
    };

    RecordingWalk(RecordingDatabase *database, qint64 key, const TimeRange &range);

    // Takes key, first and last time, and how many at most.
    static QString statement(Columns columns);
    // The sample that it stands at; null at the end or once it can't read on.
    const Sample *current();
    void advance() { ++m_place; }
    bool hasFailed() const { return m_hasFailed; }

private:
    void fetch();
    // False where one of them has a text or is a break.
    bool fetchPlain();
    bool fetchAll(); // false if the size of the texts cut it short
    QSqlQuery asked(Columns columns);

    RecordingDatabase *m_database;
    const qint64 m_key;
    TimeRange m_range; // what is still to be read
    QVector<Sample> m_samples;
    int m_place = 0;
    bool m_isAtEnd = false;
    bool m_hasFailed = false;
};

// Walks over the samples of several keys at once, in the order of time; of samples of one time the first
// counts.
class RecordingMerge
{
public:
    RecordingMerge(RecordingDatabase *database, const QVector<qint64> &keys, const TimeRange &range);

    bool next(Sample *sample);
    bool hasFailed() const;

private:
    std::vector<RecordingWalk> m_walks;
    bool m_hasLast = false;
    qint64 m_last = 0;
};

// The last sample before that time, or the first one after it. False if it can't be read; *found tells
// whether there is one.
enum class Neighbour { Before, After };
QString neighbourStatement(Neighbour which); // takes key and time
bool readNeighbour(RecordingDatabase *database, const QVector<qint64> &keys, Neighbour which, qint64 time,
                   Sample *sample, bool *found);

// With a connection of its own, which the thread opens that calls next() first.
class RecordingCursor : public SampleCursor
{
public:
    RecordingCursor(const RecordingTarget &target, const QVector<qint64> &keys, const TimeRange &range);

    bool next(Sample *sample) override;
    QString error() const override { return m_error; }

private:
    RecordingDatabase m_database;
    RecordingMerge m_merge;
    QString m_error;
};
