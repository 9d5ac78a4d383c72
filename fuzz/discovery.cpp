// Answers to the search for Boxes: the input is the datagram.

#include "boxlink/discovery.h"
#include "fuzztarget.h"

static bool isTidy(const QString &text, int longest)
{
    return text.size() <= longest && !text.contains(QChar(0)) && text == text.trimmed();
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const QByteArray datagram = Fuzz::bytesOf(data, size);
    const Discovery::Answer answer = Discovery::parseAnswer(datagram);
    Fuzz::require(answer.valid == (datagram.size() >= 38 && datagram.startsWith("\x12\x34\xFF\xFF")),
                  "an answer has its header and 38 bytes");
    Fuzz::require(isTidy(answer.ip, 16) && isTidy(answer.mask, 16) && isTidy(answer.model, 255),
                  "texts end at their first NUL, without white space around them");
    return 0;
}
