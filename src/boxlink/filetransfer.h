#pragma once

#include "boxlink/frame.h"

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
    // Milliseconds.
    struct Timeouts {
        int connecting = 30000;
        int writing = 30000; // of each frame
        int verdict = 8000;
    };

    struct Job {
        Frame::Command command = Frame::ProjectTransfer; // or ProgramTransfer
        QString path;                                    // read piece by piece, never held as a whole
        QString boxAddress;
        QString localAddress = anyAddress(); // to send from
        bool removeWhenDigested = false;     // for a temporary file; one that was not digested stays
    };

    enum class Ending {
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

    // What to tell the user afterwards, the message before the line; an empty text is not told.
    struct Result {
        QString messageTitle;
        QString messageText;
        QString line;       // for the "Message" dock
        bool ended = false; // the wait for the verdict ended with an answer of any kind
        Ending ending = Ending::LinkLost;
    };

    // The owner becomes the parent of the connection. Percentages go to progress, only while the owner lives.
    FileTransfer(Job job, QObject *owner, std::function<void(int)> progress, const Timeouts &timeouts);

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
    void fail(Ending ending, const QString &line);
    void send(const QByteArray &frame);
    bool isOpen() const;

    Job m_job;
    std::function<void(int)> m_progress;
    Timeouts m_timeouts;
    Result m_result;
    QPointer<QTcpSocket> m_socket; // a child of the owner
};
