#pragma once

#include <QProcess>
#include <QTest>

#include <memory>

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

inline Outcome run(const QStringList &arguments)
{
    QProcess process;
    process.start(QString(BOXCTL_PROGRAM), arguments, QIODevice::ReadOnly);
    if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit) {
        return {-1, QString::fromUtf8(process.readAllStandardOutput()), process.errorString()};
    }
    return {process.exitCode(), QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

// A simulated Box; ends the test program's run of it with the object.
class SimulatedBox
{
public:
    explicit SimulatedBox(const QString &address, const QStringList &options = {})
    {
        m_process.start(QString(BOXSIM_PROGRAM),
                        QStringList{"--address", address, "--no-discovery", "--report-interval", "0"}
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

private:
    QProcess m_process;
};

} // namespace BoxCtl
