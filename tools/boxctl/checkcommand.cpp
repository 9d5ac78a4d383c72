#include "boxctl/call.h"
#include "boxctl/output.h"
#include "boxctl/projectdocument.h"
#include "boxctl/remarks.h"

namespace {

int run(const Call &call)
{
    const QStringList paths = call.arguments();
    if (paths.size() != 1) {
        return call.wrong(QStringLiteral("it takes one project document"));
    }
    const ProjectDocument document = ProjectDocument::readOrTell(paths.constFirst());
    if (!document.ok()) {
        return BadDocument;
    }
    const QVector<ProjectCheck::Remark> remarks = Remarks::on(document);
    for (const ProjectCheck::Remark &remark : remarks) {
        if (call.isSet("json")) {
            Output::json(Remarks::json(remark));
        } else {
            Output::line(remark.line());
        }
    }
    return Remarks::hasErrors(remarks) ? SomeFailed : AllDone;
}

} // namespace

Command checkCommand()
{
    return {"check",
            "PROJECT.json",
            "Tell what in a project a Box can't do, or hardly as it was meant.",
            "These are the remarks that the form of a Box shows before a push. Ends with 0 if\n"
            "there are no errors; warnings are told.",
            {{"json",
              "Print one JSON object a remark: severity (\"error\" or \"warning\"), path (array of the "
              "names of nodes), text."}},
            run};
}
