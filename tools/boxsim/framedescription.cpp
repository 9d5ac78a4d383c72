#include "boxsim/framedescription.h"

#include "boxsim/settingsmemory.h"
#include "boxsim/wire.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr int longestText = 400;
constexpr int longestHex = 32; // bytes

QString shortened(const QString &text)
{
    return text.size() <= longestText ? text : text.left(longestText) + QStringLiteral("...");
}

QString hex(const QByteArray &bytes)
{
    const QString digits = QString::fromLatin1(bytes.left(longestHex).toHex(' '));
    return bytes.size() <= longestHex ? digits : digits + QStringLiteral(" ...");
}

QString describeHeartbeatReply(const QByteArray &frame)
{
    QStringList texts;
    int at = Wire::bodyOffset;
    while (texts.size() < 3 && at < frame.size() - 2) {
        const int length = static_cast<quint8>(frame.at(at));
        texts.append(QString::fromUtf8(frame.mid(at + 1, length)));
        at += 1 + length;
    }
    return QStringLiteral("heartbeat answer: ") + texts.join(QStringLiteral(", "));
}

QString describeJson(const QByteArray &frame)
{
    const QByteArray text = frame.mid(Wire::jsonTextOffset, frame.size() - Wire::jsonOverhead);
    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (!document.isObject()) {
        return QStringLiteral("JSON that is no object: ") + hex(text);
    }
    const QJsonValue type = document.object().value(QLatin1String("type"));
    const QString name = settingsCommandName(type.isDouble() ? type.toInt() : type.toString().toInt());
    return QStringLiteral("%1: %2").arg(
        name, shortened(QString::fromUtf8(document.toJson(QJsonDocument::Compact))));
}

QString describeTransfer(const QByteArray &frame, const QString &name)
{
    const int subType = frame.size() > Wire::minFrame ? frame.at(Wire::subTypeOffset) : 0;
    if (subType == 1 && frame.size() >= Wire::chunkOverhead) {
        return QStringLiteral("%1 chunk %2: %3 bytes of %4")
            .arg(name)
            .arg(Wire::number(frame, Wire::numberOffset, 4))
            .arg(Wire::number(frame, Wire::sizeOffset, 2))
            .arg(Wire::number(frame, Wire::totalOffset, 4));
    }
    if (subType == 2 && frame.size() >= Wire::checksumOverhead) {
        const QByteArray digest = frame.mid(Wire::digestOffset, frame.size() - Wire::checksumOverhead);
        return QStringLiteral("%1 checksum of %2 bytes: %3")
            .arg(name)
            .arg(Wire::number(frame, Wire::totalOffset, 4))
            .arg(QString::fromLatin1(digest.toHex()));
    }
    if (subType == 3 && frame.size() == Wire::verdictSize) {
        const bool success = frame.at(Wire::verdictOffset) == 0;
        return QStringLiteral("%1 verdict: %2")
            .arg(name, success ? QStringLiteral("success") : QStringLiteral("failure"));
    }
    return QStringLiteral("%1 frame of no known kind: %2").arg(name, hex(frame));
}

} // namespace

QString describeFrame(const QByteArray &frame)
{
    if (frame.size() < Wire::minFrame) {
        return QStringLiteral("no frame: ") + hex(frame);
    }
    switch (Wire::command(frame)) {
    case Wire::Heartbeat:
        return QStringLiteral("heartbeat");
    case Wire::HeartbeatReply:
        return describeHeartbeatReply(frame);
    case Wire::Project:
        return describeTransfer(frame, QStringLiteral("project"));
    case Wire::Program:
        return describeTransfer(frame, QStringLiteral("program"));
    case Wire::Json:
        return describeJson(frame);
    case Wire::Monitoring:
        return describeTransfer(frame, QStringLiteral("report"))
            .replace(QLatin1String("chunk"), QLatin1String("segment"));
    default:
        return QStringLiteral("unknown command 0x%1: %2")
            .arg(Wire::command(frame), 4, 16, QLatin1Char('0'))
            .arg(hex(frame));
    }
}

BoxSimFrame decodedFrame(const QString &peer, const QByteArray &bytes)
{
    return {peer, Wire::command(bytes), bytes, describeFrame(bytes)};
}
