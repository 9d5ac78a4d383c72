#include "log/csvcell.h"

#include <algorithm>

QByteArray csvCell(const QString &text)
{
    const QByteArray cell = text.toUtf8();
    const bool isPlain = std::none_of(cell.begin(), cell.end(), [](char character) {
        return character == ',' || character == '"' || character == '\n' || character == '\r';
    });
    return isPlain ? cell : '"' + QByteArray(cell).replace('"', "\"\"") + '"';
}

QByteArray csvLine(const QByteArrayList &cells)
{
    return cells.join(',') + "\r\n";
}
