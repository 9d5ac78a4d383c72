#include "boxsim/commandline.h"

#include "boxsim/acquire/readerkinds.h"
#include "boxsim/faultlist.h"
#include "boxsim/scenariolist.h"

#include <QCommandLineParser>
#include <QFileInfo>
#include <QRegularExpression>

namespace {

// clang-format off
const char description[] =
    "A simulated Box: serves sessions, transfers and searches on TCP and UDP as a\n"
    "Box does, runs the project that is pushed to it, and reports moving values for\n"
    "its points. Prints \"listening on ADDRESS:PORT\" when it is ready, then one line\n"
    "a frame. Ends with the status 0 as it is asked to, with 1 if it could not start,\n"
    "with 2 if the command line is wrong.";

const char examples[] =
    "Examples:\n"
    "  A Box for the tool on this computer, with a project that runs:\n"
    "    $ boxsim --address 127.0.0.2 --project riverside-substation.json\n"
    "  A Box that the whole network finds, with every byte in a file:\n"
    "    $ boxsim --address 0.0.0.0 --quiet --hex --log box.log\n"
    "  A plant of 200 Boxes, each with a folder for what it is sent:\n"
    "    $ boxsim --address 127.1.0.1-200 --quiet --save plant\n"
    "  A slow Box that refuses to have its LTE settings written:\n"
    "    $ boxsim --scenario slow --fault refuse-write=105:500\n"
    "  A Box that reads the real devices of its project, one line by a USB adapter:\n"
    "    $ boxsim --project plant.json --acquire --serial COM1=/dev/ttyUSB0\n"
    "  A scenario with one thing changed, since options count for more than it does:\n"
    "    $ boxsim --scenario slow --fault late-json=500";

// Name, what it does, placeholder of its value (a switch has none), default.
QList<QCommandLineOption> options()
{
    return {
        {"address", "Listen on this address; 0.0.0.0 for all. A range such as 127.1.0.1-200 is a Box an address.", "ip", "127.0.0.1"},
        {"port", "Listen on this TCP and UDP port. The tool knows only 30088.", "number", "30088"},
        {"discovery-address", "Listen for search datagrams here; 0.0.0.0 hears broadcasts. As --address if not said.", "ip"},
        {"no-discovery", "Do not open the UDP port."},
        {"box-version", "Say this program version in heartbeat answers.", "text", "1.0.0"},
        {"serial-number", "Say this serial number in heartbeat answers; the number at its end counts up over a range.", "text", "SIM00000001"},
        {"model", "Say this model in heartbeat and search answers.", "text", "MRN-GATE-70"},
        {"set", "Give a setting its first value, such as lanIp=10.0.0.2. Repeatable.", "key=value"},
        {"reboot-time", "Stay off the network for so long at a reboot; 0 to stay on.", "ms", "2000"},
        {"max-file", "Fail transfers of larger files.", "bytes", "67108864"},
        {"save", "Keep the last accepted files there as project.json and program.bin; those of a range in a folder a Box.", "folder"},
        {"project", "Run this project document from the start.", "file"},
        {"report-interval", "Let every Standard report so often, in place of its collectionInterval; 0 for no reports.", "ms"},
        {"acquire", "Read the project's devices, in place of making values up."},
        {"serial", "With --acquire: this line stands for a COM of the project, such as COM1=/dev/ttyUSB0. Repeatable.", "name=path"},
        {"no-grouping", "With --acquire: ask for each Modbus value alone."},
        {"seed", "Repeat the values of another run with the same seed.", "number", "1"},
        {"scenario", "Put a set of options before the others; see the scenarios below. Repeatable.", "name"},
        {"fault", "Misbehave in this way; see the faults below. Repeatable.", "name[=value]"},
        {"list-scenarios", "List the scenarios and end."},
        {"list-faults", "List the faults and end."},
        {"log", "Append every line to this file as well.", "file"},
        {"hex", "Show the bytes of each frame below its line."},
        {"quiet", "Print the readiness line and errors only; --log still gets every line."},
        {"once", "End when the last open connection has closed."},
        {"seconds", "End after so many seconds.", "number"},
        {QStringList{"h", "help"}, "Print this help and end."},
        {"version", "Print the program's version and end."},
    };
}
// clang-format on

void setUp(QCommandLineParser *parser)
{
    parser->setApplicationDescription(QString::fromLatin1(description));
    const QList<QCommandLineOption> all = options();
    for (QCommandLineOption option : all) {
        if (!option.defaultValues().isEmpty()) {
            option.setDescription(QStringLiteral("%1 Default: %2.")
                                      .arg(option.description(), option.defaultValues().constFirst()));
        }
        parser->addOption(option);
    }
}

QString acquisitionHelp()
{
    const QString none = QStringLiteral("nothing, it was left out of this build");
    const QStringList titles = readerTitles();
    return QStringLiteral(
               "\nWith --acquire it reads: %1.\n"
               "All else, IEC 61850 among it, is not served: its points are reported as not\nvalid.\n")
        .arg(titles.isEmpty() ? none : titles.join(QStringLiteral(", ")));
}

QString help(const QCommandLineParser &parser)
{
    return parser.helpText() + acquisitionHelp() + QStringLiteral("\nScenarios:\n") + scenarioList()
        + QStringLiteral("\nFaults:\n") + faultList() + QLatin1Char('\n') + QLatin1String(examples);
}

constexpr int lastNumber = 255; // of an address

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

    // The first address of --address, and how many there are.
    QHostAddress addresses(int *count)
    {
        static const QRegularExpression range(
            QStringLiteral("\\A((?:%1\\.){3}(%1))-(%1)\\z").arg(QStringLiteral("(?:0|[1-9][0-9]{0,2})")));
        if (!text("address").contains(QLatin1Char('-'))) {
            return address("address");
        }
        const QRegularExpressionMatch match = range.match(text("address"));
        const QHostAddress first(match.captured(1));
        const int last = match.captured(3).toInt();
        *count = last - match.captured(2).toInt() + 1;
        if (first.isNull() || first == QHostAddress(QHostAddress::AnyIPv4) || *count < 1
            || last > lastNumber) {
            fail(QStringLiteral("--address takes a range such as 127.1.0.1-200, up to %1").arg(lastNumber));
        }
        return first;
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

QMap<QString, QString> readPairs(const QStringList &pairs, const QString &wrong, Reader *reader)
{
    QMap<QString, QString> found;
    for (const QString &pair : pairs) {
        const int equals = pair.indexOf(QLatin1Char('='));
        if (equals < 1) {
            reader->fail(wrong);
        } else {
            found.insert(pair.left(equals), pair.mid(equals + 1));
        }
    }
    return found;
}

// What opens serial lines takes a relative path from the working folder or from /dev, each as it likes.
QString deviceFile(const QString &path)
{
#ifdef Q_OS_UNIX
    return QFileInfo(path).absoluteFilePath(); // a link stays one: it may lead elsewhere at the next try
#else
    return path; // the name of a port, such as COM3
#endif
}

void readAcquisition(const QCommandLineParser &parser, int boxCount, Reader *reader, AcquireOptions *options)
{
    const QString wrong = QStringLiteral("--serial takes NAME=PATH, such as COM1=/dev/ttyUSB0");
    options->on = parser.isSet(QStringLiteral("acquire"));
    options->grouping = !parser.isSet(QStringLiteral("no-grouping"));
    options->serialLines = readPairs(parser.values(QStringLiteral("serial")), wrong, reader);
    for (QString &line : options->serialLines) {
        if (line.isEmpty()) {
            reader->fail(wrong);
        }
        line = deviceFile(line);
    }
    for (const char *name : {"serial", "no-grouping"}) {
        if (parser.isSet(QLatin1String(name)) && !options->on) {
            reader->fail(QStringLiteral("--%1 needs --acquire").arg(QLatin1String(name)));
        }
    }
    if (boxCount > 1 && !options->serialLines.isEmpty()) {
        reader->fail(QStringLiteral("--serial is for one Box, since a line serves one only"));
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
    options.address = reader->addresses(&line->boxCount);
    options.discoveryAddress = reader->address("discovery-address");
    options.port = static_cast<quint16>(reader->number("port", 0, 65535, options.port));
    options.discovery = !parser.isSet(QStringLiteral("no-discovery"));
    options.reportInterval = reader->number("report-interval", 0, largest, options.reportInterval);
    options.seed = static_cast<quint32>(reader->number("seed", 0, largest, 1));
    options.rebootTime = reader->number("reboot-time", 0, largest, options.rebootTime);
    options.maxFileSize = reader->number("max-file", 0, largest, options.maxFileSize);
    options.version = reader->text("box-version");
    options.serialNumber = reader->text("serial-number");
    options.model = reader->text("model");
    line->projectFile = reader->text("project");
    line->logFile = reader->text("log");
    line->saveFolder = reader->text("save");
    line->hex = parser.isSet(QStringLiteral("hex"));
    line->quiet = parser.isSet(QStringLiteral("quiet"));
    line->once = parser.isSet(QStringLiteral("once"));
    line->seconds = reader->number("seconds", 1, largest / 1000, 0);
    options.settings =
        readPairs(parser.values(QStringLiteral("set")), QStringLiteral("--set takes key=value"), reader);
    readAcquisition(parser, line->boxCount, reader, &options.acquire);
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
        return just(CommandLine::Action::Tell, help(parser));
    }
    if (parser.isSet(QStringLiteral("version"))) {
        return just(CommandLine::Action::Tell,
                    QStringLiteral("boxsim ") + QCoreApplication::applicationVersion());
    }
    if (parser.isSet(QStringLiteral("list-scenarios"))) {
        return just(CommandLine::Action::Tell, scenarioList().chopped(1));
    }
    if (parser.isSet(QStringLiteral("list-faults"))) {
        return just(CommandLine::Action::Tell, faultList().chopped(1));
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
        return just(CommandLine::Action::Wrong, parser.errorText());
    }
    CommandLine line = instead(parser);
    if (line.action != CommandLine::Action::Run) {
        return line;
    }
    Reader reader(parser);
    parser.parse(withScenarios(parser, arguments, &reader));
    readOptions(parser, &reader, &line);
    return reader.wrong().isEmpty() ? line : just(CommandLine::Action::Wrong, reader.wrong());
}
