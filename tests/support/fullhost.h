#pragma once

#include <QHostAddress>
#include <QTcpServer>
#include <QTcpSocket>

#include <sys/socket.h>

// A host that takes no further connection on the port of a Box and doesn't refuse it: an attempt gets no
// word.
class FullHost
{
public:
    explicit FullHost(const QString &address)
    {
        if (!m_server.listen(QHostAddress(address), 30088)
            || ::listen(int(m_server.socketDescriptor()), 0) != 0) {
            qFatal("no host at %s", qPrintable(address));
        }
        m_server.pauseAccepting();
        m_onlyOne.connectToHost(address, 30088);
        if (!m_onlyOne.waitForConnected()) {
            qFatal("no connection to %s", qPrintable(address));
        }
    }
    Q_DISABLE_COPY(FullHost)

private:
    QTcpServer m_server;
    QTcpSocket m_onlyOne;
};
