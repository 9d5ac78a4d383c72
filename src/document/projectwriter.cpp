#include "document/projectwriter.h"

#include "definitions/protocols.h"
#include "document/documentrows.h"
#include "document/plcdocument.h"
#include "document/serverdocument.h"
#include "model/projecttree.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QStandardItem>

using namespace DocumentKeys;

namespace {

QJsonObject boxObject(const QStandardItem &box, const Texts &)
{
    QJsonObject object{{nameKey, box.text()}};
    insertFields(&object, boxFields, box);
    return object;
}

QJsonObject serviceExtendedParameters(const QStandardItem &service, const Texts &texts)
{
    QJsonObject extended;
    const QString ssl = textOf(service, serviceEnableSslRole);
    // Without a password the Box takes an absent key for "no authentication": "0" is never written, on
    // purpose.
    if (ssl == QLatin1String("false")
        && textOf(service, serviceAuthenticationRole) == texts.serviceAuthentication[1]) {
        extended.insert(authenticationKey, QStringLiteral("1"));
        insertFields(&extended, servicePasswordFields, service);
    }
    if (ssl == QLatin1String("true")) {
        insertFields(&extended, serviceCertificateFields, service);
        if (ProjectTree::isTrue(service.data(serviceIsVerifyClientCertRole))) {
            insertFields(&extended, serviceClientCertificateFields, service);
        }
    }
    return extended;
}

QJsonObject serviceObject(const QStandardItem &service, const Texts &texts)
{
    QJsonObject object{{nameKey, service.text()}};
    const QString protocol = textOf(service, serviceProtocolRole);
    if (protocol == Protocols::iec61850) {
        object.insert(protocolKey, protocol);
        insertFields(&object, serviceFields, service);
        object.insert(extendedParametersKey, serviceExtendedParameters(service, texts));
    }
    return object;
}

QJsonObject parameterObject(const QStandardItem &standard, StandardKind kind)
{
    QJsonObject parameter;
    for (const ParameterField &field : standardParameters) {
        if (field.writtenFor & kind) {
            parameter.insert(field.key, toDocument(standard.data(field.role), field.coding));
        }
    }
    return parameter;
}

QJsonObject modbusGroup(const RowList &rows, const Texts &)
{
    QJsonObject group = withRow(QJsonObject(), modbusGroupColumns, rows.value(0));
    group.insert(datasKey, rowArray(modbusPointColumns, rows, 1));
    return group;
}

// A row is: select mark, item label, custom name.
QJsonObject dlt645Point(const QVariantList &row, Dlt645::Version version, const Dlt645::Labels &labels)
{
    QJsonObject point{{selectKey, row.value(0).toString()}};
    const QString label = row.value(1).toString();
    if (label.isEmpty()) {
        return point;
    }
    point.insert(nameKey, row.value(2).toString());
    if (const Dlt645::Item *item = labels.find(label, version)) {
        point.insert(addrKey, QLatin1String(item->code(version).address));
        point.insert(dataTypeKey, QLatin1String(item->code(version).format));
    }
    return point;
}

QJsonObject dlt645Group(const RowList &rows, const Texts &texts)
{
    const QVariantList header = rows.value(0);
    const Dlt645::Version version = Dlt645::versionOf(header.value(1).toString());
    QJsonArray points;
    for (int row = 1; row < rows.size(); ++row) {
        points.append(dlt645Point(rows.at(row), version, texts.labels));
    }
    // The version is the one number of the document.
    return {{slaveAddressKey, header.value(0).toString()},
            {protocolVersionKey, int(version)},
            {datasKey, points}};
}

// One object per entry of the group map, in the order of its keys.
QJsonArray groupArray(const QStandardItem &standard, QJsonObject (*group)(const RowList &, const Texts &),
                      const Texts &texts)
{
    QJsonArray array;
    const auto groups = standard.data(standardDatasRole).value<GroupMap>();
    for (const RowList &rows : groups) {
        array.append(group(rows, texts));
    }
    return array;
}

template <typename Table> QJsonArray plainList(const Table &columns, const QStandardItem &standard)
{
    return rowArray(columns, standard.data(standardDatasRole).value<RowList>(), 0);
}

void writeModbus(QJsonObject *object, const QStandardItem &standard, const Texts &texts)
{
    const QString mode = textOf(standard, standardModbusModeRole);
    const StandardKind kind = mode == Protocols::modbusTcp ? ModbusTcp
        : mode == Protocols::modbusRtu                     ? ModbusRtu
                                                           : None;
    object->insert(modbusKey, mode);
    object->insert(parameterKey, parameterObject(standard, kind));
    object->insert(datasKey, groupArray(standard, modbusGroup, texts));
}

void writeDlt645(QJsonObject *object, const QStandardItem &standard, const Texts &texts)
{
    object->insert(parameterKey, parameterObject(standard, Meter));
    object->insert(datasKey, groupArray(standard, dlt645Group, texts));
}

void writeDido(QJsonObject *object, const QStandardItem &standard, const Texts &)
{
    object->insert(parameterKey, parameterObject(standard, Dido));
    object->insert(datasKey, plainList(didoColumns, standard));
}

void writeCustomPoll(QJsonObject *object, const QStandardItem &standard, const Texts &)
{
    object->insert(parameterKey, parameterObject(standard, CustomPoll));
    object->insert(datasKey, plainList(customPollColumns, standard));
}

void writeOpcUa(QJsonObject *object, const QStandardItem &standard, const Texts &texts)
{
    QJsonObject extended;
    insertFields(&extended, standardSecurityFields, standard);
    const QString authentication = textOf(standard, standardAuthenticationRole);
    if (authentication == texts.standardAuthentication[0]) {
        extended.insert(authenticationKey, QStringLiteral("0"));
    } else if (authentication == texts.standardAuthentication[1]) {
        extended.insert(authenticationKey, QStringLiteral("1"));
    }
    object->insert(parameterKey, parameterObject(standard, OpcUa));
    object->insert(extendedParametersKey, extended);
    object->insert(datasKey, plainList(opcUaColumns, standard));
}

// A protocol of none of these kinds leaves the name alone, without even "protocol".
QJsonObject standardObject(const QStandardItem &standard, const Texts &texts)
{
    static const struct {
        QLatin1String protocol;
        void (*write)(QJsonObject *, const QStandardItem &, const Texts &);
    } kinds[] = {
        {Protocols::modbus, writeModbus}, {Protocols::dlt645, writeDlt645},
        {Protocols::dido, writeDido},     {Protocols::customPoll, writeCustomPoll},
        {Protocols::opcUa, writeOpcUa},
    };

    QJsonObject object{{nameKey, standard.text()}};
    const QString protocol = textOf(standard, standardProtocolRole);
    for (const auto &kind : kinds) {
        if (protocol == kind.protocol) {
            object.insert(protocolKey, protocol);
            kind.write(&object, standard, texts);
            break;
        }
    }
    return object;
}

QJsonObject plc(const QStandardItem &item, const Texts &)
{
    return plcObject(item);
}

QJsonObject server(const QStandardItem &item, const Texts &)
{
    return serverObject(item);
}

// What a folder of the project puts into the document, and under which key of the root; of a branch without a
// key the objects are made and dropped, on purpose: no document has these kinds.
struct Branch {
    QString folder;
    QLatin1String rootKey;
    QJsonObject (*object)(const QStandardItem &, const Texts &);
    QJsonArray objects;
};

const QLatin1String noRootKey("");

void appendChildren(Branch *branch, const QStandardItem &folder, const Texts &texts)
{
    for (int row = 0; row < folder.rowCount(); ++row) {
        if (const QStandardItem *child = folder.child(row)) {
            branch->objects.append(branch->object(*child, texts));
        }
    }
}

} // namespace

QJsonObject buildProjectJson(const QStandardItem *project)
{
    QJsonObject root{{nameKey, project->text()}, {descriptionKey, textOf(*project, projectDescriptionRole)}};
    const Texts texts;
    Branch branches[] = {
        {ProjectTree::boxFolder, boxsKey, boxObject, {}},
        {ProjectTree::standardFolder, standardsKey, standardObject, {}},
        {ProjectTree::serviceFolder, servicesKey, serviceObject, {}},
        {ProjectTree::plcFolder, noRootKey, plc, {}},
        {ProjectTree::serverFolder, noRootKey, server, {}},
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
    return textOf(*project, projectPathRole) + QDir::separator() + project->text() + QLatin1String(".json");
}
