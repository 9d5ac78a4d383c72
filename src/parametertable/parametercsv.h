#pragma once

#include "model/projecttree.h"
#include "parameters/parametervariant.h"

#include <functional>

class QTextStream;

// Parameter rows as text: a header line, a line a row, fields joined by commas without quotes or escapes, so
// that a comma in a field shifts the fields behind it.
namespace ParameterCsv {

// What an import came to: rows as loadParameters takes them, or the text of the box that abandons it.
struct Import {
    RowList rows;
    const char *refusal = nullptr; // source text of the parameter table; null if all lines passed
};

// Reads a whole file. A bad choice in a list is told through the callback, once a row, and the row is kept.
Import read(QTextStream &stream, const ParameterVariant &variant, const std::function<void()> &badChoice);

} // namespace ParameterCsv
