#pragma once

#include <QStringList>

#include <functional>
#include <optional>

// What the program needs of the system beside Qt.
namespace Terminal {

// Whether the standard error is one: progress goes there.
bool isErrorTerminal();
// How many lines fit on it above the one with the cursor.
int mostLines();
// So many lines and the total below them. Where there is no room for all, the last tells how many more there
// are.
QStringList progress(int count, const std::function<QString(int)> &line, const QString &total);
// Lines on it, cut to its width, and as many lines above the cursor away.
void draw(const QStringList &lines);
void erase(int lines);

// Whether the standard output is one: then what is printed there is all to look at.
bool isOutputTerminal();

// Asks for a text that is not shown. An empty line is an empty text; nothing, with the reason, where there is
// no terminal to ask on or the input ends.
std::optional<QString> askSecret(const QString &question, QString *error);

// How many connections the limit of open files leaves, once it is as high as it may be.
int mostConnections();

} // namespace Terminal
