#pragma once

#include "forms/fieldgroup.h"

// Rows that the forms of several Servers share; each function adds its own to the group. Their texts stand in
// the shared context ServerFields.
namespace ServerFields {

// "name", "description" and the one-entry list "protocol", which is stored and can't be changed.
void addIdentity(FieldGroup &fields, QLatin1String protocol);
// The rows from "name" to "port" of a Server in a provider's cloud. "protocol" shows what the provider is
// called and is not stored; the unseen list "protocolKey" behind it is, and has the plain key.
void addCloud(FieldGroup &fields, QLatin1String protocol);
// What a device is known by to its provider: "productKey", "deviceName", "deviceSecret".
void addDevice(FieldGroup &fields);
void addPort(FieldGroup &fields);
void addClientId(FieldGroup &fields);
void addUserName(FieldGroup &fields);
TextField *addPassword(FieldGroup &fields);
// The levels offered, separated by blanks; a stored one that is not among them shows as "1".
void addQos(FieldGroup &fields, const char *levels);

} // namespace ServerFields
