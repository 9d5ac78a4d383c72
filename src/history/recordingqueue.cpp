#include "history/recordingqueue.h"

#include <QDeadlineTimer>
#include <QMutexLocker>

#include <limits>

namespace {

qint64 bytesOf(const QString &text)
{
    return text.isNull() ? 0 : qint64(sizeof(QString::Data)) + qint64(sizeof(QChar)) * text.size();
}

// Without the texts that it shares with the rows before it.
qint64 bytesOf(const Readings &report, const QVector<Reading> &before)
{
    qint64 bytes = qint64(sizeof(RecordingQueue::Entry)) + report.rows.size() * qint64(sizeof(Reading));
    for (int row = 0; row < report.rows.size(); ++row) {
        for (QString Reading::*const text :
             {&Reading::name, &Reading::address, &Reading::type, &Reading::text}) {
            const QString &own = report.rows.at(row).*text;
            const bool isShared =
                row < before.size() && (before.at(row).*text).constData() == own.constData();
            bytes += isShared ? 0 : bytesOf(own);
        }
    }
    return bytes;
}

} // namespace

RecordingQueue::RecordingQueue(const QSet<PointId> &points, qint64 limit)
    : m_limit(limit)
{
    for (const PointId &point : points) {
        m_wanted[{point.box, point.project, point.standard, {}}].insert(point.name);
    }
}

void RecordingQueue::add(const Readings &given)
{
    const PointId standard{given.box, given.project, given.standard, {}};
    if (!m_wanted.isEmpty() && !m_wanted.contains(standard)) {
        return;
    }
    const Readings report = wanted(given);
    const qint64 bytes = bytesOf(report, m_before.value(standard));
    const QMutexLocker locker(&m_mutex);
    if (m_stopTime >= 0) {
        return;
    }
    // One larger than the limit is taken when there is nothing else.
    if (m_bytes > 0 && m_bytes + bytes > m_limit) {
        m_dropped += report.rows.size();
        if (!m_droppedFrom.contains(standard)) {
            m_droppedFrom.insert(standard, report.time);
        }
        return;
    }
    const auto dropped = m_droppedFrom.find(standard);
    if (dropped != m_droppedFrom.end()) {
        append(Entry::Kind::Dropped, {*dropped, report.box, report.project, report.standard, {}}, 0);
        m_droppedFrom.erase(dropped);
    }
    append(Entry::Kind::Report, report, bytes);
    m_before.insert(standard, report.rows);
    if (m_rows >= m_wantedRows) {
        m_changed.wakeAll();
    }
}

void RecordingQueue::endSession(const QString &box, qint64 time)
{
    const QMutexLocker locker(&m_mutex);
    if (m_stopTime < 0) {
        append(Entry::Kind::SessionEnd, {time, box, {}, {}, {}}, 0);
    }
}

void RecordingQueue::stop(qint64 time)
{
    const QMutexLocker locker(&m_mutex);
    if (m_stopTime >= 0) {
        return;
    }
    for (auto it = m_droppedFrom.cbegin(); it != m_droppedFrom.cend(); ++it) {
        append(Entry::Kind::Dropped, {*it, it.key().box, it.key().project, it.key().standard, {}}, 0);
    }
    m_droppedFrom.clear();
    m_stopTime = time;
    m_changed.wakeAll();
}

bool RecordingQueue::wait(int ms, int rows)
{
    const QDeadlineTimer deadline(ms);
    QMutexLocker locker(&m_mutex);
    m_wantedRows = rows;
    while (m_stopTime < 0 && m_rows < rows && m_changed.wait(&m_mutex, deadline)) {}
    return m_stopTime >= 0;
}

bool RecordingQueue::waitForStop(int ms)
{
    return wait(ms, std::numeric_limits<int>::max());
}

qint64 RecordingQueue::stopTime() const
{
    const QMutexLocker locker(&m_mutex);
    return m_stopTime;
}

QVector<RecordingQueue::Entry> RecordingQueue::take(int rows)
{
    const QMutexLocker locker(&m_mutex);
    int count = 0;
    int taken = 0;
    while (count < m_entries.size() && taken < rows) {
        taken += m_entries.at(count).readings.rows.size();
        m_takenBytes += m_entries.at(count).bytes;
        ++count;
    }
    const QVector<Entry> entries = m_entries.mid(0, count);
    m_entries.remove(0, count);
    m_rows -= taken;
    return entries;
}

void RecordingQueue::release()
{
    const QMutexLocker locker(&m_mutex);
    m_bytes -= m_takenBytes;
    m_takenBytes = 0;
}

qint64 RecordingQueue::giveUp()
{
    const QMutexLocker locker(&m_mutex);
    const qint64 rows = m_rows;
    m_dropped += rows;
    m_entries.clear();
    m_rows = 0;
    return rows;
}

qint64 RecordingQueue::dropped() const
{
    const QMutexLocker locker(&m_mutex);
    return m_dropped;
}

void RecordingQueue::append(Entry::Kind kind, const Readings &readings, qint64 bytes)
{
    m_entries.append({kind, readings, bytes});
    m_rows += readings.rows.size();
    m_bytes += bytes;
}

// An empty report remains one: the points that it lacks have vanished.
Readings RecordingQueue::wanted(const Readings &report) const
{
    if (m_wanted.isEmpty()) {
        return report;
    }
    const QSet<QString> names = m_wanted.value({report.box, report.project, report.standard, {}});
    Readings kept{report.time, report.box, report.project, report.standard, {}, report.boxName};
    for (const Reading &reading : report.rows) {
        if (names.contains(reading.name)) {
            kept.rows.append(reading);
        }
    }
    return kept;
}
