#pragma once

#include "boxsim/acquire/modbusline.h"

#include <QHostAddress>

// One TCP connection to a slave, or to a gateway with slaves behind it.
class ModbusTcpLine : public ModbusLine
{
public:
    struct Setup {
        QHostAddress address; // IPv4
        quint16 port = 502;
        int connectTimeout = 2000;
        int requestTimeout = 2000;
        int keepAlive = 0; // idle time before TCP asks whether the peer is there; 0 or less for never
    };

    ModbusTcpLine(const Setup &setup, StopFlag *stop);

    QString name() const override;
    int openTimeout() const override { return m_setup.connectTimeout; }

protected:
    Context connect(int timeout, QString *reason) override;
    bool prepare(int timeout, ModbusAnswer *answer) override;
    bool send(const ModbusAsk &ask) override;
    int missingBytes(const QByteArray &answer) const override;
    bool isSound(const QByteArray &answer) const override;
    bool isLatest(const QByteArray &answer) const override;
    void noteFailure(Failure failure) override;

private:
    Context connectOnce(int timeout, QString *reason) const;
    bool finishConnect(int socket, int timeout, QString *reason) const;

    Setup m_setup;
    quint16 m_transaction = 0;
    bool m_mayRefuse = false;   // the next connection for a moment, as it took the last one
    bool m_isOutOfStep = false; // so that it is to be opened anew
};
