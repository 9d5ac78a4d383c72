#pragma once

#include <QHostAddress>
#include <QList>
#include <QObject>
#include <QTcpServer>
#include <QTcpSocket>

#include <functional>

// A Box that says only what a test makes it say. It lives in the test's thread, so it takes nothing in while
// the program blocks.
class BoxPeer : public QObject
{
public:
    explicit BoxPeer(const QString &address)
    {
        connect(&m_server, &QTcpServer::newConnection, this, [this] {
            while (QTcpSocket *link = m_server.nextPendingConnection()) {
                const int index = m_links.size();
                m_links.append(link);
                m_received.append(QByteArray());
                connect(link, &QTcpSocket::readyRead, this, [this, link, index] {
                    m_received[index] += link->readAll();
                    if (heard) {
                        heard(index);
                    }
                });
            }
        });
        m_listening = m_server.listen(QHostAddress(address), 30088);
    }

    bool isListening() const { return m_listening; }
    // The connections, in the order of connecting.
    int count() const { return m_links.size(); }
    QTcpSocket *link(int index) const { return m_links.at(index); }
    // All that a connection has brought.
    QByteArray received(int index) const { return m_received.value(index); }
    void send(int index, const QByteArray &bytes) const { m_links.at(index)->write(bytes); }

    // Called with the connection's index whenever it has brought more; may be empty.
    std::function<void(int)> heard;

private:
    QTcpServer m_server;
    QList<QTcpSocket *> m_links;
    QList<QByteArray> m_received;
    bool m_listening = false;
};
