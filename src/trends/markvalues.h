#pragma once

#include "history/samplesource.h"
#include "trends/curve.h"
#include "trends/markerlines.h"

#include <QObject>

class FigureModel;
class QuietLine;
class Readout;
class TrendFeed;
class TrendMarks;
class TrendPlot;

// Asks the source what the curves are at the pointer, the markers and the end of what is on screen, since a
// thinned curve does not hold each sample. Readout, figures and line are of the time that was answered last:
// never are values shown beside another time than theirs.
class MarkValues : public QObject
{
    Q_OBJECT
public:
    struct Shown {
        TrendPlot *plot;
        Readout *readout;
        FigureModel *figures;
        QuietLine *line; // the times of the markers
    };

    // All of them live as long as it does.
    MarkValues(TrendFeed *feed, TrendMarks *marks, const Shown &shown, QObject *parent);

    // What is on screen; nothing is known of later times than now. There may be other samples than before.
    void setScreen(const TimeRange &screen, qint64 now);
    // Places the readout anew where the plot has moved.
    void showReadout();
    // As far as their values have been told.
    const Markers &markers() const { return m_markers; }

signals:
    void markersChanged();

private:
    void askMarkers();
    void askPointer();
    void ask(Mark mark, std::optional<qint64> time);
    void take(Mark mark, const SampleSource::Moment &moment, const QVector<ValueAt> &values);
    void set(Mark mark, std::optional<qint64> time);
    void showLine();

    TrendFeed *m_feed;
    TrendMarks *m_marks;
    const Shown m_shown;
    TimeRange m_screen{0, -1};
    qint64 m_now = 0;
    std::array<bool, markCount> m_isAsked{}; // of the source
    Markers m_markers;
    std::optional<qint64> m_pointer;
};
