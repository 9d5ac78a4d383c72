#include "widgets/iconground.h"

#include <QApplication>
#include <QPalette>

IconGround IconGround::of(const QPalette &desktop)
{
    return isDark(desktop) ? IconGround{QColor(0xf5, 0xf9, 0xfc), QColor(0x1e, 0x1e, 0x1e)}
                           : IconGround{QColor(0x0a, 0x35, 0x56), QColor(0xff, 0xff, 0xff)};
}

void IconGround::useInMenus(const QPalette &desktop)
{
    const IconGround colours = of(desktop);
    QPalette palette = QApplication::palette("QMenu");
    palette.setColor(QPalette::Highlight, colours.ground);
    palette.setColor(QPalette::HighlightedText, colours.text);
    QApplication::setPalette(palette, "QMenu");
}

bool isDark(const QPalette &desktop)
{
    return desktop.color(QPalette::Window).lightness() < 128;
}
