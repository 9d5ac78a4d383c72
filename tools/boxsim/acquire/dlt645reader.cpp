#include "boxsim/acquire/dlt645reader.h"

#include "boxsim/acquire/lineclaim.h"
#include "boxsim/acquire/stopflag.h"
#include "boxsim/simproject.h"

#include <QSerialPort>

#include <algorithm>

#ifdef Q_OS_UNIX
#include <termios.h>
#endif

namespace {

constexpr int timeToOpen = 1000;    // milliseconds, far more than a device file takes
constexpr int timeToAnswer = 500;   // milliseconds; a meter begins its answer within them
constexpr int longestExchange = 52; // characters of a request and an answer with a long value

SerialSettings usualSettings()
{
    SerialSettings usual;
    usual.baudRate = 2400;
    usual.parity = 'E';
    return usual;
}

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
// A pseudo-terminal drops the parity without a word.
bool hasParity(QSerialPort *port)
{
    termios settings = {};
    return tcgetattr(port->handle(), &settings) != 0 || (settings.c_cflag & PARENB) != 0;
}

bool isClaimed(QSerialPort *port, QString *reason)
{
    return claimLine(port->handle(), reason);
}

// Returns when the last bit is on the line.
void drain(QSerialPort *port)
{
    tcdrain(port->handle());
}
#else
bool hasParity(QSerialPort *)
{
    return true;
}

bool isClaimed(QSerialPort *, QString *)
{
    return true; // the system opens no line twice
}

void drain(QSerialPort *) {}
#endif

} // namespace

Dlt645Reader::Dlt645Reader(const ReaderSetup &setup)
    : m_setup(setup)
    , m_settings(serialSettings(setup.standard->parameters, usualSettings()))
{
    for (const SimDevice &device : setup.standard->devices) {
        m_meters.push_back(meterOf(device));
    }
}

Dlt645Reader::~Dlt645Reader() = default;

Dlt645Reader::Meter Dlt645Reader::meterOf(const SimDevice &device) const
{
    Meter meter;
    meter.address = device.settings.value(QStringLiteral("slaveAddress"));
    Dlt645Query query;
    query.edition = device.settings.value(QStringLiteral("protocolVersion")) == QLatin1String("1")
        ? Dlt645Edition::Of2007
        : Dlt645Edition::Of1997;
    query.address = dlt645Address(meter.address);
    if (query.address.isEmpty()) {
        tell(QStringLiteral("meter \"%1\"").arg(meter.address), QStringLiteral("there is no such address"));
        return meter;
    }
    for (int at = 0; at < device.pointCount; ++at) {
        Item item;
        item.reading = at;
        if (takeItem(m_setup.standard->points.at(device.firstPoint + at), query, &item)) {
            meter.items.push_back(item);
        }
    }
    return meter;
}

bool Dlt645Reader::takeItem(const SimPoint &point, Dlt645Query query, Item *item) const
{
    query.item = dlt645Item(query.edition, point.addr);
    item->name = point.name;
    item->query = query;
    item->format = Dlt645Format::of(point.addr, point.dataType);
    if (query.item.isEmpty()) {
        tell(point.name,
             QStringLiteral("\"%1\" is no data identifier of DL/T 645-%2")
                 .arg(point.addr,
                      query.edition == Dlt645Edition::Of2007 ? QStringLiteral("2007")
                                                             : QStringLiteral("1997")));
        return false;
    }
    if (!item->format.isKnown()) {
        tell(point.name, QStringLiteral("\"%1\" is no format of a value").arg(point.dataType));
        return false;
    }
    return true;
}

void Dlt645Reader::tell(const QString &name, const QString &why) const
{
    m_setup.tell(QStringLiteral("\"%1\": %2 is not read, %3").arg(m_setup.standard->name, name, why));
}

void Dlt645Reader::tellLack(bool lacks, const char *what, bool *told) const
{
    if (lacks && !*told) {
        *told = true;
        m_setup.tell(QStringLiteral("\"%1\": %2 has no %3, and is used without")
                         .arg(m_setup.standard->name, m_setup.serialPath, QLatin1String(what)));
    }
}

bool Dlt645Reader::hasWork(int device) const
{
    return !m_meters[static_cast<size_t>(device)].items.empty();
}

QString Dlt645Reader::deviceName(int device) const
{
    return QStringLiteral("meter %1").arg(m_meters[static_cast<size_t>(device)].address);
}

QString Dlt645Reader::lineName() const
{
    return m_setup.serialPath;
}

int Dlt645Reader::openTimeout() const
{
    return timeToOpen;
}

int Dlt645Reader::requestTimeout() const
{
    return m_settings.timeout;
}

int Dlt645Reader::leastTimeout() const
{
    return timeToAnswer + m_settings.timeOf(longestExchange) / 1000;
}

bool Dlt645Reader::open(int, QString *reason)
{
    m_port = std::make_unique<QSerialPort>();
    m_port->setPortName(m_setup.serialPath);
    m_port->setBaudRate(m_settings.baudRate);
    m_port->setDataBits(static_cast<QSerialPort::DataBits>(m_settings.dataBits));
    m_port->setStopBits(m_settings.stopBits == 2 ? QSerialPort::TwoStop : QSerialPort::OneStop);
    m_port->setParity(parityOf(m_settings.parity));
    m_port->setFlowControl(QSerialPort::NoFlowControl);
    const bool wantsParity = m_settings.parity != 'N';
    bool opened = m_port->open(QIODevice::ReadWrite);
    const QString failure = m_port->errorString();
    const bool refused = !opened && m_port->error() == QSerialPort::UnsupportedOperationError;
    if (refused && wantsParity) {
        m_port->setParity(QSerialPort::NoParity);
        opened = m_port->open(QIODevice::ReadWrite);
    }
    *reason = failure;
    if (!opened || !isClaimed(m_port.get(), reason)) {
        close();
        return false;
    }
    m_switchesRts = m_settings.rts && m_port->setRequestToSend(false);
    tellLack(wantsParity && (refused || !hasParity(m_port.get())), "parity", &m_toldParity);
    tellLack(m_settings.rts && !m_switchesRts, "RTS", &m_toldRts);
    m_lastByte.start();
    return true;
}

// Whoever opens the line next shall not meet an answer that is late.
void Dlt645Reader::close()
{
    if (isOpen()) {
        waitForSilence();
    }
    m_silence = 0;
    m_port.reset();
}

// A line that is never silent is told by the next request.
void Dlt645Reader::settle()
{
    const int silence = m_silence;
    if (isOpen() && waitForSilence() == Exchange::Restless) {
        m_silence = silence;
    }
}

bool Dlt645Reader::isOpen() const
{
    return m_port && m_port->isOpen();
}

DeviceReader::Result Dlt645Reader::read(int device, int timeout, PointReading *readings)
{
    const QString wrongChecksums = QStringLiteral("wrong checksums");
    Meter &meter = m_meters[static_cast<size_t>(device)];
    bool answered = false;
    qint64 damaged = 0; // milliseconds
    for (auto item = meter.items.begin(); item != meter.items.end() && !m_setup.stop->isSet(); ++item) {
        Dlt645Answer answer;
        QElapsedTimer clock;
        clock.start();
        switch (ask(item->query, timeout, &answer)) {
        case Exchange::HungUp:
            return {Outcome::Closed, QStringLiteral("the line hung up")};
        case Exchange::Restless:
            return {Outcome::LineLost, QStringLiteral("the line is never silent")};
        case Exchange::Silent:
            // Some meters do not answer to items that they lack: the others have their turn first next time.
            std::rotate(item, item + 1, meter.items.end());
            return {answered ? Outcome::Answered : Outcome::Silent, QStringLiteral("no answer")};
        case Exchange::Damaged:
            damaged += clock.elapsed();
            if (damaged >= timeout) {
                // The next reading begins with the items that had no turn.
                std::rotate(meter.items.begin(), item + 1, meter.items.end());
                return {answered ? Outcome::Answered : Outcome::Silent, wrongChecksums};
            }
            break;
        case Exchange::Answered:
            answered = true;
            take(meter, &*item, answer, &readings[item->reading]);
        }
    }
    return answered ? Result() : Result{Outcome::Silent, wrongChecksums};
}

// A request whose answer was damaged is repeated once.
Dlt645Reader::Exchange Dlt645Reader::ask(const Dlt645Query &query, int timeout, Dlt645Answer *answer)
{
    Exchange exchange = waitForSilence();
    if (exchange != Exchange::Silent) {
        return exchange;
    }
    exchange = Exchange::Damaged;
    for (int attempt = 0; attempt < 2 && exchange == Exchange::Damaged; ++attempt) {
        waitForGap();
        m_port->clear(); // what is there belongs to no request any more
        m_port->clearError();
        const QDeadlineTimer deadline(timeout);
        exchange = send(query.request(), deadline) ? receive(query, deadline, answer) : Exchange::HungUp;
        m_lastByte.start();
    }
    m_silence = exchange == Exchange::Silent ? timeout : 0;
    return exchange;
}

// An answer may still come after a time-out. It would collide with the next request, and one with an error is
// not to be told from an answer to that, as it names no item.
Dlt645Reader::Exchange Dlt645Reader::waitForSilence()
{
    const QDeadlineTimer limit(3 * qint64(m_silence));
    while (m_silence > 0 && !m_setup.stop->isSet()) {
        const QDeadlineTimer silence(qMax<qint64>(0, m_silence - m_lastByte.elapsed()));
        m_port->clearError();
        if (m_port->waitForReadyRead(sliceOf(silence))) {
            m_port->readAll();
            m_lastByte.start();
        } else if (m_port->error() != QSerialPort::TimeoutError) {
            m_silence = 0;
            return Exchange::HungUp;
        } else if (silence.hasExpired()) {
            m_silence = 0;
        }
        if (m_silence > 0 && limit.hasExpired()) {
            m_silence = 0;
            return Exchange::Restless;
        }
    }
    return Exchange::Silent;
}

void Dlt645Reader::waitForGap()
{
    const qint64 gap = (m_settings.gapTime() + 999) / 1000;
    if (m_lastByte.elapsed() < gap) {
        m_setup.stop->wait(gap - m_lastByte.elapsed());
    }
}

// False if the line hung up. What is not sent when the time is over is thrown away.
bool Dlt645Reader::send(const QByteArray &request, const QDeadlineTimer &deadline)
{
    if (m_switchesRts) {
        m_port->setRequestToSend(true);
    }
    m_port->write(request);
    while (m_port->bytesToWrite() > 0 && !deadline.hasExpired() && !m_setup.stop->isSet()) {
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

Dlt645Reader::Exchange Dlt645Reader::receive(const Dlt645Query &query, const QDeadlineTimer &deadline,
                                             Dlt645Answer *answer)
{
    Dlt645FrameFinder finder;
    bool damaged = false;
    while (!deadline.hasExpired() && !m_setup.stop->isSet()) {
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

void Dlt645Reader::take(const Meter &meter, Item *item, const Dlt645Answer &answer, PointReading *reading)
{
    const bool refused = answer.kind == Dlt645Answer::Kind::Refused;
    const QString text = refused || answer.more ? QString() : item->format.text(answer.value);
    if (!text.isNull()) {
        *reading = {text, true};
        item->told = false;
        return;
    }
    if (item->told) {
        return;
    }
    item->told = true;
    if (refused) {
        tell(item->name,
             QStringLiteral("meter %1 refuses it: %2")
                 .arg(meter.address, item->query.errorText(answer.error)));
    } else if (answer.more) {
        tell(item->name, QStringLiteral("its value at meter %1 has more than one frame").arg(meter.address));
    } else {
        tell(item->name,
             QStringLiteral("meter %1 gives the bytes %2, which do not fit its format")
                 .arg(meter.address, QString::fromLatin1(answer.value.toHex())));
    }
}

std::unique_ptr<DeviceReader> makeDlt645Reader(const ReaderSetup &setup)
{
    return std::make_unique<Dlt645Reader>(setup);
}
