#include "boxctl/watchrun.h"

#include "boxctl/boxrun.h"
#include "boxctl/call.h"
#include "boxctl/interruption.h"
#include "boxctl/output.h"
#include "boxctl/reportlink.h"
#include "boxctl/terminal.h"
#include "history/reading.h"

#include <algorithm>

namespace {

constexpr int drawingPause = 500; // ms
constexpr int largest = 1000000000;

} // namespace

struct WatchRun::Watched {
    BoxTarget box;
    ReportLink link;
    ArrivalClock clock; // its own, since it may go on by 1 ms only with each report
    int reports = 0;    // that the call asks for
    int others = 0;     // that it does not
    QString told;       // why there is no link; empty if none was missed

    Watched(const BoxTarget &target, int timeout)
        : box(target)
        , link(target.address, timeout)
    {
    }

    // Why there is no link now; empty if there is one.
    QString missing() const
    {
        return link.isUp()           ? QString()
            : link.error().isEmpty() ? QStringLiteral("No %1 yet").arg(link.awaited())
                                     : link.error();
    }

    QString state() const
    {
        return link.isUp()           ? QStringLiteral("%1 reports").arg(reports)
            : link.error().isEmpty() ? QStringLiteral("connecting")
                                     : link.error();
    }
};

QList<QCommandLineOption> WatchRun::options()
{
    return ReportFilter::options()
        + QList<QCommandLineOption>{
            {"seconds", "End after so many seconds.", "number"},
            {"reports",
             "End after so many reports of all Boxes together; only those count that are asked for.",
             "number"},
            {"timeout", "Wait so long for a connection and for the first answer. Default: 10.", "seconds",
             "10"},
        };
}

std::unique_ptr<WatchRun> WatchRun::make(const Call &call, int *status)
{
    *status = WrongCall;
    QString error;
    const std::optional<ReportFilter> filter = ReportFilter::of(call, &error);
    if (!filter) {
        call.wrong(error);
        return nullptr;
    }
    for (const char *option : {"seconds", "reports"}) {
        if (call.isSet(option) && !call.number(option, 1, largest)) {
            call.wrong(
                QStringLiteral("--%1 takes a number from 1 to %2").arg(QLatin1String(option)).arg(largest));
            return nullptr;
        }
    }
    BoxList list;
    int timeout = 0;
    *status = BoxRun::read(call, call.arguments(), &list, &timeout);
    if (*status != AllDone) {
        return nullptr;
    }
    const int most = Terminal::mostConnections();
    if (list.boxes.size() > most) {
        Output::error(
            QStringLiteral("%1 Boxes take a connection each, and the limit of open files leaves %2: raise "
                           "it, or take fewer Boxes")
                .arg(list.boxes.size())
                .arg(most));
        *status = WrongCall;
        return nullptr;
    }
    Interruption::prepare();
    std::unique_ptr<WatchRun> run(new WatchRun(list, *filter, timeout));
    run->m_seconds = call.number("seconds", 1, largest).value_or(0);
    run->m_mostReports = call.number("reports", 1, largest).value_or(0);
    return run;
}

WatchRun::WatchRun(const BoxList &list, const ReportFilter &filter, int timeout)
    : m_filter(filter)
    , m_progress(drawingPause)
{
    for (const BoxTarget &box : list.boxes) {
        m_boxes.push_back(std::make_unique<Watched>(box, timeout));
        Watched *watched = m_boxes.back().get();
        connect(&watched->link, &ReportLink::opened, this, [=] { takeOpened(watched); });
        connect(&watched->link, &ReportLink::reported, this,
                [=](const MonitoringReport &report) { takeReport(watched, report); });
        connect(&watched->link, &ReportLink::lost, this,
                [=](const QString &error, bool wasUp) { takeLoss(watched, error, wasUp); });
    }
    connect(&m_timer, &QTimer::timeout, this, &WatchRun::look);
}

WatchRun::~WatchRun() = default;

int WatchRun::run(bool showsProgress)
{
    m_showsProgress = showsProgress;
    for (const auto &watched : m_boxes) {
        watched->link.start();
    }
    m_clock.start();
    m_timer.start(Interruption::pause);
    if (!m_isEnded) {
        m_loop.exec();
    }
    m_timer.stop();
    m_progress.clear();
    return m_isQuiet ? AllDone : tellEnd();
}

void WatchRun::end(bool isQuiet)
{
    m_isEnded = true;
    m_isQuiet = isQuiet;
    m_loop.quit();
}

QVector<WatchRun::Result> WatchRun::results() const
{
    QVector<Result> results;
    for (const auto &watched : m_boxes) {
        results.append({watched->box, watched->missing(), watched->reports});
    }
    return results;
}

void WatchRun::takeOpened(Watched *watched)
{
    if (!watched->told.isEmpty()) {
        watched->told.clear();
        tell(QStringLiteral("%1: linked").arg(watched->box.label()));
    }
}

void WatchRun::takeReport(Watched *watched, const MonitoringReport &report)
{
    if (m_isEnded || report.json.isEmpty()) { // it is no object, or one of nothing
        return;
    }
    const std::optional<MonitoringReport> wanted = m_filter.wanted(report);
    if (!wanted) {
        ++watched->others;
        return;
    }
    ++m_reports;
    ++watched->reports;
    emit reported(watched->box, *wanted, watched->clock.now());
    if (m_reports == m_mostReports) {
        end();
    }
}

void WatchRun::takeLoss(Watched *watched, const QString &error, bool wasUp)
{
    if (m_isEnded || (!wasUp && watched->told == error)) {
        return;
    }
    watched->told = error;
    const QString what = wasUp ? QStringLiteral("the link is lost") : QStringLiteral("no link");
    tell(QStringLiteral("%1: %2: %3; trying again").arg(watched->box.label(), what, error));
    emit linkLost(watched->box, error, watched->clock.now(), wasUp);
}

void WatchRun::look()
{
    if (Interruption::isAsked() || (m_seconds > 0 && m_clock.elapsed() >= 1000LL * m_seconds)) {
        end();
    } else if (m_showsProgress) {
        drawProgress();
    }
}

void WatchRun::tell(const QString &event)
{
    m_progress.clear();
    Output::error(event);
}

// Boxes without a link come first, since there may not be room for all.
void WatchRun::drawProgress()
{
    std::vector<const Watched *> boxes;
    for (const auto &watched : m_boxes) {
        boxes.push_back(watched.get());
    }
    const auto firstLinked = std::stable_partition(
        boxes.begin(), boxes.end(), [](const Watched *watched) { return !watched->link.isUp(); });
    const auto line = [&boxes](int place) {
        const Watched &watched = *boxes[size_t(place)];
        return QStringLiteral("%1: %2").arg(watched.box.label(), watched.state());
    };
    m_progress.draw(int(boxes.size()), line,
                    QStringLiteral("%1 of %2 Boxes linked, %3 reports")
                        .arg(boxes.end() - firstLinked)
                        .arg(boxes.size())
                        .arg(m_reports));
}

int WatchRun::tellEnd()
{
    int status = AllDone;
    for (const auto &watched : m_boxes) {
        const QString complaint = complaintOn(*watched);
        if (!complaint.isEmpty()) {
            Output::error(QStringLiteral("%1: %2").arg(watched->box.label(), complaint));
        }
        if (!watched->link.isUp()) {
            status = SomeFailed;
        }
    }
    return status;
}

// One that is linked and has not reported may run another project, or none.
QString WatchRun::complaintOn(const Watched &watched) const
{
    if (!watched.link.isUp()) {
        return QStringLiteral("no link at the end: ") + watched.missing();
    }
    const bool isCutShort = m_reports == m_mostReports && m_mostReports > 0;
    if (watched.reports > 0 || isCutShort) {
        return {};
    }
    return watched.others > 0
        ? QStringLiteral("none of its %1 reports has what --standard or --points ask for").arg(watched.others)
        : QStringLiteral("it is linked, but has sent no report");
}
