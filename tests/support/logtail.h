#pragma once

#include <QCoreApplication>
#include <QFile>
#include <QString>
#include <QStringList>

// What one class writes to the activity log from here on. Programs of one folder share the log, so the lines
// of other classes are left out; a class that several of them make objects of needs a program with OWN_LOG.
// An empty name stands for all classes.
class LogTail
{
public:
    explicit LogTail(QString className)
        : m_className(std::move(className))
        , m_start(QFile(path()).size())
    {
    }

    // The events without their dates, in order.
    QStringList events() const
    {
        QFile file(path());
        if (!file.open(QIODevice::ReadOnly) || !file.seek(m_start)) {
            return {};
        }
        QStringList events;
        const int dateLength = int(qstrlen("yyyy-MM-dd HH:mm:ss: "));
        for (const QString &line :
             QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
            if (line.midRef(dateLength).startsWith(m_className)) {
                events.append(line.mid(dateLength));
            }
        }
        return events;
    }

private:
    static QString path() { return QCoreApplication::applicationDirPath() + "/MARLINLOG.log"; }

    QString m_className;
    qint64 m_start;
};
