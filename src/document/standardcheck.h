#pragma once

#include <QVector>

class CheckedObject;

// The check of Standards: each by itself, and those that are on one line.
namespace StandardCheck {

// All Standards of a document.
void check(QVector<CheckedObject> standards);

} // namespace StandardCheck
