#include "parameters/parametercsv.h"

#include "parameters/rowcheck.h"

#include <QCoreApplication>
#include <QTextStream>

namespace {

constexpr char place[] = QT_TRANSLATE_NOOP("ParameterTable", "Line %1");

// The rows that have passed go with the first line that is refused. Those behind it are only looked at for
// what is wrong with them.
void refuse(RowImport *import, const char *text)
{
    if (!import->refusal) {
        import->rows.clear();
        import->refusal = text;
    }
}

void takeRow(RowImport *import, const RowCheck &check, int number, const QStringList &fields)
{
    const int bad = check.badColumn(fields);
    const bool badChoice = bad >= 0 && check.isChoice(bad);
    const char *refusal = bad < 0 ? nullptr : check.refusalOf(bad);
    if (refusal || badChoice) {
        check.add(&import->faults, place, number, fields, check.fault(bad, fields));
    } else if (!RowCheck::isReadable(fields.join(QLatin1Char(',')))) {
        check.add(&import->faults, place, number, fields, check.unreadable()); // in a name, which is kept
    }
    if (refusal) {
        refuse(import, refusal);
    }
    if (!import->refusal) {
        import->badChoices += badChoice ? 1 : 0;
        import->rows.append(RowCheck::row(fields, check.headers().size()));
    }
}

} // namespace

RowImport ParameterCsv::read(QString text, const ParameterVariant &variant)
{
    RowImport import;
    const RowCheck check(variant);
    bool headerRead = false;
    int number = 0; // of the line, from 1; each line break ends one, since nothing is quoted
    for (QTextStream stream(&text, QIODevice::ReadOnly); !stream.atEnd();) {
        const QString line = stream.readLine();
        ++number;
        if (line.isEmpty()) {
            continue;
        }
        const QStringList fields = line.split(QLatin1Char(','));
        const bool isShort = fields.size() < RowCheck::leastFields;
        if (headerRead && !isShort) {
            takeRow(&import, check, number, fields);
            continue;
        }
        if (isShort) {
            check.add(&import.faults, place, number, headerRead ? fields : QStringList(), check.tooShort());
            refuse(
                &import,
                QT_TRANSLATE_NOOP("ParameterTable", "CSV file has incorrect column count, unable to import"));
        } else if (fields != check.headers()) {
            check.add(&import.faults, place, number, {},
                      RowCheck::isReadable(line) ? check.otherHeader() : check.unreadable());
            refuse(&import,
                   QT_TRANSLATE_NOOP("ParameterTable", "CSV header does not match expected format."));
        }
        if (import.refusal && !headerRead) {
            break; // what follows is no list of this table
        }
        headerRead = true;
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
