#include "trends/markerlines.h"

#include <QPainter>

#include <qwt_scale_map.h>

MarkerLines::MarkerLines()
{
    setZ(40);
}

void MarkerLines::setColours(const QColor &line, const QColor &ground)
{
    m_line = line;
    m_ground = ground;
}

void MarkerLines::draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &,
                       const QRectF &canvasRect) const
{
    const QFontMetricsF metrics(painter->font());
    for (int marker = 0; marker < 2; ++marker) {
        if (!m_markers.times[marker]) {
            continue;
        }
        const qreal x = xMap.transform(double(*m_markers.times[marker]));
        if (x < canvasRect.left() || x > canvasRect.right()) {
            continue;
        }
        painter->setPen(QPen(m_line, 1));
        painter->drawLine(QPointF(x, canvasRect.top()), QPointF(x, canvasRect.bottom()));
        const QString name = Markers::name(marker);
        const QSizeF size(metrics.horizontalAdvance(name) + 8, metrics.height() + 2);
        // The flags wave away from each other.
        const bool isLeft = marker == 0 && x - size.width() > canvasRect.left();
        const QRectF flag(QPointF(isLeft ? x - size.width() : x, canvasRect.bottom() - size.height()), size);
        painter->fillRect(flag, m_line);
        painter->setPen(m_ground);
        painter->drawText(flag, Qt::AlignCenter, name);
    }
}
