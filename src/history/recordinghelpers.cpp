#include "history/recordinghelpers.h"

#include "history/recordingdatabase.h"

#include <QThread>

namespace {

constexpr int most = 3; // as much as a disk and a server are fit for

} // namespace

struct RecordingHelpers::Connection {
    explicit Connection(const RecordingTarget &target)
        : database(target)
    {
    }

    RecordingDatabase database;
    int generation = 0;
};

RecordingHelpers::RecordingHelpers(const RecordingTarget &target, int patience)
    : m_target(target)
    , m_patience(patience)
{
    m_threads.setMaxThreadCount(qBound(0, QThread::idealThreadCount() - 1, most));
}

RecordingHelpers::~RecordingHelpers() = default;

void RecordingHelpers::start(int threads, const std::function<bool(RecordingDatabase *)> &work)
{
    m_started = qBound(0, threads, m_threads.maxThreadCount());
    for (int thread = 0; thread < m_started; ++thread) {
        m_threads.start([this, work] {
            run(work);
            m_done.release();
        });
    }
}

bool RecordingHelpers::wait(int time)
{
    // The pool's own waiting would end its threads, and with them the connections.
    return m_done.tryAcquire(m_started, time);
}

void RecordingHelpers::run(const std::function<bool(RecordingDatabase *)> &work)
{
    std::shared_ptr<Connection> &connection = m_connections.localData();
    if (!connection) {
        connection = std::make_shared<Connection>(m_target);
        connection->database.setPatience(m_patience);
    }
    RecordingDatabase &database = connection->database;
    if (connection->generation != m_generation) {
        database.close();
    }
    connection->generation = m_generation;
    const bool isOpen = database.isOpen() || database.open(RecordingDatabase::Access::Read);
    if (isOpen && !work(&database)) {
        database.close();
    }
}
