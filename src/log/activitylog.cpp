#include "log/activitylog.h"

#include "log/timetext.h"

#include <QCoreApplication>
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
    stream << timeText() << QStringLiteral(": ") << message << '\n';
}
