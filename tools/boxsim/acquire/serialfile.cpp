#include "boxsim/acquire/serialfile.h"

#ifdef Q_OS_UNIX

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <termios.h>
#include <unistd.h>

bool SerialFile::open(const QString &path, QString *reason)
{
    close();
    m_file = ::open(QFile::encodeName(path).constData(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    // Not TIOCEXCL alone, which root passes. A file that cannot be locked is used as it is.
    if (m_file >= 0 && (flock(m_file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK)) {
        return true;
    }
    const int error = errno;
    const bool isInUse = error == EWOULDBLOCK || error == EBUSY;
    *reason = isInUse ? QStringLiteral("it is in use") : qt_error_string(error);
    close();
    return false;
}

void SerialFile::close()
{
    if (m_file >= 0) {
        ::close(m_file);
        m_file = -1;
    }
}

bool SerialFile::hasParity() const
{
    termios settings = {};
    return tcgetattr(m_file, &settings) != 0 || (settings.c_cflag & PARENB) != 0;
}

#else

// Such a system opens no line twice, and refuses a parity that there is not.
bool SerialFile::open(const QString &, QString *)
{
    return true;
}

void SerialFile::close() {}

bool SerialFile::hasParity() const
{
    return true;
}

#endif
