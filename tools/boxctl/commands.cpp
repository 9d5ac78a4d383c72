#include "boxctl/command.h"

const QVector<Command> &commands()
{
    static const QVector<Command> all{
        searchCommand(), infoCommand(),  getCommand(),    setCommand(),   pushCommand(), programCommand(),
        rebootCommand(), watchCommand(), recordCommand(), checkCommand(), diffCommand(), showCommand(),
    };
    return all;
}
