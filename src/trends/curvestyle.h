#pragma once

#include <QPen>

class QIcon;
class QPalette;
class QSize;
class QWidget;

// Colours and lines of curves. The colours can be told apart with each kind of colour blindness; where they
// are used up, the kind of line changes.
namespace CurveStyle {

constexpr int count = 24; // then they begin again

// Readable on the base of the desktop.
QPen pen(int style, const QPalette &desktop, qreal width = 1.5);

// A piece of the line, for a list.
QIcon swatch(int style, const QWidget *list, const QSize &size);

} // namespace CurveStyle
