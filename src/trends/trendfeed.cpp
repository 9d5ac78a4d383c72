#include "trends/trendfeed.h"

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
}

void TrendFeed::ask(const SampleSource::Request &request)
{
    m_next = request;
    m_isWaiting = true;
    if (!m_pause.isActive()) {
        send();
    }
}

void TrendFeed::send()
{
    m_isWaiting = false;
    if (m_source && !m_next.points.isEmpty()) {
        m_pause.start(interval);
        m_source->request(this, m_next);
    }
}

void TrendFeed::take(const void *asker, const SampleSource::Request &request, const QVector<Thinned> &answers)
{
    if (asker == this) {
        emit answered(request, answers);
    }
}
