#pragma once

#include "boxsim/acquire/standardrun.h"
#include "boxsim/acquire/stopflag.h"

#include <QElapsedTimer>
#include <QMap>
#include <QMutex>
#include <QThread>

#include <memory>
#include <vector>

// A thread with all the Standards that share a line, which take turns, each opening the line with its own
// settings. A Standard that has a line to itself keeps it open.
class Link : public QThread
{
    Q_OBJECT

public:
    explicit Link(QObject *parent = nullptr);
    // Ends the thread.
    ~Link() override;

    // Before the start. id is what readings are told under; reader may be null.
    void add(int id, const SimStandard &standard, std::unique_ptr<DeviceReader> reader, int interval);
    StopFlag *stopFlag() { return &m_stop; }
    // The last reading of a Standard, one row a point. Those before it that were not taken are gone, so that
    // nothing grows when readings are over faster than they are taken. From any thread, once after each
    // readingOver().
    QVector<PointReading> takeReading(int id);

signals:
    // A reading can be taken.
    void readingOver(int id);
    // A line for the log.
    void told(const QString &text);

protected:
    void run() override;

private:
    struct Turn {
        int id;
        StandardRun run;
    };

    Turn &nextTurn();
    qint64 nextDue();
    void keepReading(int id, const QVector<PointReading> &readings);

    StopFlag m_stop;
    QElapsedTimer m_clock;
    std::vector<std::unique_ptr<Turn>> m_turns;
    QMutex m_mutex;
    QMap<int, QVector<PointReading>> m_readings; // not taken yet
};
