#pragma once

#include "parameters/parametervariant.h"

// What a cell of a parameter table may hold. Blanks around a text belong to it, unless a rule says
// otherwise.
namespace ParameterRules {

// Printable ASCII without blanks, not empty. Compat: wider than the message about a bad address says.
bool isAddress(const QString &text);
// Digits, points, the four operators and X; may be empty.
bool isFormula(const QString &text);
// A decimal integer of at least 1; blanks around it do no harm.
bool isCount(const QString &text);
// A number that is not negative; blanks around it do no harm.
bool isThreshold(const QString &text);

// What is wrong with the text of an address, a name, an amplitude or a formula: source text, with %1 for the
// one-based row. Null for a text that may stay, as an empty one always may.
const char *faultOf(const ParameterVariant &variant, ParameterCell cell, const QString &text);

// The first row but one that has this name, or -1.
int rowWithName(const QStringList &names, int except, const QString &name);

} // namespace ParameterRules
