#pragma once

#include <QByteArray>
#include <QVector>

// The frames of DL/T 645, the same in both editions:
//
//   0x68, address (six bytes, lowest first), 0x68, control, length, data, checksum, 0x16
//
// The checksum is the sum of all bytes before it; each byte of the data goes over the line with 0x33 added.
struct Dlt645Frame {
    QByteArray address; // six bytes as on the line
    quint8 control = 0;
    QByteArray data;    // what is meant: without the 0x33
    bool intact = true; // false for a wrong checksum; then no byte of it can be trusted

    bool operator==(const Dlt645Frame &other) const
    {
        return address == other.address && control == other.control && data == other.data
            && intact == other.intact;
    }
};

// The bytes of a frame. Its address has six bytes and its data at most 200.
QByteArray dlt645Bytes(const Dlt645Frame &frame);

// Finds frames in what comes over a line. Whatever else stands before, between or inside of them is passed
// over: the frame that ends first is the one that is found. So it does not matter how the bytes are cut.
class Dlt645FrameFinder
{
public:
    // The frames that end in these bytes, those with a wrong checksum included.
    QVector<Dlt645Frame> find(const QByteArray &bytes);
    // Forgets the beginning of a frame that may have come.
    void clear() { m_tail.clear(); }

private:
    bool readFrameAtEnd(Dlt645Frame *frame) const;

    QByteArray m_tail; // what may belong to a frame that has not ended
};
