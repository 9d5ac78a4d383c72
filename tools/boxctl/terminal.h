#pragma once

#include <QSize>
#include <QString>

#include <optional>

// What the program needs of the system beside Qt.
namespace Terminal {

// Whether the standard error is one: progress goes there.
bool isErrorTerminal();
// In characters; the usual one where it does not say.
QSize errorSize();
// Whether the standard output is one: then what is printed there is all to look at.
bool isOutputTerminal();

// Asks for a text that is not shown. An empty line is an empty text; nothing, with the reason, where there is
// no terminal to ask on or the input ends.
std::optional<QString> askSecret(const QString &question, QString *error);

// How many connections the limit of open files leaves, once it is as high as it may be.
int mostConnections();

} // namespace Terminal
