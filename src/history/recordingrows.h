#pragma once

#include "history/lateness.h"
#include "history/reading.h"

#include <QHash>
#include <QSet>
#include <QVector>

#include <functional>
#include <limits>

// Makes the samples of a recording out of reports, breaks included. Points are numbered in the order in which
// they come; a point that changes its address or type is another one, of the same curve.
class RecordingRows
{
public:
    struct Row {
        int point;
        Sample sample;
    };
    struct Recorded {
        Point point;
        int curve; // counts PointIds
    };

    // An empty set takes all points.
    explicit RecordingRows(const QSet<PointId> &points);

    void add(const Readings &report);
    void endSession(const QString &box, qint64 time);
    // Reports of the Standard have been dropped from that time on.
    void drop(const Readings &standard);
    // The recording ends, but for the points with which others go on.
    void end(qint64 time, const std::function<bool(const PointId &)> &goesOn);

    const QVector<Recorded> &points() const { return m_points; }
    // In the order of time within each curve.
    QVector<Row> takeRows();

private:
    struct Curve {
        int point = -1; // the latest
        qint64 last = std::numeric_limits<qint64>::min();
        SampleState state = SampleState::Ended; // of its last row
        qint64 report = 0;                      // number of the last report that has it
        int row = -1;                           // in that report
    };
    struct Standard {
        PointId id; // with an empty name
        Lateness lateness;
        QHash<QString, int> curves; // by name; -1 for those that are not recorded
        QVector<int> members;
        QVector<QPair<QString, int>> order; // names and curves as in the last report
    };

    Standard *standardOf(const Readings &report);
    int curveOf(Standard *standard, int place, const Reading &reading);
    int addCurve(Standard *standard, const Reading &reading);
    void setPoint(int number, const PointId &id, const Reading &reading);
    void take(int number, qint64 time, const Reading &reading);
    void breakAll(const Standard &standard, qint64 time, SampleState state);
    void breakCurve(int number, qint64 time, SampleState state);

    const QSet<PointId> m_wanted;
    QVector<Standard> m_standards;
    QHash<PointId, int> m_placeOfStandard;
    QVector<Curve> m_curves;
    QVector<Recorded> m_points;
    QHash<PointId, QVector<int>> m_pointsOf; // of curves that have changed their address or type
    QVector<Row> m_rows;
    qint64 m_reports = 0;
};
