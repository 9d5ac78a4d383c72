#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

class QJsonObject;

// The wire as a Box sees it. It shares no code with the tool's own frames, so that a mistake in one of the
// two shows against the other.
//
// Frame: 12 34, command (2, big-endian), total length (2, little-endian), body, 56 78.
namespace Wire {

constexpr int minFrame = 8;
constexpr int maxFrame = 0xffff;
constexpr int segmentText = 1024; // text a monitoring segment holds, and file bytes a chunk holds
constexpr int digestSize = 16;    // MD5

// Offsets from the first byte of a frame, and what a frame has besides its text or data.
constexpr int bodyOffset = 6;
constexpr int jsonTextOffset = 8;
constexpr int jsonOverhead = 10;
// Of a chunk, a checksum, a verdict or a monitoring segment.
constexpr int subTypeOffset = 6;
constexpr int totalOffset = 7;
constexpr int sizeOffset = 11;
constexpr int numberOffset = 13;
constexpr int dataOffset = 17;
constexpr int chunkOverhead = 19;
constexpr int digestOffset = 12;
constexpr int checksumOverhead = 14;
constexpr int verdictOffset = 7;
constexpr int verdictSize = 10;

enum Command {
    Heartbeat = 0x0100,
    HeartbeatReply = 0x0200,
    Project = 0x0300,
    Program = 0x0400,
    Json = 0x0500,
    Monitoring = 0x0600,
};

// The number of width bytes at offset, low byte first. The caller has checked that they are there.
quint32 number(const QByteArray &bytes, int offset, int width);
// The number as width bytes, low byte first.
QByteArray numberBytes(quint32 value, int width);
// The command of a whole frame.
int command(const QByteArray &frame);

// A frame around body, which is at most 65527 bytes.
QByteArray frame(int command, const QByteArray &body);
// 0x0200: three counted texts of at most 127 bytes each.
QByteArray heartbeatAnswer(const QString &version, const QString &serialNumber, const QString &model);
// 0x0500 around an object of at most 65525 bytes of compact text.
QByteArray jsonAnswer(const QJsonObject &object);
// The 10 bytes that end a transfer; result 0 is success.
QByteArray verdict(int command, quint8 result);

// One report cut into 0x0600 frames of segmentSize bytes of text, the last shorter, numbered from 1. A text
// without a byte gives no frame. wrongTotal and wrongNumber: -1 for none, 0 for all, else the segment whose
// field is one too high.
QVector<QByteArray> segments(const QByteArray &text, int segmentSize, int wrongTotal, int wrongNumber);

// The only datagram that a Box answers.
QByteArray searchRequest();
// Its answer: IP and mask as text in 16 bytes each, then the counted model.
QByteArray searchAnswer(const QString &ip, const QString &mask, const QString &model);

} // namespace Wire
