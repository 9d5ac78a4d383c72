#include "parameters/rowcheck.h"

#include "parameters/parameterrules.h"

#include <QCoreApplication>
#include <QRegularExpression>

namespace {

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

// A field in one short line.
QString quoted(const QString &field)
{
    constexpr int most = 40; // characters
    const QString line = field.left(most + 1).simplified();
    return line.size() > most ? line.left(most) + QChar(0x2026) : line;
}

} // namespace

RowCheck::RowCheck(const ParameterVariant &variant)
    : m_variant(variant)
    , m_headers(variant.headers())
{
    for (const ParameterColumn &column : variant.columns) {
        m_choices.append(variant.shownEntries(column.cell));
    }
}

int RowCheck::badColumn(const QStringList &fields) const
{
    for (int column = 0; column < m_choices.size(); ++column) {
        if (!passes(m_variant.columns.at(column).cell, m_choices.at(column),
                    fields.value(column, QLatin1String("")))) {
            return column;
        }
    }
    return -1;
}

const char *RowCheck::refusalOf(int column) const
{
    switch (m_variant.columns.at(column).cell) {
    case ParameterCell::Address:
        // Compat: the other variant takes a bad address without a word.
        return m_variant.badAddressAbandons ? QT_TRANSLATE_NOOP(
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

QVariantList RowCheck::row(const QStringList &fields, int width)
{
    QVariantList row;
    for (int column = 0; column < qMin(fields.size(), width); ++column) {
        row.append(fields.at(column).trimmed());
    }
    return row;
}

QString RowCheck::fault(int column, const QStringList &fields) const
{
    const char *const source = isChoice(column)
        ? QT_TRANSLATE_NOOP("ParameterTable", "%1 \"%2\" is not in the list")
        : QT_TRANSLATE_NOOP("ParameterTable", "%1 \"%2\" is not allowed");
    return m_variant.translated(source).arg(m_headers.at(column), quoted(fields.value(column)));
}

QString RowCheck::tooShort() const
{
    return m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "too few columns"));
}

QString RowCheck::otherHeader() const
{
    return m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "not the header of this table, %1"))
        .arg(m_headers.join(QLatin1Char(',')));
}

bool RowCheck::isReadable(const QString &line)
{
    return !line.contains(QChar(QChar::ReplacementCharacter));
}

QString RowCheck::unreadable() const
{
    return m_variant.translated(QT_TRANSLATE_NOOP(
        "ParameterTable", "characters that cannot be read: save the file as \"CSV UTF-8\""));
}

void RowCheck::add(RowFaults *faults, const char *place, int number, const QStringList &fields,
                   const QString &fault) const
{
    ++faults->count;
    if (faults->told.size() < RowFaults::mostTold) {
        const QString where = m_variant.translated(place).arg(number);
        const QString name = quoted(fields.value(m_variant.indexOf(ParameterCell::Name)));
        const QString row = name.isEmpty()
            ? where
            : m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "%1, \"%2\"")).arg(where, name);
        faults->told.append(
            m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "%1: %2")).arg(row, fault));
    }
}
