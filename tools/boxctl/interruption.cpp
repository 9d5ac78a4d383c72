#include "boxctl/interruption.h"

#include <QtGlobal>

#include <csignal>

namespace {

volatile std::sig_atomic_t isEndAsked = 0;

void note(int)
{
    isEndAsked = 1;
}

} // namespace

void Interruption::prepare()
{
#ifdef Q_OS_UNIX
    struct sigaction noted = {};
    noted.sa_handler = note;
    noted.sa_flags = int(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM}) {
        sigaction(signal, &noted, nullptr);
    }
    for (const int signal : {SIGPIPE, SIGXFSZ}) {
        std::signal(signal, SIG_IGN);
    }
#else
    std::signal(SIGINT, note); // of once
    std::signal(SIGTERM, note);
#endif
}

bool Interruption::isAsked()
{
    return isEndAsked != 0;
}
