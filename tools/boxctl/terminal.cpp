#include "boxctl/terminal.h"

#include "boxctl/command.h"
#include "boxctl/output.h"

#include <QFile>

#include <csignal>
#include <cstdio>

#ifdef Q_OS_UNIX
#include <sys/ioctl.h>
#include <sys/resource.h>
#include <termios.h>
#include <unistd.h>
#endif

namespace {

const QString noTerminal = QStringLiteral("there is no terminal to ask for the password on");

} // namespace

#ifdef Q_OS_UNIX

namespace {

constexpr int filesBeside = 32; // of the program itself
constexpr int usualWidth = 80;
constexpr int usualHeight = 24;

// All zero where the terminal does not say.
winsize windowSize()
{
    winsize size = {};
    ioctl(STDERR_FILENO, TIOCGWINSZ, &size);
    return size;
}

// From Hangul on, where those of East Asia lie, each character counts as two columns: a line that is cut
// early does no harm, one that wraps is not erased.
QString cutToColumns(const QString &text, int columns)
{
    constexpr ushort firstWide = 0x1100;
    int length = 0;
    for (const QChar character : text) {
        const int width = character.unicode() < firstWide ? 1 : 2;
        columns -= character.isLowSurrogate() ? 0 : width; // its other half has counted
        if (columns < 0) {
            break;
        }
        ++length;
    }
    return text.left(length);
}

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

int Terminal::mostLines()
{
    const int rows = windowSize().ws_row;
    return qMax(1, (rows > 0 ? rows : usualHeight) - 1);
}

void Terminal::draw(const QStringList &lines)
{
    const int width = windowSize().ws_col;
    const int columns = (width > 0 ? width : usualWidth) - 1;
    for (const QString &line : lines) {
        fprintf(stderr, "%s\n", cutToColumns(Output::printable(line), columns).toUtf8().constData());
    }
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

int Terminal::mostLines()
{
    return 1;
}

void Terminal::draw(const QStringList &) {}

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

QStringList Terminal::progress(int count, const std::function<QString(int)> &line, const QString &total)
{
    const int room = mostLines() - 1; // above the total
    const int shown = count <= room ? count : room - 1;
    QStringList lines;
    for (int i = 0; i < shown; ++i) {
        lines.append(line(i));
    }
    if (shown >= 0 && shown < count) {
        lines.append(QStringLiteral("and %1 more").arg(count - shown));
    }
    lines.append(total);
    return lines;
}

void Terminal::erase(int lines)
{
    for (int line = 0; line < lines; ++line) {
        fputs("\x1b[A\x1b[2K", stderr);
    }
}
