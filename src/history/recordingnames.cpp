#include "history/recordingnames.h"

#include "history/recordingdatabase.h"

#include <QVariant>

void RecordingNames::add(const QString &box, const QString &project, const QString &name)
{
    const QString own = key(box, project);
    if (!name.isEmpty() && m_names.value(own) != name) {
        m_names.insert(own, name);
        m_unwritten.insert(own, name);
    }
}

void RecordingNames::write(RecordingDatabase *database)
{
    QMap<QString, QString> names;
    names.swap(m_unwritten);
    for (auto each = names.cbegin(); each != names.cend(); ++each) {
        QSqlQuery query =
            database->prepared(QStringLiteral("INSERT INTO recording_info (key, value) VALUES (?, ?) "
                                              "ON CONFLICT (key) DO UPDATE SET value = excluded.value"));
        query.addBindValue(RecordingDatabase::storable(each.key()));
        query.addBindValue(RecordingDatabase::storable(each.value()));
        if (!database->run(&query) && database->isLocked()) {
            for (; each != names.cend(); ++each) { // each would wait for the lock
                m_unwritten.insert(each.key(), each.value());
            }
            return;
        }
    }
}

bool RecordingNames::read(RecordingDatabase *database, QHash<QString, QString> *names)
{
    QSqlQuery query =
        database->prepared(QStringLiteral("SELECT key, value FROM recording_info WHERE key LIKE 'box %'"));
    if (!database->run(&query)) {
        return false;
    }
    while (query.next()) {
        names->insert(query.value(0).toString(), query.value(1).toString());
    }
    return !database->hasFailed(query);
}

QString RecordingNames::key(const QString &box, const QString &project)
{
    return QStringLiteral("box %1 %2").arg(box, project);
}
