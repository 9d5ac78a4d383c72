#include "history/recordingpeers.h"

#include <QFileInfo>
#include <QMutex>
#include <QMutexLocker>
#include <QVector>

#include <algorithm>

struct RecordingPeers::Entries {
    QMutex mutex;
    QVector<std::shared_ptr<Entry>> all;
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
                               const QString &standard)
    : m_own(std::make_shared<Entry>(Entry{target.kind == RecordingTarget::Kind::File
                                              ? QFileInfo(target.file).absoluteFilePath()
                                              : target.text(),
                                          points,
                                          standard,
                                          {}}))
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

bool RecordingPeers::isAnyOther(const std::function<bool(const Entry &)> &condition) const
{
    const QMutexLocker locker(&entries().mutex);
    const auto &all = entries().all;
    return std::any_of(all.cbegin(), all.cend(), [&](const std::shared_ptr<Entry> &each) {
        return each != m_own && each->target == m_own->target && condition(*each);
    });
}

bool RecordingPeers::isRecorded(const PointId &id) const
{
    return isAnyOther([&id](const Entry &each) { return each.records(id); });
}

bool RecordingPeers::hasBegun(const PointId &id) const
{
    return isAnyOther([&id](const Entry &each) { return each.begun.contains(id); });
}

void RecordingPeers::begin(const PointId &id)
{
    const QMutexLocker locker(&entries().mutex);
    m_own->begun.insert(id);
}

void RecordingPeers::takeBack(const PointId &id)
{
    const QMutexLocker locker(&entries().mutex);
    m_own->begun.remove(id);
}

void RecordingPeers::takeAllBack()
{
    const QMutexLocker locker(&entries().mutex);
    m_own->begun.clear();
}
