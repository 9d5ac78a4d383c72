#include "boxlink/transferframes.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QFile>

TransferFrames::TransferFrames(Frame::Command command, Opener opener, const QByteArray &md5)
    : m_command(command)
    , m_opener(std::move(opener))
    , m_md5(md5)
{
}

TransferFrames::Opener TransferFrames::file(const QString &path)
{
    return [path] {
        auto file = std::make_unique<QFile>(path);
        file->open(QIODevice::ReadOnly);
        return file;
    };
}

TransferFrames::Opener TransferFrames::bytes(const QByteArray &bytes)
{
    return [bytes] {
        auto buffer = std::make_unique<QBuffer>();
        buffer->setData(bytes);
        buffer->open(QIODevice::ReadOnly);
        return buffer;
    };
}

QByteArray TransferFrames::md5Of(const Opener &opener)
{
    const std::unique_ptr<QIODevice> device = opened(opener);
    return device ? md5Of(device.get()) : QByteArray();
}

QByteArray TransferFrames::md5Of(QIODevice *device)
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    hash.addData(device);
    return hash.result();
}

std::unique_ptr<QIODevice> TransferFrames::opened(const Opener &opener)
{
    std::unique_ptr<QIODevice> device = opener();
    return device && device->isOpen() ? std::move(device) : nullptr;
}

bool TransferFrames::open()
{
    m_device = opened(m_opener);
    m_size = m_device ? m_device->size() : 0;
    m_sent = 0;
    m_number = 1;
    return m_device != nullptr;
}

QByteArray TransferFrames::nextChunk()
{
    const QByteArray chunk = m_device && !m_device->atEnd() ? m_device->read(Frame::chunkSize) : QByteArray();
    if (chunk.isEmpty()) {
        m_device.reset();
        return {};
    }
    m_sent += chunk.size();
    return Frame::chunkFrame(m_command, static_cast<quint32>(m_size), m_number++, chunk);
}

int TransferFrames::percentage() const
{
    return m_size > 0 ? static_cast<int>(qMin<qint64>(m_sent * 100 / m_size, 100)) : 0;
}

std::optional<QByteArray> TransferFrames::digest() const
{
    if (!m_md5.isEmpty()) {
        return Frame::checksumFrame(m_command, static_cast<quint32>(m_size), m_md5);
    }
    const std::unique_ptr<QIODevice> device = opened(m_opener);
    if (!device) {
        return std::nullopt;
    }
    const qint64 size = device->size();
    return Frame::checksumFrame(m_command, static_cast<quint32>(size), md5Of(device.get()));
}

TransferVerdict TransferFrames::judge(const QByteArray &answer) const
{
    if (answer.size() != Frame::verdictSize || answer.at(0) != Frame::header0
        || answer.at(1) != Frame::header1) {
        return TransferVerdict::Broken;
    }
    if (Frame::readCommand(answer.constData()) != m_command) {
        return TransferVerdict::OtherCommand;
    }
    if (answer.at(Frame::verdictSubTypeOffset) != Frame::verdictSubType) {
        return TransferVerdict::OtherSubType;
    }
    return answer.at(Frame::verdictResultOffset) == 0 ? TransferVerdict::Success : TransferVerdict::Failure;
}

TransferEnding TransferFrames::endingOf(TransferVerdict verdict)
{
    switch (verdict) {
    case TransferVerdict::Success:
        return TransferEnding::Delivered;
    case TransferVerdict::Failure:
        return TransferEnding::Refused;
    case TransferVerdict::Broken:
        return TransferEnding::BrokenVerdict;
    case TransferVerdict::OtherCommand:
    case TransferVerdict::OtherSubType:
        break;
    }
    return TransferEnding::WrongVerdict;
}
