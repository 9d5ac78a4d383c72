#pragma once

#include "history/reading.h"

#include <QHash>
#include <QObject>
#include <QPair>
#include <QPointer>
#include <QSet>
#include <QVariantList>
#include <QVector>

class History;
class MonitoringPage;
class MonitoringView;
class QAction;
class QWidget;
class RecordingReader;
class Recordings;
class SampleSource;
class TrendWindow;
struct LiveSource;

// Values over time for the live pages: keeps their history, adds the commands "Trend" and "Record" to each
// page, and owns the windows and recorders that these open.
class Trends : public QObject
{
    Q_OBJECT
public:
    // Windows of trends lie above the window, and close with it. It gets the keys of the commands.
    Trends(MonitoringView *view, QWidget *window);
    ~Trends() override;

    // The commands with keys, for further windows.
    QList<QAction *> actions() const { return m_actions; }

    // A trend of the rows that are selected on the current page, or an empty one.
    void showTrend();
    // Records all points of the current page, or stops that.
    void record();
    // Asks for a recording and shows it in a window of its own.
    void openRecording() { openRecordingOver(m_window); }

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    struct Trend {
        QPointer<TrendWindow> window;
        int number; // in the title, so that no two of them are alike
    };

    void addAction(const char *name, const QKeySequence &key, void (Trends::*command)());
    void equip(MonitoringPage *page);
    void take(MonitoringPage *page, const LiveSource &source, const QVariantList &rows);
    void endSession(const QString &address);
    void close(MonitoringPage *page);

    void openRecordingOver(QWidget *window);
    void recordPage(MonitoringPage *page);
    void recordWindow(TrendWindow *window);
    void showRecording(QWidget *owner);

    void showTrendOf(const MonitoringPage *page);
    int freeNumber() const;
    // The window makes its title, to which the end is added.
    TrendWindow *openWindow(SampleSource *source, const QString &titleEnd);
    void showRecorded(RecordingReader *recording, const QVector<Point> &points);
    void addDropped(TrendWindow *window, const QObject *table);
    // The windows of live values, in the order in which they were opened.
    QVector<TrendWindow *> liveWindows();

    QPointer<MonitoringView> m_view;
    QWidget *m_window;
    QList<QAction *> m_actions;
    History *m_history;
    Recordings *m_recordings;
    ArrivalClock m_clock;
    QVector<Trend> m_trends;
    QPointer<QObject> m_dropped;                              // the table that rows came from last
    QHash<const MonitoringPage *, QVector<Reading>> m_before; // the last report of each
    // Address and project of what the pages have shown since they were made.
    QHash<const MonitoringPage *, QSet<QPair<QString, QString>>> m_shown;
};
