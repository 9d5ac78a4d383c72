#pragma once

#include <QString>

class QJsonObject;
class QJsonValue;

// What the program prints, as UTF-8. Results go to the standard output, all else to the standard error.
namespace Output {

// One line, printable: names and answers come from outside.
void line(const QString &text);
// One object as one line.
void json(const QJsonObject &object);
// A text of the program's own, as it is.
void text(const QString &text);
// Finished lines, as they are; may be called in any thread. False if they could not be written.
bool bytes(const char *bytes, int size);
// One line behind "boxctl: " on the standard error.
void error(const QString &text);

// The status, or SomeFailed with a word about it if not all could be written, other than into a pipe that was
// closed.
int finish(int status);

// The text with a space in place of each character that is not seen: a control, a mark of direction, a line
// end.
QString printable(const QString &text);
// A value as JSON, in one line and with the same characters escaped.
QString jsonText(const QJsonValue &value);
// In place of a secret; an empty one stays empty.
QString masked(const QString &secret);

} // namespace Output
