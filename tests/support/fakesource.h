#pragma once

#include "history/samplesource.h"

#include <QMap>

#include <algorithm>
#include <cmath>
#include <limits>

// A source that holds what a test gives it, and answers at once, unless it is told not to.
class FakeSource : public SampleSource
{
public:
    static constexpr double noNumber = std::numeric_limits<double>::quiet_NaN();

    static PointId idOf(const QString &name, const QString &standard = "Relay")
    {
        return {"127.0.0.2", "Riverside", standard, name};
    }

    PointId add(const QString &name, const QString &type, const QVector<Sample> &samples,
                const QString &standard = "Relay")
    {
        const PointId id = idOf(name, standard);
        m_points.append({id, "40001", type});
        m_samples.insert(id, samples);
        return id;
    }
    void append(const PointId &id, const Sample &sample)
    {
        m_samples[id].append(sample);
        emit grown();
    }

    QVector<Point> points() const override { return m_points; }
    std::optional<Point> point(const PointId &id) const override
    {
        const auto found = std::find_if(m_points.begin(), m_points.end(),
                                        [&id](const Point &point) { return point.id == id; });
        return found != m_points.end() ? std::make_optional(*found) : std::nullopt;
    }
    TimeRange extent(const PointId &id) const override
    {
        const QVector<Sample> samples = m_samples.value(id);
        return samples.isEmpty() ? TimeRange{1, 0} : TimeRange{samples.first().time, samples.last().time};
    }
    void setType(const PointId &id, const QString &type)
    {
        for (Point &point : m_points) {
            point.type = point.id == id ? type : point.type;
        }
        emit grown();
    }
    bool isGrowing() const override { return growing; }
    qint64 present(qint64 clock) const override { return clock + ahead; }
    void request(const void *asker, const Request &request) override
    {
        requests.append(request);
        if (answers) {
            answer(asker, request);
        }
    }
    void answer(const void *asker, const Request &request)
    {
        QVector<Thinned> found;
        for (const PointId &id : request.points) {
            found.append(answerOf(m_samples.value(id), request.range));
        }
        emit thinned(asker, request, found);
    }
    void requestAt(const void *asker, const Moment &moment) override
    {
        moments.append({asker, moment});
        if (answersMoments) {
            answerAt(asker, moment);
        }
    }
    void answerAt(const void *asker, const Moment &moment)
    {
        QVector<ValueAt> values;
        for (const PointId &id : moment.points) {
            const QVector<Sample> samples = m_samples.value(id);
            const auto next = std::find_if(samples.cbegin(), samples.cend(),
                                           [&moment](const Sample &each) { return each.time > moment.time; });
            const Sample *last = next == samples.cbegin() ? nullptr : &*std::prev(next);
            values.append(moment.time > moment.now
                              ? ValueAt()
                              : ValueAt::of(last, next == samples.cend() ? nullptr : &*next, moment.time));
        }
        emit knownAt(asker, moment, values);
    }
    std::unique_ptr<SampleCursor> cursor(const PointId &id, const TimeRange &range) const override
    {
        auto cursor = std::make_unique<Cursor>();
        for (const Sample &sample : m_samples.value(id)) {
            if (sample.time >= range.from && sample.time <= range.to) {
                cursor->samples.append(sample);
            }
        }
        return cursor;
    }

    bool growing = false;
    qint64 ahead = 0; // of its clock, in ms
    bool answers = true;
    QVector<Request> requests;
    bool answersMoments = true;
    QVector<QPair<const void *, Moment>> moments;

private:
    struct Cursor : SampleCursor {
        QVector<Sample> samples;
        bool next(Sample *sample) override
        {
            if (samples.isEmpty()) {
                return false;
            }
            *sample = samples.takeFirst();
            return true;
        }
    };

    static Thinned answerOf(const QVector<Sample> &samples, const TimeRange &range)
    {
        Thinned thinned;
        Statistics &figures = thinned.statistics;
        figures.current = figures.least = figures.greatest = figures.mean = noNumber;
        double sum = 0;
        qint64 last = range.from; // the sample before
        bool isBroken = true;
        for (const Sample &sample : samples) {
            if (sample.time < range.from || sample.time > range.to) {
                continue;
            }
            if (!thinned.gaps.isEmpty() && thinned.gaps.last().range.to == range.to) {
                thinned.gaps.last().range.to = sample.time;
            }
            if (sample.state != SampleState::Valid) {
                thinned.gaps.append({{last, range.to}, sample.state});
                figures.notNumbers += sample.state == SampleState::NoNumber ? 1 : 0;
                isBroken = true;
            } else if (std::isnan(sample.number)) {
                thinned.events.append({sample.time, sample.text});
            } else {
                if (isBroken) {
                    thinned.pieces.append(QVector<QPointF>());
                }
                isBroken = false;
                thinned.pieces.last().append({double(sample.time), sample.number});
                figures.current = sample.number;
                figures.least = std::fmin(figures.least, sample.number);
                figures.greatest = std::fmax(figures.greatest, sample.number);
                sum += sample.number;
                figures.mean = sum / double(++figures.count);
            }
            last = sample.time;
        }
        return thinned;
    }

    QVector<Point> m_points;
    QMap<PointId, QVector<Sample>> m_samples;
};
