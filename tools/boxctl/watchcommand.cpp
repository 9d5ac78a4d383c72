#include "boxctl/call.h"
#include "boxctl/output.h"
#include "boxctl/outputqueue.h"
#include "boxctl/reportformat.h"
#include "boxctl/terminal.h"
#include "boxctl/watchrun.h"

#include <cstdlib>

namespace {

const ReportFormat *formatOf(const Call &call)
{
    return ReportFormat::named(call.isSet("json") && !call.isSet("format") ? QStringLiteral("json")
                                                                           : call.value("format"));
}

// Prints what a run takes in.
class Printer
{
public:
    Printer(const ReportFormat &format, WatchRun *run)
        : m_run(run)
    {
        QObject::connect(run, &WatchRun::reported, &m_queue,
                         [=](const BoxTarget &box, const MonitoringReport &report, qint64 time) {
                             const std::optional<QByteArray> lines = format.report(box, report, time);
                             lines ? print(*lines) : leaveOut(box);
                         });
        QObject::connect(run, &WatchRun::linkLost, &m_queue,
                         [=](const BoxTarget &box, const QString &error, qint64 time) {
                             print(format.loss(box, error, time));
                         });
        QObject::connect(&m_queue, &OutputQueue::failed, run, [run] { run->end(true); });
        m_queue.start();
        print(format.head);
    }

    // Gives the exit status of a run that ended with this one.
    int finish(int status)
    {
        const bool isRead = m_queue.finish();
        if (m_queue.dropped() > 0) {
            Output::error(QStringLiteral("the output was read too slowly: %1 reports are left out")
                              .arg(m_queue.dropped()));
            status = SomeFailed;
        }
        if (m_tooLarge > 0) {
            Output::error(QStringLiteral("%1 reports were too large and are left out").arg(m_tooLarge));
            status = SomeFailed;
        }
        if (!isRead) {
            Output::error(QStringLiteral("the output is no longer read: its end is left out"));
            std::_Exit(SomeFailed);
        }
        return status;
    }

private:
    void print(const QByteArray &lines)
    {
        if (!m_queue.add(lines) && m_queue.dropped() == 1) {
            m_run->tell(QStringLiteral("the output is read too slowly: reports are left out"));
        }
    }

    void leaveOut(const BoxTarget &box)
    {
        if (++m_tooLarge == 1) {
            m_run->tell(
                QStringLiteral("%1: a report is left out, since it would be more than 16 MiB of output")
                    .arg(box.label()));
        }
    }

    WatchRun *m_run;
    OutputQueue m_queue;
    int m_tooLarge = 0;
};

int run(const Call &call)
{
    const ReportFormat *format = formatOf(call);
    if (!format || (call.isSet("json") && format != ReportFormat::named(QStringLiteral("json")))) {
        return call.wrong(format ? QStringLiteral("--json and another --format exclude each other")
                                 : QStringLiteral("--format takes text, csv, json or influx"));
    }
    int status = AllDone;
    const std::unique_ptr<WatchRun> run = WatchRun::make(call, &status);
    if (!run) {
        return status;
    }
    Printer printer(*format, run.get());
    return printer.finish(run->run(!Terminal::isOutputTerminal()));
}

} // namespace

Command watchCommand()
{
    return {"watch",
            "BOX...",
            "Print what each Box reports, until Ctrl+C.",
            "text is for people, a line a point. csv has a head line, then a row a point,\n"
            "with valid as 1 or 0. json has an object a report; its keys are box, ok, time\n"
            "and report, the object that the Box sent. influx is line protocol, a line a\n"
            "point, with the tags box, name, project and standard and the fields value (of\n"
            "valid numbers alone), text (of valid texts, and what was reported where it is\n"
            "no valid number) and valid. All but json have blanks in place of line breaks and\n"
            "other characters that are not seen. Times are those of the arrival.\n"
            "\n"
            "All Boxes are watched at once. A link that drops or does not come about is told\n"
            "and tried again, after 1 second at first and 60 at most; json also has an\n"
            "object for it, with ok false and error. A Box that does not answer a heartbeat\n"
            "for 30 seconds counts as dropped. At the end a Box is told that is linked and\n"
            "has sent nothing of what is asked for: it may run another project.\n"
            "\n"
            "Ends with 1 if the link to a Box is missing at the end, or if output was left\n"
            "out because it was read too slowly or because a report would be more than 16 MiB\n"
            "of it; with 0 if who reads the output has closed it.",
            WatchRun::options()
                + QList<QCommandLineOption>{{"format", "Print text, csv, json or influx. Default: text.",
                                             "name", "text"},
                                            {"json", "The same as --format json."}},
            run};
}
