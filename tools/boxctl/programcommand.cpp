#include "boxctl/boxrun.h"
#include "boxctl/call.h"
#include "boxctl/output.h"
#include "boxctl/transfertask.h"

#include <QFile>
#include <QFileInfo>

namespace {

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
    const int timeout = BoxRun::timeoutOf(call).value_or(0);
    return BoxRun::over(call, arguments.mid(1), [=](const BoxTarget &) {
        return new TransferTask(TransferFrames(Frame::ProgramTransfer, TransferFrames::file(path)), path,
                                timeout);
    });
}

} // namespace

Command programCommand()
{
    return {"program",
            "FILE.bin BOX...",
            "Update the program of each Box.",
            "A Box has 8 seconds for its verdict, and 30 to take more bytes while it is sent.\n"
            "With --json the keys are file, bytes and seconds.",
            BoxRun::options(),
            run};
}
