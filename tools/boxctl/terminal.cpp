#include "boxctl/terminal.h"

#include "boxctl/command.h"

#include <QFile>

#include <csignal>

#ifdef Q_OS_UNIX
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>
#endif

namespace {

constexpr QSize usualSize(80, 24);

const QString noTerminal = QStringLiteral("there is no terminal to ask for the password on");

} // namespace

#ifdef Q_OS_UNIX

namespace {

constexpr int filesBeside = 32; // of the program itself

// The terminal that is asked on, and how it was before; for the handler of a signal.
int askedTerminal = -1;
termios terminalBefore = {};

// What is typed is not shown while it lives; Ctrl+C leaves the terminal as it was.
class NoEcho
{
public:
    explicit NoEcho(int terminal)
    {
        askedTerminal = terminal;
        tcgetattr(terminal, &terminalBefore);
        m_handler = std::signal(SIGINT, restoreAndEnd);
        termios quiet = terminalBefore;
        quiet.c_lflag &= ~tcflag_t(ECHO);
        tcsetattr(terminal, TCSAFLUSH, &quiet);
    }
    ~NoEcho()
    {
        tcsetattr(askedTerminal, TCSAFLUSH, &terminalBefore);
        std::signal(SIGINT, m_handler);
    }
    Q_DISABLE_COPY(NoEcho)

private:
    static void restoreAndEnd(int)
    {
        tcsetattr(askedTerminal, TCSAFLUSH, &terminalBefore);
        _exit(SomeFailed);
    }

    void (*m_handler)(int);
};

} // namespace

bool Terminal::isErrorTerminal()
{
    static const bool is = isatty(STDERR_FILENO) == 1;
    return is;
}

bool Terminal::isOutputTerminal()
{
    static const bool is = isatty(STDOUT_FILENO) == 1;
    return is;
}

QSize Terminal::errorSize()
{
    winsize size = {};
    ioctl(STDERR_FILENO, TIOCGWINSZ, &size);
    return {size.ws_col > 0 ? size.ws_col : usualSize.width(),
            size.ws_row > 0 ? size.ws_row : usualSize.height()};
}

std::optional<QString> Terminal::askSecret(const QString &question, QString *error)
{
    QFile terminal(QStringLiteral("/dev/tty"));
    if (!terminal.open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
        *error = noTerminal;
        return std::nullopt;
    }
    QByteArray line;
    {
        const NoEcho noEcho(terminal.handle()); // before the question, which a program may wait for
        terminal.write(question.toUtf8());
        line = terminal.readLine();
    }
    terminal.write("\n");
    if (!line.endsWith('\n')) {
        *error = QStringLiteral("no password was given");
        return std::nullopt;
    }
    line.chop(1);
    return QString::fromUtf8(line);
}

int Terminal::mostConnections()
{
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    limit.rlim_cur = limit.rlim_max;
    setrlimit(RLIMIT_NOFILE, &limit);
    getrlimit(RLIMIT_NOFILE, &limit);
    // A connection that has just ended may hold its file a moment longer.
    return int(qBound<rlim_t>(1, (limit.rlim_cur - qMin<rlim_t>(filesBeside, limit.rlim_cur)) / 2, 100000));
}

#else

bool Terminal::isErrorTerminal()
{
    return false;
}

bool Terminal::isOutputTerminal()
{
    return false;
}

QSize Terminal::errorSize()
{
    return usualSize;
}

std::optional<QString> Terminal::askSecret(const QString &, QString *error)
{
    *error = noTerminal;
    return std::nullopt;
}

int Terminal::mostConnections()
{
    return 1000;
}

#endif
