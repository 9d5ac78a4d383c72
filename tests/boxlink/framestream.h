#pragma once

// Frames by hand, the reader under test, and a second telling of its rules to compare it with.

#include "boxlink/frameassembler.h"

#include <QByteArray>
#include <QList>

#include <algorithm>
#include <limits>
#include <memory>

namespace FrameStream {

using Frames = QList<QByteArray>;

inline QByteArray hex(const char *bytes)
{
    return QByteArray::fromHex(bytes);
}

inline const QByteArray heartbeat = hex("12 34 01 00 08 00 56 78");
inline const QByteArray answer = hex("12 34 02 00 11 00 02 76 31 02 73 6e 02 6d 6f 56 78"); // v1, sn, mo
inline const QByteArray json = hex("12 34 05 00 17 00 0d 00") + "{\"type\":\"2\"} " + hex("56 78");
inline const QByteArray segment = hex("12 34 06 00 15 00 01 02 00 00 00 02 00 01 00 00 00 7b 7d 56 78");

inline QByteArray little16(int number)
{
    QByteArray bytes;
    bytes.append(char(number & 0xff)).append(char(number >> 8));
    return bytes;
}

// A frame of any size from 8 bytes on, for the reader only: its body holds no header.
inline QByteArray frameOfSize(int size)
{
    return hex("12 34 07 00") + little16(size) + QByteArray(size - 8, 'b') + hex("56 78");
}

// The reader under test with the frames that it gave. Each chunk lies in a block of exactly its own size, so
// that a sanitizer sees a read behind it.
class Reader
{
public:
    Reader()
        : assembler(
            [this](const char *frame, unsigned length) { frames.append(QByteArray(frame, int(length))); })
    {
    }
    void feed(const QByteArray &chunk)
    {
        const std::unique_ptr<char[]> block(new char[size_t(chunk.size())]);
        std::copy(chunk.begin(), chunk.end(), block.get());
        assembler.assemble(block.get(), unsigned(chunk.size()));
    }

    Frames frames;
    FrameAssembler assembler;
};

// The same rules once more, told in slices of byte arrays: what is kept, what is in hand, what is left.
class Model
{
public:
    void feed(const QByteArray &chunk)
    {
        if (chunk.isEmpty()) {
            return;
        }
        if (kept.isEmpty()) {
            fresh(chunk);
        } else {
            carried(chunk);
        }
    }

    Frames frames;

private:
    static int headerIn(const QByteArray &range)
    {
        return range == QByteArray("\x12") ? 0 : range.indexOf(QByteArray("\x12\x34"));
    }

    static int announced(const QByteArray &start)
    {
        return start.size() < 6 ? std::numeric_limits<int>::max() : uchar(start[4]) + 256 * uchar(start[5]);
    }

    static bool isWhole(const QByteArray &candidate)
    {
        return candidate.size() >= 8 && candidate.endsWith("Vx");
    }

    void fresh(QByteArray left)
    {
        kept.clear();
        for (int at = headerIn(left); at >= 0; at = headerIn(left)) {
            left = left.mid(at);
            const int size = announced(left);
            if (left.size() < 7 || (size > left.size() && left.size() <= 4096)) {
                kept = left;
                return;
            }
            const bool whole = size <= left.size() && isWhole(left.left(size));
            if (whole) {
                frames.append(left.left(size));
            }
            left = left.mid(whole ? size : 2);
        }
    }

    void carried(const QByteArray &chunk)
    {
        const QByteArray buffer = kept;
        QByteArray hand = kept;
        int place = 0; // of what is in hand within the buffer
        while (!hand.isEmpty()) {
            const QByteArray joined = hand + chunk;
            const int size = announced(joined);
            if (size > joined.size()) {
                if (headerIn(chunk) >= 0) {
                    break;
                }
                kept = buffer.left(hand.size()) + chunk;
                if (kept.size() > 4096) {
                    kept.clear();
                }
                return;
            }
            if (size > hand.size() && isWhole(joined.left(size))) {
                if (size > 4096) {
                    break;
                }
                frames.append(joined.left(size));
                fresh(chunk.mid(size - hand.size()));
                return;
            }
            const QByteArray behind = hand.mid(2);
            const int at = headerIn(behind);
            place += 2 + at;
            if (at < 0 || place + behind.size() > 4096) {
                break;
            }
            hand = behind.mid(at) + QByteArray(at, '\0');
        }
        fresh(chunk);
    }

    QByteArray kept;
};

// Chunks of a stream, cut before each of the given places.
inline QList<QByteArray> cut(const QByteArray &stream, const QList<int> &places)
{
    QList<QByteArray> chunks;
    int from = 0;
    const QList<int> ends = places + QList<int>{stream.size()};
    for (const int place : ends) {
        chunks.append(stream.mid(from, place - from));
        from = place;
    }
    return chunks;
}

inline Frames readerFrames(const QList<QByteArray> &chunks)
{
    Reader reader;
    for (const QByteArray &chunk : chunks) {
        reader.feed(chunk);
    }
    return reader.frames;
}

inline Frames modelFrames(const QList<QByteArray> &chunks)
{
    Model model;
    for (const QByteArray &chunk : chunks) {
        model.feed(chunk);
    }
    return model.frames;
}

} // namespace FrameStream
