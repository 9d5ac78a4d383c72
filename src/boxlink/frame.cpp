#include "boxlink/frame.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtEndian>

namespace {

template <typename Number> void appendLittle(QByteArray &bytes, Number number)
{
    char little[sizeof(Number)];
    qToLittleEndian(number, little);
    bytes.append(little, sizeof(Number));
}

// A frame up to its body, with room for all of it.
QByteArray beginFrame(Frame::Command command, int bodySize)
{
    const int size = Frame::minimumSize + bodySize;
    QByteArray frame;
    frame.reserve(size);
    frame.append(Frame::header0).append(Frame::header1);
    frame.append(char(command >> 8)).append(char(command & 0xff));
    appendLittle(frame, quint16(size));
    return frame;
}

QByteArray &endFrame(QByteArray &frame)
{
    return frame.append(Frame::footer0).append(Frame::footer1);
}

} // namespace

quint16 Frame::readLittle16(const char *p)
{
    return qFromLittleEndian<quint16>(p);
}

quint32 Frame::readLittle32(const char *p)
{
    return qFromLittleEndian<quint32>(p);
}

quint16 Frame::readCommand(const char *frame)
{
    return qFromBigEndian<quint16>(frame + commandOffset);
}

QByteArray Frame::heartbeatFrame()
{
    QByteArray frame = beginFrame(HeartbeatRequest, 0);
    return endFrame(frame);
}

QByteArray Frame::buildJsonFrame(const QJsonObject &request)
{
    const QByteArray text = QJsonDocument(request).toJson();
    QByteArray frame = beginFrame(JsonCommand, text.size() + jsonOverhead - minimumSize);
    appendLittle(frame, quint16(text.size()));
    frame.append(text);
    return endFrame(frame);
}

QByteArray Frame::chunkFrame(Command command, quint32 total, quint32 number, const QByteArray &chunk)
{
    QByteArray frame = beginFrame(command, chunk.size() + chunkOverhead - minimumSize);
    frame.append(chunkSubType);
    appendLittle(frame, total);
    appendLittle(frame, quint16(chunk.size()));
    appendLittle(frame, number);
    frame.append(chunk);
    return endFrame(frame);
}

QByteArray Frame::checksumFrame(Command command, quint32 total, const QByteArray &digest)
{
    QByteArray frame = beginFrame(command, digest.size() + checksumOverhead - minimumSize);
    frame.append(checksumSubType);
    appendLittle(frame, total);
    frame.append(char(digest.size()));
    frame.append(digest);
    return endFrame(frame);
}
