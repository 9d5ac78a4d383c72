#include "boxsim/commandline.h"

#include "boxsim/faultlist.h"

#include <QCommandLineParser>

namespace {

const char description[] =
    "A simulated Box: serves sessions, transfers and searches on TCP and UDP as a Box does,\n"
    "runs the project that is pushed to it, and reports moving values for its points.\n"
    "Prints \"listening on ADDRESS:PORT\" when it is ready, then one line a frame.\n"
    "\n"
    "Exit status: 0 ended as asked, 1 could not start, 2 wrong command line.";

struct Option {
    const char *name;
    const char *value; // placeholder; null for a switch
    const char *byDefault;
    const char *sentence;
};

const Option optionTable[] = {
    {"address", "ip", "127.0.0.1", "Listen on this address; 0.0.0.0 for all."},
    {"port", "number", "30088", "Listen on this TCP and UDP port. The tool knows only 30088."},
    {"discovery-address", "ip", nullptr,
     "Listen for search datagrams here; 0.0.0.0 hears broadcasts. As --address if not said."},
    {"no-discovery", nullptr, nullptr, "Do not open the UDP port."},
    {"project", "file", nullptr, "Run this project document from the start."},
    {"report-interval", "ms", nullptr,
     "Let every Standard report so often, in place of its collectionInterval; 0 for no reports."},
    {"seed", "number", "1", "Repeat the values of another run with the same seed."},
    {"set", "key=value", nullptr, "Give a setting its first value, such as lanIp=10.0.0.2. Repeatable."},
    {"box-version", "text", "1.0.0", "Say this program version in heartbeat answers."},
    {"serial", "text", "SIM00000001", "Say this serial number in heartbeat answers."},
    {"model", "text", "MRN-GATE-70", "Say this model in heartbeat and search answers."},
    {"reboot-time", "ms", "2000", "Stay off the network for so long at a reboot; 0 to stay on."},
    {"max-file", "bytes", "67108864", "Fail transfers of larger files."},
    {"save", "folder", nullptr, "Keep the last accepted files there as project.json and program.bin."},
    {"fault", "name[=value]", nullptr, "Misbehave in this way; see --list-faults. Repeatable."},
    {"list-faults", nullptr, nullptr, "List the faults and end."},
    {"log", "file", nullptr, "Append every line to this file as well."},
    {"quiet", nullptr, nullptr, "Print the readiness line and errors only; --log still gets every line."},
    {"once", nullptr, nullptr, "End when the last open connection has closed."},
    {"seconds", "number", nullptr, "End after so many seconds."},
};

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
    parser->setApplicationDescription(QString::fromLatin1(description));
    parser->addHelpOption();
    parser->addVersionOption();
    for (const Option &option : optionTable) {
        QString sentence = QString::fromLatin1(option.sentence);
        if (option.byDefault) {
            sentence += QStringLiteral(" Default: %1.").arg(QLatin1String(option.byDefault));
        }
        parser->addOption(QCommandLineOption(QString::fromLatin1(option.name), sentence,
                                             QString::fromLatin1(option.value),
                                             QString::fromLatin1(option.byDefault)));
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

} // namespace

CommandLine readCommandLine(const QStringList &arguments)
{
    QCommandLineParser parser;
    setUp(&parser);
    if (!parser.parse(arguments)) {
        return just(CommandLine::Action::wrong, parser.errorText());
    }
    if (parser.isSet(QStringLiteral("help"))) {
        return just(CommandLine::Action::help, parser.helpText());
    }
    if (parser.isSet(QStringLiteral("version"))) {
        return just(CommandLine::Action::version,
                    QStringLiteral("boxsim ") + QCoreApplication::applicationVersion());
    }
    if (parser.isSet(QStringLiteral("list-faults"))) {
        return just(CommandLine::Action::listFaults, faultHelp().join(QLatin1Char('\n')));
    }
    CommandLine line;
    Reader reader(parser);
    readOptions(parser, &reader, &line);
    return reader.wrong().isEmpty() ? line : just(CommandLine::Action::wrong, reader.wrong());
}
