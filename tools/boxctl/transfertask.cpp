#include "boxctl/transfertask.h"

#include "boxctl/boxrun.h"

namespace {

TransferTimeouts timeouts(int connecting)
{
    TransferTimeouts timeouts;
    timeouts.connecting = connecting;
    return timeouts;
}

QString reason(TransferEnding ending)
{
    switch (ending) {
    case TransferEnding::NotConnected:
        return QStringLiteral("No connection");
    case TransferEnding::FileUnreadable:
        return QStringLiteral("The file has changed meanwhile, or can no longer be read");
    case TransferEnding::LinkLost:
        return QStringLiteral("The link broke before all was sent");
    case TransferEnding::NoVerdict:
        return QStringLiteral(
            "All was handed over, but the Box gave no verdict: whether it took the file is not known");
    case TransferEnding::BrokenVerdict:
    case TransferEnding::WrongVerdict:
        return QStringLiteral(
            "All was handed over, but the Box's verdict is none: whether it took the file is not known");
    case TransferEnding::Refused:
        return QStringLiteral("The Box refused the file: its checksum failed");
    case TransferEnding::Delivered:
    case TransferEnding::NotBound: // a run binds no address
        break;
    }
    return {};
}

} // namespace

TransferTask::TransferTask(TransferFrames frames, const QString &name, int timeout)
    : m_run(new TransferRun(std::move(frames), timeouts(timeout), this))
    , m_name(name)
{
    connect(m_run, &TransferRun::progressed, this, [this](int percentage) {
        m_percentage = percentage;
        emit progressed();
    });
    connect(m_run, &TransferRun::ended, this, &TransferTask::end);
}

void TransferTask::start(const BoxTarget &box)
{
    m_clock.start();
    m_run->start(box.address);
}

QString TransferTask::state() const
{
    if (m_percentage < 0) {
        return QStringLiteral("connecting");
    }
    if (m_percentage < 100) {
        return QStringLiteral("the push is under way, %1 % sent").arg(m_percentage);
    }
    return QStringLiteral("the push is under way, all handed over and no verdict yet");
}

void TransferTask::end(TransferEnding ending, const QString &detail)
{
    Outcome outcome;
    const double seconds = double(m_clock.elapsed()) / 1000;
    if (ending == TransferEnding::Delivered) {
        outcome.json = {{QStringLiteral("file"), m_name},
                        {QStringLiteral("bytes"), double(m_run->size())},
                        {QStringLiteral("seconds"), seconds}};
        outcome.lines = QStringList{QStringLiteral("took %1, %2 bytes in %3 s")
                                        .arg(m_name)
                                        .arg(m_run->size())
                                        .arg(seconds, 0, 'f', 1)};
    } else {
        outcome.error =
            detail.isEmpty() ? reason(ending) : QStringLiteral("%1 (%2)").arg(reason(ending), detail);
    }
    emit ended(outcome);
}

int pushToAll(const Call &call, const QStringList &boxes, Frame::Command command, const QString &name,
              const TransferFrames::Opener &opener)
{
    const QByteArray md5 = TransferFrames::md5Of(opener);
    return BoxRun::over(call, boxes, [=](int timeout) {
        return new TransferTask(TransferFrames(command, opener, md5), name, timeout);
    });
}
