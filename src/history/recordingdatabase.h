#pragma once

#include "history/recordingfailure.h"

#include <QHash>
#include <QSqlDatabase>
#include <QSqlQuery>

class QSqlError;

// A connection to the database of a recording. It belongs to the thread that opens it. After a function that
// gives false, error() tells why in the words of the user.
class RecordingDatabase
{
    Q_DECLARE_TR_FUNCTIONS(RecordingDatabase)
public:
    using Access = RecordingFailure::Access;

    static constexpr int schema = 1; // the version that is written, and the newest that is read
    static constexpr int applicationId = 0x4d52474c; // of SQLite files

    explicit RecordingDatabase(const RecordingTarget &target);
    ~RecordingDatabase();
    RecordingDatabase(const RecordingDatabase &) = delete;
    RecordingDatabase &operator=(const RecordingDatabase &) = delete;

    // How long to wait for a file that another program has locked, and for a server, in ms.
    void setPatience(int patience) { m_patience = patience; }

    // Refuses what is no recording or is of a newer schema. For writing, a file is made where there is none,
    // and the tables where there are none at all.
    bool open(Access access);
    void close();
    RecordingTarget::Kind kind() const { return m_target.kind; }
    bool isOpen() const { return !m_name.isEmpty(); }
    // Whether the file is still there; of a server that is seen by the next query.
    bool isInPlace();

    bool begin(); // of a transaction that writes
    bool commit();
    void rollback();

    // A query of its own, forward only; to be executed by run().
    QSqlQuery prepared(const QString &sql);
    // The same, but prepared once and kept until the database is closed. To be finished where not all rows
    // are read, since it would go on to lock a file.
    QSqlQuery kept(const QString &sql);
    bool run(QSqlQuery *query);
    // Whether the query ended by a failure, and not after its last row.
    bool hasFailed(const QSqlQuery &query);
    bool run(const QString &sql);
    // The first cell of the answer; invalid where there is no row. False on failure.
    bool readCell(const QString &sql, QVariant *cell);

    // The text as it is read back: never null, without NUL, which a server does not take.
    static QString storable(QString text);

    QString error() const { return m_failure.text; }
    // Whether the last failure was a lock, which others give back.
    bool isLocked() const { return m_failure.isLocked; }

private:
    bool connect(Access access);
    void connectToFile(QSqlDatabase *base, Access access) const;
    void connectToServer(QSqlDatabase *base) const;
    bool check(Access access);
    bool checkRecording();
    bool checkWhole();
    bool create();
    bool rollBackLeftOver();
    bool isFile() const { return m_target.kind == RecordingTarget::Kind::File; }
    bool fail(const QString &why);
    bool fail(const QSqlError &error);

    RecordingTarget m_target;
    int m_patience = 2000;
    Access m_access = Access::Read;
    QString m_name; // of the connection of Qt SQL; empty while there is none
    QHash<QString, QSqlQuery> m_kept;
    RecordingFailure m_failure; // the last one
};
