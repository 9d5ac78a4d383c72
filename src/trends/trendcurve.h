#pragma once

#include "trends/curve.h"

#include <qwt_plot_item.h>

// Draws the numbers of a curve: unbroken pieces as lines or steps, and a dot where a piece is one sample.
class TrendCurve : public QwtPlotItem
{
public:
    TrendCurve();

    // The colours are those for the desktop.
    void setCurve(const Curve &curve, const QPalette &desktop);
    const Curve &curve() const { return m_curve; }

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    void drawLine(QPainter *painter, const QPolygonF &points, const QRectF &area) const;

    Curve m_curve;
    QPen m_pen;
};
