#include "boxsim/usage.h"

#include "boxsim/faultlist.h"
#include "boxsim/optiontable.h"
#include "boxsim/scenariolist.h"

#include <QStringList>

namespace {

constexpr int lineWidth = 80;
constexpr int sentenceColumn = 28;

const char summary[] = "a simulated Box";

const char description[] =
    "A simulated Box: serves sessions, transfers and searches on TCP and UDP as a Box does, runs the project "
    "that is pushed to it, and reports moving values for its points. Prints \"listening on ADDRESS:PORT\" "
    "when it is ready, then one line a frame.";

const char logText[] =
    "A line of the log tells time, peer, mark, and what the frame says: -> came from the tool, <- went to "
    "it, !! is what a Box does not expect, -- is about the connection or the Box itself. With --hex the "
    "bytes follow, sixteen a line, each line with the offset of its first byte.";

struct Example {
    const char *sentence;
    const char *command;
};

const Example examples[] = {
    {"A Box for the tool on this computer, with a project that runs:",
     "boxsim --address 127.0.0.2 --project riverside-substation.json"},
    {"A Box that the whole network finds, with every byte in a file:",
     "boxsim --address 0.0.0.0 --quiet --hex --log box.log"},
    {"A slow Box that refuses to have its LTE settings written:",
     "boxsim --scenario slow --fault refuse-write=105:500"},
    {"A scenario with one thing changed, since options count for more than it does:",
     "boxsim --scenario slow --fault late-json=500"},
};

QStringList wrapped(const QString &text, int width)
{
    QStringList lines;
    QString line;
    const QStringList words = text.split(QLatin1Char(' '));
    for (const QString &word : words) {
        if (!line.isEmpty() && line.size() + 1 + word.size() > width) {
            lines.append(line);
            line.clear();
        }
        line += line.isEmpty() ? word : QLatin1Char(' ') + word;
    }
    lines.append(line);
    return lines;
}

QString paragraph(const char *text)
{
    return wrapped(QString::fromLatin1(text), lineWidth).join(QLatin1Char('\n'));
}

QVector<HelpEntry> optionEntries(const OptionTable::Group &group)
{
    QVector<HelpEntry> entries;
    for (const OptionTable::Option &option : group.options) {
        HelpEntry entry{QStringLiteral("--") + QLatin1String(option.name),
                        QString::fromLatin1(option.sentence)};
        if (option.value) {
            entry.term += QString::fromLatin1(" <%1>").arg(QLatin1String(option.value));
        }
        if (option.byDefault) {
            entry.sentence += QStringLiteral(" Default: %1.").arg(QLatin1String(option.byDefault));
        }
        entries.append(entry);
    }
    return entries;
}

// Text for roff: hyphens are to be copied into a shell, and no line of text may look like a request.
QString roff(QString text)
{
    text.replace(QLatin1Char('\\'), QLatin1String("\\e"));
    text.replace(QLatin1Char('-'), QLatin1String("\\-"));
    const bool request = text.startsWith(QLatin1Char('.')) || text.startsWith(QLatin1Char('\''));
    return request ? QStringLiteral("\\&") + text : text;
}

QString roffLines(const char *text)
{
    return roff(paragraph(text)) + QLatin1Char('\n');
}

QString roffEntries(const QVector<HelpEntry> &entries)
{
    QString page;
    for (const HelpEntry &entry : entries) {
        page += QStringLiteral(".TP\n.B %1\n%2\n").arg(roff(entry.term), roff(entry.sentence));
    }
    return page;
}

QString roffOptions()
{
    QString page = QStringLiteral(".SH OPTIONS\n");
    for (const OptionTable::Group &group : OptionTable::groups()) {
        page +=
            QStringLiteral(".SS %1\n").arg(QLatin1String(group.title)) + roffEntries(optionEntries(group));
    }
    return page;
}

QString roffExamples()
{
    QStringList parts;
    for (const Example &example : examples) {
        parts.append(QStringLiteral("%1\n.PP\n.RS 4\n.EX\n%2\n.EE\n.RE\n")
                         .arg(roff(QString::fromLatin1(example.sentence)),
                              roff(QString::fromLatin1(example.command))));
    }
    return QStringLiteral(".SH EXAMPLES\n") + parts.join(QStringLiteral(".PP\n"));
}

QVector<HelpEntry> statusEntries()
{
    return {{QStringLiteral("0"), QStringLiteral("ended as asked")},
            {QStringLiteral("1"), QStringLiteral("could not start")},
            {QStringLiteral("2"), QStringLiteral("wrong command line")}};
}

} // namespace

QString Usage::columns(const QVector<HelpEntry> &entries)
{
    QStringList lines;
    for (const HelpEntry &entry : entries) {
        QString line = QStringLiteral("  ") + entry.term;
        if (line.size() >= sentenceColumn) {
            lines.append(line);
            line.clear();
        }
        const QStringList sentence = wrapped(entry.sentence, lineWidth - sentenceColumn);
        for (const QString &part : sentence) {
            lines.append(line.leftJustified(sentenceColumn) + part);
            line.clear();
        }
    }
    return lines.join(QLatin1Char('\n'));
}

QString Usage::help()
{
    QStringList parts = {QStringLiteral("Usage: boxsim [options]"), paragraph(description)};
    for (const OptionTable::Group &group : OptionTable::groups()) {
        parts.append(QString::fromLatin1(group.title) + QStringLiteral(":\n")
                     + columns(optionEntries(group)));
    }
    QStringList lines = {QStringLiteral("Examples:")};
    for (const Example &example : examples) {
        lines.append(QStringLiteral("  ") + QLatin1String(example.sentence));
        lines.append(QStringLiteral("    ") + QLatin1String(example.command));
    }
    parts.append(lines.join(QLatin1Char('\n')));
    parts.append(QStringLiteral("Exit status:\n") + columns(statusEntries()));
    return parts.join(QStringLiteral("\n\n"));
}

QString Usage::manualPage()
{
    return QStringLiteral(".\\\" Made by boxsim --man.\n"
                          ".TH BOXSIM 1 \"\" \"Marlin Gate 70\" \"User Commands\"\n"
                          ".SH NAME\nboxsim \\- ")
        + QLatin1String(summary)
        + QStringLiteral("\n.SH SYNOPSIS\n.B boxsim\n.RI [ options ]\n.SH DESCRIPTION\n")
        + roffLines(description) + roffOptions() + QStringLiteral(".SH SCENARIOS\n")
        + roffEntries(scenarioEntries()) + QStringLiteral(".SH FAULTS\n") + roffEntries(faultEntries())
        + QStringLiteral(".SH LOG\n") + roffLines(logText) + roffExamples()
        + QStringLiteral(".SH EXIT STATUS\n") + roffEntries(statusEntries())
        + QStringLiteral(".SH SEE ALSO\n.BR marlin\\-gate\\-70 (1)\n");
}
