#pragma once

#include "forms/fieldgroup.h"

// Rows that the forms of several Standards share; each function adds its own to the group. Their texts stand
// in the shared context StandardFields.
namespace StandardFields {

// The serial line from port to parity and the RTS flag; preselected entries of baud rate and parity for a
// role that is not among the entries, or an empty text for the first.
void addSerialLine(FieldGroup &fields, const char *baudRate = "", const char *parity = "");
// The times of a serial line, in milliseconds; the time-out has a role of its own for each kind, and a name
// unless it goes by its key.
void addSerialTimes(FieldGroup &fields, int timeoutRole, const char *timeoutName = nullptr);
// Makes the row with "Trigger Conditions:", its list and the period, in milliseconds; the group goes on
// there.
QWidget *makeTriggerRow(FieldGroup &fields, QWidget *parent);

} // namespace StandardFields
