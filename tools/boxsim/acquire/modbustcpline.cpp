#include "boxsim/acquire/modbustcpline.h"

#include "boxsim/acquire/stopflag.h"

#include <QDeadlineTimer>
#include <QtEndian>

#include <cerrno>
#include <cstring>
#include <modbus.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

constexpr int prefix = 6;          // bytes up to the length of what follows
constexpr int shortest = 9;        // with station, function, and size or exception
constexpr int longestIdle = 32767; // seconds
constexpr int retryPause = 50;     // milliseconds until a peer that refuses is asked again

QString errorText(int error)
{
    return QString::fromLocal8Bit(std::strerror(error));
}

void setOption(int socket, int level, int option, int value)
{
    setsockopt(socket, level, option, &value, sizeof value);
}

void setOptions(int socket, int keepAlive)
{
    setOption(socket, IPPROTO_TCP, TCP_NODELAY, 1);
    if (keepAlive > 0) {
        setOption(socket, SOL_SOCKET, SO_KEEPALIVE, 1);
        setOption(socket, IPPROTO_TCP, TCP_KEEPIDLE, qBound(1, keepAlive / 1000, longestIdle));
    }
}

} // namespace

ModbusTcpLine::ModbusTcpLine(const Setup &setup, StopFlag *stop)
    : ModbusLine(setup.requestTimeout, stop)
    , m_setup(setup)
{
}

QString ModbusTcpLine::name() const
{
    return QStringLiteral("%1:%2").arg(m_setup.address.toString()).arg(m_setup.port);
}

// Some peers refuse for a moment after the end of a connection. One that took none before is asked once, and
// so is one that refused for the whole time.
ModbusLine::Context ModbusTcpLine::connect(int timeout, QString *reason)
{
    m_isOutOfStep = false;
    const QDeadlineTimer deadline(timeout);
    Context context = connectOnce(timeout, reason);
    while (!context && m_mayRefuse && deadline.remainingTime() > retryPause && stopFlag()->wait(retryPause)) {
        context = connectOnce(static_cast<int>(deadline.remainingTime()), reason);
    }
    m_mayRefuse = context || (m_mayRefuse && timeout < m_setup.connectTimeout);
    return context;
}

// libmodbus would wait for the connection without an end to it at a stop.
ModbusLine::Context ModbusTcpLine::connectOnce(int timeout, QString *reason) const
{
    const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
    if (socket < 0) {
        *reason = errorText(errno);
        return nullptr;
    }
    setOptions(socket, m_setup.keepAlive);
    Context context(modbus_new_tcp(nullptr, m_setup.port));
    if (!context) {
        *reason = errorText(errno);
        ::close(socket);
        return nullptr;
    }
    modbus_set_socket(context.get(), socket); // which it closes from now on
    if (!finishConnect(socket, timeout, reason)) {
        return nullptr;
    }
    return context;
}

bool ModbusTcpLine::finishConnect(int socket, int timeout, QString *reason) const
{
    sockaddr_in peer = {};
    peer.sin_family = AF_INET;
    peer.sin_port = qToBigEndian(m_setup.port);
    peer.sin_addr.s_addr = qToBigEndian(m_setup.address.toIPv4Address());
    int error = 0;
    if (::connect(socket, reinterpret_cast<const sockaddr *>(&peer), sizeof peer) != 0) {
        error = errno;
    }
    if (error == EINPROGRESS) {
        if (waitFor(socket, POLLOUT, timeout) == 0) {
            *reason = QStringLiteral("no answer to the connection");
            return false;
        }
        socklen_t size = sizeof error;
        getsockopt(socket, SOL_SOCKET, SO_ERROR, &error, &size);
    }
    *reason = errorText(error);
    return error == 0;
}

bool ModbusTcpLine::prepare(int timeout, ModbusAnswer *answer)
{
    if (m_isOutOfStep) {
        close();
        QString reason;
        if (!open(qMin(timeout, m_setup.connectTimeout), &reason)) {
            *answer = {ModbusAnswer::Kind::Lost, 0, reason};
            return false;
        }
    }
    return true;
}

// Not by libmodbus, which gives a request that is not waited for no number of its own.
bool ModbusTcpLine::send(const ModbusAsk &ask)
{
    ++m_transaction;
    QByteArray frame;
    for (const int word : {int(m_transaction), 0, 6}) {
        frame.append(static_cast<char>(word >> 8)).append(static_cast<char>(word & 0xff));
    }
    frame.append(static_cast<char>(ask.station)).append(static_cast<char>(readFunction(ask.area)));
    for (const int word : {ask.first, ask.count}) {
        frame.append(static_cast<char>(word >> 8)).append(static_cast<char>(word & 0xff));
    }
    return ::send(socket(), frame.constData(), static_cast<size_t>(frame.size()), MSG_NOSIGNAL)
        == frame.size();
}

int ModbusTcpLine::missingBytes(const QByteArray &answer) const
{
    if (answer.size() < prefix) {
        return prefix - answer.size();
    }
    const int protocol = qFromBigEndian<quint16>(answer.constData() + 2);
    const int size = prefix + qFromBigEndian<quint16>(answer.constData() + 4);
    const bool isModbus = protocol == 0 && size >= shortest && size <= MODBUS_TCP_MAX_ADU_LENGTH;
    return isModbus ? size - answer.size() : -1;
}

// Whether the answer is as long as the data or the exception that it says to have.
bool ModbusTcpLine::isSound(const QByteArray &answer) const
{
    const int function = static_cast<quint8>(answer.at(shortest - 2));
    const int data = static_cast<quint8>(answer.at(shortest - 1));
    return answer.size() == ((function & 0x80) != 0 ? shortest : shortest + data);
}

// A late answer has the number of its own request.
bool ModbusTcpLine::isLatest(const QByteArray &answer) const
{
    return answer.size() > 2 && qFromBigEndian<quint16>(answer.constData()) == m_transaction;
}

void ModbusTcpLine::noteFailure(Failure failure)
{
    m_isOutOfStep = m_isOutOfStep || failure == Failure::OutOfStep;
}
