#pragma once

#include <QVector>

// The options of the program, in groups. The command line, its help and the manual page are made of this.
namespace OptionTable {

struct Option {
    const char *name;
    const char *value; // placeholder; null for a switch
    const char *byDefault;
    const char *sentence;
};

struct Group {
    const char *title;
    QVector<Option> options;
};

const QVector<Group> &groups();

} // namespace OptionTable
