#include "boxctl/namedpoints.h"

#include "boxctl/reportformat.h"
#include "boxlink/monitoringreport.h"

#include <QVariantList>

namespace {

// With the sizes, so that no two points have the same.
QString nameOf(const Reading &reading)
{
    return QStringLiteral("%1 %2 ").arg(reading.name.size()).arg(reading.address.size()) + reading.name
        + reading.address + reading.type;
}

// Whether a point stands where it stood in the last report: readRows() gives it the same texts then.
bool isSame(const Reading &one, const Reading &other)
{
    return one.name.constData() == other.name.constData()
        && one.address.constData() == other.address.constData()
        && one.type.constData() == other.type.constData();
}

} // namespace

std::optional<QVector<Reading>> NamedPoints::take(const MonitoringReport &report)
{
    QVariantList rows;
    for (const QJsonValue &point : report.datas) {
        if (point.isObject()) {
            rows.append(rowOf(point.toObject()));
        }
    }
    const QPair<QString, QString> key(report.projectName, report.plcName);
    auto standard = m_standards.find(key);
    if (standard == m_standards.end()) {
        if (!hasRoomFor(key.first + key.second)) {
            m_leftOut += rows.size();
            return std::nullopt;
        }
        standard = m_standards.insert(key, {});
    }
    const QVector<Reading> all = readRows(rows, standard->last);
    QVector<Reading> kept;
    kept.reserve(all.size());
    for (int place = 0; place < all.size(); ++place) {
        const Reading &reading = all.at(place);
        if (place < standard->last.size() && isSame(reading, standard->last.at(place))) {
            kept.append(reading);
            continue;
        }
        const QString name = nameOf(reading);
        if (standard->points.contains(name) || hasRoomFor(name)) {
            standard->points.insert(name);
            kept.append(reading);
        }
    }
    m_leftOut += all.size() - kept.size();
    standard->last = kept;
    return kept;
}

bool NamedPoints::hasRoomFor(const QString &name)
{
    const qint64 text = m_text + qint64(sizeof(QChar)) * name.size();
    m_isFull = m_isFull || m_count == most || text > mostText;
    if (!m_isFull) {
        ++m_count;
        m_text = text;
    }
    return !m_isFull;
}
