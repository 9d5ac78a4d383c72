#pragma once

#include "trends/timeview.h"

#include <QObject>

#include <functional>

class PlotMouse;
class TrendMarks;
class TrendPlot;

// Mouse and keys of a plot: moves the view and the marks.
class ViewControl : public QObject
{
    Q_OBJECT
public:
    // The function tells from when to when there are samples. Lives as long as the plot.
    ViewControl(TrendPlot *plot, TrendMarks *marks, std::function<TimeRange()> extent);

    const TimeView &view() const { return m_view; }
    void setView(const TimeView &view);
    void setPresent(qint64 time);

    void setSpan(qint64 span);
    void zoomIn();
    void zoomOut();
    void back();
    void toggleFollowing();
    void toggleMarkers();

signals:
    void viewChanged();
    // The view has gone on with the present, and has not changed otherwise.
    void viewWentOn();

private:
    // A key and what it does; a table of these makes the shortcuts.
    struct Key {
        int key;
        std::function<void()> work;
    };

    void listenTo(PlotMouse *mouse);
    void addKeys(const QVector<Key> &keys);
    void addViewKeys();
    void addMarkKeys();
    int markerAt(int x) const;
    void zoomAboutCursor(double factor);
    void zoomValues(double factor);
    void pan(double share, double height = 0);
    void goTo(bool end);
    void changed();

    TrendPlot *m_plot;
    TrendMarks *m_marks;
    std::function<TimeRange()> m_extent;
    TimeView m_view;
};
