#include "document/projectreader.h"

#include "definitions/protocols.h"
#include "document/definitionobject.h"
#include "model/projecttree.h"

#include <QHash>
#include <QIcon>
#include <QJsonArray>
#include <QStandardItem>
#include <QStandardItemModel>

using namespace Definitions;
using namespace DocumentKeys;

namespace {

// Loaded Standards of the other kinds have no icon, though the tree knows one for some of them.
QString standardIconOf(const QString &protocol)
{
    return protocol == Protocols::dlt645 || protocol == Protocols::modbus ? Protocols::standardIcon(protocol)
                                                                          : QString();
}

QString serviceIconOf(const QString &protocol)
{
    return protocol == Protocols::iec61850 ? ProjectTree::serviceIcon : QString();
}

QString boxIconOf(const QString &)
{
    return ProjectTree::boxIcon;
}

// An array of the document and the folder that it fills, which is taken by its row and not by its text.
struct Branch {
    QLatin1String rootKey;
    int folderRow;
    QString (*iconOf)(const QString &protocol);
    Kind kind;
};

const Branch branches[] = {
    {standardsKey, ProjectTree::StandardRow, standardIconOf, Kind::Standard},
    {servicesKey, ProjectTree::ServiceRow, serviceIconOf, Kind::Service},
    {boxsKey, ProjectTree::BoxRow, boxIconOf, Kind::Box},
};

// The first child of each name.
QHash<QString, QStandardItem *> childrenByName(const QStandardItem &folder)
{
    QHash<QString, QStandardItem *> children;
    for (int row = 0; row < folder.rowCount(); ++row) {
        QStandardItem *child = folder.child(row);
        if (child && !children.contains(child->text())) {
            children.insert(child->text(), child);
        }
    }
    return children;
}

void mergeBranch(const Branch &branch, const QJsonArray &entries, QStandardItem *folder, const Texts &texts)
{
    QHash<QString, QStandardItem *> children = childrenByName(*folder);
    QHash<QString, QIcon> icons;
    for (const QJsonValue &entry : entries) {
        const QJsonObject object = entry.toObject();
        const QString name = object.value(nameKey).toString();
        QStandardItem *&item = children[name];
        if (!item) {
            const QString path = branch.iconOf(object.value(protocolKey).toString());
            if (!path.isEmpty() && !icons.contains(path)) {
                icons.insert(path, QIcon(path));
            }
            item = ProjectTree::appendDefinition(folder, name, icons.value(path));
        }
        DefinitionObject::read(branch.kind, object, item, texts);
    }
}

} // namespace

void transmitStandardData(const QJsonObject &standard, QStandardItem *item)
{
    DefinitionObject::read(Kind::Standard, standard, item, Texts());
}

void transmitServiceData(const QJsonObject &service, QStandardItem *item)
{
    DefinitionObject::read(Kind::Service, service, item, Texts());
}

void transmitBoxData(const QJsonObject &box, QStandardItem *item)
{
    DefinitionObject::read(Kind::Box, box, item, Texts());
}

void transmitPlcData(const QJsonObject &plc, QStandardItem *item)
{
    DefinitionObject::read(Kind::Plc, plc, item, Texts());
}

void transmitServerData(const QJsonObject &server, QStandardItem *item)
{
    DefinitionObject::read(Kind::Server, server, item, Texts());
}

QStandardItem *loadProject(QStandardItemModel &model, const QJsonObject &root, const QString &folderPath)
{
    const QString name = root.value(nameKey).toString();
    QStandardItem *project = ProjectTree::projectNamed(model, name);
    if (!project) {
        project = ProjectTree::makeProject(name, folderPath, root.value(descriptionKey).toString());
        model.appendRow(project);
    }
    ProjectTree::appendMissingFolders(project);

    const Texts texts;
    for (const Branch &branch : branches) {
        if (QStandardItem *folder = project->child(branch.folderRow)) {
            mergeBranch(branch, root.value(branch.rootKey).toArray(), folder, texts);
        }
    }
    return project;
}
