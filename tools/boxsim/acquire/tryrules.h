#pragma once

#include <QtGlobal>

#include <climits>

// When what is lost is tried, and how long a try waits, so that those that answer keep their beat and what is
// back is seen soon. All times are milliseconds.
class TryRules
{
    static constexpr qint64 longAgo = INT_MIN;

public:
    // Of a request on the line.
    struct Cost {
        int whole; // its time-out
        int least; // what an answer needs; no try is shorter
        int quiet; // the silence after it
    };
    // What a try may take without holding anybody up.
    struct Room {
        qint64 time;
        int lost;        // how many there are to be tried
        bool othersWait; // whether there is anybody to hold up
    };
    // The tries of a device, or of the line.
    struct History {
        qint64 last = 0;
        int round = 0;              // of the last
        qint64 lastWhole = longAgo; // the last that waited its whole time-out
    };

    // For a Standard that is read at this interval.
    explicit TryRules(int interval);

    // What is lost is tried once a round at most: after each reading or, where these are far from each other,
    // some times between them.
    void beginRound() { ++m_round; }
    bool isBetweenReadings() const { return m_rounds > 1; }
    // When the next round begins if it is between two readings. The last ends when the reading is due, so
    // that what it finds is read there; most is what a round takes at most.
    qint64 nextRound(qint64 now, qint64 due, qint64 most) const;
    // So many of the lost in each round that each has its turn within the longest pause.
    int count(int lost) const;
    // What a silent try takes of the line.
    static qint64 timeOf(int timeout, int quiet);
    // What one of so many tries may take of the time that is left for them.
    static qint64 share(qint64 left, int tries, const Cost &cost);
    // The time-out of a try now, 0 for none.
    int timeout(const History &history, const Room &room, const Cost &cost, qint64 now) const;
    // It was tried, or is lost from now on.
    void note(History *history, qint64 now) const;
    // A try was in vain.
    void noteVain(History *history, const Room &room, bool whole, qint64 begin, qint64 now);

private:
    bool isPatient(const History &history, const Room &room, qint64 now) const;

    int m_interval;
    int m_rounds; // a beat
    int m_pace;   // from one round to the next, at most
    int m_round = 0;
    qint64 m_lastWhole = longAgo; // of anything
    qint64 m_nextOverrun = 0;     // when a try may hold others up again
};
