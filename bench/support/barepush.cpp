// Pushes a project to Boxes one after the other: bare_push FILE FIRST-ADDRESS COUNT. What boxctl is measured
// against. The frames are made once, and each Box gets all of them in one go. Ends with 1 where a Box does
// not take it.

#include "boxlink/frame.h"

#include <QCryptographicHash>
#include <QFile>

#include <arpa/inet.h>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

QByteArray framesOf(const QByteArray &bytes)
{
    QByteArray frames;
    quint32 number = 1;
    for (int offset = 0; offset < bytes.size(); offset += Frame::chunkSize) {
        frames += Frame::chunkFrame(Frame::ProjectTransfer, quint32(bytes.size()), number++,
                                    bytes.mid(offset, Frame::chunkSize));
    }
    return frames
        + Frame::checksumFrame(Frame::ProjectTransfer, quint32(bytes.size()),
                               QCryptographicHash::hash(bytes, QCryptographicHash::Md5));
}

bool push(quint32 address, const QByteArray &frames)
{
    const int box = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in peer{};
    peer.sin_family = AF_INET;
    peer.sin_port = htons(Frame::boxPort);
    peer.sin_addr.s_addr = htonl(address);
    bool good = connect(box, reinterpret_cast<sockaddr *>(&peer), sizeof peer) == 0;
    for (int sent = 0; good && sent < frames.size();) {
        const ssize_t count =
            send(box, frames.constData() + sent, size_t(frames.size() - sent), MSG_NOSIGNAL);
        good = count > 0;
        sent += int(count);
    }
    static const char success[Frame::verdictSize] = {0x12, 0x34, 0x03, 0x00, 0x0a,
                                                     0x00, 0x03, 0x00, 0x56, 0x78};
    char verdict[Frame::verdictSize];
    good = good && recv(box, verdict, sizeof verdict, MSG_WAITALL) == sizeof verdict
        && memcmp(verdict, success, sizeof verdict) == 0;
    close(box);
    return good;
}

} // namespace

int main(int argc, char **argv)
{
    QFile file(QString::fromLocal8Bit(argc == 4 ? argv[1] : ""));
    in_addr first{};
    if (!file.open(QIODevice::ReadOnly) || inet_aton(argv[2], &first) == 0) {
        fputs("usage: bare_push FILE FIRST-ADDRESS COUNT\n", stderr);
        return 2;
    }
    const QByteArray frames = framesOf(file.readAll());
    for (quint32 box = 0; box < quint32(atoi(argv[3])); ++box) {
        if (!push(ntohl(first.s_addr) + box, frames)) {
            fprintf(stderr, "Box %u did not take it\n", box + 1);
            return 1;
        }
    }
    return 0;
}
