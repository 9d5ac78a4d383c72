#pragma once

#include <QLineEdit>
#include <QPalette>

// Whether the field has the ground of its window, not that of what can be typed into.
inline bool looksReadOnly(const QLineEdit *field)
{
    return field->palette().base() == field->palette().window();
}
