#pragma once

#include <QString>

// What the forms call the values of the document.
namespace FormNames {

// The key itself in quotes if no form shows it.
QString of(const QString &key);
// Where the value stands among those of its node; what no form shows comes last.
int placeOf(const QString &key);
// Passwords, keys, certificates and tokens, of the dormant kinds, too.
bool isSecret(const QString &key);

} // namespace FormNames
