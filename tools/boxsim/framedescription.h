#pragma once

#include <QByteArray>
#include <QMetaType>
#include <QString>

// One whole frame on the wire, either way.
struct BoxSimFrame {
    QString peer; // "address:port" of the tool
    int command = 0;
    QByteArray bytes; // header to footer; cut short only by the fault of a partial verdict
    QString text;     // what it says, in one line
};
Q_DECLARE_METATYPE(BoxSimFrame)

// One readable line on a whole frame: its command by name and what its body says, cut to a few hundred
// characters. Never fails: a body that does not fit its command is shown in hexadecimal.
QString describeFrame(const QByteArray &frame);

// bytes with command and text filled in; at least 4 bytes.
BoxSimFrame decodedFrame(const QString &peer, const QByteArray &bytes);
