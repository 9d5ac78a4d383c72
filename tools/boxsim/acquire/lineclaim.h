#pragma once

#include <QString>

// Keeps an open device file for whoever has it open, until it is closed: one that is already kept, if under
// another name, is refused. False with the reason.
bool claimLine(int file, QString *reason);
