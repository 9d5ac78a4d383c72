#include "boxsim/eventlog.h"

#include <QDateTime>

#include <cstdio>

EventLog::EventLog(BoxSim *box, bool quiet, QObject *parent)
    : QObject(parent)
    , m_quiet(quiet)
{
    connect(box, &BoxSim::connectionOpened, this,
            [this](const QString &peer) { write(peer, "--", QStringLiteral("connected")); });
    connect(box, &BoxSim::connectionClosed, this,
            [this](const QString &peer) { write(peer, "--", QStringLiteral("gone")); });
    connect(box, &BoxSim::frameReceived, this,
            [this](const BoxSimFrame &frame) { write(frame.peer, "->", frame.text); });
    connect(box, &BoxSim::frameSent, this,
            [this](const BoxSimFrame &frame) { write(frame.peer, "<-", frame.text); });
    connect(box, &BoxSim::violation, this,
            [this](const QString &peer, const QString &text) { write(peer, "!!", text); });
    connect(box, &BoxSim::searched, this,
            [this](const QString &peer) { write(peer, "->", QStringLiteral("search")); });
    connect(box, &BoxSim::projectAccepted, this, [this](const QByteArray &bytes) {
        line(QStringLiteral("project accepted, %1 bytes").arg(bytes.size()));
    });
    connect(box, &BoxSim::programAccepted, this, [this](const QByteArray &bytes) {
        line(QStringLiteral("program accepted, %1 bytes").arg(bytes.size()));
    });
    connect(box, &BoxSim::projectStarted, this, [this](const QString &name, const QStringList &standards) {
        line(QStringLiteral("runs project \"%1\": %2").arg(name, standards.join(QStringLiteral(", "))));
    });
    connect(box, &BoxSim::rebooting, this, [this] { line(QStringLiteral("goes down for a reboot")); });
    connect(box, &BoxSim::backFromReboot, this, [this] { line(QStringLiteral("is back from the reboot")); });
}

bool EventLog::openFile(const QString &path)
{
    m_file.setFileName(path);
    return m_file.open(QIODevice::Append | QIODevice::Text);
}

void EventLog::line(const QString &text)
{
    write(QStringLiteral("box"), "--", text);
}

void EventLog::write(const QString &peer, const char *mark, const QString &text)
{
    QString clean = text;
    for (QChar &c : clean) {
        c = c.isPrint()
            ? c
            : QChar(QLatin1Char('?')); // what a peer sends must not break the line or the terminal
    }
    const QByteArray line =
        QStringLiteral("%1 %2 %3 %4\n")
            .arg(QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss.zzz")), peer,
                 QLatin1String(mark), clean)
            .toUtf8();
    if (!m_quiet) {
        fputs(line.constData(), stdout);
        fflush(stdout);
    }
    if (m_file.isOpen()) {
        m_file.write(line);
        m_file.flush();
    }
}
