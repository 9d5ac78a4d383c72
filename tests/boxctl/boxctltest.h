#pragma once

#include "files.h"

#include <QProcess>
#include <QTest>

#include <csignal>

// What the tests of boxctl share: the program as a process, and simulated Boxes for it.
namespace BoxCtl {

// How a call ended, with all that it printed.
struct Outcome {
    int status = -1;
    QString out;
    QString error;

    bool operator==(const Outcome &other) const
    {
        return status == other.status && out == other.out && error == other.error;
    }
};

inline char *toString(const Outcome &outcome)
{
    return QTest::toString(
        QString("status %1\n%2--- standard error\n%3").arg(outcome.status).arg(outcome.out, outcome.error));
}

// A call that goes on while the test's own Boxes talk to it.
class RunningCall
{
public:
    explicit RunningCall(const QStringList &arguments)
        : RunningCall(QString(BOXCTL_PROGRAM), arguments)
    {
    }
    RunningCall(const QString &program, const QStringList &arguments)
    {
        m_process.start(program, arguments, QIODevice::ReadOnly);
    }

    QByteArray error()
    {
        m_error += m_process.readAllStandardError();
        return m_error;
    }
    QByteArray out()
    {
        m_out += m_process.readAllStandardOutput();
        return m_out;
    }
    void signal(int number) const { ::kill(pid_t(m_process.processId()), number); }
    bool isRunning() const { return m_process.state() == QProcess::Running; }
    // Waits for its end.
    Outcome outcome()
    {
        const bool hasEnded =
            QTest::qWaitFor([this] { return m_process.state() == QProcess::NotRunning; }, 60000);
        const bool isGood = hasEnded && m_process.exitStatus() == QProcess::NormalExit
            && m_process.error() != QProcess::FailedToStart;
        return {isGood ? m_process.exitCode() : -1, QString::fromUtf8(out()),
                isGood ? QString::fromUtf8(error()) : m_process.errorString()};
    }
    QProcess *process() { return &m_process; }

private:
    QProcess m_process;
    QByteArray m_out;
    QByteArray m_error;
};

inline Outcome run(const QString &program, const QStringList &arguments)
{
    return RunningCall(program, arguments).outcome();
}

inline Outcome run(const QStringList &arguments)
{
    return RunningCall(arguments).outcome();
}

// A simulated Box, which lives as long as the object.
class SimulatedBox
{
public:
    explicit SimulatedBox(const QString &address, const QStringList &options = {})
        : m_log(address + ".log")
    {
        QFile::remove(m_log);
        // It is quiet, since nobody empties its pipe while a call runs.
        m_process.start(QString(BOXSIM_PROGRAM),
                        QStringList{"--address", address, "--no-discovery", "--report-interval", "0",
                                    "--quiet", "--log", m_log}
                            + options,
                        QIODevice::ReadOnly);
        while (!m_process.peek(100).contains("listening on ")) {
            if (!m_process.waitForReadyRead(10000)) {
                qFatal("no simulated Box at %s", qPrintable(address));
            }
        }
    }
    ~SimulatedBox()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY(SimulatedBox)

    // True once the Box has logged a line with this text.
    bool hasHeard(const char *text) const
    {
        return QTest::qWaitFor([this, text] { return Files::contents(m_log).contains(text); });
    }

private:
    QString m_log;
    QProcess m_process;
};

// The program in a command of the shell.
inline QString boxctl()
{
    return "'" BOXCTL_PROGRAM "'";
}

// A command of the shell on a terminal of its own.
inline Outcome runOnTerminal(const QString &command)
{
    return run("script", {"--quiet", "--return", "--command", command, "typescript"});
}

// A call of the program on a terminal of its own, on which something is typed once it asks. No shell stays
// beside it: Ctrl+C would end that, too.
inline Outcome runOnTerminal(const QStringList &arguments, const QByteArray &question,
                             const QByteArray &typed)
{
    QProcess process;
    process.start("script",
                  {"--quiet", "--return", "--command",
                   "exec " + boxctl() + QLatin1Char(' ') + arguments.join(QLatin1Char(' ')), "typescript"});
    if (QTest::qWaitFor([&] { return process.peek(10000).contains(question); }, 60000)) {
        process.write(typed);
    }
    if (!QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, 60000)) {
        return {-1, QString::fromUtf8(process.readAllStandardOutput()), process.errorString()};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// What takes the lines of the progress off a terminal.
inline QString erasure(const QString &lines)
{
    return "\r\x1b[2K" + QString("\x1b[A\x1b[2K").repeated(lines.count(QLatin1Char('\n')));
}

} // namespace BoxCtl

Q_DECLARE_METATYPE(BoxCtl::Outcome)
