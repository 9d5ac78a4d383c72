#pragma once

#include "definitions/documentkeys.h"
#include "model/projecttree.h"

#include <QJsonArray>

// The tabs of a Standard as objects of its "datas": one per entry of the map, in the order of its keys. They
// are read back under names by their place in the array, from 1.
namespace StandardGroups {

QJsonArray writeModbus(const GroupMap &groups);
GroupMap readModbus(const QJsonArray &array);

// A row of a meter is: select mark, item label, custom name. Labels are compared in the language of the
// labels; a point whose label the edition lacks has neither "addr" nor "dataType".
QJsonArray writeMeters(const GroupMap &groups, const Dlt645::Labels &labels);
GroupMap readMeters(const QJsonArray &array, const Dlt645::Labels &labels);

} // namespace StandardGroups
