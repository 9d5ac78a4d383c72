#include "boxctl/call.h"

#include "boxctl/output.h"

Call::Call(const Command &command)
    : m_command(command)
{
    m_parser.addOptions(command.options);
    m_parser.addOption(
        {{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Print this help and end.")});
}

bool Call::parse(const QStringList &arguments)
{
    return m_parser.parse(arguments);
}

QString Call::help() const
{
    const QString options = m_parser.helpText();
    const QString usage = QStringLiteral("Usage: boxctl %1 [options] %2")
                              .arg(QLatin1String(m_command.name), QLatin1String(m_command.arguments));
    return QStringLiteral("%1\n%2\n\n%3\n\n%4")
        .arg(usage.trimmed(), QLatin1String(m_command.summary), QLatin1String(m_command.details),
             options.mid(options.indexOf(QLatin1String("Options:"))));
}

std::optional<int> Call::number(const char *option, int least, int most) const
{
    bool ok = false;
    const int number = value(option).toInt(&ok);
    return ok && number >= least && number <= most ? std::optional(number) : std::nullopt;
}

std::optional<int> Call::milliseconds(const char *option, double least, int most) const
{
    bool ok = false;
    const double seconds = value(option).toDouble(&ok);
    return ok && seconds >= least && seconds <= most ? std::optional(int(seconds * 1000)) : std::nullopt;
}

int Call::wrong(const QString &why) const
{
    const QString name = QLatin1String(m_command.name);
    Output::error(QStringLiteral("%1: %2").arg(name, why));
    Output::error(QStringLiteral("try boxctl %1 --help").arg(name));
    return WrongCall;
}
