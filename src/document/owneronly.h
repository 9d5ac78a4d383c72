#pragma once

#include <QtGlobal>

// While one lives, files that this process makes are for their owner alone, on systems that have modes: a
// project holds passwords and keys. A file that is there already keeps its mode.
class OwnerOnly
{
public:
    OwnerOnly();
    ~OwnerOnly();
    Q_DISABLE_COPY(OwnerOnly)

private:
    unsigned m_oldMask = 0;
};
