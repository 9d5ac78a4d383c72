#pragma once

#include "forms/fieldtable.h"

// The fields of the form of a Modbus Standard, group by group.
namespace ModbusFields {

// Of their translations.
constexpr char context[] = "standardModbusEditDialog";

QVector<Field> identity();
QVector<Field> network();
QVector<Field> serial();
// The settings of a slave: row 0 of its tab, in this order.
QVector<Field> slave();

} // namespace ModbusFields
