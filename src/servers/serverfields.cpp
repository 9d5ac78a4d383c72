#include "servers/serverfields.h"

#include "model/itemroles.h"

namespace ServerFields {

namespace {

ListField *addIdentityStoredIn(int protocolRole, FieldGroup &fields)
{
    fields.add<TextField>(Qt::DisplayRole, "name", QT_TRANSLATE_NOOP("ServerFields", "Server Name:"))
        ->readOnly();
    fields.add<TextField>(serverDescriptionRole, QT_TRANSLATE_NOOP("ServerFields", "Description:"));
    // Named here: without a role there is no key to name it by.
    return fields.add<ListField>(protocolRole, "protocol", QT_TRANSLATE_NOOP("ServerFields", "Protocol:"))
        ->disabled(); // a Server keeps its protocol
}

} // namespace

void addIdentity(FieldGroup &fields, QLatin1String protocol)
{
    addIdentityStoredIn(serverProtocolRole, fields)->entries({protocol});
}

void addCloud(FieldGroup &fields, QLatin1String protocol)
{
    addIdentityStoredIn(FormField::noRole, fields)->entries({fields.translated(protocol.latin1())});
    fields.addUnseen<ListField>(serverProtocolRole, "protocolKey", QString())->entries({protocol});
    fields.add<TextField>(serverDomainNameRole, QT_TRANSLATE_NOOP("ServerFields", "Domain Name:"))
        ->check(hostNameValidator);
    addPort(fields);
}

void addDevice(FieldGroup &fields)
{
    fields.add<TextField>(serverProductKeyRole, QT_TRANSLATE_NOOP("ServerFields", "Product Key:"))
        ->check(noCjkValidator);
    fields.add<TextField>(serverDeviceNameRole, QT_TRANSLATE_NOOP("ServerFields", "Device Name:"))
        ->check(noCjkValidator);
    fields.add<TextField>(serverDeviceSecretRole, QT_TRANSLATE_NOOP("ServerFields", "Device Secret:"))
        ->check(noCjkValidator)
        ->password();
}

void addPort(FieldGroup &fields)
{
    fields.add<TextField>(serverPortRole, QT_TRANSLATE_NOOP("ServerFields", "Port:"))->check(portValidator);
}

void addClientId(FieldGroup &fields)
{
    fields.add<TextField>(serverClientIdRole, QT_TRANSLATE_NOOP("ServerFields", "Client ID:"))
        ->check(noCjkValidator);
}

void addUserName(FieldGroup &fields)
{
    fields.add<TextField>(serverUsernameRole, QT_TRANSLATE_NOOP("ServerFields", "User Name:"))
        ->check(noCjkValidator);
}

TextField *addPassword(FieldGroup &fields)
{
    return fields.add<TextField>(serverPasswordRole, QT_TRANSLATE_NOOP("ServerFields", "Password:"))
        ->check(noCjkValidator);
}

void addQos(FieldGroup &fields, const char *levels)
{
    fields.add<ListField>(serverQosRole, QT_TRANSLATE_NOOP("ServerFields", "qos:"))
        ->entries(levels)
        ->fallback("1");
}

} // namespace ServerFields
