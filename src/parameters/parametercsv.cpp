#include "parameters/parametercsv.h"

#include "parameters/parameterrules.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QTextStream>

#include <optional>

namespace {

// Of either variant: a row of Modbus is that wide with the empty field of its button.
constexpr int leastFields = 6;

// The words of each column's list, as shown; empty for a column without one.
QList<QStringList> choicesOf(const ParameterVariant &variant)
{
    QList<QStringList> choices;
    for (const ParameterColumn &column : variant.columns) {
        choices.append(variant.shownEntries(column.cell));
    }
    return choices;
}

bool passes(ParameterCell cell, const QStringList &choices, const QString &field)
{
    static const QRegularExpression length(QStringLiteral("^-?\\d*$"));
    // Digits, a point, digits, of which each may lack. Possessive, so that a long number that fails at its
    // end is not tried again from each of its digits.
    static const QRegularExpression amplitude(QStringLiteral("^-?\\d*+(?:\\.\\d*+)?$"));
    switch (cell) {
    case ParameterCell::Address:
        return ParameterRules::isAddress(field);
    case ParameterCell::Length:
        return length.match(field).hasMatch();
    case ParameterCell::Amplitude:
        return amplitude.match(field).hasMatch();
    case ParameterCell::CollectionFormula:
    case ParameterCell::WriteFormula:
        return ParameterRules::isFormula(field);
    default: // of a name neither its form nor its uniqueness
        return choices.isEmpty() || choices.contains(field);
    }
}

// The first column whose field does not pass; what is behind it is not looked at.
std::optional<int> badColumn(const QStringList &fields, const ParameterVariant &variant,
                             const QList<QStringList> &choices)
{
    for (int column = 0; column < variant.columns.size(); ++column) {
        if (!passes(variant.columns.at(column).cell, choices.at(column),
                    fields.value(column, QLatin1String("")))) {
            return column;
        }
    }
    return {};
}

// The text that abandons the import, or null.
const char *refusalOf(ParameterCell cell, const ParameterVariant &variant)
{
    switch (cell) {
    case ParameterCell::Address:
        // Compat: the other variant takes a bad address without a word.
        return variant.badAddressAbandons ? QT_TRANSLATE_NOOP(
                   "ParameterTable", "The address in the CSV row does not match the expected format.")
                                          : nullptr;
    case ParameterCell::Length:
        return QT_TRANSLATE_NOOP(
            "ParameterTable", "The length of the numbers in the CSV row does not match the expected format.");
    case ParameterCell::Amplitude:
        return QT_TRANSLATE_NOOP(
            "ParameterTable",
            "The magnitude of the change in the CSV row does not match the expected format.");
    case ParameterCell::CollectionFormula:
        return QT_TRANSLATE_NOOP("ParameterTable",
                                 "The collection formula in the CSV row does not match the expected format.");
    case ParameterCell::WriteFormula:
        return QT_TRANSLATE_NOOP("ParameterTable",
                                 "The write formula in the CSV row does not match the expected format.");
    default:
        return nullptr;
    }
}

QVariantList keptRow(const QStringList &fields, int width)
{
    QVariantList row;
    for (int column = 0; column < qMin(fields.size(), width); ++column) {
        row.append(fields.at(column).trimmed());
    }
    return row;
}

ParameterCsv::Import refused(ParameterCsv::Import import, const char *text)
{
    import.rows.clear();
    import.refusal = text;
    return import;
}

} // namespace

ParameterCsv::Import ParameterCsv::read(QString text, const ParameterVariant &variant)
{
    Import import;
    const QStringList headers = variant.headers();
    const QList<QStringList> choices = choicesOf(variant);
    bool headerRead = false;
    for (QTextStream stream(&text, QIODevice::ReadOnly); !stream.atEnd();) {
        const QString line = stream.readLine();
        if (line.isEmpty()) {
            continue;
        }
        const QStringList fields = line.split(QLatin1Char(','));
        if (fields.size() < leastFields) {
            return refused(
                import,
                QT_TRANSLATE_NOOP("ParameterTable", "CSV file has incorrect column count, unable to import"));
        }
        if (!headerRead) {
            if (fields != headers) {
                return refused(
                    import,
                    QT_TRANSLATE_NOOP("ParameterTable", "CSV header does not match expected format."));
            }
            headerRead = true;
            continue;
        }
        if (const std::optional<int> bad = badColumn(fields, variant, choices)) {
            if (const char *refusal = refusalOf(variant.columns.at(*bad).cell, variant)) {
                return refused(import, refusal);
            }
            import.badChoices += choices.at(*bad).isEmpty() ? 0 : 1;
        }
        import.rows.append(keptRow(fields, headers.size()));
    }
    return import;
}

QString ParameterCsv::write(const QList<QStringList> &rows, const ParameterVariant &variant)
{
    QString text = variant.headers().join(QLatin1Char(',')) + QLatin1Char('\n');
    for (const QStringList &row : rows) {
        text += row.join(QLatin1Char(',')) + QLatin1Char('\n');
    }
    return text;
}
