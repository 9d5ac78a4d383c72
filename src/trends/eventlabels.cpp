#include "trends/eventlabels.h"

#include "trends/curvestyle.h"

#include <QPainter>
#include <QPalette>

#include <qwt_scale_map.h>

namespace {

constexpr qreal most = 240;   // pixels of a label
constexpr qreal least = 24;   // below it a line alone shows the event
constexpr qreal margin = 3;   // around a text
constexpr int mostChars = 80; // of a label; the readout has the whole text

} // namespace

EventLabels::EventLabels()
{
    setZ(30);
}

void EventLabels::setCurves(const QVector<Curve> &curves, const QPalette &desktop)
{
    m_curves.clear();
    m_pens.clear();
    for (const Curve &curve : curves) {
        if (curve.shown && !curve.data.events.isEmpty()) {
            m_curves.append(curve);
            m_pens.append(CurveStyle::pen(curve.style, desktop, 1));
        }
    }
    m_text = desktop.color(QPalette::Text);
    m_ground = desktop.color(QPalette::Base);
}

void EventLabels::draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &,
                       const QRectF &canvasRect) const
{
    const qreal height = QFontMetricsF(painter->font()).height() + 2 * margin;
    for (int index = 0; index < m_curves.size(); ++index) {
        const QRectF row(canvasRect.left(), canvasRect.top() + 4 + index * (height + 2), canvasRect.width(),
                         height);
        drawRow(painter, xMap, row, canvasRect, index);
    }
}

void EventLabels::drawRow(QPainter *painter, const QwtScaleMap &xMap, const QRectF &row,
                          const QRectF &canvasRect, int index) const
{
    const QVector<Thinned::Event> &events = m_curves.at(index).data.events;
    const QFontMetricsF metrics(painter->font());
    for (int at = 0; at < events.size(); ++at) {
        const qreal x = xMap.transform(double(events.at(at).time));
        if (x < canvasRect.left() || x > canvasRect.right()) {
            continue;
        }
        QPen pen = m_pens.at(index);
        pen.setStyle(Qt::DotLine);
        painter->setPen(pen);
        painter->drawLine(QPointF(x, row.top()), QPointF(x, canvasRect.bottom()));
        const qreal next =
            at + 1 < events.size() ? xMap.transform(double(events.at(at + 1).time)) : canvasRect.right();
        const qreal room = qMin(most, qMin(next, canvasRect.right()) - x - 2);
        if (room < least) {
            continue;
        }
        const QString text = metrics.elidedText(events.at(at).text.left(mostChars).simplified(),
                                                Qt::ElideRight, room - 2 * margin);
        const QRectF label(x, row.top(), metrics.horizontalAdvance(text) + 2 * margin, row.height());
        painter->setPen(m_pens.at(index));
        painter->setBrush(m_ground);
        painter->drawRect(label);
        painter->setPen(m_text);
        painter->drawText(label, Qt::AlignCenter, text);
    }
}
