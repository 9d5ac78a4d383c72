#include "history/recordingrows.h"

#include <limits>

RecordingRows::RecordingRows(const QSet<PointId> &points)
    : m_wanted(points)
{
}

void RecordingRows::add(const Readings &report)
{
    Standard *const standard = standardOf(report);
    if (const auto late = standard->lateness.report(report.time)) {
        breakAll(*standard, *late, SampleState::NoReport);
    }
    ++m_reports;
    for (int place = 0; place < report.rows.size(); ++place) {
        const Reading &reading = report.rows.at(place);
        const int curve = curveOf(standard, place, reading);
        if (curve >= 0) {
            take(curve, report.time, reading);
        }
    }
    for (const int curve : qAsConst(standard->members)) {
        if (m_curves.at(curve).report != m_reports) {
            breakCurve(curve, report.time, SampleState::NoReport);
        }
    }
}

void RecordingRows::endSession(const QString &box, qint64 time)
{
    for (Standard &standard : m_standards) {
        if (standard.id.box == box) {
            standard.lateness.endSession();
            breakAll(standard, time, SampleState::Ended);
        }
    }
}

void RecordingRows::drop(const Readings &standard)
{
    breakAll(*standardOf(standard), standard.time, SampleState::Dropped);
}

void RecordingRows::end(qint64 time, const std::function<bool(const PointId &)> &goesOn)
{
    for (int curve = 0; curve < m_curves.size(); ++curve) {
        if (!goesOn(m_points.at(m_curves.at(curve).point).point.id)) {
            breakCurve(curve, time, SampleState::Ended);
        }
    }
}

QVector<RecordingRows::Row> RecordingRows::takeRows()
{
    QVector<Row> rows;
    rows.swap(m_rows);
    return rows;
}

RecordingRows::Standard *RecordingRows::standardOf(const Readings &report)
{
    const PointId id{report.box, report.project, report.standard, {}};
    auto place = m_placeOfStandard.find(id);
    if (place == m_placeOfStandard.end()) {
        place = m_placeOfStandard.insert(id, m_standards.size());
        m_standards.append({id, {}, {}, {}, {}});
    }
    return &m_standards[*place];
}

// Reports mostly have their points in the order of the one before.
int RecordingRows::curveOf(Standard *standard, int place, const Reading &reading)
{
    if (place < standard->order.size() && standard->order.at(place).first == reading.name) {
        return standard->order.at(place).second;
    }
    const auto known = standard->curves.constFind(reading.name);
    const int curve = known != standard->curves.constEnd() ? *known : addCurve(standard, reading);
    if (place >= standard->order.size()) {
        standard->order.resize(place + 1);
    }
    standard->order[place] = {reading.name, curve};
    return curve;
}

int RecordingRows::addCurve(Standard *standard, const Reading &reading)
{
    PointId id = standard->id;
    id.name = reading.name;
    if (!m_wanted.isEmpty() && !m_wanted.contains(id)) {
        standard->curves.insert(reading.name, -1);
        return -1;
    }
    const int curve = m_curves.size();
    m_curves.append(Curve());
    standard->curves.insert(reading.name, curve);
    standard->members.append(curve);
    m_curves[curve].point = m_points.size();
    m_points.append({{id, reading.address, reading.type}, curve});
    return curve;
}

void RecordingRows::take(int number, qint64 time, const Reading &reading)
{
    Curve &curve = m_curves[number];
    const bool isAgain = curve.report == m_reports;
    if (!isAgain && time <= curve.last) {
        curve.report = m_reports;
        curve.row = -1;
        return;
    }
    if (isAgain && curve.row < 0) {
        return;
    }
    const Point &point = m_points.at(curve.point).point;
    if (point.type != reading.type || point.address != reading.address) {
        setPoint(number, point.id, reading);
    }
    if (!isAgain) {
        curve.row = m_rows.size();
        m_rows.append(Row());
    }
    m_rows[curve.row] = {curve.point, {time, reading.number, reading.state, reading.text}};
    curve.report = m_reports;
    curve.last = time;
    curve.state = reading.state;
}

// Points that take turns with their types must not become more and more.
void RecordingRows::setPoint(int number, const PointId &id, const Reading &reading)
{
    QVector<int> &points = m_pointsOf[id];
    if (points.isEmpty()) {
        points.append(m_curves.at(number).point);
    }
    for (const int each : qAsConst(points)) {
        const Point &point = m_points.at(each).point;
        if (point.type == reading.type && point.address == reading.address) {
            m_curves[number].point = each;
            return;
        }
    }
    m_curves[number].point = m_points.size();
    points.append(m_points.size());
    m_points.append({{id, reading.address, reading.type}, number});
}

void RecordingRows::breakAll(const Standard &standard, qint64 time, SampleState state)
{
    for (const int curve : standard.members) {
        breakCurve(curve, time, state);
    }
}

void RecordingRows::breakCurve(int number, qint64 time, SampleState state)
{
    Curve &curve = m_curves[number];
    if (!isReported(curve.state)) {
        return;
    }
    curve.last = qMax(time, curve.last + 1);
    curve.state = state;
    m_rows.append({curve.point, {curve.last, std::numeric_limits<double>::quiet_NaN(), state, {}}});
}
