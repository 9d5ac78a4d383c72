#pragma once

#include "boxsim/acquire/standardrun.h"

#include <QSet>
#include <QtTest>

#include <algorithm>
#include <climits>
#include <memory>

// What the tests of a Standard's rhythm share: a run whose clock and line are made up, so that an hour takes
// no time.
class StandardRunTest : public QObject
{
    Q_OBJECT

protected:
    // Reads one value a device, the number of the attempt, in no time but for the devices that are dead.
    class Reader : public DeviceReader
    {
    public:
        explicit Reader(qint64 *clock)
            : m_clock(clock)
        {
        }
        bool hasWork(int device) const override { return device != idle; }
        QString deviceName(int device) const override { return QString("station %1").arg(device + 1); }
        QString lineName() const override { return "line"; }
        int openTimeout() const override { return timeout; }
        int requestTimeout() const override { return timeout; }
        int leastTimeout() const override { return least; }
        bool open(int most, QString *reason) override
        {
            ++opened;
            *m_clock += closed ? qMin(most, timeout) : 0;
            *reason = "no line";
            m_open = !closed;
            return m_open;
        }
        void close() override { m_open = false; }
        void settle() override { *m_clock = m_open ? qMax(*m_clock, m_quietUntil) : *m_clock; }
        int quietTime() const override { return quiet; }
        bool isOpen() const override { return m_open; }
        Result read(int device, int most, PointReading *readings) override
        {
            settle();
            ++asked[device];
            lastAsked[device] = *m_clock;
            if (breakers.contains(device)) {
                return {Outcome::Closed, "closed"};
            }
            if (unusable) {
                return {Outcome::LineLost, "no use"};
            }
            if (absent.contains(device)) {
                *m_clock += qMin(most, slow.value(device));
                return {Outcome::Absent, "away"};
            }
            if (breaks-- > 0) {
                return {Outcome::Closed, "broken"};
            }
            const bool isDead = dead.contains(device) && *m_clock < backAt;
            const int needed = isDead ? INT_MAX : slow.value(device);
            if (needed > most) {
                *m_clock += qMin(most, timeout);
                waits.append(most);
                m_quietUntil = *m_clock + quiet;
                return {Outcome::Silent, "no answer"};
            }
            *m_clock += needed + cost;
            readings[0] = {QString("v%1").arg(asked[device]), true};
            return {};
        }
        void forget(int device) override { forgotten.append(device); }
        // The devices from the first one up to the end give no answer from now on.
        void die(int first, int end)
        {
            for (int device = first; device < end; ++device) {
                dead.insert(device);
            }
        }

        int timeout = 200;
        int quiet = 0;
        QSet<int> breakers;
        QSet<int> absent;
        bool unusable = false;
        int least = 20;
        int cost = 0;
        QMap<int, int> slow; // what a request to a device takes
        int idle = -1;
        QSet<int> dead;
        qint64 backAt = LLONG_MAX; // when those are there again
        bool closed = false;
        int breaks = 0;
        int opened = 0;
        QMap<int, int> asked;
        QMap<int, qint64> lastAsked;
        QVector<int> forgotten;
        QVector<int> waits; // for the devices that are dead

    private:
        qint64 *m_clock;
        qint64 m_quietUntil = 0;
        bool m_open = false;
    };

    void start(int devices, int interval)
    {
        m_time = 0;
        m_told.clear();
        SimStandard standard;
        standard.name = "S";
        for (int i = 0; i < devices; ++i) {
            standard.points.append({QString("p%1").arg(i), QString::number(i), "int16", 0});
            standard.devices.append({{}, i, 1});
        }
        auto reader = std::make_unique<Reader>(&m_time);
        m_reader = reader.get();
        m_stop = std::make_unique<StopFlag>();
        m_run = std::make_unique<StandardRun>(
            standard, std::move(reader), interval,
            StandardRun::Surroundings{[this] { return m_time; },
                                      [this](const QString &text) { m_told.append(text); }, m_stop.get()});
    }
    // One beat with what is before and behind it, as on a link of its own or a shared one. Each row as text,
    // "-" in front of those that are not valid.
    QStringList beat(bool alone = false)
    {
        while (m_run->wake() < m_run->due()) {
            m_time = qMax(m_time, m_run->wake());
            m_run->tryLost(m_run->due(), alone);
        }
        m_time = qMax(m_time, m_run->due());
        const qint64 due = m_time;
        const QVector<PointReading> readings = m_run->read();
        m_took = m_time - due;
        m_run->tryLost(m_run->due(), alone);
        QStringList rows;
        for (const PointReading &reading : readings) {
            rows.append((reading.valid ? QString() : QString("-")) + reading.value);
        }
        return rows;
    }
    // Beats until so many lines with the word were told, for ten minutes at most. Returns the time that it
    // took, in milliseconds.
    qint64 timeUntilTold(const QString &word, int count, bool alone = false)
    {
        const qint64 begin = m_time;
        while (m_told.filter(word).size() < count && m_time < begin + 600000) {
            beat(alone);
        }
        return m_time - begin;
    }
    void beatsFor(qint64 milliseconds)
    {
        for (const qint64 begin = m_time; m_time < begin + milliseconds;) {
            beat();
        }
    }
    void beats(int count, bool alone = false)
    {
        for (int i = 0; i < count; ++i) {
            beat(alone);
        }
    }

    qint64 m_time = 0;
    qint64 m_took = 0; // the last reading
    QStringList m_told;
    std::unique_ptr<StopFlag> m_stop;
    Reader *m_reader = nullptr;
    std::unique_ptr<StandardRun> m_run;
};
