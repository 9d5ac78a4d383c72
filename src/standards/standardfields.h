#pragma once

#include "forms/fieldtable.h"

class QWidget;

// Fields that the forms of several Standards share; their texts stand in the shared context StandardFields.
namespace StandardFields {

// The serial line from port to parity and the RTS flag; preselected entries of baud rate and parity for a
// role that is not among the entries, or null for the first.
QVector<Field> serialLine(const char *baudRate = nullptr, const char *parity = nullptr);
// The times of a serial line, in milliseconds; the time-out has a name and a role of its own for each kind.
QVector<Field> serialTimes(const char *timeoutName, int timeoutRole);
// The period of the trigger, in milliseconds.
QVector<Field> trigger();
// Builds the row with "Trigger Conditions:", its list and the period of the table.
QWidget *triggerRow(FieldTable &table, QWidget *parent);

} // namespace StandardFields
