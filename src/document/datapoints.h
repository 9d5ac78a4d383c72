#pragma once

#include <QJsonObject>
#include <QList>
#include <QMap>
#include <QString>

class QStandardItem;

// The points that the definitions of a project declare, as a Server's table imports them. A point has the
// members "addr", "name", "dataType", "length" and, by its kind, "permissions" or "reportingMethod", all
// texts.
namespace DataPoints {

// Points by the name of their definition.
using Lists = QMap<QString, QList<QJsonObject>>;

// Whether a Standard of this protocol can declare points.
bool declaresPoints(const QString &protocol);

// The points of all PLCs and Standards of a project, in their stored order; a Standard that declares none has
// an empty list. Of definitions with one name the last stays. A point of a DLT645 Standard whose item is not
// known in the language in force has neither "addr" nor "dataType" nor "length".
Lists collect(const QStandardItem &project);

} // namespace DataPoints
