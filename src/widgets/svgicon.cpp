#include "widgets/svgicon.h"

QIcon svgIcon(const QString &path)
{
    QIcon icon(path);
    icon.addPixmap(icon.pixmap(92), QIcon::Normal, QIcon::Off);
    return icon;
}
