#include "widgets/unitmark.h"

#include <QEvent>
#include <QLineEdit>
#include <QPainter>

UnitMark::UnitMark(const QString &unit, QLineEdit *edit)
    : QWidget(edit)
    , m_edit(edit)
    , m_unit(unit)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    edit->installEventFilter(this);
    place();
}

void UnitMark::place()
{
    constexpr int gap = 4; // pixels
    const int width = fontMetrics().horizontalAdvance(m_unit) + gap;
    setGeometry(m_edit->width() - width - gap, 0, width, m_edit->height());
    const QMargins margins(0, 0, width + gap, 0);
    if (m_edit->textMargins() != margins) {
        m_edit->setTextMargins(margins);
    }
}

bool UnitMark::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Resize || event->type() == QEvent::FontChange) {
        place();
    }
    return QWidget::eventFilter(watched, event);
}

void UnitMark::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    painter.setPen(palette().color(QPalette::Text));
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, m_unit);
}
