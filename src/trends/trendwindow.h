#pragma once

#include "history/samplesource.h"
#include "trends/trendtools.h"

#include <QBasicTimer>
#include <QDropEvent>
#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

#include <functional>
#include <optional>

class FigureModel;
class FigureTable;
class MarkValues;
class QLabel;
class QSplitter;
class QStackedWidget;
class QuietLine;
class RecordingLine;
class TrendFeed;
class TrendMarks;
class TrendNote;
class TrendPlot;
class ViewControl;

// One trend: curves of points over time, with a table of their figures below. A window of its own.
class TrendWindow : public QWidget
{
    Q_OBJECT
public:
    // The source may be shared; a window without points shows how to get some. It deletes itself when it is
    // closed.
    explicit TrendWindow(SampleSource *source, QWidget *parent = nullptr);
    ~TrendWindow() override;

    // The present of what still grows; by default the computer's clock.
    void setClock(const std::function<ArrivalClock::Present()> &clock);

    // Adds curves; those that it has stay as they are. Of more than mostAtOnce the first are added, and a
    // note tells so.
    void addPoints(const QVector<Point> &points);
    QVector<Point> points() const;
    SampleSource *source() const;

    // A row below the tools for who records: a line of text, empty for none, with a red mark before it.
    void setRecordingLine(const QString &text);

    static constexpr int mostAtOnce = 200;
    inline static int tick = 250; // ms between two pictures while following; for tests to shorten
    // Where a drag began; for tests, whose platform has no drags.
    inline static QObject *(*sourceOf)(const QDropEvent &) = [](const QDropEvent &drop) {
        return drop.source();
    };

signals:
    // A tool was used: record the window's points, or stop that; show another recording.
    void recordAsked();
    void openAsked();
    // Rows of a live table were dropped on it; the object is the table.
    void dropped(QObject *table);

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;
    void timerEvent(QTimerEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool takes(const QDropEvent &drop) const;
    void layOut();
    void addKeys();
    void setWorks();
    void connectParts();
    void connectSource();
    void use(TrendTools::Tool tool);
    void choosePoints();
    void removeRows(const QVector<int> &rows);
    void fitTable();
    void followPresent();
    void ask();
    void take(const SampleSource::Request &request, const QVector<Thinned> &answers);
    void scheduleRedraw();
    void redraw();
    bool canFollow() const;
    bool isPresentSeen() const;
    void showTools();
    void showTitle();
    void tellClock();
    void tellSources();

    QMap<TrendTools::Tool, std::function<void()>> m_works;
    TrendFeed *m_feed;
    TrendTools *m_tools;
    TrendPlot *m_plot;
    FigureTable *m_table;
    FigureModel *m_figures;
    TrendMarks *m_marks;
    ViewControl *m_control;
    QuietLine *m_sources;
    QuietLine *m_markerLine;
    MarkValues *m_values;
    RecordingLine *m_recording;
    TrendNote *m_note;
    QLabel *m_hint;
    QStackedWidget *m_pages;
    QSplitter *m_splitter;
    bool m_heightsOfUser = false; // of plot and table
    QTimer m_redraw;
    QElapsedTimer m_sinceRedraw;
    QBasicTimer m_tick;
    struct Answer {
        SampleSource::Request request;
        QVector<Thinned> curves;
    };
    std::optional<Answer> m_answer; // to be shown with the next picture
    bool m_hasGrown = false;
    bool m_isNew = true; // no curve was ever shown
};
