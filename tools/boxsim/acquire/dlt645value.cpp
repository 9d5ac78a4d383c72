#include "boxsim/acquire/dlt645value.h"

#include <QRegularExpression>

#include <algorithm>

namespace {

constexpr int mostDigits = 16;
constexpr quint8 signBit = 0x80;

// Those of 2007 alone: the combined energies; currents, powers and power factors.
bool isSignedItem(const QString &item)
{
    static const QRegularExpression signedItems(
        QStringLiteral("\\A(0000[0-9A-F]{2}00|00030000|00040000|020[2-6][0-9A-F]{4})\\z"),
        QRegularExpression::CaseInsensitiveOption);
    return signedItems.match(item).hasMatch();
}

} // namespace

Dlt645Format Dlt645Format::of(const QString &item, const QString &dataType)
{
    static const QRegularExpression layout(QStringLiteral("\\A([XN]+)(?:\\.([XN]+))?\\z"));
    const QRegularExpressionMatch match = layout.match(dataType.trimmed());
    Dlt645Format format;
    const int digits = match.capturedLength(1) + match.capturedLength(2);
    if (!match.hasMatch() || digits > mostDigits) {
        return format;
    }
    format.digits = digits;
    format.decimals = match.capturedLength(2);
    format.isSigned = isSignedItem(item);
    return format;
}

QString Dlt645Format::text(const QByteArray &value) const
{
    if (!isKnown() || value.size() != bytes()) {
        return QString();
    }
    QByteArray digitsFirst = value;
    std::reverse(digitsFirst.begin(), digitsFirst.end());
    const bool negative = isSigned && (static_cast<quint8>(digitsFirst.at(0)) & signBit) != 0;
    if (negative) {
        digitsFirst[0] = static_cast<char>(digitsFirst.at(0) & ~signBit);
    }
    QString number = QString::fromLatin1(digitsFirst.toHex());
    static const QRegularExpression noDigit(QStringLiteral("[a-f]"));
    if (number.contains(noDigit)) {
        return QString();
    }
    static const QRegularExpression leadingZeros(QStringLiteral("^0+(?=[0-9])"));
    const QString decimal = number.right(decimals);
    number.chop(decimals);
    number.remove(leadingZeros);
    if (decimals > 0) {
        number += QLatin1Char('.') + decimal;
    }
    static const QRegularExpression notZero(QStringLiteral("[1-9]"));
    return negative && number.contains(notZero) ? QLatin1Char('-') + number : number;
}
