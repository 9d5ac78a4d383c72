#include "widgets/combobox.h"

#include <QStylePainter>
#include <QWheelEvent>

ComboBox::ComboBox(QWidget *parent)
    : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

// Qt 5.15 leaves the placeholder out where the list can't be edited.
void ComboBox::paintEvent(QPaintEvent *event)
{
    if (currentIndex() >= 0 || placeholderText().isEmpty()) {
        QComboBox::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    QStyleOptionComboBox option;
    initStyleOption(&option);
    option.currentText = placeholderText();
    painter.drawComplexControl(QStyle::CC_ComboBox, option);
    painter.drawControl(QStyle::CE_ComboBoxLabel, option);
}

void ComboBox::wheelEvent(QWheelEvent *event)
{
    if (hasFocus()) {
        QComboBox::wheelEvent(event);
    } else {
        event->ignore(); // goes to what scrolls
    }
}
