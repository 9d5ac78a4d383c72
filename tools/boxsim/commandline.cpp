#include "boxsim/commandline.h"

#include "boxsim/faultlist.h"
#include "boxsim/optiontable.h"
#include "boxsim/scenariolist.h"
#include "boxsim/usage.h"

#include <QCommandLineParser>

namespace {

// Reads options and remembers the first that is wrong.
class Reader
{
public:
    explicit Reader(const QCommandLineParser &parser)
        : m_parser(parser)
    {
    }

    QString text(const char *name) const { return m_parser.value(QLatin1String(name)); }

    int number(const char *name, int least, int most, int byDefault)
    {
        if (text(name).isEmpty() && !m_parser.isSet(QLatin1String(name))) {
            return byDefault;
        }
        bool ok = false;
        const int number = text(name).toInt(&ok);
        if (!ok || number < least || number > most) {
            fail(QStringLiteral("--%1 takes a number from %2 to %3")
                     .arg(QLatin1String(name))
                     .arg(least)
                     .arg(most));
        }
        return number;
    }

    QHostAddress address(const char *name)
    {
        const QHostAddress address(text(name));
        if (address.isNull() && m_parser.isSet(QLatin1String(name))) {
            fail(QStringLiteral("--%1 takes an IP address").arg(QLatin1String(name)));
        }
        return address;
    }

    void fail(const QString &why)
    {
        if (m_wrong.isEmpty()) {
            m_wrong = why;
        }
    }

    QString wrong() const { return m_wrong; }

private:
    const QCommandLineParser &m_parser;
    QString m_wrong;
};

void setUp(QCommandLineParser *parser)
{
    for (const OptionTable::Group &group : OptionTable::groups()) {
        for (const OptionTable::Option &option : group.options) {
            QStringList names = {QString::fromLatin1(option.name)};
            if (names.constFirst() == QLatin1String("help")) {
                names.append(QStringLiteral("h"));
            }
            parser->addOption(QCommandLineOption(names, QString(), QString::fromLatin1(option.value),
                                                 QString::fromLatin1(option.byDefault)));
        }
    }
}

void readSettings(const QStringList &pairs, Reader *reader, BoxSimOptions *options)
{
    for (const QString &pair : pairs) {
        const int equals = pair.indexOf(QLatin1Char('='));
        if (equals < 1) {
            reader->fail(QStringLiteral("--set takes key=value"));
        } else {
            options->settings.insert(pair.left(equals), pair.mid(equals + 1));
        }
    }
}

void readFaults(const QStringList &names, Reader *reader, BoxSimOptions *options)
{
    for (const QString &name : names) {
        QString error;
        if (!applyFault(name, &options->faults, &error)) {
            reader->fail(error);
        }
    }
}

constexpr int largest = 1000000000;

void readOptions(const QCommandLineParser &parser, Reader *reader, CommandLine *line)
{
    BoxSimOptions &options = line->options;
    options.address = reader->address("address");
    options.discoveryAddress = reader->address("discovery-address");
    options.port = static_cast<quint16>(reader->number("port", 0, 65535, options.port));
    options.discovery = !parser.isSet(QStringLiteral("no-discovery"));
    options.reportInterval = reader->number("report-interval", 0, largest, options.reportInterval);
    options.seed = static_cast<quint32>(reader->number("seed", 0, largest, 1));
    options.rebootTime = reader->number("reboot-time", 0, largest, options.rebootTime);
    options.maxFileSize = reader->number("max-file", 0, largest, options.maxFileSize);
    options.version = reader->text("box-version");
    options.serialNumber = reader->text("serial");
    options.model = reader->text("model");
    line->projectFile = reader->text("project");
    line->logFile = reader->text("log");
    line->saveFolder = reader->text("save");
    line->hex = parser.isSet(QStringLiteral("hex"));
    line->quiet = parser.isSet(QStringLiteral("quiet"));
    line->once = parser.isSet(QStringLiteral("once"));
    line->seconds = reader->number("seconds", 1, largest / 1000, 0);
    readSettings(parser.values(QStringLiteral("set")), reader, &options);
    readFaults(parser.values(QStringLiteral("fault")), reader, &options);
    if (!parser.positionalArguments().isEmpty()) {
        reader->fail(QStringLiteral("unexpected argument: ") + parser.positionalArguments().constFirst());
    }
}

CommandLine just(CommandLine::Action action, const QString &text)
{
    CommandLine line;
    line.action = action;
    line.text = text;
    return line;
}

// What is asked for in place of a run; runs if nothing is.
CommandLine instead(const QCommandLineParser &parser)
{
    if (parser.isSet(QStringLiteral("help"))) {
        return just(CommandLine::Action::tell, Usage::help());
    }
    if (parser.isSet(QStringLiteral("man"))) {
        return just(CommandLine::Action::tell, Usage::manualPage().chopped(1)); // its line feed is added
    }
    if (parser.isSet(QStringLiteral("version"))) {
        return just(CommandLine::Action::tell,
                    QStringLiteral("boxsim ") + QCoreApplication::applicationVersion());
    }
    if (parser.isSet(QStringLiteral("list-scenarios"))) {
        return just(CommandLine::Action::tell, Usage::columns(scenarioEntries()));
    }
    if (parser.isSet(QStringLiteral("list-faults"))) {
        return just(CommandLine::Action::tell, Usage::columns(faultEntries()));
    }
    return {};
}

// The arguments with those of the scenarios before them, so that what the user says counts for more.
QStringList withScenarios(const QCommandLineParser &parser, const QStringList &arguments, Reader *reader)
{
    QStringList all = arguments.mid(0, 1);
    const QStringList names = parser.values(QStringLiteral("scenario"));
    for (const QString &name : names) {
        const QStringList scenario = scenarioArguments(name);
        if (scenario.isEmpty()) {
            reader->fail(QStringLiteral("there is no scenario ") + name);
        }
        all += scenario;
    }
    return all + arguments.mid(1);
}

} // namespace

CommandLine readCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    setUp(&parser);
    if (!parser.parse(arguments)) {
        return just(CommandLine::Action::wrong, parser.errorText());
    }
    CommandLine line = instead(parser);
    if (line.action != CommandLine::Action::run) {
        return line;
    }
    Reader reader(parser);
    parser.parse(withScenarios(parser, arguments, &reader));
    readOptions(parser, &reader, &line);
    return reader.wrong().isEmpty() ? line : just(CommandLine::Action::wrong, reader.wrong());
}
