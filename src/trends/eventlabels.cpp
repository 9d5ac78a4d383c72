#include "trends/eventlabels.h"

#include "trends/curvestyle.h"
#include "trends/trendtexts.h"

#include <QPainter>
#include <QPalette>

#include <qwt_scale_map.h>

#include <algorithm>

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
    const auto placeFrom = [&](qreal left, int next) {
        const qreal end =
            next < events.size() ? xMap.transform(double(events.at(next).time)) : canvasRect.right();
        return QRectF(left, row.top(), qMin(most, qMin(end, canvasRect.right()) - left - 2), row.height());
    };
    for (int at = 0; at < events.size(); ++at) {
        const qreal x = xMap.transform(double(events.at(at).time));
        if (x < canvasRect.left()) {
            continue;
        }
        if (x > canvasRect.right()) {
            break;
        }
        QPen pen = m_pens.at(index);
        pen.setStyle(Qt::DotLine);
        painter->setPen(pen);
        painter->drawLine(QPointF(x, row.top()), QPointF(x, canvasRect.bottom()));
        drawLabel(painter, placeFrom(x, at + 1), events.at(at).text, index);
    }
    // The answer begins within the first pixels.
    const Curve &curve = m_curves.at(index);
    const qint64 left = qRound64(xMap.invTransform(canvasRect.left()));
    const qint64 first = qRound64(xMap.invTransform(canvasRect.left() + 2));
    const qint64 edge = curve.answered.from <= first ? qMax(left, curve.answered.from) : left;
    const auto next = std::find_if(events.cbegin(), events.cend(),
                                   [edge](const Thinned::Event &event) { return event.time >= edge; });
    const ValueAt held = curve.drawnAt(edge);
    if (held.kind == ValueAt::Kind::Text && (next == events.cend() || next->time > edge)) {
        drawLabel(painter, placeFrom(canvasRect.left(), int(next - events.cbegin())), held.text, index);
    }
}

void EventLabels::drawLabel(QPainter *painter, const QRectF &place, const QString &text, int index) const
{
    if (place.width() < least) {
        return;
    }
    const QFontMetricsF metrics(painter->font());
    const QString shown = metrics.elidedText(TrendTexts::ofText(text).left(mostChars), Qt::ElideRight,
                                             place.width() - 2 * margin);
    QRectF label = place;
    label.setWidth(metrics.horizontalAdvance(shown) + 2 * margin);
    painter->setPen(m_pens.at(index));
    painter->setBrush(m_ground);
    painter->drawRect(label);
    painter->setPen(m_text);
    painter->drawText(label, Qt::AlignCenter, shown);
}
