#pragma once

#include "boxlink/transferframes.h"

#include <QPointer>
#include <QString>

#include <functional>

class QTcpSocket;

// One push of a file to a Box, over a TCP connection of its own beside the session: numbered chunks, then the
// MD5 digest, then the Box's verdict. It blocks while it connects and sends, and lets events flow only while
// it waits for the verdict; the owner may be deleted in that time, which ends the transfer without a word.
class FileTransfer
{
public:
    struct Job {
        Frame::Command command = Frame::ProjectTransfer; // or ProgramTransfer
        QString path;                                    // read piece by piece, never held as a whole
        QString boxAddress;
        QString localAddress = anyAddress(); // to send from
        bool removeWhenDigested = false;     // for a temporary file; one that was not digested stays
    };

    // What to tell the user afterwards, the message before the line; an empty text is not told.
    struct Result {
        QString messageTitle;
        QString messageText;
        QString line;             // for the "Message" dock
        bool endedInTime = false; // the wait for the verdict did, mostly by an answer of any kind
        TransferEnding ending = TransferEnding::LinkLost;
    };

    // The owner becomes the parent of the connection. Percentages go to progress, only while the owner lives.
    FileTransfer(Job job, QObject *owner, std::function<void(int)> progress,
                 const TransferTimeouts &timeouts);

    // Runs the transfer, to be called once. The object must outlive the call, the owner need not.
    Result run();

    // "0.0.0.0", which binds to no local address.
    static QString anyAddress();

private:
    // Each step returns whether the next one follows.
    bool connectToBox();
    bool sendChunks();
    bool sendDigest();
    void awaitVerdict();

    void judge(const QByteArray &answer);
    void send(const QByteArray &frame);
    bool isOpen() const;

    Job m_job;
    TransferFrames m_frames;
    std::function<void(int)> m_progress;
    TransferTimeouts m_timeouts;
    Result m_result;
    QPointer<QTcpSocket> m_socket; // a child of the owner
};
