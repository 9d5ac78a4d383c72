#pragma once

class QTableView;
class QTableWidget;

// What the headers of the tables have in common. For tables that have their columns and titles.
namespace TableHeader {

// Says each title in a tool tip too, since a column may be narrower than its title.
void explain(const QTableView *table);
// Makes the header light grey; without effect where that has been done.
void makeGrey(const QTableWidget *table);

} // namespace TableHeader
