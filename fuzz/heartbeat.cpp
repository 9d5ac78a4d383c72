// Heartbeat answers: the input is the whole frame; once more, as a frame with the right length and footer
// around it.

#include "boxes/protocol.h"
#include "boxlink/frame.h"
#include "fuzztarget.h"

static int connectedTold(Protocol *session, const QByteArray &frame)
{
    int told = 0;
    const auto link =
        QObject::connect(session, &Protocol::versionReceived, session, [&told](const QString &) { ++told; });
    session->receiveHeartbeatResponse(frame);
    session->dispatchFrame(frame.constData(), unsigned(frame.size()));
    QObject::disconnect(link);
    return told;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static Protocol session;
    const QByteArray body = Fuzz::bytesOf(data, size);
    connectedTold(&session, body);

    const int length = body.size() + Frame::minimumSize;
    const QByteArray frame =
        QByteArray("\x12\x34\x02\x00", 4) + char(length & 0xff) + char(length >> 8) + body + "\x56\x78";
    const int told = connectedTold(&session, frame);
    Fuzz::require(told == 0 || told == 2, "both ways agree on an answer");
    Fuzz::require(told == 0 || (length & 0x80) == 0, "a low length byte of 0x80 or more is refused");
    return 0;
}
