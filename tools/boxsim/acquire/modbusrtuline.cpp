#include "boxsim/acquire/modbusrtuline.h"

#include "boxsim/acquire/stopflag.h"

#include <QFile>
#include <QThread>

#include <cerrno>
#include <modbus.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

constexpr int shortestKnown = 3;  // station, function, size or exception: what says how long an answer is
constexpr int frameSize = 5;      // those and the checksum
constexpr int requestSize = 8;    // with the checksum
constexpr int timeToAnswer = 100; // milliseconds; most slaves begin their answer within them

} // namespace

ModbusRtuLine::ModbusRtuLine(const QString &path, const SerialSettings &settings, StopFlag *stop,
                             std::shared_ptr<LineSilence> silence,
                             const std::function<void(const QString &)> &tell)
    : ModbusLine(settings.timeout, stop)
    , m_path(path)
    , m_settings(settings)
    , m_lacks(path, tell)
    , m_silence(std::move(silence))
{
}

ModbusRtuLine::~ModbusRtuLine()
{
    ModbusRtuLine::close();
}

// The file last: what has the line next is to find its settings as they were before.
void ModbusRtuLine::close()
{
    ModbusLine::close();
    m_file.close();
}

int ModbusRtuLine::leastTimeout() const
{
    return timeToAnswer + m_settings.timeOf(requestSize) / 1000;
}

ModbusLine::Context ModbusRtuLine::connectWith(char parity) const
{
    Context context(modbus_new_rtu(QFile::encodeName(m_path).constData(), m_settings.baudRate, parity,
                                   m_settings.dataBits, m_settings.stopBits));
    if (context && modbus_connect(context.get()) != 0) {
        const int error = errno;
        context.reset();
        errno = error;
    }
    return context;
}

ModbusLine::Context ModbusRtuLine::connect(int /*timeout*/, QString *reason)
{
    if (!m_file.open(m_path, reason)) {
        return nullptr;
    }
    Context context = connectWith(m_settings.parity);
    if (!context && errno == EINVAL && m_settings.parity != 'N') {
        context = connectWith('N');
    }
    if (!context) {
        *reason = QString::fromLocal8Bit(modbus_strerror(errno));
        m_file.close();
        return nullptr;
    }
    if (m_settings.parity != 'N' && !m_file.hasParity()) {
        m_lacks.tell(QStringLiteral("parity"));
    }
    if (m_settings.rts) {
        enableRts(context.get());
    }
    return context;
}

// Has libmodbus switch RTS on around what it sends.
void ModbusRtuLine::enableRts(modbus_t *context)
{
    int lines = 0;
    if (ioctl(modbus_get_socket(context), TIOCMGET, &lines) == 0) {
        modbus_rtu_set_rts(context, MODBUS_RTU_RTS_UP);
    } else {
        m_lacks.tell(QStringLiteral("RTS"));
    }
}

bool ModbusRtuLine::prepare(int /*timeout*/, ModbusAnswer *answer)
{
    switch (waitForSilence()) {
    case LineSilence::Ending::Silent:
        break;
    case LineSilence::Ending::Stopped:
        return false;
    case LineSilence::Ending::HungUp:
        *answer = {ModbusAnswer::Kind::Lost, 0, QStringLiteral("the line hung up")};
        return false;
    case LineSilence::Ending::Restless:
        *answer = {ModbusAnswer::Kind::Unusable, 0, QStringLiteral("the line is never silent")};
        return false;
    }
    const int gap = m_settings.gapTime();
    if (gap < 1000 * StopFlag::slice) {
        QThread::usleep(static_cast<unsigned long>(gap));
    } else if (!stopFlag()->wait(gap / 1000)) {
        return false;
    }
    modbus_flush(context());
    return true;
}

LineSilence::Ending ModbusRtuLine::waitForSilence()
{
    const auto listen = [this](qint64 time) {
        const int waited = waitFor(socket(), POLLIN, time);
        char thrownAway[256];
        return waited > 0 && ::read(socket(), thrownAway, sizeof thrownAway) <= 0 ? -1 : waited;
    };
    return m_silence->wait(listen, *stopFlag(), m_settings.timeOf(MODBUS_RTU_MAX_ADU_LENGTH) / 1000);
}

void ModbusRtuLine::settle()
{
    if (isOpen()) {
        waitForSilence();
    }
}

bool ModbusRtuLine::send(const ModbusAsk &ask)
{
    const auto byte = [](int number) { return static_cast<quint8>(number & 0xff); };
    const quint8 request[] = {byte(ask.station), readFunction(ask.area), byte(ask.first >> 8),
                              byte(ask.first),   byte(ask.count >> 8),   byte(ask.count)};
    return modbus_send_raw_request(context(), request, sizeof request) > 0;
}

int ModbusRtuLine::missingBytes(const QByteArray &answer) const
{
    if (answer.size() < shortestKnown) {
        return shortestKnown - answer.size();
    }
    const int function = static_cast<quint8>(answer.at(1));
    const int data = static_cast<quint8>(answer.at(2));
    const bool isException = (function & 0x80) != 0;
    const int size = isException ? frameSize : frameSize + data;
    const bool isRead = function >= 1 && function <= 4; // all that is ever asked for
    return (isException || isRead) && size <= MODBUS_RTU_MAX_ADU_LENGTH ? size - answer.size() : -1;
}

bool ModbusRtuLine::isSound(const QByteArray &answer) const
{
    quint32 sum = 0xffff;
    for (const char byte : answer) {
        sum ^= static_cast<quint8>(byte);
        for (int bit = 0; bit < 8; ++bit) {
            sum = (sum & 1) != 0 ? sum >> 1 ^ 0xa001 : sum >> 1;
        }
    }
    return sum == 0; // since the checksum is among the bytes, low byte first
}

int ModbusRtuLine::transferTime(int dataSize) const
{
    return m_settings.timeOf(frameSize + dataSize) / 1000 + 1;
}

// However short the request waited: its answer may take a whole time-out. Out of step the silence helps, too.
void ModbusRtuLine::noteFailure(Failure)
{
    m_silence->need(requestTimeout());
}
