#include "trends/recordings.h"

#include "trends/recordingdialog.h"
#include "widgets/tell.h"

#include <algorithm>

Recordings::Recordings(QWidget *window, QObject *parent)
    : QObject(parent)
    , m_window(window)
{
}

const Recording *Recordings::of(const QWidget *owner) const
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [owner](const Entry &entry) { return entry.owner == owner; });
    return found != m_entries.end() ? found->recording : nullptr;
}

void Recordings::toggle(QWidget *owner, const Recording::Subject &subject, const QString &fileName)
{
    if (of(owner)) {
        stop(owner);
        return;
    }
    const QPointer<QWidget> alive(owner);
    const QPointer<Recordings> self(this);
    const RecordingTarget target =
        RecordingDialog::ask(RecordingDialog::Purpose::Record, subject.name, fileName, owner);
    if (target.kind != RecordingTarget::Kind::None && self && alive && !of(owner)) {
        start(owner, subject, target);
    }
}

void Recordings::start(QWidget *owner, const Recording::Subject &subject, const RecordingTarget &target)
{
    auto *recording = new Recording(subject, target, this);
    m_entries.append({owner, recording});
    connect(owner, &QObject::destroyed, recording, &Recording::stop);
    const QPointer<QWidget> shown(owner);
    connect(recording, &Recording::lineChanged, this, [this, shown] {
        if (shown) {
            emit changed(shown);
        }
    });
    connect(recording, &Recording::stopped, this,
            [this, recording](const QString &error) { end(recording, error); });
    emit changed(owner);
}

void Recordings::end(const Recording *recording, const QString &error)
{
    const auto found = std::find_if(m_entries.begin(), m_entries.end(),
                                    [recording](const Entry &entry) { return entry.recording == recording; });
    const Entry ended = *found;
    m_entries.erase(found);
    ended.recording->deleteLater();
    if (ended.owner) {
        emit changed(ended.owner);
    }
    QWidget *over = ended.owner ? ended.owner : m_window;
    if (!error.isEmpty() && over && over->isVisible()) {
        Tell::warning(over, tr("Record"), error);
    }
}

void Recordings::stop(const QWidget *owner)
{
    for (const Entry &entry : qAsConst(m_entries)) {
        if (entry.owner == owner) {
            entry.recording->stop();
        }
    }
}

void Recordings::stopAll()
{
    for (const Entry &entry : qAsConst(m_entries)) {
        entry.recording->stop();
    }
}

void Recordings::add(const Readings &report)
{
    for (const Entry &entry : qAsConst(m_entries)) {
        entry.recording->add(report);
    }
}

void Recordings::endSession(const QString &box, qint64 time)
{
    for (const Entry &entry : qAsConst(m_entries)) {
        entry.recording->endSession(box, time);
    }
}
