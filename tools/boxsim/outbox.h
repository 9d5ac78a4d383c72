#pragma once

#include <QByteArray>
#include <QObject>
#include <QTimer>

class QTcpSocket;
struct BoxSimFaults;

// The way out of one connection: it writes frames to the socket, late, in pieces, joined, behind noise, and
// ends after so many bytes, as the faults of the moment say.
class Outbox : public QObject
{
    Q_OBJECT

public:
    // Neither is owned; both outlive the outbox. noiseSeed: where the noise begins.
    Outbox(QTcpSocket *socket, const BoxSimFaults *faults, quint32 noiseSeed, QObject *parent);

    // Sends one frame, delay milliseconds from now.
    void send(const QByteArray &frame, int delay = 0);
    // Writes bytes to the socket as they are, at once, past every fault.
    void sendRaw(const QByteArray &bytes);
    // Bytes taken but not yet with the system.
    qint64 queued() const;
    // Gives up whatever is not yet with the socket.
    void discard();

signals:
    // The socket has been given as many bytes as dropAfterSent allows.
    void exhausted();

private:
    void append(const QByteArray &frame);
    void drain();
    void write(const QByteArray &bytes);
    QByteArray noise(int size);

    QTcpSocket *m_socket;
    const BoxSimFaults *m_faults;
    QByteArray m_waiting; // from m_head on
    int m_head = 0;
    qint64 m_delayed = 0; // bytes of frames whose delay runs
    qint64 m_sent = 0;
    bool m_exhausted = false;
    quint32 m_noise;
    QTimer m_joinTimer;
    QTimer m_splitTimer;
};
