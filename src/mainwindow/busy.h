#pragma once

#include <QtGlobal>

// Work on a whole project: the user sees a wait cursor for as long as this lives, and at its end the memory
// that the work has freed goes back to the system. It must be gone before a message is shown.
class Busy
{
public:
    Busy();
    ~Busy();
    Q_DISABLE_COPY(Busy)
};
