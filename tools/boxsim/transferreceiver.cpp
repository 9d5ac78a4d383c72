#include "boxsim/transferreceiver.h"

#include "boxsim/wire.h"

#include <QCryptographicHash>

TransferReceiver::TransferReceiver(int maxFileSize)
    : m_maxFileSize(maxFileSize)
{
}

TransferReceiver::Step TransferReceiver::take(const QByteArray &frame)
{
    const int subType = frame.size() > Wire::minFrame ? frame.at(Wire::subTypeOffset) : 0;
    if (subType == 2) {
        return takeChecksum(frame);
    }
    Step step;
    if (m_broken) {
        return step; // told already
    }
    step.violation =
        subType == 1 ? takeChunk(frame) : QStringLiteral("transfer frame with sub-type %1").arg(subType);
    if (!step.violation.isEmpty()) {
        m_broken = true;
        m_file.clear();
    }
    return step;
}

QString TransferReceiver::takeChunk(const QByteArray &frame)
{
    const int size = frame.size() - Wire::chunkOverhead;
    if (size < 1 || size > Wire::segmentText
        || Wire::number(frame, Wire::sizeOffset, 2) != static_cast<quint32>(size)) {
        return QStringLiteral("chunk size does not fit the frame");
    }
    const quint32 total = Wire::number(frame, Wire::totalOffset, 4);
    if (m_chunks == 0) {
        m_total = total;
    }
    if (total != m_total) {
        return QStringLiteral("total changed from %1 to %2").arg(m_total).arg(total);
    }
    if (total > static_cast<quint32>(m_maxFileSize)) {
        return QStringLiteral("a file of %1 bytes is too large").arg(total);
    }
    const quint32 number = Wire::number(frame, Wire::numberOffset, 4);
    ++m_chunks;
    if (number != m_chunks) {
        return QStringLiteral("chunk %1 where %2 was due").arg(number).arg(m_chunks);
    }
    const quint32 end = static_cast<quint32>(m_file.size() + size);
    if (end > m_total || (size < Wire::segmentText && end < m_total)) {
        return QStringLiteral("chunk %1 of %2 bytes does not fit a file of %3")
            .arg(number)
            .arg(size)
            .arg(m_total);
    }
    m_file += frame.mid(Wire::dataOffset, size);
    return QString();
}

TransferReceiver::Step TransferReceiver::takeChecksum(const QByteArray &frame)
{
    Step step;
    step.ended = true;
    if (m_broken) {
        // told already
    } else if (frame.size() != Wire::checksumOverhead + Wire::digestSize
               || Wire::number(frame, Wire::sizeOffset, 1) != Wire::digestSize) {
        step.violation = QStringLiteral("checksum frame does not hold 16 bytes");
    } else if (Wire::number(frame, Wire::totalOffset, 4) != m_total) {
        step.violation = QStringLiteral("checksum frame announces another total");
    } else if (static_cast<quint32>(m_file.size()) != m_total) {
        step.violation = QStringLiteral("%1 of %2 bytes have come").arg(m_file.size()).arg(m_total);
    } else if (QCryptographicHash::hash(m_file, QCryptographicHash::Md5)
               != frame.mid(Wire::digestOffset, Wire::digestSize)) {
        step.violation = QStringLiteral("digest is not that of the bytes");
    }
    step.success = !m_broken && step.violation.isEmpty();
    if (step.success) {
        step.file = m_file;
    }
    *this = TransferReceiver(m_maxFileSize);
    return step;
}
