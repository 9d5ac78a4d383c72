#pragma once

#include <QDeadlineTimer>
#include <QDir>
#include <QProcess>
#include <QStandardPaths>

// The simulated meter as a process, with its line at one path for as long as a test needs it.
class MeterSim
{
public:
    ~MeterSim() { stop(); }

    // Why there can be none here; empty if there can.
    static QString whyNot()
    {
#ifdef Q_OS_UNIX
        return QStandardPaths::findExecutable("python3").isEmpty() ? "python3 is not installed" : QString();
#else
        return "there are no pseudo-terminals here";
#endif
    }

    static QString path()
    {
        return QDir::current().filePath("meter");
    }

    // Starts it with these arguments and waits until it is ready.
    bool start(const QStringList &arguments = {})
    {
        stop();
        m_process.start("python3",
                        QStringList{SOURCE_ROOT "/tools/metersim/metersim", "--link", path()} + arguments);
        return waitFor("meter on " + path().toUtf8());
    }

    void stop()
    {
        m_process.terminate();
        m_process.waitForFinished();
    }

    // Has it do what a line of its standard input says.
    bool tell(const QByteArray &command)
    {
        m_process.write(command + '\n');
        return waitFor(command);
    }
    // The same for a line that it does not take.
    bool refuses(const QByteArray &command, const QByteArray &why)
    {
        m_process.write(command + '\n');
        return waitFor("refused: " + why);
    }

    // What it was asked since the last call, a line a request: address and item.
    QStringList takeRequests()
    {
        m_process.waitForReadyRead(0);
        takeOutput();
        QStringList requests;
        for (const QByteArray &line : qAsConst(m_lines)) {
            if (line.startsWith("-> ")) {
                requests.append(QString::fromUtf8(line.mid(3)));
            }
        }
        m_lines.clear();
        return requests;
    }

private:
    void takeOutput()
    {
        while (m_process.canReadLine()) {
            m_lines.append(m_process.readLine().trimmed());
        }
    }
    bool waitFor(const QByteArray &line)
    {
        const QDeadlineTimer deadline(10000);
        do {
            takeOutput();
            if (m_lines.removeAll(line) > 0) {
                return true;
            }
        } while (m_process.waitForReadyRead(int(deadline.remainingTime())));
        return false;
    }

    QProcess m_process;
    QList<QByteArray> m_lines;
};
