#pragma once

#include "history/valueat.h"

#include <QObject>

#include <functional>
#include <limits>
#include <memory>
#include <optional>

// Walks over the samples of one point in the order of time. It may be used in another thread than its source,
// which it survives.
class SampleCursor
{
public:
    virtual ~SampleCursor() = default;
    // False at the end, or once it can't read on.
    virtual bool next(Sample *sample) = 0;
    // Why it could not read on; empty at the end of the samples.
    virtual QString error() const { return {}; }
};

// Where the curves of a trend come from: the history in memory, or a recording.
class SampleSource : public QObject
{
    Q_OBJECT
public:
    struct Request {
        QVector<PointId> points;
        TimeRange range;
        int columns = 0; // pixels of the plot's width
        // Nothing is known of later times, and what should have come by then is late.
        qint64 now = std::numeric_limits<qint64>::max();
        // The end of the range where none is given.
        qint64 present() const { return now < std::numeric_limits<qint64>::max() ? now : range.to; }
    };

    // A time at which something is to be told of points.
    struct Moment {
        QVector<PointId> points;
        qint64 time = 0;
        qint64 now = std::numeric_limits<qint64>::max(); // as that of a Request
    };

    using QObject::QObject;

    // All points, in the order of their PointIds or of the source.
    virtual QVector<Point> points() const = 0;
    // As it is described now; none if the source does not have it.
    virtual std::optional<Point> point(const PointId &id) const = 0;
    // What the Box of the point was called while its project reported, as far as the source knows that; the
    // first name first.
    virtual QStringList boxNames(const PointId &) const { return {}; }
    // Of all samples of the point, breaks too; from > to if it has none.
    virtual TimeRange extent(const PointId &id) const = 0;
    // Whether samples still come, so that a window has a present to follow.
    virtual bool isGrowing() const = 0;
    // The present of its samples, given what the clock shows; both in ms since 1970 UTC. The clock that gave
    // their times may be another one.
    virtual qint64 present(qint64 clock) const { return clock; }
    // Has the samples thinned; thinned() tells them, at once or later. A newer request with the same asker
    // replaces one that has not been answered. The asker is any pointer; it is only compared.
    virtual void request(const void *asker, const Request &request) = 0;
    // Has the samples of one time looked up, which thinned ones need not hold; knownAt() tells them, at once
    // or before what is being thinned. A newer moment with the same asker replaces one that has not been
    // answered, but answers to earlier ones may still come.
    virtual void requestAt(const void *asker, const Moment &moment) = 0;
    // All samples of the range, not thinned.
    virtual std::unique_ptr<SampleCursor> cursor(const PointId &id, const TimeRange &range) const = 0;

signals:
    // The answer: one element a point of the request, in its order.
    void thinned(const void *asker, const SampleSource::Request &request, const QVector<Thinned> &answers);
    void knownAt(const void *asker, const SampleSource::Moment &moment, const QVector<ValueAt> &values);
    // There are samples that were not there before, or points.
    void grown();
    // It can't be read any more, or not to its end; the text tells why, in the words of the user.
    void failed(const QString &why);
};
