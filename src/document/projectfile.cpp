#include "document/projectfile.h"

#include "definitions/documentkeys.h"
#include "document/owneronly.h"
#include "document/projectwriter.h"

#include <QDebug>
#include <QFile>
#include <QFileInfo>
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

static SaveResult failed(SaveResult::Failure failure, const QFileDevice &file)
{
    SaveResult result;
    result.failure = failure;
    result.errorString = file.errorString();
    return result;
}

// All files are unbuffered, since nothing notices what a last flush of a buffer could not write.
constexpr QIODevice::OpenMode writing = QIODevice::WriteOnly | QIODevice::Text | QIODevice::Unbuffered;

static SaveResult writeDevice(const QString &path, const QByteArray &document)
{
    QFile file(path);
    if (!file.open(writing)) {
        return failed(SaveResult::Failure::OpenFailed, file);
    }
    return writeWhole(&file, document) ? SaveResult() : failed(SaveResult::Failure::WriteFailed, file);
}

// A folder that takes no new file, or does not let it take the old one's place, counts as a failure to open:
// the old file was not touched, and perhaps it can be written itself.
static SaveResult replaceFile(const QString &path, const QByteArray &document)
{
    const OwnerOnly ownerOnly;
    QSaveFile file(path);
    if (!file.open(writing)) {
        return failed(SaveResult::Failure::OpenFailed, file);
    }
    if (writeWhole(&file, document) && file.commit()) {
        return SaveResult();
    }
    return failed(file.error() == QFileDevice::RenameError ? SaveResult::Failure::OpenFailed
                                                           : SaveResult::Failure::WriteFailed,
                  file);
}

// The old bytes are cut off after the new ones are there only, and are put back if the new ones do not fit.
static SaveResult overwriteFile(const QString &path, const QByteArray &document)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadWrite | QIODevice::Unbuffered) && !file.open(writing)) {
        return failed(SaveResult::Failure::OpenFailed, file);
    }
    const QByteArray old = file.isReadable() ? file.readAll() : QByteArray();
    file.setTextModeEnabled(true);
    if (file.seek(0) && writeWhole(&file, document) && file.resize(file.pos())) {
        return SaveResult();
    }
    const SaveResult result = failed(SaveResult::Failure::WriteFailed, file);
    file.setTextModeEnabled(false);
    if (!file.seek(0) || !writeWhole(&file, old) || !file.resize(old.size())) {
        qDebug() << "Could not put the old contents back:" << file.errorString();
    }
    return result;
}

static SaveResult writeDocument(const QString &path, const QByteArray &document)
{
    if (isDevice(path)) {
        return writeDevice(path, document);
    }
    const SaveResult result = replaceFile(path, document);
    return result.failure == SaveResult::Failure::OpenFailed && QFileInfo(path).isFile()
        ? overwriteFile(path, document)
        : result;
}

SaveResult saveProject(const QStandardItem *project)
{
    const QString path = projectFilePath(project);
    SaveResult result = writeDocument(path, projectDocument(project));
    result.path = path;
    switch (result.failure) {
    case SaveResult::Failure::None:
        qDebug() << "JSON data saved to file:" << path;
        break;
    case SaveResult::Failure::OpenFailed:
        qDebug() << "Could not open file for writing:" << result.errorString;
        break;
    case SaveResult::Failure::WriteFailed:
        qDebug() << "Error writing to file:" << result.errorString;
        break;
    }
    return result;
}

std::optional<QJsonObject> readProjectFile(const QString &path)
{
    if (path.isEmpty()) {
        qDebug() << "File path is empty.";
        return std::nullopt;
    }
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        qDebug() << "Could not open file for reading:" << file.errorString();
        return std::nullopt;
    }
    const QByteArray bytes = file.readAll();
    file.close();
    const QJsonDocument document = QJsonDocument::fromJson(bytes);
    if (!document.isObject()) {
        qDebug() << "Failed to create valid JSON document";
        return std::nullopt;
    }
    const QJsonObject project = document.object();
    qDebug() << "Project Name:" << project.value(DocumentKeys::nameKey).toString();
    qDebug() << "Project Description:" << project.value(DocumentKeys::descriptionKey).toString();
    return project;
}
