#include "boxsim/framereader.h"

#include "boxsim/wire.h"

namespace {

constexpr char header[] = "\x12\x34";
constexpr char footer[] = "\x56\x78";
constexpr int pairSize = 2; // of header and of footer
constexpr int lengthEnd = 6;

// Where a frame may begin at or behind from: a header, or a last byte that may be the first half of one.
int nextStart(const QByteArray &bytes, int from)
{
    const int found = bytes.indexOf(header, from);
    if (found >= 0) {
        return found;
    }
    const bool half = bytes.size() > from && bytes.at(bytes.size() - 1) == header[0];
    return half ? bytes.size() - 1 : bytes.size();
}

} // namespace

FrameReader::Result FrameReader::feed(const QByteArray &bytes)
{
    Result result;
    m_rest += bytes;
    int at = 0;
    for (;;) {
        const int start = nextStart(m_rest, at);
        result.skipped += start - at;
        at = start;
        const int there = m_rest.size() - at;
        if (there < lengthEnd) {
            break;
        }
        const int length = static_cast<int>(Wire::number(m_rest, at + 4, 2));
        if (length >= Wire::minFrame && length > there) {
            break;
        }
        if (length < Wire::minFrame || m_rest.mid(at + length - pairSize, pairSize) != footer) {
            ++result.rejected;
            result.skipped += pairSize;
            at += pairSize;
            continue;
        }
        result.frames.append(m_rest.mid(at, length));
        at += length;
    }
    m_rest.remove(0, at);
    return result;
}
