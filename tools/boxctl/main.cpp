#include "boxctl/call.h"
#include "boxctl/output.h"

#include <QCoreApplication>

namespace {

// clang-format off
const char description[] =
    "Usage: boxctl COMMAND [options] ARGUMENTS\n"
    "  or:  boxctl COMMAND --help\n"
    "\n"
    "Works with Boxes and their projects from a shell or a script, many at once.\n"
    "\n"
    "Options:\n"
    "  -h, --help  Print this help and end.\n"
    "  --help-all  Print it with the help of all commands and end.\n"
    "  --version   Print the program's version and end.\n"
    "\n"
    "Commands:\n";

const char more[] =
    "\n"
    "Boxes:\n"
    "  ADDRESS            One Box, by its IPv4 address.\n"
    "  @FILE              Those of a list, an address a line. A name may stand behind\n"
    "                     it, and what follows a # is a comment.\n"
    "  PROJECT.json:      All Boxes of a project.\n"
    "  PROJECT.json:NAME  One of them.\n"
    "\n"
    "A Box that is named twice counts once.\n"
    "\n"
    "Exit status:\n"
    "  0  All is done.\n"
    "  1  Some Box failed or refused, which is told on the standard error. Of diff:\n"
    "     something differs. Of check: there are errors.\n"
    "  2  The call is wrong. Nothing was sent.\n"
    "  3  A file that was named is no project document, can't be read or, of program,\n"
    "     is empty; of push, the document has errors. Nothing was sent.\n";
// clang-format on

QString help()
{
    QString list;
    for (const Command &command : commands()) {
        list += QStringLiteral("  %1  %2\n")
                    .arg(QLatin1String(command.name), -8)
                    .arg(QLatin1String(command.summary));
    }
    return QLatin1String(description) + list + QLatin1String(more);
}

// A section a command, under its usage: what the manual page is made of, which knows sections by an indented
// line below a colon.
QString helpOfAll()
{
    const QLatin1String usage("Usage: ");
    QString text = help();
    for (const Command &command : commands()) {
        const QString own = Call(command).help();
        text +=
            QStringLiteral("\n%1:\n ").arg(own.section(QLatin1Char('\n'), 0, 0).mid(usage.size()).trimmed())
            + own.section(QLatin1Char('\n'), 1);
    }
    return text;
}

const Command *commandNamed(const QString &name)
{
    for (const Command &command : commands()) {
        if (name == QLatin1String(command.name)) {
            return &command;
        }
    }
    return nullptr;
}

int tell(const QString &text)
{
    Output::text(text);
    return AllDone;
}

int runCommand(const QString &name, const QStringList &arguments)
{
    const Command *command = commandNamed(name);
    if (!command) {
        Output::error(name.startsWith(QLatin1Char('-')) ? QStringLiteral("there is no option ") + name
                                                        : QStringLiteral("there is no command ") + name);
        Output::error(QStringLiteral("try boxctl --help"));
        return WrongCall;
    }
    Call call(*command);
    if (!call.parse(arguments)) {
        return call.wrong(call.reason());
    }
    return call.isSet("help") ? tell(call.help()) : command->run(call);
}

int run(const QStringList &arguments)
{
    const QString first = arguments.value(1);
    if (first == QLatin1String("--help") || first == QLatin1String("-h")) {
        return tell(help());
    }
    if (first == QLatin1String("--help-all")) {
        return tell(helpOfAll());
    }
    if (first == QLatin1String("--version")) {
        return tell(QStringLiteral("boxctl " BOXCTL_VERSION "\n"));
    }
    if (first.isEmpty()) {
        Output::error(QStringLiteral("a command is missing"));
        Output::error(QStringLiteral("try boxctl --help"));
        return WrongCall;
    }
    return runCommand(first, arguments.mid(1));
}

// The core's lines for its developers.
void dropMessage(QtMsgType, const QMessageLogContext &, const QString &) {}

} // namespace

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    qInstallMessageHandler(dropMessage);
    return Output::finish(run(QCoreApplication::arguments()));
}
