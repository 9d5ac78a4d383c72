#include "widgets/quietline.h"

#include "widgets/tooltip.h"

#include <QPainter>

namespace {

constexpr int margin = 4; // pixels on the left and the right, for the ground of a highlighted line

} // namespace

QuietLine::QuietLine(QWidget *parent)
    : QWidget(parent)
{
    QFont small = font();
    small.setPointSizeF(fontInfo().pointSizeF() * 0.9);
    setFont(small);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_moment.setSingleShot(true);
    connect(&m_moment, &QTimer::timeout, this, qOverload<>(&QWidget::update));
}

void QuietLine::setText(const QString &text)
{
    if (text == m_text) {
        return;
    }
    m_text = text;
    setToolTip(plainToolTip(text));
    setAccessibleName(text);
    updateGeometry();
    update();
}

void QuietLine::highlight()
{
    m_moment.start(moment);
    update();
}

QSize QuietLine::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(m_text) + 2 * margin, fontMetrics().height() + 2};
}

QSize QuietLine::minimumSizeHint() const
{
    return {0, sizeHint().height()};
}

void QuietLine::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::WindowText));
    if (isHighlighted()) { // exchanged, so that the contrast is that of the desktop's own text
        painter.fillRect(rect(), palette().windowText());
        painter.setPen(palette().color(QPalette::Window));
    }
    const QRect place = rect().adjusted(margin, 0, -margin, 0);
    painter.drawText(place, Qt::AlignVCenter | Qt::TextSingleLine,
                     fontMetrics().elidedText(m_text, Qt::ElideMiddle, place.width()));
}
