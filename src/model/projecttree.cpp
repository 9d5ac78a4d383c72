#include "model/projecttree.h"

#include "model/itemroles.h"

#include <QIcon>
#include <QJsonObject>
#include <QStandardItem>
#include <QStandardItemModel>
#include <QVariant>

namespace ProjectTree {

const QString standardFolder = QStringLiteral("Standard");
const QString serviceFolder = QStringLiteral("Service");
const QString boxFolder = QStringLiteral("Box");
const QString dataFolder = QStringLiteral("Data");
const QString plcFolder = QStringLiteral("PLC");
const QString serverFolder = QStringLiteral("Server");

const QString boxIcon = QStringLiteral(":/adsdemo/images/box-file.svg");
const QString serviceIcon = QStringLiteral(":/adsdemo/images/IEC61850.svg");
const QString dataIcon = QStringLiteral(":/adsdemo/images/data-file.svg");

Level levelOf(const QStandardItem *item)
{
    if (!item->parent()) {
        return Level::Project;
    }
    return item->parent()->parent() ? Level::Definition : Level::Folder;
}

QStandardItem *projectOf(QStandardItem *item)
{
    while (item && item->parent()) {
        item = item->parent();
    }
    return item;
}

QStandardItem *itemAt(const QModelIndex &index)
{
    const auto *model = qobject_cast<const QStandardItemModel *>(index.model());
    return model ? model->itemFromIndex(index) : nullptr;
}

QStandardItem *childNamed(const QStandardItem *parent, const QString &text, const QStandardItem *except)
{
    for (int row = 0; parent && row < parent->rowCount(); ++row) {
        QStandardItem *child = parent->child(row);
        if (child && child != except && child->text() == text) {
            return child;
        }
    }
    return nullptr;
}

QStandardItem *projectNamed(const QStandardItemModel &model, const QString &name, const QStandardItem *except)
{
    return childNamed(model.invisibleRootItem(), name, except);
}

QStandardItem *makeProject(const QString &name, const QString &path, const QString &description)
{
    auto *project = new QStandardItem(name);
    project->setIcon(QIcon(QStringLiteral(":/adsdemo/images/project_manage.svg")));
    project->setData(path, projectPathRole);
    project->setData(description, projectDescriptionRole);
    return project;
}

void appendMissingFolders(QStandardItem *project)
{
    const struct {
        QString text;
        QString icon;
    } folders[] = {
        {standardFolder, QStringLiteral(":/adsdemo/images/standard.svg")},
        {serviceFolder, QStringLiteral(":/adsdemo/images/Service.svg")},
        {boxFolder, QStringLiteral(":/adsdemo/images/Box.svg")},
        {dataFolder, QStringLiteral(":/adsdemo/images/Data.svg")},
    };
    for (const auto &folder : folders) {
        if (!childNamed(project, folder.text)) {
            appendDefinition(project, folder.text, folder.icon);
        }
    }
}

QStandardItem *appendDefinition(QStandardItem *folder, const QString &name, const QString &icon,
                                const Roles &roles)
{
    return appendDefinition(folder, name, icon.isEmpty() ? QIcon() : QIcon(icon), roles);
}

QStandardItem *appendDefinition(QStandardItem *folder, const QString &name, const QIcon &icon,
                                const Roles &roles)
{
    auto *item = new QStandardItem(name);
    if (!icon.isNull()) {
        item->setIcon(icon);
    }
    for (const auto &role : roles) {
        item->setData(role.second, role.first);
    }
    folder->appendRow(item);
    return item;
}

bool isTrue(const QVariant &flag)
{
    return flag.toString() == QLatin1String("true");
}

void registerTypes()
{
    qRegisterMetaType<RowList>("QList<QVariantList>");
    qRegisterMetaType<GroupMap>("QMap<QString,QList<QVariantList>>");
    qRegisterMetaType<QList<QJsonObject>>("QList<QJsonObject>");
}

} // namespace ProjectTree
