#pragma once

#include "boxlink/boxsettings.h"

#include <QDateTime>
#include <QJsonObject>
#include <QStringList>

#include <optional>

// The settings of a Box under the names that the command line has for them.
namespace SettingsFields {

// "lan", "wan" and so on, in the order of SettingsGroup.
QStringList groups();
std::optional<SettingsGroup> groupNamed(const QString &name);
QString nameOf(SettingsGroup group);

// The names of a group's fields, in the order of the wire.
QStringList fieldsOf(SettingsGroup group);
// The place of the password, or -1.
int secretOf(SettingsGroup group);

// A clock as it is set, and its text. It is no time of this computer: it has no zone and no summer time.
QDateTime clockOf(const QString &text); // invalid for what is none
QString textOf(const QDateTime &clock);

// A field as it is typed and as it goes over the wire: "on" and "off" for what is switched, all else as it
// is.
QString fromWire(const SettingsText &text);
// Nothing with the reason for what the field does not take.
std::optional<QString> toWire(SettingsGroup group, int field, const QString &typed, QString *error);

// The keys and texts of the wire; the password masked unless it is asked for.
QJsonObject json(const BoxSettings &settings, bool showSecrets);
// A line a field: "lan ip=10.0.0.1".
QStringList lines(const BoxSettings &settings, bool showSecrets);

} // namespace SettingsFields
