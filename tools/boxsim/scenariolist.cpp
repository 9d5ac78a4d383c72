#include "boxsim/scenariolist.h"

#include "boxsim/helpline.h"

namespace {

struct Scenario {
    const char *name;
    const char *sentence;  // a line feed where the help breaks it
    const char *arguments; // with one space between two
};

// clang-format off
const Scenario scenarioTable[] = {
    {"lively", "Every Standard reports each second, and one point\nin ten is not valid.",
     "--report-interval 1000 --fault invalid=10"},
    {"slow", "Answers come late, yet in time.",
     "--fault late-heartbeat=2000 --fault late-json=3000 --fault late-verdict=6000"},
    {"dead", "The port is open and nothing ever answers.",
     "--fault silent --fault no-discovery"},
    {"deaf", "Settings and reports work, heartbeats stay\nunanswered: the tool warns after 30 seconds.",
     "--fault no-heartbeat"},
    {"bad-line", "Frames come in pieces with noise between them.",
     "--fault split=7 --fault split-gap=5 --fault noise=16"},
    {"loose-plug", "Each connection breaks after 20000 bytes to it.",
     "--fault drop-after-sent=20000"},
    {"locked", "Every write is refused, and every file is called\ndamaged.",
     "--fault refuse-write=403 --fault verdict=bad"},
    {"young-firmware", "Typical mistakes of a new firmware: numbers for\nstrings, a key forgotten.",
     "--fault type-number --fault code-number --fault missing-key=lanDns2"},
    {"broken-reports", "Reports announce wrong totals and mix their\nsegments.",
     "--fault wrong-total=2 --fault interleave"},
    {"flood", "A thousand reports a second.",
     "--fault flood=1000"},
};
// clang-format on

} // namespace

QStringList scenarioArguments(const QString &name)
{
    for (const Scenario &scenario : scenarioTable) {
        if (name == QLatin1String(scenario.name)) {
            return QString::fromLatin1(scenario.arguments).split(QLatin1Char(' '));
        }
    }
    return {};
}

QString scenarioList()
{
    QString list;
    for (const Scenario &scenario : scenarioTable) {
        QString arguments = QString::fromLatin1(scenario.arguments);
        arguments.replace(QLatin1String(" --"), QLatin1String("\n--"));
        list += helpLine(QString::fromLatin1(scenario.name),
                         QString::fromLatin1(scenario.sentence) + QLatin1Char('\n') + arguments);
    }
    return list;
}
