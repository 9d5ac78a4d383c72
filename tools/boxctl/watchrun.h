#pragma once

#include "boxctl/boxlist.h"
#include "boxctl/progress.h"
#include "boxctl/reportfilter.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QTimer>

#include <memory>
#include <vector>

class ReportLink;

// Takes the reports of all Boxes of a call side by side, until the call's end or Ctrl+C. What becomes of the
// links is told as it happens; those that are missing at the end are failures.
class WatchRun : public QObject
{
    Q_OBJECT
public:
    // The options of the commands that take reports.
    static QList<QCommandLineOption> options();
    // Reads options and Boxes of the call. Nothing, told and with the status for it, if they are wrong. From
    // then on signals are caught.
    static std::unique_ptr<WatchRun> make(const Call &call, int *status);

    ~WatchRun() override;

    // Gives the exit status. Progress is shown where there is a terminal for it.
    int run(bool showsProgress);
    // Ends the run early; if it is quiet, without a word on the Boxes and as done.
    void end(bool isQuiet = false);

    // One line on the standard error, above the progress.
    void tell(const QString &event);

    struct Result {
        BoxTarget box;
        QString error; // why there is no link; empty if there is one
        int reports = 0;
    };
    QVector<Result> results() const;

signals:
    // Those that the call asks for. The time, in ms since 1970 UTC, increases with each report of a Box.
    void reported(const BoxTarget &box, const MonitoringReport &report, qint64 time);
    // A link that was up has ended, or one does not come about; the latter once for each reason.
    void linkLost(const BoxTarget &box, const QString &error, qint64 time, bool wasUp);

private:
    struct Watched;

    WatchRun(const BoxList &list, const ReportFilter &filter, int timeout);

    void takeOpened(Watched *watched);
    void takeReport(Watched *watched, const MonitoringReport &report);
    void takeLoss(Watched *watched, const QString &error, bool wasUp);
    void look();
    void drawProgress();
    int tellEnd();
    QString complaintOn(const Watched &watched) const;

    ReportFilter m_filter;
    std::vector<std::unique_ptr<Watched>> m_boxes;
    int m_seconds = 0;     // 0: without end
    int m_mostReports = 0; // 0: without end
    int m_reports = 0;     // that the call asks for
    bool m_showsProgress = false;
    bool m_isEnded = false;
    bool m_isQuiet = false;
    QEventLoop m_loop;
    QTimer m_timer;
    QElapsedTimer m_clock;
    Progress m_progress;
};
