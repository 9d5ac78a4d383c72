#include "boxsim/projectrunner.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr int floodTickTime = 10;    // milliseconds
constexpr int mostFloodBurst = 1000; // reports a tick, whatever rate is asked

} // namespace

ProjectRunner::ProjectRunner(QObject *parent)
    : QObject(parent)
    , m_acquisition(this)
    , m_floodTimer(this)
{
    connect(&m_floodTimer, &QTimer::timeout, this, &ProjectRunner::floodTick);
    connect(&m_acquisition, &Acquisition::told, this, &ProjectRunner::acquisitionTold);
    connect(&m_acquisition, &Acquisition::readingOver, this,
            [this](int standard, const QVector<PointReading> &readings) {
                Stream &stream = *m_streams[static_cast<size_t>(standard)];
                stream.acquired = readings;
                if (m_pace.flood <= 0) {
                    report(stream);
                }
            });
}

void ProjectRunner::run(const SimProject &project, quint32 seed, const QString &serialNumber)
{
    clear();
    m_project = project;
    m_seed = seed;
    m_serialNumber = serialNumber;
    for (const SimStandard &standard : project.standards) {
        if (!standard.points.isEmpty()) {
            addStream(standard);
        }
    }
    resume();
}

void ProjectRunner::addStream(const SimStandard &standard)
{
    auto stream = std::make_unique<Stream>();
    stream->standard = standard;
    stream->acquired.resize(standard.points.size());
    stream->timer = std::make_unique<QTimer>();
    Stream *raw = stream.get();
    connect(raw->timer.get(), &QTimer::timeout, this, [this, raw] { due(*raw); });
    m_streams.push_back(std::move(stream));
}

void ProjectRunner::clear()
{
    pause();
    m_streams.clear();
    m_project = SimProject();
    m_floodNext = 0;
}

void ProjectRunner::pause()
{
    m_paused = true;
    m_acquisition.stop();
    m_floodTimer.stop();
    for (const auto &stream : m_streams) {
        stream->timer->stop();
    }
}

void ProjectRunner::resume()
{
    m_paused = false;
    if (m_streams.empty()) {
        return;
    }
    if (m_acquire.on && m_pace.interval != 0) {
        acquire();
    }
    if (m_pace.flood > 0) {
        m_flooded = 0;
        m_floodClock.start();
        m_floodTimer.start(floodTickTime);
        return;
    }
    if (m_acquire.on || m_pace.interval == 0) {
        return;
    }
    for (const auto &stream : m_streams) {
        stream->timer->start(0); // due() sets the interval
    }
}

void ProjectRunner::acquire()
{
    QVector<SimStandard> standards;
    for (const auto &stream : m_streams) {
        standards.append(stream->standard);
    }
    m_acquisition.start(standards, m_acquire, m_pace.interval);
}

void ProjectRunner::setPace(const Pace &pace)
{
    const bool repaced = pace.interval != m_pace.interval || pace.flood != m_pace.flood;
    const bool paused = m_paused;
    m_pace = pace;
    if (repaced && !paused) {
        pause();
        resume();
    }
}

QStringList ProjectRunner::standardNames() const
{
    QStringList names;
    for (const auto &stream : m_streams) {
        names.append(stream->standard.name);
    }
    return names;
}

void ProjectRunner::reportNow()
{
    QVector<QByteArray> reports;
    for (const auto &stream : m_streams) {
        reports.append(nextReport(*stream));
    }
    if (m_pace.interleave) {
        emit reportsDue(reports);
        return;
    }
    for (const QByteArray &report : qAsConst(reports)) {
        emit reportsDue({report});
    }
}

void ProjectRunner::due(Stream &stream)
{
    stream.timer->start(m_pace.interval > 0 ? m_pace.interval : stream.standard.interval);
    report(stream);
}

void ProjectRunner::report(Stream &stream)
{
    if (m_pace.interleave) {
        reportNow();
    } else {
        emit reportsDue({nextReport(stream)});
    }
}

void ProjectRunner::floodTick()
{
    const qint64 owed = m_floodClock.elapsed() * m_pace.flood / 1000 - m_flooded;
    m_flooded += owed;
    for (qint64 i = 0; i < qMin<qint64>(owed, mostFloodBurst) && !m_streams.empty(); ++i) {
        m_floodNext = (m_floodNext + 1) % m_streams.size();
        emit reportsDue({nextReport(*m_streams[m_floodNext])});
    }
}

PointReading ProjectRunner::value(const Stream &stream, int point) const
{
    PointReading reading = stream.acquired.at(point);
    if (!m_acquire.on) {
        reading = {stream.points[static_cast<size_t>(point)].value(stream.step), true};
    }
    reading.valid = reading.valid && (m_pace.invalidEvery <= 0 || (point + 1) % m_pace.invalidEvery != 0);
    return reading;
}

QByteArray ProjectRunner::nextReport(Stream &stream)
{
    // Made when they are needed: a project may be pushed and never reported.
    if (!m_acquire.on && stream.points.empty()) {
        stream.points.reserve(static_cast<size_t>(stream.standard.points.size()));
        for (const SimPoint &point : qAsConst(stream.standard.points)) {
            stream.points.emplace_back(point, m_seed);
        }
    }
    QJsonArray datas;
    for (int i = 0; i < stream.standard.points.size(); ++i) {
        const SimPoint &point = stream.standard.points.at(i);
        const PointReading reading = value(stream, i);
        datas.append(QJsonObject{
            {QStringLiteral("name"), point.name},
            {QStringLiteral("addr"), point.addr},
            {QStringLiteral("dataType"), point.dataType},
            {QStringLiteral("value"), reading.value},
            {QStringLiteral("valid"), reading.valid ? QStringLiteral("1") : QStringLiteral("0")},
        });
    }
    ++stream.step;
    const QJsonObject report{
        {QStringLiteral("projectName"), m_project.name},
        {QStringLiteral("plcName"), stream.standard.name},
        {QStringLiteral("description"), m_project.description},
        {QStringLiteral("sn"), m_serialNumber},
        {QStringLiteral("time"),
         QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"))},
        {QStringLiteral("datas"), datas},
    };
    return QJsonDocument(report).toJson(QJsonDocument::Compact);
}
