#pragma once

#include <QVariantList>

class QModelIndex;
class QTableWidget;

// The table of one PLC's live values: a row a point, told by its name in column 0.
namespace MonitoringTable {

enum Column { Name, Addr, DataType, Value, Valid, UpdateTime, ColumnCount };

// Brings the table in line with the rows: points that it has get their new texts, new ones are added, those
// that the rows do not hold are removed. Of rows with the same name the last counts. A time that is not
// empty replaces the rows' "updateTime". Values that are other than before keep "now", in ms of any clock,
// unless it is negative. Takes time linear in the rows, but for the sorting.
void update(QTableWidget *table, const QVariantList &rows, const QString &time, qint64 now = -1);

// Brings the rows back into the order in which their points came, and shows them as not sorted.
void unsort(QTableWidget *table);

// Makes the columns as wide as titles and cells need. Where that is more than the room in pixels,
// titles are cut, and names by up to two fifths, if all columns or at least those up to the values fit then:
// tool tips tell both in full. A name that is
// cut goes on in a second line.
void fitColumns(QTableWidget *table, int room);

// Whether the row of the index holds a value that the Box calls valid.
bool isValid(const QModelIndex &index);
// Whether the index is in column Value and its text a number.
bool isNumber(const QModelIndex &index);
// When the index's text last became another; negative for never, and outside of column Value.
qint64 changedAt(const QModelIndex &index);

} // namespace MonitoringTable
