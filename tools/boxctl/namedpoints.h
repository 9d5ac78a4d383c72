#pragma once

#include "history/reading.h"

#include <QHash>
#include <QPair>
#include <QSet>

#include <optional>

struct MonitoringReport;

// The points that a Box has named in its reports. Whoever keeps something of each would be filled by a Box
// that names ever new ones, so there is a limit, beyond which new ones are left out.
class NamedPoints
{
public:
    static constexpr int most = 100000; // Standards and points, one of another address or type included
    static constexpr qint64 mostText = qint64(16) * 1024 * 1024; // bytes of their names, addresses and types

    // Its rows but for those that are left out; nothing if that is the Standard.
    std::optional<QVector<Reading>> take(const MonitoringReport &report);
    // Samples so far.
    qint64 leftOut() const { return m_leftOut; }

private:
    struct Standard {
        QSet<QString> points;
        QVector<Reading> last; // of its last report
    };

    bool hasRoomFor(const QString &name);

    QHash<QPair<QString, QString>, Standard> m_standards; // by project and name
    int m_count = 0;
    qint64 m_text = 0;
    bool m_isFull = false;
    qint64 m_leftOut = 0;
};
