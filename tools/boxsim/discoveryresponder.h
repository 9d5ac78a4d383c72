#pragma once

#include <QHostAddress>
#include <QObject>
#include <QUdpSocket>

#include <functional>

// Answers search datagrams on UDP, each to the address and port that it came from.
class DiscoveryResponder : public QObject
{
    Q_OBJECT

public:
    // answer: asked for each request; gives the datagram to send, empty for none.
    explicit DiscoveryResponder(std::function<QByteArray()> answer, QObject *parent = nullptr);

    // Listens there; 0.0.0.0 hears broadcasts too. False if it is taken, see errorString().
    bool start(const QHostAddress &address, quint16 port);
    void stop();
    QString errorString() const { return m_socket.errorString(); }

signals:
    void searched(const QString &peer);
    // A datagram that is no search request; it gets no answer.
    void strangeDatagram(const QString &peer, const QByteArray &bytes);

private:
    void readDatagrams();

    std::function<QByteArray()> m_answer;
    QUdpSocket m_socket;
};
