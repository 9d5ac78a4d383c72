#pragma once

#include "history/thinned.h"

#include <QColor>

#include <qwt_plot_item.h>

// Shades the times of which nothing is known over the whole height, each reason with lines of its own, and
// says the reason where there is room.
class GapBands : public QwtPlotItem
{
public:
    GapBands();

    // Those of one reason that meet, be they of several curves, are one.
    void setGaps(const QVector<Thinned::Gap> &gaps);
    const QVector<Thinned::Gap> &gaps() const { return m_gaps; }
    void setColours(const QColor &text, const QColor &ground);

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    void drawBand(QPainter *painter, const QRectF &band, SampleState why) const;
    void drawWord(QPainter *painter, const QRectF &band, SampleState why) const;

    QVector<Thinned::Gap> m_gaps;
    QColor m_text;
    QColor m_ground;
};
