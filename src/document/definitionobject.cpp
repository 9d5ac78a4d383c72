#include "document/definitionobject.h"

#include "definitions/protocols.h"
#include "document/documentrows.h"
#include "document/standardgroups.h"
#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QJsonArray>
#include <QStandardItem>

#include <algorithm>

using namespace Definitions;
using namespace DocumentKeys;

namespace {

QString textOf(const QStandardItem &item, int role)
{
    return item.data(role).toString();
}

unsigned serviceKind(const QStandardItem &service, const Texts &texts)
{
    if (textOf(service, serviceProtocolRole) != Protocols::iec61850) {
        return UnknownService;
    }
    const QString ssl = textOf(service, serviceEnableSslRole);
    if (ssl == QLatin1String("true")) {
        return ProjectTree::isTrue(service.data(serviceIsVerifyClientCertRole)) ? VerifyingService
                                                                                : SslService;
    }
    const bool hasPassword = ssl == QLatin1String("false")
        && textOf(service, serviceAuthenticationRole) == texts.serviceAuthentication[1];
    return hasPassword ? PasswordService : OpenService;
}

unsigned writtenSubKinds(Kind kind, const QStandardItem &item, const Texts &texts)
{
    switch (kind) {
    case Kind::Standard:
        return standardKind(textOf(item, standardProtocolRole), textOf(item, standardModbusModeRole));
    case Kind::Service:
        return serviceKind(item, texts);
    case Kind::Server:
        return serverKind(textOf(item, serverProtocolRole));
    case Kind::Plc:
        return plcKinds(textOf(item, plcManufacturerRole), textOf(item, plcProtocolRole));
    case Kind::Project:
    case Kind::Box:
        break;
    }
    return anySubKind;
}

unsigned readSubKinds(Kind kind, const QJsonObject &object)
{
    const QString protocol = object.value(protocolKey).toString();
    switch (kind) {
    case Kind::Standard:
        return standardKind(protocol, object.value(modbusKey).toString());
    case Kind::Server:
        return serverKind(protocol);
    case Kind::Plc:
        return plcKinds(object.value(manufacturerKey).toString(), protocol);
    case Kind::Service:
    case Kind::Project:
    case Kind::Box:
        break;
    }
    return anySubKind;
}

using Choices = std::array<QString, 2>;

// Undefined, which no object takes, for a text that is none of the choices.
QJsonValue codeOf(const QString &text, const Choices &choices)
{
    const auto found = std::find(choices.begin(), choices.end(), text);
    return found == choices.end() ? QJsonValue(QJsonValue::Undefined)
                                  : QJsonValue(QString::number(found - choices.begin()));
}

// Invalid for a code that is none.
QVariant choiceOf(const QString &code, const Choices &choices)
{
    for (std::size_t place = 0; place < choices.size(); ++place) {
        if (code == QString::number(place)) {
            return choices[place];
        }
    }
    return QVariant();
}

// Lists of one key share its array.
QJsonArray withRows(QJsonArray array, const Rows &rows, const RowList &list)
{
    QJsonObject others;
    if (rows.registerType) {
        others.insert(registerKey, QLatin1String(rows.registerType));
    }
    appendRows(&array, rows, list, 0, others);
    return array;
}

RowList readRows(const QJsonArray &array, const Rows &rows)
{
    RowList list;
    list.reserve(array.size());
    for (const QJsonValue &value : array) {
        const QJsonObject object = value.toObject();
        if (!rows.registerType || object.value(registerKey).toString() == QLatin1String(rows.registerType)) {
            list.append(readRow(rows, object));
        }
    }
    return list;
}

QJsonValue encoded(const Value &value, const QVariant &stored, const QJsonValue &present, const Texts &texts)
{
    switch (value.coding) {
    case Coding::Text:
    case Coding::Flag:
        return toDocument(stored, value.coding);
    case Coding::Hexadecimal:
        return QString::number(stored.toInt(), 16).toUpper();
    case Coding::ServiceLogin:
        return codeOf(stored.toString(), texts.serviceAuthentication);
    case Coding::StandardLogin:
        return codeOf(stored.toString(), texts.standardAuthentication);
    case Coding::Rows:
        return withRows(present.toArray(), *value.rows, stored.value<RowList>());
    case Coding::ModbusGroups:
        return StandardGroups::writeModbus(stored.value<GroupMap>());
    case Coding::MeterGroups:
        return StandardGroups::writeMeters(stored.value<GroupMap>(), texts.labels);
    case Coding::Constant:
        return QLatin1String(value.defaultValue);
    case Coding::Unsaved:
        break;
    }
    return QJsonValue::Undefined;
}

// Invalid where the role is left alone.
QVariant decoded(const Value &value, const QJsonValue &written, const Texts &texts)
{
    switch (value.coding) {
    case Coding::Text:
    case Coding::Flag:
        return fromDocument(written, value.coding);
    case Coding::Hexadecimal:
        return QString::number(written.toString().toInt(nullptr, 16));
    case Coding::ServiceLogin:
        return choiceOf(written.toString(), texts.serviceAuthentication);
    case Coding::StandardLogin:
        return choiceOf(written.toString(), texts.standardAuthentication);
    case Coding::Rows:
        return QVariant::fromValue(readRows(written.toArray(), *value.rows));
    case Coding::ModbusGroups:
        return QVariant::fromValue(StandardGroups::readModbus(written.toArray()));
    case Coding::MeterGroups:
        return QVariant::fromValue(StandardGroups::readMeters(written.toArray(), texts.labels));
    case Coding::Constant:
    case Coding::Unsaved:
        break;
    }
    return QVariant();
}

int roleOf(const Value &value, const QVariant &decoded)
{
    return value.roleIfOff != noRole && decoded.toString() == QLatin1String("false") ? value.roleIfOff
                                                                                     : value.role;
}

} // namespace

QJsonObject DefinitionObject::write(Kind kind, const QStandardItem &item, const Texts &texts)
{
    const unsigned subKinds = writtenSubKinds(kind, item, texts);
    QJsonObject object{{nameKey, item.text()}};
    QJsonObject parameter;
    QJsonObject extended;
    for (const Value &value : values(kind)) {
        if (value.subKinds & subKinds) {
            QJsonObject &target = value.place == Place::Object ? object
                : value.place == Place::Parameter              ? parameter
                                                               : extended;
            const QLatin1String key(value.key);
            target.insert(key, encoded(value, item.data(value.role), target.value(key), texts));
        }
    }
    if (subKindsWith(kind, Place::Parameter) & subKinds) {
        object.insert(parameterKey, parameter);
    }
    if (subKindsWith(kind, Place::ExtendedParameters) & subKinds) {
        object.insert(extendedParametersKey, extended);
    }
    return object;
}

void DefinitionObject::read(Kind kind, const QJsonObject &object, QStandardItem *item, const Texts &texts)
{
    const unsigned subKinds = readSubKinds(kind, object);
    const QJsonObject parameter = object.value(parameterKey).toObject();
    const QJsonObject extended = object.value(extendedParametersKey).toObject();
    for (const Value &value : values(kind)) {
        if (value.readFor & subKinds) {
            const QJsonObject &source = value.place == Place::Object ? object
                : value.place == Place::Parameter                    ? parameter
                                                                     : extended;
            const QLatin1String key(value.readKey ? value.readKey : value.key);
            const QVariant found = decoded(value, source.value(key), texts);
            if (found.isValid()) {
                item->setData(found, roleOf(value, found));
            }
        }
    }
}
