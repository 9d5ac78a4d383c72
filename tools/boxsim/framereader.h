#pragma once

#include <QByteArray>
#include <QVector>

// Cuts the byte stream of one connection into whole frames. Bytes in, frames out, no socket; holds at most
// one frame that has not come in whole, so its memory is bounded by the 65535 bytes a length can say.
class FrameReader
{
public:
    struct Result {
        QVector<QByteArray> frames; // whole, header to footer, in order
        int skipped = 0;            // bytes that belong to no frame
        int rejected = 0;           // headers whose length is under 8 or whose footer is missing
    };

    // Takes the next bytes, cut in any way. A rejected header costs its two bytes: the search goes on inside
    // what it claimed to hold.
    Result feed(const QByteArray &bytes);

private:
    QByteArray m_rest;
};
