#pragma once

#include <QKeySequence>

// The keys of the window for trends and recordings; tool tips tell them, too.
namespace TrendKeys {

inline QKeySequence trend()
{
    return Qt::CTRL + Qt::Key_T;
}
inline QKeySequence record()
{
    return Qt::CTRL + Qt::SHIFT + Qt::Key_R;
}
inline QKeySequence open()
{
    return Qt::CTRL + Qt::SHIFT + Qt::Key_O;
}

} // namespace TrendKeys
