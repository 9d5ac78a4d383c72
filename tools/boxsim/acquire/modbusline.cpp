#include "boxsim/acquire/modbusline.h"

#include "boxsim/acquire/stopflag.h"

#include <QDeadlineTimer>

#include <cerrno>
#include <modbus.h>
#include <poll.h>

namespace {

constexpr int exceptionBit = 0x80;
constexpr int longestByteGap = 500; // within an answer

QString errorText()
{
    return QString::fromLocal8Bit(modbus_strerror(errno));
}

void setTimes(modbus_t *context, int timeout)
{
    const auto seconds = [](int time) { return static_cast<quint32>(time / 1000); };
    const auto micros = [](int time) { return static_cast<quint32>(time % 1000 * 1000); };
    const int gap = qMin(timeout, longestByteGap);
    modbus_set_response_timeout(context, seconds(gap), micros(gap)); // what there is has begun to come
    modbus_set_byte_timeout(context, seconds(gap), micros(gap));
}

} // namespace

void ModbusLine::Free::operator()(modbus_t *context) const
{
    modbus_close(context);
    modbus_free(context);
}

ModbusLine::ModbusLine(int requestTimeout, StopFlag *stop)
    : m_requestTimeout(requestTimeout)
    , m_stop(stop)
{
}

ModbusLine::~ModbusLine() = default;

bool ModbusLine::open(int timeout, QString *reason)
{
    m_context = connect(timeout, reason);
    return m_context != nullptr;
}

void ModbusLine::close()
{
    m_context.reset();
}

int ModbusLine::socket() const
{
    return modbus_get_socket(m_context.get());
}

int ModbusLine::waitFor(int socket, short events, qint64 time) const
{
    const QDeadlineTimer deadline(qMax<qint64>(0, time));
    pollfd poll = {socket, events, 0};
    int found = 0;
    do {
        found = ::poll(&poll, 1, static_cast<int>(qMin<qint64>(StopFlag::slice, deadline.remainingTime())));
    } while (found == 0 && !m_stop->isSet() && !deadline.hasExpired());
    if (found <= 0) {
        return found < 0 && errno != EINTR ? -1 : 0;
    }
    return (poll.revents & events) != 0 ? 1 : -1;
}

ModbusAnswer ModbusLine::read(const ModbusAsk &ask, int timeout, quint16 *words)
{
    ModbusAnswer answer;
    if (!makeReady(&answer)) {
        return answer;
    }
    modbus_set_slave(context(), ask.station);
    if (!send(ask)) {
        return {ModbusAnswer::Kind::Lost, 0, errorText()};
    }
    return receive(ask, timeout, words);
}

ModbusAnswer ModbusLine::receive(const ModbusAsk &ask, int timeout, quint16 *words)
{
    const QDeadlineTimer deadline(timeout);
    setTimes(context(), timeout);
    ModbusAnswer answer;
    answer.reason = QStringLiteral("no answer");
    for (;;) {
        const int waited = waitFor(socket(), POLLIN, deadline.remainingTime());
        if (waited < 0) {
            return {ModbusAnswer::Kind::Lost, 0, QStringLiteral("the line hung up")};
        }
        if (waited == 0) {
            failed(false, timeout);
            return answer;
        }
        QByteArray adu(MODBUS_MAX_ADU_LENGTH, '\0');
        const int size = modbus_receive_confirmation(context(), reinterpret_cast<quint8 *>(adu.data()));
        if (size < 0 && (errno == ECONNRESET || errno == EBADF || errno == EIO || errno == EPIPE)) {
            return {ModbusAnswer::Kind::Lost, 0, errorText()};
        }
        if (size < 0) {
            failed(true, timeout);
            answer.reason = QStringLiteral("a broken answer");
            return answer;
        }
        adu.truncate(size);
        if (take(ask, adu, words, &answer)) {
            return answer;
        }
    }
}

// Of an answer to this request; another one changes nothing but the reason.
bool ModbusLine::take(const ModbusAsk &ask, const QByteArray &adu, quint16 *words, ModbusAnswer *answer) const
{
    const int header = modbus_get_header_length(context());
    if (!isLatest(adu) || !fits(ask, adu, header)) {
        answer->reason = QStringLiteral("only answers to other requests");
        return false;
    }
    const auto byte = [&](int at) { return static_cast<quint8>(adu.at(header + at)); };
    if ((byte(0) & exceptionBit) != 0) {
        *answer = {ModbusAnswer::Kind::Exception, byte(1), modbusExceptionText(byte(1))};
        return true;
    }
    for (int i = 0; i < ask.count; ++i) {
        words[i] = static_cast<quint16>(isBitArea(ask.area) ? (byte(2 + i / 8) >> (i % 8)) & 1
                                                            : byte(2 + 2 * i) << 8 | byte(3 + 2 * i));
    }
    *answer = {ModbusAnswer::Kind::Data, 0, QString()};
    return true;
}

bool ModbusLine::fits(const ModbusAsk &ask, const QByteArray &answer, int header)
{
    if (answer.size() < header + 2 || static_cast<quint8>(answer.at(header - 1)) != ask.station) {
        return false;
    }
    const int function = static_cast<quint8>(answer.at(header));
    const int size = static_cast<quint8>(answer.at(header + 1));
    if (function == (readFunction(ask.area) | exceptionBit)) {
        return true;
    }
    const int expected = isBitArea(ask.area) ? (ask.count + 7) / 8 : 2 * ask.count;
    return function == readFunction(ask.area) && size == expected && answer.size() >= header + 2 + size;
}

QString modbusExceptionText(int code)
{
    static const char *const texts[] = {
        "illegal function",
        "illegal data address",
        "illegal data value",
        "device failure",
        "acknowledged only",
        "device busy",
        "refused",
        "memory parity error",
        nullptr,
        "gateway has no path",
        "gateway's target is silent",
    };
    const bool known = code >= 1 && code <= 11 && texts[code - 1];
    return known ? QString::fromLatin1(texts[code - 1]) : QStringLiteral("exception %1").arg(code);
}
