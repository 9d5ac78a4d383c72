#include "document/projectreader.h"

#include "definitions/protocols.h"
#include "document/documentrows.h"
#include "model/projecttree.h"

#include <QHash>
#include <QIcon>
#include <QJsonArray>
#include <QStandardItem>
#include <QStandardItemModel>

using namespace DocumentKeys;

namespace {

void readAuthentication(const QJsonObject &extended, const std::array<QString, 2> &texts, QStandardItem *item,
                        int role)
{
    const QString code = extended.value(authenticationKey).toString();
    if (code == QLatin1String("0")) {
        item->setData(texts[0], role);
    } else if (code == QLatin1String("1")) {
        item->setData(texts[1], role);
    }
}

void readBox(const QJsonObject &box, QStandardItem *item, const Texts &)
{
    readFields(box, boxFields, item);
}

void readService(const QJsonObject &service, QStandardItem *item, const Texts &texts)
{
    item->setData(service.value(protocolKey).toString(), serviceProtocolRole);
    readFields(service, serviceFields, item);
    const QJsonObject extended = service.value(extendedParametersKey).toObject();
    readAuthentication(extended, texts.serviceAuthentication, item, serviceAuthenticationRole);
    readFields(extended, servicePasswordFields, item);
    readFields(extended, serviceCertificateFields, item);
    readFields(extended, serviceClientCertificateFields, item);
}

// Where "communicationTimeout" goes; a Modbus Standard of neither mode keeps both roles as they are.
int timeoutRoleOf(const QString &protocol, const QString &mode)
{
    if (protocol != Protocols::modbus || mode == Protocols::modbusTcp) {
        return standardCommunicationTimeoutRole;
    }
    return mode == Protocols::modbusRtu ? standardRtuCommunicationTimeoutRole : -1;
}

void readParameter(const QJsonObject &parameter, int timeoutRole, QStandardItem *item)
{
    for (const ParameterField &field : standardParameters) {
        if (field.key != communicationTimeoutKey || field.role == timeoutRole) {
            item->setData(fromDocument(parameter.value(field.key), field.coding), field.role);
        }
    }
}

RowList readModbusGroup(const QJsonObject &group, const Texts &)
{
    const QJsonArray points = group.value(datasKey).toArray();
    RowList rows;
    rows.reserve(points.size() + 1);
    rows.append(readRow(modbusGroupColumns, group));
    for (const QJsonValue &point : points) {
        rows.append(readRow(modbusPointColumns, point.toObject()));
    }
    return rows;
}

// The label follows from the identifier alone, on purpose: the identifiers of the two editions never
// coincide, so a group may hold items of either, whatever version it names.
RowList readDlt645Group(const QJsonObject &group, const Texts &texts)
{
    const QJsonArray points = group.value(datasKey).toArray();
    const bool is2007 = group.value(protocolVersionKey).toInt() == Dlt645::Version2007;
    RowList rows;
    rows.reserve(points.size() + 1);
    rows.append(QVariantList{group.value(slaveAddressKey).toString(),
                             Dlt645::versionText(is2007 ? Dlt645::Version2007 : Dlt645::Version1997)});
    for (const QJsonValue &value : points) {
        const QJsonObject point = value.toObject();
        rows.append(QVariantList{point.value(selectKey).toString(),
                                 texts.labels.ofAddress(point.value(addrKey).toString()),
                                 point.value(nameKey).toString()});
    }
    return rows;
}

// Groups are named after their place in the array, from 1. The map orders these names as text, so from ten
// groups on it changes their order, on purpose: tab titles are the keys of the role.
QVariant readGroups(const QJsonArray &groups, QLatin1String protocol,
                    RowList (*readGroup)(const QJsonObject &, const Texts &), const Texts &texts)
{
    GroupMap map;
    int number = 1;
    for (const QJsonValue &group : groups) {
        map.insert(protocol + QLatin1Char('-') + QString::number(number++),
                   readGroup(group.toObject(), texts));
    }
    return QVariant::fromValue(map);
}

void readStandard(const QJsonObject &standard, QStandardItem *item, const Texts &texts)
{
    const QString protocol = standard.value(protocolKey).toString();
    const QString mode = standard.value(modbusKey).toString();
    item->setData(protocol, standardProtocolRole);
    item->setData(mode, standardModbusModeRole);
    readParameter(standard.value(parameterKey).toObject(), timeoutRoleOf(protocol, mode), item);

    const QJsonObject extended = standard.value(extendedParametersKey).toObject();
    readFields(extended, standardSecurityFields, item);
    readAuthentication(extended, texts.standardAuthentication, item, standardAuthenticationRole);

    const QJsonArray groups = standard.value(datasKey).toArray();
    if (protocol == Protocols::dlt645) {
        item->setData(readGroups(groups, Protocols::dlt645, readDlt645Group, texts), standardDatasRole);
    } else if (protocol == Protocols::modbus) {
        item->setData(readGroups(groups, Protocols::modbus, readModbusGroup, texts), standardDatasRole);
    }
}

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
    void (*read)(const QJsonObject &, QStandardItem *, const Texts &);
};

const Branch branches[] = {
    {standardsKey, ProjectTree::StandardRow, standardIconOf, readStandard},
    {servicesKey, ProjectTree::ServiceRow, serviceIconOf, readService},
    {boxsKey, ProjectTree::BoxRow, boxIconOf, readBox},
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
        branch.read(object, item, texts);
    }
}

} // namespace

void transmitStandardData(const QJsonObject &standard, QStandardItem *item)
{
    readStandard(standard, item, Texts());
}

void transmitServiceData(const QJsonObject &service, QStandardItem *item)
{
    readService(service, item, Texts());
}

void transmitBoxData(const QJsonObject &box, QStandardItem *item)
{
    readBox(box, item, Texts());
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
