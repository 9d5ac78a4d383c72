#pragma once

#include <QVariantList>

class QModelIndex;
class QTableWidget;

// The table of one PLC's live values: a row a point, told by its name in column 0.
namespace MonitoringTable {

enum Column { Name, Addr, DataType, Value, Valid, UpdateTime, ColumnCount };

// Brings the table in line with the rows: points that it has get their new texts, new ones are added, those
// that the rows do not hold are removed. Of rows with the same name the last counts. A time that is not
// empty replaces the rows' "updateTime". Takes time linear in the rows, but for the sorting.
void update(QTableWidget *table, const QVariantList &rows, const QString &time);

// Whether the row of the index holds a value that the Box calls valid.
bool isValid(const QModelIndex &index);

} // namespace MonitoringTable
