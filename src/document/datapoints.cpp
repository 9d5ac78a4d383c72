#include "document/datapoints.h"

#include "definitions/dlt645items.h"
#include "definitions/documentkeys.h"
#include "definitions/protocols.h"
#include "model/itemroles.h"
#include "model/projecttree.h"

#include <QStandardItem>
#include <QVector>

#include <algorithm>

namespace {

const QLatin1String lengthKey("length");
const QLatin1String permissionsKey("permissions");
const QLatin1String reportingMethodKey("reportingMethod");

// One member of a point: the text of a cell of its stored row or, without a cell, the same for all rows.
struct Member {
    QLatin1String key;
    int column;
    QLatin1String text = QLatin1String();
};

constexpr int noColumn = -1;

// How a Standard keeps its rows: in one list, or by tab with a header as row 0.
enum class Layout { List, Groups, MeterGroups };

struct Source {
    QLatin1String protocol;
    Layout layout;
    QVector<Member> members;
};

// Rows of the parameter table, which PLCs and Modbus Standards share.
const QVector<Member> &parameterMembers()
{
    static const QVector<Member> members = {
        {DocumentKeys::addrKey, 0},
        {DocumentKeys::nameKey, 1},
        {DocumentKeys::dataTypeKey, 2},
        {lengthKey, 3},
        {permissionsKey, 4},
    };
    return members;
}

const QVector<Source> &sources()
{
    static const QVector<Source> table = {
        {Protocols::modbus, Layout::Groups, parameterMembers()},
        // The Standard's form stores three cells a row, so that no reporting method stands there as yet.
        {Protocols::dlt645, Layout::MeterGroups, {{DocumentKeys::nameKey, 2}, {reportingMethodKey, 3}}},
        {Protocols::dido,
         Layout::List,
         {{DocumentKeys::addrKey, 0},
          {DocumentKeys::nameKey, 1},
          {permissionsKey, 2},
          {reportingMethodKey, 3},
          {DocumentKeys::dataTypeKey, noColumn, QLatin1String("bit")},
          {lengthKey, noColumn, QLatin1String("1")}}},
        {Protocols::opcUa,
         Layout::List,
         {{DocumentKeys::addrKey, 0},
          {DocumentKeys::nameKey, 1},
          {permissionsKey, 4},
          {DocumentKeys::dataTypeKey, 9},
          {lengthKey, noColumn, QLatin1String("1")}}},
    };
    return table;
}

const Source *sourceOf(const QString &protocol)
{
    const auto source = std::find_if(sources().cbegin(), sources().cend(),
                                     [&protocol](const Source &known) { return protocol == known.protocol; });
    return source == sources().cend() ? nullptr : source;
}

// A cell past the end of its row reads as empty.
QJsonObject pointOf(const QVariantList &row, const QVector<Member> &members)
{
    QJsonObject point;
    for (const Member &member : members) {
        point.insert(member.key,
                     member.column == noColumn ? QString(member.text) : row.value(member.column).toString());
    }
    return point;
}

QList<QJsonObject> pointsOf(const RowList &rows, const QVector<Member> &members)
{
    QList<QJsonObject> points;
    points.reserve(rows.size());
    for (const QVariantList &row : rows) {
        points.append(pointOf(row, members));
    }
    return points;
}

// A row keeps its item by the label in the language of its saving; in another one the point stays without.
void insertItem(QJsonObject *point, const QString &label, Dlt645::Version version,
                const Dlt645::Labels &labels)
{
    if (const Dlt645::Item *item = labels.find(label, version)) {
        const Dlt645::Code &code = item->code(version);
        point->insert(DocumentKeys::addrKey, QLatin1String(code.address));
        point->insert(DocumentKeys::dataTypeKey, QLatin1String(code.type));
        point->insert(lengthKey, QLatin1String(code.length));
    }
}

QList<QJsonObject> groupPoints(const RowList &rows, const Source &source, const Dlt645::Labels &labels)
{
    QList<QJsonObject> points = pointsOf(rows.mid(1), source.members);
    if (source.layout == Layout::MeterGroups) {
        const Dlt645::Version version = Dlt645::versionOf(rows.value(0).value(1).toString());
        for (int point = 0; point < points.size(); ++point) {
            insertItem(&points[point], rows.at(point + 1).value(1).toString(), version, labels);
        }
    }
    return points;
}

QList<QJsonObject> standardPoints(const QStandardItem &standard, const Dlt645::Labels &labels)
{
    const Source *source = sourceOf(standard.data(standardProtocolRole).toString());
    if (!source) {
        return {};
    }
    const QVariant datas = standard.data(standardDatasRole);
    if (source->layout == Layout::List) {
        return pointsOf(datas.value<RowList>(), source->members);
    }
    QList<QJsonObject> points;
    const auto groups = datas.value<GroupMap>();
    for (const RowList &rows : groups) {
        points += groupPoints(rows, *source, labels);
    }
    return points;
}

QList<QJsonObject> plcPoints(const QStandardItem &plc, const Dlt645::Labels &)
{
    return pointsOf(plc.data(plcParametersRole).value<RowList>(), parameterMembers());
}

} // namespace

namespace DataPoints {

bool declaresPoints(const QString &protocol)
{
    return sourceOf(protocol) != nullptr;
}

Lists collect(const QStandardItem &project)
{
    const struct {
        QString folder;
        QList<QJsonObject> (*points)(const QStandardItem &, const Dlt645::Labels &);
    } kinds[] = {{ProjectTree::plcFolder, plcPoints}, {ProjectTree::standardFolder, standardPoints}};

    Lists lists;
    const Dlt645::Labels labels;
    for (int row = 0; row < project.rowCount(); ++row) {
        const QStandardItem *folder = project.child(row);
        for (const auto &kind : kinds) {
            for (int i = 0; folder && folder->text() == kind.folder && i < folder->rowCount(); ++i) {
                if (const QStandardItem *definition = folder->child(i)) {
                    lists.insert(definition->text(), kind.points(*definition, labels));
                }
            }
        }
    }
    return lists;
}

} // namespace DataPoints
