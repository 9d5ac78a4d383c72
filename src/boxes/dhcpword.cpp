#include "boxes/dhcpword.h"

#include "boxes/boxeditdialog.h"

QString DhcpWord::toFlag(const QString &word)
{
    if (word == QLatin1String("Enable")) {
        return QStringLiteral("1");
    }
    return word == QLatin1String("Disabled") ? QStringLiteral("0") : QString();
}

QString DhcpWord::fromFlag(const QString &flag)
{
    if (flag == QLatin1String("1")) {
        return BoxEditDialog::tr("Enable");
    }
    return flag == QLatin1String("0") ? BoxEditDialog::tr("Disabled") : QString();
}
