#include "boxctl/settask.h"

#include "boxctl/output.h"
#include "boxctl/settingsfields.h"

#include <QJsonDocument>

namespace {

constexpr int clockTolerance = 2;    // s that a clock may be beside what was written
constexpr int longestRequest = 4096; // bytes of JSON; its frame could hold 64 KiB

int sizeOf(const QJsonObject &request)
{
    return QJsonDocument(request).toJson().size();
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
    const QVector<SettingsText> texts = textsOf(m_after);
    for (auto field = m_change.fields.cbegin(); field != m_change.fields.cend(); ++field) {
        *texts.at(field.key()).text =
            m_change.isNow ? SettingsFields::textOf(QDateTime::currentDateTime()) : field.value();
    }
    const int size = sizeOf(JsonCommand::writeRequest(m_after));
    if (size > longestRequest) {
        fail(QStringLiteral("%1 would be a request of %2 bytes, more than %3; nothing is written")
                 .arg(groupName())
                 .arg(size)
                 .arg(longestRequest));
        return;
    }
    if (m_change.isDryRun) {
        done({{groupName(), SettingsFields::json(m_after, m_change.showSecrets)}}, lines());
        return;
    }
    setState(QStringLiteral("writing %1; whether the Box took it is not known").arg(groupName()));
    m_sinceWrite.start();
    client()->write(m_after, [this](const BoxClient::Reply<CommandResult> &reply) {
        if (!reply.value) {
            fail(QStringLiteral("writing %1: %2; whether the Box took it is not known")
                     .arg(groupName(), reply.error));
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
    m_askedBack = m_sinceWrite.elapsed();
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
    BoxSettings record = read;
    const QVector<SettingsText> texts = textsOf(record);
    for (int field = 0; field < fields.size(); ++field) {
        if (!isAsWritten(field, *texts.at(field).text)) {
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

bool SetTask::isAsWritten(int field, const QString &found) const
{
    if (m_change.group == SettingsGroup::Time) {
        return isClockAsWritten(found);
    }
    BoxSettings record = m_after;
    const SettingsText wanted = textsOf(record).at(field);
    const bool isOfAnyCase = wanted.kind == SettingsText::OnOff;
    return found.compare(*wanted.text, isOfAnyCase ? Qt::CaseInsensitive : Qt::CaseSensitive) == 0;
}

// It goes on meanwhile, and the Box read it at some moment between the question and its answer.
bool SetTask::isClockAsWritten(const QString &found) const
{
    const QDateTime written = SettingsFields::clockOf(std::get<TimeSettings>(m_after).date);
    const QDateTime clock = SettingsFields::clockOf(found);
    const qint64 answered = m_sinceWrite.elapsed();
    return clock.isValid() && clock >= written.addSecs(m_askedBack / 1000 - clockTolerance)
        && clock <= written.addSecs(answered / 1000 + clockTolerance);
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
