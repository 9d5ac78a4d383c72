#include "history/recordingpoints.h"

#include "history/recordingdatabase.h"
#include "history/recordingnames.h"

#include <QVariant>

#include <algorithm>

// Two look-ups by the key of the samples for each point.
QString RecordingPoints::statement()
{
    return QStringLiteral(
        "SELECT id, box, project, standard, name, address, type, "
        "(SELECT min(time) FROM sample WHERE sample.point = point.id), "
        "(SELECT max(time) FROM sample WHERE sample.point = point.id) FROM point ORDER BY id");
}

bool RecordingPoints::read(RecordingDatabase *database)
{
    QVariant open;
    if (!database->readCell(QStringLiteral("SELECT count(*) FROM recording WHERE ended IS NULL"), &open)) {
        return false;
    }
    QSqlQuery query = database->prepared(statement());
    if (!RecordingNames::read(database, &m_boxNames) || !database->run(&query)) {
        return false;
    }
    m_isOpenEnded = open.toInt() > 0;
    while (query.next()) {
        const auto text = [&query](int column) { return query.value(column).toString(); };
        const Point point{{text(1), text(2), text(3), text(4)}, text(5), text(6)};
        auto place = m_places.find(point.id);
        if (place == m_places.end()) {
            place = m_places.insert(point.id, m_curves.size());
            m_curves.append({point, {}, {0, -1}, -1, m_isOpenEnded});
        }
        Curve &curve = m_curves[*place];
        curve.keys.append(query.value(0).toLongLong());
        if (query.isNull(7)) {
            continue;
        }
        const TimeRange own{query.value(7).toLongLong(), query.value(8).toLongLong()};
        const bool isFirst = curve.extent.from > curve.extent.to;
        if (isFirst || own.to > curve.extent.to) {
            curve.point = point;
        }
        curve.extent =
            isFirst ? own : TimeRange{qMin(curve.extent.from, own.from), qMax(curve.extent.to, own.to)};
        m_latest = qMax(m_latest, own.to);
    }
    return !database->hasFailed(query);
}

void RecordingPoints::setSeen(const RecordingPoints &before, qint64 now)
{
    for (Curve &curve : m_curves) {
        const Curve *const known = before.find(curve.point.id);
        curve.seen = known && known->extent.to == curve.extent.to ? known->seen : now;
    }
}

const RecordingPoints::Curve *RecordingPoints::find(const PointId &id) const
{
    const auto place = m_places.constFind(id);
    return place == m_places.constEnd() ? nullptr : &m_curves.at(*place);
}

QString RecordingPoints::boxName(const PointId &id) const
{
    return m_boxNames.value(RecordingNames::key(id.box, id.project));
}

bool RecordingPoints::isSameAs(const RecordingPoints &other) const
{
    const auto isSame = [](const Curve &a, const Curve &b) {
        return a.keys == b.keys && a.extent.from == b.extent.from && a.extent.to == b.extent.to;
    };
    return m_isOpenEnded == other.m_isOpenEnded && m_boxNames == other.m_boxNames
        && std::equal(m_curves.cbegin(), m_curves.cend(), other.m_curves.cbegin(), other.m_curves.cend(),
                      isSame);
}
