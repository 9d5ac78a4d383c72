// JSON answers: the input is the text, given to the dispatcher in a frame and to the slot of every command.

#include "boxes/protocol.h"
#include "boxlink/frame.h"
#include "fuzztarget.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static Protocol session;
    const QByteArray text = Fuzz::bytesOf(data, qMin(size, std::size_t(65535 - Frame::jsonOverhead)));
    const int length = text.size() + Frame::jsonOverhead;
    const QByteArray frame = QByteArray("\x12\x34\x05\x00", 4) + char(length & 0xff) + char(length >> 8)
        + QByteArray(2, '\0') + text + "\x56\x78";
    session.dispatchFrame(frame.constData(), unsigned(frame.size()));

    session.readLanAllocationReturn(text);
    session.readWanAllocationReturn(text);
    session.readWifiAllocationReturn(text);
    session.readLteAllocationReturn(text);
    session.readNTPAllocationReturn(text);
    session.readTimeAllocationReturn(text);
    // The others differ in their texts alone, and each of their boxes costs more than all of the above.
    session.writeLanAllocationReturn(text);
    session.rebootDeviceReturn(text);
    return 0;
}
