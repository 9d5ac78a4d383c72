#include "boxsim/scenariolist.h"

namespace {

struct Scenario {
    const char *name;
    const char *sentence;
    const char *arguments; // with one space between two
};

// clang-format off
const Scenario scenarioTable[] = {
    {"lively", "Every Standard reports each second, and one point in ten is not valid.",
     "--report-interval 1000 --fault invalid=10"},
    {"slow", "Answers come late, yet in time.",
     "--fault late-heartbeat=2000 --fault late-json=3000 --fault late-verdict=6000"},
    {"dead", "The port is open and nothing ever answers.",
     "--fault silent --fault no-discovery"},
    {"deaf", "Settings and reports work, heartbeats stay unanswered: the tool warns after 30 seconds.",
     "--fault no-heartbeat"},
    {"bad-line", "Frames come in pieces with noise between them.",
     "--fault split=7 --fault split-gap=5 --fault noise=16"},
    {"loose-plug", "Each connection breaks after 20000 bytes to it.",
     "--fault drop-after-sent=20000"},
    {"locked", "Every write is refused, and every file is called damaged.",
     "--fault refuse-write=403 --fault verdict=bad"},
    {"young-firmware", "Typical mistakes of a new firmware: numbers for strings, a key forgotten.",
     "--fault type-number --fault code-number --fault missing-key=lanDns2"},
    {"broken-reports", "Reports announce wrong totals and mix their segments.",
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

QVector<HelpEntry> scenarioEntries()
{
    QVector<HelpEntry> entries;
    for (const Scenario &scenario : scenarioTable) {
        entries.append({QString::fromLatin1(scenario.name),
                        QString::fromLatin1("%1 (%2)").arg(QLatin1String(scenario.sentence),
                                                           QLatin1String(scenario.arguments))});
    }
    return entries;
}
