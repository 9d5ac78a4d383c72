#include "boxsim/acquire/modbusreader.h"

#include "boxsim/acquire/modbusrtuline.h"
#include "boxsim/acquire/modbustcpline.h"
#include "boxsim/acquire/stopflag.h"

namespace {

constexpr int illegalFunction = 1;
constexpr int illegalAddress = 2;
constexpr int illegalValue = 3;
constexpr int gatewayPath = 10;
constexpr int gatewayTarget = 11;

// What an answer means for the device that was asked.
DeviceReader::Outcome outcomeOf(const ModbusAnswer &answer)
{
    using Outcome = DeviceReader::Outcome;
    switch (answer.kind) {
    case ModbusAnswer::Kind::Silent:
        return Outcome::Silent;
    case ModbusAnswer::Kind::Lost:
        return Outcome::Closed;
    case ModbusAnswer::Kind::Unusable:
        return Outcome::LineLost;
    case ModbusAnswer::Kind::Exception:
        return answer.exception == gatewayPath || answer.exception == gatewayTarget ? Outcome::Absent
                                                                                    : Outcome::Answered;
    case ModbusAnswer::Kind::Data:
        break;
    }
    return Outcome::Answered;
}

bool isRefusal(const ModbusAnswer &answer)
{
    return answer.kind == ModbusAnswer::Kind::Exception
        && (answer.exception == illegalAddress || answer.exception == illegalValue);
}

} // namespace

ModbusReader::ModbusReader(const ReaderSetup &setup, std::unique_ptr<ModbusLine> line)
    : m_setup(setup)
    , m_line(std::move(line))
{
    for (const SimDevice &device : setup.standard->devices) {
        const QVector<SimPoint> points = setup.standard->points.mid(device.firstPoint, device.pointCount);
        const QString station = device.settings.value(QStringLiteral("stationNum"));
        m_slaves.push_back({readModbusStation(station, !setup.serialPath.isEmpty()),
                            ModbusPlan(points, device.settings, setup.grouping),
                            QVector<bool>(device.pointCount), false});
        tellRefusals(m_slaves.back(), device);
    }
}

void ModbusReader::tell(const QString &name, const QString &text) const
{
    m_setup.tell(QStringLiteral("\"%1\": %2 is not read, %3").arg(m_setup.standard->name, name, text));
}

void ModbusReader::tellRefusals(const Slave &slave, const SimDevice &device) const
{
    if (slave.station < 0) {
        const QString station = device.settings.value(QStringLiteral("stationNum"));
        tell(QStringLiteral("station %1").arg(station), QStringLiteral("there is no such station"));
        return;
    }
    for (const ModbusPlan::Refusal &refusal : slave.plan.refusals()) {
        tell(m_setup.standard->points.at(device.firstPoint + refusal.point).name, refusal.reason);
    }
}

bool ModbusReader::hasWork(int device) const
{
    const Slave &slave = m_slaves[static_cast<size_t>(device)];
    return slave.station >= 0 && !slave.plan.requests().isEmpty();
}

QString ModbusReader::deviceName(int device) const
{
    return QStringLiteral("station %1").arg(m_slaves[static_cast<size_t>(device)].station);
}

bool ModbusReader::open(int timeout, QString *reason)
{
    return m_setup.mayOpen(reason) && m_line->open(timeout, reason);
}

DeviceReader::Result ModbusReader::read(int device, int timeout, PointReading *readings)
{
    Slave &slave = m_slaves[static_cast<size_t>(device)];
    Turn turn = {device, timeout, false, QDeadlineTimer(QDeadlineTimer::Forever)};
    slave.plan.beginReading();
    if (slave.isFoundFirst && slave.plan.requests().constFirst().items.size() > 1) {
        const Result found = find(&slave, &turn, readings);
        if (found.outcome != Outcome::Answered || m_setup.stop->isSet()) {
            return found;
        }
    }
    for (int i = 0; i < slave.plan.requests().size() && !m_setup.stop->isSet(); ++i) {
        const ModbusRequest request = slave.plan.requests().at(i);
        QVector<quint16> words(request.count());
        const ModbusAnswer answer = ask(slave, request, &turn, words.data());
        const Outcome outcome = outcomeOf(answer);
        if (outcome == Outcome::LineLost || m_setup.stop->isSet()) {
            return {outcome, answer.reason};
        }
        if (outcome != Outcome::Answered) {
            takeFailure(&slave, turn, i, outcome);
            return turn.answered ? Result() : Result{outcome, answer.reason};
        }
        slave.isFoundFirst = false;
        slave.plan.noteAnswer(i);
        if (isRefusal(answer) && slave.plan.split(i, ModbusPlan::Split::Lasting)) {
            --i; // both halves are asked for
        } else if (answer.kind == ModbusAnswer::Kind::Exception) {
            takeException(&slave, device, request, answer);
        } else {
            takeValues(&slave, request, words, readings);
        }
    }
    return {};
}

// By one value alone, each time another one: a device may seem lost for being silent about one of those that
// are joined.
DeviceReader::Result ModbusReader::find(Slave *slave, Turn *turn, PointReading *readings)
{
    const ModbusRequest request = slave->plan.single(slave->single);
    QVector<quint16> words(request.count());
    const ModbusAnswer answer = ask(*slave, request, turn, words.data());
    if (answer.kind == ModbusAnswer::Kind::Data) {
        takeValues(slave, request, words, readings);
    } else {
        ++slave->single;
    }
    return {outcomeOf(answer), answer.reason};
}

// In as many requests as a string needs that is longer than one. What was sent over a connection that has
// ended is sent once more: some peers end it after each answer, or after some.
ModbusAnswer ModbusReader::ask(const Slave &slave, const ModbusRequest &request, Turn *turn, quint16 *words)
{
    ModbusAnswer answer;
    const int most = mostInRequest(request.area());
    for (int done = 0; done < request.count(); done += most) {
        const ModbusAsk part = {slave.station, request.area(), request.first() + done,
                                qMin(most, request.count() - done)};
        answer = m_line->read(part, turn->timeout, words + done);
        if (answer.kind == ModbusAnswer::Kind::Lost && turn->answered && reopen(turn)) {
            answer = m_line->read(part, turn->timeout, words + done);
        }
        turn->answered = turn->answered || outcomeOf(answer) == Outcome::Answered;
        if (answer.kind != ModbusAnswer::Kind::Data) {
            break;
        }
    }
    return answer;
}

// For one time-out in all, so that a peer that is slow does not hold up the others.
bool ModbusReader::reopen(Turn *turn)
{
    m_line->close();
    if (turn->reopening.isForever()) {
        turn->reopening.setRemainingTime(turn->timeout);
    }
    QString reason;
    const auto left = static_cast<int>(turn->reopening.remainingTime());
    if (left > 0 && open(qMin(left, openTimeout()), &reason)) {
        return true;
    }
    turn->reopening.setRemainingTime(0);
    return false;
}

void ModbusReader::takeValues(Slave *slave, const ModbusRequest &request, const QVector<quint16> &words,
                              PointReading *readings)
{
    for (const ModbusItem &item : request.items) {
        const quint16 *first = words.constData() + item.address.number - request.first();
        readings[item.point] = item.type.reading(first, slave->plan.order());
        slave->told[item.point] = false;
    }
}

// A device that is busy, or fails, is so for all its points, and may read them the next time.
void ModbusReader::takeException(Slave *slave, int device, const ModbusRequest &request,
                                 const ModbusAnswer &answer)
{
    if (answer.exception == illegalFunction || isRefusal(answer)) {
        for (const ModbusItem &item : request.items) {
            tellOnce(slave, device, item, QStringLiteral("refuses it: ") + answer.reason);
        }
    } else if (!slave->toldException) {
        slave->toldException = true;
        m_setup.tell(QStringLiteral("\"%1\": %2 has no value at times: %3")
                         .arg(m_setup.standard->name, deviceName(device), answer.reason));
    }
}

// A request without an answer comes last the next time. If the device answered others it counts: some are
// silent about a register that they lack, or close the connection.
void ModbusReader::takeFailure(Slave *slave, const Turn &turn, int request, Outcome outcome)
{
    if (outcome == Outcome::Closed) {
        m_line->close();
        if (turn.reopening.hasExpired()) {
            slave->plan.putFirst(request); // over a new connection it may be answered
            return;
        }
    }
    const bool isLasting = turn.answered && slave->plan.noteFailure(request);
    slave->plan.putLast(request);
    const int last = slave->plan.requests().size() - 1;
    if (isLasting && !slave->plan.split(last, ModbusPlan::Split::UntilAnswers)) {
        tellOnce(slave, turn.device, slave->plan.requests().at(last).items.constFirst(),
                 outcome == Outcome::Closed ? QStringLiteral("closes the connection when asked for it")
                                            : QStringLiteral("gives no answer to it"));
    }
}

void ModbusReader::tellOnce(Slave *slave, int device, const ModbusItem &item, const QString &what)
{
    if (!slave->told.at(item.point)) {
        slave->told[item.point] = true;
        const int first = m_setup.standard->devices.at(device).firstPoint;
        tell(m_setup.standard->points.at(first + item.point).name,
             QStringLiteral("%1 %2").arg(deviceName(device), what));
    }
}

void ModbusReader::forget(int device)
{
    Slave &slave = m_slaves[static_cast<size_t>(device)];
    slave.plan.reset();
    slave.isFoundFirst = true;
}

std::unique_ptr<DeviceReader> makeModbusTcpReader(const ReaderSetup &setup)
{
    const QMap<QString, QString> &parameters = setup.standard->parameters;
    const auto fail = [&](const QString &why) {
        setup.tell(QStringLiteral("\"%1\": not read, %2").arg(setup.standard->name, why));
        return nullptr;
    };
    ModbusTcpLine::Setup line;
    line.address = QHostAddress(parameters.value(QStringLiteral("ip")));
    if (line.address.protocol() != QAbstractSocket::IPv4Protocol) {
        return fail(QStringLiteral("it has no IPv4 address"));
    }
    const int port = parameters.value(QStringLiteral("port")).toInt();
    if (port < 1 || port > 65535) {
        return fail(QStringLiteral("it has no port"));
    }
    line.port = static_cast<quint16>(port);
    line.connectTimeout = timeoutParameter(parameters, "connectionTimeout");
    line.requestTimeout = timeoutParameter(parameters, "communicationTimeout");
    line.keepAlive = parameters.value(QStringLiteral("keepAlive")).toInt();
    return std::make_unique<ModbusReader>(setup, std::make_unique<ModbusTcpLine>(line, setup.stop));
}

std::unique_ptr<DeviceReader> makeModbusRtuReader(const ReaderSetup &setup)
{
    const QString standard = setup.standard->name;
    const auto tell = [log = setup.tell, standard](const QString &text) {
        log(QStringLiteral("\"%1\": %2").arg(standard, text));
    };
    const SerialSettings settings = serialSettings(setup.standard->parameters, SerialSettings());
    return std::make_unique<ModbusReader>(
        setup, std::make_unique<ModbusRtuLine>(setup.serialPath, settings, setup.stop, setup.silence, tell));
}
