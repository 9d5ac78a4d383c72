#include "boxctl/boxtask.h"

SessionTask::SessionTask(int timeout)
    : m_client(new BoxClient(timeout, this))
{
}

void SessionTask::start(const BoxTarget &box)
{
    m_client->connectTo(box.address, [this](const BoxClient::Reply<bool> &reply) {
        if (reply.value) {
            talk();
        } else {
            fail(reply.error);
        }
    });
}

void SessionTask::setState(const QString &state)
{
    m_state = state;
    emit progressed();
}
