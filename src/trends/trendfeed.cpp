#include "trends/trendfeed.h"

#include "history/history.h"
#include "history/recordingreader.h"
#include "trends/trendtexts.h"

#include <QDateTime>
#include <QSet>

#include <algorithm>

TrendFeed::TrendFeed(SampleSource *source, QObject *parent)
    : QObject(parent)
    , m_source(source)
{
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_isWaiting) {
            send();
        }
    });
    connect(source, &SampleSource::thinned, this, &TrendFeed::take);
    connect(source, &SampleSource::knownAt, this, &TrendFeed::takeAt);
    connect(source, &SampleSource::failed, this, [this] { m_hasFailed = true; });
}

TrendFeed::~TrendFeed()
{
    release(m_points);
}

bool TrendFeed::isRecorded() const
{
    return qobject_cast<RecordingReader *>(m_source);
}

void TrendFeed::add(const QVector<PointId> &points)
{
    auto *history = qobject_cast<History *>(source());
    for (const PointId &point : points) {
        m_points.append(point);
        if (history) {
            history->hold(point);
        }
    }
}

void TrendFeed::remove(const QVector<PointId> &points)
{
    QSet<PointId> gone;
    for (const PointId &point : points) {
        gone.insert(point);
    }
    const auto isGone = [&gone](const PointId &point) { return gone.contains(point); };
    m_points.erase(std::remove_if(m_points.begin(), m_points.end(), isGone), m_points.end());
    release(points);
}

void TrendFeed::release(const QVector<PointId> &points)
{
    if (auto *history = qobject_cast<History *>(source())) {
        for (const PointId &point : points) {
            history->release(point);
        }
    }
}

QVector<Point> TrendFeed::points() const
{
    QVector<Point> points;
    for (const PointId &id : m_points) {
        if (const std::optional<Point> point = m_source ? m_source->point(id) : std::nullopt) {
            points.append(*point);
        }
    }
    return points;
}

QString TrendFeed::sources(const QVector<PointId> &points) const
{
    QStringList sources;
    QSet<QPair<QString, QString>> known;
    for (const PointId &point : points) {
        const QPair<QString, QString> source(point.box, point.project);
        if (!known.contains(source)) {
            known.insert(source);
            sources.append(TrendTexts::ofSource(point, m_source ? m_source->boxNames(point) : QStringList()));
        }
    }
    sources.removeAll(QString());
    return sources.join(QStringLiteral("; "));
}

TimeRange TrendFeed::extent() const
{
    TimeRange all{1, 0};
    for (const PointId &point : m_points) {
        const TimeRange own = m_source ? m_source->extent(point) : all;
        if (own.from <= own.to) {
            all = all.from > all.to ? own : TimeRange{qMin(all.from, own.from), qMax(all.to, own.to)};
        }
    }
    return all;
}

TimeView TrendFeed::firstView() const
{
    constexpr qint64 live = 15 * TimeView::minute;
    constexpr qint64 day = 24 * TimeView::hour;
    const TimeRange all = extent();
    if (all.from > all.to || qobject_cast<History *>(m_source)) {
        return TimeView::upTo(present(), live);
    }
    if (isGrowing()) {
        return TimeView::upTo(present(), qBound(TimeView::minute, present() - all.from, day));
    }
    return TimeView({qMax(all.from, all.to - day), all.to});
}

ArrivalClock::Present TrendFeed::clock() const
{
    return m_clock ? m_clock() : ArrivalClock::Present{QDateTime::currentMSecsSinceEpoch(), 0};
}

qint64 TrendFeed::present() const
{
    const TimeRange all = extent();
    const qint64 now = m_source ? m_source->present(clock().time) : clock().time;
    return all.from <= all.to ? qMax(now, all.to) : now;
}

std::vector<ValueTable::Column> TrendFeed::values(const QVector<PointId> &points,
                                                  const TimeRange &range) const
{
    std::vector<ValueTable::Column> columns;
    for (const PointId &point : points) {
        if (m_source) {
            columns.push_back({point, m_source->cursor(point, range)});
        }
    }
    return columns;
}

void TrendFeed::ask(const TimeRange &range, int columns)
{
    m_next.range = range;
    m_next.columns = columns;
    m_isWaiting = true;
    if (!m_pause.isActive()) {
        send();
    }
}

void TrendFeed::send()
{
    m_isWaiting = false;
    m_next.points = m_points;
    m_next.now = present();
    if (m_source && !m_points.isEmpty()) {
        m_pause.start(interval);
        m_isAsked = true;
        askAt(Mark::End, endOf(m_next), m_next.now);
        m_source->request(this, m_next);
    }
}

qint64 TrendFeed::endOf(const SampleSource::Request &request)
{
    return qMin(request.range.to, request.now);
}

void TrendFeed::take(const void *asker, const SampleSource::Request &request, const QVector<Thinned> &answers)
{
    if (asker != this) {
        return;
    }
    m_isAsked = false;
    m_hasFailed = false;
    if (m_end != endOf(request)) { // a source that fails may forget it
        askAt(Mark::End, endOf(request), request.now);
    }
    emit answered(request, answers);
}

bool TrendFeed::askAt(Mark mark, qint64 time, qint64 now)
{
    if (m_source) {
        m_source->requestAt(&m_askers[size_t(mark)], {m_points, time, now});
    }
    return m_source;
}

void TrendFeed::takeAt(const void *asker, const SampleSource::Moment &moment, const QVector<ValueAt> &values)
{
    for (size_t mark = 0; mark < m_askers.size(); ++mark) {
        if (asker == &m_askers[mark]) {
            m_end = Mark(mark) == Mark::End ? moment.time : m_end;
            emit answeredAt(Mark(mark), moment, values);
        }
    }
}
