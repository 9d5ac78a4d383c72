#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QString>

// A project document as a command gets it.
struct ProjectDocument {
    QString path;
    QByteArray bytes; // of the file, as they lie there
    QJsonObject object;
    QString error; // why it is none; empty if it is one

    bool ok() const { return error.isEmpty(); }

    // A file of more than 64 MiB is none, so that an endless one ends, too.
    static ProjectDocument read(const QString &path);
    // The same, telling the error.
    static ProjectDocument readOrTell(const QString &path);
};

// Of a file that is to be read once and for all: false with the reason for one that can't be, or holds more
// than the limit.
bool readWhole(const QString &path, qint64 limit, QByteArray *bytes, QString *error);
