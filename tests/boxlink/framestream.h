#pragma once

// Frames by hand, the reader under test, and the model of its rules to compare it with.

#include "boxlink/frameassembler.h"
#include "framemodel.h"
#include "handframes.h"

#include <QByteArray>
#include <QList>

#include <algorithm>
#include <memory>

namespace FrameStream {

using Frames = QList<QByteArray>;

using HandFrames::heartbeat;
using HandFrames::hex;

inline const QByteArray answer = hex("12 34 02 00 11 00 02 76 31 02 73 6e 02 6d 6f 56 78"); // v1, sn, mo
inline const QByteArray json = hex("12 34 05 00 17 00 0d 00") + "{\"type\":\"2\"} " + hex("56 78");
inline const QByteArray segment = hex("12 34 06 00 15 00 01 02 00 00 00 02 00 01 00 00 00 7b 7d 56 78");

inline QByteArray little16(int number)
{
    return HandFrames::little(quint32(number), 2);
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
    FrameModel model;
    for (const QByteArray &chunk : chunks) {
        model.feed(chunk);
    }
    return model.frames;
}

} // namespace FrameStream
