#pragma once

#include "model/projecttree.h"

#include <QStringList>

// Rows from outside with which something is wrong, in words of the current language: the first of them, and
// how many there are.
struct RowFaults {
    static constexpr int mostTold = 20;

    QStringList told;
    int count = 0;
};

// What a file or the clipboard gave: rows as a table takes them, or the reason why there are none.
struct RowImport {
    RowList rows;
    int badChoices = 0; // rows with a word that its list does not have; each is told, and the rows stay
    const char *refusal = nullptr; // source text; null if the rows are taken
    RowFaults faults;              // the bad choices, and all that was refused
};
