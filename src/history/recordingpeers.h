#pragma once

#include "history/point.h"
#include "history/recordingtarget.h"

#include <QSet>

#include <functional>
#include <memory>

// What the recorders of this program know of each other: one that begins or ends must not break a curve with
// which another one goes on in the same database. May be used in any thread.
class RecordingPeers
{
public:
    // Enters a recorder. An empty set is all points, of the Standard if one is named.
    RecordingPeers(const RecordingTarget &target, const QSet<PointId> &points, const QString &standard);
    ~RecordingPeers();
    RecordingPeers(const RecordingPeers &) = delete;
    RecordingPeers &operator=(const RecordingPeers &) = delete;

    // It ends: the others no longer count on it.
    void leave();
    // Whether another one is recording the point.
    bool isRecorded(const PointId &id) const;
    // Whether another one that is recording has begun with the samples of the point. Times don't tell that:
    // the clock may have been set back.
    bool hasBegun(const PointId &id) const;
    // This one has begun with them; to be called before others can find them.
    void begin(const PointId &id);
    // They are not there after all.
    void takeBack(const PointId &id);
    void takeAllBack();

private:
    struct Entry {
        QString target;
        QSet<PointId> points;
        QString standard;
        QSet<PointId> begun;

        bool records(const PointId &id) const;
    };
    struct Entries;
    static Entries &entries();
    bool isAnyOther(const std::function<bool(const Entry &)> &condition) const;

    const std::shared_ptr<Entry> m_own;
};
