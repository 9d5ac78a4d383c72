#include "document/projectwriter.h"

#include "document/definitionobject.h"
#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardItem>

using namespace Definitions;
using namespace DocumentKeys;

namespace {

// What a folder of the project puts into the document, and under which key of the root.
// Compat: of a branch without a key the objects are made and dropped; no document has these kinds.
struct Branch {
    QString folder;
    QLatin1String rootKey;
    Kind kind;
    QJsonArray objects;
};

const QLatin1String noRootKey("");

void appendChildren(Branch *branch, const QStandardItem &folder, const Texts &texts)
{
    for (int row = 0; row < folder.rowCount(); ++row) {
        if (const QStandardItem *child = folder.child(row)) {
            branch->objects.append(DefinitionObject::write(branch->kind, *child, texts));
        }
    }
}

} // namespace

QJsonObject buildProjectJson(const QStandardItem *project)
{
    const Texts texts;
    QJsonObject root = DefinitionObject::write(Kind::Project, *project, texts);
    Branch branches[] = {
        {ProjectTree::boxFolder, boxsKey, Kind::Box, {}},
        {ProjectTree::standardFolder, standardsKey, Kind::Standard, {}},
        {ProjectTree::serviceFolder, servicesKey, Kind::Service, {}},
        {ProjectTree::plcFolder, noRootKey, Kind::Plc, {}},
        {ProjectTree::serverFolder, noRootKey, Kind::Server, {}},
    };
    for (int row = 0; row < project->rowCount(); ++row) {
        const QStandardItem *folder = project->child(row);
        for (Branch &branch : branches) {
            if (folder && folder->text() == branch.folder) {
                appendChildren(&branch, *folder, texts);
            }
        }
    }
    // Any folder at all, whatever its text, brings all three arrays; a project without folders has none.
    if (project->rowCount() > 0) {
        for (const Branch &branch : branches) {
            if (!branch.rootKey.isEmpty()) {
                root.insert(branch.rootKey, branch.objects);
            }
        }
    }
    return root;
}

QByteArray projectDocument(const QStandardItem *project)
{
    return QJsonDocument(buildProjectJson(project)).toJson();
}

QString projectFilePath(const QStandardItem *project)
{
    return project->data(projectPathRole).toString() + QDir::separator() + project->text()
        + QLatin1String(".json");
}
