#pragma once

#include "boxctl/boxtask.h"
#include "boxctl/command.h"
#include "boxctl/progress.h"

#include <QHash>
#include <QMap>
#include <QTimer>

#include <functional>

class Call;

// Runs a task for each Box of a call, so many side by side, and tells what comes of each as it ends. One that
// fails stops no other. Ctrl+C ends them all.
class BoxRun : public QObject
{
    Q_OBJECT
public:
    // Makes a task with the time-out of the call, in milliseconds.
    using TaskMaker = std::function<BoxTask *(int timeout)>;

    // The options of every command that runs over Boxes.
    static QList<QCommandLineOption> options();

    // What else makes a call wrong; empty if nothing does.
    using Check = std::function<QString()>;
    // Reads the options and the Boxes of the call, makes the last check if there is one, then runs. Gives the
    // exit status.
    static int over(const Call &call, const QStringList &boxes, const TaskMaker &maker,
                    const Check &lastCheck = {});
    // Reads the Boxes and the time-out of the call. Gives AllDone, or tells what is wrong and gives the
    // status for it.
    static int read(const Call &call, const QStringList &boxes, BoxList *list, int *timeout);

private:
    // Tells the progress at such an interval, in milliseconds, if there is no terminal to draw it on; not at
    // all with 0.
    BoxRun(const BoxList &list, int timeout, int jobs, int interval, bool json, TaskMaker maker);

    int run();
    void startMore();
    void end(int box, const BoxTask::Outcome &outcome);
    void interrupt();
    void tell(const BoxTarget &box, const BoxTask::Outcome &outcome);
    // What stands at the end of the output.
    void tellEnd();
    QString total() const;
    // What each Box is doing, if it is not what was told the last time.
    void tellProgress();
    // What is too soon to be drawn is drawn a moment later.
    void drawProgress();

    BoxList m_list;
    int m_timeout;
    int m_jobs;
    int m_interval;
    bool m_json;
    TaskMaker m_maker;
    QMap<int, BoxTask *> m_running; // by the place in the list
    int m_next = 0;
    int m_done = 0;
    QStringList m_failures;     // as they were told
    QHash<int, QString> m_told; // by the place in the list
    QTimer m_signalTimer;
    QTimer m_progressTimer;
    Progress m_progress;
    bool m_isStale = false; // what is drawn is no longer so
};
