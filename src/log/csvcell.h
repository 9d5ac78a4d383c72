#pragma once

#include <QByteArrayList>
#include <QString>

// CSV for spreadsheets, by RFC 4180 and in UTF-8.

// What a file begins with: without it spreadsheets take the text for another encoding.
constexpr char csvBegin[] = "\xef\xbb\xbf";

// A cell, quoted where it needs to be.
QByteArray csvCell(const QString &text);
// A line of finished cells, with its end.
QByteArray csvLine(const QByteArrayList &cells);
