#pragma once

#include <QPen>
#include <QSize>

class QIcon;
class QPainter;
class QPalette;
class QWidget;

// Colours, symbols and lines of curves. The colours can be told apart with each kind of colour blindness, and
// each has a symbol of its own, which tells it without any; where they are used up, the kind of line changes.
namespace CurveStyle {

constexpr int count = 24;           // then they begin again
constexpr QSize sampleSize{40, 12}; // pixels

// Readable on the base of the desktop.
QPen pen(int style, const QPalette &desktop, qreal width = 1.5);

void drawSymbol(QPainter *painter, int style, const QPalette &desktop, const QPointF &at);

// A piece of the line with its symbol, for who lists curves.
void drawSample(QPainter *painter, int style, const QPalette &desktop, const QPointF &left);
QIcon sample(int style, const QWidget *list);

} // namespace CurveStyle
