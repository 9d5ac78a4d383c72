#pragma once

#include "definitions/values.h"

// The tables behind Definitions::values().
namespace ValueTables {

const QVector<Definitions::Value> &box();
const QVector<Definitions::Value> &standard();
const QVector<Definitions::Value> &service();
const QVector<Definitions::Value> &server();
const QVector<Definitions::Value> &plc();

} // namespace ValueTables
