#pragma once

#include "trends/curve.h"

#include <QPalette>
#include <QPen>

#include <qwt_plot_item.h>

// Draws the numbers of a curve: unbroken pieces as lines or steps, a dot where a piece is one sample, and a
// symbol at a few places.
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
    void drawLine(QPainter *painter, const QPolygonF &points, const QVector<QPolygonF> &parts) const;

    Curve m_curve;
    QPalette m_desktop;
    QPen m_pen;
};
