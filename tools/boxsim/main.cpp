#include "boxsim/boxsim.h"
#include "boxsim/commandline.h"
#include "boxsim/eventlog.h"

#include <QCoreApplication>
#include <QDir>
#include <QSaveFile>
#include <QTimer>

#include <csignal>
#include <cstdio>

namespace {

enum ExitStatus { Ended = 0, CouldNotStart = 1, WrongCommandLine = 2 };

constexpr int signalCheck = 50; // milliseconds

volatile std::sig_atomic_t stopAsked = 0;

void askStop(int)
{
    stopAsked = 1;
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

void keepFiles(BoxSim *box, EventLog *log, const QString &folder)
{
    const auto keep = [log, folder](const QString &name) {
        return [log, path = QDir(folder).filePath(name)](const QByteArray &bytes) {
            QSaveFile file(path);
            const bool kept =
                file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
            log->line(kept ? QStringLiteral("saved %1").arg(path)
                           : QStringLiteral("could not save %1: %2").arg(path, file.errorString()));
        };
    };
    QObject::connect(box, &BoxSim::projectAccepted, log, keep(QStringLiteral("project.json")));
    QObject::connect(box, &BoxSim::programAccepted, log, keep(QStringLiteral("program.bin")));
}

void endByItself(BoxSim *box, const CommandLine &line, QTimer *signalTimer)
{
    if (line.once) {
        QObject::connect(box, &BoxSim::connectionClosed, box, [box] {
            if (box->connectionCount() == 0) {
                QCoreApplication::quit();
            }
        });
    }
    if (line.seconds > 0) {
        QTimer::singleShot(line.seconds * 1000, box, &QCoreApplication::quit);
    }
    std::signal(SIGINT, askStop);
    std::signal(SIGTERM, askStop);
    // A signal handler may do no more than set a flag, so somebody has to look at it.
    QObject::connect(signalTimer, &QTimer::timeout, box, [] {
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
    if (!line.saveFolder.isEmpty() && !QDir().mkpath(line.saveFolder)) {
        return tell(stderr, QStringLiteral("boxsim: cannot make ") + line.saveFolder, CouldNotStart);
    }
    BoxSim box(line.options);
    EventLog log(&box, line.quiet, line.hex);
    if (!line.logFile.isEmpty() && !log.openFile(line.logFile)) {
        return tell(stderr, QStringLiteral("boxsim: %1: %2").arg(line.logFile, log.errorString()),
                    CouldNotStart);
    }
    if (!line.saveFolder.isEmpty()) {
        keepFiles(&box, &log, line.saveFolder);
    }
    if (!box.start()) {
        return tell(stderr, QStringLiteral("boxsim: ") + box.errorString(), CouldNotStart);
    }
    tell(stdout, QStringLiteral("listening on %1:%2").arg(line.options.address.toString()).arg(box.port()),
         Ended);
    QTimer signalTimer;
    endByItself(&box, line, &signalTimer);
    const int status = QCoreApplication::exec();
    box.stop();
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
