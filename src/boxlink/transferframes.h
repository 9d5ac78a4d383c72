#pragma once

#include "boxlink/frame.h"

#include <QIODevice>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

// How a transfer ended.
enum class TransferEnding {
    Delivered, // the Box says that it has the file bit for bit
    NotBound,
    NotConnected,
    FileUnreadable,
    LinkLost, // before all was sent
    NoVerdict,
    BrokenVerdict, // no whole verdict frame
    WrongVerdict,  // one of another kind than this transfer's
    Refused,       // the Box got another file than was sent
};

// Milliseconds.
struct TransferTimeouts {
    int connecting = 30000;
    int writing = 30000; // of each frame
    int verdict = 8000;
};

// What the bytes say that came after the digest.
enum class TransferVerdict {
    Success,
    Failure,
    Broken,       // no whole frame
    OtherCommand, // that of another transfer
    OtherSubType, // no verdict
};

// What a transfer sends and what comes back, without a socket: the file in numbered chunks, then its MD5
// digest, then the Box's verdict. Reads piece by piece and never holds a file as a whole.
class TransferFrames
{
public:
    // Opens what is to be sent, for the chunks and again for the digest; null or a closed device if that
    // fails.
    using Opener = std::function<std::unique_ptr<QIODevice>()>;

    // The digest is made once all chunks are read, unless it is given.
    TransferFrames(Frame::Command command, Opener opener, const QByteArray &md5 = {});

    static Opener file(const QString &path);
    static Opener bytes(const QByteArray &bytes);
    // The digest of what the opener opens, to be given to many transfers of it; empty if it can't be opened.
    static QByteArray md5Of(const Opener &opener);

    // Opens what is to be sent, for the chunks; false if it can't be read.
    bool open();
    // The frame of the next chunk; empty behind the last one, and where no more can be read: the digest will
    // tell the Box.
    QByteArray nextChunk();
    // The size of the file in bytes, as announced; in a frame the total has 32 bits, so that 4 GiB or more go
    // out under a wrong one.
    qint64 size() const { return m_size; }
    // How much of the file is in the chunks so far, from 0 to 100, truncated.
    int percentage() const;

    // The frame with the digest; nothing if it is to be made of what is there now and that can't be opened.
    std::optional<QByteArray> digest() const;

    // What was there at the first moment at which anything was: a Box sends its verdict in one piece.
    TransferVerdict judge(const QByteArray &answer) const;
    static TransferEnding endingOf(TransferVerdict verdict);

private:
    static std::unique_ptr<QIODevice> opened(const Opener &opener);
    static QByteArray md5Of(QIODevice *device);

    Frame::Command m_command;
    Opener m_opener;
    QByteArray m_md5;                    // empty unless it was given
    std::unique_ptr<QIODevice> m_device; // while chunks are read
    qint64 m_size = 0;
    qint64 m_sent = 0;
    quint32 m_number = 1;
};
