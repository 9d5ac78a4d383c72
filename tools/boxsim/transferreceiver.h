#pragma once

#include <QByteArray>
#include <QString>

// The Box's end of one file transfer: chunks in order, then the digest of the whole. The memory it takes is
// that of the bytes that have come, never of those announced.
class TransferReceiver
{
public:
    // What one frame led to.
    struct Step {
        QString violation;    // what is wrong with the frame; empty if nothing is
        bool ended = false;   // it was the checksum: a verdict is due, the next frame begins a new transfer
        bool success = false; // all chunks were in order and the digest is that of the bytes
        QByteArray file;      // the bytes, at success
    };

    // maxFileSize: a file that announces more fails. In bytes.
    explicit TransferReceiver(int maxFileSize);

    // Takes a whole 0x0300 or 0x0400 frame. A frame that breaks the rules costs the transfer, not the
    // connection: it fails with its checksum.
    Step take(const QByteArray &frame);

private:
    QString takeChunk(const QByteArray &frame);
    Step takeChecksum(const QByteArray &frame);

    int m_maxFileSize;
    QByteArray m_file;
    quint32 m_total = 0;  // as the first chunk announced it
    quint32 m_chunks = 0; // taken so far
    bool m_broken = false;
};
