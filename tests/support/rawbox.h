#pragma once

#include <QByteArray>
#include <QHostAddress>
#include <QList>
#include <QPointer>
#include <QTcpServer>
#include <QTcpSocket>

// The other end of a link, byte by byte: listens on the Box's port, keeps what it receives and sends what the
// test gives it. The newest connection is the one it talks to.
class RawBox
{
public:
    explicit RawBox(const QString &address)
        : m_address(address)
    {
        QObject::connect(&m_server, &QTcpServer::newConnection, &m_server, [this] {
            while (QTcpSocket *link = m_server.nextPendingConnection()) {
                m_link = link;
                m_received.append(QByteArray());
                const int number = m_received.size() - 1;
                QObject::connect(link, &QTcpSocket::readyRead, link,
                                 [this, link, number] { m_received[number].append(link->readAll()); });
            }
        });
    }

    bool listen() { return m_server.listen(m_address, 30088); }
    void stopListening() { m_server.close(); }

    int connections() const { return m_received.size(); }
    // What the newest connection has brought so far.
    QByteArray received() const { return m_received.isEmpty() ? QByteArray() : m_received.last(); }
    void forgetReceived() { m_received.last().clear(); }
    QHostAddress peerAddress() const { return m_link ? m_link->peerAddress() : QHostAddress(); }
    bool isLinked() const { return m_link && m_link->state() == QAbstractSocket::ConnectedState; }

    void send(const QByteArray &bytes)
    {
        m_link->write(bytes);
        m_link->flush();
    }
    // Closes the newest connection once all is sent.
    void close() { m_link->disconnectFromHost(); }

private:
    QHostAddress m_address;
    QTcpServer m_server;
    QPointer<QTcpSocket> m_link; // Not owned.
    QList<QByteArray> m_received;
};
