#pragma once

#include <QByteArray>
#include <QString>

// The datagrams by which Boxes are found. They share the header, the footer and the port with the frames of
// the TCP link, but have no length field.
namespace Discovery {

// The 16 bytes that are broadcast: header, 0x00 0x00, the ASCII text "Search Box", footer.
QByteArray request();

struct Answer {
    bool valid = false; // false: not an answer of a Box, the texts are empty
    QString ip;
    QString mask;
    QString model;
};

// Reads a Box's answer:
//   0   2   header 0x12 0x34
//   2   2   0xFF 0xFF
//   4   16  IP address, Latin-1 text up to the first NUL, white space around it cut
//   20  16  subnet mask, likewise
//   36  1   M, length of the model text
//   37  M   model text, likewise; what is there of it if the datagram ends before
// Nothing behind these fields is read. A datagram of fewer than 38 bytes is no answer.
Answer parseAnswer(const QByteArray &datagram);

} // namespace Discovery
