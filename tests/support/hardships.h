#pragma once

#include <QtGlobal>

#include <csignal>
#include <sys/resource.h>
#include <unistd.h>

// What may stand in the way of a write, while the object lives.
namespace Hardships {

// Root may write everywhere, so permissions hold only for somebody else. Files made meanwhile are theirs.
class NotRoot
{
public:
    NotRoot()
        : m_changed(geteuid() == 0 && seteuid(65534) == 0)
    {
    }
    ~NotRoot()
    {
        if (m_changed && seteuid(0) != 0) {
            qFatal("can't become root again");
        }
    }
    Q_DISABLE_COPY(NotRoot)

private:
    const bool m_changed;
};

// No file grows beyond this many bytes while it lives, as on a full disk.
class FullDisk
{
public:
    explicit FullDisk(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FullDisk() { setrlimit(RLIMIT_FSIZE, &m_before); }
    Q_DISABLE_COPY(FullDisk)

private:
    rlimit m_before{};
};

} // namespace Hardships
