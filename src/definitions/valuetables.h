#pragma once

#include "definitions/choices.h"
#include "definitions/values.h"

// The tables behind Definitions::values().
namespace ValueTables {

const QVector<Definitions::Value> &box();
const QVector<Definitions::Value> &standard();
const QVector<Definitions::Value> &service();
const QVector<Definitions::Value> &server();
const QVector<Definitions::Value> &plc();

// The value with a list.
inline Definitions::Value choice(const char *choices, Definitions::Value value)
{
    value.choices = choices;
    return value;
}

} // namespace ValueTables
