#pragma once

#include "history/samplesource.h"

#include <QHash>
#include <QPair>

#include <map>
#include <memory>

class Series;
class SeriesThinning;

// The samples of the last reports in memory, one budget for the program: the oldest go first, those of points
// that no window holds before those of points that one does.
class History : public SampleSource
{
    Q_OBJECT
public:
    static constexpr qint64 defaultBudget = qint64(64) * 1024 * 1024; // bytes

    explicit History(qint64 budget = defaultBudget, QObject *parent = nullptr);
    ~History() override;

    // Takes a report. Its time is moved behind that of the last sample of its Standard, should it not be
    // later. Where it comes later than three usual periods of the Standard (10 s at least) after the one
    // before, NoReport breaks its points at the end of these; a point that the report lacks is broken at its
    // time. Of texts 1 kB is kept.
    void add(const Readings &report);
    // The session with the Box has ended at that time: breaks all of its points for which NoReport or Ended
    // does not stand yet.
    void endSession(const QString &box, qint64 time);
    // Keeps what it has of these points, and will have, for longer than it would; one call of release() for
    // each of hold().
    void hold(const PointId &id);
    void release(const PointId &id);
    // The page of the Standard has been closed: forgets its points, those that are held once they are
    // released.
    void forget(const QString &box, const QString &project, const QString &standard);

    // What the points and their samples take, in bytes, texts included. Never more than the budget, but for
    // the records of points that are held.
    qint64 size() const { return m_size; }
    // What is kept to go on with the curves of windows, in bytes. At most a quarter of the budget, beside
    // it.
    qint64 curvesSize() const;

    // Those of a Standard in the order in which they came.
    QVector<Point> points() const override;
    std::optional<Point> point(const PointId &id) const override;
    QStringList boxNames(const PointId &id) const override;
    TimeRange extent(const PointId &id) const override;
    bool isGrowing() const override { return true; }
    // Answers at once. What is late by the present is broken.
    void request(const void *asker, const Request &request) override;
    // The same.
    void requestAt(const void *asker, const Moment &moment) override;
    std::unique_ptr<SampleCursor> cursor(const PointId &id, const TimeRange &range) const override;

private:
    using Thinnings = std::map<PointId, SeriesThinning>;
    struct Standard;
    struct Found {
        Standard *standard = nullptr;
        Series *series = nullptr; // null if there is none
    };

    void nameBox(const Readings &report);
    Found find(const PointId &id) const;
    static Thinned thin(const Found &found, const Request &request, SeriesThinning *earlier);
    ValueAt valueAt(const PointId &id, const Moment &moment) const;
    void removeFree(Standard *standard);
    void keepBudget();
    void removeOldest(bool held, qint64 wanted);
    void removeEmpty();

    qint64 m_budget;
    qint64 m_size = 0;
    std::map<PointId, std::unique_ptr<Standard>>
        m_standards; // by their ids without a name; none is without points
    QHash<PointId, int> m_holds;
    QHash<QPair<QString, QString>, QStringList> m_boxNames; // by address and project
    std::map<const void *, Thinnings> m_thinnings; // what each asker asked last, of points that are held
};
