#include "history/recorder.h"

#include "history/recordingjob.h"
#include "history/recordingthreads.h"

#include <QDateTime>
#include <QThread>

namespace {

constexpr int statusInterval = 500; // ms

bool isSame(const Recorder::Status &a, const Recorder::Status &b)
{
    return a.state == b.state && a.hasBegun == b.hasBegun && a.since == b.since && a.samples == b.samples
        && a.dropped == b.dropped && a.bytes == b.bytes && a.error == b.error;
}

} // namespace

Recorder::Recorder(QObject *parent)
    : QObject(parent)
{
    m_timer.setInterval(statusInterval);
    connect(&m_timer, &QTimer::timeout, this, &Recorder::tellStatus);
}

Recorder::~Recorder()
{
    stop();
}

void Recorder::start(const RecordingTarget &target, const QSet<PointId> &points, const QString &standard)
{
    if (m_job) {
        return;
    }
    m_target = target;
    m_job = std::make_shared<RecordingJob>(target, points, standard, m_limits,
                                           QDateTime::currentMSecsSinceEpoch());
    QThread *const thread = QThread::create([job = m_job] { job->run(); });
    connect(thread, &QThread::finished, this, &Recorder::finish);
    RecordingThreads::start(thread);
    m_timer.start();
}

void Recorder::add(const Readings &report)
{
    if (m_job) {
        m_job->queue()->add(report);
    }
}

void Recorder::endSession(const QString &box, qint64 time)
{
    if (m_job) {
        m_job->queue()->endSession(box, time);
    }
}

void Recorder::stop()
{
    if (m_job) {
        m_job->queue()->stop(QDateTime::currentMSecsSinceEpoch());
    }
}

RecordingTarget Recorder::target() const
{
    return m_target;
}

Recorder::Status Recorder::status() const
{
    return m_job ? m_job->status() : Status();
}

void Recorder::tellStatus()
{
    const Status now = status();
    if (!isSame(now, m_told)) {
        m_told = now;
        emit statusChanged();
    }
}

void Recorder::finish()
{
    m_timer.stop();
    tellStatus();
    emit stopped();
}
