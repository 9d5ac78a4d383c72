#include "boxctl/outputqueue.h"

#include "boxctl/output.h"

namespace {

constexpr int piece = 64 * 1024; // bytes
constexpr int patience = 2000;   // ms for each piece at the end

} // namespace

OutputQueue::OutputQueue(QObject *parent)
    : QThread(parent)
{
}

OutputQueue::~OutputQueue()
{
    finish();
}

bool OutputQueue::add(const QByteArray &lines)
{
    const QMutexLocker locker(&m_mutex);
    if (m_hasFailed) {
        return true;
    }
    if (m_unwritten + lines.size() > limit) {
        ++m_dropped;
        return false;
    }
    m_waiting += lines;
    m_unwritten += lines.size();
    m_changed.wakeAll();
    return true;
}

bool OutputQueue::finish()
{
    QMutexLocker locker(&m_mutex);
    m_isEnding = true;
    m_changed.wakeAll();
    while (isRunning() && m_unwritten > 0) {
        const qint64 before = m_unwritten;
        if (!m_changed.wait(&m_mutex, patience) && m_unwritten == before) {
            return false;
        }
    }
    locker.unlock();
    wait();
    return true;
}

void OutputQueue::run()
{
    QMutexLocker locker(&m_mutex);
    while (!m_hasFailed) {
        while (m_waiting.isEmpty() && !m_isEnding) {
            m_changed.wait(&m_mutex);
        }
        if (m_waiting.isEmpty()) {
            return;
        }
        const QByteArray lines = std::exchange(m_waiting, QByteArray());
        for (int begin = 0; begin < lines.size() && !m_hasFailed; begin += piece) {
            const int size = qMin(piece, lines.size() - begin);
            locker.unlock();
            const bool isWritten = Output::bytes(lines.constData() + begin, size);
            locker.relock();
            m_hasFailed = !isWritten;
            m_unwritten -= size;
            m_changed.wakeAll();
        }
    }
    m_waiting.clear();
    m_unwritten = 0;
    m_changed.wakeAll();
    locker.unlock();
    emit failed();
}
