#pragma once

#include "files.h"

#include <QProcess>
#include <QTest>

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

inline Outcome run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments, QIODevice::ReadOnly);
    // Boxes that live in the test answer meanwhile.
    const auto hasEnded = [&process] { return process.state() == QProcess::NotRunning; };
    if (!QTest::qWaitFor(hasEnded, 60000) || process.exitStatus() != QProcess::NormalExit
        || process.error() == QProcess::FailedToStart) {
        return {-1, QString::fromUtf8(process.readAllStandardOutput()), process.errorString()};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

inline Outcome run(const QStringList &arguments)
{
    return run(QString(BOXCTL_PROGRAM), arguments);
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

// A call of the program on a terminal of its own, on which something is typed once it asks.
inline Outcome runOnTerminal(const QStringList &arguments, const QByteArray &question,
                             const QByteArray &typed)
{
    QProcess process;
    process.start("script",
                  {"--quiet", "--return", "--command",
                   QString(BOXCTL_PROGRAM) + QLatin1Char(' ') + arguments.join(QLatin1Char(' ')),
                   "typescript"});
    if (QTest::qWaitFor([&] { return process.peek(10000).contains(question); }, 60000)) {
        process.write(typed);
    }
    if (!QTest::qWaitFor([&process] { return process.state() == QProcess::NotRunning; }, 60000)) {
        return {-1, QString::fromUtf8(process.readAllStandardOutput()), process.errorString()};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

} // namespace BoxCtl

Q_DECLARE_METATYPE(BoxCtl::Outcome)
