#include "history/recordingreader.h"

#include "history/recordingcursor.h"
#include "history/recordingsession.h"
#include "history/recordingthreads.h"

#include <QDateTime>

#include <algorithm>
#include <optional>

RecordingReader::RecordingReader(QObject *parent)
    : SampleSource(parent)
{
    m_clock.start();
}

RecordingReader::~RecordingReader()
{
    if (m_session) {
        m_session->abandon();
    }
    if (m_thread) {
        m_thread->quit();
    }
}

void RecordingReader::open(const RecordingTarget &target)
{
    if (m_session) {
        return;
    }
    m_target = target;
    m_session = new RecordingSession(target, m_pollInterval);
    m_thread = new QThread;
    m_session->moveToThread(m_thread);
    connect(m_thread, &QThread::finished, m_session, &QObject::deleteLater);
    listen();
    RecordingThreads::start(m_thread);
    QMetaObject::invokeMethod(m_session, &RecordingSession::open);
}

void RecordingReader::listen()
{
    // In so many words, so that the types of their arguments are made known.
    constexpr auto queued = Qt::QueuedConnection;
    connect(m_session, &RecordingSession::opened, this, &RecordingReader::takePoints, queued);
    connect(m_session, &RecordingSession::grown, this, &RecordingReader::takeGrown, queued);
    const auto takeAnswer = [this](const RecordingSession::Answer &answer) {
        // A newer request may be on its way.
        if (m_newest.value(answer.asked.asker) == answer.asked.number) {
            m_newest.remove(answer.asked.asker);
            emit thinned(answer.asked.asker, answer.asked.request, answer.thinned);
        }
    };
    connect(m_session, &RecordingSession::answered, this, takeAnswer, queued);
    const auto takeValues = [this](const RecordingSession::AskedAt &asked) {
        emit knownAt(asked.asker, asked.moment, asked.values);
    };
    connect(m_session, &RecordingSession::answeredAt, this, takeValues, queued);
    connect(m_session, &RecordingSession::failed, this, &RecordingReader::failed);
}

void RecordingReader::takePoints(const std::shared_ptr<const RecordingPoints> &points)
{
    m_points = points;
    m_growth.open(points->latest(), QDateTime::currentMSecsSinceEpoch(), m_clock.elapsed());
    emit opened();
}

void RecordingReader::takeGrown(const std::shared_ptr<const RecordingPoints> &points)
{
    // Some other curve may have ended later, by another clock.
    std::optional<qint64> latest;
    for (const RecordingPoints::Curve &curve : points->curves()) {
        const RecordingPoints::Curve *const known = m_points->find(curve.point.id);
        const bool hasSamples = curve.extent.from <= curve.extent.to;
        if (hasSamples && (!known || curve.extent.to > known->extent.to)) {
            latest = std::max(latest.value_or(curve.extent.to), curve.extent.to);
        }
    }
    if (latest) {
        m_growth.grow(*latest, m_clock.elapsed());
    }
    m_points = points;
    emit grown();
}

RecordingTarget RecordingReader::target() const
{
    return m_target;
}

QVector<Point> RecordingReader::points() const
{
    QVector<Point> points;
    if (m_points) {
        for (const RecordingPoints::Curve &curve : m_points->curves()) {
            points.append(curve.point);
        }
    }
    return points;
}

std::optional<Point> RecordingReader::point(const PointId &id) const
{
    const RecordingPoints::Curve *const curve = m_points ? m_points->find(id) : nullptr;
    return curve ? std::make_optional(curve->point) : std::nullopt;
}

QStringList RecordingReader::boxNames(const PointId &id) const
{
    const QString name = m_points ? m_points->boxName(id) : QString();
    return name.isEmpty() ? QStringList() : QStringList(name);
}

TimeRange RecordingReader::extent(const PointId &id) const
{
    const RecordingPoints::Curve *const curve = m_points ? m_points->find(id) : nullptr;
    return curve ? curve->extent : TimeRange{0, -1};
}

bool RecordingReader::isGrowing() const
{
    return m_points && m_points->isOpenEnded() && m_growth.isGrowing(m_clock.elapsed());
}

qint64 RecordingReader::present(qint64 clock) const
{
    return m_growth.present(m_clock.elapsed()).value_or(clock);
}

void RecordingReader::request(const void *asker, const Request &request)
{
    if (!m_session) {
        return;
    }
    m_newest.insert(asker, ++m_requests);
    m_session->ask({m_requests, asker, request});
    QMetaObject::invokeMethod(m_session, &RecordingSession::answerAll);
}

void RecordingReader::requestAt(const void *asker, const Moment &moment)
{
    if (m_session) {
        m_session->askAt({asker, moment, {}});
        QMetaObject::invokeMethod(m_session, &RecordingSession::answerAll);
    }
}

std::unique_ptr<SampleCursor> RecordingReader::cursor(const PointId &id, const TimeRange &range) const
{
    const RecordingPoints::Curve *const curve = m_points ? m_points->find(id) : nullptr;
    return std::make_unique<RecordingCursor>(m_target, curve ? curve->keys : QVector<qint64>(), range);
}
