#pragma once

#include <QWidget>

// Whether a part of the widget is within all that is around it; what lies on it is not looked at.
inline bool canBeSeen(const QWidget *widget)
{
    QRect seen = widget->rect();
    for (const QWidget *at = widget; !seen.isEmpty() && !at->isWindow(); at = at->parentWidget()) {
        seen = seen.translated(at->pos()) & at->parentWidget()->rect();
    }
    return widget->isVisible() && !seen.isEmpty();
}
