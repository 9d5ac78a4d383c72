#pragma once

#include <QByteArray>

// Frames put together by hand, without the code that they test.
namespace HandFrames {

inline QByteArray hex(const char *bytes)
{
    return QByteArray::fromHex(bytes);
}

inline QByteArray little(quint32 value, int width)
{
    QByteArray bytes;
    for (int i = 0; i < width; ++i) {
        bytes.append(char(value >> (8 * i)));
    }
    return bytes;
}

// A frame around a body, its length counted; the command as the two bytes on the wire.
inline QByteArray frame(const char *command, const QByteArray &body)
{
    return hex("12 34") + hex(command) + little(quint32(body.size() + 8), 2) + body + hex("56 78");
}

// The frame of a JSON command around its text.
inline QByteArray json(const QByteArray &text)
{
    return frame("05 00", little(quint32(text.size()), 2) + text);
}

// What a Box at the address answers to a search.
inline QByteArray foundBox(const QByteArray &ip)
{
    return hex("12 34 ff ff") + ip.leftJustified(16, '\0')
        + QByteArray("255.255.255.0").leftJustified(16, '\0') + "\x0BMRN-GATE-70";
}

inline const QByteArray heartbeat = hex("12 34 01 00 08 00 56 78");
inline const QByteArray verdictOfSuccess = hex("12 34 03 00 0a 00 03 00 56 78"); // on a project

} // namespace HandFrames
