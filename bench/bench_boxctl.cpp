// boxctl as a process on 200 simulated Boxes in another.

#include "boxsim/boxrange.h"
#include "boxsim/pointsignal.h"
#include "boxsim/simproject.h"
#include "document/projectwriter.h"
#include "support/largeplant.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardItem>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <map>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr int boxCount = 200;
const char firstAddress[] = "127.1.32.1";
constexpr int longest = 300000; // ms

// The processor time of the programs that have ended, in seconds.
double endedTime()
{
    rusage usage = {};
    getrusage(RUSAGE_CHILDREN, &usage);
    const auto seconds = [](const timeval &time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

// The processor time of one that runs, in seconds.
double runningTime(const QProcess &process)
{
    QFile file(QStringLiteral("/proc/%1/stat").arg(process.processId()));
    const bool isOpen = file.open(QIODevice::ReadOnly);
    const QList<QByteArray> fields = isOpen ? file.readAll().split(' ') : QList<QByteArray>();
    return (fields.value(13).toDouble() + fields.value(14).toDouble()) / double(sysconf(_SC_CLK_TCK));
}

// The most bytes that a process has had in memory.
double mostResident(const QProcess &process)
{
    QFile file(QStringLiteral("/proc/%1/status").arg(process.processId()));
    if (file.open(QIODevice::ReadOnly)) {
        const QList<QByteArray> lines = file.readAll().split('\n');
        for (const QByteArray &line : lines) {
            if (line.startsWith("VmHWM:")) {
                return line.mid(6).trimmed().split(' ').first().toDouble() * 1024;
            }
        }
    }
    return 0;
}

// The Boxes in a process of their own, and a folder with the project and the list of their addresses.
class Plant
{
public:
    explicit Plant(const LargePlant::Shape &shape, const QStringList &options)
    {
        QByteArray list;
        for (int box = 1; box <= boxCount; ++box) {
            list += "127.1.32." + QByteArray::number(box) + '\n';
        }
        write(QStringLiteral("list"), list);
        write(QStringLiteral("plant.json"), projectDocument(LargePlant::modbusProject(shape).get()));
        m_boxes.setWorkingDirectory(m_folder.path());
        m_boxes.start(QStringLiteral(BOXSIM_PROGRAM),
                      QStringList{QStringLiteral("--address"), QStringLiteral("127.1.32.1-200"),
                                  QStringLiteral("--quiet"), QStringLiteral("--no-discovery")}
                          + options,
                      QIODevice::ReadOnly);
        if (!m_boxes.waitForReadyRead(longest)) {
            qFatal("no simulated Boxes");
        }
    }
    ~Plant()
    {
        m_boxes.kill();
        m_boxes.waitForFinished();
    }
    Q_DISABLE_COPY(Plant)

    QString path(const QString &name) const { return m_folder.filePath(name); }
    QByteArray contents(const QString &name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    void start(QProcess *process, const char *program, const QString &arguments) const
    {
        process->setWorkingDirectory(m_folder.path());
        process->setStandardErrorFile(QProcess::nullDevice());
        process->start(QString::fromUtf8(program), arguments.split(QLatin1Char(' ')), QIODevice::ReadOnly);
    }
    // Whether it ended well.
    bool run(const char *program, const QString &arguments) const
    {
        QProcess process;
        start(&process, program, arguments);
        return process.waitForFinished(longest) && process.exitCode() == 0;
    }

private:
    void write(const QString &name, const QByteArray &bytes) const
    {
        QFile file(path(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
            qFatal("%s can't be written", qPrintable(name));
        }
    }

    const QTemporaryDir m_folder;
    QProcess m_boxes;
};

// A document of 1 MB, for Boxes that report nothing.
Plant pushedPlant(const QString &fault = {})
{
    LargePlant::Shape shape;
    shape.standards = 3;
    shape.points = 60;
    QStringList options{QStringLiteral("--report-interval"), QStringLiteral("0")};
    if (!fault.isEmpty()) {
        options += {QStringLiteral("--fault"), fault};
    }
    return Plant(shape, options);
}

const char pushAll[] = "push --force --jobs %1 plant.json @list";

void measure(benchmark::State &state, const Plant &plant, const char *program, const QString &arguments)
{
    for (auto _ : state) {
        const double before = endedTime();
        if (!plant.run(program, arguments)) {
            state.SkipWithError("a push failed");
        }
        state.counters["cpu"] = endedTime() - before;
    }
}

void push(benchmark::State &state)
{
    measure(state, pushedPlant(), BOXCTL_PROGRAM, QString::fromLatin1(pushAll).arg(state.range(0)));
}

void barePush(benchmark::State &state)
{
    measure(state, pushedPlant(), BARE_PUSH, QStringLiteral("plant.json 127.1.32.1 200"));
}

// Each Box takes its time for the verdict.
const char slowVerdict[] = "late-verdict=100";

void pushSlow(benchmark::State &state)
{
    measure(state, pushedPlant(QString::fromLatin1(slowVerdict)), BOXCTL_PROGRAM,
            QString::fromLatin1(pushAll).arg(16));
}

void barePushSlow(benchmark::State &state)
{
    measure(state, pushedPlant(QString::fromLatin1(slowVerdict)), BARE_PUSH,
            QStringLiteral("plant.json 127.1.32.1 200"));
}

// The most memory while a project is pushed to this many Boxes at once.
void pushMemory(benchmark::State &state)
{
    const Plant plant = pushedPlant(QStringLiteral("late-verdict=1000"));
    const QString boxes = state.range(0) == 1 ? QString::fromLatin1(firstAddress) : QStringLiteral("@list");
    for (auto _ : state) {
        QProcess process;
        plant.start(&process, BOXCTL_PROGRAM, QStringLiteral("push --force --jobs 200 plant.json ") + boxes);
        process.waitForStarted();
        double resident = 0;
        while (!process.waitForFinished(20)) {
            resident = std::max(resident, mostResident(process));
        }
        state.counters["resident"] = resident;
        if (process.exitCode() != 0) {
            state.SkipWithError("a push failed");
        }
    }
}

// What the points of one of the Boxes measure, by which its reports are told apart.
class ExpectedValues
{
public:
    ExpectedValues(const SimProject &project, quint32 seed)
    {
        for (const SimPoint &point : project.standards.constFirst().points) {
            m_points.emplace_back(point, seed);
        }
    }

    // Finds the step of a report at or behind this one; -1 for none.
    qint64 stepOf(const QJsonArray &datas, quint64 from) const
    {
        for (quint64 step = from; step < from + mostSteps; ++step) {
            if (isAt(step, datas)) {
                return qint64(step);
            }
        }
        return -1;
    }

private:
    static constexpr int mostSteps = 1000;

    bool isAt(quint64 step, const QJsonArray &datas) const
    {
        for (size_t i = 0; i < m_points.size(); ++i) {
            if (datas.at(int(i)).toObject().value(QLatin1String("value")).toString()
                != m_points[i].value(step)) {
                return false;
            }
        }
        return datas.size() == int(m_points.size());
    }

    std::vector<PointSignal> m_points;
};

// How many reports there are, how many the Box with the fewest has, and how many of all between the first and
// the last of each Box are not.
struct Received {
    int reports = 0;
    int fewest = 0;
    int lost = 0;
};

Received received(const QByteArray &lines, const QByteArray &document, int watched)
{
    SimProject project;
    readSimProject(document, &project, nullptr);
    std::map<QString, ExpectedValues> boxes;
    std::map<QString, qint64> steps; // the next one of each
    std::map<QString, int> counts;
    for (int place = 0; place < boxCount; ++place) {
        BoxSimOptions first;
        first.address = QHostAddress(QLatin1String(firstAddress));
        const BoxSimOptions own = BoxRange::optionsAt(first, place);
        boxes.emplace(own.address.toString(), ExpectedValues(project, own.seed));
    }
    Received received;
    const QList<QByteArray> each = lines.split('\n');
    for (const QByteArray &line : each) {
        const QJsonObject object = QJsonDocument::fromJson(line).object();
        const QString box = object.value(QLatin1String("box")).toString();
        const auto expected = boxes.find(box);
        if (expected == boxes.end()) {
            continue;
        }
        const QJsonArray datas =
            object.value(QLatin1String("report")).toObject().value(QLatin1String("datas")).toArray();
        const bool isFirst = steps.find(box) == steps.end();
        const qint64 step = expected->second.stepOf(datas, isFirst ? 0 : quint64(steps[box]));
        if (step < 0) {
            qFatal("a report that no Box has sent");
        }
        ++received.reports;
        ++counts[box];
        received.lost += isFirst ? 0 : int(step - steps[box]);
        steps[box] = step + 1;
    }
    const auto hasFewer = [](const auto &one, const auto &other) { return one.second < other.second; };
    const auto least = std::min_element(counts.cbegin(), counts.cend(), hasFewer);
    received.fewest = int(counts.size()) == watched ? least->second : 0;
    return received;
}

// Live values of so many Boxes for ten seconds, once all are there.
void watch(benchmark::State &state)
{
    constexpr unsigned starting = 3; // seconds
    constexpr unsigned measured = 10;
    LargePlant::Shape shape;
    shape.standards = 1;
    shape.slaves = 2;
    const Plant plant(shape, {QStringLiteral("--project"), QStringLiteral("plant.json")});
    const bool isOne = state.range(0) == 1;
    for (auto _ : state) {
        QProcess process;
        process.setStandardOutputFile(plant.path(QStringLiteral("reports")));
        plant.start(&process, BOXCTL_PROGRAM,
                    QStringLiteral("watch --json --seconds %1 %2")
                        .arg(starting + measured + 1)
                        .arg(isOne ? QString::fromLatin1(firstAddress) : QStringLiteral("@list")));
        process.waitForStarted();
        sleep(starting);
        const double before = runningTime(process);
        sleep(measured);
        state.counters["cpu"] = runningTime(process) - before;
        state.counters["wall"] = measured;
        state.counters["resident"] = mostResident(process);
        process.waitForFinished(longest);
        const Received all = received(plant.contents(QStringLiteral("reports")),
                                      plant.contents(QStringLiteral("plant.json")), int(state.range(0)));
        state.counters["reports"] = all.reports;
        if (process.exitCode() != 0 || all.lost > 0 || all.fewest < int(measured)) {
            state.SkipWithError("reports are missing");
        }
    }
}

} // namespace

BENCHMARK(push)->Arg(16)->Arg(50)->Arg(200)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(barePush)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(pushSlow)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(barePushSlow)->UseRealTime()->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(pushMemory)->Arg(1)->Arg(200)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(watch)->Arg(1)->Arg(200)->Iterations(1)->Unit(benchmark::kMillisecond);
