#include "widgets/showonly.h"

#include <QEvent>
#include <QLineEdit>
#include <QPalette>

void ShowOnly::make(QLineEdit *field)
{
    field->setReadOnly(true);
    new ShowOnly(field);
}

ShowOnly::ShowOnly(QLineEdit *field)
    : QObject(field)
    , m_field(field)
{
    setGround();
    field->installEventFilter(this);
}

void ShowOnly::setGround()
{
    const QPalette shown = m_field->palette();
    QPalette own; // the rest goes on to follow the desktop
    bool isOther = false;
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        const QBrush &window = shown.brush(group, QPalette::Window);
        own.setBrush(group, QPalette::Base, window);
        isOther |= shown.brush(group, QPalette::Base) != window;
    }
    if (isOther) {
        m_field->setPalette(own);
    }
}

bool ShowOnly::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::PaletteChange) {
        setGround();
    }
    return QObject::eventFilter(watched, event);
}
