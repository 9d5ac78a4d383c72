#include "log/timetext.h"

#include <QDateTime>

QString timeText()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

QString zonedTimeText(qint64 time)
{
    const QDateTime local = QDateTime::fromMSecsSinceEpoch(time);
    const QString text = local.toOffsetFromUtc(local.offsetFromUtc()).toString(Qt::ISODateWithMs);
    return text.endsWith(QLatin1Char('Z')) ? text.chopped(1) + QLatin1String("+00:00") : text;
}
