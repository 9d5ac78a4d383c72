#pragma once

#include "history/samplesource.h"

#include <QPointer>
#include <QTimer>

// Asks a source for what a window shows, not more often than can be seen. The last question counts.
class TrendFeed : public QObject
{
    Q_OBJECT
public:
    TrendFeed(SampleSource *source, QObject *parent);

    SampleSource *source() const { return m_source; }
    void ask(const SampleSource::Request &request);

    inline static int interval = 100; // ms between two questions; for tests to shorten

signals:
    void answered(const SampleSource::Request &request, const QVector<Thinned> &answers);

private:
    void send();
    void take(const void *asker, const SampleSource::Request &request, const QVector<Thinned> &answers);

    QPointer<SampleSource> m_source;
    QTimer m_pause; // runs while nothing may be asked
    SampleSource::Request m_next;
    bool m_isWaiting = false;
};
