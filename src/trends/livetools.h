#pragma once

#include "history/point.h"

#include <QObject>
#include <QVector>

#include <functional>

class MonitoringPage;
class QMenu;
class QToolButton;
class RecordingLine;
class TrendWindow;

// What trends and recordings add to a live page: the tools "Trend" and "Record", entries of the table's menu,
// and a line on what is being recorded.
class LiveTools : public QObject
{
    Q_OBJECT
public:
    // The windows to which points may be added, asked for with each menu.
    using Windows = std::function<QVector<TrendWindow *>()>;

    // The page owns it.
    LiveTools(MonitoringPage *page, Windows windows);

    // The points of the selected rows that are shown, in the order of the rows. They belong to the source
    // that the page showed last.
    static QVector<Point> selectedPoints(const MonitoringPage *page);

    // What is being recorded of the page; an empty text for nothing. While a recording comes to its end
    // nothing can be done about it.
    void setRecording(const QString &line, bool isEnding);

signals:
    void trendAsked();
    void addAsked(TrendWindow *window);
    void recordAsked();
    void openAsked();

private:
    QToolButton *addTool(const char *name, const QString &icon, const QString &text);
    void extendMenu(QMenu *menu);

    MonitoringPage *m_page;
    Windows m_windows;
    QToolButton *m_record;
    RecordingLine *m_line;
};
