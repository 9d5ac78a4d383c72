#pragma once

#include <QStringList>

// The statements that make the tables of a recording; docs/recording.md describes them.
namespace RecordingSchema {

QStringList forFile();
QStringList forServer();

// Inserts so many rows at once; those that are there already stay as they are. The columns are in commas.
QString insertion(const char *table, const char *columns, int rows);

} // namespace RecordingSchema
