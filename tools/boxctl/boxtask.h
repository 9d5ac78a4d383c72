#pragma once

#include "boxctl/boxlist.h"
#include "boxlink/boxclient.h"

#include <QJsonObject>
#include <QObject>

// What a command does with one Box, from its start to its one end.
class BoxTask : public QObject
{
    Q_OBJECT
public:
    struct Outcome {
        QString error;     // why it failed; empty if it is done
        QJsonObject json;  // beside "box", "ok" and "error"; of one that failed, what it did before
        QStringList lines; // what to print for people, each behind the Box
    };

    virtual void start(const BoxTarget &box) = 0;
    // What it is doing, for the progress and for who cuts it off.
    virtual QString state() const = 0;

signals:
    void progressed();
    void ended(const BoxTask::Outcome &outcome);
};

// A task that talks to the Box over a session.
class SessionTask : public BoxTask
{
    Q_OBJECT
public:
    explicit SessionTask(int timeout); // ms

    void start(const BoxTarget &box) override;
    QString state() const override { return m_state; }

protected:
    // The link stands.
    virtual void talk() = 0;

    BoxClient *client() { return m_client; }
    void setState(const QString &state);
    void done(const QJsonObject &json, const QStringList &lines) { emit ended({{}, json, lines}); }
    void fail(const QString &error, const QJsonObject &json = {}, const QStringList &lines = {})
    {
        emit ended({error, json, lines});
    }

private:
    BoxClient *m_client;
    QString m_state = QStringLiteral("connecting");
};
