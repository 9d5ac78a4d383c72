#pragma once

#include "boxlink/discovery.h"

#include <QNetworkInterface>
#include <QObject>
#include <QSet>
#include <QTimer>
#include <QUdpSocket>

#include <functional>

// Finds Boxes on the local network by UDP broadcast. Failures are debug lines. May be deleted from a slot of
// finished, but not from one of found.
class BoxSearch : public QObject
{
    Q_OBJECT
public:
    // Asked at each broadcast for the interface to search on, so that another one counts from the next on.
    using Source = std::function<QNetworkInterface()>;

    explicit BoxSearch(Source source, QObject *parent = nullptr);
    // Searches from this local address alone.
    explicit BoxSearch(const QHostAddress &address, QObject *parent = nullptr);

    // Forgets what was found and broadcasts once a second for ten seconds. Compat: a search that is started
    // while another runs has an end of its own, and the first end of the two stops the broadcasts.
    void start();
    // Sends one broadcast from the interface's first IPv4 address.
    void broadcast();
    // Takes all datagrams that the socket has.
    void readPendingDatagrams();
    // Takes one datagram; anything but a first answer of its address is dropped in silence.
    void take(const QByteArray &datagram);

signals:
    // A broadcast has gone out.
    void sent();
    // A broadcast could not be sent from this address, for the reason that the system gives, or there is no
    // IPv4 address to send from.
    void failed(const QHostAddress &address, const QString &errorString);
    // Once a search for each address.
    void found(const Discovery::Answer &box);
    // For each start, ten seconds later.
    void finished();

private:
    std::function<QHostAddress()> m_source;
    QUdpSocket m_socket;   // bound anew at each broadcast
    QTimer m_broadcasts;   // repeating, 1000 ms
    QSet<QString> m_found; // addresses of the current search
};
