#pragma once

#include "history/point.h"

#include <QVariantList>

// What is known of a point at one time. The numbers are those of recordings.
enum class SampleState : quint8 {
    NotValid = 0, // the report says so, or says neither "1" nor "0"
    Valid = 1,
    NoNumber = 2, // valid, but no finite number although the type holds numbers: "nan", "1e999", "12,5", ""
    NoReport = 3, // no report came for longer than usual, or it lacked the point
    Ended = 4,    // the session with the Box, or the recording, came to an end
    Dropped = 5,  // there were samples that the recorder could not take
};

// Whether a report has said it. What is not reported is put between the samples of reports, once until the
// next of these.
constexpr bool isReported(SampleState state)
{
    return state <= SampleState::NoNumber;
}

// One sample. A break (any state but Valid) says that nothing is known from the sample before it up to the
// sample after it.
struct Sample {
    qint64 time = 0;   // ms since 1970 UTC, of arrival; strictly increasing within a point
    double number = 0; // NaN unless valid and a number
    SampleState state = SampleState::NotValid;
    QString text; // of a valid text, what was reported where it is not valid or no number, and beside the
                  // number of an integer that a double can't hold
};

// One row of a report.
struct Reading {
    QString name;
    QString address;
    QString type;
    double number = 0; // as in Sample
    SampleState state = SampleState::NotValid;
    QString text; // as in Sample

    // Reads "name", "addr", "dataType", "value" and "valid" of a row as MonitoringView keeps it, or as it
    // stands in a report. Numbers are read in the C locale; "true" and "false" of a bool are 1 and 0.
    static Reading fromRow(const QVariantMap &row);
};

// One report of a Standard, as history and recorders take it. Cheap to copy.
struct Readings {
    qint64 time = 0; // ms since 1970 UTC
    QString box;
    QString project;
    QString standard;
    QVector<Reading> rows; // in the order of the report; of rows with one name the last counts
    QString boxName{};     // what the Box is called then; empty if that is not known
};

// Takes the rows of a report, QVariantMaps. Texts that stand at the same place of the report before are those
// of that one, so that they are in memory once, however long and in whatever thread a report is kept.
QVector<Reading> readRows(const QVariantList &rows, const QVector<Reading> &before = {});

// The time of arrival of reports: the computer's clock, but each call gives at least 1 ms more than the one
// before. A clock that is set back makes it go on with the monotonic clock until the other has caught up, and
// one that is set ahead is followed.
class ArrivalClock
{
public:
    // Takes what the clocks show, in ms; the first call follows the wall clock.
    qint64 at(qint64 monotonic, qint64 wall);
    // With the clocks of the system.
    qint64 now();
    // How far the time given last was ahead of the wall clock, in ms; 0 unless that was set back.
    qint64 ahead() const { return m_ahead; }

    struct Present {
        qint64 time = 0;
        qint64 ahead = 0; // as ahead()
    };
    // What a report that arrived now would get, without giving it.
    Present presentAt(qint64 monotonic, qint64 wall) const;
    Present present() const;

private:
    bool m_isStarted = false;
    qint64 m_last = 0;      // given last
    qint64 m_followed = 0;  // the wall clock when it was followed last,
    qint64 m_monotonic = 0; // and the monotonic one then
    qint64 m_ahead = 0;
};
