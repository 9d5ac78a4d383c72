#include "trends/recording.h"

#include <QDateTime>
#include <QDir>
#include <QLocale>

namespace {

QString placeOf(const RecordingTarget &target)
{
    return target.kind == RecordingTarget::Kind::File ? QDir::toNativeSeparators(target.file) : target.text();
}

QString timeOf(qint64 time)
{
    return QDateTime::fromMSecsSinceEpoch(time).toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
}

} // namespace

Recording::Recording(const Subject &subject, const RecordingTarget &target, QObject *parent)
    : QObject(parent)
    , m_subject(subject)
    , m_recorder(new Recorder(this))
{
    connect(m_recorder, &Recorder::statusChanged, this, &Recording::lineChanged);
    connect(m_recorder, &Recorder::stopped, this, [this] { emit stopped(m_recorder->status().error); });
    m_recorder->start(target, subject.points, subject.standard);
}

void Recording::add(const Readings &report)
{
    if (!m_isStopping && (!m_subject.points.isEmpty() || report.standard == m_subject.standard)) {
        m_recorder->add(report);
    }
}

void Recording::endSession(const QString &box, qint64 time)
{
    if (!m_isStopping) {
        m_recorder->endSession(box, time);
    }
}

void Recording::stop()
{
    if (!m_isStopping) {
        m_isStopping = true;
        m_recorder->stop();
        emit lineChanged();
    }
}

QString Recording::line() const
{
    const Recorder::Status status = m_recorder->status();
    const QLocale locale;
    // What changes comes first: a narrow line leaves out its middle.
    QStringList parts{tr("Recording %1").arg(m_subject.name)};
    if (m_isStopping) {
        parts.append(tr("what is under way is being written"));
    } else if (status.state == Recorder::State::Troubled) {
        parts.append(tr("nothing is being written: %1").arg(status.error));
    }
    parts.append(tr("samples: %1").arg(locale.toString(status.samples)));
    if (status.dropped > 0) {
        parts.append(tr("dropped: %1").arg(locale.toString(status.dropped)));
    }
    if (status.bytes >= 0) {
        parts.append(locale.formattedDataSize(status.bytes));
    }
    if (status.since > 0) {
        parts.append(tr("since %1").arg(timeOf(status.since)));
    }
    parts.append(placeOf(m_recorder->target()));
    return parts.join(QStringLiteral(" · "));
}
