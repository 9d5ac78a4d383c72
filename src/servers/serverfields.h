#pragma once

#include "forms/fieldtable.h"

// Fields that the forms of several Servers share; their texts stand in the shared context ServerFields.
namespace ServerFields {

// "name", "description" and the one-entry list "protocol", which is stored.
QVector<Field> identity(const QString &protocol);
// The rows from "name" to "port" of a Server in a provider's cloud. "protocol" shows what the provider is
// called and is not stored; the list "protocolKey" behind it is, and has the plain key.
QVector<Field> cloud(const QString &protocol);
// What a device is known by to its provider: "productKey", "deviceName", "deviceSecret".
QVector<Field> device();
QVector<Field> port();
QVector<Field> clientId();
// "username" and "password"; the password is hidden unless the kind says otherwise.
QVector<Field> credentials(FieldKind password = FieldKind::Password);
// The levels offered; a stored one that is not among them shows as "1".
QVector<Field> qos(const QStringList &levels);

// A text in which only what the regular expression allows may be typed, and a list whose choice is stored by
// its code; both of the form's own context.
Field patterned(const char *name, const char *label, FieldKind kind, int role, const char *pattern);
Field coded(const char *name, const char *label, int role, const QVector<Choice> &choices);

// A Server keeps its protocol: disables "protocol" and takes the row of "protocolKey" out of sight.
void lockProtocol(const FieldTable &fields);

} // namespace ServerFields
