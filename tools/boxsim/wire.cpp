#include "boxsim/wire.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace Wire {

namespace {

constexpr int addressWidth = 16;
constexpr int maxCounted = 127; // the tool reads the length bytes as signed

QByteArray header()
{
    return QByteArrayLiteral("\x12\x34");
}

QByteArray footer()
{
    return QByteArrayLiteral("\x56\x78");
}

QByteArray counted(const QByteArray &text, int limit)
{
    const QByteArray kept = text.left(limit);
    return numberBytes(static_cast<quint32>(kept.size()), 1) + kept;
}

QByteArray padded(const QString &text)
{
    return text.toLatin1().left(addressWidth).leftJustified(addressWidth, '\0');
}

bool spoils(int fault, quint32 segment)
{
    return fault == 0 || (fault > 0 && static_cast<quint32>(fault) == segment);
}

} // namespace

quint32 number(const QByteArray &bytes, int offset, int width)
{
    quint32 value = 0;
    for (int i = width - 1; i >= 0; --i) {
        value = value << 8 | static_cast<quint8>(bytes.at(offset + i));
    }
    return value;
}

QByteArray numberBytes(quint32 value, int width)
{
    QByteArray bytes;
    for (int i = 0; i < width; ++i) {
        bytes.append(static_cast<char>(value >> (8 * i) & 0xff));
    }
    return bytes;
}

int command(const QByteArray &frame)
{
    return static_cast<quint8>(frame.at(2)) << 8 | static_cast<quint8>(frame.at(3));
}

QByteArray frame(int command, const QByteArray &body)
{
    QByteArray bytes = header();
    bytes.append(static_cast<char>(command >> 8 & 0xff));
    bytes.append(static_cast<char>(command & 0xff));
    bytes += numberBytes(static_cast<quint32>(body.size() + minFrame), 2);
    return bytes + body + footer();
}

QByteArray heartbeatAnswer(const QString &version, const QString &serialNumber, const QString &model)
{
    return frame(HeartbeatReply,
                 counted(version.toUtf8(), maxCounted) + counted(serialNumber.toUtf8(), maxCounted)
                     + counted(model.toUtf8(), maxCounted));
}

QByteArray jsonAnswer(const QJsonObject &object)
{
    const QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Compact);
    return frame(Json, numberBytes(static_cast<quint32>(text.size()), 2) + text);
}

QByteArray verdict(int command, quint8 result)
{
    return frame(command, QByteArray(1, '\3') + QByteArray(1, static_cast<char>(result)));
}

QVector<QByteArray> segments(const QByteArray &text, int segmentSize, int wrongTotal, int wrongNumber)
{
    QVector<QByteArray> frames;
    const auto total = static_cast<quint32>(text.size());
    for (int at = 0; at < text.size(); at += segmentSize) {
        const auto segment = static_cast<quint32>(frames.size()) + 1;
        const QByteArray part = text.mid(at, segmentSize);
        frames.append(
            frame(Monitoring,
                  QByteArray(1, '\1') + numberBytes(spoils(wrongTotal, segment) ? total + 1 : total, 4)
                      + numberBytes(static_cast<quint32>(part.size()), 2)
                      + numberBytes(spoils(wrongNumber, segment) ? segment + 1 : segment, 4) + part));
    }
    return frames;
}

QByteArray searchRequest()
{
    return header() + QByteArray(2, '\0') + QByteArrayLiteral("Search Box") + footer();
}

QByteArray searchAnswer(const QString &ip, const QString &mask, const QString &model)
{
    // The tool wants at least one byte of model text.
    const QByteArray modelText = model.isEmpty() ? QByteArrayLiteral(" ") : model.toLatin1();
    return header() + QByteArray(2, '\xff') + padded(ip) + padded(mask) + counted(modelText, 255) + footer();
}

} // namespace Wire
