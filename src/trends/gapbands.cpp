#include "trends/gapbands.h"

#include "trends/polylines.h"
#include "trends/trendtexts.h"

#include <QPainter>

#include <qwt_scale_map.h>

#include <algorithm>
#include <tuple>

namespace {

struct Hatch {
    bool rising;
    bool falling;
    qreal distance; // pixels
};

Hatch hatchOf(SampleState why)
{
    switch (why) {
    case SampleState::NotValid:
        return {true, false, 8};
    case SampleState::NoNumber:
        return {false, true, 8};
    case SampleState::NoReport:
        return {true, true, 12};
    case SampleState::Dropped:
        return {true, true, 5};
    case SampleState::Ended:
    case SampleState::Valid:
        break;
    }
    return {true, false, 4};
}

QColor faded(QColor colour, int alpha)
{
    colour.setAlpha(alpha);
    return colour;
}

auto tied(const Thinned::Gap &gap)
{
    return std::make_tuple(int(gap.why), gap.range.from);
}

} // namespace

GapBands::GapBands()
{
    setZ(5); // below the grid and the curves
}

void GapBands::setGaps(const QVector<Thinned::Gap> &gaps)
{
    QVector<Thinned::Gap> sorted = gaps;
    std::sort(sorted.begin(), sorted.end(), [](const auto &a, const auto &b) { return tied(a) < tied(b); });
    m_gaps.clear();
    for (const Thinned::Gap &gap : qAsConst(sorted)) {
        if (!m_gaps.isEmpty() && m_gaps.last().why == gap.why && gap.range.from <= m_gaps.last().range.to) {
            m_gaps.last().range.to = qMax(m_gaps.last().range.to, gap.range.to);
        } else {
            m_gaps.append(gap);
        }
    }
}

void GapBands::setColours(const QColor &text, const QColor &ground)
{
    m_text = text;
    m_ground = ground;
}

void GapBands::draw(QPainter *painter, const QwtScaleMap &xMap, const QwtScaleMap &,
                    const QRectF &canvasRect) const
{
    painter->setRenderHint(QPainter::Antialiasing);
    int lastLeft = -1;
    int lastRight = -1;
    for (const Thinned::Gap &gap : m_gaps) {
        const qreal left = qMax(canvasRect.left(), xMap.transform(double(gap.range.from)));
        const qreal right = qMin(canvasRect.right(), xMap.transform(double(gap.range.to)));
        const bool isSeen = right >= canvasRect.left() && left <= canvasRect.right();
        // Of many in one column of pixels one is enough.
        if (!isSeen || (int(left) == lastLeft && int(right) == lastRight)) {
            continue;
        }
        lastLeft = int(left);
        lastRight = int(right);
        drawBand(painter, QRectF(left, canvasRect.top(), qMax<qreal>(1, right - left), canvasRect.height()),
                 gap.why);
    }
}

void GapBands::drawBand(QPainter *painter, const QRectF &band, SampleState why) const
{
    painter->fillRect(band, faded(m_text, 20));
    painter->setPen(QPen(faded(m_text, 70), 0.8));
    const Hatch hatch = hatchOf(why);
    if (hatch.rising) {
        painter->drawLines(Polylines::hatching(band, hatch.distance, true));
    }
    if (hatch.falling) {
        painter->drawLines(Polylines::hatching(band, hatch.distance, false));
    }
    drawWord(painter, band, why);
}

void GapBands::drawWord(QPainter *painter, const QRectF &band, SampleState why) const
{
    const QString word = TrendTexts::ofBreak(why);
    const QFontMetricsF metrics(painter->font());
    QSizeF size(metrics.horizontalAdvance(word) + 8, metrics.height() + 2);
    const bool isUpright = size.width() > band.width();
    if (isUpright ? size.height() > band.width() || size.width() > band.height() / 2
                  : size.height() > band.height()) {
        return;
    }
    painter->save();
    painter->translate(band.center().x(), band.bottom() - 6 - (isUpright ? size.width() : size.height()) / 2);
    if (isUpright) {
        painter->rotate(-90);
    }
    const QRectF place(QPointF(-size.width() / 2, -size.height() / 2), size);
    painter->fillRect(place, m_ground);
    painter->setPen(m_text);
    painter->drawText(place, Qt::AlignCenter, word);
    painter->restore();
}
