#include "trends/trendcurve.h"

#include "trends/curvestyle.h"
#include "trends/polylines.h"
#include "trends/symbolplaces.h"

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
    m_desktop = desktop;
    m_pen = CurveStyle::pen(curve.style, desktop);
    setVisible(curve.shown);
    setYAxis(curve.side == Side::Left ? QwtPlot::yLeft : QwtPlot::yRight);
}

void TrendCurve::draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &yMap,
                      const QRectF &canvasRect) const
{
    const QRectF area = canvasRect.adjusted(-beyond, -beyond, beyond, beyond);
    const bool isStep = shapeOf(m_curve.point.type) == Shape::Step;
    SymbolPlaces symbols(xMap, area, m_curve.style);
    QPointF dot(-1, -1); // the last one
    for (const QVector<QPointF> &piece : m_curve.data.pieces) {
        QPolygonF points;
        points.reserve(piece.size());
        for (const QPointF &sample : piece) {
            points.append({xMap.transform(sample.x()), yMap.transform(sample.y())});
        }
        if (points.size() > 1) {
            const QPolygonF line = isStep ? Polylines::steps(points) : points;
            const QVector<QPolygonF> parts = Polylines::cut(line, area);
            drawLine(painter, points, parts);
            symbols.addLine(line, parts);
        } else if (points.size() == 1 && area.contains(points.first())
                   && (points.first() - dot).manhattanLength() >= 1) {
            dot = points.first();
            painter->setRenderHint(QPainter::Antialiasing);
            painter->setPen(Qt::NoPen);
            painter->setBrush(m_pen.color());
            painter->drawEllipse(dot, dotRadius, dotRadius);
            symbols.addDot(dot);
        }
    }
    const QVector<QPointF> places = symbols.points();
    for (const QPointF &place : places) {
        CurveStyle::drawSymbol(painter, m_curve.style, m_desktop, place);
    }
}

void TrendCurve::drawLine(QPainter *painter, const QPolygonF &points, const QVector<QPolygonF> &parts) const
{
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
