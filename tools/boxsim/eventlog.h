#pragma once

#include "boxsim/boxsim.h"

#include <QFile>
#include <QObject>

// Writes what a simulated Box sees, one line an event: time, peer, direction, what it says.
//   2024-05-01 12:00:00.123 127.0.0.1:43210 -> read LAN: {"pares":{},"type":"2"}
// "->" came from the peer, "<-" went to it, "!!" is what a Box does not expect, "--" is about the connection
// or the Box itself. Asked for bytes, it writes those of a frame below its line, 16 a line:
//     0000  12 34 01 00 08 00 56 78                          .4....Vx
class EventLog : public QObject
{
    Q_OBJECT

public:
    // Writes to standard output unless quiet, bytes as well with hex. The Box is not owned and outlives the
    // log.
    EventLog(BoxSim *box, bool quiet, bool hex, QObject *parent = nullptr);

    // Appends to this file as well. False if it cannot be opened, see errorString().
    bool openFile(const QString &path);
    QString errorString() const { return m_file.errorString(); }

    // One line of its own, without a peer.
    void line(const QString &text);

private:
    void write(const QString &peer, const char *mark, const QString &text);
    void writeFrame(const char *mark, const BoxSimFrame &frame);
    void put(const QByteArray &lines);

    bool m_quiet;
    bool m_hex;
    QFile m_file;
};
