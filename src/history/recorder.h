#pragma once

#include "history/point.h"
#include "history/reading.h"
#include "history/recordingtarget.h"

#include <QObject>
#include <QSet>
#include <QTimer>

#include <memory>

class RecordingJob;

// Writes samples into a database, in a thread of its own: no function of it waits. A transaction lasts
// a second at most. What the queue cannot hold is dropped and counted, here and in the
// database. A database that is locked, full or gone is tried again; meanwhile status() tells what is wrong.
class Recorder : public QObject
{
    Q_OBJECT
public:
    enum class State {
        Idle,      // not started
        Recording, // opening included
        Troubled,  // the last try to open or write failed; it is tried again
        Stopping,  // what is under way is being written
        Stopped,
    };
    struct Status {
        State state = State::Idle;
        bool hasBegun = false; // a try to open and write has gone well
        qint64 since = 0;      // ms since 1970 UTC, of the start
        qint64 samples = 0;    // written and committed, breaks included
        qint64 dropped = 0;    // samples that came and are not in it
        qint64 bytes = -1;     // of the file; -1 where that is not known
        QString error; // of Troubled, and of Stopped if not all could be written; in the words of the user
    };

    // For tests, mostly.
    struct Limits {
        qint64 queueBytes = 32LL * 1024 * 1024;
        int interval = 500;  // ms between transactions
        int rows = 50000;    // about that many in a transaction
        int retry = 3000;    // ms until what failed is tried again
        int patience = 2000; // ms for a locked file
        int answer = 5000;   // ms until it is told that a database does not answer
    };

    explicit Recorder(QObject *parent = nullptr);
    // Stops. What is under way is written after it; at its end the program waits for it.
    ~Recorder() override;

    void setLimits(const Limits &limits) { m_limits = limits; } // before the start
    // Once. An empty set takes all points that come; the name of a Standard says that no others will.
    void start(const RecordingTarget &target, const QSet<PointId> &points,
               const QString &standard = QString());
    void add(const Readings &report);
    // The session with the Box has ended.
    void endSession(const QString &box, qint64 time);
    // Writes what is queued, then tells by stopped().
    void stop();

    RecordingTarget target() const;
    Status status() const;

signals:
    void statusChanged(); // at most twice a second
    void stopped();

private:
    void tellStatus();
    void finish();

    Limits m_limits;
    RecordingTarget m_target;
    std::shared_ptr<RecordingJob> m_job; // the thread has its share of it
    QTimer m_timer;
    Status m_told;
};
