#pragma once

#include <QObject>

class MonitoringPage;
class MonitoringView;

// Values over time for the live pages: keeps their history, adds the commands "Trend" and "Record" to each
// page, and owns the windows and recorders that these open.
class Trends : public QObject
{
    Q_OBJECT
public:
    // Windows of trends lie above the window, and close with it.
    Trends(MonitoringView *view, QWidget *window);
    ~Trends() override;

    // A trend of the rows that are selected on the current page, or an empty one.
    void showTrend();
    // Asks for a recording and shows it in a window of its own.
    void openRecording();
};
