#pragma once

#include "trends/curve.h"

#include <QColor>

#include <qwt_plot_item.h>

// Draws the texts of points as labels at the times from which they hold, or at the left edge if that is
// earlier, each curve in a row of its own. A label is cut to the room up to the next one.
class EventLabels : public QwtPlotItem
{
public:
    EventLabels();

    // Of curves that are shown.
    void setCurves(const QVector<Curve> &curves, const QPalette &desktop);
    const QVector<Curve> &curves() const { return m_curves; }

    void draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
              const QRectF &canvasRect) const override;

private:
    void drawRow(QPainter *painter, const QwtScaleMap &xMap, const QRectF &row, const QRectF &canvasRect,
                 int index) const;
    void drawLabel(QPainter *painter, const QRectF &place, const QString &text, int index) const;

    QVector<Curve> m_curves; // with texts
    QVector<QPen> m_pens;
    QColor m_text;
    QColor m_ground;
};
