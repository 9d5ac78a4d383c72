#include "trends/trendcurve.h"

#include "trends/curvestyle.h"
#include "trends/polylines.h"

#include <QPainter>

#include <qwt_painter.h>
#include <qwt_plot.h>
#include <qwt_scale_map.h>

namespace {

constexpr qreal dotRadius = 2.5; // pixels
constexpr qreal beyond = 2;      // pixels: a line at the edge is drawn whole

} // namespace

TrendCurve::TrendCurve()
{
    setZ(20);
}

void TrendCurve::setCurve(const Curve &curve, const QPalette &desktop)
{
    m_curve = curve;
    m_pen = CurveStyle::pen(curve.style, desktop);
    setVisible(curve.shown);
    setYAxis(curve.side == Side::Left ? QwtPlot::yLeft : QwtPlot::yRight);
}

void TrendCurve::draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                      const QRectF &canvasRect) const
{
    const QRectF area = canvasRect.adjusted(-beyond, -beyond, beyond, beyond);
    QPointF dot(-1, -1); // the last one
    for (const QVector<QPointF> &piece : m_curve.data.pieces) {
        QPolygonF points;
        points.reserve(piece.size());
        for (const QPointF &sample : piece) {
            points.append({xMap.transform(sample.x()), yMap.transform(sample.y())});
        }
        if (points.size() > 1) {
            drawLine(painter, points, area);
        } else if (points.size() == 1 && area.contains(points.first())
                   && (points.first() - dot).manhattanLength() >= 1) {
            dot = points.first();
            painter->setRenderHint(QPainter::Antialiasing);
            painter->setPen(Qt::NoPen);
            painter->setBrush(m_pen.color());
            painter->drawEllipse(dot, dotRadius, dotRadius);
        }
    }
}

void TrendCurve::drawLine(QPainter *painter, const QPolygonF &points, const QRectF &area) const
{
    const bool isStep = shapeOf(m_curve.point.type) == Shape::Step;
    const auto parts = Polylines::cut(isStep ? Polylines::steps(points) : points, area);
    QPen pen = m_pen;
    // Such a line is as clear without what makes it smooth, and drawn ten times as fast.
    const bool isDense = Polylines::isDense(points, parts);
    painter->setRenderHint(QPainter::Antialiasing, !isDense);
    if (isDense) {
        pen.setWidthF(1);
    }
    painter->setPen(pen);
    painter->setBrush(Qt::NoBrush);
    for (const QPolygonF &part : parts) {
        QwtPainter::drawPolyline(painter, part);
    }
}
