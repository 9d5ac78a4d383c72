#include "boxctl/boxrun.h"
#include "boxctl/call.h"
#include "boxctl/settingsfields.h"

// Reads groups one after the other.
class GetTask : public SessionTask
{
    Q_OBJECT
public:
    GetTask(int timeout, const QVector<SettingsGroup> &groups, bool showSecrets)
        : SessionTask(timeout)
        , m_groups(groups)
        , m_showSecrets(showSecrets)
    {
    }

protected:
    void talk() override
    {
        if (m_next == m_groups.size()) {
            done(m_json, m_lines);
            return;
        }
        const SettingsGroup group = m_groups.at(m_next++);
        const QString name = SettingsFields::nameOf(group);
        setState(QStringLiteral("reading ") + name);
        client()->read(group, [this, name](const BoxClient::Reply<BoxSettings> &reply) {
            if (!reply.value) {
                fail(QStringLiteral("reading %1: %2").arg(name, reply.error), m_json, m_lines);
                return;
            }
            m_json.insert(name, SettingsFields::json(*reply.value, m_showSecrets));
            m_lines += SettingsFields::lines(*reply.value, m_showSecrets);
            talk();
        });
    }

private:
    QVector<SettingsGroup> m_groups;
    bool m_showSecrets;
    int m_next = 0;
    QJsonObject m_json;
    QStringList m_lines;
};

namespace {

int run(const Call &call)
{
    QStringList boxes;
    QVector<SettingsGroup> groups;
    const QStringList arguments = call.arguments();
    for (const QString &argument : arguments) {
        const std::optional<SettingsGroup> group = SettingsFields::groupNamed(argument);
        if (group && !groups.contains(*group)) {
            groups.append(*group);
        } else if (!group) {
            boxes.append(argument);
        }
    }
    if (groups.isEmpty()) {
        const QStringList all = SettingsFields::groups();
        for (const QString &name : all) {
            groups.append(*SettingsFields::groupNamed(name));
        }
    }
    const bool showSecrets = call.isSet("show-secrets");
    return BoxRun::over(call, boxes, [=](int timeout) { return new GetTask(timeout, groups, showSecrets); });
}

} // namespace

Command getCommand()
{
    return {
        "get",
        "BOX... [lan wan wifi lte ntp time]",
        "Read the settings of each Box, all or the groups that are named.",
        "A line a field, as set takes it. With --json each group is an object under its\n"
        "name, with the keys and texts of the wire. Where a group can't be read, those\n"
        "before it are printed, and those behind it are not read.",
        BoxRun::options()
            + QList<QCommandLineOption>{{"show-secrets", "Print the password, too; it is masked otherwise."}},
        run};
}

#include "getcommand.moc"
