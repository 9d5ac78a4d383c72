#pragma once

#include "boxlink/frame.h"

#include <array>
#include <functional>
#include <memory>

// Cuts the byte stream of a Box back into frames: bytes in, frames out, no socket.
//
// What lies between frames is skipped. The start of a frame whose rest has not come in yet is carried over
// to the next chunk. Nothing is known of a frame before its end but its length, so a rejected one costs its
// header only and the search goes on inside it; and while a carried frame still lacks more than a chunk
// holds, a header in that chunk counts for more than the carried frame, which is given up. The outcome
// therefore depends on how the stream is cut.
//
// A frame that was carried over is at most 4096 bytes long; a longer one is dropped, and the search resumes
// at the next header. A length field of 0 to 7 is no frame. The work is linear in the input.
class FrameAssembler
{
public:
    // Takes one frame; the bytes are valid until it returns. A sink may call assemble() again, as a modal
    // message does that lets the next chunk in: what is left of the earlier ones then comes first. It may
    // also destroy the assembler; the chunk's bytes must outlive the call of assemble() in any case.
    using Sink = std::function<void(const char *frame, unsigned length)>;

    explicit FrameAssembler(Sink sink);
    Q_DISABLE_COPY(FrameAssembler)

    // Takes the next bytes of the stream.
    void assemble(const char *data, unsigned length);

private:
    struct Chunk {
        const char *data;
        qsizetype length;
        qsizetype position; // what lies before it is accounted for
        Chunk *next;
    };
    struct Span {
        const char *data = nullptr;
        int length = 0; // 0: no frame
    };
    using Buffer = std::array<char, Frame::carryCapacity>;

    Span completeCarried(Chunk &chunk, Buffer &joined);
    void keepWaiting(Chunk &chunk, int carry);
    bool skipCarriedHeader(int *start, int *carry);
    void remember(int place, const char *data, qsizetype length);
    Span nextWhole(Chunk &chunk);

    Sink m_sink;
    Buffer m_carryBuffer{}; // the start of a frame that has not yet come in whole
    qint32 m_carryLength = 0;
    Chunk *m_chunks = nullptr; // Not owned. In order of arrival, each on the stack of its assemble().
    std::shared_ptr<char> m_alive = std::make_shared<char>();
};
