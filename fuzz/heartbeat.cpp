// Heartbeat answers: the input is the whole frame; once more, as a frame with the right length and footer
// around it.

#include "boxlink/heartbeat.h"
#include "boxlink/frame.h"
#include "boxlink/session.h"
#include "fuzztarget.h"

// How often a session tells who the Box is, of a frame that it takes in.
static int timesTold(Session *session, const QByteArray &frame)
{
    int told = 0;
    const auto link = QObject::connect(session, &Session::identified, session,
                                       [&told](const HeartbeatAnswer &) { ++told; });
    session->dispatch(frame);
    QObject::disconnect(link);
    return told;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static Session session;
    const QByteArray body = Fuzz::bytesOf(data, size);
    session.takeHeartbeat(body);
    timesTold(&session, body);

    const int length = body.size() + Frame::minimumSize;
    const QByteArray frame =
        QByteArray("\x12\x34\x02\x00", 4) + char(length & 0xff) + char(length >> 8) + body + "\x56\x78";
    const bool readable = bool(HeartbeatAnswer::fromFrame(frame));
    Fuzz::require(timesTold(&session, frame) == int(readable), "a session tells what can be read");
    Fuzz::require(!readable || (length & 0x80) == 0, "a low length byte of 0x80 or more is refused");
    return 0;
}
