#include "boxlink/monitoringaccumulator.h"

#include "boxlink/frame.h"

#include <QDebug>
#include <QJsonDocument>

namespace {

// The text so far.
QByteArray monitoringBuffer; // clazy:exclude=non-pod-global-static
quint32 monitoringTotal = 0; // the announced length of the whole text; 0: no report is being assembled

struct Segment {
    quint32 total;
    quint16 size;
    quint32 number;
    QByteArray text; // goes by the frame's own length, not by size

    explicit Segment(const QByteArray &frame)
    {
        // A frame too short for these fields is no segment, but has to be judged: what is missing reads as 0.
        const QByteArray fields = frame.leftJustified(Frame::chunkDataOffset, '\0');
        total = Frame::readLittle32(fields.constData() + Frame::totalOffset);
        size = Frame::readLittle16(fields.constData() + Frame::chunkSizeOffset);
        number = Frame::readLittle32(fields.constData() + Frame::chunkNumberOffset);
        text = frame.mid(Frame::chunkDataOffset, qMax(0, frame.size() - Frame::chunkOverhead));
    }

    // Where the whole text ends if all segments before this one were full.
    qint64 end() const { return qint64(size) - Frame::chunkSize + qint64(number) * Frame::chunkSize; }
};

} // namespace

std::optional<QJsonObject> MonitoringAccumulator::addSegment(const QByteArray &frame)
{
    const Segment segment(frame);
    if (monitoringTotal == 0 && frame.size() >= Frame::chunkOverhead) {
        monitoringTotal = segment.total;
        qDebug().nospace() << "data长度::" << monitoringTotal;
    }
    if (segment.total != monitoringTotal) {
        qDebug().nospace() << "长度不符::" << segment.total;
        reset();
        return std::nullopt;
    }
    if (monitoringBuffer.size() + segment.text.size() > sizeLimit) {
        qDebug().nospace() << "Monitoring report too long, dropped: " << segment.total;
        reset();
        return std::nullopt;
    }
    monitoringBuffer.append(segment.text);
    if (segment.end() != monitoringTotal) {
        qDebug("数据长度未达到要\xEF\xBF\xBD:"); // the replacement character is part of the line
        return std::nullopt;
    }
    const QJsonDocument report = QJsonDocument::fromJson(monitoringBuffer);
    reset();
    if (report.isNull()) {
        qWarning("Failed to parse JSON data");
        return std::nullopt;
    }
    return report.object();
}

void MonitoringAccumulator::reset()
{
    monitoringBuffer = QByteArray();
    monitoringTotal = 0;
}
