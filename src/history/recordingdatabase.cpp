#include "history/recordingdatabase.h"

#include "history/recordingschema.h"

#include <QFileInfo>
#include <QSqlError>
#include <QUrlQuery>
#include <QVariant>

#include <atomic>

namespace {

QString newName()
{
    static std::atomic<int> count{0};
    return QStringLiteral("recording-%1").arg(++count);
}

// As libpq reads the value of an option.
QString quoted(QString value)
{
    value.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    value.replace(QLatin1Char('\''), QLatin1String("\\'"));
    return QLatin1Char('\'') + value + QLatin1Char('\'');
}

} // namespace

RecordingDatabase::RecordingDatabase(const RecordingTarget &target)
    : m_target(target)
{
}

RecordingDatabase::~RecordingDatabase()
{
    close();
}

bool RecordingDatabase::open(Access access)
{
    close();
    bool ok = connect(access) && check(access);
    if (!ok && m_failure.isLeftOver && rollBackLeftOver()) {
        ok = connect(access) && check(access);
    }
    if (!ok) {
        close();
    }
    return ok;
}

void RecordingDatabase::close()
{
    if (isOpen()) {
        m_kept.clear();
        QSqlDatabase::database(m_name, false).close();
        QSqlDatabase::removeDatabase(m_name);
        m_name.clear();
    }
}

QString RecordingDatabase::storable(QString text)
{
    text.replace(QChar(0), QChar(QChar::ReplacementCharacter));
    return text.isEmpty() ? QString(QLatin1String("")) : QString::fromUtf8(text.toUtf8());
}

bool RecordingDatabase::isInPlace()
{
    // SQLite sees it when it writes the next time, which may be long after.
    return !isFile() || QFileInfo::exists(m_target.file) || fail(RecordingFailure::moved(m_target).text);
}

bool RecordingDatabase::connect(Access access)
{
    close();
    m_access = access;
    if (!RecordingTarget::available().contains(m_target.kind)) {
        return fail(isFile() ? tr("Qt's driver for SQLite is not installed.")
                             : tr("Qt's driver for PostgreSQL is not installed."));
    }
    m_name = newName();
    QSqlDatabase base =
        QSqlDatabase::addDatabase(isFile() ? QStringLiteral("QSQLITE") : QStringLiteral("QPSQL"), m_name);
    if (isFile()) {
        connectToFile(&base, access);
    } else {
        connectToServer(&base);
    }
    return base.open() || fail(base.lastError());
}

void RecordingDatabase::connectToFile(QSqlDatabase *base, Access access) const
{
    QString options = QStringLiteral("QSQLITE_BUSY_TIMEOUT=%1").arg(m_patience);
    if (access == Access::Read) {
        options += QLatin1String(";QSQLITE_OPEN_READONLY");
    }
    base->setConnectOptions(options);
    base->setDatabaseName(m_target.file);
}

void RecordingDatabase::connectToServer(QSqlDatabase *base) const
{
    const QUrl &url = m_target.server;
    base->setHostName(url.host(QUrl::FullyDecoded));
    base->setPort(url.port());
    base->setUserName(url.userName(QUrl::FullyDecoded));
    base->setPassword(url.password(QUrl::FullyDecoded));
    base->setDatabaseName(url.path(QUrl::FullyDecoded).mid(1));
    // Neither a server that hangs nor a network that is gone keeps a thread for ever.
    QStringList options{QStringLiteral("connect_timeout=%1").arg(qMax(2, m_patience / 1000)),
                        QStringLiteral("keepalives_idle=10"),
                        QStringLiteral("keepalives_interval=5"),
                        QStringLiteral("keepalives_count=3"),
                        QStringLiteral("tcp_user_timeout=15000"),
                        QStringLiteral("options='-c statement_timeout=30000'")};
    const auto items = QUrlQuery(url).queryItems(QUrl::FullyDecoded);
    for (const auto &item : items) {
        options.append(item.first + QLatin1Char('=') + quoted(item.second)); // the last of a name counts
    }
    base->setConnectOptions(options.join(QLatin1Char(';')));
}

bool RecordingDatabase::check(Access access)
{
    // An empty file is one in which nothing is recorded yet; a server may hold other tables.
    const QString all = isFile()
        ? QStringLiteral("SELECT count(*) FROM sqlite_master")
        : QStringLiteral("SELECT count(*) FROM pg_tables WHERE schemaname = current_schema() "
                         "AND tablename IN ('recording_info', 'recording', 'point', 'sample')");
    QVariant tables;
    if (!readCell(all, &tables)) {
        return false;
    }
    return tables.toInt() == 0 && access == Access::Write ? create() : checkRecording();
}

bool RecordingDatabase::checkRecording()
{
    const QString own = isFile()
        ? QStringLiteral("PRAGMA application_id")
        : QStringLiteral("SELECT count(*) FROM pg_tables WHERE schemaname = current_schema() "
                         "AND tablename = 'recording_info'");
    QVariant mark;
    if (!readCell(own, &mark)) {
        return false;
    }
    const QString none = tr("%1 is no recording.").arg(m_target.text());
    if (mark.toInt() != (isFile() ? applicationId : 1)) {
        return fail(none);
    }
    QVariant found;
    if (!checkWhole()
        || !readCell(QStringLiteral("SELECT value FROM recording_info WHERE key = 'schema'"), &found)) {
        return false;
    }
    if (found.toInt() < 1) {
        return fail(none);
    }
    return found.toInt() <= schema
        || fail(tr("%1 is a recording of a newer version of this program.").arg(m_target.text()));
}

// SQLite itself does not mind if the last page is not all there.
bool RecordingDatabase::checkWhole()
{
    QVariant pages;
    QVariant size; // of a page
    if (!isFile()) {
        return true;
    }
    if (!readCell(QStringLiteral("PRAGMA page_count"), &pages)
        || !readCell(QStringLiteral("PRAGMA page_size"), &size)) {
        return false;
    }
    return pages.toLongLong() * size.toLongLong() <= QFileInfo(m_target.file).size()
        || fail(tr("%1 is damaged or cut off.").arg(m_target.text()));
}

bool RecordingDatabase::create()
{
    bool ok = begin();
    const QStringList statements = isFile() ? RecordingSchema::forFile() : RecordingSchema::forServer();
    for (const QString &statement : statements) {
        ok = ok && run(statement);
    }
    if (isFile()) {
        ok = ok && run(QStringLiteral("PRAGMA application_id = %1").arg(applicationId))
            && run(QStringLiteral("PRAGMA user_version = %1").arg(schema));
    }
    QSqlQuery info = prepared(QStringLiteral(
        "INSERT INTO recording_info (key, value) VALUES (?, ?), (?, ?) ON CONFLICT DO NOTHING"));
    const QStringList values{QStringLiteral("schema"), QString::number(schema), QStringLiteral("program"),
                             QCoreApplication::applicationName()};
    for (const QString &value : values) {
        info.addBindValue(value);
    }
    ok = ok && run(&info) && commit();
    if (!ok) {
        rollback();
    }
    return ok;
}

bool RecordingDatabase::rollBackLeftOver()
{
    // SQLite does so by itself when it reads.
    QVariant tables;
    return connect(Access::Write) && readCell(QStringLiteral("SELECT count(*) FROM sqlite_master"), &tables);
}

bool RecordingDatabase::begin()
{
    // At once, so that two programs that both read first never wait for each other.
    return run(isFile() ? QStringLiteral("BEGIN IMMEDIATE") : QStringLiteral("BEGIN"));
}

bool RecordingDatabase::commit()
{
    return run(QStringLiteral("COMMIT"));
}

void RecordingDatabase::rollback()
{
    QSqlQuery(QSqlDatabase::database(m_name, false)).exec(QStringLiteral("ROLLBACK"));
}

QSqlQuery RecordingDatabase::prepared(const QString &sql)
{
    QSqlQuery query(QSqlDatabase::database(m_name, false));
    query.setForwardOnly(true);
    if (!query.prepare(sql)) {
        fail(query.lastError());
    }
    return query;
}

QSqlQuery RecordingDatabase::kept(const QString &sql)
{
    auto query = m_kept.find(sql);
    if (query == m_kept.end()) {
        query = m_kept.insert(sql, prepared(sql));
    } else if (query->lastError().isValid()) {
        *query = prepared(sql); // drivers don't go on with one that has failed
    }
    return *query;
}

bool RecordingDatabase::run(QSqlQuery *query)
{
    // What could not be prepared says more than that there is no query.
    return (!query->lastError().isValid() && query->exec()) || fail(query->lastError());
}

bool RecordingDatabase::hasFailed(const QSqlQuery &query)
{
    const QSqlError error = query.lastError();
    return error.isValid() && !fail(error);
}

bool RecordingDatabase::run(const QString &sql)
{
    QSqlQuery query(QSqlDatabase::database(m_name, false));
    return query.exec(sql) || fail(query.lastError());
}

bool RecordingDatabase::readCell(const QString &sql, QVariant *cell)
{
    QSqlQuery query = prepared(sql);
    if (!run(&query)) {
        return false;
    }
    *cell = query.next() ? query.value(0) : QVariant();
    return true;
}

bool RecordingDatabase::fail(const QString &why)
{
    m_failure = {why};
    return false;
}

bool RecordingDatabase::fail(const QSqlError &error)
{
    m_failure = RecordingFailure::of(m_target, m_access, isOpen(), error);
    return false;
}
