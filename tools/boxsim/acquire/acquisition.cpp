#include "boxsim/acquire/acquisition.h"

#include "boxsim/acquire/linesilence.h"
#include "boxsim/acquire/link.h"
#include "boxsim/acquire/readerkinds.h"
#include "boxsim/acquire/serialsettings.h"

#include <QFileInfo>

#include <algorithm>
#include <utility>

namespace {

// Why a Standard cannot be read, empty if it can.
QString obstacle(const SimStandard &standard, const ReaderKind *kind, const QString &serialPath)
{
    if (!kind) {
        return QStringLiteral("%1 %2").arg(standard.protocol, standard.mode).trimmed()
            + QStringLiteral(" is not served by this boxsim");
    }
    if (kind->serial && serialPath.isEmpty()) {
        return QStringLiteral("no --serial names the line for ")
            + standard.parameters.value(QStringLiteral("serialport"));
    }
    return QString();
}

// The points that nobody can be asked for.
void tellOutside(const SimStandard &standard, const std::function<void(const QString &)> &tell)
{
    const QString name = QStringLiteral("\"%1\": ").arg(standard.name);
    QVector<bool> hasDevice(standard.points.size());
    for (const SimDevice &device : standard.devices) {
        std::fill_n(hasDevice.begin() + device.firstPoint, device.pointCount, true);
    }
    for (int i = 0; i < standard.points.size(); ++i) {
        if (!hasDevice.at(i)) {
            tell(name
                 + QStringLiteral("%1 is not read, it belongs to no device").arg(standard.points.at(i).name));
        }
    }
    if (standard.leftOut > 0) {
        tell(name
             + QStringLiteral("%1 points are left out, %2 are the most")
                   .arg(standard.leftOut)
                   .arg(standard.points.size()));
    }
}

// A line may have two names, such as those that udev gives to an adapter.
QString fileOf(const QString &path)
{
    const QString file = QFileInfo(path).canonicalFilePath();
    return file.isEmpty() ? path : file;
}

QVector<Acquisition::SerialName> serialNames(const QVector<SimStandard> &standards,
                                             const AcquireOptions &options)
{
    QVector<Acquisition::SerialName> names;
    for (const SimStandard &standard : standards) {
        const ReaderKind *kind = readerKind(standard);
        const QString port = standard.parameters.value(QStringLiteral("serialport"));
        const QString path = kind && kind->serial ? options.serialLines.value(port) : QString();
        names.append({path, fileOf(path), serialSettings(standard.parameters, {}).timeout});
    }
    return names;
}

// The other names that have the line if it turns out to be theirs: those of files that were there when the
// project began, then the first.
QStringList namesBefore(const QVector<Acquisition::SerialName> &names, const QString &file)
{
    QStringList files;
    for (const Acquisition::SerialName &name : names) {
        files.append(name.file);
    }
    std::stable_partition(files.begin(), files.end(),
                          [](const QString &path) { return QFileInfo::exists(path); });
    QStringList before;
    for (const Acquisition::SerialName &name : names) {
        if (!name.path.isEmpty() && files.indexOf(name.file) < files.indexOf(file)) {
            before.append(name.path);
        }
    }
    return before;
}

// Until it was silent for so long, the line may still have an answer to somebody else if its path leads to
// another file than before. That has to begin anew while it cannot be opened, as it may be in use.
std::function<void()> silenceAfterMove(const ReaderSetup &setup, const QString &file, int longest)
{
    return [path = setup.serialPath, silence = setup.silence, last = file, longest, moved = false]() mutable {
        const bool hasMoved = last != fileOf(path);
        last = fileOf(path);
        moved = hasMoved || (moved && silence->isNeeded());
        if (moved) {
            silence->need(longest);
        }
    };
}

// Refuses a line while another name leads to its file, which could not be known when the project began: each
// has a link of its own. That is told once.
std::function<bool(QString *)> lineGuard(const ReaderSetup &setup, const QStringList &others,
                                         const std::function<void()> &notice)
{
    const QString refusal =
        QStringLiteral("\"%1\": %2 is not read, ").arg(setup.standard->name, setup.serialPath);
    return [path = setup.serialPath, tell = setup.tell, others, refusal, notice,
            told = false](QString *reason) mutable {
        notice();
        for (const QString &other : others) {
            if (fileOf(other) == fileOf(path)) {
                *reason = QStringLiteral("%1 is the same line").arg(other);
                if (!std::exchange(told, true)) {
                    tell(refusal + *reason);
                }
                return false;
            }
        }
        return true;
    };
}

} // namespace

Acquisition::Acquisition(QObject *parent)
    : QObject(parent)
{
    qRegisterMetaType<QVector<PointReading>>();
}

Acquisition::~Acquisition()
{
    stop();
}

void Acquisition::start(const QVector<SimStandard> &standards, const AcquireOptions &options, int interval)
{
    stop();
    m_standards = standards;
    const QVector<SerialName> names = serialNames(standards, options);
    noteLines(names);
    for (int i = 0; i < m_standards.size(); ++i) {
        const SimStandard &standard = m_standards.at(i);
        const ReaderKind *kind = readerKind(standard);
        const SerialName &line = names.at(i);
        const QString why = obstacle(standard, kind, line.path);
        Link *link = kind && !kind->serial ? newLink() : sharedLink(line.file);
        std::unique_ptr<DeviceReader> reader;
        if (kind && why.isEmpty()) {
            const auto tell = [link](const QString &text) { emit link->told(text); };
            ReaderSetup setup{&standard, line.path, options.grouping, link->stopFlag(), tell};
            if (kind->serial) {
                setup.silence = m_silences.value(line.file);
                setup.mayOpen = lineGuard(setup, namesBefore(names, line.file),
                                          silenceAfterMove(setup, line.file, m_longestSilence));
            }
            reader = kind->make(setup);
            tellOutside(standard, tell);
        } else {
            emit link->told(QStringLiteral("\"%1\": not read, %2").arg(standard.name, why));
        }
        link->add(i, standard, std::move(reader), interval > 0 ? interval : standard.interval);
    }
    for (const auto &link : m_links) {
        link->start();
    }
}

void Acquisition::interrupt()
{
    for (const auto &link : m_links) {
        link->stopFlag()->set();
    }
}

void Acquisition::stop()
{
    ++m_generation;
    interrupt();
    m_links.clear();
    m_sharedLinks.clear();
}

Link *Acquisition::newLink()
{
    m_links.push_back(std::make_unique<Link>());
    Link *link = m_links.back().get();
    const int generation = m_generation;
    connect(
        link, &Link::readingOver, this,
        [this, generation, link](int id) {
            if (generation == m_generation) {
                emit readingOver(id, link->takeReading(id));
            }
        },
        Qt::QueuedConnection);
    connect(
        link, &Link::told, this,
        [this, generation](const QString &text) {
            if (generation == m_generation) {
                emit told(text);
            }
        },
        Qt::QueuedConnection);
    return link;
}

Link *Acquisition::sharedLink(const QString &file)
{
    Link *&link = m_sharedLinks[file];
    if (!link) {
        link = newLink();
    }
    return link;
}

// What a path leads to now may have been read under another one, or that of an adapter that is back. So the
// silence is the longest that either project needs.
void Acquisition::noteLines(const QVector<SerialName> &names)
{
    QMap<QString, QString> files;
    int longest = 0;
    for (const SerialName &name : names) {
        if (!name.path.isEmpty()) {
            files.insert(name.path, name.file);
            longest = qMax(longest, name.timeout);
        }
    }
    if (files.isEmpty()) {
        return;
    }
    const bool isFirst = m_files.isEmpty();
    const int owed = qMax(longest, std::exchange(m_longest, longest));
    m_longestSilence = owed;
    for (auto file = files.cbegin(); file != files.cend(); ++file) {
        std::shared_ptr<LineSilence> &silence = m_silences[file.value()];
        if (!silence) {
            silence = std::make_shared<LineSilence>();
        }
        if (!isFirst && m_files.value(file.key()) != file.value()) {
            silence->need(owed);
        }
    }
    m_files = files;
}
