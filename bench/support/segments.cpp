#include "support/segments.h"

#include "boxlink/frame.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

QByteArray Segments::reportText(int points, int round)
{
    QJsonArray datas;
    for (int point = 0; point < points; ++point) {
        datas.append(QJsonObject{
            {QStringLiteral("name"), QStringLiteral("Point %1").arg(point)},
            {QStringLiteral("addr"), QString::number(40001 + point)},
            {QStringLiteral("dataType"), QStringLiteral("float")},
            // Values that jump about, so that a table sorted by them moves its rows at each report.
            {QStringLiteral("value"), QString::number((point * 7919 + round * 104729) % 100003)},
            {QStringLiteral("valid"), point % 10 == 0 ? QStringLiteral("0") : QStringLiteral("1")}});
    }
    const QJsonObject report{{QStringLiteral("projectName"), QStringLiteral("Plant")},
                             {QStringLiteral("plcName"), QStringLiteral("Line 1")},
                             {QStringLiteral("description"), QString()},
                             {QStringLiteral("sn"), QStringLiteral("12345678")},
                             {QStringLiteral("time"), QStringLiteral("2026-01-01 00:00:00")},
                             {QStringLiteral("datas"), datas}};
    return QJsonDocument(report).toJson(QJsonDocument::Compact);
}

QByteArray Segments::stream(const QByteArray &text)
{
    QByteArray frames;
    quint32 number = 1;
    for (int offset = 0; offset < text.size(); offset += Frame::chunkSize) {
        frames.append(Frame::chunkFrame(Frame::MonitoringSegment, quint32(text.size()), number++,
                                        text.mid(offset, Frame::chunkSize)));
    }
    return frames;
}
