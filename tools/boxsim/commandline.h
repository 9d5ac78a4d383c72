#pragma once

#include "boxsim/options.h"

#include <QStringList>

// What the program's command line asks for.
struct CommandLine {
    enum class Action { Run, Tell, Wrong };

    Action action = Action::Run;
    QString text;          // to print and end: help, lists, version, or what is wrong
    BoxSimOptions options; // of the first Box
    int boxCount = 1;      // Boxes on addresses in a row
    QString projectFile;   // to read into options.project; empty for none
    QString logFile;       // to append to; empty for none
    QString saveFolder;    // for accepted files; empty for none
    bool hex = false;      // show bytes
    bool quiet = false;
    bool once = false;
    int seconds = 0; // 0: no end by itself
};

// Takes the arguments with the program's name first. Reads no file. The help names the running
// QCoreApplication.
CommandLine readCommandLine(const QStringList &arguments);
