#pragma once

#include <QString>

// What Qt and libmodbus leave out about the device file of a serial line. file is open.

// Keeps it for whoever has it open, until it is closed: one that is already kept, if under another name, is
// refused. False with the reason.
bool claimLine(int file, QString *reason);
// Whether it has a parity as far as can be found out. Pseudo-terminals drop one without a word.
bool hasParity(int file);
