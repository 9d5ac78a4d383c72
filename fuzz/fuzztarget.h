#pragma once

#include <QByteArray>
#include <QList>

#include <cstddef>
#include <cstdint>

// What the fuzz targets share. Before the first input an application without widgets is made, and the log is
// turned off.

extern "C" int LLVMFuzzerInitialize(int *argc, char ***argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size);

namespace Fuzz {

inline QByteArray bytesOf(const uint8_t *data, std::size_t size)
{
    return QByteArray(reinterpret_cast<const char *>(data), int(size));
}

// An input as a list of pieces. Before each stands its size: one byte, or 0 and two bytes, little-endian. The
// last piece is what is left.
QList<QByteArray> pieces(const QByteArray &input);

// Ends the run, with what was expected as the finding, unless it holds.
void require(bool holds, const char *expected);

} // namespace Fuzz
