#include "boxctl/documentview.h"

#include "boxctl/formnames.h"
#include "definitions/documentkeys.h"
#include "model/projecttree.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

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
    switch (value.type()) {
    case QJsonValue::String:
        return value.toString();
    case QJsonValue::Object:
        return QString::fromUtf8(QJsonDocument(value.toObject()).toJson(QJsonDocument::Compact));
    case QJsonValue::Array:
        return QString::fromUtf8(QJsonDocument(value.toArray()).toJson(QJsonDocument::Compact));
    case QJsonValue::Undefined:
        return {};
    default:
        break;
    }
    return value.toVariant().toString();
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
        gather(object, branches, &fields);
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
    static void gather(const QJsonObject &object, const QVector<Branch> &branches,
                       QVector<QPair<int, Field>> *fields)
    {
        for (auto member = object.begin(); member != object.end(); ++member) {
            const QString key = member.key();
            const bool isBranch = std::any_of(branches.cbegin(), branches.cend(),
                                              [&](const Branch &branch) { return key == branch.key; });
            if (key == nameKey || (isBranch && isList(*member))) {
                continue;
            }
            if (member->isObject() && (key == parameterKey || key == extendedParametersKey)) {
                gather(member->toObject(), {}, fields);
            } else {
                fields->append({FormNames::placeOf(key),
                                {FormNames::of(key), textOf(*member), holdsSecret(key, *member)}});
            }
        }
    }

    void readList(const QJsonObject &parent, const Branch &branch, const QStringList &path)
    {
        const QJsonArray list = parent.value(branch.key).toArray();
        QMap<QString, int> uses;
        int number = 0;
        for (const QJsonValue &value : list) {
            const QJsonObject object = value.toObject();
            QString name = object.contains(nameKey)
                ? textOf(object.value(nameKey))
                : QStringLiteral("%1-%2").arg(textOf(parent.value(protocolKey))).arg(++number);
            if (name.isEmpty()) {
                name = textOf(object.value(addrKey)); // of a meter's item that has only its own name
            }
            const int use = ++uses[name];
            if (use > 1) {
                name += QStringLiteral(" (%1)").arg(use);
            }
            const QStringList folder = branch.title.isEmpty() ? path : path + QStringList{branch.title};
            read(object, folder + QStringList{name}, {{datasKey, {}}});
        }
    }
};

} // namespace

QVector<Node> DocumentView::nodesOf(const QJsonObject &project)
{
    Reader reader;
    reader.read(project, {},
                {{standardsKey, ProjectTree::standardFolder},
                 {servicesKey, ProjectTree::serviceFolder},
                 {boxsKey, ProjectTree::boxFolder}});
    return reader.nodes;
}
