#pragma once

#include "trends/curve.h"
#include "trends/markerlines.h"
#include "trends/timeview.h"

#include <QVector>

#include <qwt_plot.h>

class EventLabels;
class GapBands;
class QwtPlotGrid;
class TrendCurve;

// The plot of a trend: curves over the time of their arrival, with a scale of values on the left and, for
// curves that are put there, one on the right. Shows what it is given; replot() paints it.
class TrendPlot : public QwtPlot
{
    Q_OBJECT
public:
    explicit TrendPlot(QWidget *parent = nullptr);

    void setCurves(const QVector<Curve> &curves);
    void setView(const TimeView &view);
    const TimeView &view() const { return m_view; }
    void setMarkers(const Markers &markers);

    // Of the canvas, in pixels.
    int columns() const;
    qint64 timeAt(double x) const;
    double placeOf(qint64 time) const;
    ValueRange valuesBetween(Side side, double top, double bottom) const;
    bool hasScale(Side side) const;
    ValueRange values(Side side) const;

    // What is drawn, for tests and pictures.
    const QVector<TrendCurve *> &curveItems() const { return m_items; }
    const GapBands *gapBands() const { return m_gaps; }
    const EventLabels *eventLabels() const { return m_events; }

    // Not that of all labels in a row, which would make the window as wide.
    QSize minimumSizeHint() const override { return {320, 160}; }
    QSize sizeHint() const override { return {800, 400}; }

protected:
    void changeEvent(QEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void setUpAxes();
    void applyFont();
    void showZone();
    void applyColours();
    void fitTicks();

    // All items are the plot's.
    QwtPlotGrid *m_grid;
    GapBands *m_gaps;
    EventLabels *m_events;
    MarkerLines *m_markers;
    QVector<TrendCurve *> m_items;
    QVector<Curve> m_curves;
    TimeView m_view;
};
