#pragma once

#include <QStringList>

// The statements that make the tables of a recording; docs/recording.md describes them.
namespace RecordingSchema {

QStringList forFile();
QStringList forServer();

} // namespace RecordingSchema
