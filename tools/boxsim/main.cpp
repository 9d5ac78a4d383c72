#include "boxsim/boxrange.h"
#include "boxsim/commandline.h"
#include "boxsim/eventlog.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>
#include <QTimer>

#include <csignal>
#include <cstdio>

#ifdef Q_OS_UNIX
#include <sys/resource.h>
#endif

namespace {

enum ExitStatus { Ended = 0, CouldNotStart = 1, WrongCommandLine = 2 };

constexpr int signalCheck = 50; // milliseconds

volatile std::sig_atomic_t stopAsked = 0;

void askStop(int)
{
    stopAsked = 1;
}

// Many Boxes have more connections than a process may usually have files.
void raiseFileLimit()
{
#ifdef Q_OS_UNIX
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
#endif
}

int tell(FILE *stream, const QString &text, ExitStatus status)
{
    fprintf(stream, "%s\n", text.toLocal8Bit().constData());
    fflush(stream);
    return status;
}

bool readFile(const QString &path, QByteArray *bytes, QString *error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QStringLiteral("%1: %2").arg(path, file.errorString());
        return false;
    }
    *bytes = file.readAll();
    return true;
}

// The name of a Box in the log, and of its folder; empty for one alone.
QString nameOf(const BoxSim &box, const CommandLine &line)
{
    return line.boxCount == 1 ? QString() : box.options().address.toString();
}

void keepFiles(BoxSim *box, EventLog *log, const QString &boxName, const QString &folder)
{
    const auto keep = [=](const QString &fileName) {
        return [=, path = QDir(folder).filePath(fileName)](const QByteArray &bytes) {
            QSaveFile file(path);
            const bool kept =
                file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
            log->line(boxName,
                      kept ? QStringLiteral("saved %1").arg(path)
                           : QStringLiteral("could not save %1: %2").arg(path, file.errorString()));
        };
    };
    QObject::connect(box, &BoxSim::projectAccepted, log, keep(QStringLiteral("project.json")));
    QObject::connect(box, &BoxSim::programAccepted, log, keep(QStringLiteral("program.bin")));
}

// False, told, if a folder cannot be made.
bool keepFilesOfAll(const BoxRange &boxes, EventLog *log, const CommandLine &line)
{
    for (const auto &box : boxes.boxes()) {
        const QString name = nameOf(*box, line);
        const QString folder = name.isEmpty() ? line.saveFolder : QDir(line.saveFolder).filePath(name);
        if (!QDir().mkpath(folder)) {
            tell(stderr, QStringLiteral("boxsim: cannot make ") + folder, CouldNotStart);
            return false;
        }
        keepFiles(box.get(), log, name, folder);
    }
    return true;
}

void endByItself(BoxRange *boxes, const CommandLine &line, QTimer *signalTimer)
{
    if (line.once) {
        QObject::connect(boxes, &BoxRange::connectionClosed, boxes, [boxes] {
            if (!boxes->isConnected()) {
                QCoreApplication::quit();
            }
        });
    }
    if (line.seconds > 0) {
        QTimer::singleShot(line.seconds * 1000, boxes, &QCoreApplication::quit);
    }
    std::signal(SIGINT, askStop);
    std::signal(SIGTERM, askStop);
    // A signal handler may do no more than set a flag, so somebody has to look at it.
    QObject::connect(signalTimer, &QTimer::timeout, boxes, [] {
        if (stopAsked != 0) {
            QCoreApplication::quit();
        }
    });
    signalTimer->start(signalCheck);
}

int run(CommandLine line)
{
    QString error;
    if (!line.projectFile.isEmpty() && !readFile(line.projectFile, &line.options.project, &error)) {
        return tell(stderr, QStringLiteral("boxsim: ") + error, CouldNotStart);
    }
    BoxRange boxes(line.options, line.boxCount);
    EventLog log(line.quiet, line.hex);
    for (const auto &box : boxes.boxes()) {
        log.watch(box.get(), nameOf(*box, line));
    }
    if (!line.saveFolder.isEmpty() && !keepFilesOfAll(boxes, &log, line)) {
        return CouldNotStart;
    }
    if (!line.logFile.isEmpty() && !log.openFile(line.logFile)) {
        return tell(stderr, QStringLiteral("boxsim: %1: %2").arg(line.logFile, log.errorString()),
                    CouldNotStart);
    }
    raiseFileLimit();
    if (!boxes.start()) {
        return tell(stderr, QStringLiteral("boxsim: ") + boxes.errorString(), CouldNotStart);
    }
    for (const auto &box : boxes.boxes()) {
        tell(stdout,
             QStringLiteral("listening on %1:%2").arg(box->options().address.toString()).arg(box->port()),
             Ended);
    }
    QTimer signalTimer;
    endByItself(&boxes, line, &signalTimer);
    const int status = QCoreApplication::exec();
    boxes.stop();
    return status;
}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("boxsim"));
    QCoreApplication::setApplicationVersion(QStringLiteral(BOXSIM_VERSION));
    const CommandLine line = readCommandLine(QCoreApplication::arguments());
    switch (line.action) {
    case CommandLine::Action::Run:
        return run(line);
    case CommandLine::Action::Wrong:
        return tell(stderr, QStringLiteral("boxsim: %1\nTry --help.").arg(line.text), WrongCommandLine);
    default:
        return tell(stdout, line.text, Ended);
    }
}
