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

} // namespace

QPen CurveStyle::pen(int style, const QPalette &desktop, qreal width)
{
    const Pair &colour = colours[style % colourCount];
    const bool isDark = desktop.color(QPalette::Base).lightness() < 128;
    return {QColor(isDark ? colour.onDark : colour.onLight), width, lines[style / colourCount % lineCount],
            Qt::FlatCap, Qt::RoundJoin};
}

QIcon CurveStyle::swatch(int style, const QWidget *list, const QSize &size)
{
    QPixmap picture(size * list->devicePixelRatioF());
    picture.setDevicePixelRatio(list->devicePixelRatioF());
    picture.fill(list->palette().color(QPalette::Base));
    QPainter painter(&picture);
    painter.setPen(pen(style, list->palette(), 2.5));
    painter.drawLine(QPointF(1, size.height() / 2.0), QPointF(size.width() - 1, size.height() / 2.0));
    return picture;
}
