#pragma once

#include <QString>

// One entry of a list in the help: the word in its column, the sentence beside it. A line feed in the
// sentence begins a further line of it.
inline QString helpLine(const QString &word, QString sentence)
{
    constexpr int column = 30;
    sentence.replace(QLatin1Char('\n'), QLatin1Char('\n') + QString(column, QLatin1Char(' ')));
    return QStringLiteral("  %1%2\n").arg(word, 2 - column).arg(sentence);
}
