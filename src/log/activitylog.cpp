#include "log/activitylog.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QFile>
#include <QTextStream>

void logToFile(const QString &message)
{
    QFile file(QCoreApplication::applicationDirPath() + QStringLiteral("/MARLINLOG.log"));
    if (!file.open(QIODevice::Append | QIODevice::Text)) {
        return;
    }
    QTextStream stream(&file);
    stream.setCodec("UTF-8");
    stream << QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))
           << QStringLiteral(": ") << message << '\n';
}
