#include "boxctl/boxrun.h"

#include "boxctl/call.h"
#include "boxctl/interruption.h"
#include "boxctl/output.h"
#include "boxctl/terminal.h"

#include <QEventLoop>

namespace {

constexpr int drawingPause = 100; // ms
constexpr int mostJobs = 1000;
constexpr double leastSeconds = 0.1; // of a time-out
constexpr int mostSeconds = 86400;   // of a time-out and between two words on the progress

} // namespace

QList<QCommandLineOption> BoxRun::options()
{
    return {
        {"jobs", "Work on so many Boxes side by side. Default: 16.", "number", "16"},
        {"timeout", "Wait so long for a connection and for each answer. Default: 10.", "seconds", "10"},
        {"progress",
         "Where no terminal shows what the Boxes are doing, tell it so often. 0 leaves it and the total out. "
         "Default: 10.",
         "seconds", "10"},
        {"json", "Print one JSON object a Box and line."},
    };
}

int BoxRun::over(const Call &call, const QStringList &boxes, const TaskMaker &maker, const Check &lastCheck)
{
    const std::optional<int> jobs = call.number("jobs", 1, mostJobs);
    if (!jobs) {
        return call.wrong(QStringLiteral("--jobs takes a number from 1 to %1").arg(mostJobs));
    }
    const std::optional<int> interval = call.milliseconds("progress", 0, mostSeconds);
    if (!interval) {
        return call.wrong(QStringLiteral("--progress takes a number from 0 to %1").arg(mostSeconds));
    }
    BoxList list;
    int timeout = 0;
    const int status = read(call, boxes, &list, &timeout);
    if (status != AllDone) {
        return status;
    }
    const QString wrong = lastCheck ? lastCheck() : QString();
    if (!wrong.isEmpty()) {
        return call.wrong(wrong);
    }
    return BoxRun(list, timeout, qMin(*jobs, Terminal::mostConnections()), *interval, call.isSet("json"),
                  maker)
        .run();
}

int BoxRun::read(const Call &call, const QStringList &boxes, BoxList *list, int *timeout)
{
    const std::optional<int> given = call.milliseconds("timeout", leastSeconds, mostSeconds);
    if (!given) {
        return call.wrong(
            QStringLiteral("--timeout takes a number from %1 to %2").arg(leastSeconds).arg(mostSeconds));
    }
    *timeout = *given;
    *list = BoxList::read(boxes);
    if (list->isBadDocument) {
        Output::error(list->error);
        return BadDocument;
    }
    if (!list->ok()) {
        return call.wrong(list->error);
    }
    for (const QString &note : qAsConst(list->notes)) {
        Output::error(note);
    }
    return AllDone;
}

BoxRun::BoxRun(const BoxList &list, int timeout, int jobs, int interval, bool json, TaskMaker maker)
    : m_list(list)
    , m_timeout(timeout)
    , m_jobs(jobs)
    , m_interval(interval)
    , m_json(json)
    , m_maker(std::move(maker))
    , m_progress(drawingPause)
{
}

int BoxRun::run()
{
    Interruption::prepare();
    QEventLoop loop;
    connect(&m_signalTimer, &QTimer::timeout, &loop, [this, &loop] {
        if (Interruption::isAsked()) {
            interrupt();
            loop.quit();
        } else if (m_running.isEmpty() && m_next == m_list.boxes.size()) {
            loop.quit();
        } else if (m_isStale) {
            drawProgress();
        }
    });
    m_signalTimer.start(Interruption::pause);
    connect(&m_progressTimer, &QTimer::timeout, this, &BoxRun::tellProgress);
    if (m_interval > 0 && !Terminal::isErrorTerminal()) {
        m_progressTimer.start(m_interval);
    }
    startMore();
    if (!m_running.isEmpty()) {
        loop.exec();
    }
    m_progress.clear();
    if (m_interval > 0 && m_list.boxes.size() > 1) {
        tellEnd();
    }
    return m_failures.isEmpty() ? AllDone : SomeFailed;
}

void BoxRun::startMore()
{
    while (m_running.size() < m_jobs && m_next < m_list.boxes.size()) {
        const int place = m_next++;
        const BoxTarget &box = m_list.boxes.at(place);
        BoxTask *task = m_maker(m_timeout);
        task->setParent(this);
        m_running.insert(place, task);
        connect(task, &BoxTask::progressed, this, &BoxRun::drawProgress);
        connect(task, &BoxTask::ended, this,
                [this, place](const BoxTask::Outcome &outcome) { end(place, outcome); });
        task->start(box);
    }
    drawProgress();
}

void BoxRun::end(int box, const BoxTask::Outcome &outcome)
{
    BoxTask *task = m_running.take(box);
    if (!task) {
        return;
    }
    task->disconnect(this);
    task->deleteLater();
    tell(m_list.boxes.at(box), outcome);
    if (m_running.isEmpty() && m_next == m_list.boxes.size()) {
        m_signalTimer.start(0); // no need to wait for its next turn
    } else {
        startMore();
    }
}

void BoxRun::tell(const BoxTarget &box, const BoxTask::Outcome &outcome)
{
    const bool isDone = outcome.error.isEmpty();
    m_progress.clear();
    if (isDone) {
        ++m_done;
    } else {
        m_failures.append(QStringLiteral("%1: %2").arg(box.label(), outcome.error));
        Output::error(m_failures.constLast());
    }
    if (m_json) {
        QJsonObject object = outcome.json;
        object.insert(QStringLiteral("box"), box.address);
        object.insert(QStringLiteral("ok"), isDone);
        if (!isDone) {
            object.insert(QStringLiteral("error"), outcome.error);
        }
        Output::json(object);
        return;
    }
    for (const QString &line : outcome.lines) {
        Output::line(QStringLiteral("%1: %2").arg(box.label(), line));
    }
}

void BoxRun::interrupt()
{
    for (auto running = m_running.cbegin(); running != m_running.cend(); ++running) {
        BoxTask *task = running.value();
        task->disconnect(this);
        tell(m_list.boxes.at(running.key()), {QStringLiteral("interrupted while ") + task->state(), {}, {}});
    }
    qDeleteAll(m_running); // their links end here
    m_running.clear();
    while (m_next < m_list.boxes.size()) {
        tell(m_list.boxes.at(m_next++), {QStringLiteral("interrupted before it was begun"), {}, {}});
    }
}

QString BoxRun::total() const
{
    return QStringLiteral("%1 of %2 Boxes done, %3 failed")
        .arg(m_done)
        .arg(m_list.boxes.size())
        .arg(m_failures.size());
}

void BoxRun::tellEnd()
{
    if (!Terminal::isErrorTerminal()) {
        Output::error(total());
        return;
    }
    // Those that failed may be out of sight, between the results of the others.
    if (Terminal::isOutputTerminal() && m_done + m_failures.size() >= Terminal::errorSize().height()
        && m_done > 0 && !m_failures.isEmpty()) {
        Output::error(QStringLiteral("these failed:"));
        for (const QString &failure : qAsConst(m_failures)) {
            Output::error(failure);
        }
    }
    m_progress.end(total());
}

void BoxRun::tellProgress()
{
    for (auto running = m_running.cbegin(); running != m_running.cend(); ++running) {
        const QString state = running.value()->state();
        if (m_told.value(running.key()) != state) {
            m_told.insert(running.key(), state);
            Output::error(QStringLiteral("%1: %2").arg(m_list.boxes.at(running.key()).label(), state));
        }
    }
}

void BoxRun::drawProgress()
{
    if (m_interval == 0) {
        return;
    }
    auto running = m_running.cbegin();
    const auto line = [&](int) {
        const BoxTarget &box = m_list.boxes.at(running.key());
        return QStringLiteral("%1: %2").arg(box.label(), (running++).value()->state());
    };
    m_isStale = !m_progress.draw(m_running.size(), line, total());
}
