#pragma once

#include "forms/fieldgroup.h"

// The rows of the form of a Modbus Standard, group by group; all texts but those of the serial line are
// source texts of that form.
namespace ModbusFields {

void addNetwork(FieldGroup &fields);
void addSerial(FieldGroup &fields);
// The settings of a slave: row 0 of its tab, in this order. Returns the station number.
TextField *addSlave(FieldGroup &fields);

} // namespace ModbusFields
