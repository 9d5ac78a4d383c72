#include "boxsim/acquire/lineclaim.h"

#include <cerrno>
#include <sys/file.h>

bool claimLine(int file, QString *reason)
{
    // Not TIOCEXCL, which root passes. A file that cannot be locked is used as it is.
    if (flock(file, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK) {
        return true;
    }
    *reason = QStringLiteral("it is in use");
    return false;
}
