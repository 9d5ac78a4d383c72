#include "boxctl/call.h"
#include "boxctl/namedpoints.h"
#include "boxctl/output.h"
#include "boxctl/watchrun.h"
#include "boxlink/monitoringreport.h"
#include "history/recorder.h"

#include <QEventLoop>
#include <QHash>
#include <QUrlQuery>

namespace {

// The database of the call; nothing, told, if it names none that can be written.
std::optional<RecordingTarget> targetOf(const Call &call)
{
    if (!call.isSet("to")) {
        call.wrong(QStringLiteral("it needs a database to record to: --to sqlite:FILE"));
        return std::nullopt;
    }
    const QUrl url(call.value("to"));
    if (!url.password().isEmpty() || QUrlQuery(url).hasQueryItem(QStringLiteral("password"))) {
        call.wrong(
            QStringLiteral("a password is no argument, which others can see: leave it to ~/.pgpass or to "
                           "the variable PGPASSWORD"));
        return std::nullopt;
    }
    QString error;
    const RecordingTarget target = RecordingTarget::fromText(call.value("to"), &error);
    if (target.kind == RecordingTarget::Kind::None) {
        call.wrong(error.chopped(1)); // its full stop
    } else if (!RecordingTarget::available().contains(target.kind)) {
        call.wrong(QStringLiteral("Qt's driver for such a database is not installed"));
    } else {
        return target;
    }
    return std::nullopt;
}

// Puts what a run takes in into a database, and tells how that goes.
class Recording
{
public:
    Recording(const RecordingTarget &target, WatchRun *run)
        : m_run(run)
    {
        QObject::connect(run, &WatchRun::reported, &m_recorder,
                         [this](const BoxTarget &box, const MonitoringReport &report, qint64 time) {
                             add(box, report, time);
                         });
        QObject::connect(run, &WatchRun::linkLost, &m_recorder,
                         [this](const BoxTarget &box, const QString &, qint64 time, bool wasUp) {
                             if (wasUp) {
                                 m_recorder.endSession(box.address, time);
                             }
                         });
        QObject::connect(&m_recorder, &Recorder::statusChanged, &m_recorder, [this] { takeStatus(); });
        m_recorder.start(target, {});
    }

    // Waits until all is written. Gives the exit status of a run that ended with this one.
    int finish(int status, bool json)
    {
        QEventLoop loop;
        QObject::connect(&m_recorder, &Recorder::stopped, &loop, &QEventLoop::quit);
        m_recorder.stop();
        loop.exec();
        const Recorder::Status end = m_recorder.status();
        if (!end.error.isEmpty() && end.error != m_trouble) {
            Output::error(end.error);
        }
        const qint64 lost = end.dropped + leftOut();
        if (lost > 0) {
            Output::error(QStringLiteral("%1 samples are lost").arg(lost));
        }
        const QString total =
            QStringLiteral("%1 samples recorded into %2").arg(end.samples).arg(m_recorder.target().text());
        json ? Output::error(total) : Output::line(total);
        return end.error.isEmpty() && lost == 0 ? status : SomeFailed;
    }

private:
    void add(const BoxTarget &box, const MonitoringReport &report, qint64 time)
    {
        NamedPoints &points = m_points[box.address];
        const qint64 leftOut = points.leftOut();
        const std::optional<QVector<Reading>> rows = points.take(report);
        if (leftOut == 0 && points.leftOut() > 0) {
            m_run->tell(QStringLiteral(
                            "%1: it names more than %2 points, or %3 MiB of names: the others are left out")
                            .arg(box.label())
                            .arg(NamedPoints::most)
                            .arg(NamedPoints::mostText >> 20));
        }
        if (rows) {
            m_recorder.add({time, box.address, report.projectName, report.plcName, *rows, box.name});
        }
    }

    qint64 leftOut() const
    {
        qint64 samples = 0;
        for (const NamedPoints &points : m_points) {
            samples += points.leftOut();
        }
        return samples;
    }

    void takeStatus()
    {
        const Recorder::Status status = m_recorder.status();
        const bool isTroubled = status.state == Recorder::State::Troubled;
        if (isTroubled && status.error != m_trouble) {
            m_run->tell(status.error);
        } else if (!isTroubled && !m_trouble.isEmpty() && status.state == Recorder::State::Recording) {
            m_run->tell(QStringLiteral("recording goes on"));
        }
        if (isTroubled || status.state == Recorder::State::Recording) {
            m_trouble = status.error;
        }
        if (status.dropped > 0 && !m_hasDropped) {
            m_hasDropped = true;
            m_run->tell(QStringLiteral("samples are being lost"));
        }
        if (isTroubled && !status.hasBegun) { // a name that is wrong, most likely
            m_run->end(true);
        }
    }

    WatchRun *m_run;
    Recorder m_recorder;
    QHash<QString, NamedPoints> m_points; // by the address of the Box
    QString m_trouble;
    bool m_hasDropped = false;
};

void tellBoxes(const WatchRun &run)
{
    const QVector<WatchRun::Result> results = run.results();
    for (const WatchRun::Result &result : results) {
        QJsonObject object{{QStringLiteral("box"), result.box.address},
                           {QStringLiteral("ok"), result.error.isEmpty()},
                           {QStringLiteral("reports"), result.reports}};
        if (!result.error.isEmpty()) {
            object.insert(QStringLiteral("error"), result.error);
        }
        Output::json(object);
    }
}

int run(const Call &call)
{
    const std::optional<RecordingTarget> target = targetOf(call);
    if (!target) {
        return WrongCall;
    }
    int status = AllDone;
    const std::unique_ptr<WatchRun> run = WatchRun::make(call, &status);
    if (!run) {
        return status;
    }
    Recording recording(*target, run.get());
    status = run->run(true);
    const bool json = call.isSet("json");
    if (json) {
        tellBoxes(*run);
    }
    return recording.finish(status, json);
}

} // namespace

Command recordCommand()
{
    return {"record",
            "BOX... --to DATABASE",
            "Record what each Box reports into a database, until Ctrl+C.",
            "DATABASE is sqlite:FILE, a file that is made where there is none, or\n"
            "postgresql://user@host:port/database. A password is left to ~/.pgpass or to the\n"
            "variable PGPASSWORD. It is what the window records, too, and opens as a trend;\n"
            "several recordings may go into one database. At the end it prints how many\n"
            "samples are recorded; with --json an object a Box, with the keys box, ok, error\n"
            "and reports, and that number on the standard error.\n"
            "\n"
            "A database that can't be written at first ends it. One that fails later, as on\n"
            "a full disk, is told and tried again every few seconds; up to 32 MiB wait\n"
            "meanwhile. Links are tried again as by watch, and the recording tells when\n"
            "there was none. Ends with 1 if samples are lost, or if the link to a Box is\n"
            "missing at the end. A Box may name 100000 Standards and points, or 16 MiB of\n"
            "names; what it names beyond is told and lost.",
            QList<QCommandLineOption>{{"to", "Record into this database.", "database"}} + WatchRun::options()
                + QList<QCommandLineOption>{{"json", "Print one JSON object a Box at the end."}},
            run};
}
