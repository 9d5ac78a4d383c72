#include "boxctl/documentview.h"

#include "boxctl/formnames.h"
#include "boxctl/output.h"
#include "definitions/documentkeys.h"
#include "model/projecttree.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QSet>

#include <algorithm>

using namespace DocumentKeys;
using DocumentView::Field;
using DocumentView::Node;

namespace {

// A list of the document that makes nodes.
struct Branch {
    QLatin1String key;
    QString title; // of the folder; empty for lists below a definition, whose nodes stand right below it
};

QString textOf(const QJsonValue &value)
{
    return value.isString() || value.isUndefined() ? value.toString() : Output::jsonText(value);
}

// Lists of objects only: anything else under their keys is shown as a field.
bool isList(const QJsonValue &value)
{
    const QJsonArray array = value.toArray();
    return value.isArray()
        && std::all_of(array.begin(), array.end(), [](const QJsonValue &entry) { return entry.isObject(); });
}

// Also of what stands deep in a value that no form shows.
bool holdsSecret(const QString &key, const QJsonValue &value)
{
    if (FormNames::isSecret(key)) {
        return true;
    }
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member) {
        if (holdsSecret(member.key(), *member)) {
            return true;
        }
    }
    const QJsonArray array = value.toArray();
    return std::any_of(array.begin(), array.end(),
                       [](const QJsonValue &entry) { return holdsSecret({}, entry); });
}

class Reader
{
public:
    QVector<Node> nodes;

    // The object as a node, then what is below it.
    void read(const QJsonObject &object, const QStringList &path, const QVector<Branch> &branches)
    {
        const int place = nodes.size();
        nodes.append({path, {}});
        QVector<QPair<int, Field>> fields;
        gather(object, {}, branches, &fields);
        std::stable_sort(fields.begin(), fields.end(),
                         [](const auto &a, const auto &b) { return a.first < b.first; });
        for (const auto &field : qAsConst(fields)) {
            nodes[place].fields.append(field.second);
        }
        for (const Branch &branch : branches) {
            if (isList(object.value(branch.key))) {
                readList(object, branch, path);
            }
        }
    }

private:
    // Members of "parameter" and "extendedParameters" count as the object's own.
    static void gather(const QJsonObject &object, const QString &prefix, const QVector<Branch> &branches,
                       QVector<QPair<int, Field>> *fields)
    {
        for (auto member = object.begin(); member != object.end(); ++member) {
            const QString key = member.key();
            const bool isBranch = std::any_of(branches.cbegin(), branches.cend(),
                                              [&](const Branch &branch) { return key == branch.key; });
            const bool isName = prefix.isEmpty() && key == nameKey && member->isString();
            if (isName || (isBranch && isList(*member))) {
                continue;
            }
            if (member->isObject() && (key == parameterKey || key == extendedParametersKey)) {
                gather(member->toObject(), prefix + key + QLatin1Char('.'), {}, fields);
            } else {
                fields->append({FormNames::placeOf(key),
                                {prefix + key, FormNames::of(key), *member, holdsSecret(key, *member)}});
            }
        }
    }

    void readList(const QJsonObject &parent, const Branch &branch, const QStringList &path)
    {
        const QJsonArray list = parent.value(branch.key).toArray();
        const QStringList names = namesIn(list, textOf(parent.value(protocolKey)));
        const QStringList folder = branch.title.isEmpty() ? path : path + QStringList{branch.title};
        for (int entry = 0; entry < list.size(); ++entry) {
            read(list.at(entry).toObject(), folder + QStringList{names.at(entry)}, {{datasKey, {}}});
        }
    }

    // Of nodes with one name all but the first have a number behind it.
    static QStringList namesIn(const QJsonArray &list, const QString &protocol)
    {
        QStringList names;
        int number = 0;
        for (const QJsonValue &value : list) {
            const QJsonObject object = value.toObject();
            QString name = object.contains(nameKey) ? textOf(object.value(nameKey))
                                                    : protocol + QStringLiteral("-%1").arg(++number);
            if (name.isEmpty()) {
                name = textOf(object.value(addrKey)); // of a meter's item that has only its own name
            }
            names.append(name);
        }
        QSet<QString> taken(names.cbegin(), names.cend());
        QHash<QString, int> numbers; // of the next node with the name
        for (QString &name : names) {
            const QString own = name;
            int &next = numbers[own];
            while (next > 0 && taken.contains(name)) {
                name = own + QStringLiteral(" (%1)").arg(next++);
            }
            next = qMax(next, 2);
            taken.insert(name);
        }
        return names;
    }
};

} // namespace

QString Field::text() const
{
    return textOf(value);
}

QVector<Node> DocumentView::nodesOf(const QJsonObject &project)
{
    Reader reader;
    reader.read(project, {},
                {{standardsKey, ProjectTree::standardFolder},
                 {servicesKey, ProjectTree::serviceFolder},
                 {boxsKey, ProjectTree::boxFolder}});
    return reader.nodes;
}
