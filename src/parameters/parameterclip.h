#pragma once

#include "parameters/parametercsv.h"

// Parameter rows as spreadsheets copy and paste them: a line a row, a tab between cells, and quotes around a
// cell that holds a tab, a quote or a line break.
namespace ParameterClip {

constexpr int mostText = 4 * 1024 * 1024; // characters; larger texts are refused

// Of rows as they are shown.
QString write(const QList<QStringList> &rows);
// Rows checked like those of a file, but that each is refused by itself and the others are taken, that
// the empty field of the button may lack, and that a name must have what a typed one must. The header of the
// table, if it comes first, is left out.
ParameterCsv::Import read(const QString &text, const ParameterVariant &variant);

} // namespace ParameterClip
