#include "history/history.h"

#include "history/lateness.h"
#include "history/series.h"
#include "history/seriesthinning.h"

#include <algorithm>
#include <functional>
#include <limits>

namespace {

constexpr double nothing = std::numeric_limits<double>::quiet_NaN();
constexpr qint64 spare = 16;     // one part in so many of the budget is freed with what is too much
constexpr qint64 curvesPart = 4; // one part in so many is the most that is kept to go on with curves

} // namespace

// The points of the reports with one "plcName".
struct History::Standard {
    using Holds = QHash<PointId, int>;

    // These tell by how much it grows, in bytes.
    qint64 take(const Readings &report, const Holds &holds);
    qint64 breakAll(qint64 time, SampleState state); // but for silent ones
    qint64 breakMissing(qint64 time);
    qint64 addSeries(const QString &name, const Holds &holds);
    qint64 removeSeries(bool (*condition)(const Series &));

    PointId id; // without a name
    bool isForgotten = false;
    Lateness lateness;
    qint64 last = std::numeric_limits<qint64>::min(); // time of the last sample
    quint32 reports = 0;
    std::vector<Series> series;
    std::vector<int> rows; // the series of each row of the last report
    QHash<QString, int> byName;
};

qint64 History::Standard::take(const Readings &report, const Holds &holds)
{
    const qint64 time = std::max(report.time, last + 1);
    const auto late = lateness.report(time);
    qint64 grown = late ? breakAll(*late, SampleState::NoReport) : 0;
    last = time;
    isForgotten = false;
    ++reports;
    size_t found = 0;
    rows.resize(size_t(report.rows.size()), 0);
    for (int row = 0; row < report.rows.size(); ++row) {
        const Reading &reading = report.rows.at(row);
        int &index = rows[size_t(row)];
        // Nearly always a row holds the same point as before.
        if (size_t(index) >= series.size() || !series[size_t(index)].isNamed(reading.name)) {
            index = byName.value(reading.name, int(series.size()));
            grown += size_t(index) == series.size() ? addSeries(reading.name, holds) : 0;
        }
        Series &each = series[size_t(index)];
        if (each.report == reports) {
            grown += each.removeLast();
        } else {
            each.report = reports;
            ++found;
        }
        grown += each.describe(reading.address, reading.type);
        grown += each.append({time, reading.number}, reading.state, reading.text);
    }
    return found == series.size() ? grown : grown + breakMissing(time);
}

qint64 History::Standard::breakAll(qint64 time, SampleState state)
{
    qint64 grown = 0;
    for (Series &each : series) {
        if (!each.isSilent()) {
            grown += each.appendBreak(time, state);
            last = std::max(last, time);
        }
    }
    return grown;
}

qint64 History::Standard::breakMissing(qint64 time)
{
    qint64 grown = 0;
    for (Series &each : series) {
        if (each.report != reports && !each.isSilent()) {
            grown += each.appendBreak(time, SampleState::NoReport);
        }
    }
    return grown;
}

qint64 History::Standard::addSeries(const QString &name, const Holds &holds)
{
    byName.insert(name, int(series.size()));
    series.emplace_back(name);
    series.back().isHeld = !holds.isEmpty() && holds.contains({id.box, id.project, id.standard, name});
    return series.back().bytes();
}

qint64 History::Standard::removeSeries(bool (*condition)(const Series &))
{
    qint64 grown = 0;
    for (const Series &each : series) {
        grown -= condition(each) ? each.bytes() : 0;
    }
    if (grown < 0) {
        series.erase(std::remove_if(series.begin(), series.end(), condition), series.end());
        rows.clear();
        byName.clear();
        for (size_t index = 0; index < series.size(); ++index) {
            byName.insert(series[index].name(), int(index));
        }
    }
    return grown;
}

History::History(qint64 budget, QObject *parent)
    : SampleSource(parent)
    , m_budget(budget)
{
}

History::~History() = default;

void History::add(const Readings &report)
{
    const PointId id{report.box, report.project, report.standard, QString()};
    std::unique_ptr<Standard> &standard = m_standards[id];
    if (!standard) {
        standard = std::make_unique<Standard>();
        standard->id = id;
    }
    m_size += standard->take(report, m_holds);
    if (standard->series.empty()) {
        m_standards.erase(id);
    }
    keepBudget();
    nameBox(report);
    emit grown();
}

void History::nameBox(const Readings &report)
{
    QStringList &names = m_boxNames[{report.box, report.project}];
    if (!report.boxName.isEmpty() && !names.contains(report.boxName)) {
        names.append(report.boxName);
    }
}

void History::endSession(const QString &box, qint64 time)
{
    for (const auto &entry : m_standards) {
        Standard &standard = *entry.second;
        if (standard.id.box == box) {
            standard.lateness.endSession();
            m_size += standard.breakAll(std::max(time, standard.last + 1), SampleState::Ended);
        }
    }
    keepBudget();
    emit grown();
}

void History::hold(const PointId &id)
{
    ++m_holds[id];
    if (Series *series = find(id).series) {
        series->isHeld = true;
    }
}

void History::release(const PointId &id)
{
    const auto holds = m_holds.find(id);
    if (holds == m_holds.end() || --*holds > 0) {
        return;
    }
    m_holds.erase(holds);
    for (auto &asked : m_thinnings) {
        asked.second.erase(id);
    }
    const Found found = find(id);
    if (found.series) {
        found.series->isHeld = false;
        if (found.standard->isForgotten) {
            removeFree(found.standard);
        }
    }
}

void History::forget(const QString &box, const QString &project, const QString &standard)
{
    const auto found = m_standards.find({box, project, standard, QString()});
    if (found != m_standards.end()) {
        found->second->isForgotten = true;
        removeFree(found->second.get());
    }
}

QVector<Point> History::points() const
{
    QVector<Point> points;
    for (const auto &entry : m_standards) {
        const PointId &id = entry.first;
        for (const Series &series : entry.second->series) {
            points.append(
                {{id.box, id.project, id.standard, series.name()}, series.address(), series.type()});
        }
    }
    return points;
}

std::optional<Point> History::point(const PointId &id) const
{
    const Found found = find(id);
    return found.series ? std::make_optional(Point{id, found.series->address(), found.series->type()})
                        : std::nullopt;
}

QStringList History::boxNames(const PointId &id) const
{
    return m_boxNames.value({id.box, id.project});
}

TimeRange History::extent(const PointId &id) const
{
    const Found found = find(id);
    return found.series ? found.series->extent() : TimeRange{0, -1};
}

void History::request(const void *asker, const Request &request)
{
    // What it does not ask for again is not kept.
    Thinnings earlier;
    Thinnings kept;
    earlier.swap(m_thinnings[asker]);
    QVector<Thinned> answers;
    for (const PointId &id : request.points) {
        auto node = earlier.extract(id);
        SeriesThinning thinning = node ? std::move(node.mapped()) : SeriesThinning();
        answers.append(thin(find(id), request, &thinning));
        answers.last().endGaps(request.now);
        if (m_holds.contains(id)) {
            kept.emplace(id, std::move(thinning));
        }
    }
    if (kept.empty()) {
        m_thinnings.erase(asker);
    } else {
        m_thinnings[asker] = std::move(kept);
    }
    // Some may be of windows that are closed.
    if (curvesSize() > m_budget / curvesPart) {
        m_thinnings.clear();
    }
    emit thinned(asker, request, answers);
}

qint64 History::curvesSize() const
{
    qint64 size = 0;
    for (const auto &asked : m_thinnings) {
        for (const auto &each : asked.second) {
            size += each.second.bytes();
        }
    }
    return size;
}

Thinned History::thin(const Found &found, const Request &request, SeriesThinning *earlier)
{
    if (!found.series) {
        return Thinning(request.range, request.columns, Shape::Line).finish();
    }
    Thinning thinning = earlier->thinning(*found.series, request.range, request.columns);
    const auto late = found.standard->lateness.lateSince(request.present());
    if (late && !found.series->isSilent()) {
        thinning.add(Sample{*late, nothing, SampleState::NoReport, {}});
    }
    return thinning.finish();
}

void History::requestAt(const void *asker, const Moment &moment)
{
    QVector<ValueAt> values;
    for (const PointId &id : moment.points) {
        values.append(valueAt(id, moment));
    }
    emit knownAt(asker, moment, values);
}

ValueAt History::valueAt(const PointId &id, const Moment &moment) const
{
    const Found found = find(id);
    if (!found.series || moment.time > moment.now) {
        return {};
    }
    Series::Around around = found.series->around(moment.time);
    const auto late = found.standard->lateness.lateSince(moment.now);
    if (late && !found.series->isSilent()) {
        const Sample missing{*late, nothing, SampleState::NoReport, {}};
        if (*late <= moment.time) {
            around.last = missing;
        } else if (!around.next) {
            around.next = missing;
        }
    }
    return ValueAt::of(around.last ? &*around.last : nullptr, around.next ? &*around.next : nullptr,
                       moment.time);
}

std::unique_ptr<SampleCursor> History::cursor(const PointId &id, const TimeRange &range) const
{
    const Found found = find(id);
    return found.series ? found.series->cursor(range) : Series(QString()).cursor(range);
}

History::Found History::find(const PointId &id) const
{
    const auto standard = m_standards.find({id.box, id.project, id.standard, QString()});
    if (standard == m_standards.end()) {
        return {};
    }
    const auto index = standard->second->byName.constFind(id.name);
    if (index == standard->second->byName.constEnd()) {
        return {standard->second.get(), nullptr};
    }
    return {standard->second.get(), &standard->second->series[size_t(*index)]};
}

// Removes all points that are not held, and the Standard if none is left.
void History::removeFree(Standard *standard)
{
    m_size += standard->removeSeries([](const Series &series) { return !series.isHeld; });
    if (standard->series.empty()) {
        m_standards.erase(PointId(standard->id));
    }
}

void History::keepBudget()
{
    const qint64 wanted = m_budget - m_budget / spare;
    for (const bool held : {false, true}) {
        if (m_size > m_budget) {
            removeOldest(held, wanted);
            removeEmpty();
        }
    }
}

// Until no more than that would be left. The age of a chunk is that of its last sample.
void History::removeOldest(bool held, qint64 wanted)
{
    using Oldest = std::pair<qint64, Series *>;
    std::vector<Oldest> oldest;
    for (const auto &entry : m_standards) {
        for (Series &series : entry.second->series) {
            for (const auto &chunk : series.chunks()) {
                if (series.isHeld == held) {
                    oldest.emplace_back(chunk->lastTime(), &series);
                }
            }
        }
    }
    std::make_heap(oldest.begin(), oldest.end(), std::greater<>());
    qint64 emptied = 0; // bytes that removeEmpty() will free
    while (m_size - emptied > wanted && !oldest.empty()) {
        std::pop_heap(oldest.begin(), oldest.end(), std::greater<>());
        Series &series = *oldest.back().second;
        oldest.pop_back();
        m_size += series.removeOldest();
        emptied += series.isEmpty() && !held ? series.bytes() : 0;
    }
}

// Removes the points that have no samples and are not held.
void History::removeEmpty()
{
    for (auto entry = m_standards.begin(); entry != m_standards.end();) {
        Standard &standard = *entry->second;
        m_size +=
            standard.removeSeries([](const Series &series) { return series.isEmpty() && !series.isHeld; });
        entry = standard.series.empty() ? m_standards.erase(entry) : std::next(entry);
    }
}
