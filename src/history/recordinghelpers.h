#pragma once

#include "history/recordingtarget.h"

#include <QSemaphore>
#include <QThreadPool>
#include <QThreadStorage>

#include <functional>
#include <memory>

class RecordingDatabase;

// Threads that read a recording beside the one of its session, each with a connection of its own. Both end
// when they have had nothing to do for a while.
class RecordingHelpers
{
public:
    RecordingHelpers(const RecordingTarget &target, int patience);
    ~RecordingHelpers();

    // Has the work done in so many threads, or fewer; one that can't open the database leaves it to the
    // others. Gives false where the database fails, which is then opened anew the next time.
    void start(int threads, const std::function<bool(RecordingDatabase *)> &work);
    // For so many ms at most; false if the work that was started goes on. To be called until it is done.
    bool wait(int time);
    // The file or the server may be another one since: all connections are opened anew. While none works.
    void reopen() { ++m_generation; }

private:
    struct Connection;

    void run(const std::function<bool(RecordingDatabase *)> &work);

    const RecordingTarget m_target;
    const int m_patience; // ms for a locked file
    int m_generation = 0;
    int m_started = 0;
    QSemaphore m_done;
    QThreadStorage<std::shared_ptr<Connection>> m_connections; // outlives the threads
    QThreadPool m_threads;
};
