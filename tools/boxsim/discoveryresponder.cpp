#include "boxsim/discoveryresponder.h"

#include "boxsim/wire.h"

#include <QNetworkDatagram>

DiscoveryResponder::DiscoveryResponder(std::function<QByteArray()> answer, QObject *parent)
    : QObject(parent)
    , m_answer(std::move(answer))
    , m_socket(this)
{
    connect(&m_socket, &QUdpSocket::readyRead, this, &DiscoveryResponder::readDatagrams);
}

bool DiscoveryResponder::start(const QHostAddress &address, quint16 port)
{
    // Shared, so that several Boxes on one computer hear the same broadcast.
    return m_socket.bind(address, port, QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint);
}

void DiscoveryResponder::stop()
{
    m_socket.close();
}

void DiscoveryResponder::readDatagrams()
{
    while (m_socket.hasPendingDatagrams()) {
        const QNetworkDatagram datagram = m_socket.receiveDatagram();
        const QString peer =
            QStringLiteral("%1:%2").arg(datagram.senderAddress().toString()).arg(datagram.senderPort());
        if (datagram.data() != Wire::searchRequest()) {
            emit strangeDatagram(peer, datagram.data());
            continue;
        }
        emit searched(peer);
        const QByteArray answer = m_answer();
        if (!answer.isEmpty()) {
            m_socket.writeDatagram(answer, datagram.senderAddress(),
                                   static_cast<quint16>(datagram.senderPort()));
        }
    }
}
