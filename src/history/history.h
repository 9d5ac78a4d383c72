#pragma once

#include "history/samplesource.h"

#include <QSet>

// The samples of the last reports in memory, one budget for the program: the oldest go first, those of points
// that no window holds before those of points that one does.
class History : public SampleSource
{
    Q_OBJECT
public:
    static constexpr qint64 defaultBudget = 64 * 1024 * 1024; // bytes

    explicit History(qint64 budget = defaultBudget, QObject *parent = nullptr);
    ~History() override;

    // Takes a report. Where it comes later than three usual periods of its Standard after the one before (10
    // s at least), NoReport breaks its points; a point that the report lacks is broken as well.
    void add(const Readings &report);
    // The session with the Box has ended at that time: breaks all of its points that are not broken yet.
    void endSession(const QString &box, qint64 time);
    // Keeps what it has of these points for longer than it would; one call of release() for each of hold().
    void hold(const PointId &id);
    void release(const PointId &id);
    // The page of the Standard has been closed: forgets its points but for those that are held.
    void forget(const QString &box, const QString &project, const QString &standard);

    // What the samples take, in bytes, texts included.
    qint64 size() const;

    QVector<Point> points() const override;
    TimeRange extent(const PointId &id) const override;
    bool isGrowing() const override { return true; }
    void request(const void *asker, const Request &request) override;
    std::unique_ptr<SampleCursor> cursor(const PointId &id, const TimeRange &range) const override;
};
