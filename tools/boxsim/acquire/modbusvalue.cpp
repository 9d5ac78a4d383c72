#include "boxsim/acquire/modbusvalue.h"

#include <QTextCodec>

#include <charconv>
#include <cmath>
#include <cstring>

namespace {

// The registers' bytes in the order that makes the first of them the highest.
QByteArray arranged(const quint16 *registers, int count, const QString &order)
{
    const bool lastRegisterFirst = order == QLatin1String("CDAB") || order == QLatin1String("DCBA");
    const bool lowByteFirst = order == QLatin1String("BADC") || order == QLatin1String("DCBA");
    QByteArray bytes;
    for (int i = 0; i < count; ++i) {
        const quint16 word = registers[lastRegisterFirst ? count - 1 - i : i];
        const char high = static_cast<char>(word >> 8);
        const char low = static_cast<char>(word & 0xff);
        bytes.append(lowByteFirst ? low : high);
        bytes.append(lowByteFirst ? high : low);
    }
    return bytes;
}

// The shortest text that reads back as the same number, alike in every locale.
template <typename Number> PointReading shortest(Number number)
{
    if (!std::isfinite(number)) {
        return {};
    }
    char text[64];
    const std::to_chars_result end = std::to_chars(text, text + sizeof text, number);
    return {QString::fromLatin1(text, static_cast<int>(end.ptr - text)), true};
}

template <typename Number, typename Bits> Number as(Bits bits)
{
    static_assert(sizeof(Number) == sizeof(Bits), "a number is made of its own bits");
    Number number;
    std::memcpy(&number, &bits, sizeof number);
    return number;
}

} // namespace

ModbusType::ModbusType(const QString &name, int length)
{
    struct Row {
        const char *name;
        Kind kind;
        int bits;
    };
    static const Row rows[] = {
        {"bool", Kind::Bool, 16},       {"int8", Kind::Signed, 8},      {"uint8", Kind::Unsigned, 8},
        {"int16", Kind::Signed, 16},    {"uint16", Kind::Unsigned, 16}, {"int32", Kind::Signed, 32},
        {"uint32", Kind::Unsigned, 32}, {"int64", Kind::Signed, 64},    {"uint64", Kind::Unsigned, 64},
        {"float", Kind::Float, 32},     {"double", Kind::Float, 64},    {"string", Kind::Text, 0},
    };
    for (const Row &row : rows) {
        const bool same = name.trimmed().compare(QLatin1String(row.name), Qt::CaseInsensitive) == 0;
        if (same && (row.kind != Kind::Text || length > 0)) {
            m_kind = row.kind;
            m_bits = row.bits;
            m_length = row.kind == Kind::Text ? length : 0;
            m_registers = row.kind == Kind::Text ? length / 2 + length % 2 : (row.bits + 15) / 16;
        }
    }
}

PointReading ModbusType::reading(const quint16 *registers, const ModbusOrder &order) const
{
    switch (m_kind) {
    case Kind::None:
        return {};
    case Kind::Bool:
        return {registers[0] != 0 ? QStringLiteral("1") : QStringLiteral("0"), true};
    case Kind::Text:
        return {string(registers, order.charReversed), true};
    default:
        break;
    }
    // One register knows no order.
    const QByteArray bytes = arranged(registers, m_registers, m_registers > 1 ? order.bytes : QString());
    quint64 bits = 0;
    for (const char byte : bytes) {
        bits = bits << 8 | static_cast<quint8>(byte);
    }
    return number(bits);
}

PointReading ModbusType::number(quint64 bits) const
{
    if (m_kind == Kind::Float) {
        return m_bits == 32 ? shortest(as<float>(static_cast<quint32>(bits))) : shortest(as<double>(bits));
    }
    const int unused = 64 - m_bits;
    if (m_kind == Kind::Signed) {
        return {QString::number(static_cast<qint64>(bits << unused) >> unused), true};
    }
    return {QString::number(bits << unused >> unused), true};
}

QString ModbusType::string(const quint16 *registers, bool charReversed) const
{
    QByteArray bytes = arranged(registers, m_registers, charReversed ? QStringLiteral("BADC") : QString());
    bytes.truncate(m_length);
    const int end = bytes.indexOf('\0');
    if (end >= 0) {
        bytes.truncate(end);
    }
    QTextCodec::ConverterState state;
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(bytes.constData(), bytes.size(), &state);
    return state.invalidChars == 0 && state.remainingChars == 0 ? text : QString::fromLatin1(bytes);
}
