#pragma once

#include "boxlink/session.h"

#include <QPointer>

// Keeps a link to one Box up and hands on what the Box reports. It is up from the first answer to a heartbeat
// or the first report on. A link that drops, does not come about, or lacks an answer to its heartbeats for 30
// seconds is tried again after a pause, which grows from 1 to 60 seconds until the Box has answered.
class ReportLink : public QObject
{
    Q_OBJECT
public:
    // The time-out, in milliseconds, is for connecting, and again for the first word of the Box.
    ReportLink(const QString &address, int timeout, QObject *parent = nullptr);
    ~ReportLink() override;

    void start();
    bool isUp() const { return m_isUp; }
    // Why there is no link; empty while there is one, or no try has ended.
    QString error() const { return m_error; }
    // What a try waits for: "connection" or "answer".
    QString awaited() const { return m_awaited; }

signals:
    void opened();
    void reported(const MonitoringReport &report);
    // A link has ended, or a try to get one has failed.
    void lost(const QString &error, bool wasUp);

private:
    void connectToBox();
    void takeUp();
    void lose(const QString &error);

    QString m_address;
    int m_timeout;
    QPointer<Session> m_session; // one a try
    QTimer m_answerTimer;
    QString m_awaited = QStringLiteral("connection"); // by that timer
    QTimer m_pauseTimer;
    int m_pause = 0; // ms
    bool m_isUp = false;
    QString m_socketError;
    QString m_error;
};
