#pragma once

#include "boxsim/boxsim.h"

#include <QFile>
#include <QObject>

// Writes what simulated Boxes see, one line an event: time, peer, direction, what it says.
//   2024-05-01 12:00:00.123 127.0.0.1:43210 -> read LAN: {"pares":{},"type":"2"}
// A Box among others has its name before the peer.
// "->" came from the peer, "<-" went to it, "!!" is what a Box does not expect, "--" is about the connection
// or the Box itself. Asked for bytes, it writes those of a frame below its line, 16 a line:
//     0000  12 34 01 00 08 00 56 78                          .4....Vx
class EventLog : public QObject
{
    Q_OBJECT

public:
    // Writes to standard output unless quiet, bytes as well with hex.
    EventLog(bool quiet, bool hex, QObject *parent = nullptr);

    // Writes what this Box sees, which is not owned and outlives the log. The name is empty for one alone.
    void watch(BoxSim *box, const QString &name);

    // Appends to this file as well. False if it cannot be opened, see errorString().
    bool openFile(const QString &path);
    QString errorString() const { return m_file.errorString(); }

    // A line about the Box of that name itself, without a peer.
    void line(const QString &name, const QString &text);

private:
    void write(const QString &name, const QString &peer, const char *mark, const QString &text);
    void writeFrame(const QString &name, const char *mark, const BoxSimFrame &frame);
    void put(const QByteArray &lines);

    bool m_quiet;
    bool m_hex;
    QFile m_file;
};
