#include "boxsim/acquire/link.h"

#include <algorithm>

Link::Link(QObject *parent)
    : QThread(parent)
{
    m_clock.start();
}

Link::~Link()
{
    m_stop.set();
    wait();
}

void Link::add(int id, const SimStandard &standard, std::unique_ptr<DeviceReader> reader, int interval)
{
    const StandardRun::Surroundings surroundings = {
        [this] { return m_clock.elapsed(); }, [this](const QString &text) { emit told(text); }, &m_stop};
    m_turns.push_back(
        std::unique_ptr<Turn>(new Turn{id, {standard, std::move(reader), interval, surroundings}}));
}

Link::Turn &Link::nextTurn()
{
    const auto earlier = [](const auto &a, const auto &b) { return a->run.wake() < b->run.wake(); };
    return **std::min_element(m_turns.begin(), m_turns.end(), earlier);
}

// Of a reading.
qint64 Link::nextDue()
{
    const auto earlier = [](const auto &a, const auto &b) { return a->run.due() < b->run.due(); };
    return (*std::min_element(m_turns.begin(), m_turns.end(), earlier))->run.due();
}

void Link::keepReading(int id, const QVector<PointReading> &readings)
{
    QMutexLocker locker(&m_mutex);
    const bool isTold = m_readings.contains(id);
    m_readings.insert(id, readings);
    locker.unlock();
    if (!isTold) {
        emit readingOver(id);
    }
}

QVector<PointReading> Link::takeReading(int id)
{
    const QMutexLocker locker(&m_mutex);
    return m_readings.take(id);
}

void Link::run()
{
    const bool alone = m_turns.size() == 1;
    while (m_stop.wait(nextTurn().run.wake() - m_clock.elapsed())) {
        Turn &turn = nextTurn();
        if (turn.run.due() <= m_clock.elapsed()) {
            const QVector<PointReading> readings = turn.run.read();
            if (m_stop.isSet()) {
                break; // what was cut short is no reading
            }
            keepReading(turn.id, readings);
        }
        turn.run.tryLost(nextDue(), alone);
        if (!alone) {
            turn.run.close();
        }
    }
    for (const auto &turn : m_turns) {
        turn->run.close();
    }
}
