#include "document/projectfile.h"

#include "definitions/documentkeys.h"
#include "document/projectwriter.h"

#include <QDebug>
#include <QFile>
#include <QJsonDocument>
#include <QSaveFile>

#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif

// A full disk may take a part of the bytes without a word; only what comes after them fails.
static bool writeWhole(QFileDevice *file, const QByteArray &bytes)
{
    qint64 done = 0;
    while (done < bytes.size()) {
        const qint64 written = file->write(bytes.constData() + done, bytes.size() - done);
        if (written <= 0) {
            return false;
        }
        done += written;
    }
    return true;
}

// A device is written into: a file in its place would be the end of it. A pipe is replaced like a file, since
// opening one that nobody reads would wait for ever.
static bool isDevice(const QString &path)
{
#ifdef Q_OS_UNIX
    struct stat target;
    return stat(QFile::encodeName(path).constData(), &target) == 0
        && (S_ISCHR(target.st_mode) || S_ISBLK(target.st_mode));
#else
    Q_UNUSED(path)
    return false;
#endif
}

SaveResult saveProject(const QStandardItem *project)
{
    SaveResult result;
    result.path = projectFilePath(project);
    QSaveFile replacement(result.path);
    replacement.setDirectWriteFallback(true);
    QFile device(result.path);
    const bool inPlace = isDevice(result.path);
    QFileDevice &file = inPlace ? static_cast<QFileDevice &>(device) : replacement;
    // Unbuffered, since commit() does not notice what a last flush of a buffer could not write.
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Unbuffered)) {
        result.failure = SaveResult::Failure::OpenFailed;
        result.errorString = file.errorString();
        qDebug() << "Could not open file for writing:" << result.errorString;
        return result;
    }
    if (!writeWhole(&file, projectDocument(project)) || (!inPlace && !replacement.commit())) {
        result.failure = SaveResult::Failure::WriteFailed;
        result.errorString = file.errorString();
        qDebug() << "Error writing to file:" << result.errorString;
        return result;
    }
    qDebug() << "JSON data saved to file:" << result.path;
    return result;
}

LoadResult readProjectFile(const QString &path)
{
    LoadResult result;
    result.path = path;
    if (path.isEmpty()) {
        result.failure = LoadResult::Failure::EmptyPath;
        qDebug() << "File path is empty.";
        return result;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        result.failure = LoadResult::Failure::OpenFailed;
        result.errorString = file.errorString();
        qDebug() << "Could not open file for reading:" << result.errorString;
        return result;
    }
    const QByteArray bytes = file.readAll();
    file.close();
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        result.failure = LoadResult::Failure::NoDocument;
        qDebug() << "Failed to create valid JSON document";
        return result;
    }
    result.document = document.object();
    qDebug() << "Project Name:" << result.document.value(DocumentKeys::nameKey).toString();
    qDebug() << "Project Description:" << result.document.value(DocumentKeys::descriptionKey).toString();
    return result;
}
