#pragma once

#include <QString>

// Appends "yyyy-MM-dd HH:mm:ss: <message>" as one line to MARLINLOG.log beside the executable. The file is
// opened for each call and never rotated; one that can't be opened is skipped in silence.
void logToFile(const QString &message);
