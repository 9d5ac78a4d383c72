#include "boxsim/eventlog.h"

#include <QDateTime>

#include <cstdio>

namespace {

constexpr int bytesALine = 16;

QByteArray hexLines(const QByteArray &bytes)
{
    QByteArray lines;
    for (int at = 0; at < bytes.size(); at += bytesALine) {
        QByteArray part = bytes.mid(at, bytesALine);
        const QByteArray digits = part.toHex(' ').leftJustified(3 * bytesALine);
        for (char &c : part) {
            c = c >= ' ' && c <= '~' ? c : '.';
        }
        lines +=
            "    " + QByteArray::number(at, 16).rightJustified(4, '0') + "  " + digits + ' ' + part + '\n';
    }
    return lines;
}

} // namespace

EventLog::EventLog(bool quiet, bool hex, QObject *parent)
    : QObject(parent)
    , m_quiet(quiet)
    , m_hex(hex)
{
}

void EventLog::watch(BoxSim *box, const QString &name)
{
    connect(box, &BoxSim::connectionOpened, this,
            [=](const QString &peer) { write(name, peer, "--", QStringLiteral("connected")); });
    connect(box, &BoxSim::connectionClosed, this,
            [=](const QString &peer) { write(name, peer, "--", QStringLiteral("gone")); });
    connect(box, &BoxSim::frameReceived, this,
            [=](const BoxSimFrame &frame) { writeFrame(name, "->", frame); });
    connect(box, &BoxSim::frameSent, this, [=](const BoxSimFrame &frame) { writeFrame(name, "<-", frame); });
    connect(box, &BoxSim::violation, this,
            [=](const QString &peer, const QString &text) { write(name, peer, "!!", text); });
    connect(box, &BoxSim::searched, this,
            [=](const QString &peer) { write(name, peer, "->", QStringLiteral("search")); });
    connect(box, &BoxSim::projectAccepted, this, [=](const QByteArray &bytes) {
        line(name, QStringLiteral("project accepted, %1 bytes").arg(bytes.size()));
    });
    connect(box, &BoxSim::programAccepted, this, [=](const QByteArray &bytes) {
        line(name, QStringLiteral("program accepted, %1 bytes").arg(bytes.size()));
    });
    connect(box, &BoxSim::projectStarted, this, [=](const QString &project, const QStringList &standards) {
        line(name,
             QStringLiteral("runs project \"%1\": %2").arg(project, standards.join(QStringLiteral(", "))));
    });
    connect(box, &BoxSim::acquisitionTold, this, [=](const QString &text) { line(name, text); });
    connect(box, &BoxSim::rebooting, this, [=] { line(name, QStringLiteral("goes down for a reboot")); });
    connect(box, &BoxSim::backFromReboot, this,
            [=] { line(name, QStringLiteral("is back from the reboot")); });
}

bool EventLog::openFile(const QString &path)
{
    m_file.setFileName(path);
    return m_file.open(QIODevice::Append | QIODevice::Text);
}

void EventLog::line(const QString &name, const QString &text)
{
    write(name, QStringLiteral("box"), "--", text);
}

void EventLog::write(const QString &name, const QString &peer, const char *mark, const QString &text)
{
    if (m_quiet && !m_file.isOpen()) {
        return;
    }
    QString clean = text;
    for (QChar &c : clean) { // what a peer sends must not break the line or the terminal
        c = c.isPrint() ? c : QChar(QLatin1Char('?'));
    }
    put(QStringLiteral("%1 %2 %3 %4\n")
            .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")),
                 name.isEmpty() ? peer : name + QLatin1Char(' ') + peer, QLatin1String(mark), clean)
            .toUtf8());
}

void EventLog::writeFrame(const QString &name, const char *mark, const BoxSimFrame &frame)
{
    write(name, frame.peer, mark, frame.text);
    if (m_hex) {
        put(hexLines(frame.bytes));
    }
}

void EventLog::put(const QByteArray &lines)
{
    if (!m_quiet) {
        fputs(lines.constData(), stdout);
        fflush(stdout);
    }
    if (m_file.isOpen()) {
        m_file.write(lines);
        m_file.flush();
    }
}
