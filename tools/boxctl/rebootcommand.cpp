#include "boxctl/boxrun.h"
#include "boxctl/call.h"

#include <QElapsedTimer>

namespace {

constexpr int pause = 500;       // ms between two attempts to reach a Box again
constexpr int attempt = 3000;    // ms for each
constexpr int goingDown = 10000; // ms that a Box may take until its link is gone
constexpr int mostSeconds = 86400;

} // namespace

class RebootTask : public SessionTask
{
    Q_OBJECT
public:
    // Waits so long, in milliseconds, until the Box answers again; not at all with 0.
    RebootTask(int timeout, int limit)
        : SessionTask(timeout)
        , m_limit(limit)
    {
    }

    void start(const BoxTarget &box) override
    {
        m_address = box.address;
        SessionTask::start(box);
    }

protected:
    void talk() override
    {
        setState(QStringLiteral("asking it to reboot; whether it does is not known"));
        client()->reboot([this](const BoxClient::Reply<CommandResult> &reply) {
            if (!reply.value) {
                fail(reply.error);
            } else if (!reply.value->succeeded()) {
                fail(QStringLiteral("the Box refused with the code %1").arg(reply.value->code));
            } else if (m_limit == 0) {
                done({}, {QStringLiteral("reboots")});
            } else {
                awaitEnd();
            }
        });
    }

private:
    void awaitEnd()
    {
        setState(QStringLiteral("it reboots"));
        m_clock.start();
        connect(client(), &BoxClient::linkLost, this, [this] { tryAgain(); });
        QTimer::singleShot(goingDown, this, [this] {
            if (!m_again && m_attempts == 0) {
                tryAgain(); // it went without a word, or stayed
            }
        });
    }

    void tryAgain()
    {
        if (m_clock.elapsed() > m_limit) {
            fail(QStringLiteral("it reboots, and did not answer again in %1 s").arg(m_limit / 1000));
            return;
        }
        ++m_attempts;
        m_again = new BoxClient(attempt, this);
        m_again->connectTo(m_address, [this](const BoxClient::Reply<bool> &reply) {
            if (!reply.value) {
                tryLater();
                return;
            }
            m_again->identify([this](const BoxClient::Reply<HeartbeatAnswer> &answer) {
                if (answer.value) {
                    finish(*answer.value);
                } else {
                    tryLater();
                }
            });
        });
    }

    void tryLater()
    {
        m_again->deleteLater();
        QTimer::singleShot(pause, this, [this] { tryAgain(); });
    }

    void finish(const HeartbeatAnswer &answer)
    {
        const double seconds = double(m_clock.elapsed()) / 1000;
        done({{QStringLiteral("version"), answer.version}, {QStringLiteral("seconds"), seconds}},
             {QStringLiteral("answers again, version %1").arg(answer.version)});
    }

    QString m_address;
    int m_limit;
    int m_attempts = 0;
    QElapsedTimer m_clock; // since the Box's word that it reboots
    BoxClient *m_again = nullptr;
};

namespace {

int run(const Call &call)
{
    const std::optional<int> seconds = call.number("wait-limit", 1, mostSeconds);
    if (!seconds) {
        return call.wrong(QStringLiteral("--wait-limit takes a number from 1 to %1").arg(mostSeconds));
    }
    const int limit = call.isSet("wait") ? *seconds * 1000 : 0;
    const int timeout = BoxRun::timeoutOf(call).value_or(0);
    return BoxRun::over(call, call.arguments(),
                        [=](const BoxTarget &) { return new RebootTask(timeout, limit); });
}

} // namespace

Command rebootCommand()
{
    return {"reboot",
            "BOX...",
            "Reboot each Box.",
            "A Box answers before it goes down. With --wait and --json the keys are version\n"
            "and seconds, the time from that answer until it answered a heartbeat again.",
            BoxRun::options()
                + QList<QCommandLineOption>{{"wait", "Wait until the Box answers again."},
                                            {"wait-limit", "Give that up after so long. Default: 300.",
                                             "seconds", "300"}},
            run};
}

#include "rebootcommand.moc"
