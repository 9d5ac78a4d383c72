#pragma once

#include "history/samplesource.h"

#include <QSet>
#include <QWidget>

// One trend: curves of points over time, with a table of their figures below. A window of its own.
class TrendWindow : public QWidget
{
    Q_OBJECT
public:
    // The source may be shared; a window without points shows how to get some. It deletes itself when it is
    // closed.
    explicit TrendWindow(SampleSource *source, QWidget *parent = nullptr);
    ~TrendWindow() override;

    // Adds curves; those that it has stay as they are.
    void addPoints(const QVector<Point> &points);
    QVector<Point> points() const;
    SampleSource *source() const;

    // A row below the tools for who records: a line of text, empty for none, with a red mark before it.
    void setRecordingLine(const QString &text);

signals:
    // A tool was used: record the window's points, or stop that; show another recording; add points.
    void recordAsked();
    void openAsked();
    // Rows of a live table were dropped on it; the object is the table.
    void dropped(QObject *table);
};
