#include "boxsim/acquire/standardrun.h"

#include <algorithm>
#include <utility>

namespace {

// So many that are silent one after another, and no answer of others, end a reading.
constexpr int mostSilent = 3;
// So many have to be silent, or all if they are fewer, until it is told that nobody answers.
constexpr int surelySilent = 6;

bool isHeard(DeviceReader::Outcome outcome)
{
    return outcome == DeviceReader::Outcome::Answered || outcome == DeviceReader::Outcome::Absent;
}

// A gateway may wait as long before it says so.
bool isSilent(DeviceReader::Outcome outcome)
{
    return outcome == DeviceReader::Outcome::Silent || outcome == DeviceReader::Outcome::Absent;
}

} // namespace

StandardRun::StandardRun(const SimStandard &standard, std::unique_ptr<DeviceReader> reader, int interval,
                         const Surroundings &surroundings)
    : m_standard(standard)
    , m_reader(std::move(reader))
    , m_surroundings(surroundings)
    , m_beat(interval, surroundings.clock())
    , m_readings(standard.points.size())
    , m_devices(static_cast<size_t>(standard.devices.size()))
    , m_rules(interval)
{
}

void StandardRun::tell(const QString &text) const
{
    m_surroundings.tell(QStringLiteral("\"%1\": %2").arg(m_standard.name, text));
}

QVector<PointReading> StandardRun::read()
{
    m_beat.begin(now());
    m_rules.beginRound();
    for (PointReading &reading : m_readings) {
        reading.valid = false;
    }
    if (m_reader && !m_line.health.isLost()) {
        readDevices();
    }
    switch (m_beat.end(now())) {
    case Beat::Change::Skipping:
        tell(QStringLiteral("skips beats, a reading takes longer than %1 ms").arg(m_beat.interval()));
        break;
    case Beat::Change::Keeping:
        tell(QStringLiteral("keeps its beat again, %1 were skipped").arg(m_beat.skipped()));
        break;
    case Beat::Change::None:
        break;
    }
    m_nextRound = m_rules.nextRound(now(), due(), longestRound());
    return m_readings;
}

// Ends early where three are silent one after another and nobody is known to answer.
void StandardRun::readDevices()
{
    const QVector<int> devices = devicesToRead();
    const bool hadAnswer = std::exchange(m_hasAnswer, false);
    m_heard = devices.isEmpty();
    int silent = 0;
    for (const int index : devices) {
        if (!m_hasAnswer && !hadAnswer && silent == mostSilent) {
            break;
        }
        const SimDevice &device = m_standard.devices.at(index);
        QVector<PointReading> readings(device.pointCount);
        const DeviceReader::Outcome outcome = ask(index, patience(INT_MAX), readings.data());
        if (isOver() || outcome == DeviceReader::Outcome::LineLost) {
            return;
        }
        m_heard = m_heard || isHeard(outcome);
        m_hasAnswer = m_hasAnswer || outcome == DeviceReader::Outcome::Answered;
        silent = isSilent(outcome) ? silent + 1 : 0;
        for (int i = 0; i < device.pointCount; ++i) {
            if (readings.at(i).valid) {
                m_readings[device.firstPoint + i] = readings.at(i);
            }
        }
    }
    if (!m_heard && silent >= mostSilent) {
        tellNobody();
    }
}

// Those that answered before come first. So of those that are silent, the next reading begins behind where
// the last one ended.
QVector<int> StandardRun::devicesToRead() const
{
    QVector<int> devices = devicesWithWork(false);
    std::stable_sort(devices.begin(), devices.end(), [this](int a, int b) {
        return target(a).health.failures() < target(b).health.failures();
    });
    return devices;
}

// Once until somebody is heard, and not while those that had no turn yet may answer.
void StandardRun::tellNobody()
{
    const QVector<int> devices = devicesWithWork(false) + devicesWithWork(true);
    const auto silent = static_cast<int>(std::count_if(
        devices.begin(), devices.end(), [this](int device) { return target(device).health.failures() > 0; }));
    if (!m_toldNobody && silent >= qMin(surelySilent, devices.size())) {
        m_toldNobody = true;
        tell(QStringLiteral("nobody answers on %1, %2 of %3 were asked: look at power, cable and settings")
                 .arg(m_reader->lineName())
                 .arg(silent)
                 .arg(devices.size()));
    }
}

// Opens the line first if need be, and anew if it turns out to have died since the last beat. A line that can
// be opened, but is closed again, is closed because of the device that is asked.
DeviceReader::Result StandardRun::exchange(int device, const Patience &patience, PointReading *readings)
{
    using Outcome = DeviceReader::Outcome;
    DeviceReader::Result result{Outcome::Closed, QString()};
    const bool wasOpen = m_reader->isOpen();
    for (int attempt = wasOpen ? 0 : 1; attempt < 2 && result.outcome == Outcome::Closed; ++attempt) {
        if (!m_reader->isOpen() && !m_reader->open(patience.open, &result.reason)) {
            return {Outcome::LineLost, result.reason};
        }
        result = m_reader->read(device, patience.request, readings);
        if (result.outcome == Outcome::Closed || result.outcome == Outcome::LineLost) {
            m_reader->close();
        }
    }
    return result;
}

DeviceReader::Outcome StandardRun::ask(int device, const Patience &patience, PointReading *readings)
{
    const DeviceReader::Result result = exchange(device, patience, readings);
    if (isOver()) {
        return result.outcome;
    }
    if (result.outcome == DeviceReader::Outcome::LineLost) {
        if (fail(&m_line, m_reader->lineName(), result.reason)) {
            for (int i = 0; i < m_standard.devices.size(); ++i) {
                m_reader->forget(i);
            }
        }
        return result.outcome;
    }
    succeed(&m_line, m_reader->lineName());
    m_toldNobody = m_toldNobody && !isHeard(result.outcome);
    if (result.outcome == DeviceReader::Outcome::Answered) {
        succeed(&target(device), m_reader->deviceName(device));
    } else if (fail(&target(device), m_reader->deviceName(device), result.reason)) {
        m_reader->forget(device);
    }
    return result.outcome;
}

void StandardRun::succeed(Target *target, const QString &name)
{
    if (target->health.succeed()) {
        tell(QStringLiteral("%1 back after %2 attempts").arg(name).arg(target->health.attempts()));
    }
}

// Whether it is lost from now on.
bool StandardRun::fail(Target *target, const QString &name, const QString &reason)
{
    if (!target->health.fail()) {
        return false;
    }
    m_rules.note(&target->tries, now());
    tell(
        QStringLiteral("%1 lost after %2 attempts: %3").arg(name).arg(target->health.attempts()).arg(reason));
    return true;
}

StandardRun::Patience StandardRun::patience(int most) const
{
    return {qMin(most, m_reader->openTimeout()), qMin(most, m_reader->requestTimeout())};
}

void StandardRun::tryLost(qint64 until, bool alone)
{
    if (!m_reader || isOver()) {
        return;
    }
    // A peer that went without a word is not noticed otherwise.
    if (!m_heard) {
        close();
        m_heard = true;
    }
    if (m_rules.isBetweenReadings()) {
        if (now() < m_nextRound) {
            return;
        }
        m_rules.beginRound();
    }
    if (m_line.health.isLost()) {
        tryLine(until, alone);
    } else {
        tryDevices(until, alone);
    }
    m_beat.resume(now());
    m_nextRound = m_rules.nextRound(now(), due(), longestRound());
}

qint64 StandardRun::wake() const
{
    const bool isTried = m_rules.isBetweenReadings() && longestRound() > 0;
    return isTried ? qMin(m_nextRound, due()) : due();
}

// 0 if nothing is lost.
qint64 StandardRun::longestRound() const
{
    if (!m_reader) {
        return 0;
    }
    if (m_line.health.isLost()) {
        return TryRules::timeOf(cost(m_line).whole, m_reader->quietTime());
    }
    const int lost = devicesWithWork(true).size();
    return lost * TryRules::timeOf(m_reader->requestTimeout(), m_reader->quietTime());
}

// A line may take its time to open, too.
TryRules::Cost StandardRun::cost(const Target &target) const
{
    const int request = m_reader->requestTimeout();
    const int whole = &target == &m_line ? qMax(m_reader->openTimeout(), request) : request;
    return {whole, m_reader->leastTimeout(), m_reader->quietTime()};
}

// Asks a device that is lost, or that is to show whether the line is back; nothing if it is not the time.
std::optional<DeviceReader::Outcome> StandardRun::tryOnce(Target *target, int device,
                                                          const TryRules::Room &room)
{
    const TryRules::Cost costs = cost(*target);
    const qint64 begin = now();
    const int timeout = m_rules.timeout(target->tries, room, costs, begin);
    if (timeout == 0) {
        return {};
    }
    m_rules.note(&target->tries, begin);
    QVector<PointReading> readings(m_standard.devices.at(device).pointCount);
    const DeviceReader::Outcome outcome = ask(device, patience(timeout), readings.data());
    m_reader->settle(); // not in the next reading
    if (target->health.isLost()) {
        m_rules.noteVain(&target->tries, room, timeout == costs.whole, begin, now());
    }
    return outcome;
}

void StandardRun::tryLine(qint64 until, bool alone)
{
    const QVector<int> devices = devicesWithWork(false) + devicesWithWork(true);
    if (!devices.isEmpty()
        && tryOnce(&m_line, devices.at(m_lineTries % devices.size()), {until - now(), 1, !alone})) {
        ++m_lineTries;
    }
}

void StandardRun::tryDevices(qint64 until, bool alone)
{
    const bool othersWait = !alone || !devicesWithWork(false).isEmpty();
    QVector<int> lost = devicesWithWork(true);
    std::stable_sort(lost.begin(), lost.end(),
                     [this](int a, int b) { return target(a).tries.last < target(b).tries.last; });
    const int count = m_rules.count(lost.size());
    int tries = 0;
    bool heard = false;
    for (; tries < count && !isOver() && !m_line.health.isLost(); ++tries) {
        if (tries > 0 && now() >= until) {
            break; // the reading is to be reported, even if it is one of lost devices alone
        }
        const int device = lost.at(tries);
        const qint64 share = TryRules::share(until - now(), count - tries, cost(target(device)));
        const auto outcome = tryOnce(&target(device), device, {share, lost.size(), othersWait || heard});
        if (!outcome) {
            break;
        }
        heard = heard || isHeard(*outcome);
    }
    if (tries > 0 && !heard && devicesWithWork(false).isEmpty()) {
        close();
    }
}

QVector<int> StandardRun::devicesWithWork(bool lost) const
{
    QVector<int> found;
    for (int i = 0; i < m_standard.devices.size(); ++i) {
        if (m_reader->hasWork(i) && target(i).health.isLost() == lost) {
            found.append(i);
        }
    }
    return found;
}

void StandardRun::close()
{
    if (m_reader && m_reader->isOpen()) {
        m_reader->close();
    }
}
