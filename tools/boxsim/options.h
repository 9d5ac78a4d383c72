#pragma once

#include "boxsim/acquire/acquisition.h"

#include <QByteArray>
#include <QHostAddress>
#include <QMap>
#include <QString>

// What the answer to a transfer's checksum looks like.
enum class BoxSimVerdict {
    Honest,       // what the digest says
    Bad,          // result 1, whatever the digest says
    WrongCommand, // the other transfer's command
    WrongSubType, // sub-type 2 in place of 3
    WrongHeader,  // 0x12 0x35
    Partial,      // the first 5 bytes, then nothing
    TooLong,      // one byte behind the 10
    None,         // no answer
};

// How the Box misbehaves. Everything at its default is a Box without a fault. Times in milliseconds.
struct BoxSimFaults {
    bool silent = false;       // accepts, reads, never sends a byte
    bool noHeartbeat = false;  // 0x0100 stays without an answer
    bool noJson = false;       // 0x0500 stays without an answer
    bool noDiscovery = false;  // search datagrams stay without an answer
    int lateHeartbeat = 0;     // waits before each heartbeat answer
    int lateJson = 0;          // waits before each JSON answer
    int lateVerdict = 0;       // waits before each verdict
    int split = 0;             // cuts all that is sent into pieces of so many bytes; 0 does not
    int splitGap = 0;          // waits between two such pieces
    int join = 0;              // gathers what is sent for so long, then sends it in one piece
    int noise = 0;             // bytes of noise before each frame, never a header in them
    int dropAfterReceived = 0; // ends a connection after so many bytes from it; 0 does not
    int dropAfterSent = 0;     // ends a connection after so many bytes to it; 0 does not
    bool refuseSecond = false; // a second connection is refused while there is one

    BoxSimVerdict verdict = BoxSimVerdict::Honest;
    // Request type to the code that refuses it; type 0 stands for every write and the reboot.
    QMap<int, QString> refusedWrites;
    bool typeAsNumber = false; // JSON answers carry type as a number
    bool codeAsNumber = false; // JSON answers carry code as a number
    QString missingKey;        // read answers lack this key
    QString numberKey;         // read answers have a number for this key
    bool capitals = false;     // read answers have ON and OFF for on and off
    bool ignoreWrites = false; // writes are answered and not carried out

    // -1 for none, 0 for every segment of a report, else the number of the one to spoil.
    int wrongTotal = -1;     // the announced total is one byte too many
    int wrongNumber = -1;    // the segment number is one too high
    int segmentSize = 0;     // bytes of text a segment in place of 1024; 0 leaves the 1024
    int flood = 0;           // so many reports a second, whatever the interval says; 0 does not
    bool interleave = false; // the segments of all Standards' reports are mixed
    int invalidEvery = 0;    // every so-manieth point is reported as not valid; 0 for none
};

// What a simulated Box is. Sizes in bytes, times in milliseconds.
struct BoxSimOptions {
    QHostAddress address = QHostAddress(QHostAddress::LocalHost); // TCP, and UDP unless told otherwise
    quint16 port = 30088;                                         // TCP and UDP; 0 lets the system choose
    bool discovery = true;                                        // whether UDP is served at all
    QHostAddress discoveryAddress; // null: same as address. 0.0.0.0 hears broadcasts.

    // The heartbeat answer's texts; together at most 116 bytes, since the answer stays under 128.
    QString version = QStringLiteral("1.0.0");
    QString serialNumber = QStringLiteral("SIM00000001");
    QString model = QStringLiteral("MRN-GATE-70");

    QMap<QString, QString> settings; // wire key ("lanIp", "NTP", ...) to its first value
    QByteArray project;              // document to run from the start; empty for none
    quint32 seed = 1;                // same seed, same project: same values
    // Between two reports of a Standard. -1: the Standard's own collectionInterval. 0: only on reportNow().
    int reportInterval = -1;
    AcquireOptions acquire; // values are made up unless it is on
    int rebootTime = 2000;  // how long a reboot keeps the Box off the network; 0 keeps it on

    int maxFileSize = 64 * 1024 * 1024;
    int maxQueued = 16 * 1024 * 1024; // unsent bytes a connection; reports beyond are dropped
    int maxConnections = 8;           // further ones are closed at once

    BoxSimFaults faults;
};
