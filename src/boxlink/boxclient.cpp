#include "boxlink/boxclient.h"

#include <QPointer>

BoxClient::BoxClient(int timeout, QObject *parent)
    : QObject(parent)
    , m_timeout(timeout)
    , m_session(new Session(this))
{
    connect(m_session, &Session::linkOpened, this, [this] {
        m_isOpen = true;
        finish(Link, {});
    });
    connect(m_session, &Session::socketFailed, this, [this](const QString &error) {
        m_socketError = error;
        if (!m_isOpen) {
            finish(Link, {}, error);
        }
    });
    connect(m_session, &Session::statusChanged, this, [this](Session::Status status) {
        if (status == Session::Status::Disconnected) {
            failAll(m_socketError.isEmpty() ? QStringLiteral("The link is closed") : m_socketError);
        }
    });
    connect(m_session, &Session::identified, this, [this](const HeartbeatAnswer &answer) {
        m_identity = answer;
        finish(Heartbeat, {});
    });
    connect(m_session, &Session::identified, this, &BoxClient::heartbeatAnswered);
    connect(m_session, &Session::settingsReceived, this, &BoxClient::takeSettings);
    connect(m_session, &Session::commandAnswered, this,
            [this](const CommandResult &result) { takeAnswer(result.command, result); });
}

BoxClient::~BoxClient()
{
    m_session->disconnect(this);
    m_session->dispose(); // one of its signals may be on the stack
}

void BoxClient::connectTo(const QString &address, const Callback<bool> &done)
{
    await(Link, [done](const JsonCommand::Answer &, const QString &error) {
        done({error.isEmpty() ? std::optional(true) : std::nullopt, error});
    });
    QTimer::singleShot(0, m_session,
                       [this, address] { m_session->connectToBox(address); }); // may fail at once
}

void BoxClient::identify(const Callback<HeartbeatAnswer> &done)
{
    const auto tell = [this, done](const JsonCommand::Answer &, const QString &error) {
        done({error.isEmpty() ? m_identity : std::nullopt, error});
    };
    if (isMixedUp(Heartbeat, tell)) {
        return;
    }
    await(Heartbeat, tell);
    if (m_identity) {
        QTimer::singleShot(0, this, [this] { finish(Heartbeat, {}); });
    }
}

void BoxClient::read(SettingsGroup group, const Callback<BoxSettings> &done)
{
    const auto tell = [done](const JsonCommand::Answer &answer, const QString &error) {
        const auto *settings = std::get_if<BoxSettings>(&answer);
        done({settings ? std::optional(*settings) : std::nullopt, error});
    };
    const Frame::JsonType type = JsonCommand::readType(group);
    if (!isMixedUp(type, tell)) {
        await(type, tell);
        m_session->read(group);
    }
}

void BoxClient::write(const BoxSettings &settings, const Callback<CommandResult> &done)
{
    sendAndAwait(JsonCommand::writeType(groupOf(settings)), done,
                 [this, &settings] { m_session->write(settings); });
}

void BoxClient::reboot(const Callback<CommandResult> &done)
{
    sendAndAwait(Frame::DeviceReboot, done, [this] { m_session->reboot(); });
}

void BoxClient::sendAndAwait(int type, const Callback<CommandResult> &done, const std::function<void()> &send)
{
    const auto tell = [done](const JsonCommand::Answer &answer, const QString &error) {
        const auto *result = std::get_if<CommandResult>(&answer);
        done({result ? std::optional(*result) : std::nullopt, error});
    };
    if (!isMixedUp(type, tell)) {
        await(type, tell);
        send();
    }
}

// Fails the request at once, yet from the event loop as ever.
bool BoxClient::isMixedUp(int type, const Done &done)
{
    const char *reason = nullptr;
    if (!m_isOpen) {
        reason = "The link is closed";
    } else if (m_waiting.contains(type)) {
        reason = "A request of this type is under way, and its answer could be taken for this one's";
    } else if (m_owed.contains(type)) {
        reason = "The answer to an earlier request of this type may still come and be taken for this one's";
    } else {
        return false;
    }
    QTimer::singleShot(0, this, [done, reason] { done({}, QString::fromLatin1(reason)); });
    return true;
}

void BoxClient::await(int type, const Done &done)
{
    auto *timer = new QTimer(this);
    timer->setSingleShot(true);
    timer->setTimerType(Qt::PreciseTimer);
    connect(timer, &QTimer::timeout, this, [this, type] { handleTimeout(type); });
    timer->start(m_timeout);
    m_waiting.insert(type, {done, timer});
}

void BoxClient::takeSettings(const BoxSettings &settings, const QStringList &keysWithoutText)
{
    const Frame::JsonType type = JsonCommand::readType(groupOf(settings));
    if (keysWithoutText.isEmpty()) {
        takeAnswer(type, settings);
    } else {
        takeAnswer(type, {},
                   keysWithoutText.join(QStringLiteral(", "))
                       + (keysWithoutText.size() == 1 ? QStringLiteral(" is no text")
                                                      : QStringLiteral(" are no texts")));
    }
}

void BoxClient::takeAnswer(int type, const JsonCommand::Answer &answer, const QString &error)
{
    if (!m_waiting.contains(type)) {
        m_owed.remove(type);
    }
    finish(type, answer, error);
}

void BoxClient::finish(int type, const JsonCommand::Answer &answer, const QString &error)
{
    if (!m_waiting.contains(type)) {
        return;
    }
    const Waiting waiting = m_waiting.take(type);
    waiting.timer->stop();
    waiting.timer->deleteLater();
    waiting.done(answer, error);
}

void BoxClient::handleTimeout(int type)
{
    if (type == Link) {
        m_session->disconnect(this); // the attempt goes on in the system
        finish(type, {}, QStringLiteral("No connection in %1 s").arg(m_timeout / 1000.0));
        return;
    }
    if (type != Heartbeat) { // one is as good as another
        m_owed.insert(type);
    }
    finish(type, {}, QStringLiteral("No answer in %1 s").arg(m_timeout / 1000.0));
}

void BoxClient::failAll(const QString &error)
{
    m_isOpen = false;
    const QPointer<BoxClient> alive(this);
    const QList<int> types = m_waiting.keys();
    for (const int type : types) {
        finish(type, {}, error);
        if (!alive) {
            return;
        }
    }
    emit linkLost(error);
}
