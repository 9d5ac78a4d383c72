#include "history/recordingschema.h"

namespace {

// %1: key that counts itself, %2: 64 bit, %3: floating point, %4: what comes behind a table,
// %5: the columns of an index
const char *const tables[] = {
    "CREATE TABLE IF NOT EXISTS recording_info (key TEXT PRIMARY KEY, value TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS recording (id %1, started %2 NOT NULL, ended %2, "
    "dropped %2 NOT NULL DEFAULT 0, program TEXT NOT NULL)",
    "CREATE TABLE IF NOT EXISTS point (id %1, box TEXT NOT NULL, project TEXT NOT NULL, "
    "standard TEXT NOT NULL, name TEXT NOT NULL, address TEXT NOT NULL, type TEXT NOT NULL)",
    "CREATE UNIQUE INDEX IF NOT EXISTS point_form ON point (%5)",
    "CREATE TABLE IF NOT EXISTS sample (point %2 NOT NULL REFERENCES point (id), time %2 NOT NULL, "
    "number %3, text TEXT, validity %2 NOT NULL, PRIMARY KEY (point, time))%4",
};

QStringList filled(const char *key, const char *integer, const char *real, const char *behind,
                   const char *columns)
{
    QStringList statements;
    for (const char *const table : tables) {
        QString statement = QString::fromLatin1(table);
        statement.replace(QLatin1String("%1"), QLatin1String(key));
        statement.replace(QLatin1String("%2"), QLatin1String(integer));
        statement.replace(QLatin1String("%3"), QLatin1String(real));
        statement.replace(QLatin1String("%4"), QLatin1String(behind));
        statement.replace(QLatin1String("%5"), QLatin1String(columns));
        statements.append(statement);
    }
    return statements;
}

} // namespace

QStringList RecordingSchema::forFile()
{
    return filled("INTEGER PRIMARY KEY", "INTEGER", "REAL", " WITHOUT ROWID",
                  "box, project, standard, name, address, type");
}

QStringList RecordingSchema::forServer()
{
    // Its indexes take no long texts.
    return filled("BIGSERIAL PRIMARY KEY", "BIGINT", "DOUBLE PRECISION", "",
                  "md5(box), md5(project), md5(standard), md5(name), md5(address), md5(type)");
}

QString RecordingSchema::insertion(const char *table, const char *columns, int rows)
{
    const QString names = QLatin1String(columns);
    QStringList places;
    for (int column = 0; column <= names.count(QLatin1Char(',')); ++column) {
        places.append(QStringLiteral("?"));
    }
    const QString row = QLatin1Char('(') + places.join(QLatin1String(", ")) + QLatin1Char(')');
    QStringList all;
    for (int count = 0; count < rows; ++count) {
        all.append(row);
    }
    return QStringLiteral("INSERT INTO %1 (%2) VALUES %3 ON CONFLICT DO NOTHING")
        .arg(QLatin1String(table), names, all.join(QLatin1String(", ")));
}
