#pragma once

#include <QStringList>

// Entries of the lists in a parameter table, as stored.
namespace ParameterText {

// The twelve data types, in list order.
const QStringList &types();
const QStringList &permissions();
// Reporting methods, of which the last makes the amplitude live.
const QStringList &methods();
// How an OPC UA node is identified.
const QStringList &nodeTypes();

} // namespace ParameterText
