#include "parametertable/parametercsv.h"

#include "parametertable/parametereditor.h"
#include "widgets/choosefile.h"
#include "widgets/tell.h"

#include <QFile>
#include <QPointer>
#include <QRegularExpression>
#include <QTableWidget>
#include <QTextStream>

namespace {

// Of either variant: a row of Modbus is that wide with the empty field of its button.
constexpr int leastFields = 6;

enum class RowFault { None, Address, Choice, Length, Amplitude, CollectionFormula, WriteFormula };

bool passes(const ParameterVariant &variant, ParameterCell cell, const QString &field)
{
    static const QRegularExpression address(QStringLiteral("^[\\x21-\\x7E]+$"));
    static const QRegularExpression length(QStringLiteral("^-?\\d*$"));
    // Digits, a point, digits, of which each may lack. Possessive, so that a long number that fails at its
    // end is not tried again from each of its digits.
    static const QRegularExpression amplitude(QStringLiteral("^-?\\d*+(?:\\.\\d*+)?$"));
    static const QRegularExpression formula(QStringLiteral("^[\\d.+\\-*/X]*$"));
    switch (cell) {
    case ParameterCell::Address:
        return address.match(field).hasMatch();
    case ParameterCell::Type:
        return ParameterText::types().contains(field);
    case ParameterCell::Length:
        return length.match(field).hasMatch();
    case ParameterCell::Permissions:
        return ParameterText::permissions().contains(field);
    case ParameterCell::Method:
        return variant.shownMethods().contains(field);
    case ParameterCell::Amplitude:
        return amplitude.match(field).hasMatch();
    case ParameterCell::CollectionFormula:
    case ParameterCell::WriteFormula:
        return formula.match(field).hasMatch();
    default: // of a name neither its form nor its uniqueness
        break;
    }
    return true;
}

RowFault faultOf(ParameterCell cell)
{
    switch (cell) {
    case ParameterCell::Address:
        return RowFault::Address;
    case ParameterCell::Length:
        return RowFault::Length;
    case ParameterCell::Amplitude:
        return RowFault::Amplitude;
    case ParameterCell::CollectionFormula:
        return RowFault::CollectionFormula;
    case ParameterCell::WriteFormula:
        return RowFault::WriteFormula;
    default:
        return RowFault::Choice;
    }
}

// The first fault of a row; what stands behind it goes untested.
RowFault checkRow(const QStringList &fields, const ParameterVariant &variant)
{
    for (int column = 0; column < variant.columns.size(); ++column) {
        const ParameterCell cell = variant.columns.at(column).cell;
        if (!passes(variant, cell, fields.value(column, QLatin1String("")))) {
            return faultOf(cell);
        }
    }
    return RowFault::None;
}

// The text that abandons the import, or null.
const char *refusalOf(RowFault fault, const ParameterVariant &variant)
{
    switch (fault) {
    case RowFault::Address:
        // A bad address passes in silence in the other variant, on purpose.
        return variant.badAddressAbandons ? QT_TRANSLATE_NOOP(
                   "ParameterTable", "The address in the CSV row does not match the expected format.")
                                          : nullptr;
    case RowFault::Length:
        return QT_TRANSLATE_NOOP(
            "ParameterTable", "The length of the numbers in the CSV row does not match the expected format.");
    case RowFault::Amplitude:
        return QT_TRANSLATE_NOOP(
            "ParameterTable",
            "The magnitude of the change in the CSV row does not match the expected format.");
    case RowFault::CollectionFormula:
        return QT_TRANSLATE_NOOP("ParameterTable",
                                 "The collection formula in the CSV row does not match the expected format.");
    case RowFault::WriteFormula:
        return QT_TRANSLATE_NOOP("ParameterTable",
                                 "The write formula in the CSV row does not match the expected format.");
    case RowFault::Choice:
    case RowFault::None:
        break;
    }
    return nullptr;
}

QVariantList keptRow(const QStringList &fields, int width)
{
    QVariantList row;
    for (int column = 0; column < qMin(fields.size(), width); ++column) {
        row.append(fields.at(column).trimmed());
    }
    return row;
}

} // namespace

ParameterCsv::Import ParameterCsv::read(QTextStream &stream, const ParameterVariant &variant,
                                        const std::function<void()> &badChoice)
{
    Import import;
    const QStringList headers = variant.headers();
    bool headerRead = false;
    while (!stream.atEnd() && !import.refusal) {
        const QString line = stream.readLine();
        if (line.isEmpty()) {
            continue;
        }
        const QStringList fields = line.split(QLatin1Char(','));
        if (fields.size() < leastFields) {
            import.refusal =
                QT_TRANSLATE_NOOP("ParameterTable", "CSV file has incorrect column count, unable to import");
        } else if (!headerRead) {
            headerRead = true;
            if (fields != headers) {
                import.refusal =
                    QT_TRANSLATE_NOOP("ParameterTable", "CSV header does not match expected format.");
            }
        } else {
            const RowFault fault = checkRow(fields, variant);
            import.refusal = refusalOf(fault, variant);
            if (fault == RowFault::Choice) {
                badChoice();
            }
            import.rows.append(keptRow(fields, headers.size()));
        }
    }
    return import;
}

void ParameterEditor::importParameters()
{
    const QString path = chooseOpenFile(
        m_form, m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Open CSV file")), QString(),
        m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "CSV File (*.csv)")));
    if (!path.isEmpty()) {
        importFile(path);
    }
}

void ParameterEditor::exportParameters()
{
    // The title of an open dialog stands on the save dialog of one variant, on purpose.
    const QString path =
        chooseSaveFile(m_form, m_variant.translated(m_variant.exportTitle), QString(),
                       m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "CSV file (*.csv)")));
    if (!path.isEmpty()) {
        exportFile(path);
    }
}

void ParameterEditor::importFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Text)) {
        Tell::warning(
            m_form, m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "mistake")),
            m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Unable to open file for reading.")));
        return;
    }
    QTextStream stream(&file);
    const QPointer<ParameterEditor> guard(this);
    const auto refuse = [this, &guard](const char *text) {
        if (guard) {
            Tell::warning(m_form, m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "error")),
                          m_variant.translated(text));
        }
    };
    const ParameterCsv::Import import = ParameterCsv::read(stream, m_variant, [&refuse] {
        refuse(QT_TRANSLATE_NOOP(
            "ParameterTable",
            "The multiple-choice content in the CSV row does not match the expected format. "
            "Set as default value"));
    });
    file.close();
    if (import.refusal || !guard) {
        refuse(import.refusal);
        return;
    }
    // The table made last is emptied, on purpose, also when another one is filled.
    if (QTableWidget *latest = m_latest()) {
        latest->setRowCount(0);
    }
    loadParameters(import.rows);
    if (guard) {
        log("importParameters");
    }
}

void ParameterEditor::exportFile(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        Tell::warning(
            m_form, m_variant.translated(m_variant.exportFailure),
            m_variant.translated(QT_TRANSLATE_NOOP("ParameterTable", "Unable to open file for writing.")));
        return;
    }
    // Without a table the file stays empty.
    if (const QTableWidget *table = m_current()) {
        QTextStream stream(&file);
        stream << m_variant.headers().join(QLatin1Char(',')) << '\n';
        for (int row = 0; row < table->rowCount(); ++row) {
            QStringList fields;
            for (int column = 0; column < table->columnCount(); ++column) {
                fields.append(parameterCellText(table, row, column));
            }
            stream << fields.join(QLatin1Char(',')) << '\n';
        }
    }
    file.close();
    log("exportParameters");
}
