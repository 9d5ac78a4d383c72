#include "boxctl/settask.h"

#include "boxctl/output.h"
#include "boxctl/settingsfields.h"

namespace {

constexpr int clockTolerance = 2; // s that a clock may be beside what was written

QString dateFormat()
{
    return QStringLiteral("yyyy-MM-dd HH:mm:ss");
}

QString textOf(const BoxSettings &settings, int field)
{
    BoxSettings record = settings;
    return *textsOf(record).at(field).text;
}

} // namespace

SetTask::SetTask(int timeout, Change change)
    : SessionTask(timeout)
    , m_change(std::move(change))
{
}

QString SetTask::groupName() const
{
    return SettingsFields::nameOf(m_change.group);
}

void SetTask::talk()
{
    setState(QStringLiteral("reading %1; nothing is written").arg(groupName()));
    client()->read(m_change.group, [this](const BoxClient::Reply<BoxSettings> &reply) {
        if (!reply.value) {
            fail(QStringLiteral("reading %1: %2; nothing is written").arg(groupName(), reply.error));
            return;
        }
        m_before = *reply.value;
        write();
    });
}

void SetTask::write()
{
    m_after = m_before;
    m_written = QDateTime::currentDateTime();
    const QVector<SettingsText> texts = textsOf(m_after);
    for (auto field = m_change.fields.cbegin(); field != m_change.fields.cend(); ++field) {
        *texts.at(field.key()).text = m_change.isNow ? m_written.toString(dateFormat()) : field.value();
    }
    if (m_change.isDryRun) {
        done({{groupName(), SettingsFields::json(m_after, m_change.showSecrets)}}, lines());
        return;
    }
    setState(QStringLiteral("writing %1; whether the Box took it is not known").arg(groupName()));
    client()->write(m_after, [this](const BoxClient::Reply<CommandResult> &reply) {
        if (!reply.value) {
            fail(QStringLiteral("writing %1: %2").arg(groupName(), reply.error));
        } else if (!reply.value->succeeded()) {
            fail(QStringLiteral("writing %1: the Box refused with the code %2")
                     .arg(groupName(), reply.value->code));
        } else {
            readBack();
        }
    });
}

void SetTask::readBack()
{
    setState(QStringLiteral("reading %1 back; it is written").arg(groupName()));
    client()->read(m_change.group, [this](const BoxClient::Reply<BoxSettings> &reply) {
        if (!reply.value) {
            fail(QStringLiteral("reading %1 back: %2; it is written").arg(groupName(), reply.error));
            return;
        }
        compare(*reply.value);
    });
}

void SetTask::compare(const BoxSettings &read)
{
    QStringList differing;
    const QStringList fields = SettingsFields::fieldsOf(m_change.group);
    for (int field = 0; field < fields.size(); ++field) {
        const QString wanted = textOf(m_after, field);
        const QString found = textOf(read, field);
        bool isSame = wanted == found;
        if (m_change.group == SettingsGroup::Time) { // it goes on meanwhile
            const QDateTime target = QDateTime::fromString(wanted, dateFormat())
                                         .addSecs(m_written.secsTo(QDateTime::currentDateTime()));
            const QDateTime clock = QDateTime::fromString(found, dateFormat());
            isSame = clock.isValid() && qAbs(target.secsTo(clock)) <= clockTolerance;
        }
        if (!isSame) {
            differing.append(fields.at(field));
        }
    }
    if (differing.isEmpty()) {
        done({{groupName(), SettingsFields::json(read, m_change.showSecrets)}}, lines());
    } else {
        fail(QStringLiteral("%1 was written, but is read back with another %2")
                 .arg(groupName(), differing.join(QStringLiteral(", "))));
    }
}

QStringList SetTask::lines() const
{
    const QStringList before = SettingsFields::lines(m_before, m_change.showSecrets);
    const QStringList after = SettingsFields::lines(m_after, m_change.showSecrets);
    QStringList lines;
    for (auto field = m_change.fields.cbegin(); field != m_change.fields.cend(); ++field) {
        // "lan ip=" or "time " stands before the text.
        const QString name = SettingsFields::fieldsOf(m_change.group).at(field.key());
        const int head = m_change.group == SettingsGroup::Time ? 5 : groupName().size() + name.size() + 2;
        lines.append(QStringLiteral("%1 (was %2)%3")
                         .arg(after.at(field.key()), before.at(field.key()).mid(head),
                              m_change.isDryRun ? QStringLiteral(" would be written") : QString()));
    }
    return lines;
}
