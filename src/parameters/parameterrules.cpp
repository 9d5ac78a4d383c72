#include "parameters/parameterrules.h"

#include <QCoreApplication>
#include <QRegularExpression>

bool ParameterRules::isAddress(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^[\\x21-\\x7E]+$"));
    return pattern.match(text).hasMatch();
}

bool ParameterRules::isFormula(const QString &text)
{
    static const QRegularExpression pattern(QStringLiteral("^[\\d.+\\-*/X]*$"));
    return pattern.match(text).hasMatch();
}

bool ParameterRules::isCount(const QString &text)
{
    bool number = false;
    return text.trimmed().toInt(&number) >= 1 && number;
}

bool ParameterRules::isThreshold(const QString &text)
{
    bool number = false;
    const double value = text.trimmed().toDouble(&number);
    // Compat: "nan" is a number here and not negative, so that it is taken; so is "inf".
    return number && !(value < 0);
}

const char *ParameterRules::faultOf(const ParameterVariant &variant, ParameterCell cell, const QString &text)
{
    // A leading minus passes here, though the message that goes with it speaks of positive numbers.
    static const QRegularExpression amplitude(QStringLiteral("^-?\\d*\\.?\\d+$"));
    if (text.isEmpty()) {
        return nullptr;
    }
    switch (cell) {
    case ParameterCell::Address:
        return isAddress(text) ? nullptr : variant.addressText;
    case ParameterCell::Name:
        return variant.commaRefused && text.contains(QLatin1Char(',')) ? QT_TRANSLATE_NOOP(
                   "ParameterTable", "The name cannot contain a comma. Please use a different name.")
                                                                       : nullptr;
    case ParameterCell::Amplitude:
        return amplitude.match(text).hasMatch()
            ? nullptr
            : QT_TRANSLATE_NOOP(
                "ParameterTable",
                "Invalid input in row %1: only integers and floating-point numbers are allowed.");
    case ParameterCell::CollectionFormula:
    case ParameterCell::WriteFormula:
        return isFormula(text)
            ? nullptr
            : QT_TRANSLATE_NOOP(
                "ParameterTable",
                "Invalid input in row %1: only numbers, operators (+, -, *, /) and 'X' are allowed.");
    default:
        return nullptr;
    }
}

int ParameterRules::rowWithName(const QStringList &names, int except, const QString &name)
{
    for (int row = 0; row < names.size(); ++row) {
        if (row != except && names.at(row) == name) {
            return row;
        }
    }
    return -1;
}
