#include "boxlink/frameassembler.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace {

// The place of the first header in a range, or -1. A first header byte that ends the range does not count,
// unless it is the whole range: then the stream may have been cut right behind it.
qsizetype findHeader(const char *data, qsizetype length)
{
    if (length == 1) {
        return data[0] == Frame::header0 ? 0 : -1;
    }
    const char *const last = data + length - 1;
    for (const char *p = data; p < last; ++p) {
        p = static_cast<const char *>(std::memchr(p, Frame::header0, size_t(last - p)));
        if (!p) {
            return -1;
        }
        if (p[1] == Frame::header1) {
            return p - data;
        }
    }
    return -1;
}

bool isFooter(char first, char second)
{
    return first == Frame::footer0 && second == Frame::footer1;
}

} // namespace

FrameAssembler::FrameAssembler(Sink sink)
    : m_sink(std::move(sink))
{
}

// The state is whole whenever the sink is called: the chunk's position lies behind the frame, and nothing is
// carried over. A call from the sink works off all chunks before it returns, its own as the last.
void FrameAssembler::assemble(const char *data, unsigned length)
{
    Chunk chunk{data, qsizetype(length), 0, nullptr};
    Chunk **end = &m_chunks;
    while (*end) {
        end = &(*end)->next;
    }
    *end = &chunk;

    const std::weak_ptr<char> alive = m_alive;
    const Sink sink = m_sink; // must outlast the object while it runs
    Buffer joined;
    while (m_chunks) {
        if (m_chunks->position == m_chunks->length) {
            m_chunks = m_chunks->next;
            continue;
        }
        const Span frame = m_carryLength > 0 ? completeCarried(*m_chunks, joined) : nextWhole(*m_chunks);
        if (frame.length > 0) {
            sink(frame.data, unsigned(frame.length));
            if (alive.expired()) {
                return;
            }
        }
    }
}

// Something is carried over, so the chunk is still untouched. Joins the carried frame with its rest; or keeps
// it waiting, which takes up the chunk; or gives it up and leaves the chunk to nextWhole().
FrameAssembler::Span FrameAssembler::completeCarried(Chunk &chunk, Buffer &joined)
{
    int start = 0; // of the carried frame in the buffer
    int carry = std::exchange(m_carryLength, 0);
    const auto byteAt = [&](int offset) {
        return offset < carry ? m_carryBuffer.data()[start + offset] : chunk.data[offset - carry];
    };
    while (carry > 0) {
        remember(start + carry, chunk.data, qMin(chunk.length, qsizetype(Frame::bodyOffset - carry)));
        if (Frame::bodyOffset - carry > chunk.length) {
            keepWaiting(chunk, carry); // the length field is not complete
            return {};
        }
        const char lengthField[] = {byteAt(Frame::lengthOffset), byteAt(Frame::lengthOffset + 1)};
        const int size = Frame::readLittle16(lengthField);
        const int need = size - carry;
        if (need > chunk.length) {
            keepWaiting(chunk, carry);
            return {};
        }
        if (need > 0 && size >= Frame::minimumSize && isFooter(byteAt(size - 2), byteAt(size - 1))) {
            if (size > Frame::carryCapacity) {
                return {};
            }
            std::copy_n(m_carryBuffer.data() + start, carry, joined.data());
            std::copy_n(chunk.data, need, joined.data() + carry);
            remember(start + carry, chunk.data, need);
            chunk.position = need;
            return {joined.data(), size};
        }
        if (!skipCarriedHeader(&start, &carry)) {
            return {};
        }
    }
    return {};
}

// The chunk does not complete the carried frame. A header in it is the better guess; otherwise it is added to
// the carry. One that outgrows the buffer is dropped: there is no header in the chunk to resume at.
void FrameAssembler::keepWaiting(Chunk &chunk, int carry)
{
    if (findHeader(chunk.data, chunk.length) >= 0) {
        return;
    }
    if (chunk.length <= Frame::carryCapacity - carry) {
        remember(carry, chunk.data, chunk.length);
        m_carryLength = carry + int(chunk.length);
    }
    chunk.position = chunk.length;
}

// Moves on to the next header within the carry, behind the one at *start. False if there is none.
//
// Compat: *carry is lessened by the rejected header only and not by what is skipped before the next one, and
// keepWaiting() adds to the buffer from its beginning; which frames survive a disturbance depends on both.
// Behind a rejected frame the carry is a guess, and the guess is settled by the next header to come in. What
// it counts beyond the carried bytes is what earlier frames left there.
bool FrameAssembler::skipCarriedHeader(int *start, int *carry)
{
    *start += Frame::headerSize;
    *carry -= Frame::headerSize;
    if (*carry < 1) {
        return false;
    }
    const int skipped = int(findHeader(m_carryBuffer.data() + *start, *carry));
    if (skipped < 0 || *start + skipped + *carry > Frame::carryCapacity) {
        return false;
    }
    *start += skipped;
    return true;
}

// Puts bytes into the buffer, as far as it reaches.
void FrameAssembler::remember(int place, const char *data, qsizetype length)
{
    const qsizetype room = qMax(0, Frame::carryCapacity - place);
    std::copy_n(data, qBound(qsizetype(0), length, room), m_carryBuffer.data() + place);
}

// Nothing is carried over. Finds the next frame that lies whole in the chunk, which is handed out in place;
// carries over the start of one that the chunk ends in.
FrameAssembler::Span FrameAssembler::nextWhole(Chunk &chunk)
{
    while (chunk.position < chunk.length) {
        const qsizetype skipped = findHeader(chunk.data + chunk.position, chunk.length - chunk.position);
        if (skipped < 0) {
            break;
        }
        chunk.position += skipped;
        const char *const frame = chunk.data + chunk.position;
        const qsizetype rest = chunk.length - chunk.position;
        // A start of up to 6 bytes is kept unseen, though the last of them may complete the length field.
        const int size = rest > Frame::bodyOffset ? Frame::readLittle16(frame + Frame::lengthOffset) : 0;
        if (rest <= Frame::bodyOffset || (size > rest && rest <= Frame::carryCapacity)) {
            remember(0, frame, rest);
            m_carryLength = qint32(rest);
            break;
        }
        if (size >= Frame::minimumSize && size <= rest && isFooter(frame[size - 2], frame[size - 1])) {
            chunk.position += size;
            return {frame, size};
        }
        chunk.position += Frame::headerSize;
    }
    chunk.position = chunk.length;
    return {};
}
