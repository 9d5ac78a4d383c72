#include "boxsim/acquire/dlt645query.h"

#include <QStringList>

#include <algorithm>

namespace {

constexpr int addressSize = 6;
constexpr char anyDigits = static_cast<char>(0xAA);
constexpr char wakeUp[] = "\xFE\xFE\xFE\xFE";

// Of the control byte.
constexpr quint8 isAnswer = 0x80;
constexpr quint8 isError = 0x40;
constexpr quint8 isFollowed = 0x20;
constexpr quint8 function = 0x1F;

// What the two editions have different.
struct Edition {
    int itemSize; // bytes
    quint8 read;
    quint8 readOn;
    bool numbered;         // whether a continuation carries the number of its part
    const char *errors[8]; // lowest bit first
};

const Edition edition2007 = {4,
                             0x11,
                             0x12,
                             true,
                             {"other error", "no such data", "wrong password or not permitted",
                              "the baud rate can't be changed", "too many time zones of a year",
                              "too many time slots of a day", "too many tariffs", "reserved error"}};

const Edition edition1997 = {2,
                             0x01,
                             0x02,
                             false,
                             {"illegal data", "wrong data identifier", "wrong password", "reserved error",
                              "too many time zones of a year", "too many time slots of a day",
                              "too many tariffs", "reserved error"}};

const Edition &of(Dlt645Edition edition)
{
    return edition == Dlt645Edition::Of2007 ? edition2007 : edition1997;
}

// The bytes of hexadecimal digits, the last ones first; empty if there are others.
QByteArray reversedBytes(const QString &digits)
{
    QByteArray bytes = QByteArray::fromHex(digits.toLatin1());
    if (bytes.toHex() != digits.toLower().toLatin1()) {
        return QByteArray();
    }
    std::reverse(bytes.begin(), bytes.end());
    return bytes;
}

bool isBcd(char byte)
{
    return (byte & 0x0F) <= 0x09 && (static_cast<quint8>(byte) >> 4) <= 0x09;
}

// Whether the frame comes from a meter that is meant by the address.
bool isFrom(const QByteArray &address, const Dlt645Frame &frame)
{
    return std::equal(address.begin(), address.end(), frame.address.begin(), frame.address.end(),
                      [](char asked, char own) { return asked == anyDigits || asked == own; });
}

} // namespace

QByteArray dlt645Address(const QString &text)
{
    if (text.isEmpty()) {
        return QByteArray();
    }
    const QByteArray bytes = reversedBytes(text.rightJustified(2 * addressSize, QLatin1Char('0')));
    const bool sound = bytes.size() == addressSize && std::all_of(bytes.begin(), bytes.end(), [](char byte) {
                           return byte == anyDigits || isBcd(byte);
                       });
    return sound ? bytes : QByteArray();
}

QByteArray dlt645Item(Dlt645Edition edition, const QString &text)
{
    const QByteArray bytes = reversedBytes(text);
    return bytes.size() == of(edition).itemSize ? bytes : QByteArray();
}

QByteArray Dlt645Query::request() const
{
    return wakeUp + dlt645Bytes({address, of(edition).read, item});
}

QByteArray Dlt645Query::continuation(int part) const
{
    const QByteArray number = of(edition).numbered ? QByteArray(1, static_cast<char>(part)) : QByteArray();
    return wakeUp + dlt645Bytes({address, of(edition).readOn, item + number});
}

Dlt645Answer Dlt645Query::answer(const Dlt645Frame &frame, int part) const
{
    const Edition &own = of(edition);
    Dlt645Answer answer;
    if (!frame.intact || !(frame.control & isAnswer) || !isFrom(address, frame)
        || (frame.control & function) != (part == 0 ? own.read : own.readOn)) {
        return answer;
    }
    if (frame.control & isError) {
        if (frame.data.size() == 1) {
            answer.kind = Dlt645Answer::Kind::Refused;
            answer.error = static_cast<quint8>(frame.data.at(0));
        }
        return answer;
    }
    const bool numbered = own.numbered && part > 0;
    if (!frame.data.startsWith(item) || (numbered && frame.data.size() == item.size())
        || (numbered && static_cast<quint8>(frame.data.back()) != part)) {
        return answer;
    }
    answer.kind = Dlt645Answer::Kind::Value;
    answer.value = frame.data.mid(item.size());
    answer.value.chop(numbered ? 1 : 0);
    answer.more = frame.control & isFollowed;
    return answer;
}

QString Dlt645Query::errorText(quint8 error) const
{
    QStringList texts;
    for (int bit = 0; bit < 8; ++bit) {
        if (error & (1 << bit)) {
            texts.append(QLatin1String(of(edition).errors[bit]));
        }
    }
    return texts.isEmpty() ? QStringLiteral("error 0") : texts.join(QLatin1String(", "));
}
