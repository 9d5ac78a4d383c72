#pragma once

#include <QTest>

// Adds a row to the table of a test's data function, each cell of the type of its column.
template <typename... Cells> void tableRow(const char *name, const Cells &...cells)
{
    (QTest::newRow(name) << ... << cells);
}
