#include "boxlink/boxsearch.h"

#include "boxlink/frame.h"

#include <QDebug>

namespace {

constexpr int broadcastInterval = 1000; // ms
constexpr int searchDuration = 10000;   // ms
constexpr quint16 localPort = 5;        // a Box answers to the port that it was asked from

QHostAddress firstIpv4(const QNetworkInterface &networkInterface)
{
    const QList<QNetworkAddressEntry> entries = networkInterface.addressEntries();
    for (const QNetworkAddressEntry &entry : entries) {
        if (entry.ip().protocol() == QAbstractSocket::IPv4Protocol) {
            return entry.ip();
        }
    }
    return {};
}

} // namespace

BoxSearch::BoxSearch(Source source, QObject *parent)
    : BoxSearch(QHostAddress(), parent)
{
    m_source = [source = std::move(source)] { return firstIpv4(source()); };
}

BoxSearch::BoxSearch(const QHostAddress &address, QObject *parent)
    : QObject(parent)
    , m_source([address] { return address; })
    , m_socket(this)
    , m_broadcasts(this)
{
    m_broadcasts.setObjectName(QStringLiteral("searchTimer"));
    m_broadcasts.setInterval(broadcastInterval);
    connect(&m_broadcasts, &QTimer::timeout, this, &BoxSearch::broadcast);
    connect(&m_socket, &QUdpSocket::readyRead, this, &BoxSearch::readPendingDatagrams);
}

void BoxSearch::start()
{
    m_found.clear();
    m_broadcasts.start();
    auto *end = new QTimer(this);
    end->setObjectName(QStringLiteral("searchEnd"));
    end->setSingleShot(true);
    connect(end, &QTimer::timeout, &m_broadcasts, &QTimer::stop);
    connect(end, &QTimer::timeout, this, &BoxSearch::finished);
    connect(end, &QTimer::timeout, end, &QObject::deleteLater);
    end->start(searchDuration);
}

void BoxSearch::broadcast()
{
    const QHostAddress address = m_source();
    if (address.isNull()) {
        qDebug() << "No IPv4 address found for selected network interface!";
        emit failed(address, QString());
        return;
    }
    qDebug() << "Binding to address:" << address;
    m_socket.close();
    if (!m_socket.bind(address, localPort, QAbstractSocket::DefaultForPlatform)) {
        qDebug() << "Failed to bind to selected network interface!";
        emit failed(address, m_socket.errorString());
        return;
    }
    const QHostAddress everybody(QHostAddress::Broadcast);
    if (m_socket.writeDatagram(Discovery::request(), everybody, Frame::boxPort) < 0) {
        emit failed(address, m_socket.errorString());
        return;
    }
    emit sent();
}

void BoxSearch::readPendingDatagrams()
{
    while (m_socket.hasPendingDatagrams()) {
        QByteArray datagram(int(m_socket.pendingDatagramSize()), '\0');
        const qint64 size = m_socket.readDatagram(datagram.data(), datagram.size());
        datagram.truncate(int(qMax<qint64>(size, 0)));
        take(datagram);
    }
}

void BoxSearch::take(const QByteArray &datagram)
{
    const Discovery::Answer answer = Discovery::parseAnswer(datagram);
    if (answer.valid && !m_found.contains(answer.ip)) {
        m_found.insert(answer.ip);
        emit found(answer);
    }
}
