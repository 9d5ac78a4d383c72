#pragma once

#include <QByteArray>
#include <QFile>
#include <QFileInfo>

// Whole files, as tests lay them out and compare them.
namespace Files {

// The bytes of the file, or "unreadable".
inline QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

// Makes or replaces the file and gives its absolute path; ends the program if that fails.
inline QString put(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qFatal("%s can't be written", qPrintable(path));
    }
    return QFileInfo(path).absoluteFilePath();
}

} // namespace Files
