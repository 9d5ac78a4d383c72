#include "trends/curvestyle.h"

#include <QIcon>
#include <QPainter>
#include <QPixmap>
#include <QWidget>

namespace {

// The colours of Okabe and Ito, but for a brown in the place of a yellow that white ground swallows, and a
// green that is a little lighter on dark ground.
struct Pair {
    QRgb onLight;
    QRgb onDark;
};
constexpr Pair colours[] = {
    {0xff0072b2, 0xff56b4e9}, // blue
    {0xffd55e00, 0xffe69f00}, // orange
    {0xff009e73, 0xff00a878}, // green
    {0xffcc79a7, 0xffcc79a7}, // purple
    {0xff000000, 0xffffffff}, // black, white
    {0xff632c09, 0xfff0e442}, // brown, yellow
};
constexpr int colourCount = int(sizeof(colours) / sizeof(colours[0]));
constexpr Qt::PenStyle lines[] = {Qt::SolidLine, Qt::DashLine, Qt::DotLine, Qt::DashDotLine};
constexpr int lineCount = int(sizeof(lines) / sizeof(lines[0]));
static_assert(colourCount * lineCount == CurveStyle::count);

constexpr qreal radius = 4; // pixels, of a symbol
struct Symbol {
    int count;
    QPointF corners[12]; // of the radius 1
};
constexpr Symbol symbols[] = {
    {0, {}}, // a circle
    {4, {{-0.9, -0.9}, {0.9, -0.9}, {0.9, 0.9}, {-0.9, 0.9}}},
    {3, {{0, -1.2}, {1.2, 0.9}, {-1.2, 0.9}}},
    {4, {{0, -1.3}, {1.3, 0}, {0, 1.3}, {-1.3, 0}}},
    {12,
     {{-0.4, -1.2},
      {0.4, -1.2},
      {0.4, -0.4},
      {1.2, -0.4},
      {1.2, 0.4},
      {0.4, 0.4},
      {0.4, 1.2},
      {-0.4, 1.2},
      {-0.4, 0.4},
      {-1.2, 0.4},
      {-1.2, -0.4},
      {-0.4, -0.4}}},
    {3, {{0, 1.2}, {1.2, -0.9}, {-1.2, -0.9}}},
};
static_assert(sizeof(symbols) / sizeof(symbols[0]) == colourCount);

} // namespace

QPen CurveStyle::pen(int style, const QPalette &desktop, qreal width)
{
    const Pair &colour = colours[style % colourCount];
    const bool isDark = desktop.color(QPalette::Base).lightness() < 128;
    return {QColor(isDark ? colour.onDark : colour.onLight), width, lines[style / colourCount % lineCount],
            Qt::FlatCap, Qt::RoundJoin};
}

void CurveStyle::drawSymbol(QPainter *painter, int style, const QPalette &desktop, const QPointF &at)
{
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(QPen(desktop.color(QPalette::Base), 1)); // else it is lost upon its own curve
    painter->setBrush(pen(style, desktop).color());
    const Symbol &symbol = symbols[style % colourCount];
    if (symbol.count == 0) {
        painter->drawEllipse(at, radius, radius);
        return;
    }
    QPointF corners[12];
    for (int corner = 0; corner < symbol.count; ++corner) {
        corners[corner] = at + radius * symbol.corners[corner];
    }
    painter->drawPolygon(corners, symbol.count);
}

void CurveStyle::drawSample(QPainter *painter, int style, const QPalette &desktop, const QPointF &left)
{
    painter->save();
    painter->setPen(pen(style, desktop, 2));
    painter->drawLine(left, left + QPointF(sampleSize.width(), 0));
    drawSymbol(painter, style, desktop, left + QPointF(sampleSize.width() / 2.0, 0));
    painter->restore();
}

QIcon CurveStyle::sample(int style, const QWidget *list)
{
    QPixmap picture(sampleSize * list->devicePixelRatioF());
    picture.setDevicePixelRatio(list->devicePixelRatioF());
    picture.fill(list->palette().color(QPalette::Base));
    QPainter painter(&picture);
    drawSample(&painter, style, list->palette(), QPointF(0, sampleSize.height() / 2.0));
    return picture;
}
