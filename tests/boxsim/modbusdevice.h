#pragma once

#include "acquiretest.h"

#include <QPointer>
#include <QSocketNotifier>
#include <QTcpServer>
#include <QTcpSocket>
#include <QtEndian>

#include <functional>
#include <memory>

// A Modbus device of the test's own, on TCP or on a serial line: what it says is made here, byte by byte.
namespace Modbus {

// The checksum of a serial line.
inline QByteArray crc(const QByteArray &adu)
{
    quint16 sum = 0xffff;
    for (const char byte : adu) {
        sum = quint16(sum ^ quint8(byte));
        for (int bit = 0; bit < 8; ++bit) {
            sum = quint16((sum & 1) != 0 ? (sum >> 1) ^ 0xa001 : sum >> 1);
        }
    }
    return QByteArray(1, char(sum)) + char(sum >> 8);
}

// One request as a device sees it, and the ways to answer.
struct Request {
    QByteArray header; // 6 bytes of MBAP; none on a serial line
    int station = 0;
    int function = 0;
    int first = 0;
    int count = 0;

    // The whole frame around a PDU.
    QByteArray frame(const QByteArray &pdu) const { return frameOf(station, pdu); }
    QByteArray frameOf(int from, const QByteArray &pdu) const
    {
        if (header.isEmpty()) {
            const QByteArray adu = char(from) + pdu;
            return adu + crc(adu);
        }
        const int size = pdu.size() + 1;
        return header.left(4) + char(size >> 8) + char(size) + char(from) + pdu;
    }
    // Each register holds its address plus 1000 times the station.
    QByteArray data() const
    {
        QByteArray pdu = QByteArray(1, char(function)) + char(2 * count);
        for (int i = 0; i < count; ++i) {
            const int value = 1000 * station + first + i;
            pdu.append(char(value >> 8)).append(char(value));
        }
        return pdu;
    }
    QByteArray good() const { return frame(data()); }
    QByteArray refusal(int code) const { return frame(QByteArray(1, char(function | 0x80)) + char(code)); }
};
inline QString address = "127.0.52.1"; // of the devices; each test program has its own
using Answer = std::function<QByteArray(const Request &)>;

class Device : public QObject
{
public:
    // At a port by its number, or on a line by its number.
    Device(bool serial, int number, const Answer &how)
        : answer(how)
        , m_serial(serial)
        , m_number(number)
    {
        m_clock.start();
        start();
    }

    void start()
    {
        if (m_serial) {
            plug();
        } else {
            listen();
        }
    }
    // Ends its connections, or pulls the line.
    void stop()
    {
        m_notifier.reset();
        QFile::remove(line()); // another program may get a terminal of the same name
        m_terminal.reset();
        m_server.reset();
    }
    int port() const { return 1502 + m_number; }
    QString line() const { return QString("line%1").arg(m_number); }
    QString lineName() const { return m_serial ? line() : QString("%1:%2").arg(address).arg(port()); }
    QJsonObject standard(const QJsonArray &slaves, int timeout) const
    {
        const QString com = QString("COM%1").arg(m_number);
        QJsonObject standard =
            m_serial ? Acquire::rtu(slaves, timeout, com) : Acquire::tcp(address, port(), slaves, timeout);
        standard.insert("name", QString("S%1").arg(m_number));
        return standard;
    }
    // "1:0+2": station, first register and count of the requests since the last call.
    QStringList asked()
    {
        QStringList asked;
        for (const Request &request : qAsConst(m_requests)) {
            asked.append(QString("%1:%2+%3").arg(request.station).arg(request.first).arg(request.count));
        }
        m_requests.clear();
        return asked;
    }
    QStringList askedAtAll()
    {
        QStringList all = asked();
        all.removeDuplicates();
        return all;
    }
    int requestCount() const { return m_requests.size(); }

    Answer answer;
    QPointer<QTcpSocket> socket; // of the last connection
    int connections = 0;
    std::function<void(const QByteArray &)> send; // to whoever asked last
    QVector<qint64> times;                        // of the requests, in milliseconds

private:
    void listen()
    {
        m_server = std::make_unique<QTcpServer>();
        QVERIFY2(m_server->listen(QHostAddress(address), quint16(port())),
                 qPrintable(m_server->errorString()));
        connect(m_server.get(), &QTcpServer::newConnection, this, [this] {
            QTcpSocket *peer = m_server->nextPendingConnection();
            ++connections;
            socket = peer;
            connect(peer, &QTcpSocket::readyRead, this, [this, peer] {
                while (peer->bytesAvailable() >= 12) {
                    take(parsed(peer->read(12), 6), [peer](const QByteArray &bytes) { peer->write(bytes); });
                }
            });
        });
    }
    void plug()
    {
        m_received.clear();
        m_terminal = std::make_unique<Acquire::Terminal>();
        QFile::remove(line());
        QVERIFY(QFile::link(m_terminal->path(), line()));
        m_notifier = std::make_unique<QSocketNotifier>(m_terminal->master(), QSocketNotifier::Read);
        connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
            m_received += m_terminal->read();
            for (; m_received.size() >= 8; m_received.remove(0, 8)) {
                QCOMPARE(crc(m_received.left(6)).toHex(), m_received.mid(6, 2).toHex());
                take(parsed(m_received, 0), [this](const QByteArray &bytes) { m_terminal->write(bytes); });
            }
        });
    }
    void take(const Request &request, const std::function<void(const QByteArray &)> &way)
    {
        m_requests.append(request);
        times.append(m_clock.elapsed());
        send = way;
        const QByteArray bytes = answer(request);
        if (!bytes.isEmpty()) {
            send(bytes);
        }
    }
    static Request parsed(const QByteArray &adu, int header)
    {
        const auto word = [&](int at) { return int(qFromBigEndian<quint16>(adu.constData() + header + at)); };
        return {adu.left(header), quint8(adu.at(header)), quint8(adu.at(header + 1)), word(2), word(4)};
    }

    bool m_serial;
    int m_number;
    std::unique_ptr<QTcpServer> m_server;
    std::unique_ptr<Acquire::Terminal> m_terminal;
    std::unique_ptr<QSocketNotifier> m_notifier;
    QByteArray m_received;
    QVector<Request> m_requests;
    QElapsedTimer m_clock;
};

// Base of the tests that read devices of their own.
class DeviceTest : public QObject
{
protected:
    static QByteArray good(const Request &request) { return request.good(); }
    static QByteArray silence(const Request &) { return QByteArray(); }

    // Starts a device and reads these slaves of it. Times are in milliseconds.
    void run(bool serial, const QJsonArray &slaves, const Answer &answer, int interval = 60,
             int timeout = 150)
    {
        m_device = std::make_unique<Device>(serial, 0, answer);
        m_run = std::make_unique<Acquire::Run>();
        m_run->start({m_device->standard(slaves, timeout)}, interval, {{"COM0", "line0"}});
    }
    void stop()
    {
        m_run.reset();
        m_device.reset();
    }

    std::unique_ptr<Device> m_device;
    std::unique_ptr<Acquire::Run> m_run;
};

} // namespace Modbus
