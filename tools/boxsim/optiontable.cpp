#include "boxsim/optiontable.h"

// clang-format off
const QVector<OptionTable::Group> &OptionTable::groups()
{
    static const QVector<Group> table = {
        {"Network", {
            {"address", "ip", "127.0.0.1", "Listen on this address; 0.0.0.0 for all."},
            {"port", "number", "30088", "Listen on this TCP and UDP port. The tool knows only 30088."},
            {"discovery-address", "ip", nullptr, "Listen for search datagrams here; 0.0.0.0 hears broadcasts. As --address if not said."},
            {"no-discovery", nullptr, nullptr, "Do not open the UDP port."},
        }},
        {"What the Box is", {
            {"box-version", "text", "1.0.0", "Say this program version in heartbeat answers."},
            {"serial", "text", "SIM00000001", "Say this serial number in heartbeat answers."},
            {"model", "text", "MRN-GATE-70", "Say this model in heartbeat and search answers."},
            {"set", "key=value", nullptr, "Give a setting its first value, such as lanIp=10.0.0.2. Repeatable."},
            {"reboot-time", "ms", "2000", "Stay off the network for so long at a reboot; 0 to stay on."},
            {"max-file", "bytes", "67108864", "Fail transfers of larger files."},
            {"save", "folder", nullptr, "Keep the last accepted files there as project.json and program.bin."},
        }},
        {"What it runs", {
            {"project", "file", nullptr, "Run this project document from the start."},
            {"report-interval", "ms", nullptr, "Let every Standard report so often, in place of its collectionInterval; 0 for no reports."},
            {"seed", "number", "1", "Repeat the values of another run with the same seed."},
        }},
        {"How it misbehaves", {
            {"scenario", "name", nullptr, "Put a set of options before the others; see --list-scenarios. Repeatable."},
            {"fault", "name[=value]", nullptr, "Misbehave in this way; see --list-faults. Repeatable."},
            {"list-scenarios", nullptr, nullptr, "List the scenarios and end."},
            {"list-faults", nullptr, nullptr, "List the faults and end."},
        }},
        {"What it tells", {
            {"log", "file", nullptr, "Append every line to this file as well."},
            {"hex", nullptr, nullptr, "Show the bytes of each frame below its line."},
            {"quiet", nullptr, nullptr, "Print the readiness line and errors only; --log still gets every line."},
        }},
        {"When it ends", {
            {"once", nullptr, nullptr, "End when the last open connection has closed."},
            {"seconds", "number", nullptr, "End after so many seconds."},
        }},
        {"Help", {
            {"help", nullptr, nullptr, "Print this help and end."},
            {"man", nullptr, nullptr, "Print the manual page, as roff, and end."},
            {"version", nullptr, nullptr, "Print the program's version and end."},
        }},
    };
    return table;
}
// clang-format on
