#include "boxlink/jsoncommand.h"

#include <QJsonDocument>

#include <iterator>

namespace {

const QLatin1String typeKey("type");
const QLatin1String paresKey("pares");
const QLatin1String codeKey("code");

// By SettingsGroup.
struct GroupCommands {
    Frame::JsonType read;
    Frame::JsonType write;
};
constexpr GroupCommands groupCommands[] = {
    {Frame::LanRead, Frame::LanWrite}, {Frame::WanRead, Frame::WanWrite}, {Frame::WifiRead, Frame::WifiWrite},
    {Frame::LteRead, Frame::LteWrite}, {Frame::NtpRead, Frame::NtpWrite}, {Frame::TimeRead, Frame::TimeWrite},
};
static_assert(std::size(groupCommands) == std::variant_size_v<BoxSettings>);

std::optional<BoxSettings> readSettings(SettingsGroup group, const QJsonValue &pares)
{
    if (!pares.isObject()) {
        return std::nullopt;
    }
    const QJsonObject values = pares.toObject();
    BoxSettings settings = emptySettings(group);
    const QVector<SettingsText> texts = textsOf(settings);
    for (const SettingsText &text : texts) {
        const QJsonValue value = values.value(QLatin1String(text.key));
        if (value.isUndefined()) {
            return std::nullopt;
        }
        *text.text = value.toString();
    }
    return settings;
}

} // namespace

Frame::JsonType JsonCommand::readType(SettingsGroup group)
{
    return groupCommands[int(group)].read;
}

Frame::JsonType JsonCommand::writeType(SettingsGroup group)
{
    return groupCommands[int(group)].write;
}

// Compat: a read and the reboot carry the type as a string, a write carries it as a number. The Box expects
// it so.
QJsonObject JsonCommand::readRequest(SettingsGroup group)
{
    return {{typeKey, QString::number(groupCommands[int(group)].read)}, {paresKey, QJsonObject()}};
}

QJsonObject JsonCommand::rebootRequest()
{
    return {{typeKey, QString::number(Frame::DeviceReboot)},
            {paresKey, QJsonObject{{QStringLiteral("reboot"), QStringLiteral("reboot")}}}};
}

QJsonObject JsonCommand::writeRequest(const BoxSettings &settings)
{
    BoxSettings record = settings;
    QJsonObject pares;
    const QVector<SettingsText> texts = textsOf(record);
    for (const SettingsText &text : texts) {
        const bool sent = text.kind != SettingsText::Dhcp || *text.text == QLatin1String("1")
            || *text.text == QLatin1String("0");
        if (sent) {
            pares.insert(QLatin1String(text.key), *text.text);
        }
    }
    return {{typeKey, int(groupCommands[settings.index()].write)}, {paresKey, pares}};
}

std::optional<QString> JsonCommand::typeOf(const QByteArray &answer)
{
    const QJsonValue type = QJsonDocument::fromJson(answer).object().value(typeKey);
    return type.isString() ? std::optional(type.toString()) : std::nullopt;
}

std::optional<Frame::JsonType> JsonCommand::commandOf(const QString &type)
{
    const auto isType = [&type](Frame::JsonType command) { return type == QString::number(command); };
    for (const GroupCommands &commands : groupCommands) {
        if (isType(commands.read)) {
            return commands.read;
        }
        if (isType(commands.write)) {
            return commands.write;
        }
    }
    return isType(Frame::DeviceReboot) ? std::optional(Frame::DeviceReboot) : std::nullopt;
}

JsonCommand::Answer JsonCommand::readAnswer(Frame::JsonType command, const QByteArray &answer)
{
    const QJsonObject object = QJsonDocument::fromJson(answer).object();
    for (int group = 0; group < int(std::size(groupCommands)); ++group) {
        if (groupCommands[group].read == command) {
            const auto settings = readSettings(static_cast<SettingsGroup>(group), object.value(paresKey));
            return settings ? Answer(*settings) : Answer();
        }
    }
    const QJsonValue code = object.value(codeKey);
    return code.isString() ? Answer(CommandResult{command, code.toString()}) : Answer();
}

QStringList JsonCommand::keysWithoutText(SettingsGroup group, const QByteArray &answer)
{
    const QJsonObject values = QJsonDocument::fromJson(answer).object().value(paresKey).toObject();
    BoxSettings settings = emptySettings(group);
    const QVector<SettingsText> texts = textsOf(settings);
    QStringList keys;
    for (const SettingsText &text : texts) {
        if (!values.value(QLatin1String(text.key)).isString()) {
            keys.append(QLatin1String(text.key));
        }
    }
    return keys;
}
