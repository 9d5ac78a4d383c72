#pragma once

#include <QVector>

// The elements of SL 651: what a hydrological station reports.
namespace Sl651 {

struct Element {
    const char *code;  // two hexadecimal digits, as it is stored
    const char *label; // source text in the context ServerSL651EditDialog; no two alike in any language
};

// In the order in which they are offered; the first stands for an unknown code.
const QVector<Element> &elements();

} // namespace Sl651
