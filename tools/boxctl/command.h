#pragma once

#include <QCommandLineOption>
#include <QList>
#include <QVector>

class Call;

enum ExitStatus {
    AllDone = 0,
    SomeFailed = 1,  // a Box failed or refused; of "diff", something differs
    WrongCall = 2,   // nothing was sent
    BadDocument = 3, // nor here
};

// One command of the program.
struct Command {
    const char *name;
    const char *arguments; // as the usage shows them
    const char *summary;   // a line of the list of commands
    const char *details;   // a paragraph or more for its help
    QList<QCommandLineOption> options;
    int (*run)(const Call &call); // gives the exit status
};

// All of them, in the order of the help.
const QVector<Command> &commands();

// Each in a file of its own.
Command checkCommand();
Command diffCommand();
Command getCommand();
Command infoCommand();
Command programCommand();
Command pushCommand();
Command rebootCommand();
Command recordCommand();
Command searchCommand();
Command setCommand();
Command showCommand();
Command watchCommand();
