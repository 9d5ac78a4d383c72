#include "history/recordingthreads.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QPointer>
#include <QThread>
#include <QVector>

namespace {

constexpr int endWaits = 5000; // ms

QVector<QPointer<QThread>> &threads()
{
    static QVector<QPointer<QThread>> all;
    return all;
}

void waitForAll()
{
    const QDeadlineTimer deadline(endWaits);
    for (const QPointer<QThread> &thread : qAsConst(threads())) {
        if (thread && !thread->wait(deadline)) {
            qWarning("A database of a recording does not answer: it is left as it is.");
        }
    }
    threads().clear();
}

} // namespace

void RecordingThreads::start(QThread *thread)
{
    static bool isAdded = false;
    if (!isAdded) {
        isAdded = true;
        qAddPostRoutine(waitForAll);
    }
    threads().removeAll(QPointer<QThread>());
    threads().append(thread);
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
}
