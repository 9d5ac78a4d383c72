#include "boxes/outcomeline.h"

#include "widgets/iconground.h"

#include <QEvent>

OutcomeLine::OutcomeLine(QWidget *parent)
    : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setTextInteractionFlags(Qt::TextSelectableByMouse);
}

void OutcomeLine::showLine(const QString &text, bool isAmiss)
{
    m_isAmiss = isAmiss;
    setColor();
    if (font().bold() != isAmiss) {
        QFont own = font();
        own.setBold(isAmiss);
        setFont(own);
    }
    setText(text);
    claimHeight();
}

void OutcomeLine::setColor()
{
    const QPalette desktop = parentWidget()->palette();
    QColor color = desktop.color(QPalette::WindowText);
    if (m_isAmiss) {
        color = isDark(desktop) ? QColor(0xff, 0xb4, 0xab) : QColor(0xb0, 0x00, 0x20);
    }
    if (palette().color(QPalette::WindowText) != color) {
        QPalette own;
        own.setColor(QPalette::WindowText, color);
        setPalette(own);
    }
}

void OutcomeLine::keepRoom(int lines)
{
    // A Chinese letter makes a line taller, also in an English text that names something Chinese.
    QString text = QStringLiteral("g\u56fd");
    text += (QLatin1Char('\n') + text).repeated(lines - 1);
    QFont bold = font();
    bold.setBold(true);
    m_room = QFontMetrics(bold).boundingRect(QRect(), Qt::AlignLeft, text).height();
    setAlignment(Qt::AlignLeft | Qt::AlignTop);
    claimHeight();
}

void OutcomeLine::resizeEvent(QResizeEvent *event)
{
    QLabel::resizeEvent(event);
    claimHeight();
}

// So that a low page scrolls: a layout takes lines away from a label that may break them.
void OutcomeLine::claimHeight()
{
    setMinimumHeight(0); // which a label counts in: it would never become lower again
    setMinimumHeight(qMax(heightForWidth(width()), m_room));
}

void OutcomeLine::changeEvent(QEvent *event)
{
    QLabel::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::ParentChange) {
        setColor();
    }
}
