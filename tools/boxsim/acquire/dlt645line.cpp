#include "boxsim/acquire/dlt645line.h"

#include "boxsim/acquire/stopflag.h"

#include <QFileInfo>
#include <QSerialPort>

#ifdef Q_OS_UNIX
#include <termios.h>
#endif

namespace {

constexpr int timeToAnswer = 500;   // milliseconds; a meter begins its answer within them
constexpr int longestExchange = 52; // characters of a request and an answer with a long value

QSerialPort::Parity parityOf(char letter)
{
    switch (letter) {
    case 'E':
        return QSerialPort::EvenParity;
    case 'O':
        return QSerialPort::OddParity;
    default:
        return QSerialPort::NoParity;
    }
}

// What a slice of a wait may take.
int sliceOf(const QDeadlineTimer &deadline)
{
    return static_cast<int>(qBound<qint64>(0, deadline.remainingTime(), StopFlag::slice));
}

#ifdef Q_OS_UNIX
// Returns when the last bit is on the line.
void drain(QSerialPort *port)
{
    tcdrain(port->handle());
}
#else
void drain(QSerialPort *) {}
#endif

} // namespace

Dlt645Line::Dlt645Line(const QString &path, const SerialSettings &settings, StopFlag *stop,
                       std::shared_ptr<LineSilence> silence, const std::function<void(const QString &)> &tell)
    : m_path(path)
    , m_settings(settings)
    , m_stop(stop)
    , m_lacks(path, tell)
    , m_silence(std::move(silence))
{
}

Dlt645Line::~Dlt645Line() = default;

int Dlt645Line::leastTimeout() const
{
    return timeToAnswer + m_settings.timeOf(longestExchange) / 1000;
}

bool Dlt645Line::open(QString *reason)
{
    if (!m_file.open(m_path, reason)) {
        return false;
    }
    m_port = std::make_unique<QSerialPort>();
    m_port->setPortName(QFileInfo(m_path).absoluteFilePath());
    m_port->setBaudRate(m_settings.baudRate);
    m_port->setDataBits(static_cast<QSerialPort::DataBits>(m_settings.dataBits));
    m_port->setStopBits(m_settings.stopBits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
    m_port->setParity(parityOf(m_settings.parity));
    m_port->setFlowControl(QSerialPort::NoFlowControl);
    if (!openPort(reason)) {
        close();
        return false;
    }
    if (m_settings.parity != 'N' && !usesParity()) {
        m_lacks.tell(QStringLiteral("parity"));
    }
    m_switchesRts = m_settings.rts && m_port->setRequestToSend(false);
    if (m_settings.rts && !m_switchesRts) {
        m_lacks.tell(QStringLiteral("RTS"));
    }
    return true;
}

// Without the parity if the line refuses it.
bool Dlt645Line::openPort(QString *reason)
{
    const bool opened = m_port->open(QIODevice::ReadWrite);
    *reason = m_port->errorString();
    if (opened || m_settings.parity == 'N' || m_port->error() != QSerialPort::UnsupportedOperationError) {
        return opened;
    }
    m_port->setParity(QSerialPort::NoParity);
    return m_port->open(QIODevice::ReadWrite);
}

bool Dlt645Line::usesParity() const
{
    return m_port->parity() != QSerialPort::NoParity && m_file.hasParity();
}

// The file last: what has the line next is to find its settings as they were before.
void Dlt645Line::close()
{
    m_port.reset();
    m_file.close();
}

bool Dlt645Line::isOpen() const
{
    return m_port && m_port->isOpen();
}

void Dlt645Line::settle()
{
    if (isOpen()) {
        waitForSilence();
    }
}

Dlt645Line::Exchange Dlt645Line::ask(const Dlt645Query &query, int timeout, Dlt645Answer *answer)
{
    switch (waitForSilence()) {
    case LineSilence::Ending::Silent:
        break;
    case LineSilence::Ending::Stopped:
        return Exchange::Silent;
    case LineSilence::Ending::HungUp:
        return Exchange::HungUp;
    case LineSilence::Ending::Restless:
        return Exchange::Restless;
    }
    Exchange exchange = Exchange::Damaged;
    for (int attempt = 0; attempt < 2 && exchange == Exchange::Damaged; ++attempt) {
        waitForGap();
        exchange = askOnce(query, timeout, answer);
    }
    return exchange;
}

// An answer may still come after a time-out. It would collide with the next request, and one with an error is
// not to be told from an answer to that, as it names no item.
Dlt645Line::Exchange Dlt645Line::askOnce(const Dlt645Query &query, int timeout, Dlt645Answer *answer)
{
    m_port->clear(); // what is there belongs to no request any more
    m_port->clearError();
    const QDeadlineTimer deadline(timeout);
    if (!send(query.request(), deadline)) {
        return Exchange::HungUp;
    }
    const Exchange exchange = receive(query, deadline, answer);
    m_silence->noteByte();
    if (exchange == Exchange::Silent || exchange == Exchange::HungUp) {
        m_silence->need(requestTimeout());
    }
    return exchange;
}

LineSilence::Ending Dlt645Line::waitForSilence()
{
    return m_silence->wait([this](qint64 time) { return listen(time); }, *m_stop,
                           m_settings.timeOf(longestExchange) / 1000);
}

int Dlt645Line::listen(qint64 time)
{
    const QDeadlineTimer deadline(time);
    do {
        m_port->clearError();
        if (m_port->waitForReadyRead(sliceOf(deadline))) {
            m_port->readAll();
            return 1;
        }
        if (m_port->error() != QSerialPort::TimeoutError) {
            return -1;
        }
    } while (!deadline.hasExpired() && !m_stop->isSet());
    return 0;
}

void Dlt645Line::waitForGap()
{
    const qint64 gap = (m_settings.gapTime() + 999) / 1000;
    m_stop->wait(gap - m_silence->sinceLastByte());
}

// False if the line hung up. What is not sent when the time is over is thrown away.
bool Dlt645Line::send(const QByteArray &request, const QDeadlineTimer &deadline)
{
    if (m_switchesRts) {
        m_port->setRequestToSend(true);
    }
    m_port->write(request);
    while (m_port->bytesToWrite() > 0 && !deadline.hasExpired() && !m_stop->isSet()) {
        m_port->clearError();
        if (!m_port->waitForBytesWritten(sliceOf(deadline)) && m_port->error() != QSerialPort::TimeoutError) {
            return false;
        }
    }
    if (m_port->bytesToWrite() > 0) {
        m_port->clear(QSerialPort::Output);
    }
    if (m_switchesRts) {
        drain(m_port.get());
        m_port->setRequestToSend(false);
    }
    return true;
}

Dlt645Line::Exchange Dlt645Line::receive(const Dlt645Query &query, const QDeadlineTimer &deadline,
                                         Dlt645Answer *answer)
{
    Dlt645FrameFinder finder;
    bool damaged = false;
    while (!deadline.hasExpired() && !m_stop->isSet()) {
        m_port->clearError();
        if (!m_port->waitForReadyRead(sliceOf(deadline))) {
            if (m_port->error() != QSerialPort::TimeoutError) {
                return Exchange::HungUp;
            }
            if (damaged) {
                break; // the line is silent, so nothing sound is on its way
            }
            continue;
        }
        const QVector<Dlt645Frame> frames = finder.find(m_port->readAll());
        for (const Dlt645Frame &frame : frames) {
            damaged = damaged || !frame.intact;
            *answer = query.answer(frame);
            if (answer->kind != Dlt645Answer::Kind::None) {
                return Exchange::Answered;
            }
        }
    }
    return damaged ? Exchange::Damaged : Exchange::Silent;
}
