#pragma once

#include "history/history.h"
#include "samples.h"

#include <QtTest>

#include <cmath>

// Reports for a history, and what it makes of them.
namespace Reports {

using Samples::none;

constexpr qint64 begin = 1767225600000; // 2026-01-01
constexpr qint64 s = 1000;              // ms

inline PointId idOf(const QString &name, const QString &standard = "Line 1", const QString &box = "10.0.0.1")
{
    return {box, "Plant", standard, name};
}

inline Reading value(const QString &name, double number, const QString &type = "float")
{
    return {name, "40001", type, number, SampleState::Valid, {}};
}

inline Reading word(const QString &name, const QString &text)
{
    return {name, "40001", "string", none, SampleState::Valid, text};
}

inline Reading other(const QString &name, SampleState state, const QString &text = {})
{
    return {name, "40001", "float", none, state, text};
}

// At that many seconds from the begin.
inline Readings report(qint64 seconds, const QVector<Reading> &rows, const QString &standard = "Line 1",
                       const QString &box = "10.0.0.1")
{
    return {begin + seconds * s, box, "Plant", standard, rows};
}

inline Readings manyPoints(qint64 seconds, int count, const QString &prefix = "Point ")
{
    Readings readings = report(seconds, {});
    readings.rows.reserve(count);
    for (int point = 0; point < count; ++point) {
        readings.rows.append(value(prefix + QString::number(point), point + double(seconds)));
    }
    return readings;
}

inline QString dump(const Sample &sample)
{
    static const char *const states[] = {"not valid ", "", "no number ", "no report ", "ended ", "dropped "};
    const double seconds = double(sample.time - begin) / s;
    return QString("%1: %2%3%4")
        .arg(seconds)
        .arg(QString::fromLatin1(states[int(sample.state)]),
             std::isnan(sample.number) ? QString() : QString::number(sample.number), sample.text)
        .trimmed();
}

// All samples of a point, by seconds from the begin.
inline QStringList samplesOf(const History &history, const PointId &id, qint64 from = -1000000,
                             qint64 to = 1000000)
{
    QStringList samples;
    const auto cursor = history.cursor(id, {begin + from * s, begin + to * s});
    Sample sample;
    while (cursor->next(&sample)) {
        samples.append(dump(sample));
    }
    return samples;
}

inline int countOf(const History &history, const PointId &id)
{
    return samplesOf(history, id).size();
}

inline QStringList namesOf(const History &history)
{
    QStringList names;
    const QVector<Point> points = history.points();
    for (const Point &point : points) {
        names.append(point.id.standard + '/' + point.id.name + ' ' + point.type);
    }
    return names;
}

// What it answers, by seconds from the begin. Without a present the range ends at it.
inline QString answerOf(History *history, const PointId &id, qint64 from, qint64 to, int columns = 1000,
                        qint64 now = -1, bool withStatistics = false, const void *asker = nullptr)
{
    QString text;
    const auto link = QObject::connect(
        history, &SampleSource::thinned, history,
        [&text, withStatistics](const void *, const SampleSource::Request &,
                                const QVector<Thinned> &answers) {
            for (const QVector<QPointF> &piece : answers.at(0).pieces) {
                for (const QPointF &point : piece) {
                    text += QString("%1:%2 ").arg((point.x() - double(begin)) / s).arg(point.y());
                }
                text += "| ";
            }
            for (const Thinned::Gap &gap : answers.at(0).gaps) {
                text += QString("gap %1-%2 %3 ")
                            .arg(double(gap.range.from - begin) / s)
                            .arg(double(gap.range.to - begin) / s)
                            .arg(int(gap.why));
            }
            const Statistics &statistics = answers.at(0).statistics;
            if (withStatistics) {
                text += QString("%1 %2, %3 %4..%5 %6 ")
                            .arg(statistics.count)
                            .arg(statistics.notNumbers)
                            .arg(statistics.current)
                            .arg(statistics.least)
                            .arg(statistics.greatest)
                            .arg(statistics.mean);
            }
            for (const Thinned::Event &event : answers.at(0).events) {
                text += QString("%1 %2 ").arg(double(event.time - begin) / s).arg(event.text);
            }
        });
    history->request(asker,
                     {{id}, {begin + from * s, begin + to * s}, columns, begin + (now < 0 ? to : now) * s});
    QObject::disconnect(link);
    return text.trimmed();
}

} // namespace Reports
