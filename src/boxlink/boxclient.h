#pragma once

#include "boxlink/heartbeat.h"
#include "boxlink/session.h"

#include <QMap>
#include <QSet>

#include <functional>

// Requests to one Box for a script: each has one answer, or an error, which is told once. Answers are matched
// by type alone, as on the wire, so that of one type only one request may be under way; where the answer to
// another could be taken for that of a new one, the new one is not sent and fails.
//
// Every callback comes from the event loop. The client may be deleted in one.
class BoxClient : public QObject
{
    Q_OBJECT
public:
    // The time-out, in milliseconds, is for connecting and for each answer.
    explicit BoxClient(int timeout, QObject *parent = nullptr);
    ~BoxClient() override;

    // Exactly one of the two is there; the error is a sentence without its full stop, in English.
    template <typename T> struct Reply {
        std::optional<T> value;
        QString error;
    };
    template <typename T> using Callback = std::function<void(const Reply<T> &)>;

    // To be called once, before all else. The value says nothing.
    void connectTo(const QString &address, const Callback<bool> &done);
    // What the Box says of itself with a heartbeat, any of them; at once if it has said it.
    void identify(const Callback<HeartbeatAnswer> &done);
    // An answer that has something else than a text for a key is an error: what was read could be written
    // back.
    void read(SettingsGroup group, const Callback<BoxSettings> &done);
    // A refusal is a value, too, with its code.
    void write(const BoxSettings &settings, const Callback<CommandResult> &done);
    void reboot(const Callback<CommandResult> &done);

signals:
    // The Box lives; also where nobody asked for it, since a heartbeat goes out every 5 seconds.
    void heartbeatAnswered();
    // The link is no longer there, after all requests under way have failed.
    void linkLost(const QString &error);

private:
    using Done = std::function<void(const JsonCommand::Answer &answer, const QString &error)>;
    // What is awaited: the type of a JSON command, or one of these.
    enum Wait { Link = -1, Heartbeat = -2 };
    struct Waiting {
        Done done;
        QTimer *timer;
    };

    void await(int type, const Done &done);
    bool isMixedUp(int type, const Done &done);
    void finish(int type, const JsonCommand::Answer &answer, const QString &error = {});
    void sendAndAwait(int type, const Callback<CommandResult> &done, const std::function<void()> &send);
    void takeSettings(const BoxSettings &settings, const QStringList &keysWithoutText);
    void takeAnswer(int type, const JsonCommand::Answer &answer, const QString &error = {});
    void handleTimeout(int type);
    void failAll(const QString &error);

    int m_timeout;
    Session *m_session;
    bool m_isOpen = false;
    QString m_socketError;
    std::optional<HeartbeatAnswer> m_identity;
    QMap<int, Waiting> m_waiting;
    QSet<int> m_owed; // types of requests that were given up: their answers may still come
};
