#pragma once

#include <QtGlobal>

#include <sys/resource.h>

// Lets the process, and those that it starts, have so many files open; false if the system allows fewer.
inline bool mayOpenFiles(rlim_t count)
{
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = qMax(limit.rlim_cur, count);
    limit.rlim_max = qMax(limit.rlim_max, count); // which root may do
    return setrlimit(RLIMIT_NOFILE, &limit) == 0;
}
