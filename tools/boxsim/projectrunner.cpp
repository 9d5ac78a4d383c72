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
    , m_floodTimer(this)
{
    connect(&m_floodTimer, &QTimer::timeout, this, &ProjectRunner::floodTick);
}

void ProjectRunner::run(const SimProject &project, quint32 seed, const QString &serialNumber)
{
    clear();
    m_project = project;
    m_seed = seed;
    m_serialNumber = serialNumber;
    for (const SimStandard &standard : project.standards) {
        if (standard.points.isEmpty()) {
            continue;
        }
        auto stream = std::make_unique<Stream>();
        stream->standard = standard;
        stream->timer = std::make_unique<QTimer>();
        Stream *raw = stream.get();
        connect(raw->timer.get(), &QTimer::timeout, this, [this, raw] { due(*raw); });
        m_streams.push_back(std::move(stream));
    }
    resume();
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
    if (m_pace.flood > 0) {
        m_flooded = 0;
        m_floodClock.start();
        m_floodTimer.start(floodTickTime);
        return;
    }
    if (m_pace.interval == 0) {
        return;
    }
    for (const auto &stream : m_streams) {
        stream->timer->start(0); // due() sets the interval
    }
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

QByteArray ProjectRunner::nextReport(Stream &stream)
{
    if (stream.points.empty()) { // made when they are needed: a project may be pushed and never reported
        stream.points.reserve(static_cast<size_t>(stream.standard.points.size()));
        for (const SimPoint &point : qAsConst(stream.standard.points)) {
            stream.points.emplace_back(point, m_seed);
        }
    }
    QJsonArray datas;
    for (int i = 0; i < stream.standard.points.size(); ++i) {
        const SimPoint &point = stream.standard.points.at(i);
        const bool valid = m_pace.invalidEvery <= 0 || (i + 1) % m_pace.invalidEvery != 0;
        datas.append(QJsonObject{
            {QStringLiteral("name"), point.name},
            {QStringLiteral("addr"), point.addr},
            {QStringLiteral("dataType"), point.dataType},
            {QStringLiteral("value"), stream.points[static_cast<size_t>(i)].value(stream.step)},
            {QStringLiteral("valid"), valid ? QStringLiteral("1") : QStringLiteral("0")},
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
