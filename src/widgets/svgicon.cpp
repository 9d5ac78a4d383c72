#include "widgets/svgicon.h"

#include <QPalette>

QIcon svgIcon(const QString &path)
{
    QIcon icon(path);
    icon.addPixmap(icon.pixmap(92), QIcon::Normal, QIcon::Off);
    return icon;
}

bool isDark(const QPalette &desktop)
{
    return desktop.color(QPalette::Window).lightness() < 128;
}
