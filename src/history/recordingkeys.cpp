#include "history/recordingkeys.h"

#include "history/recordingdatabase.h"
#include "history/recordingschema.h"

#include <QVariant>

#include <algorithm>

namespace {

constexpr int pointsAtOnce = 20; // of one statement; Qt takes ever longer for more values

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
    // Another recorder may have made it a moment ago.
    return RecordingSchema::insertion("point", "box, project, standard, name, address, type", points);
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
        for (int done = 0; done < each->size(); done += pointsAtOnce) {
            if (!findPiece(each.key(), each->mid(done, pointsAtOnce), points)) {
                return false;
            }
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

bool RecordingKeys::findPiece(const PointId &standard, const Numbers &numbers, const Points &points)
{
    const auto isMissing = [this](int number) { return m_keys.at(number) < 0; };
    if (!read(standard, numbers, points)) {
        return false;
    }
    Numbers missing;
    std::copy_if(numbers.cbegin(), numbers.cend(), std::back_inserter(missing), isMissing);
    return missing.isEmpty()
        || (insert(missing, points) && read(standard, missing, points)
            && std::none_of(missing.cbegin(), missing.cend(), isMissing));
}

QString RecordingKeys::statement(RecordingTarget::Kind kind)
{
    // As the index of the points has them.
    const bool isFile = kind == RecordingTarget::Kind::File;
    const QString column = isFile ? QStringLiteral("%1") : QStringLiteral("md5(%1)");
    const QString value = isFile ? QStringLiteral("?") : QStringLiteral("md5(CAST(? AS TEXT))");
    QStringList conditions;
    for (const char *const name : {"box", "project", "standard"}) {
        conditions.append(column.arg(QLatin1String(name)) + QLatin1String(" = ") + value);
    }
    QStringList names;
    for (int place = 0; place < pointsAtOnce; ++place) {
        names.append(value);
    }
    return QStringLiteral("SELECT id, name, address, type, (SELECT time FROM sample WHERE sample.point = "
                          "point.id AND validity < 3 ORDER BY time DESC LIMIT 1) FROM point WHERE ")
        + conditions.join(QLatin1String(" AND ")) + QLatin1String(" AND ") + column.arg(QLatin1String("name"))
        + QStringLiteral(" IN (%1)").arg(names.join(QLatin1String(", ")));
}

bool RecordingKeys::read(const PointId &standard, const Numbers &numbers, const Points &points)
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
    QSqlQuery query = m_database->kept(statement(m_database->kind()));
    int place = 0;
    for (const QString &text : {standard.box, standard.project, standard.standard}) {
        query.bindValue(place++, RecordingDatabase::storable(text));
    }
    const QStringList asked = names.uniqueKeys();
    for (int name = 0; name < pointsAtOnce; ++name) {
        query.bindValue(place++, asked.at(qMin(name, asked.size() - 1))); // the last one fills the rest
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

bool RecordingKeys::insert(const Numbers &numbers, const Points &points)
{
    for (int done = 0; done < numbers.size();) {
        const int count = numbers.size() - done >= pointsAtOnce ? pointsAtOnce : 1;
        QSqlQuery query = m_database->kept(insertStatement(count));
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
