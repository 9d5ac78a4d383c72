#include "document/owneronly.h"

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

OwnerOnly::OwnerOnly()
{
#ifdef Q_OS_UNIX
    // A mask and no change of the mode afterwards, so that there is no moment at which others can open it.
    m_oldMask = umask(S_IRWXG | S_IRWXO);
#endif
}

OwnerOnly::~OwnerOnly()
{
#ifdef Q_OS_UNIX
    umask(m_oldMask);
#endif
}
