#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

class QStandardItem;

// The project document on disk. Nothing here shows a message: the result says whether it went well, and the
// debug log why not.

// How a save ended.
struct SaveResult {
    enum class Failure { None, OpenFailed, WriteFailed };

    bool ok() const { return failure == Failure::None; }

    QString path; // of the file that was, or would have been, written
    Failure failure = Failure::None;
    QString errorString; // what the system says about the failure
};

// Saves the document of a top-level item under projectFilePath(). The file is replaced as a whole at the end,
// so that a full disk or a crash never costs the old one. Only where the folder takes no new file, or does
// not let it take the old one's place, is an existing file written in place: a full disk still leaves it as
// it was, a crash may not.
SaveResult saveProject(const QStandardItem *project);

// The document in a file; nothing if the file can't be opened, is not JSON, or has no object at its root.
std::optional<QJsonObject> readProjectFile(const QString &path);
