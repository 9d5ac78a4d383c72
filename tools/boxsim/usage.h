#pragma once

#include "boxsim/helpentry.h"

// What the program tells about itself, made of the tables of options, scenarios and faults.
namespace Usage {

// The answer to --help, in lines of at most 80 characters.
QString help();

// The manual page as roff; packaging/man/boxsim.1 holds the same bytes.
QString manualPage();

// Entries in two columns, in lines of at most 80 characters, without a line feed at the end.
QString columns(const QVector<HelpEntry> &entries);

} // namespace Usage
