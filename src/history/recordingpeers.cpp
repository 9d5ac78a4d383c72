#include "history/recordingpeers.h"

#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QVector>

#include <algorithm>

struct RecordingPeers::Entries {
    QMutex mutex;
    QVector<std::shared_ptr<const Entry>> all;
};

bool RecordingPeers::Entry::records(const PointId &id) const
{
    return points.isEmpty() ? standard.isEmpty() || standard == id.standard : points.contains(id);
}

RecordingPeers::Entries &RecordingPeers::entries()
{
    static Entries entries;
    return entries;
}

RecordingPeers::RecordingPeers(const RecordingTarget &target, const QSet<PointId> &points,
                               const QString &standard, qint64 since)
    : m_own(std::make_shared<const Entry>(Entry{target.kind == RecordingTarget::Kind::File
                                                    ? QFileInfo(target.file).absoluteFilePath()
                                                    : target.text(),
                                                points, standard, since}))
{
    const QMutexLocker locker(&entries().mutex);
    entries().all.append(m_own);
}

RecordingPeers::~RecordingPeers()
{
    leave();
}

void RecordingPeers::leave()
{
    const QMutexLocker locker(&entries().mutex);
    entries().all.removeOne(m_own);
}

std::optional<qint64> RecordingPeers::recordingSince(const PointId &id) const
{
    const QMutexLocker locker(&entries().mutex);
    std::optional<qint64> since;
    for (const auto &each : qAsConst(entries().all)) {
        if (each != m_own && each->target == m_own->target && each->records(id)) {
            since = std::min(each->since, since.value_or(each->since));
        }
    }
    return since;
}
