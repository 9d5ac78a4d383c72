#include "boxctl/call.h"
#include "boxctl/documentview.h"
#include "boxctl/output.h"
#include "boxctl/projectdocument.h"
#include "definitions/documentkeys.h"

#include <QHash>

using DocumentView::Field;
using DocumentView::Node;

namespace {

// Compares two documents node by node and prints what differs.
class Comparison
{
public:
    Comparison(const ProjectDocument &a, const ProjectDocument &b, bool secrets)
        : m_a(a)
        , m_b(b)
        , m_secrets(secrets)
    {
    }

    // True if anything differs.
    bool run()
    {
        const QVector<Node> before = nodesOf(m_a);
        const QVector<Node> after = nodesOf(m_b);
        QHash<QStringList, const Node *> byPath;
        for (const Node &node : after) {
            byPath.insert(node.path, &node);
        }
        for (const Node &node : before) {
            if (const Node *other = byPath.take(node.path)) {
                compare(node, *other);
            } else {
                tellOnly(node, m_a.path);
            }
        }
        for (const Node &node : after) {
            if (byPath.contains(node.path)) {
                tellOnly(node, m_b.path);
            }
        }
        return m_differs;
    }

private:
    // With the project's name, which is no other node's, as its first field.
    static QVector<Node> nodesOf(const ProjectDocument &document)
    {
        QVector<Node> nodes = DocumentView::nodesOf(document.object);
        const QJsonValue name = document.object.value(DocumentKeys::nameKey);
        if (name.isString()) {
            nodes.first().fields.prepend({DocumentKeys::nameKey, QStringLiteral("Name"), name});
        }
        return nodes;
    }

    void compare(const Node &a, const Node &b)
    {
        QHash<QString, const Field *> byKey;
        for (const Field &field : b.fields) {
            byKey.insert(field.key, &field);
        }
        for (const Field &field : a.fields) {
            const Field *other = byKey.take(field.key);
            if (!other) {
                tell(a.path, QStringLiteral("%1: %2, not there").arg(field.name, shown(field)));
            } else if (field.value != other->value && field.isSecret && !m_secrets) {
                tell(a.path, QStringLiteral("%1 differs").arg(field.name));
            } else if (field.value != other->value) {
                tell(a.path, QStringLiteral("%1: %2, %3").arg(field.name, shown(field), shown(*other)));
            }
        }
        for (const Field &field : b.fields) {
            if (byKey.contains(field.key)) {
                tell(a.path, QStringLiteral("%1: not there, %2").arg(field.name, shown(field)));
            }
        }
    }

    // As JSON: by its quotes a text is told from a number.
    QString shown(const Field &field) const
    {
        return Output::jsonText(field.isSecret && !m_secrets ? Output::masked(field.text()) : field.value);
    }

    // Of a node that only one document has, what is below it is not told.
    void tellOnly(const Node &node, const QString &document)
    {
        if (m_lastOnly.isEmpty() || node.path.mid(0, m_lastOnly.size()) != m_lastOnly) {
            m_lastOnly = node.path;
            tell(node.path, QStringLiteral("only in %1").arg(document));
        }
    }

    void tell(const QStringList &path, const QString &text)
    {
        m_differs = true;
        Output::line(path.isEmpty() ? text : QStringLiteral("%1: %2").arg(path.join(QLatin1Char('/')), text));
    }

    const ProjectDocument &m_a;
    const ProjectDocument &m_b;
    bool m_secrets;
    bool m_differs = false;
    QStringList m_lastOnly;
};

int run(const Call &call)
{
    const QStringList paths = call.arguments();
    if (paths.size() != 2) {
        return call.wrong(QStringLiteral("it takes two project documents"));
    }
    const ProjectDocument a = ProjectDocument::readOrTell(paths.constFirst());
    const ProjectDocument b = ProjectDocument::readOrTell(paths.constLast());
    if (!a.ok() || !b.ok()) {
        return BadDocument;
    }
    return Comparison(a, b, call.isSet("show-secrets")).run() ? SomeFailed : AllDone;
}

} // namespace

Command diffCommand()
{
    return {"diff",
            "A.json B.json",
            "Tell what differs between two projects, field by field.",
            "A line names the node, the field as its form calls it, and both values as JSON,\n"
            "so that 502 and \"502\" differ. Nodes are told apart by their names, tabs by\n"
            "their place; the order of nodes does not count. The values of a node that only\n"
            "one of them has are not told.\n"
            "Ends with 0 if nothing differs, with 1 if something does.",
            {{"show-secrets", "Print passwords, keys and certificates that differ, too."}},
            run};
}
