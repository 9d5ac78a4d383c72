#include "trends/readout.h"

#include "trends/curvestyle.h"
#include "trends/trendtexts.h"

#include <QEvent>
#include <QPainter>

namespace {

constexpr int margin = 6; // pixels
constexpr int swatchWidth = CurveStyle::sampleSize.width();
constexpr int mostLabel = 200; // pixels
constexpr int mostValue = 260; // pixels

} // namespace

Readout::Readout(QWidget *canvas)
    : QWidget(canvas)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    canvas->installEventFilter(this);
    resize(canvas->size());
}

void Readout::show(qint64 time, int x, const QVector<Curve> &curves)
{
    m_x = x;
    m_time = TrendTexts::ofTime(time);
    m_rows.clear();
    for (const Curve &curve : curves) {
        if (curve.shown) {
            const std::optional<ValueAt> &value = curve.at(Mark::Pointer);
            m_rows.append({curve.label, value ? TrendTexts::ofValue(*value) : QString(), curve.style});
        }
    }
    update();
}

void Readout::clear()
{
    m_x = -1;
    m_rows.clear();
    update();
}

QStringList Readout::lines() const
{
    QStringList lines;
    if (m_x >= 0) {
        lines.append(m_time);
    }
    for (const Row &row : m_rows) {
        lines.append(row.label + QLatin1Char('\t') + row.value);
    }
    return lines;
}

bool Readout::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize) {
        resize(parentWidget()->size());
    }
    return QWidget::eventFilter(watched, event);
}

void Readout::paintEvent(QPaintEvent *)
{
    if (m_x < 0) {
        return;
    }
    QPainter painter(this);
    QColor line = palette().color(QPalette::Text);
    line.setAlpha(150);
    painter.setPen(line);
    painter.drawLine(m_x, 0, m_x, height());
    drawBox(&painter);
}

// Beside the line, on the side where there is more room.
QRect Readout::place(int labelWidth, int valueWidth, int rows) const
{
    const int wide = 3 * margin + swatchWidth + labelWidth + margin + valueWidth;
    const int needed = qMax(wide, fontMetrics().horizontalAdvance(m_time) + 2 * margin);
    const QSize size(qMin(needed, width()), rows * fontMetrics().height() + 2 * margin);
    const int left = m_x < width() / 2 ? m_x + 2 * margin : m_x - 2 * margin - size.width();
    return {QPoint(qBound(0, left, width() - size.width()), qMax(0, (height() - size.height()) / 2)), size};
}

void Readout::drawBox(QPainter *painter) const
{
    const int line = fontMetrics().height();
    const int room = qMax(1, (height() - 2 * margin) / line); // lines
    const int rows = qMin(m_rows.size(), room - 1);
    int labelWidth = 0;
    int valueWidth = 0;
    // The width of a text is rounded, and down would cut it short.
    const auto widthOf = [this](const QString &text) { return fontMetrics().horizontalAdvance(text) + 1; };
    for (int row = 0; row < rows; ++row) {
        labelWidth = qMax(labelWidth, widthOf(m_rows.at(row).label));
        valueWidth = qMax(valueWidth, widthOf(m_rows.at(row).value));
    }
    labelWidth = qMin(labelWidth, mostLabel);
    valueWidth = qMin(valueWidth, mostValue);
    const QRect box = place(labelWidth, valueWidth, rows + 1);
    QColor ground = palette().color(QPalette::Base);
    ground.setAlpha(235);
    painter->setBrush(ground);
    painter->drawRect(box.adjusted(0, 0, -1, -1));

    QRect at(box.left() + margin, box.top() + margin, box.width() - 2 * margin, line);
    painter->setPen(palette().color(QPalette::Text));
    painter->drawText(at, Qt::AlignLeft | Qt::AlignVCenter, m_time);
    for (int row = 0; row < rows; ++row) {
        at.translate(0, line);
        const Row &shown = m_rows.at(row);
        CurveStyle::drawSample(painter, shown.style, palette(), QPointF(at.left(), at.center().y()));
        painter->setPen(palette().color(QPalette::Text));
        painter->drawText(at.adjusted(swatchWidth + margin, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                          fontMetrics().elidedText(shown.label, Qt::ElideMiddle, labelWidth));
        painter->drawText(at, Qt::AlignRight | Qt::AlignVCenter,
                          fontMetrics().elidedText(shown.value, Qt::ElideRight, valueWidth));
    }
}
