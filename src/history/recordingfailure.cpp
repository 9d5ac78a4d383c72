#include "history/recordingfailure.h"

#include <QFileInfo>
#include <QSqlError>

namespace {

// The first byte of SQLite's result codes.
enum FileError {
    Busy = 5,
    Locked = 6,
    ReadOnly = 8,
    Corrupt = 11,
    Full = 13,
    CantOpen = 14,
    NoDatabase = 26,
};

int codeOf(const QSqlError &error)
{
    return error.nativeErrorCode().toInt() & 0xff;
}

// What the database itself says, behind our own words.
QString detail(const QSqlError &error)
{
    const QString text = error.databaseText().trimmed().section(QLatin1Char('\n'), 0, 0);
    return QLatin1String(" (") + (text.isEmpty() ? error.driverText() : text) + QLatin1Char(')');
}

} // namespace

RecordingFailure RecordingFailure::of(const RecordingTarget &target, Access access, bool isOpen,
                                      const QSqlError &error)
{
    if (target.kind != RecordingTarget::Kind::File) {
        return {serverWords(target.text(), error)};
    }
    const QString file = target.text();
    switch (codeOf(error)) {
    case Busy:
    case Locked:
        return {tr("%1 is locked by another program.").arg(file), true};
    case Full:
        return {tr("%1 can't be written: the disk is full.").arg(file)};
    case Corrupt:
        return {tr("%1 is damaged or cut off.").arg(file)};
    case NoDatabase:
        return {tr("%1 is no recording.").arg(file)};
    case ReadOnly:
        if (access == Access::Read) {
            return {tr("%1 was left open by a program that was killed. Copy it, with the file \"-journal\" "
                       "beside it, to where you may write.")
                        .arg(file),
                    false, true};
        }
        break;
    case CantOpen:
        break;
    default:
        return {tr("%1 can't be read or written.").arg(file) + detail(error)};
    }
    return {accessWords(target, access, isOpen, error)};
}

// Why a file can't be opened, or not for writing.
QString RecordingFailure::accessWords(const RecordingTarget &target, Access access, bool isOpen,
                                      const QSqlError &error)
{
    const QString file = target.text();
    const QFileInfo info(target.file);
    const QFileInfo folder(info.absolutePath());
    const bool isRead = access == Access::Read;
    if (!folder.exists()) {
        return tr("%1 can't be opened: there is no such folder.").arg(file);
    }
    if (!info.exists() && isRead) {
        return tr("%1 does not exist.").arg(file);
    }
    if (info.exists() && !(isRead ? info.isReadable() : info.isWritable())) {
        return isRead ? tr("%1 can't be read: no permission.").arg(file)
                      : tr("%1 can't be written: no permission.").arg(file);
    }
    // The journal lies beside the file.
    if (!isRead && !folder.isWritable()) {
        return tr("%1 can't be written: no permission for its folder.").arg(file);
    }
    if (isOpen && codeOf(error) == ReadOnly) {
        return moved(target).text;
    }
    return tr("%1 can't be opened.").arg(file) + detail(error);
}

RecordingFailure RecordingFailure::moved(const RecordingTarget &target)
{
    return {tr("%1 has been removed or renamed.").arg(target.text())};
}

QString RecordingFailure::serverWords(const QString &server, const QSqlError &error)
{
    const QString code = error.nativeErrorCode(); // the SQLSTATE of PostgreSQL; empty without an answer
    if (code.startsWith(QLatin1String("53"))) {
        return tr("%1 can't be written: the server is out of space.").arg(server) + detail(error);
    }
    if (code.startsWith(QLatin1String("42501"))) {
        return tr("%1 can't be written: no permission.").arg(server) + detail(error);
    }
    if (code.isEmpty() || code.startsWith(QLatin1String("08")) || code.startsWith(QLatin1String("57P"))) {
        return tr("%1 can't be reached.").arg(server) + detail(error);
    }
    return tr("%1 can't be read or written.").arg(server) + detail(error);
}
