#pragma once

#include <QKeySequence>

// The keys of the window for trends and recordings; tool tips tell them, too.
namespace TrendKeys {

inline QKeySequence trend()
{
    return int(Qt::CTRL) + int(Qt::Key_T);
}
inline QKeySequence record()
{
    return int(Qt::CTRL) + int(Qt::SHIFT) + int(Qt::Key_R);
}
inline QKeySequence open()
{
    return int(Qt::CTRL) + int(Qt::SHIFT) + int(Qt::Key_O);
}

} // namespace TrendKeys
