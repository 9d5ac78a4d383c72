#pragma once

#include "boxctl/command.h"

#include <QCommandLineParser>
#include <QStringList>

#include <optional>

// One call of a command: its arguments and options as they were given.
class Call
{
public:
    explicit Call(const Command &command);

    // False if the arguments are no call of the command; reason() says why.
    bool parse(const QStringList &arguments);
    QString reason() const { return m_parser.errorText(); }
    QString help() const;

    QStringList arguments() const { return m_parser.positionalArguments(); }
    bool isSet(const char *option) const { return m_parser.isSet(QLatin1String(option)); }
    QString value(const char *option) const { return m_parser.value(QLatin1String(option)); }
    // Nothing for what is no whole number in the range.
    std::optional<int> number(const char *option, int least, int most) const;

    // Seconds, which need not be whole, in milliseconds.
    std::optional<int> milliseconds(const char *option, double least, int most) const;

    // Says why the call is wrong and gives the status for it.
    int wrong(const QString &why) const;

private:
    const Command &m_command;
    QCommandLineParser m_parser;
};
