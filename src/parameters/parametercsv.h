#pragma once

#include "model/projecttree.h"
#include "parameters/parametervariant.h"
#include "parameters/rowcheck.h"

// Parameter rows as text: a header line, a line a row, fields joined by commas without quotes or escapes, so
// that a comma in a field shifts the fields behind it. Words are those of the current language.
namespace ParameterCsv {

// What a file came to: rows as loadParameters takes them, or the reason why there are none.
struct Import {
    RowList rows;
    int badChoices = 0; // rows with a word that its list does not have, of which each is told; the rows stay
    const char *refusal = nullptr; // source text; null if all lines passed
    RowFaults faults;              // the bad choices, and every line that is refused
};

Import read(QString text, const ParameterVariant &variant);
// Of rows as they are shown, in all columns of the table; checks nothing.
QString write(const QList<QStringList> &rows, const ParameterVariant &variant);

} // namespace ParameterCsv
