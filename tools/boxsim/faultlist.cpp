#include "boxsim/faultlist.h"

#include "boxsim/helpline.h"
#include "boxsim/options.h"

namespace {

// How a fault's value reads. The target is the one member that is not null.
struct Fault {
    const char *name;
    const char *value;    // its placeholder; null for a fault without one
    const char *sentence; // a line feed where the help breaks it
    bool BoxSimFaults::*flag;
    int BoxSimFaults::*number;
    int least;     // of number
    int byDefault; // of number, where no value is given; below least if one is needed
};

constexpr int needed = -2;

// clang-format off
const Fault faultTable[] = {
    {"silent", nullptr, "Accept connections and never send a byte.", &BoxSimFaults::silent, nullptr, 0, 0},
    {"no-heartbeat", nullptr, "Leave heartbeats unanswered.", &BoxSimFaults::noHeartbeat, nullptr, 0, 0},
    {"no-json", nullptr, "Leave JSON requests unanswered; writes are carried\nout.", &BoxSimFaults::noJson, nullptr, 0, 0},
    {"no-discovery", nullptr, "Leave search datagrams unanswered.", &BoxSimFaults::noDiscovery, nullptr, 0, 0},
    {"late-heartbeat", "ms", "Wait before each heartbeat answer.", nullptr, &BoxSimFaults::lateHeartbeat, 0, needed},
    {"late-json", "ms", "Wait before each JSON answer.", nullptr, &BoxSimFaults::lateJson, 0, needed},
    {"late-verdict", "ms", "Wait before each transfer's verdict.", nullptr, &BoxSimFaults::lateVerdict, 0, needed},
    {"split", "bytes", "Send in pieces of so many bytes (1 if not said).", nullptr, &BoxSimFaults::split, 1, 1},
    {"split-gap", "ms", "Wait between two pieces of a split.", nullptr, &BoxSimFaults::splitGap, 0, needed},
    {"join", "ms", "Gather what is sent for so long (100 if not said),\nthen send it in one piece.", nullptr, &BoxSimFaults::join, 1, 100},
    {"noise", "bytes", "Send so many bytes of noise (16 if not said)\nbefore each frame.", nullptr, &BoxSimFaults::noise, 1, 16},
    {"drop-after-received", "bytes", "End a connection after so many bytes from it.", nullptr, &BoxSimFaults::dropAfterReceived, 1, needed},
    {"drop-after-sent", "bytes", "End a connection after so many bytes to it.", nullptr, &BoxSimFaults::dropAfterSent, 1, needed},
    {"refuse-second", nullptr, "Refuse a second connection while there is one.", &BoxSimFaults::refuseSecond, nullptr, 0, 0},
    {"type-number", nullptr, "Answer JSON requests with type as a number.", &BoxSimFaults::typeAsNumber, nullptr, 0, 0},
    {"code-number", nullptr, "Answer JSON writes with code as a number.", &BoxSimFaults::codeAsNumber, nullptr, 0, 0},
    {"capitals", nullptr, "Answer JSON reads with ON and OFF for on and off.", &BoxSimFaults::capitals, nullptr, 0, 0},
    {"ignore-writes", nullptr, "Answer JSON writes and carry none out.", &BoxSimFaults::ignoreWrites, nullptr, 0, 0},
    {"wrong-total", "segment", "Announce one byte too many in that segment of each\nreport, or in all (0, if not said).", nullptr, &BoxSimFaults::wrongTotal, 0, 0},
    {"wrong-number", "segment", "Number that segment of each report one too high,\nor all (0, if not said).", nullptr, &BoxSimFaults::wrongNumber, 0, 0},
    {"segment-size", "bytes", "Cut reports into segments of so many bytes in\nplace of 1024.", nullptr, &BoxSimFaults::segmentSize, 1, needed},
    {"flood", "rate", "Send so many reports a second (1000 if not said),\nwhatever the interval.", nullptr, &BoxSimFaults::flood, 1, 1000},
    {"interleave", nullptr, "Mix the segments of all Standards' reports.", &BoxSimFaults::interleave, nullptr, 0, 0},
    {"invalid", "n", "Report every n-th point as not valid (every one if\nnot said).", nullptr, &BoxSimFaults::invalidEvery, 1, 1},
};
// clang-format on

constexpr int largestNumber = 100000000;
constexpr int largestSegment = 65000; // its frame still fits the 16-bit length

struct VerdictName {
    const char *name;
    BoxSimVerdict verdict;
    const char *sentence;
};

const VerdictName verdictNames[] = {
    {"bad", BoxSimVerdict::Bad, "Call every file that is sent damaged."},
    {"wrong-command", BoxSimVerdict::WrongCommand, "End transfers with the other transfer's command."},
    {"wrong-subtype", BoxSimVerdict::WrongSubType, "End transfers with sub-type 2 in place of 3."},
    {"wrong-header", BoxSimVerdict::WrongHeader, "End transfers with the header 12 35."},
    {"partial", BoxSimVerdict::Partial, "End transfers with half of a verdict."},
    {"too-long", BoxSimVerdict::TooLong, "End transfers with a verdict of one byte too many."},
    {"none", BoxSimVerdict::None, "End transfers without a verdict."},
};

bool applyNumber(const Fault &fault, bool given, const QString &value, BoxSimFaults *faults)
{
    bool ok = true;
    const int number = given ? value.toInt(&ok) : fault.byDefault;
    const int most = fault.number == &BoxSimFaults::segmentSize ? largestSegment : largestNumber;
    if (!ok || number < fault.least || number > most) {
        return false;
    }
    faults->*fault.number = number;
    return true;
}

bool applyVerdict(const QString &value, BoxSimFaults *faults)
{
    for (const VerdictName &entry : verdictNames) {
        if (value == QLatin1String(entry.name)) {
            faults->verdict = entry.verdict;
            return true;
        }
    }
    return false;
}

// "500" refuses every write and the reboot, "105:500" the requests of that type.
bool applyRefusal(const QString &value, BoxSimFaults *faults)
{
    const int colon = value.indexOf(QLatin1Char(':'));
    bool ok = true;
    const int type = colon < 0 ? 0 : value.leftRef(colon).toInt(&ok);
    const QString code = value.mid(colon + 1);
    if (!ok || code.isEmpty()) {
        return false;
    }
    faults->refusedWrites.insert(type, code);
    return true;
}

bool applyValue(const QString &name, bool given, const QString &value, BoxSimFaults *faults, bool *known)
{
    *known = true;
    if (name == QLatin1String("verdict")) {
        return applyVerdict(value, faults);
    }
    if (name == QLatin1String("refuse-write")) {
        return applyRefusal(value, faults);
    }
    if (name == QLatin1String("missing-key")) {
        faults->missingKey = value;
        return !value.isEmpty();
    }
    if (name == QLatin1String("number-key")) {
        faults->numberKey = value;
        return !value.isEmpty();
    }
    for (const Fault &fault : faultTable) {
        if (name != QLatin1String(fault.name)) {
            continue;
        }
        if (fault.flag) {
            faults->*fault.flag = true;
            return !given;
        }
        return applyNumber(fault, given, value, faults);
    }
    *known = false;
    return false;
}

} // namespace

bool applyFault(const QString &text, BoxSimFaults *faults, QString *error)
{
    const int equals = text.indexOf(QLatin1Char('='));
    const QString name = text.left(equals);
    BoxSimFaults changed = *faults;
    bool known = false;
    if (!applyValue(name, equals >= 0, equals < 0 ? QString() : text.mid(equals + 1), &changed, &known)) {
        if (error) {
            *error = known ? QStringLiteral("fault %1 cannot be set so: %2").arg(name, text)
                           : QStringLiteral("there is no fault %1").arg(name);
        }
        return false;
    }
    *faults = changed;
    return true;
}

QString faultList()
{
    QString list;
    for (const Fault &fault : faultTable) {
        QString name = QString::fromLatin1(fault.name);
        if (fault.value) {
            const bool optional = fault.byDefault >= fault.least;
            name += QString::fromLatin1(optional ? "[=%1]" : "=%1").arg(QLatin1String(fault.value));
        }
        list += helpLine(name, QString::fromLatin1(fault.sentence));
    }
    for (const VerdictName &entry : verdictNames) {
        list += helpLine(QStringLiteral("verdict=") + QLatin1String(entry.name),
                         QString::fromLatin1(entry.sentence));
    }
    list += helpLine(QStringLiteral("refuse-write=[type:]code"),
                     QStringLiteral("Refuse writes and the reboot with this code, all\n"
                                    "or those of a type (105:500)."));
    list +=
        helpLine(QStringLiteral("missing-key=key"), QStringLiteral("Leave this key out of read answers."));
    list += helpLine(QStringLiteral("number-key=key"),
                     QStringLiteral("Have a number for this key in read answers."));
    return list;
}
