#pragma once

#include <QByteArray>
#include <QtGlobal>

class QJsonObject;

// All constants of the wire between the tool and a Box, and the builders of what the tool sends.
//
// Every frame over TCP, offsets from its first byte:
//   0  2  header 0x12 0x34
//   2  2  command, big-endian: the one number that is, and a Box depends on it
//   4  2  total length of the frame, header and footer included, little-endian
//   6  n  body, by command; numbers in it are little-endian
//   .  2  footer 0x56 0x78
namespace Frame {

constexpr quint16 boxPort = 30088; // TCP and UDP alike

constexpr char header0 = 0x12;
constexpr char header1 = 0x34;
constexpr char footer0 = 0x56;
constexpr char footer1 = 0x78;

constexpr int commandOffset = 2;
constexpr int lengthOffset = 4;
constexpr int bodyOffset = 6;
constexpr int headerSize = 2;
constexpr int footerSize = 2;
constexpr int minimumSize = bodyOffset + footerSize; // a frame without a body

enum Command : quint16 {
    HeartbeatRequest = 0x0100,
    HeartbeatAnswer = 0x0200,
    ProjectTransfer = 0x0300, // on a connection of its own
    ProgramTransfer = 0x0400, // on a connection of its own
    JsonCommand = 0x0500,
    MonitoringSegment = 0x0600,
};

// Heartbeat answer: three texts in UTF-8 (version, serial number, model), each behind one length byte.

// JSON body: 6 2 length of the text, 8 n the text in UTF-8, an object with "type" and "pares" or "code".
constexpr int jsonTextOffset = 8;
constexpr int jsonOverhead = 10; // a JSON frame without its text

// The "type" of a JSON command. A read and the reboot send it as a JSON string, a write sends it as a JSON
// number, and every answer has it as a string: the Box expects it so.
enum JsonType {
    LanRead = 2,
    WanRead = 3,
    WifiRead = 4,
    LteRead = 5,
    DeviceReboot = 6,
    NtpRead = 8,
    TimeRead = 9,
    LanWrite = 102,
    WanWrite = 103,
    WifiWrite = 104,
    LteWrite = 105,
    NtpWrite = 108,
    TimeWrite = 109,
};

// Transfer and monitoring body:
//   6   1  sub-type
//   7   4  total size of the file or text
//   11  2  size of this chunk or segment; in a checksum frame one byte, the digest's length
//   13  4  number of this chunk or segment, from 1; in a checksum frame the digest begins at 12
//   17  n  the bytes
constexpr char chunkSubType = 1;
constexpr char checksumSubType = 2;
constexpr char verdictSubType = 3;
constexpr int totalOffset = 7;
constexpr int chunkSizeOffset = 11;
constexpr int chunkNumberOffset = 13;
constexpr int chunkDataOffset = 17;
constexpr int chunkOverhead = 19;    // a chunk frame without its data
constexpr int checksumOverhead = 14; // a checksum frame without its digest
constexpr int chunkSize = 1024;      // every chunk and segment but the last

// Verdict of a transfer: 6 1 sub-type 3, 7 1 result with 0 for success.
constexpr int verdictSize = 10;
constexpr int verdictSubTypeOffset = 6;
constexpr int verdictResultOffset = 7;

constexpr int carryCapacity = 4096; // the longest frame that may arrive in pieces

// Little-endian numbers at p; the command alone is big-endian.
quint16 readLittle16(const char *p);
quint32 readLittle32(const char *p);
quint16 readCommand(const char *frame);

// The 8 bytes of a heartbeat request.
QByteArray heartbeatFrame();
// The frame of one JSON request. The lengths are 16 bits wide; a text past 65525 bytes would wrap.
QByteArray buildJsonFrame(const QJsonObject &request);
// One chunk of a file: total and number as the wire has them, chunk of 1 to 1024 bytes.
QByteArray chunkFrame(Command command, quint32 total, quint32 number, const QByteArray &chunk);
// The digest that ends a file: total as the wire has it, digest of up to 255 raw bytes.
QByteArray checksumFrame(Command command, quint32 total, const QByteArray &digest);

} // namespace Frame
