#include "boxlink/discovery.h"

#include "boxlink/frame.h"

namespace {

constexpr char answerMark = '\xFF';
constexpr int minimumAnswer = 38; // holds one byte of model text
constexpr int ipOffset = 4;
constexpr int maskOffset = 20;
constexpr int addressWidth = 16;
constexpr int modelLengthOffset = 36;
constexpr int modelOffset = 37;

QString textField(const QByteArray &datagram, int offset, int width)
{
    const QByteArray field = datagram.mid(offset, width);
    const int end = field.indexOf('\0');
    return QString::fromLatin1(end < 0 ? field : field.left(end)).trimmed();
}

} // namespace

QByteArray Discovery::request()
{
    QByteArray datagram;
    datagram.append(Frame::header0).append(Frame::header1);
    datagram.append(2, '\0');
    datagram.append("Search Box");
    datagram.append(Frame::footer0).append(Frame::footer1);
    return datagram;
}

Discovery::Answer Discovery::parseAnswer(const QByteArray &datagram)
{
    Answer answer;
    answer.valid = datagram.size() >= minimumAnswer && datagram.at(0) == Frame::header0
        && datagram.at(1) == Frame::header1 && datagram.at(2) == answerMark && datagram.at(3) == answerMark;
    if (answer.valid) {
        answer.ip = textField(datagram, ipOffset, addressWidth);
        answer.mask = textField(datagram, maskOffset, addressWidth);
        answer.model = textField(datagram, modelOffset, static_cast<uchar>(datagram.at(modelLengthOffset)));
    }
    return answer;
}
