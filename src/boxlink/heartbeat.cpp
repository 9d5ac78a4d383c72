#include "boxlink/heartbeat.h"

#include "boxlink/frame.h"

#include <QDebug>

namespace {

// Compat: read from signed bytes, so that an answer whose low length byte is 0x80 or more is refused. A Box
// keeps its answer under 128 bytes.
int signedFrameLength(const QByteArray &frame)
{
    return (qint8(frame[Frame::lengthOffset + 1]) * 256) | qint8(frame[Frame::lengthOffset]);
}

} // namespace

std::optional<HeartbeatAnswer> HeartbeatAnswer::fromFrame(const QByteArray &frame)
{
    if (frame.size() < Frame::bodyOffset || signedFrameLength(frame) != frame.size()) {
        return std::nullopt;
    }
    const int end = frame.size() - Frame::footerSize;
    if (frame[end] != Frame::footer0 || frame[end + 1] != Frame::footer1) {
        qDebug("Invalid package footer.");
        return std::nullopt;
    }
    HeartbeatAnswer answer;
    int offset = Frame::bodyOffset;
    for (QString *text : {&answer.version, &answer.serialNumber, &answer.model}) {
        const int count = offset < end ? qint8(frame[offset]) : -1;
        ++offset;
        if (count < 0 || count > end - offset) {
            return std::nullopt;
        }
        *text = QString::fromUtf8(frame.constData() + offset, count);
        offset += count;
    }
    return answer;
}
