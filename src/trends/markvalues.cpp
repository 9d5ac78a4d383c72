#include "trends/markvalues.h"

#include "trends/figuremodel.h"
#include "trends/readout.h"
#include "trends/trendfeed.h"
#include "trends/trendmarks.h"
#include "trends/trendplot.h"
#include "trends/trendtexts.h"
#include "widgets/quietline.h"

MarkValues::MarkValues(TrendFeed *feed, TrendMarks *marks, const Shown &shown, QObject *parent)
    : QObject(parent)
    , m_feed(feed)
    , m_marks(marks)
    , m_shown(shown)
{
    connect(marks, &TrendMarks::cursorChanged, this, &MarkValues::askPointer);
    connect(marks, &TrendMarks::markersChanged, this, &MarkValues::askMarkers);
    connect(feed, &TrendFeed::answeredAt, this,
            [this](Mark mark, const SampleSource::Moment &moment, const QVector<ValueAt> &values) {
                // The others may have been taken away since.
                if (mark == Mark::End || m_isAsked[size_t(mark)]) {
                    take(mark, moment, values);
                }
            });
    showLine();
}

void MarkValues::setScreen(const TimeRange &screen, qint64 now)
{
    m_screen = screen;
    m_now = now;
    askPointer();
    askMarkers();
}

void MarkValues::askPointer()
{
    ask(Mark::Pointer, m_marks->cursor());
}

void MarkValues::askMarkers()
{
    for (const Mark mark : {Mark::A, Mark::B}) {
        ask(mark, m_marks->markers().times[int(mark)]);
    }
}

void MarkValues::ask(Mark mark, std::optional<qint64> time)
{
    const bool isOnScreen = time && *time >= m_screen.from && *time <= m_screen.to;
    m_isAsked[size_t(mark)] = isOnScreen; // before the answer, which may come at once
    if (isOnScreen && m_feed->askAt(mark, *time, m_now)) {
        return;
    }
    m_isAsked[size_t(mark)] = false;
    const QVector<PointId> points = m_feed->ids();
    if (time && isOnScreen) { // there is no source any more
        take(mark, {{}, *time, m_now}, {});
    } else if (time) {
        take(mark, {points, *time, m_now}, QVector<ValueAt>(points.size()));
    } else {
        set(mark, std::nullopt);
    }
}

void MarkValues::take(Mark mark, const SampleSource::Moment &moment, const QVector<ValueAt> &values)
{
    m_shown.figures->setValues(mark, moment, values);
    set(mark, moment.time);
}

void MarkValues::set(Mark mark, std::optional<qint64> time)
{
    if (mark == Mark::Pointer) {
        m_pointer = time;
        showReadout();
    } else if (mark != Mark::End && m_markers.times[int(mark)] != time) {
        m_markers.times[int(mark)] = time;
        if (!time) {
            m_shown.figures->setValues(mark, {}, {});
        }
        showLine();
        emit markersChanged();
    }
}

void MarkValues::showReadout()
{
    if (m_pointer && *m_pointer >= m_screen.from && *m_pointer <= m_screen.to) {
        m_shown.readout->show(*m_pointer, int(m_shown.plot->placeOf(*m_pointer)), m_shown.figures->curves());
    } else {
        m_shown.readout->clear();
    }
}

void MarkValues::showLine()
{
    QStringList parts;
    for (int marker = 0; marker < 2; ++marker) {
        if (m_markers.times[marker]) {
            parts.append(Markers::name(marker) + QLatin1Char(' ')
                         + TrendTexts::ofTime(*m_markers.times[marker]));
        }
    }
    if (m_markers.areBothSet()) {
        parts.append(QStringLiteral("B − A ")
                     + TrendTexts::ofDuration(*m_markers.times[1] - *m_markers.times[0]));
    }
    m_shown.line->setText(parts.join(QStringLiteral("    ")));
    m_shown.line->setVisible(!parts.isEmpty());
}
