#include "boxctl/command.h"

const QVector<Command> &commands()
{
    static const QVector<Command> all{
        checkCommand(),
        diffCommand(),
        showCommand(),
    };
    return all;
}
