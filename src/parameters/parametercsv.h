#pragma once

#include "parameters/parametervariant.h"
#include "parameters/rowimport.h"

// Parameter rows as text: a header line, a line a row, fields joined by commas without quotes or escapes, so
// that a comma in a field shifts the fields behind it. Words are those of the current language.
namespace ParameterCsv {

// The rows of a text. One line that is refused refuses them all.
RowImport read(QString text, const ParameterVariant &variant);
// The text of rows, which are given as they are shown in all columns of the table; checks nothing.
QString write(const QList<QStringList> &rows, const ParameterVariant &variant);

} // namespace ParameterCsv
