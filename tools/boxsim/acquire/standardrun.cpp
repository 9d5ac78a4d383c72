#include "boxsim/acquire/standardrun.h"

#include <algorithm>

namespace {

constexpr qint64 longestPause = 10000;      // between two tries of what is lost
constexpr qint64 longestImpatience = 60000; // between two tries that wait longer than the others leave

bool isHeard(DeviceReader::Outcome outcome)
{
    return outcome == DeviceReader::Outcome::Answered || outcome == DeviceReader::Outcome::Absent;
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
{
}

void StandardRun::tell(const QString &text) const
{
    m_surroundings.tell(QStringLiteral("\"%1\": %2").arg(m_standard.name, text));
}

QVector<PointReading> StandardRun::read()
{
    m_beat.begin(now());
    ++m_beats;
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
    return m_readings;
}

void StandardRun::readDevices()
{
    const QVector<int> devices = devicesWithWork(false);
    m_heard = devices.isEmpty();
    for (const int index : devices) {
        const SimDevice &device = m_standard.devices.at(index);
        QVector<PointReading> readings(device.pointCount);
        const DeviceReader::Outcome outcome = ask(index, patience(INT_MAX), readings.data());
        if (isOver() || outcome == DeviceReader::Outcome::LineLost) {
            return;
        }
        m_heard = m_heard || isHeard(outcome);
        for (int i = 0; i < device.pointCount; ++i) {
            if (readings.at(i).valid) {
                m_readings[device.firstPoint + i] = readings.at(i);
            }
        }
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
    Target *target = &m_devices[static_cast<size_t>(device)];
    if (result.outcome == DeviceReader::Outcome::Answered) {
        succeed(target, m_reader->deviceName(device));
    } else if (fail(target, m_reader->deviceName(device), result.reason)) {
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
    target->lastTry = now();
    target->lastWhole = now();
    target->lastBeat = m_beats;
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
    // A peer that went without a word is not noticed otherwise. Not in the reading: a serial line is closed
    // when it is silent.
    if (!m_heard) {
        close();
        m_heard = true;
    }
    if (m_line.health.isLost()) {
        tryLine(until, alone);
    } else {
        tryDevices(until, alone);
    }
    m_beat.resume(now());
}

// Whether a try is to be made now, and with which time-out. share is what the try may take without holding
// anybody up, whole the time-out that the document gives. Where the share is too short for any answer, the
// try waits until it is urgent, and then has the whole time-out.
bool StandardRun::mayTry(Target *target, qint64 share, int whole, bool alone, int *timeout) const
{
    const qint64 time = now();
    const bool urgent = time - target->lastTry >= longestPause - m_beat.interval();
    const bool patient = time - target->lastWhole >= (alone ? longestPause : longestImpatience);
    const bool fits = share >= qMin(m_reader->leastTimeout(), whole);
    if (target->lastBeat == m_beats || (!fits && !urgent)) {
        return false;
    }
    *timeout = urgent && (patient || !fits) ? whole : static_cast<int>(qMin<qint64>(share, whole));
    target->lastTry = time;
    target->lastBeat = m_beats;
    if (*timeout == whole) {
        target->lastWhole = time;
    }
    return true;
}

void StandardRun::tryLine(qint64 until, bool alone)
{
    const QVector<int> devices = devicesWithWork(false) + devicesWithWork(true);
    const int whole = qMax(m_reader->openTimeout(), m_reader->requestTimeout());
    int timeout = 0;
    if (!devices.isEmpty() && mayTry(&m_line, (until - now()) / 2, whole, alone, &timeout)) {
        const int device = devices.at(m_lineTries++ % devices.size());
        QVector<PointReading> readings(m_standard.devices.at(device).pointCount);
        ask(device, patience(timeout), readings.data());
    }
}

// So many in each beat that each has its turn within the longest pause. The time that is left is for opening
// the line and for asking, on a serial line for asking and for the silence after it.
void StandardRun::tryDevices(qint64 until, bool alone)
{
    QVector<int> lost = devicesWithWork(true);
    std::stable_sort(lost.begin(), lost.end(), [this](int a, int b) {
        return m_devices[static_cast<size_t>(a)].lastTry < m_devices[static_cast<size_t>(b)].lastTry;
    });
    const qint64 turns = (lost.size() * qint64(m_beat.interval()) + longestPause - 1) / longestPause;
    const int count = static_cast<int>(qMin<qint64>(turns, lost.size()));
    bool heard = false;
    for (int i = 0; i < count && !isOver() && !m_line.health.isLost(); ++i) {
        Target *target = &m_devices[static_cast<size_t>(lost.at(i))];
        int timeout = 0;
        const qint64 room = (until - now()) / (count - i);
        const qint64 share = m_reader->quietTime() > 0 ? room - m_reader->quietTime() : room / 2;
        if (!mayTry(target, share, m_reader->requestTimeout(), alone, &timeout)) {
            return;
        }
        QVector<PointReading> readings(m_standard.devices.at(lost.at(i)).pointCount);
        heard = isHeard(ask(lost.at(i), patience(timeout), readings.data())) || heard;
    }
    if (count > 0 && !heard && devicesWithWork(false).isEmpty()) {
        close();
    }
}

QVector<int> StandardRun::devicesWithWork(bool lost) const
{
    QVector<int> found;
    for (int i = 0; i < m_standard.devices.size(); ++i) {
        if (m_reader->hasWork(i) && m_devices[static_cast<size_t>(i)].health.isLost() == lost) {
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
