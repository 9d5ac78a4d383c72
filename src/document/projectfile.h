#pragma once

#include <QJsonObject>
#include <QString>

class QStandardItem;

// The project document on disk. Nothing here shows a message: what happened is in the result and, for whoever
// looks for it, in the debug log.

struct SaveResult {
    enum class Failure { None, OpenFailed, WriteFailed };

    bool ok() const { return failure == Failure::None; }

    QString path; // The file that was, or would have been, written.
    Failure failure = Failure::None;
    QString errorString; // The file's own words; empty on success.
};

struct LoadResult {
    enum class Failure { None, EmptyPath, OpenFailed, NoDocument };

    bool ok() const { return failure == Failure::None; }

    QString path;
    QJsonObject document; // Empty on failure.
    Failure failure = Failure::None;
    QString errorString; // The file's own words; only if it could not be opened.
};

// Saves the document of a top-level item under projectFilePath(). The file is replaced as a whole at the end,
// so that a full disk or a crash never costs the old one. Only where the folder takes no new file, or does
// not let it take the old one's place, is an existing file written in place: a full disk still leaves it as
// it was, a crash may not.
SaveResult saveProject(const QStandardItem *project);

// Reads a document; refuses what is not JSON or has no object at its root.
LoadResult readProjectFile(const QString &path);
