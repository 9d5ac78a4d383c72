#pragma once

#include "boxsim/framedescription.h"
#include "boxsim/framereader.h"
#include "boxsim/options.h"
#include "boxsim/outbox.h"
#include "boxsim/settingsmemory.h"
#include "boxsim/transferreceiver.h"

#include <QObject>
#include <QTcpSocket>

// One TCP connection as the Box serves it. It is a session from its first heartbeat or JSON request on, and a
// transfer's own from its first chunk or checksum on; reports go to sessions only, since whatever comes first
// on a transfer's connection is taken for its verdict.
class BoxConnection : public QObject
{
    Q_OBJECT

public:
    enum class Role { Unknown, Session, Transfer };

    // What all connections of a Box share. Nothing is owned, everything outlives the connection.
    struct Shared {
        const BoxSimOptions *options;
        const BoxSimFaults *faults;
        SettingsMemory *settings;
    };

    // Takes over the socket.
    BoxConnection(QTcpSocket *socket, const Shared &shared, QObject *parent);

    QString peer() const { return m_peer; }
    Role role() const { return m_role; }
    bool isOpen() const { return m_socket->state() == QAbstractSocket::ConnectedState; }

    // Queues one frame, delay milliseconds from now, through the faults. Ends the connection where the peer
    // has not read what was sent before.
    void send(const QByteArray &frame, int delay = 0);
    // Queues the frames of a report, or drops all of them where the peer is too slow.
    void sendReport(const QVector<QByteArray> &frames);
    // Past every fault.
    void sendRaw(const QByteArray &bytes) { m_outbox->sendRaw(bytes); }
    // Ends the connection once what the socket holds has gone out, at the latest after two seconds.
    void close();
    void abort() { m_socket->abort(); }

signals:
    void frameReceived(const BoxSimFrame &frame);
    void frameSent(const BoxSimFrame &frame);
    // The peer did something that a Box does not expect.
    void violation(const QString &peer, const QString &text);
    // The whole file of a transfer with a good digest.
    void fileReceived(const QString &peer, int command, const QByteArray &file);
    // The answer to a reboot request is on its way; delay is how long it is held back.
    void rebootRequested(int delay);
    void closed();

private:
    void read();
    void handle(const QByteArray &frame);
    void handleJson(const QByteArray &frame);
    void handleTransfer(const QByteArray &frame, TransferReceiver *receiver);
    QByteArray verdictBytes(int command, bool success) const;
    void complain(const QString &text) { emit violation(m_peer, text); }
    void takeRole(Role role);

    QTcpSocket *m_socket;
    Shared m_shared;
    QString m_peer;
    Role m_role = Role::Unknown;
    FrameReader m_reader;
    Outbox *m_outbox;
    TransferReceiver m_project;
    TransferReceiver m_program;
    qint64 m_received = 0;
};
