#include "boxsim/acquire/modbusline.h"

#include "boxsim/acquire/stopflag.h"

#include <QDeadlineTimer>

#include <cerrno>
#include <modbus.h>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr int exceptionBit = 0x80;

QString errorText()
{
    return QString::fromLocal8Bit(modbus_strerror(errno));
}

// The bytes of an answer behind its size.
int dataSize(const ModbusAsk &ask)
{
    return isBitArea(ask.area) ? (ask.count + 7) / 8 : 2 * ask.count;
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
    if (!prepare(timeout, &answer)) {
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
    QDeadlineTimer deadline(timeout);
    int transfer = transferTime(dataSize(ask));
    ModbusAnswer answer;
    answer.reason = QStringLiteral("no answer");
    QByteArray adu;
    while (!m_stop->isSet()) {
        if (deadline.hasExpired()) { // while others talk without an end
            noteFailure(Failure::OutOfStep);
            return answer;
        }
        switch (collect(&deadline, &transfer, &adu)) {
        case Coming::Whole:
            if (take(ask, adu, words, &answer)) {
                return answer;
            }
            break;
        case Coming::Nothing:
            noteFailure(Failure::NoAnswer);
            return answer;
        case Coming::Broken:
            noteFailure(Failure::OutOfStep);
            answer.reason = QStringLiteral("a broken answer");
            return answer;
        case Coming::Lost:
            answer = {ModbusAnswer::Kind::Lost, 0, errorText()};
            noteFailure(Failure::NoAnswer);
            return answer;
        }
    }
    noteFailure(Failure::NoAnswer);
    return answer;
}

// One answer, to whatever request. Its transfer is added to the time once, when something comes. Not by
// libmodbus, which waits for each byte anew, and for none on a file past FD_SETSIZE.
ModbusLine::Coming ModbusLine::collect(QDeadlineTimer *deadline, int *transfer, QByteArray *answer) const
{
    answer->clear();
    int missing = missingBytes(*answer);
    for (; missing > 0; missing = missingBytes(*answer)) {
        const int waited = waitFor(socket(), POLLIN, deadline->remainingTime());
        if (waited == 0) {
            return answer->isEmpty() ? Coming::Nothing : Coming::Broken;
        }
        char bytes[MODBUS_MAX_ADU_LENGTH];
        errno = 0;
        const ssize_t size = ::read(socket(), bytes, static_cast<size_t>(missing));
        if (size < 0 && (errno == EAGAIN || errno == EINTR)) {
            continue;
        }
        if (waited < 0 || size <= 0) {
            errno = errno == 0 ? ECONNRESET : errno;
            return Coming::Lost;
        }
        answer->append(bytes, static_cast<int>(size));
        *deadline += std::exchange(*transfer, 0);
    }
    return missing == 0 && isSound(*answer) ? Coming::Whole : Coming::Broken;
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
    return function == readFunction(ask.area) && size == dataSize(ask) && answer.size() >= header + 2 + size;
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
