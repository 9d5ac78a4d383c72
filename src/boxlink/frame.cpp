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

QByteArray buildFrame(Frame::Command command, const QByteArray &body)
{
    QByteArray frame;
    frame.reserve(Frame::minimumSize + body.size());
    frame.append(Frame::header0).append(Frame::header1);
    frame.append(char(command >> 8)).append(char(command & 0xff));
    appendLittle(frame, quint16(Frame::minimumSize + body.size()));
    frame.append(body);
    frame.append(Frame::footer0).append(Frame::footer1);
    return frame;
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
    return buildFrame(heartbeatRequest, QByteArray());
}

QByteArray Frame::buildJsonFrame(const QJsonObject &request)
{
    const QByteArray text = QJsonDocument(request).toJson();
    QByteArray body;
    appendLittle(body, quint16(text.size()));
    body.append(text);
    return buildFrame(jsonCommand, body);
}

QByteArray Frame::chunkFrame(Command command, quint32 total, quint32 number, const QByteArray &chunk)
{
    QByteArray body(1, chunkSubType);
    appendLittle(body, total);
    appendLittle(body, quint16(chunk.size()));
    appendLittle(body, number);
    body.append(chunk);
    return buildFrame(command, body);
}

QByteArray Frame::checksumFrame(Command command, quint32 total, const QByteArray &digest)
{
    QByteArray body(1, checksumSubType);
    appendLittle(body, total);
    body.append(char(digest.size()));
    body.append(digest);
    return buildFrame(command, body);
}
