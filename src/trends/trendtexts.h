#pragma once

#include "history/valueat.h"

#include <QCoreApplication>

// How trends say numbers, times and breaks.
class TrendTexts
{
    Q_DECLARE_TR_FUNCTIONS(TrendTexts)
public:
    // All that is known of the point, a line each.
    static QString ofPoint(const Point &point);
    // Project, Box and address, as the line of a live page has them.
    static QString ofSource(const PointId &point, const QStringList &boxNames);
    static QString ofBreak(SampleState why);
    // Numbers are in the C locale, as on live pages; a dash is none. The shortest text that reads back as the
    // same number.
    static QString ofNumber(double number);
    // Six digits, or all before the point.
    static QString ofMean(double number);
    // With as many decimals as the two have.
    static QString ofDifference(double from, double to);
    // With as many digits as the steps of its scale need.
    static QString ofTick(double number, double step);
    // What is no value stands in parentheses: a point may have a text such as "no report".
    static QString ofValue(const ValueAt &value);
    // In one line. An empty one is told as such: an empty place says that nothing has been told yet.
    static QString ofText(const QString &text);
    // Local time with milliseconds; with its zone if clocks show it twice, being set back.
    static QString ofTime(qint64 time);
    static QString ofRange(const TimeRange &range);
    // How far local time is ahead of UTC then: "UTC+01:00".
    static QString ofZone(qint64 time);
    // One or both of the ends.
    static QString ofZones(const TimeRange &range);
    // "1 h 2 min 3.004 s"; with a minus before it where it is negative.
    static QString ofDuration(qint64 duration);
};
