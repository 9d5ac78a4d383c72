#include "log/timetext.h"

#include <QDateTime>

QString timeText()
{
    return QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}
