#pragma once

#include <QHash>
#include <QMap>
#include <QString>

class RecordingDatabase;

// What Boxes are called, in the database of a recording. It stands among the keys of "recording_info", so
// that programs that know nothing of it read and write the same database.
class RecordingNames
{
public:
    // Of the Box at that address while it reports the project; the last one counts, an empty one is none.
    void add(const QString &box, const QString &project, const QString &name);
    // What has not been written, outside of a transaction. A recording goes on without names that can't be.
    void write(RecordingDatabase *database);
    // The database may be another one from now on.
    void forgetWritten() { m_unwritten = m_names; }

    // By key. False if the database can't be read.
    static bool read(RecordingDatabase *database, QHash<QString, QString> *names);
    static QString key(const QString &box, const QString &project);

private:
    QMap<QString, QString> m_names; // by key
    QMap<QString, QString> m_unwritten;
};
