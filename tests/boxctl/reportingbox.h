#pragma once

#include "boxctltest.h"
#include "fakebox.h"
#include "handframes.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <csignal>

// What the tests of reports share: Boxes that say what a test makes them say, and calls that go on meanwhile.
namespace BoxCtl {

inline const QByteArray heartbeatAnswer = HandFrames::hex("12 34 02 00 0c 00 01 31 00 00 56 78");

// The frames of a report's text, in segments of 1024 bytes.
inline QList<QByteArray> segments(const QByteArray &text)
{
    using namespace HandFrames;
    QList<QByteArray> frames;
    for (int at = 0; at < text.size(); at += 1024) {
        const QByteArray part = text.mid(at, 1024);
        frames.append(frame("06 00",
                            hex("01") + little(quint32(text.size()), 4) + little(quint32(part.size()), 2)
                                + little(quint32(frames.size() + 1), 4) + part));
    }
    return frames;
}

inline QJsonObject point(const char *name, const char *type, const char *value, const char *valid = "1")
{
    return {{"name", QString::fromUtf8(name)},
            {"addr", "7"},
            {"dataType", type},
            {"value", QString::fromUtf8(value)},
            {"valid", valid}};
}

inline QByteArray reportOf(const char *standard, const QJsonArray &points)
{
    return QJsonDocument(
               QJsonObject{{"projectName", "P"}, {"plcName", QString::fromUtf8(standard)}, {"datas", points}})
        .toJson(QJsonDocument::Compact);
}

inline QByteArray bytesOf(const QByteArray &report)
{
    QByteArray bytes;
    const QList<QByteArray> frames = segments(report);
    for (const QByteArray &one : frames) {
        bytes += one;
    }
    return bytes;
}

// A Box that answers heartbeats and sends these reports on each link.
class ReportingBox : public FakeBox
{
public:
    explicit ReportingBox(const QString &its, const QList<QByteArray> &reports = {})
        : FakeBox(its)
    {
        heard = [this, reports](int link) {
            send(link, heartbeatAnswer);
            for (const QByteArray &report : reports) {
                send(link, bytesOf(report));
            }
        };
    }
};

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
    Outcome outcome()
    {
        const bool hasEnded =
            QTest::qWaitFor([this] { return m_process.state() == QProcess::NotRunning; }, 20000);
        return {hasEnded && m_process.exitStatus() == QProcess::NormalExit ? m_process.exitCode() : -1,
                QString::fromUtf8(out()), QString::fromUtf8(error())};
    }
    QProcess *process() { return &m_process; }

private:
    QProcess m_process;
    QByteArray m_out;
    QByteArray m_error;
};

} // namespace BoxCtl
