#include "trends/figuremodel.h"

#include "trends/curvestyle.h"
#include "trends/figuretable.h"
#include "trends/figuretexts.h"
#include "trends/trendtexts.h"

#include <QHash>
#include <QIcon>
#include <QSet>

#include <algorithm>

namespace {

struct Title {
    const char *title;
    const char *toolTip;
};
constexpr Title titles[FigureModel::ColumnCount] = {
    {QT_TRANSLATE_NOOP("FigureTable", "Point"),
     QT_TRANSLATE_NOOP("FigureTable", "The point; the check shows its curve or hides it")},
    {QT_TRANSLATE_NOOP("FigureTable", "Type"), QT_TRANSLATE_NOOP("FigureTable", "Data type of the reports")},
    {QT_TRANSLATE_NOOP("FigureTable", "Current"),
     QT_TRANSLATE_NOOP("FigureTable", "The last value on screen, or why there is none")},
    {QT_TRANSLATE_NOOP("FigureTable", "Least"),
     QT_TRANSLATE_NOOP("FigureTable", "The least number on screen")},
    {QT_TRANSLATE_NOOP("FigureTable", "Greatest"),
     QT_TRANSLATE_NOOP("FigureTable", "The greatest number on screen")},
    {QT_TRANSLATE_NOOP("FigureTable", "Mean"),
     QT_TRANSLATE_NOOP("FigureTable", "The mean over the time on screen, without gaps")},
    {QT_TRANSLATE_NOOP("FigureTable", "Skipped"),
     QT_TRANSLATE_NOOP("FigureTable", "Values on screen that are no numbers and are not drawn")},
    {"A", QT_TRANSLATE_NOOP("FigureTable", "The value at marker A")},
    {"B", QT_TRANSLATE_NOOP("FigureTable", "The value at marker B")},
    {"B − A", QT_TRANSLATE_NOOP("FigureTable", "The value at marker B less that at marker A")},
    {QT_TRANSLATE_NOOP("FigureTable", "Scale"),
     QT_TRANSLATE_NOOP("FigureTable", "The check puts the curve on the scale on the right")},
};

// Figures stand on the right, as in all columns of numbers.
int alignmentOf(int column)
{
    const bool isFigure = column >= FigureModel::Current && column <= FigureModel::Difference;
    return int(Qt::AlignVCenter) | int(isFigure ? Qt::AlignRight : Qt::AlignLeft);
}

bool isChecked(const QVariant &value)
{
    return value.toInt() == Qt::Checked;
}

// A state that has been 0 so far goes to 1, at most.
double magnitudeOf(const Curve &curve)
{
    const double magnitude = ValueScale::magnitude(curve.data.statistics);
    const bool isState = curve.point.type.startsWith(QLatin1String("bool"), Qt::CaseInsensitive);
    return magnitude == 0 && isState ? 1 : magnitude;
}

QVariant checkOf(bool on)
{
    return on ? Qt::Checked : Qt::Unchecked;
}

} // namespace

FigureModel::FigureModel(QWidget *list, QObject *parent)
    : QAbstractTableModel(parent)
    , m_list(list)
{
}

QVector<Point> FigureModel::points() const
{
    QVector<Point> points;
    for (const Curve &curve : m_curves) {
        points.append(curve.point);
    }
    return points;
}

QVector<PointId> FigureModel::add(const QVector<Point> &points)
{
    QSet<PointId> known;
    for (const Curve &curve : qAsConst(m_curves)) {
        known.insert(curve.point.id);
    }
    QVector<Point> fresh;
    QVector<PointId> ids;
    for (const Point &point : points) {
        if (!known.contains(point.id)) {
            known.insert(point.id);
            fresh.append(point);
            ids.append(point.id);
        }
    }
    if (fresh.isEmpty()) {
        return {};
    }
    beginInsertRows({}, m_curves.size(), m_curves.size() + fresh.size() - 1);
    for (const Point &point : qAsConst(fresh)) {
        Curve curve;
        curve.point = point;
        curve.style = freeStyle();
        m_curves.append(curve);
    }
    endInsertRows();
    relabel();
    emit curvesChanged();
    return ids;
}

QVector<PointId> FigureModel::remove(const QVector<int> &rows)
{
    QVector<PointId> ids;
    for (int at = 0; at < rows.size();) {
        const int last = rows.at(at);
        int first = last;
        for (; at < rows.size() && rows.at(at) == first; ++at, --first) {
            ids.append(m_curves.at(first).point.id);
        }
        ++first;
        beginRemoveRows({}, first, last);
        m_curves.remove(first, last - first + 1);
        endRemoveRows();
    }
    relabel();
    emit curvesChanged();
    return ids;
}

// The first that no curve has; with more curves than styles the next in turn.
int FigureModel::freeStyle() const
{
    for (int style = 0; style < CurveStyle::count; ++style) {
        const bool isUsed = std::any_of(m_curves.cbegin(), m_curves.cend(),
                                        [style](const Curve &curve) { return curve.style == style; });
        if (!isUsed) {
            return style;
        }
    }
    return m_curves.size() % CurveStyle::count;
}

void FigureModel::relabel()
{
    QVector<PointId> ids;
    for (const Curve &curve : qAsConst(m_curves)) {
        ids.append(curve.point.id);
    }
    const QStringList labels = distinctNames(ids);
    for (int row = 0; row < m_curves.size(); ++row) {
        m_curves[row].label = labels.at(row);
    }
    if (!m_curves.isEmpty()) {
        emit dataChanged(index(0, Name), index(m_curves.size() - 1, Name));
    }
}

void FigureModel::describe(const QVector<Point> &points)
{
    QHash<PointId, Point> described;
    for (const Point &point : points) {
        described.insert(point.id, point);
    }
    for (Curve &curve : m_curves) {
        curve.point = described.value(curve.point.id, curve.point);
    }
}

void FigureModel::setAnswers(const SampleSource::Request &request, const QVector<Thinned> &answers)
{
    QHash<PointId, int> places;
    for (int place = 0; place < qMin(request.points.size(), answers.size()); ++place) {
        places.insert(request.points.at(place), place);
    }
    for (Curve &curve : m_curves) {
        const int place = places.value(curve.point.id, -1);
        if (place >= 0) {
            curve.data = answers.at(place);
            curve.asked = request.range;
            curve.answered = {request.range.from, qMin(request.range.to, request.now)};
        }
    }
    takeEnds();
    suggestSides();
    if (!m_curves.isEmpty()) {
        emit dataChanged(index(0, Type), index(m_curves.size() - 1, ColumnCount - 1));
    }
}

void FigureModel::setScreen(const TimeRange &range)
{
    const bool isOther = range.from != m_screen.from || range.to != m_screen.to;
    m_screen = range;
    if (isOther && !m_curves.isEmpty()) {
        emit dataChanged(index(0, Current), index(m_curves.size() - 1, Skipped));
    }
}

void FigureModel::suggestSides()
{
    double most = -1; // of those on the left
    QVector<Curve *> fresh;
    QVector<double> magnitudes;
    for (Curve &curve : m_curves) {
        const double magnitude = magnitudeOf(curve);
        if (curve.hasSide && curve.side == Side::Left) {
            most = qMax(most, magnitude);
        } else if (!curve.hasSide && magnitude > 0) { // of nothing but zeros it is not known yet
            fresh.append(&curve);
            magnitudes.append(magnitude);
        }
    }
    const QVector<Side> together = ValueScale::suggested(magnitudes);
    for (int i = 0; i < fresh.size(); ++i) {
        Curve *curve = fresh.at(i);
        curve->side = most <= 0 ? together.at(i) : ValueScale::suggested(magnitudes.at(i), most);
        curve->hasSide = true;
    }
}

void FigureModel::setValues(Mark mark, const SampleSource::Moment &moment, const QVector<ValueAt> &values)
{
    QHash<PointId, ValueAt> told;
    for (int place = 0; place < qMin(moment.points.size(), values.size()); ++place) {
        told.insert(moment.points.at(place), values.at(place));
    }
    if (mark == Mark::End) {
        constexpr int most = 4; // asked for until an answer is drawn, and more
        m_ends.append({moment.time, told});
        if (m_ends.size() > most) {
            m_ends.removeFirst();
        }
        takeEnds();
    } else {
        for (Curve &curve : m_curves) {
            const auto value = told.constFind(curve.point.id);
            curve.values[size_t(mark)] = value != told.cend() ? std::make_optional(*value) : std::nullopt;
        }
    }
    if (!m_curves.isEmpty() && mark != Mark::Pointer) {
        emit dataChanged(index(0, mark == Mark::End ? Current : AtA),
                         index(m_curves.size() - 1, mark == Mark::End ? Current : Difference));
    }
}

// While the present is followed, the value at its end is known before the curve up to there is drawn.
void FigureModel::takeEnds()
{
    for (Curve &curve : m_curves) {
        for (const End &end : qAsConst(m_ends)) {
            const auto value = end.values.constFind(curve.point.id);
            if (end.time == curve.answered.to && value != end.values.cend()) {
                curve.end = end.time;
                curve.values[size_t(Mark::End)] = *value;
            }
        }
    }
}

bool FigureModel::hasSkipped() const
{
    return std::any_of(m_curves.cbegin(), m_curves.cend(),
                       [](const Curve &curve) { return curve.data.statistics.notNumbers > 0; });
}

bool FigureModel::hasRightScale() const
{
    return std::any_of(m_curves.cbegin(), m_curves.cend(),
                       [](const Curve &curve) { return curve.shown && curve.side == Side::Right; });
}

int FigureModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : m_curves.size();
}

int FigureModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QVariant FigureModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const Curve &curve = m_curves.at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return FigureTexts::of(curve, Column(index.column()), m_screen);
    case Qt::ToolTipRole:
        return index.column() == Name ? TrendTexts::ofPoint(curve.point)
                                      : FigureTexts::of(curve, Column(index.column()), m_screen);
    case Qt::DecorationRole:
        return index.column() == Name ? QVariant(CurveStyle::sample(curve.style, m_list)) : QVariant();
    case Qt::CheckStateRole:
        if (index.column() == Name) {
            return checkOf(curve.shown);
        }
        return index.column() == RightScale ? checkOf(curve.side == Side::Right) : QVariant();
    case Qt::TextAlignmentRole:
        return alignmentOf(index.column());
    default:
        return {};
    }
}

QVariant FigureModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= ColumnCount) {
        return {};
    }
    const Title &title = titles[section];
    if (role == Qt::DisplayRole) {
        return FigureTable::tr(title.title);
    }
    if (role == Qt::TextAlignmentRole) {
        // On the left it would touch the title before.
        return section == RightScale ? int(Qt::AlignCenter) : alignmentOf(section);
    }
    return role == Qt::ToolTipRole ? QVariant(FigureTable::tr(title.toolTip)) : QVariant();
}

Qt::ItemFlags FigureModel::flags(const QModelIndex &index) const
{
    Qt::ItemFlags flags = QAbstractTableModel::flags(index);
    if (index.isValid() && (index.column() == Name || index.column() == RightScale)) {
        flags |= Qt::ItemIsUserCheckable;
    }
    return flags;
}

bool FigureModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || role != Qt::CheckStateRole) {
        return false;
    }
    Curve &curve = m_curves[index.row()];
    if (index.column() == Name) {
        curve.shown = isChecked(value);
    } else if (index.column() == RightScale) {
        curve.side = isChecked(value) ? Side::Right : Side::Left;
        curve.hasSide = true;
    } else {
        return false;
    }
    emit dataChanged(index, index, {Qt::CheckStateRole});
    emit curvesChanged();
    return true;
}
