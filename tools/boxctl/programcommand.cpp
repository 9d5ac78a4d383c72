#include "boxctl/boxrun.h"
#include "boxctl/call.h"
#include "boxctl/output.h"
#include "boxctl/transfertask.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>

namespace {

// Opens the file as long as it is the one that is there now, so that all Boxes get the same program.
TransferFrames::Opener unchanged(const QString &path)
{
    const auto stateOf = [](const QString &its) {
        const QFileInfo info(its);
        return qMakePair(info.size(), info.lastModified());
    };
    return [=, before = stateOf(path), open = TransferFrames::file(path)] {
        return stateOf(path) == before ? open() : nullptr;
    };
}

int run(const Call &call)
{
    const QStringList arguments = call.arguments();
    if (arguments.isEmpty()) {
        return call.wrong(QStringLiteral("it takes a program file, then Boxes"));
    }
    const QString &path = arguments.constFirst();
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly)) {
        Output::error(QStringLiteral("%1: %2").arg(
            path,
            file.error() == QFileDevice::NoError ? QStringLiteral("it is no file") : file.errorString()));
        return BadDocument;
    }
    if (file.size() == 0) {
        Output::error(QStringLiteral("%1: it is empty").arg(path));
        return BadDocument;
    }
    return pushToAll(call, arguments.mid(1), Frame::ProgramTransfer, path, unchanged(path));
}

} // namespace

Command programCommand()
{
    return {"program",
            "FILE.bin BOX...",
            "Update the program of each Box.",
            "A Box has 8 seconds for its verdict, and 30 to take more bytes while it is sent.\n"
            "Once the file changes, no further Box gets it.\n"
            "With --json the keys are file, bytes and seconds.",
            BoxRun::options(),
            run};
}
