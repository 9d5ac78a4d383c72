#include "boxctl/call.h"
#include "boxctl/documentview.h"
#include "boxctl/output.h"
#include "boxctl/projectdocument.h"

namespace {

QString indented(const QString &text, int depth)
{
    return QString(2 * depth, QLatin1Char(' ')) + text;
}

QString shown(const DocumentView::Field &field, bool secrets)
{
    return field.isSecret && !secrets ? Output::masked(field.text()) : field.text();
}

void showFields(const DocumentView::Node &node, int depth, bool secrets)
{
    for (const DocumentView::Field &field : node.fields) {
        const QStringList lines = shown(field, secrets).split(QLatin1Char('\n'));
        Output::line(indented(QStringLiteral("%1: %2").arg(field.name, lines.constFirst()).trimmed(), depth));
        const QStringList further = lines.mid(1);
        for (const QString &line : further) {
            Output::line(indented(line, depth + 1));
        }
    }
}

int run(const Call &call)
{
    if (call.arguments().size() != 1) {
        return call.wrong(QStringLiteral("it takes one project document"));
    }
    const ProjectDocument document = ProjectDocument::readOrTell(call.arguments().constFirst());
    if (!document.ok()) {
        return BadDocument;
    }
    Output::line(document.object.value(QStringLiteral("name")).toString());
    QStringList folder;
    const QVector<DocumentView::Node> nodes = DocumentView::nodesOf(document.object);
    for (const DocumentView::Node &node : nodes) {
        if (node.path.size() == 2 && folder != node.path.mid(0, 1)) {
            folder = node.path.mid(0, 1);
            Output::line(indented(folder.constFirst(), 1));
        }
        if (!node.path.isEmpty()) {
            Output::line(indented(node.path.constLast(), node.path.size()));
        }
        showFields(node, node.path.size() + 1, call.isSet("show-secrets"));
    }
    return AllDone;
}

} // namespace

Command showCommand()
{
    return {"show",
            "PROJECT.json",
            "Print the tree of a project and its values for reading.",
            "Values stand under the names that the forms give them; what no form shows stands\n"
            "under its key, in quotes. Passwords, keys and certificates are masked.",
            {{"show-secrets", "Print passwords, keys and certificates, too."}},
            run};
}
