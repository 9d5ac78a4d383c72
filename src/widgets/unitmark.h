#pragma once

class QLineEdit;
class QString;

// Writes a unit into a field, at its right end, where the text leaves room for it. It is no part of the text.
namespace UnitMark {

void show(QLineEdit *edit, const QString &unit);

} // namespace UnitMark
