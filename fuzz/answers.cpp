// JSON answers: the input is the text, given to a session in a frame and as the answer to every command.

#include "boxlink/session.h"
#include "fuzztarget.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static Session session;
    const QByteArray text = Fuzz::bytesOf(data, qMin(size, std::size_t(65535 - Frame::jsonOverhead)));
    const int length = text.size() + Frame::jsonOverhead;
    session.dispatch(QByteArray("\x12\x34\x05\x00", 4) + char(length & 0xff) + char(length >> 8)
                     + QByteArray(2, '\0') + text + "\x56\x78");

    for (const Frame::JsonType read :
         {Frame::LanRead, Frame::WanRead, Frame::WifiRead, Frame::LteRead, Frame::NtpRead, Frame::TimeRead}) {
        const JsonCommand::Answer answer = JsonCommand::readAnswer(read, text);
        const auto *settings = std::get_if<BoxSettings>(&answer);
        Fuzz::require(!std::holds_alternative<CommandResult>(answer), "a read is answered by settings");
        Fuzz::require(!settings
                          || JsonCommand::readRequest(groupOf(*settings)).value(QLatin1String("type"))
                              == QString::number(read),
                      "settings are those of the group that was asked for");
    }
    for (const Frame::JsonType write : {Frame::LanWrite, Frame::WanWrite, Frame::WifiWrite, Frame::LteWrite,
                                        Frame::NtpWrite, Frame::TimeWrite, Frame::DeviceReboot}) {
        Fuzz::require(!std::holds_alternative<BoxSettings>(JsonCommand::readAnswer(write, text)),
                      "a write is answered by a result");
    }
    return 0;
}
