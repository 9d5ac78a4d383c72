#include "document/standardgroups.h"

#include "definitions/protocols.h"
#include "document/documentrows.h"

#include <QJsonObject>

using namespace DocumentKeys;

namespace {

QJsonObject modbusObject(const RowList &rows)
{
    QJsonArray points;
    appendRows(&points, modbusPointColumns, rows, 1);
    QJsonObject group = withRow(QJsonObject(), modbusGroupColumns, rows.value(0));
    group.insert(datasKey, points);
    return group;
}

RowList modbusRows(const QJsonObject &group)
{
    const QJsonArray points = group.value(datasKey).toArray();
    RowList rows;
    rows.reserve(points.size() + 1);
    rows.append(readRow(modbusGroupColumns, group));
    for (const QJsonValue &point : points) {
        rows.append(readRow(modbusPointColumns, point.toObject()));
    }
    return rows;
}

QJsonObject meterPoint(const QVariantList &row, Dlt645::Version version, const Dlt645::Labels &labels)
{
    QJsonObject point{{selectKey, row.value(0).toString()}};
    const QString label = row.value(1).toString();
    if (label.isEmpty()) {
        return point;
    }
    point.insert(nameKey, row.value(2).toString());
    if (const Dlt645::Item *item = labels.find(label, version)) {
        point.insert(addrKey, QLatin1String(item->code(version).address));
        point.insert(dataTypeKey, QLatin1String(item->code(version).format));
    }
    return point;
}

QJsonObject meterObject(const RowList &rows, const Dlt645::Labels &labels)
{
    const QVariantList header = rows.value(0);
    const Dlt645::Version version = Dlt645::versionOf(header.value(1).toString());
    QJsonArray points;
    for (int row = 1; row < rows.size(); ++row) {
        points.append(meterPoint(rows.at(row), version, labels));
    }
    // The version is the one number of the document.
    return {{slaveAddressKey, header.value(0).toString()},
            {protocolVersionKey, int(version)},
            {datasKey, points}};
}

// Compat: the label follows from the identifier alone. The identifiers of the two editions never coincide, so
// a group may hold items of either, whatever version it names.
RowList meterRows(const QJsonObject &group, const Dlt645::Labels &labels)
{
    const QJsonArray points = group.value(datasKey).toArray();
    const bool is2007 = group.value(protocolVersionKey).toInt() == Dlt645::Version2007;
    RowList rows;
    rows.reserve(points.size() + 1);
    rows.append(QVariantList{group.value(slaveAddressKey).toString(),
                             Dlt645::versionText(is2007 ? Dlt645::Version2007 : Dlt645::Version1997)});
    for (const QJsonValue &value : points) {
        const QJsonObject point = value.toObject();
        rows.append(QVariantList{point.value(selectKey).toString(),
                                 labels.ofAddress(point.value(addrKey).toString()),
                                 point.value(nameKey).toString()});
    }
    return rows;
}

template <typename Write> QJsonArray writeGroups(const GroupMap &groups, Write write)
{
    QJsonArray array;
    for (const RowList &rows : groups) {
        array.append(write(rows));
    }
    return array;
}

// Compat: the map orders these names as text, so from ten groups on a load changes their order: tab titles
// are the keys of the role.
template <typename Read> GroupMap readGroups(const QJsonArray &array, QLatin1String protocol, Read read)
{
    GroupMap map;
    int number = 1;
    for (const QJsonValue &group : array) {
        map.insert(protocol + QLatin1Char('-') + QString::number(number++), read(group.toObject()));
    }
    return map;
}

} // namespace

QJsonArray StandardGroups::writeModbus(const GroupMap &groups)
{
    return writeGroups(groups, modbusObject);
}

GroupMap StandardGroups::readModbus(const QJsonArray &array)
{
    return readGroups(array, Protocols::modbus, modbusRows);
}

QJsonArray StandardGroups::writeMeters(const GroupMap &groups, const Dlt645::Labels &labels)
{
    return writeGroups(groups, [&labels](const RowList &rows) { return meterObject(rows, labels); });
}

GroupMap StandardGroups::readMeters(const QJsonArray &array, const Dlt645::Labels &labels)
{
    return readGroups(array, Protocols::dlt645,
                      [&labels](const QJsonObject &group) { return meterRows(group, labels); });
}
