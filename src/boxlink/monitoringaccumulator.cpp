#include "boxlink/monitoringaccumulator.h"

#include "boxlink/frame.h"

#include <QDebug>
#include <QJsonDocument>

namespace {

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

MonitoringAccumulator &MonitoringAccumulator::shared()
{
    static MonitoringAccumulator accumulator;
    return accumulator;
}

std::optional<QJsonObject> MonitoringAccumulator::addSegment(const QByteArray &frame)
{
    const Segment segment(frame);
    if (m_total == 0 && frame.size() >= Frame::chunkOverhead) {
        m_total = segment.total;
        qDebug().nospace() << "data长度::" << m_total;
    }
    if (segment.total != m_total) {
        qDebug().nospace() << "长度不符::" << segment.total;
        reset();
        return std::nullopt;
    }
    if (m_text.size() + segment.text.size() > sizeLimit) {
        qDebug().nospace() << "Monitoring report too long, dropped: " << segment.total;
        reset();
        return std::nullopt;
    }
    m_text.append(segment.text);
    if (segment.end() != m_total) {
        qDebug("数据长度未达到要\xEF\xBF\xBD:"); // the replacement character is part of the line
        return std::nullopt;
    }
    const QJsonDocument report = QJsonDocument::fromJson(m_text);
    reset();
    if (report.isNull()) {
        qWarning("Failed to parse JSON data");
        return std::nullopt;
    }
    return report.object();
}

void MonitoringAccumulator::reset()
{
    m_text = QByteArray();
    m_total = 0;
}
