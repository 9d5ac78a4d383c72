#include "boxsim/acquire/serialfile.h"

#include <cerrno>
#include <sys/file.h>
#include <termios.h>

bool claimLine(int file, QString *reason)
{
    // Not TIOCEXCL, which root passes. A file that cannot be locked is used as it is.
    if (flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) {
        return true;
    }
    *reason = QStringLiteral("it is in use");
    return false;
}

bool hasParity(int file)
{
    termios settings = {};
    return tcgetattr(file, &settings) != 0 || (settings.c_cflag & PARENB) != 0;
}
