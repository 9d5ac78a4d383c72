#include "boxctl/boxrun.h"
#include "boxctl/call.h"

#include <QElapsedTimer>

namespace {

constexpr int pause = 500;     // ms between two attempts to reach a Box again
constexpr int attempt = 3000;  // ms for each
constexpr int silence = 10000; // ms without a heartbeat answer after which a Box is down, its link or not
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
                fail(reply.error + QStringLiteral("; whether it reboots is not known"));
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
        m_silence.setSingleShot(true);
        m_silence.start(silence);
        connect(client(), &BoxClient::heartbeatAnswered, &m_silence, qOverload<>(&QTimer::start));
        connect(client(), &BoxClient::linkLost, this, &RebootTask::awaitReturn);
        connect(&m_silence, &QTimer::timeout, this, &RebootTask::awaitReturn); // it went without a word
        QTimer::singleShot(m_limit, this, &RebootTask::giveUp);
    }

    void awaitReturn()
    {
        if (!m_isDown) {
            m_isDown = true;
            tryAgain();
        }
    }

    void giveUp()
    {
        const QString text = m_isDown ? QStringLiteral("it reboots, and did not answer again in %1 s")
                                      : QStringLiteral("it did not go down in %1 s");
        fail(text.arg(m_limit / 1000));
    }

    void tryAgain()
    {
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
    bool m_isDown = false;
    QElapsedTimer m_clock; // since the Box's word that it reboots
    QTimer m_silence;
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
    return BoxRun::over(call, call.arguments(), [=](int timeout) { return new RebootTask(timeout, limit); });
}

} // namespace

Command rebootCommand()
{
    return {"reboot",
            "BOX...",
            "Reboot each Box.",
            "A Box answers before it goes down. With --wait, one that answers heartbeats on\n"
            "the same link until the limit did not go down, which is a failure. With --wait\n"
            "and --json the keys are version and seconds, the time from its answer until it\n"
            "answered a heartbeat again.",
            BoxRun::options()
                + QList<QCommandLineOption>{{"wait", "Wait until the Box answers again."},
                                            {"wait-limit", "Give that up after so long. Default: 300.",
                                             "seconds", "300"}},
            run};
}

#include "rebootcommand.moc"
