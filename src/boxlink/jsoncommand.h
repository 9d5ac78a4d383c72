#pragma once

#include "boxlink/boxsettings.h"
#include "boxlink/frame.h"

#include <QByteArray>
#include <QJsonObject>
#include <QStringList>

#include <optional>
#include <variant>

// The result of a write or of the reboot.
struct CommandResult {
    Frame::JsonType command; // LanWrite to TimeWrite, or DeviceReboot
    QString code;

    bool succeeded() const { return code == QLatin1String("200"); }
};

// The JSON commands of command 0x0500: settings, group by group, and the reboot.
namespace JsonCommand {

Frame::JsonType readType(SettingsGroup group);
Frame::JsonType writeType(SettingsGroup group);
QJsonObject readRequest(SettingsGroup group);
QJsonObject writeRequest(const BoxSettings &settings);
QJsonObject rebootRequest();

// The "type" of an answer, or nothing if the text is no JSON object with a string of that key.
std::optional<QString> typeOf(const QByteArray &answer);
// The command with that "type", or nothing for one that is not in use.
std::optional<Frame::JsonType> commandOf(const QString &type);

// What the answer to a command says: the settings that were read, the result of a write or of the reboot, or
// nothing. Settings need all of their keys, where a value that is not a JSON string reads as an empty text; a
// result needs a "code" that is a JSON string.
using Answer = std::variant<std::monostate, BoxSettings, CommandResult>;
Answer readAnswer(Frame::JsonType command, const QByteArray &answer);

// The keys of such settings whose values are no JSON strings, in the wire's order: their empty texts are not
// what the Box has.
QStringList keysWithoutText(SettingsGroup group, const QByteArray &answer);

} // namespace JsonCommand
