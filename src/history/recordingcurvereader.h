#pragma once

#include "history/recordingpoints.h"
#include "history/samplesource.h"

#include <functional>
#include <optional>

// Reads one curve of a recording. A recorder writes that reports were late with the next one: until that
// comes, the break is put behind the last sample here, as that of live values is.
class RecordingCurveReader
{
public:
    enum class Result { Done, GivenUp, Failed };

    // In the thread of the database. Both live as long as it does. The time is of the clock that tells when
    // samples were found: those who record into one database may each have another clock.
    RecordingCurveReader(RecordingDatabase *database, const RecordingPoints::Curve &curve, qint64 monotonic);

    // Asks now and then whether to go on.
    Result thin(const SampleSource::Request &request, const std::function<Result()> &goesOn,
                Thinned *thinned);
    // Of a time that is not after the present. False if the database can't be read, as of the next ones.
    bool valueAt(qint64 time, qint64 now, ValueAt *value);

    // The statement that looks for what is usual; takes key and time.
    static QString latestStatement();

private:
    // The first sample after the time or, where there is none, the break behind the last one. Null for none.
    bool readNext(const Sample *last, qint64 time, qint64 now, std::optional<Sample> *next);
    qint64 presentOf(qint64 given) const;
    bool readLateBreak(const Sample &last, qint64 now, std::optional<Sample> *late);

    RecordingDatabase *m_database;
    const RecordingPoints::Curve &m_curve;
    const qint64 m_monotonic;
};
