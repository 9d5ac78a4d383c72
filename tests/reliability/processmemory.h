#pragma once

#include <QFile>

#ifdef Q_OS_LINUX
#include <unistd.h>
#endif

// Resident size of this process in bytes; 0 where the system does not tell.
inline qint64 residentSize()
{
#ifdef Q_OS_LINUX
    QFile file("/proc/self/statm");
    if (file.open(QIODevice::ReadOnly)) {
        return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
    }
#endif
    return 0;
}
