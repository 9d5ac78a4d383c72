#pragma once

#include "boxsim/acquire/standardrun.h"
#include "boxsim/acquire/stopflag.h"

#include <QElapsedTimer>
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

signals:
    // A reading is over: one row a point of the Standard.
    void readingOver(int id, const QVector<PointReading> &readings);
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

    StopFlag m_stop;
    QElapsedTimer m_clock;
    std::vector<std::unique_ptr<Turn>> m_turns;
};
