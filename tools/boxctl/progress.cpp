#include "boxctl/progress.h"

#include "boxctl/output.h"
#include "boxctl/terminal.h"

#include <cstdio>

namespace {

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

QStringList linesOf(int count, const std::function<QString(int)> &line, const QString &total)
{
    const int room = Terminal::errorSize().height() - 2; // beside the total and the line with the cursor
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

} // namespace

Progress::Progress(int pause)
    : m_pause(pause)
{
}

bool Progress::draw(int count, const std::function<QString(int)> &line, const QString &total)
{
    if (!Terminal::isErrorTerminal()) {
        return true;
    }
    if (m_drawnAt.isValid() && m_drawnAt.elapsed() < m_pause) {
        return false;
    }
    clear();
    const QStringList lines = linesOf(count, line, total);
    for (const QString &each : lines) {
        print(each);
    }
    m_lines = lines.size();
    m_drawnAt.start();
    return true;
}

void Progress::clear()
{
    if (m_lines > 0) {
        fputs("\r\x1b[2K", stderr); // the line with the cursor, where Ctrl+C is shown
    }
    for (; m_lines > 0; --m_lines) {
        fputs("\x1b[A\x1b[2K", stderr);
    }
}

void Progress::end(const QString &total)
{
    if (Terminal::isErrorTerminal()) {
        clear();
        print(total);
    }
}

void Progress::print(const QString &line)
{
    const int columns = Terminal::errorSize().width() - 1;
    fprintf(stderr, "%s\n", cutToColumns(Output::printable(line), columns).toUtf8().constData());
}
