#include "boxctl/boxrun.h"
#include "boxctl/call.h"
#include "boxctl/output.h"
#include "boxctl/projectdocument.h"
#include "boxctl/remarks.h"
#include "boxctl/transfertask.h"

namespace {

int run(const Call &call)
{
    const QStringList arguments = call.arguments();
    if (arguments.isEmpty()) {
        return call.wrong(QStringLiteral("it takes a project document, then Boxes"));
    }
    const ProjectDocument document = ProjectDocument::readOrTell(arguments.constFirst());
    if (!document.ok()) {
        return BadDocument;
    }
    const QVector<ProjectCheck::Remark> remarks = Remarks::on(document);
    for (const ProjectCheck::Remark &remark : remarks) {
        Output::error(QStringLiteral("%1: %2").arg(document.path, remark.line()));
    }
    if (Remarks::hasErrors(remarks) && !call.isSet("force")) {
        Output::error(
            QStringLiteral("%1: not pushed, since it has errors; --force pushes it").arg(document.path));
        return BadDocument;
    }
    return pushToAll(call, arguments.mid(1), Frame::ProjectTransfer, document.path,
                     TransferFrames::bytes(document.bytes));
}

} // namespace

Command pushCommand()
{
    return {"push",
            "PROJECT.json BOX...",
            "Check a project document, then push it to each Box, which runs it.",
            "Remarks are told as check tells them. A document with errors is not pushed. What\n"
            "is pushed are the bytes that were checked. A Box has 8 seconds for its verdict,\n"
            "and 30 to take more bytes while it is sent. With --json the keys are file, bytes\n"
            "and seconds.",
            BoxRun::options() + QList<QCommandLineOption>{{"force", "Push a document with errors, too."}},
            run};
}
