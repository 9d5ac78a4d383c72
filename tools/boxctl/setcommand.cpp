#include "boxctl/boxrun.h"
#include "boxctl/call.h"
#include "boxctl/projectdocument.h"
#include "boxctl/settask.h"
#include "boxctl/settingsfields.h"
#include "boxctl/terminal.h"

namespace {

constexpr qint64 longestPasswordFile = 4096; // bytes

// Reads the words behind the Boxes of a call.
class ChangeReader
{
public:
    SetTask::Change change;
    QString error;

    // What waits until the Boxes of the call are known to be some. Gives what is wrong with it.
    QString readSecret()
    {
        if (m_secretSource.isEmpty()) {
            return {};
        }
        const std::optional<QString> secret = m_secretSource == QLatin1String("-")
            ? Terminal::askSecret(QStringLiteral("Password: "), &error)
            : firstLineOf(m_secretSource.mid(1));
        if (secret) {
            put(SettingsFields::secretOf(change.group), QStringLiteral("password"), *secret);
        }
        return error;
    }

    void readTime(const QStringList &words)
    {
        if (words.size() != 1) {
            error = QStringLiteral("time takes now, or one time such as \"2026-11-21 20:00:00\"");
            return;
        }
        change.isNow = words.constFirst() == QLatin1String("now");
        if (change.isNow) {
            change.fields.insert(0, {});
        } else {
            put(0, QStringLiteral("time"), words.constFirst());
        }
    }

    void readField(const QString &word)
    {
        const QString name = word.section(QLatin1Char('='), 0, 0);
        const int field = SettingsFields::fieldsOf(change.group).indexOf(name);
        if (field < 0) {
            error = QStringLiteral("%1 has no field '%2'").arg(SettingsFields::nameOf(change.group), name);
        } else if (!word.contains(QLatin1Char('='))) {
            const bool isSecret = field == SettingsFields::secretOf(change.group);
            error = isSecret ? QStringLiteral("%1 needs a source: %1=@FILE or %1=-").arg(name)
                             : QStringLiteral("%1 needs a text, as in %1=TEXT").arg(name);
        } else if (change.fields.contains(field)) {
            error = QStringLiteral("%1 is named twice").arg(name);
        } else {
            const QString text = word.section(QLatin1Char('='), 1);
            if (field != SettingsFields::secretOf(change.group)) {
                put(field, name, text);
            } else if (text == QLatin1String("-") || text.startsWith(QLatin1Char('@'))) {
                m_secretSource = text;
                change.fields.insert(field, {});
            } else {
                error = QStringLiteral(
                    "a password is no argument, which others can see: password=@FILE or password=-");
            }
        }
    }

private:
    void put(int field, const QString &name, const QString &text)
    {
        QString reason;
        const std::optional<QString> wire = SettingsFields::toWire(change.group, field, text, &reason);
        if (wire) {
            change.fields.insert(field, *wire);
        } else {
            error = QStringLiteral("%1 %2").arg(name, reason);
        }
    }

    std::optional<QString> firstLineOf(const QString &path)
    {
        QByteArray bytes;
        QString reason;
        if (readWhole(path, longestPasswordFile, &bytes, &reason) && bytes.isEmpty()) {
            reason = QStringLiteral("it holds no password");
        }
        if (!reason.isEmpty()) {
            error = QStringLiteral("%1: %2").arg(path, reason);
            return std::nullopt;
        }
        QString line = QString::fromUtf8(bytes).section(QLatin1Char('\n'), 0, 0);
        line.chop(line.endsWith(QLatin1Char('\r')) ? 1 : 0);
        return line;
    }

    QString m_secretSource; // "-" or "@FILE"; empty if no password is set
};

int run(const Call &call)
{
    const QStringList arguments = call.arguments();
    int place = 0;
    while (place < arguments.size() && !SettingsFields::groupNamed(arguments.at(place))) {
        ++place;
    }
    if (place == arguments.size()) {
        return call.wrong(QStringLiteral("it takes a group: ")
                          + SettingsFields::groups().join(QLatin1Char(' ')));
    }
    ChangeReader reader;
    reader.change.group = *SettingsFields::groupNamed(arguments.at(place));
    reader.change.isDryRun = call.isSet("dry-run");
    reader.change.showSecrets = call.isSet("show-secrets");
    const QStringList words = arguments.mid(place + 1);
    if (words.isEmpty()) {
        return call.wrong(QStringLiteral("%1 needs what to set").arg(arguments.at(place)));
    }
    if (reader.change.group == SettingsGroup::Time) {
        reader.readTime(words);
    }
    for (const QString &word : words) {
        if (reader.change.group != SettingsGroup::Time && reader.error.isEmpty()) {
            reader.readField(word);
        }
    }
    if (!reader.error.isEmpty()) {
        return call.wrong(reader.error);
    }
    return BoxRun::over(
        call, arguments.mid(0, place), [&reader](int timeout) { return new SetTask(timeout, reader.change); },
        [&reader] { return reader.readSecret(); });
}

} // namespace

Command setCommand()
{
    return {
        "set",
        "BOX... GROUP FIELD=TEXT...",
        "Change the named settings of each Box and read them back.",
        "Groups and their fields:\n"
        "  lan   ip mask gateway dns1 dns2\n"
        "  wan   dhcp ip mask gateway dns1 dns2\n"
        "  wifi  state mode ssid password dhcp ip mask gateway dns1 dns2\n"
        "  lte   state at1 at2 at3 at4 at5\n"
        "  ntp   server\n"
        "  time  now, or a time such as \"2026-11-21 20:00:00\" in place of a field\n"
        "\n"
        "A group is read, the named fields are changed, and all of it is written and\n"
        "read back. dhcp and state are on or off. The password is password=@FILE, the\n"
        "first line of a file, or password=-, which asks for it on the terminal. What\n"
        "can't be read is not written, and what is read back and differs is a failure; a\n"
        "clock may differ by two seconds. A text takes no control characters, and a group\n"
        "of settings 4096 bytes. With --json the group is as get prints it.",
        BoxRun::options()
            + QList<QCommandLineOption>{{"dry-run", "Print what would be written, and write nothing."},
                                        {"show-secrets", "Print the password, too; it is masked otherwise."}},
        run};
}
