#pragma once

#include <QString>

class QJsonObject;

// What the program prints, as UTF-8. Results go to the standard output, all else to the standard error.
namespace Output {

// One line. Control characters of it are shown as spaces: names and answers come from outside.
void line(const QString &text);
// One object as one line.
void json(const QJsonObject &object);
// A text of the program's own, as it is.
void text(const QString &text);
// One line behind "boxctl: " on the standard error.
void error(const QString &text);

// The status, or SomeFailed with a word about it if not all could be written.
int finish(int status);

QString printable(const QString &text);
// In place of a secret; an empty one stays empty.
QString masked(const QString &secret);

} // namespace Output
