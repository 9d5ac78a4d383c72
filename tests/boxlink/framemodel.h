#pragma once

#include <QByteArray>
#include <QList>

#include <algorithm>
#include <array>

// The rules by which a stream is cut into frames, told a second time: step by step on plain bytes, with none
// of the reader's own pieces, so that a mistake in one is caught by the other.
class FrameModel
{
public:
    // Takes the next chunk of the stream; an empty one is nothing.
    void feed(const QByteArray &chunk)
    {
        if (chunk.isEmpty()) {
            return;
        }
        data = chunk;
        cur = 0;
        carry = carryLength;
        pos = 0;
        done = false;
        while (!done) {
            if (carry > 0) {
                stepCarried();
            } else {
                stepFresh();
            }
        }
        longestCarry = std::max(longestCarry, carryLength);
    }

    QList<QByteArray> frames;
    int longestCarry = 0;
    int rejectedCarries = 0; // headers skipped within a carry
    int shiftedCarries = 0;  // of these, a header was found further behind

private:
    enum { capacity = 4096, shortest = 8 };

    // A frame was carried over. Behind its bytes the buffer holds what earlier steps left there.
    void stepCarried()
    {
        for (int at = carry; at < 6 && at - carry < data.size(); ++at) {
            buffer[size_t(cur + at)] = uchar(data[at - carry]);
        }
        const bool lengthIsThere = carry + data.size() >= 6;
        const int size = buffer[size_t(cur + 4)] + 256 * buffer[size_t(cur + 5)];
        const int need = size - carry;
        if (!lengthIsThere || need > data.size()) {
            wait();
            return;
        }
        if (!endsWell(size, need)) {
            reject();
            return;
        }
        carry = 0;
        if (size > capacity) {
            return; // too long to be carried: the chunk is looked at afresh
        }
        const int carried = size - need;
        for (int at = 0; at < need; ++at) {
            buffer[size_t(cur + carried + at)] = uchar(data[at]);
        }
        frames.append(QByteArray(reinterpret_cast<const char *>(&buffer[size_t(cur)]), size));
        carryLength = 0;
        pos = need;
    }

    bool endsWell(int size, int need) const
    {
        if (size < shortest || need < 1) {
            return false;
        }
        const int last = uchar(data[need - 1]);
        const int lastButOne = need == 1 ? buffer[size_t(cur + carry - 1)] : uchar(data[need - 2]);
        return lastButOne == 0x56 && last == 0x78;
    }

    // The frame is still incomplete: a header in the chunk counts for more than the carried bytes.
    void wait()
    {
        if (headerIn(data, 0) >= 0) {
            carry = 0;
            carryLength = 0;
            return;
        }
        done = true;
        carryLength = 0;
        if (carry + data.size() > capacity) {
            return;
        }
        for (int at = 0; at < data.size(); ++at) {
            buffer[size_t(carry + at)] = uchar(data[at]);
        }
        carryLength = carry + data.size();
    }

    // Two bytes are given up, then everything before the next header; only the two are taken off the count.
    void reject()
    {
        ++rejectedCarries;
        cur += 2;
        carry -= 2;
        int found = -1;
        if (carry >= 1) {
            found = headerIn(QByteArray(reinterpret_cast<const char *>(&buffer[size_t(cur)]), carry), 0);
        }
        if (found < 0 || cur + found + carry > capacity) {
            carry = 0;
            carryLength = 0;
            return;
        }
        shiftedCarries += found > 0 ? 1 : 0;
        cur += found;
    }

    // Nothing is carried over.
    void stepFresh()
    {
        carryLength = 0;
        const int start = pos < data.size() ? headerIn(data, pos) : -1;
        if (start < 0) {
            done = true;
            return;
        }
        const int rest = data.size() - start;
        const int size = rest < 7 ? 0 : uchar(data[start + 4]) + 256 * uchar(data[start + 5]);
        if (rest < 7 || (size > rest && rest <= capacity)) {
            for (int at = 0; at < rest; ++at) {
                buffer[size_t(at)] = uchar(data[start + at]);
            }
            carryLength = rest;
            done = true;
            return;
        }
        const int end = start + size;
        if (size >= shortest && size <= rest && data[end - 2] == 'V' && data[end - 1] == 'x') {
            frames.append(data.mid(start, size));
            pos = end;
        } else {
            pos = start + 2;
        }
    }

    static int headerIn(const QByteArray &range, int from)
    {
        if (range.size() - from == 1 && range[from] == 0x12) {
            return from;
        }
        for (int at = from; at + 1 < range.size(); ++at) {
            if (range[at] == 0x12 && range[at + 1] == 0x34) {
                return at;
            }
        }
        return -1;
    }

    // Wide enough that no step has to look where it ends.
    std::array<uchar, 4 * capacity> buffer{};
    int carryLength = 0;

    QByteArray data;
    int cur = 0;
    int carry = 0;
    int pos = 0;
    bool done = false;
};
