#include "boxctl/settingsfields.h"

#include "boxctl/boxlist.h"
#include "boxctl/output.h"

#include <algorithm>

namespace {

// By SettingsGroup. The kind of a field is a letter: a address, t any text, d DHCP, s state, p password, c
// clock.
const struct {
    const char *name;
    const char *fields;
    const char *kinds;
} table[] = {
    {"lan", "ip mask gateway dns1 dns2", "aaaaa"},
    {"wan", "dhcp ip mask gateway dns1 dns2", "daaaaa"},
    {"wifi", "state mode ssid password dhcp ip mask gateway dns1 dns2", "sttpdaaaaa"},
    {"lte", "state at1 at2 at3 at4 at5", "sttttt"},
    {"ntp", "server", "a"},
    {"time", "time", "c"},
};

const QString on = QStringLiteral("on");
const QString off = QStringLiteral("off");

const QString dateFormat = QStringLiteral("yyyy-MM-dd");
const QString timeFormat = QStringLiteral("HH:mm:ss");

bool hasControlCharacter(const QString &text)
{
    return std::any_of(text.cbegin(), text.cend(),
                       [](QChar character) { return character.category() == QChar::Other_Control; });
}

} // namespace

QStringList SettingsFields::groups()
{
    QStringList names;
    for (const auto &group : table) {
        names.append(QString::fromLatin1(group.name));
    }
    return names;
}

std::optional<SettingsGroup> SettingsFields::groupNamed(const QString &name)
{
    const int place = groups().indexOf(name);
    return place < 0 ? std::nullopt : std::optional(static_cast<SettingsGroup>(place));
}

QString SettingsFields::nameOf(SettingsGroup group)
{
    return QString::fromLatin1(table[int(group)].name);
}

QStringList SettingsFields::fieldsOf(SettingsGroup group)
{
    return QString::fromLatin1(table[int(group)].fields).split(QLatin1Char(' '));
}

int SettingsFields::secretOf(SettingsGroup group)
{
    return QByteArray(table[int(group)].kinds).indexOf('p');
}

QDateTime SettingsFields::clockOf(const QString &text)
{
    const QDateTime clock(QDate::fromString(text.section(QLatin1Char(' '), 0, 0), dateFormat),
                          QTime::fromString(text.section(QLatin1Char(' '), 1), timeFormat), Qt::UTC);
    return textOf(clock) == text ? clock : QDateTime();
}

QString SettingsFields::textOf(const QDateTime &clock)
{
    return clock.toString(dateFormat + QLatin1Char(' ') + timeFormat);
}

QString SettingsFields::fromWire(const SettingsText &text)
{
    const QString &wire = *text.text;
    const QString lower = wire.toLower();
    if (text.kind == SettingsText::OnOff && (lower == on || lower == off)) {
        return lower;
    }
    if (text.kind == SettingsText::Dhcp && wire == QLatin1String("1")) {
        return on;
    }
    return text.kind == SettingsText::Dhcp && wire == QLatin1String("0") ? off : wire;
}

std::optional<QString> SettingsFields::toWire(SettingsGroup group, int field, const QString &typed,
                                              QString *error)
{
    const char kind = table[int(group)].kinds[field];
    switch (kind) {
    case 'd':
    case 's':
        if (typed != on && typed != off) {
            *error = QStringLiteral("takes on or off");
            return std::nullopt;
        }
        return kind == 's' ? typed : QString::number(int(typed == on));
    case 'a':
        if (!typed.isEmpty() && !BoxTarget::isAddress(typed)) {
            *error = QStringLiteral("takes an IPv4 address, or nothing");
            return std::nullopt;
        }
        return typed;
    case 'c':
        if (!clockOf(typed).isValid()) {
            *error = QStringLiteral("takes now, or a time such as \"2026-11-21 20:00:00\"");
            return std::nullopt;
        }
        return typed;
    default:
        break;
    }
    if (hasControlCharacter(typed)) {
        *error = QStringLiteral("takes no control characters");
        return std::nullopt;
    }
    return typed;
}

QJsonObject SettingsFields::json(const BoxSettings &settings, bool showSecrets)
{
    BoxSettings record = settings;
    QJsonObject object;
    const QVector<SettingsText> texts = textsOf(record);
    for (int field = 0; field < texts.size(); ++field) {
        const QString text = *texts.at(field).text;
        const bool isMasked = field == secretOf(groupOf(settings)) && !showSecrets;
        object.insert(QLatin1String(texts.at(field).key), isMasked ? Output::masked(text) : text);
    }
    return object;
}

QStringList SettingsFields::lines(const BoxSettings &settings, bool showSecrets)
{
    const SettingsGroup group = groupOf(settings);
    BoxSettings record = settings;
    const QVector<SettingsText> texts = textsOf(record);
    const QStringList fields = fieldsOf(group);
    QStringList lines;
    for (int field = 0; field < texts.size(); ++field) {
        const QString text = fromWire(texts.at(field));
        const bool isMasked = field == secretOf(group) && !showSecrets;
        const QString shown = isMasked ? Output::masked(text) : text;
        lines.append(group == SettingsGroup::Time
                         ? QStringLiteral("time %1").arg(shown)
                         : QStringLiteral("%1 %2=%3").arg(nameOf(group), fields.at(field), shown));
    }
    return lines;
}
