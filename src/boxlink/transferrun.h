#pragma once

#include "boxlink/transferframes.h"

#include <QObject>
#include <QTcpSocket>
#include <QTimer>

// One push of a file to a Box over a TCP connection of its own, in the event loop, so that many run side by
// side. Holds no more than a few chunks of a file. May be deleted at any time, with deleteLater() in a slot
// of its signals.
//
// A Box that closes the connection ends the run at once, one that takes no byte for the time of a write ends
// it, too: nobody sits before it who could.
class TransferRun : public QObject
{
    Q_OBJECT
public:
    TransferRun(TransferFrames frames, const TransferTimeouts &timeouts, QObject *parent = nullptr);
    ~TransferRun() override;

    // To be called once.
    void start(const QString &boxAddress);
    // The size of the file in bytes, as announced; known once sending has begun.
    qint64 size() const { return m_frames.size(); }

signals:
    // How much of the file has been handed to the system, in percent.
    void progressed(int percentage);
    // Once. The detail tells, in English, what the system says about a failure or what did not come in time;
    // it may be empty.
    void ended(TransferEnding ending, const QString &detail);

private:
    void beginSending();
    void sendMore();
    void sendDigest();
    void takeVerdict();
    void handleError();
    void handleTimeout();
    void end(TransferEnding ending, const QString &detail = {});

    enum class Stage { Connecting, Sending, SendingDigest, AwaitingVerdict, Ended };

    TransferFrames m_frames;
    TransferTimeouts m_timeouts;
    QTcpSocket m_socket;
    QTimer m_timer; // of the stage; while sending, since the last byte went out
    Stage m_stage = Stage::Connecting;
};
