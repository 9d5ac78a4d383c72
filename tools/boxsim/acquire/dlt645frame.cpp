#include "boxsim/acquire/dlt645frame.h"

namespace {

constexpr char startByte = 0x68;
constexpr char endByte = 0x16;
constexpr int addressAt = 1;
constexpr int addressSize = 6;
constexpr int secondStartAt = 7;
constexpr int controlAt = 8;
constexpr int lengthAt = 9;
constexpr int dataAt = 10;
constexpr int frameAround = 12; // bytes of a frame that are not its data
constexpr int mostData = 200;
constexpr int longestFrame = frameAround + mostData;

quint8 sum(const QByteArray &bytes, int from, int count)
{
    quint8 total = 0;
    for (int at = from; at < from + count; ++at) {
        total = static_cast<quint8>(total + static_cast<quint8>(bytes.at(at)));
    }
    return total;
}

QByteArray shifted(QByteArray bytes, int by)
{
    for (char &byte : bytes) {
        byte = static_cast<char>(byte + by);
    }
    return bytes;
}

// Whether the bytes from there to their end are laid out as a frame, whatever its checksum.
bool isFrame(const QByteArray &bytes, int from)
{
    return bytes.at(from) == startByte && bytes.at(from + secondStartAt) == startByte
        && from + frameAround + static_cast<quint8>(bytes.at(from + lengthAt)) == bytes.size();
}

} // namespace

QByteArray dlt645Bytes(const Dlt645Frame &frame)
{
    QByteArray bytes;
    bytes.append(startByte).append(frame.address).append(startByte);
    bytes.append(static_cast<char>(frame.control)).append(static_cast<char>(frame.data.size()));
    bytes.append(shifted(frame.data, 0x33));
    bytes.append(static_cast<char>(sum(bytes, 0, bytes.size()))).append(endByte);
    return bytes;
}

QVector<Dlt645Frame> Dlt645FrameFinder::find(const QByteArray &bytes)
{
    QVector<Dlt645Frame> frames;
    for (const char byte : bytes) {
        m_tail.append(byte);
        if (m_tail.size() > longestFrame) {
            m_tail.remove(0, 1);
        }
        Dlt645Frame frame;
        if (byte == endByte && readFrameAtEnd(&frame)) {
            frames.append(frame);
            if (frame.intact) {
                m_tail.clear();
            }
        }
    }
    return frames;
}

bool Dlt645FrameFinder::readFrameAtEnd(Dlt645Frame *frame) const
{
    int found = -1;
    for (int from = 0; from + frameAround <= m_tail.size(); ++from) {
        if (!isFrame(m_tail, from)) {
            continue;
        }
        const int upToSum = m_tail.size() - from - 2;
        const bool intact = sum(m_tail, from, upToSum) == static_cast<quint8>(m_tail.at(from + upToSum));
        if (intact || found < 0) {
            found = from;
            frame->intact = intact;
        }
        if (intact) {
            break;
        }
    }
    if (found < 0) {
        return false;
    }
    frame->address = m_tail.mid(found + addressAt, addressSize);
    frame->control = static_cast<quint8>(m_tail.at(found + controlAt));
    frame->data = shifted(m_tail.mid(found + dataAt, m_tail.size() - found - frameAround), -0x33);
    return true;
}
