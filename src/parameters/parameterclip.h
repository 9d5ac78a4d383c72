#pragma once

#include "parameters/parametervariant.h"
#include "parameters/rowimport.h"

// Parameter rows as spreadsheets copy and paste them: a line a row, a tab between cells, and quotes around a
// cell that holds a tab, a quote or a line break.
namespace ParameterClip {

constexpr int mostText = 4 * 1024 * 1024; // characters; larger texts are refused

// The text of rows, which are given as they are shown.
QString write(const QList<QStringList> &rows);
// The rows of a text. They are checked like those of a file, with three differences: a row that is refused
// leaves the others, the empty field of the button may lack, and a name must be one that may be typed. The
// header of the table, if it comes first, is left out.
RowImport read(const QString &text, const ParameterVariant &variant);

} // namespace ParameterClip
