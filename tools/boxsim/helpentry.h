#pragma once

#include <QString>
#include <QVector>

// A word of the command line and what it does, as the help and the manual page tell it.
struct HelpEntry {
    QString term;
    QString sentence;
};
