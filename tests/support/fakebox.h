#pragma once

#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>

// A Box that says only what a test makes it say. It lives in the test's thread, so it takes nothing in while
// the program blocks.
class FakeBox : public QObject
{
public:
    // Listens at once.
    explicit FakeBox(const QString &address)
    {
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket *link = m_server.nextPendingConnection()) {
                take(link);
            }
        });
        m_server.listen(QHostAddress(address), 30088);
    }

    bool isListening() const { return m_server.isListening(); }
    void stopListening() { m_server.close(); }

    // The connections so far, also those that have gone, are numbered in their order; functions without a
    // number speak of the newest.
    int count() const { return m_links.size(); }
    QTcpSocket *link(int index) const { return m_links.at(index); }
    QTcpSocket *link() const { return m_links.last(); }
    bool isLinked() const { return count() > 0 && link()->state() == QAbstractSocket::ConnectedState; }

    // All that a connection has brought.
    QByteArray received(int index) const { return m_received.value(index); }
    QByteArray received() const { return received(count() - 1); }
    void forgetReceived() { m_received.last().clear(); }

    void send(int index, const QByteArray &bytes) const
    {
        link(index)->write(bytes);
        link(index)->flush();
    }
    void send(const QByteArray &bytes) const { send(count() - 1, bytes); }
    // Closes the link once all is sent.
    void close() const { link()->disconnectFromHost(); }

    // Called with the connection's number whenever it has brought more; may be empty.
    std::function<void(int)> heard;

private:
    void take(QTcpSocket *link)
    {
        const int index = count();
        m_links.append(link);
        m_received.append(QByteArray());
        connect(link, &QTcpSocket::readyRead, this, [this, link, index] {
            m_received[index] += link->readAll();
            if (heard) {
                heard(index);
            }
        });
    }

    QList<QTcpSocket *> m_links; // children of the server
    QList<QByteArray> m_received;
    QTcpServer m_server;
};
