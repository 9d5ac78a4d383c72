#include "history/recordingkeys.h"

#include "history/recordingdatabase.h"

#include <QVariant>

#include <algorithm>

namespace {

constexpr int pointsAtOnce = 100; // of one INSERT; older SQLites take 999 values

// Tells the points of a Standard apart.
QString formOf(const QString &name, const QString &address, const QString &type)
{
    return name + QChar(0) + address + QChar(0) + type;
}

PointId standardOf(PointId id)
{
    id.name.clear();
    return id;
}

QString insertStatement(int points)
{
    QStringList places;
    for (int point = 0; point < points; ++point) {
        places.append(QStringLiteral("(?, ?, ?, ?, ?, ?)"));
    }
    // Another recorder may have made it a moment ago.
    return QStringLiteral("INSERT INTO point (box, project, standard, name, address, type) VALUES ")
        + places.join(QLatin1String(", ")) + QStringLiteral(" ON CONFLICT DO NOTHING");
}

} // namespace

RecordingKeys::RecordingKeys(RecordingDatabase *database)
    : m_database(database)
{
}

bool RecordingKeys::find(const QVector<int> &numbers, const QVector<RecordingRows::Recorded> &points)
{
    while (m_keys.size() < points.size()) {
        m_keys.append(-1);
    }
    QHash<PointId, QVector<int>> standards;
    for (const int number : numbers) {
        standards[standardOf(points.at(number).point.id)].append(number);
    }
    for (auto each = standards.cbegin(); each != standards.cend(); ++each) {
        if (!findOfStandard(each.key(), *each, points)) {
            return false;
        }
    }
    return true;
}

std::optional<qint64> RecordingKeys::latest(const PointId &id) const
{
    const auto found = m_latest.constFind(id);
    return found == m_latest.constEnd() ? std::nullopt : std::make_optional(*found);
}

void RecordingKeys::forget()
{
    m_keys.clear();
    m_latest.clear();
}

bool RecordingKeys::findOfStandard(const PointId &standard, const QVector<int> &numbers,
                                   const QVector<RecordingRows::Recorded> &points)
{
    const auto isMissing = [this](int number) { return m_keys.at(number) < 0; };
    if (!read(standard, numbers, points)) {
        return false;
    }
    QVector<int> missing;
    std::copy_if(numbers.cbegin(), numbers.cend(), std::back_inserter(missing), isMissing);
    return missing.isEmpty()
        || (insert(missing, points) && read(standard, missing, points)
            && std::none_of(missing.cbegin(), missing.cend(), isMissing));
}

bool RecordingKeys::read(const PointId &standard, const QVector<int> &numbers,
                         const QVector<RecordingRows::Recorded> &points)
{
    QMultiHash<QString, int> forms;
    QMultiHash<QString, PointId> names;
    for (const int number : numbers) {
        const Point &point = points.at(number).point;
        const QString name = RecordingDatabase::storable(point.id.name);
        forms.insert(
            formOf(name, RecordingDatabase::storable(point.address), RecordingDatabase::storable(point.type)),
            number);
        if (!names.contains(name, point.id)) {
            names.insert(name, point.id);
        }
    }
    QSqlQuery query = m_database->prepared(QStringLiteral(
        "SELECT id, name, address, type, (SELECT time FROM sample WHERE sample.point = point.id "
        "AND validity < 3 ORDER BY time DESC LIMIT 1) "
        "FROM point WHERE box = ? AND project = ? AND standard = ?"));
    for (const QString &text : {standard.box, standard.project, standard.standard}) {
        query.addBindValue(RecordingDatabase::storable(text));
    }
    if (!m_database->run(&query)) {
        return false;
    }
    while (query.next()) {
        const QString name = query.value(1).toString();
        const QString form = formOf(name, query.value(2).toString(), query.value(3).toString());
        for (auto each = forms.constFind(form); each != forms.constEnd() && each.key() == form; ++each) {
            m_keys[*each] = query.value(0).toLongLong();
        }
        for (auto each = names.constFind(name);
             !query.isNull(4) && each != names.constEnd() && each.key() == name; ++each) {
            const qint64 time = query.value(4).toLongLong();
            m_latest.insert(*each, qMax(time, m_latest.value(*each, time)));
        }
    }
    return !m_database->hasFailed(query);
}

bool RecordingKeys::insert(const QVector<int> &numbers, const QVector<RecordingRows::Recorded> &points)
{
    QSqlQuery many = m_database->prepared(insertStatement(pointsAtOnce));
    QSqlQuery one = m_database->prepared(insertStatement(1));
    for (int done = 0; done < numbers.size();) {
        const int count = numbers.size() - done >= pointsAtOnce ? pointsAtOnce : 1;
        QSqlQuery &query = count == 1 ? one : many;
        int place = 0;
        for (int i = done; i < done + count; ++i) {
            const Point &point = points.at(numbers.at(i)).point;
            for (const QString &text : {point.id.box, point.id.project, point.id.standard, point.id.name,
                                        point.address, point.type}) {
                query.bindValue(place++, RecordingDatabase::storable(text));
            }
        }
        if (!m_database->run(&query)) {
            return false;
        }
        done += count;
    }
    return true;
}
