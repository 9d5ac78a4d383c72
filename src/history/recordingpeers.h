#pragma once

#include "history/point.h"
#include "history/recordingtarget.h"

#include <QSet>

#include <memory>
#include <optional>

// What the recorders of this program know of each other: one that begins or ends must not break a curve with
// which another one goes on in the same database. May be used in any thread.
class RecordingPeers
{
public:
    // Enters a recorder. An empty set is all points, of the Standard if one is named; since is its start in
    // ms since 1970 UTC.
    RecordingPeers(const RecordingTarget &target, const QSet<PointId> &points, const QString &standard,
                   qint64 since);
    ~RecordingPeers();
    RecordingPeers(const RecordingPeers &) = delete;
    RecordingPeers &operator=(const RecordingPeers &) = delete;

    // It ends: the others no longer count on it.
    void leave();
    // Since when another one has been recording the point.
    std::optional<qint64> recordingSince(const PointId &id) const;

private:
    struct Entry {
        QString target;
        QSet<PointId> points;
        QString standard;
        qint64 since;

        bool records(const PointId &id) const;
    };
    struct Entries;
    static Entries &entries();

    const std::shared_ptr<const Entry> m_own;
};
