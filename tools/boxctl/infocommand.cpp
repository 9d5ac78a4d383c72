#include "boxctl/boxrun.h"
#include "boxctl/call.h"

class InfoTask : public SessionTask
{
    Q_OBJECT
public:
    using SessionTask::SessionTask;

protected:
    void talk() override
    {
        setState(QStringLiteral("waiting for the heartbeat answer"));
        client()->identify([this](const BoxClient::Reply<HeartbeatAnswer> &reply) {
            if (!reply.value) {
                fail(reply.error);
                return;
            }
            const HeartbeatAnswer &box = *reply.value;
            done({{QStringLiteral("version"), box.version},
                  {QStringLiteral("serialNumber"), box.serialNumber},
                  {QStringLiteral("model"), box.model}},
                 {QStringLiteral("version %1, serial number %2, model %3")
                      .arg(box.version, box.serialNumber, box.model)});
        });
    }
};

namespace {

int run(const Call &call)
{
    return BoxRun::over(call, call.arguments(), [](int timeout) { return new InfoTask(timeout); });
}

} // namespace

Command infoCommand()
{
    return {"info",
            "BOX...",
            "Tell the version, the serial number and the model of each Box.",
            "They come with the answer to a heartbeat. With --json the keys are version,\n"
            "serialNumber and model.",
            BoxRun::options(),
            run};
}

#include "infocommand.moc"
