#include "boxctl/call.h"
#include "boxctl/documentview.h"
#include "boxctl/output.h"
#include "boxctl/projectdocument.h"

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
        const QString nameA = m_a.object.value(QStringLiteral("name")).toString();
        const QString nameB = m_b.object.value(QStringLiteral("name")).toString();
        if (nameA != nameB) {
            tell({}, QStringLiteral("Name: \"%1\", \"%2\"").arg(nameA, nameB));
        }
        const QVector<Node> before = DocumentView::nodesOf(m_a.object);
        const QVector<Node> after = DocumentView::nodesOf(m_b.object);
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
    void compare(const Node &a, const Node &b)
    {
        QVector<Field> rest = b.fields;
        for (const Field &field : a.fields) {
            const int place = placeOf(rest, field.name);
            if (place < 0) {
                tell(a.path, QStringLiteral("%1: %2, not there").arg(field.name, shown(field)));
                continue;
            }
            const Field other = rest.takeAt(place);
            if (field.text != other.text && field.isSecret && !m_secrets) {
                tell(a.path, QStringLiteral("%1 differs").arg(field.name));
            } else if (field.text != other.text) {
                tell(a.path, QStringLiteral("%1: %2, %3").arg(field.name, shown(field), shown(other)));
            }
        }
        for (const Field &field : qAsConst(rest)) {
            tell(a.path, QStringLiteral("%1: not there, %2").arg(field.name, shown(field)));
        }
    }

    static int placeOf(const QVector<Field> &fields, const QString &name)
    {
        int place = fields.size() - 1;
        while (place >= 0 && fields.at(place).name != name) {
            --place;
        }
        return place;
    }

    QString shown(const Field &field) const
    {
        const QString text = field.isSecret && !m_secrets ? Output::masked(field.text) : field.text;
        return QStringLiteral("\"%1\"").arg(text);
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
            "Tell what differs between two projects, node by node and field by field.",
            "A line names the node, the field as its form calls it, and both values. Nodes\n"
            "are told apart by their names, tabs by their place; the order of nodes does not\n"
            "count. The values of a node that only one of them has are not told.\n"
            "Ends with 0 if nothing differs, with 1 if something does.",
            {{"show-secrets", "Print passwords, keys and certificates that differ, too."}},
            run};
}
